#include "NetworkOutbox.h"

#include "AppContext.h"
#include "CentralAccess.h"
#include "CentralNetwork.h"
#include "Clock.h"
#include "clsMovimento.h"
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

ReservaRede NetworkOutbox::reservar(AppContext& ctx, const QStringList& codigos) {
    QStringList unicos;
    for (const QString& c : codigos)
        if (clsRecebimentos::isUniqueCode(c) && !unicos.contains(c))
            unicos << c;
    CentralNetwork* c = CentralAccess::of(ctx);
    if (unicos.isEmpty() || !c || !c->configurada())
        return {};
    const auto origem = clsPublicacaoRede::origem(ctx.db);
    if (!origem)
        return {};
    return c->reservar(unicos, *origem, ctx.settings.guiche.trimmed());
}

void NetworkOutbox::liberar(AppContext& ctx, const ReservaRede& r) {
    if (r.estado != ReservaRede::Estado::Reservada || r.reserva.isEmpty())
        return;
    if (CentralNetwork* c = CentralAccess::of(ctx))
        c->liberar(r.reserva);
}

bool NetworkOutbox::selar(AppContext& ctx, const clsMovimento& mov, const QDateTime& quando) {
    if (mov.HASH_CADEIA.isEmpty() || !CentralAccess::configurada(ctx))
        return true;
    clsPublicacaoRede p(ctx.db);
    p.OPERACAO = clsPublicacaoRede::Operacao::Selar;
    p.CODBARRA = mov.HASH_CADEIA;
    p.IDMOVIMENTO = mov.ID;
    p.GUICHE = ctx.settings.guiche.trimmed();
    p.MOMENTO = quando;
    return p.SQLInsert();
}

void NetworkOutbox::enviar(AppContext& ctx) {
    if (CentralNetwork* c = CentralAccess::of(ctx); c && c->configurada())
        c->publicar();
}
