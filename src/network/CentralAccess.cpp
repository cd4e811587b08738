#include "CentralAccess.h"

#include "AppContext.h"
#include "CentralConfig.h"
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
