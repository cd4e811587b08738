#include "UserAccounts.h"

#include "ActLog.h"
#include "AppContext.h"
#include "FileText.h"
#include "PasswordHash.h"
#include "Transaction.h"

namespace {

const QString kAdm = QStringLiteral("ADM");
constexpr qint32 kQuoteError = 3075;

UserAccounts::Input normalised(const UserAccounts::Input& in) {
    UserAccounts::Input n = in;
    n.nome = in.nome.trimmed();
    n.senha = in.senha.trimmed();
    n.tipo = in.tipo.trimmed();
    return n;
}

// Another operator whose stored hash accepts this password.
bool usedByAnother(const QList<clsUsuarios>& all, const QString& senha,
                   std::optional<qint32> self) {
    for (const clsUsuarios& u : all)
        if ((!self || u.ID != *self) && PasswordHash::verify(senha, u.SENHA))
            return true;
    return false;
}

// A quote is refused like in every text the program writes; the password itself is never
// written to the log.
bool refusesQuote(AppContext& ctx, const UserAccounts::Input& in) {
    if (ctx.db.refusesText({in.nome}, clsDataAccess::kLabelExecute))
        return true;
    if (!in.senha.contains(QLatin1Char('\'')))
        return false;
    ctx.errors.report(clsDataAccess::kLabelExecute,
                      {kQuoteError, QStringLiteral("Erro de sintaxe: a senha contém aspa simples."),
                       QStringLiteral("clsUsuarios")});
    return true;
}

} // namespace

UserAccounts::Result UserAccounts::check(AppContext& ctx, const Input& raw) {
    const Input in = normalised(raw);
    if (in.nome.isEmpty())
        return {Outcome::MissingField, Field::NOME};
    // The name reaches the tape, the logs and the corrections log.
    if (QString why = FileText::problem(in.nome, FileText::Field::NomeOperador); !why.isEmpty())
        return {Outcome::TextRefused, Field::NOME, 0, why};
    if (in.tipo.isEmpty())
        return {Outcome::MissingField, Field::TIPO};
    // Accepted in any case but stored as given: the administrator check compares exactly.
    if (in.tipo.compare(kAdm, Qt::CaseInsensitive) != 0 &&
        in.tipo.compare(QLatin1String("USER"), Qt::CaseInsensitive) != 0)
        return {Outcome::InvalidType, Field::TIPO};
    const auto all = clsUsuarios::listar(ctx.db);
    if (!all)
        return {Outcome::WriteFailed};
    if (in.id && std::none_of(all->begin(), all->end(),
                              [&](const clsUsuarios& u) { return u.ID == *in.id; }))
        return {Outcome::NotFound};
    // An act names its operator: two "ANA" would be one name for two people.
    if (std::any_of(all->begin(), all->end(), [&](const clsUsuarios& u) {
            return (!in.id || u.ID != *in.id) &&
                   u.NOME.trimmed().compare(in.nome, Qt::CaseInsensitive) == 0;
        }))
        return {Outcome::NameInUse, Field::NOME};
    if (!in.id && in.senha.isEmpty())
        return {Outcome::MissingField, Field::SENHA};
    if (refusesQuote(ctx, in))
        return {Outcome::QuoteRefused,
                in.senha.contains(QLatin1Char('\'')) ? Field::SENHA : Field::NOME};
    if (in.senha.isEmpty())
        return {}; // an update that keeps the current password
    if (in.senha.size() < kMinPassword)
        return {Outcome::ShortPassword, Field::SENHA};
    if (usedByAnother(*all, in.senha, in.id))
        return {Outcome::PasswordInUse, Field::SENHA};
    return {};
}

UserAccounts::Result UserAccounts::gravar(AppContext& ctx, const Input& raw) {
    const Input in = normalised(raw);
    // The checks and the write under one lock: two operators saved at once cannot both take
    // the same password.
    Transaction tx(ctx.db);
    if (!tx.ok())
        return {Outcome::WriteFailed};
    Result r = check(ctx, in);
    if (!r.ok())
        return r;
    clsUsuarios u(ctx.db);
    u.ID = in.id.value_or(0);
    u.NOME = in.nome;
    u.TIPO = in.tipo;
    u.ATIVO = in.ativo ? 1 : 0;
    u.SENHA = in.senha.isEmpty() ? QString() : PasswordHash::hash(in.senha);
    // The first administrator of a database is an act of its own (no password asked).
    const Act act = Permissions::hasAdministrator(ctx) ? Act::Usuarios : Act::CriarAdministrador;
    const ActLog::Acao acao = !in.id               ? ActLog::Acao::Inclusao
                              : in.senha.isEmpty() ? ActLog::Acao::Alteracao
                                                   : ActLog::Acao::Senha;
    if (!(in.id ? u.alterar() : u.inserirNovo()) ||
        !ActLog::gravar(ctx, act, acao, QStringLiteral("Usuarios"), u.ID) || !tx.commit())
        return {Outcome::WriteFailed};
    r.id = u.ID;
    return r;
}

bool UserAccounts::isLastAdministrator(AppContext& ctx, qint32 id) {
    const auto all = clsUsuarios::listar(ctx.db);
    if (!all)
        return false;
    int admins = 0;
    bool target = false;
    for (const clsUsuarios& u : *all) {
        if (u.TIPO != kAdm)
            continue;
        ++admins;
        target = target || u.ID == id;
    }
    return target && admins == 1;
}

UserAccounts::DeleteOutcome UserAccounts::excluir(AppContext& ctx, qint32 id,
                                                  bool lastAdministratorConfirmed) {
    Transaction tx(ctx.db);
    if (!tx.ok())
        return DeleteOutcome::Failed;
    clsUsuarios u(ctx.db);
    if (!u.SQLSelect(id))
        return DeleteOutcome::NotFound;
    if (!lastAdministratorConfirmed && isLastAdministrator(ctx, id))
        return DeleteOutcome::LastAdministrator;
    if (!u.SQLDelete() ||
        !ActLog::gravar(ctx, Act::Usuarios, ActLog::Acao::Exclusao, QStringLiteral("Usuarios"),
                        id) ||
        !tx.commit())
        return DeleteOutcome::Failed;
    return DeleteOutcome::Deleted;
}

std::optional<QList<clsUsuarios>> UserAccounts::listar(AppContext& ctx) {
    return clsUsuarios::listar(ctx.db);
}
