#include "AbreBD.h"

#include "AppContext.h"
#include "DialogPort.h"
#include "PasswordHash.h"
#include "Schema.h"

#include <QFileInfo>

const QString AbreBD::kSenhaInvalida = QStringLiteral("Senha Inválida!!");
const QString AbreBD::kPromptAdministrador = QStringLiteral("Entre com a senha do administrador!!");

bool AbreBD::Abre_conexao(AppContext& ctx, bool create, QString* detail)
{
    const DbConfig config = DbConfig::fromIni(ctx.folder);
    if (config.backend == DbBackend::SQLite && !create && !QFileInfo::exists(config.sqlitePath)) {
        if (detail)
            *detail = QStringLiteral("O arquivo %1 não existe.").arg(config.describe());
        return false;
    }
    if (!ctx.db.open(config)) {
        if (detail)
            *detail = QStringLiteral("Não foi possível abrir %1: %2").arg(config.describe(), ctx.db.lastError());
        return false;
    }
    QString message;
    if (Schema::migrate(ctx.db, &message) != Schema::Result::Ok) {
        ctx.db.close();
        if (detail)
            *detail = message;
        return false;
    }
    return true;
}

bool AbreBD::Carrega_config(AppContext& ctx) { return ctx.reloadSettings(); }

void AbreBD::startup(AppContext& ctx)
{
    QString detail;
    if (!Abre_conexao(ctx, false, &detail)) {
        ctx.dialogs.message(QStringLiteral("Tolvane"), QStringLiteral("Erro ao conectar banco de dados!!!"),
                            DialogIcon::None, DialogButtons::Ok);
        if (!detail.isEmpty())
            ctx.dialogs.message(QStringLiteral("Aviso"), detail, DialogIcon::Critical, DialogButtons::Ok);
    }
    if (!Carrega_config(ctx))
        ctx.dialogs.message(QStringLiteral("Tolvane"),
                            QStringLiteral("Erro ao carregar váriaveis banco de dados!!!"),
                            DialogIcon::None, DialogButtons::Ok);
}

int AbreBD::matchingUsers(AppContext& ctx, const QString& senha, QString* nome, QString* tipo, int* ativo)
{
    // The password travels as a bound value; a quote in it is refused as it always was.
    if (ctx.db.refusesText({senha}, clsDataAccess::kLabelSelect))
        return -1;
    const auto rs = ctx.db.SQLSelect_ReadOnly(QStringLiteral("SELECT ID, NOME, SENHA, TIPO, ATIVO FROM Usuarios"));
    if (!rs)
        return -1;
    int matches = 0;
    for (Recordset r = *rs; !r.EOF_(); r.moveNext()) {
        if (!PasswordHash::verify(senha, r.text(QStringLiteral("SENHA"))))
            continue;
        if (++matches == 1) {
            *nome = r.text(QStringLiteral("NOME"));
            *tipo = r.text(QStringLiteral("TIPO"));
            *ativo = static_cast<int>(r.integer(QStringLiteral("ATIVO")));
        }
    }
    return matches;
}

bool AbreBD::Valida_senha(AppContext& ctx, const QString& senha)
{
    if (senha.trimmed().isEmpty())
        return false;
    QString nome, tipo;
    int ativo = 0;
    if (matchingUsers(ctx, senha, &nome, &tipo, &ativo) != 1)
        return false;
    ctx.userName = nome;
    ctx.userType = tipo;
    return ativo == 1;
}

QString AbreBD::Tipo_usuario(AppContext& ctx, const QString& senha)
{
    const QString user = QStringLiteral("USER");
    if (senha.isEmpty())
        return user;
    QString nome, tipo;
    int ativo = 0;
    return matchingUsers(ctx, senha, &nome, &tipo, &ativo) == 1 ? tipo : user;
}

bool AbreBD::Pede_senha_administrador(AppContext& ctx, const QString& title)
{
    const auto answer = ctx.dialogs.input(title, kPromptAdministrador, true, QString());
    if (!answer || answer->trimmed().isEmpty())
        return false;
    return Tipo_usuario(ctx, *answer) == QLatin1String("ADM");
}
