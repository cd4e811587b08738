#include "ActLog.h"

#include "AppContext.h"
#include "Clock.h"
#include "clsAtos.h"

namespace {
QString acaoTexto(ActLog::Acao a) {
    switch (a) {
    case ActLog::Acao::Inclusao:
        return QStringLiteral("inclusão");
    case ActLog::Acao::Alteracao:
        return QStringLiteral("alteração");
    case ActLog::Acao::Exclusao:
        return QStringLiteral("exclusão");
    case ActLog::Acao::Senha:
        return QStringLiteral("troca de senha");
    case ActLog::Acao::TextoLivre:
        return QStringLiteral("texto livre");
    case ActLog::Acao::Unica:
        break;
    }
    return {};
}
} // namespace

QString ActLog::nome(Act act, Acao acao) {
    const QString what = acaoTexto(acao);
    return what.isEmpty() ? Permissions::nome(act)
                          : Permissions::nome(act) + QStringLiteral(": ") + what;
}

bool ActLog::gravar(AppContext& ctx, Act act, Acao acao, const QString& tabela, qint64 chave) {
    // An administrator is named only for an act that needed one: a name left from an earlier
    // act of the same session does not reach an operator's act.
    const QString admin =
        Permissions::needed(ctx, act) == Authority::Administrador ? ctx.autorizadoPor : QString();
    return clsAtos::gravar(ctx.db,
                           {ctx.clock.now(), nome(act, acao), tabela, chave, ctx.userName, admin});
}
