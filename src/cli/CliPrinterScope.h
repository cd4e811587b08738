#pragma once

#include "AppContext.h"
#include "AuthCounterPrinter.h"
#include "PrinterService.h"

// The authenticating printer for one command: its port open for the command's length and
// closed however the command ends.
struct CliPrinterScope {
    PrinterService service;
    AuthCounterPrinter printer;
    explicit CliPrinterScope(AppContext& ctx) : service(ctx), printer(ctx, service) {
        // A command never waits without end: the second model's document wait gets the first's
        // limit when the settings give it none.
        if (PrinterConfig::from(ctx).quattroEspera.trimmed().toInt() <= 0)
            service.quattroEsperaMs = service.documentTimeoutMs;
        service.abrirPorta();
    }
    ~CliPrinterScope() { service.fecharPorta(true); }
};
