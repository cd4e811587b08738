#include "NetworkOutbox.h"

#include "AppContext.h"
#include "CentralAccess.h"
#include "CentralNetwork.h"
#include "Clock.h"
#include "clsPublicacaoRede.h"
#include "clsRecebimentos.h"

namespace {
bool write(AppContext& ctx, const clsRecebimentos& r, clsPublicacaoRede::Operacao op,
           const QDateTime& quando) {
    if (!clsRecebimentos::isUniqueCode(r.CODBARRA) || !CentralAccess::configurada(ctx))
        return true;
    clsPublicacaoRede p(ctx.db);
    p.OPERACAO = op;
    p.CODBARRA = r.CODBARRA;
    p.IDRECEBE = r.IDRECEBE;
    p.AUTENTICA = r.AUTENTICA;
    p.IDMOVIMENTO = r.IDMOVIMENTO;
    p.GUICHE = ctx.settings.guiche.trimmed();
    p.MOMENTO = quando;
    return p.SQLInsert();
}
} // namespace

bool NetworkOutbox::publicar(AppContext& ctx, const clsRecebimentos& r) {
    return write(ctx, r, clsPublicacaoRede::Operacao::Publicar,
                 r.MOMENTO.isValid() ? r.MOMENTO : ctx.clock.now());
}

bool NetworkOutbox::retirar(AppContext& ctx, const clsRecebimentos& r, const QDateTime& quando) {
    return write(ctx, r, clsPublicacaoRede::Operacao::Retirar, quando);
}

void NetworkOutbox::enviar(AppContext& ctx) {
    if (CentralNetwork* c = CentralAccess::of(ctx); c && c->configurada())
        c->publicar();
}
