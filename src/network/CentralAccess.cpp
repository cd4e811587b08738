#include "CentralAccess.h"

#include "AppContext.h"
#include "CentralConfig.h"
#include "CentralDuplicates.h"
#include "DirectCentral.h"

CentralNetwork* CentralAccess::of(AppContext& ctx) {
    if (!ctx.rede) {
        if (!CentralConfig::fromIni(ctx.iniPath()).configurada())
            return nullptr;
        ctx.rede = std::make_shared<DirectCentral>(ctx);
    }
    return ctx.rede.get();
}

bool CentralAccess::configurada(AppContext& ctx) {
    CentralNetwork* c = of(ctx);
    return c && c->configurada();
}

namespace {
class Answer : public CentralDuplicates {
public:
    bool configurada(AppContext& ctx) override { return CentralAccess::configurada(ctx); }
    bool ativa(AppContext& ctx) override {
        CentralNetwork* c = CentralAccess::of(ctx);
        return c && c->ativa();
    }
    std::optional<bool> recebida(AppContext& ctx, const QString& codbarra) override {
        CentralNetwork* c = CentralAccess::of(ctx);
        return c ? c->recebida(codbarra) : std::optional<bool>(false);
    }
};
} // namespace

void CentralAccess::registrar() {
    static Answer answer;
    CentralDuplicates::registrar(&answer);
}
