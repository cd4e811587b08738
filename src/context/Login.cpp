#include "Login.h"

#include "AppContext.h"
#include "PasswordHash.h"
#include "clsUsuarios.h"

const QString Login::kSenhaInvalida = QStringLiteral("Senha Inválida!!");

struct Login::Match {
    QString nome;
    QString tipo;
    int ativo = 0;
};

int Login::matchingUsers(AppContext& ctx, const QString& senha, Match& first) {
    // The password travels as a bound value; a quote in it is refused like any other text.
    if (ctx.db.refusesText({senha}, clsDataAccess::kLabelSelect))
        return -1;
    const auto all = clsUsuarios::listar(ctx.db);
    if (!all)
        return -1;
    int matches = 0;
    for (const clsUsuarios& u : *all) {
        if (!PasswordHash::verify(senha, u.SENHA))
            continue;
        if (++matches == 1)
            first = {u.NOME, u.TIPO, u.ATIVO};
    }
    return matches;
}

bool Login::Valida_senha(AppContext& ctx, const QString& senha) {
    if (senha.trimmed().isEmpty())
        return false;
    Match m;
    if (matchingUsers(ctx, senha, m) != 1)
        return false;
    ctx.userName = m.nome;
    ctx.userType = m.tipo;
    return m.ativo == 1;
}

QString Login::Tipo_usuario(AppContext& ctx, const QString& senha) {
    const QString user = QStringLiteral("USER");
    if (senha.isEmpty())
        return user;
    Match m;
    return matchingUsers(ctx, senha, m) == 1 ? m.tipo : user;
}
