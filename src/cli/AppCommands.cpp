// Commands of the application frame: iniciar, usuario, entrar.
#include "AdminGuard.h"
#include "AppContext.h"
#include "CliArgs.h"
#include "CliCommand.h"
#include "CliSupport.h"
#include "Clock.h"
#include "DemoData.h"
#include "FolderSetup.h"
#include "Login.h"
#include "PasswordHash.h"
#include "SampleSheet.h"
#include "Schema.h"
#include "SystemTexts.h"
#include "UserAccounts.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QTextStream>

namespace {

const QString kSenhaCurta =
    QStringLiteral("A senha deve ter pelo menos %1 caracteres.").arg(UserAccounts::kMinPassword);
const QString kUltimoAdministrador =
    QStringLiteral("Este é o único administrador: sem ele nenhuma entrada de administrador "
                   "poderá ser aberta.");

// The new administrator's password, last and framed so it is not lost above other output, with
// the command that changes it.
void printAdminPassword(CliEnv& e, const QString& folder, const QString& password) {
    int id = 0;
    if (const auto users = clsUsuarios::listar(e.ctx.db))
        for (const clsUsuarios& u : *users)
            if (u.tipo() == UserType::Admin)
                id = u.ID;
    const QString rule(72, QLatin1Char('#'));
    e.out << "\n"
          << rule << "\n"
          << QStringLiteral("#  Senha do administrador (anote, não será mostrada de novo): %1\n")
                 .arg(password)
          << "#  Para trocá-la: na entrada, a senha atual duas vezes e a nova, uma por linha:\n"
          << QStringLiteral("#    tolvane --pasta \"%1\" usuario gravar --id %2 --nome "
                            "ADMINISTRADOR --tipo ADM\n")
                 .arg(QDir::toNativeSeparators(QDir(folder).absolutePath()))
                 .arg(id)
          << rule << "\n";
}

int iniciar(CliEnv& e) {
    const FolderSetup::Prepared p = FolderSetup::prepare(e.ctx);
    if (p.configCreated)
        e.out << QStringLiteral("Config.ini criado.\n");
    if (!p.ok()) {
        e.err << FolderSetup::message(e.ctx, p) << "\n";
        return ExitRefused;
    }
    const QString folder = e.ctx.folder;
    QString adminPassword;
    QString sheet;
    if (e.args.has(QStringLiteral("demo"))) {
        // Demonstration data on a database that has an administrator: only that one adds it.
        if (int rc = CliSupport::authorize(e.ctx, Act::DadosDemonstracao, e.err, e.readStdinLine);
            rc >= 0)
            return rc;
        QString error;
        if (!DemoData::seed(e.ctx, &adminPassword, &error)) {
            e.err << error << "\n";
            return ExitRefused;
        }
        e.out << QStringLiteral("Dados de demonstração gravados.\n");
        const SampleSheet::Written w = SampleSheet::write(folder, e.ctx.clock.today());
        if (!w.ok()) {
            e.err << w.error << "\n";
            return ExitRefused;
        }
        sheet = SampleSheet::where(w);
    }
    e.out << QStringLiteral("Pasta pronta: %1 (banco %2, versão %3)\n")
                 .arg(QDir::toNativeSeparators(folder), e.ctx.db.config().describe())
                 .arg(Schema::currentVersion());
    if (!sheet.isEmpty())
        e.out << sheet << "\n";
    if (!adminPassword.isEmpty())
        printAdminPassword(e, folder, adminPassword);
    return ExitOk;
}

int usuarioGravar(CliEnv& e) {
    UserAccounts::Input in;
    in.nome = e.args.value(QStringLiteral("nome"));
    in.tipo = e.args.value(QStringLiteral("tipo"));
    in.ativo = !e.args.has(QStringLiteral("inativo"));
    if (e.args.has(QStringLiteral("id"))) {
        bool ok = false;
        in.id = e.args.value(QStringLiteral("id")).toInt(&ok);
        if (!ok)
            in.id = -1; // no operator has it: answered as not found
    }
    if (in.nome.trimmed().isEmpty() || in.tipo.trimmed().isEmpty()) {
        e.err << SystemTexts::text(SystemText::CamposObrigatorios) << "\n";
        return ExitUsage;
    }
    in.senha = e.readStdinLine();
    const UserAccounts::Result r = UserAccounts::gravar(e.ctx, in);
    switch (r.outcome) {
    case UserAccounts::Outcome::Saved:
        break;
    case UserAccounts::Outcome::MissingField:
        e.err << (r.field == UserAccounts::Field::SENHA
                      ? QStringLiteral("A senha não pode ficar em branco.")
                      : SystemTexts::text(SystemText::CamposObrigatorios))
              << "\n";
        return r.field == UserAccounts::Field::SENHA ? ExitRefused : ExitUsage;
    case UserAccounts::Outcome::InvalidType:
        e.err << QStringLiteral("Tipo de usuário inválido: %1 (use ADM ou USER).\n")
                     .arg(in.tipo.trimmed());
        return ExitUsage;
    case UserAccounts::Outcome::NotFound:
        e.err << QStringLiteral("Usuário %1 não encontrado.\n")
                     .arg(e.args.value(QStringLiteral("id")));
        return ExitRefused;
    case UserAccounts::Outcome::ShortPassword:
        e.err << kSenhaCurta << "\n";
        return ExitRefused;
    case UserAccounts::Outcome::PasswordInUse:
        e.err << SystemTexts::text(SystemText::SenhaEmUso) << "\n";
        return ExitRefused;
    case UserAccounts::Outcome::NameInUse:
        e.err << SystemTexts::text(SystemText::NomeEmUso) << "\n";
        return ExitRefused;
    case UserAccounts::Outcome::TextRefused:
        e.err << r.message << "\n";
        return ExitRefused;
    case UserAccounts::Outcome::QuoteRefused:
    case UserAccounts::Outcome::WriteFailed:
        e.err << "Erro ao gravar o usuário.\n";
        return ExitRefused;
    }
    if (e.json)
        CliSupport::printJson(e, QJsonObject{{QStringLiteral("id"), r.id}});
    else
        e.out << QStringLiteral("Usuário %1 gravado (id %2).\n").arg(in.nome.trimmed()).arg(r.id);
    return ExitOk;
}

int usuarioExcluir(CliEnv& e) {
    bool ok = false;
    const qint32 id = e.args.value(QStringLiteral("id")).toInt(&ok);
    const auto r = ok ? UserAccounts::excluir(e.ctx, id, e.args.has(QStringLiteral("ultimo-adm")))
                      : UserAccounts::DeleteOutcome::NotFound;
    switch (r) {
    case UserAccounts::DeleteOutcome::Deleted:
        e.out << QStringLiteral("Usuário %1 excluído.\n").arg(id);
        return ExitOk;
    case UserAccounts::DeleteOutcome::NotFound:
        e.err << SystemTexts::text(ok ? SystemText::UsuarioNaoEncontrado : SystemText::InformeItem)
              << "\n";
        return ExitRefused;
    case UserAccounts::DeleteOutcome::LastAdministrator:
        e.err << kUltimoAdministrador << "\n"
              << "Para excluir assim mesmo, repita com --ultimo-adm.\n";
        return ExitRefused;
    case UserAccounts::DeleteOutcome::Failed:
        break;
    }
    e.err << SystemTexts::text(SystemText::ErroExcluir) << "\n";
    return ExitRefused;
}

int usuarioListar(CliEnv& e) {
    const auto users = clsUsuarios::listar(e.ctx.db);
    if (!users)
        return ExitRefused;
    QJsonArray list;
    for (const clsUsuarios& u : *users) {
        if (e.json)
            list.append(QJsonObject{{QStringLiteral("id"), u.ID},
                                    {QStringLiteral("nome"), u.NOME},
                                    {QStringLiteral("tipo"), u.TIPO},
                                    {QStringLiteral("ativo"), u.ATIVO == 1}});
        else
            e.out << QStringLiteral("%1\t%2\t%3\t%4\n")
                         .arg(u.ID)
                         .arg(u.NOME, u.TIPO,
                              u.ATIVO == 1 ? QStringLiteral("ativo") : QStringLiteral("inativo"));
    }
    if (e.json)
        CliSupport::printJson(e, list);
    return ExitOk;
}

int entrar(CliEnv& e) {
    if (e.args.has(QStringLiteral("adm"))) {
        if (!AdminGuard::isAdministrator(e.ctx, e.readStdinLine())) {
            e.err << SystemTexts::text(SystemText::SenhaAdministradorRecusada) << "\n";
            return ExitRefused;
        }
        e.out << "ADM\n";
        return ExitOk;
    }
    if (!Login::Valida_senha(e.ctx, e.readStdinLine())) {
        e.err << SystemTexts::text(SystemText::SenhaInvalida) << "\n";
        return ExitRefused;
    }
    if (e.json)
        CliSupport::printJson(
            e, QJsonObject{{QStringLiteral("nome"), e.ctx.userName},
                           {QStringLiteral("tipo"), clsUsuarios::texto(e.ctx.userType)}});
    else
        e.out << e.ctx.userName << "\t" << clsUsuarios::texto(e.ctx.userType) << "\n";
    return ExitOk;
}

} // namespace

void registerAppCommands(QList<CliCommand>& c) {
    c.append({{QStringLiteral("iniciar")},
              QStringLiteral("iniciar [--demo]"),
              QStringLiteral(
                  "cria a pasta, o Config.ini modelo e o banco (ou o atualiza); nunca apaga dados; "
                  "--demo grava também a folha de guias de exemplo para ler"),
              {QStringLiteral("demo")},
              CliCommand::Db::None,
              iniciar});
    c.last().act = Act::PrepararPasta;
    c.append(
        {{QStringLiteral("usuario"), QStringLiteral("gravar")},
         QStringLiteral("usuario gravar --nome NOME --tipo ADM|USER [--inativo] [--id ID]"),
         QStringLiteral("cria (ou com --id altera) um operador; a senha dele na linha que segue as "
                        "pedidas; senha vazia na alteração mantém a atual"),
         {QStringLiteral("inativo")},
         CliCommand::Db::Existing,
         usuarioGravar});
    c.last().actFor = [](const CliArgs& a) {
        // A new administrator: open while the database has none.
        const bool adm = a.value(QStringLiteral("tipo")).trimmed() == QLatin1String("ADM");
        return adm && !a.has(QStringLiteral("id")) ? Act::CriarAdministrador : Act::Usuarios;
    };
    c.append({{QStringLiteral("usuario"), QStringLiteral("excluir")},
              QStringLiteral("usuario excluir --id ID [--ultimo-adm]"),
              QStringLiteral("exclui um operador; o único administrador só com --ultimo-adm"),
              {QStringLiteral("ultimo-adm")},
              CliCommand::Db::Existing,
              usuarioExcluir});
    c.last().act = Act::Usuarios;
    c.append({{QStringLiteral("usuario"), QStringLiteral("listar")},
              QStringLiteral("usuario listar [--json]"),
              QStringLiteral("lista id, nome, tipo e situação dos operadores (nunca senhas)"),
              {},
              CliCommand::Db::ReadOnly,
              usuarioListar});
    c.last().act = Act::Consultar;
    c.append({{QStringLiteral("entrar")},
              QStringLiteral("entrar [--adm] [--json]"),
              QStringLiteral("confere a senha da entrada padrão como o login; com --adm, como a "
                             "senha de administrador"),
              {QStringLiteral("adm")},
              CliCommand::Db::ReadOnly,
              entrar});
    c.last().act = Act::Entrar;
}
