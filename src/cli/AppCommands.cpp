// Commands of the application frame: iniciar, usuario, entrar.
#include "AppContext.h"
#include "CliArgs.h"
#include "CliCommand.h"
#include "CliSupport.h"
#include "DemoData.h"
#include "Login.h"
#include "PasswordHash.h"
#include "Schema.h"
#include "Startup.h"
#include "clsUsuarios.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryFile>
#include <QTextStream>

static void initResources() {
    Q_INIT_RESOURCE(tolvane_core);
}

namespace {

// The new administrator's password, last and framed so it is not lost above other output, with
// the command that changes it.
void printAdminPassword(CliEnv& e, const QString& folder, const QString& password) {
    int id = 0;
    if (const auto users = clsUsuarios::listar(e.ctx.db))
        for (const clsUsuarios& u : *users)
            if (u.TIPO == QLatin1String("ADM"))
                id = u.ID;
    const QString rule(72, QLatin1Char('#'));
    e.out << "\n"
          << rule << "\n"
          << QStringLiteral("#  Senha do administrador (anote, não será mostrada de novo): %1\n")
                 .arg(password)
          << "#  Para trocá-la, a nova senha na primeira linha da entrada:\n"
          << QStringLiteral("#    tolvane --pasta \"%1\" usuario gravar --id %2 --nome "
                            "ADMINISTRADOR --tipo ADM\n")
                 .arg(QDir::toNativeSeparators(QDir(folder).absolutePath()))
                 .arg(id)
          << rule << "\n";
}

int iniciar(CliEnv& e) {
    const QString folder = e.ctx.folder;
    if (!QDir().mkpath(folder)) {
        e.err << QStringLiteral("Não foi possível criar a pasta %1.\n")
                     .arg(QDir::toNativeSeparators(folder));
        return ExitRefused;
    }
    {
        QTemporaryFile probe(QDir(folder).filePath(QStringLiteral(".tolvane-XXXXXX")));
        if (!probe.open()) {
            e.err << QStringLiteral("A pasta %1 não permite gravação.\n")
                         .arg(QDir::toNativeSeparators(folder));
            return ExitRefused;
        }
    }
    if (!QFile::exists(e.ctx.iniPath())) {
        initResources();
        QFile tpl(QStringLiteral(":/Config.ini"));
        QFile dst(e.ctx.iniPath());
        if (!tpl.open(QIODevice::ReadOnly) || !dst.open(QIODevice::WriteOnly) ||
            dst.write(tpl.readAll()) < 0) {
            e.err << QStringLiteral("Não foi possível gravar %1.\n")
                         .arg(QDir::toNativeSeparators(e.ctx.iniPath()));
            return ExitRefused;
        }
        e.out << QStringLiteral("Config.ini criado.\n");
    }
    e.ctx.reloadSettings();
    QString detail;
    if (!Startup::Abre_conexao(e.ctx, true, &detail)) {
        e.err << "Erro ao conectar banco de dados!!!\n" << detail << "\n";
        return ExitRefused;
    }
    QString adminPassword;
    if (e.args.has(QStringLiteral("demo"))) {
        QString error;
        if (!DemoData::seed(e.ctx, &adminPassword, &error)) {
            e.err << error << "\n";
            return ExitRefused;
        }
        e.out << QStringLiteral("Dados de demonstração gravados.\n");
    }
    e.out << QStringLiteral("Pasta pronta: %1 (banco %2, versão %3)\n")
                 .arg(QDir::toNativeSeparators(folder), e.ctx.db.config().describe())
                 .arg(Schema::currentVersion());
    if (!adminPassword.isEmpty())
        printAdminPassword(e, folder, adminPassword);
    return ExitOk;
}

int usuarioGravar(CliEnv& e) {
    const QString nome = e.args.value(QStringLiteral("nome")).trimmed();
    const QString tipo = e.args.value(QStringLiteral("tipo")).trimmed();
    if (nome.isEmpty() || tipo.isEmpty()) {
        e.err << "Todos os campos obrigatórios devem ser preenchidos!!\n";
        return ExitUsage;
    }
    if (tipo.compare(QLatin1String("ADM"), Qt::CaseInsensitive) != 0 &&
        tipo.compare(QLatin1String("USER"), Qt::CaseInsensitive) != 0) {
        e.err << QStringLiteral("Tipo de usuário inválido: %1 (use ADM ou USER).\n").arg(tipo);
        return ExitUsage;
    }
    const QString senha = e.readStdinLine().trimmed();
    const bool update = e.args.has(QStringLiteral("id"));
    clsUsuarios u(e.ctx.db);
    if (update) {
        bool ok = false;
        u.ID = e.args.value(QStringLiteral("id")).toInt(&ok);
        if (!ok || !u.SQLSelect(u.ID)) {
            e.err << QStringLiteral("Usuário %1 não encontrado.\n")
                         .arg(e.args.value(QStringLiteral("id")));
            return ExitRefused;
        }
    } else if (senha.isEmpty()) {
        e.err << "A senha não pode ficar em branco.\n";
        return ExitRefused;
    }
    // The typed password goes through the same quote refusal as every text the program writes.
    if (e.ctx.db.refusesText({nome, senha}, clsDataAccess::kLabelExecute)) {
        e.err << "Erro ao gravar o usuário.\n";
        return ExitRefused;
    }
    u.NOME = nome;
    u.TIPO = tipo;
    u.ATIVO = e.args.has(QStringLiteral("inativo")) ? 0 : 1;
    u.SENHA = senha.isEmpty() ? QString() : PasswordHash::hash(senha);
    if (!u.SQLInsert(update ? 2 : 1)) {
        e.err << "Erro ao gravar o usuário.\n";
        return ExitRefused;
    }
    if (e.json)
        e.out << QJsonDocument(QJsonObject{{QStringLiteral("id"), u.ID}})
                     .toJson(QJsonDocument::Compact)
              << "\n";
    else
        e.out << QStringLiteral("Usuário %1 gravado (id %2).\n").arg(u.NOME).arg(u.ID);
    return ExitOk;
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
    const QString senha = e.readStdinLine();
    if (e.args.has(QStringLiteral("adm"))) {
        const QString tipo =
            senha.trimmed().isEmpty() ? QStringLiteral("USER") : Login::Tipo_usuario(e.ctx, senha);
        if (tipo != QLatin1String("ADM")) {
            e.err << "Senha de administrador não aceita.\n";
            return ExitRefused;
        }
        e.out << "ADM\n";
        return ExitOk;
    }
    if (!Login::Valida_senha(e.ctx, senha)) {
        e.err << Login::kSenhaInvalida << "\n";
        return ExitRefused;
    }
    if (e.json)
        e.out << QJsonDocument(QJsonObject{{QStringLiteral("nome"), e.ctx.userName},
                                           {QStringLiteral("tipo"), e.ctx.userType}})
                     .toJson(QJsonDocument::Compact)
              << "\n";
    else
        e.out << e.ctx.userName << "\t" << e.ctx.userType << "\n";
    return ExitOk;
}

} // namespace

void registerAppCommands(QList<CliCommand>& c) {
    c.append({{QStringLiteral("iniciar")},
              QStringLiteral("iniciar [--demo]"),
              QStringLiteral(
                  "cria a pasta, o Config.ini modelo e o banco (ou o atualiza); nunca apaga dados"),
              {QStringLiteral("demo")},
              CliCommand::Db::None,
              iniciar});
    c.append({{QStringLiteral("usuario"), QStringLiteral("gravar")},
              QStringLiteral("usuario gravar --nome NOME --tipo ADM|USER [--inativo] [--id ID]"),
              QStringLiteral(
                  "cria (ou com --id altera) um operador; senha na primeira linha da entrada; "
                  "senha vazia na alteração mantém a atual"),
              {QStringLiteral("inativo")},
              CliCommand::Db::Existing,
              usuarioGravar});
    c.append({{QStringLiteral("usuario"), QStringLiteral("listar")},
              QStringLiteral("usuario listar [--json]"),
              QStringLiteral("lista id, nome, tipo e situação dos operadores (nunca senhas)"),
              {},
              CliCommand::Db::Existing,
              usuarioListar});
    c.append({{QStringLiteral("entrar")},
              QStringLiteral("entrar [--adm] [--json]"),
              QStringLiteral("confere a senha da entrada padrão como o login; com --adm, como a "
                             "senha de administrador"),
              {QStringLiteral("adm")},
              CliCommand::Db::Existing,
              entrar});
}
