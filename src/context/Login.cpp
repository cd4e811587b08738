#include "Login.h"

#include "AppContext.h"
#include "PasswordHash.h"
#include "clsUsuarios.h"

struct Login::Match {
    qint32 id = 0;
    QString nome;
    QString tipo;
    QString senha; // the stored hash
    int ativo = 0;
};

int Login::matchingUsers(AppContext& ctx, const QString& senha, Match& first) {
    // The password travels as a bound value; a quote in it is refused like any other text.
    if (ctx.db.refusesText({senha}, clsDataAccess::kLabelSelect))
        return -1;
    const auto all = clsUsuarios::listar(ctx.db);
    if (!all)
        return -1;
    QStringList stored;
    stored.reserve(all->size());
    for (const clsUsuarios& u : *all)
        stored.append(u.SENHA);
    // Every operator is checked, so that two sharing the password are both refused.
    const QList<bool> found = PasswordHash::verifyAll(senha, stored);
    int matches = 0;
    for (qsizetype i = 0; i < all->size(); ++i) {
        if (!found[i])
            continue;
        const clsUsuarios& u = all->at(i);
        if (++matches == 1)
            first = {u.ID, u.NOME, u.TIPO, u.SENHA, u.ATIVO};
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
    ctx.userType = clsUsuarios::tipoDe(m.tipo);
    if (m.ativo != 1)
        return false;
    // Known in clear only now: a hash of fewer rounds is made again with the current ones.
    if (PasswordHash::needsRehash(m.senha))
        clsUsuarios::replaceHash(ctx.db, m.id, m.senha, PasswordHash::hash(senha));
    return true;
}

UserType Login::Tipo_usuario(AppContext& ctx, const QString& senha) {
    if (senha.isEmpty())
        return UserType::User;
    Match m;
    return matchingUsers(ctx, senha, m) == 1 ? clsUsuarios::tipoDe(m.tipo) : UserType::User;
}

QString Login::Nome_usuario(AppContext& ctx, const QString& senha) {
    if (senha.isEmpty())
        return {};
    Match m;
    return matchingUsers(ctx, senha, m) == 1 ? m.nome : QString();
}

std::optional<QString> Login::administrador(AppContext& ctx, const QString& senha) {
    if (senha.trimmed().isEmpty())
        return std::nullopt;
    Match m;
    if (matchingUsers(ctx, senha, m) != 1 || m.tipo != QLatin1String("ADM") || m.ativo != 1)
        return std::nullopt;
    return m.nome;
}
