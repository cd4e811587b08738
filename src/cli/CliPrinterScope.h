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
        service.abrirPorta();
    }
    ~CliPrinterScope() { service.fecharPorta(true); }
};
