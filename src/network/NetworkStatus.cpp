#include "NetworkStatus.h"

#include "AppContext.h"
#include "CentralAccess.h"
#include "CentralNetwork.h"
#include "clsPublicacaoRede.h"

NetworkStatus::Situacao NetworkStatus::consultar(AppContext& ctx) {
    Situacao s;
    CentralNetwork* c = CentralAccess::of(ctx);
    s.configurada = c && c->configurada();
    if (!s.configurada)
        return s;
    s.ativa = c->ativa();
    const auto r = clsPublicacaoRede::resumo(ctx.db);
    s.lida = r.has_value();
    if (r) {
        s.pendentes = r->pendentes;
        s.maisAntigo = r->maisAntigo;
        s.ultimoEnvio = r->ultimoEnvio;
    }
    return s;
}

bool NetworkStatus::atrasada(const Situacao& s, const QDateTime& agora) {
    return s.pendentes > 0 && s.maisAntigo.isValid() &&
           s.maisAntigo.secsTo(agora) > kAtrasoSegundos;
}

bool NetworkStatus::mostrarRotulo(const Situacao& s, const QDateTime& agora) {
    return s.configurada && (!s.ativa || atrasada(s, agora));
}
