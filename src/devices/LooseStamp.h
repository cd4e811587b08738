#pragma once

#include "Money.h"
#include "Notice.h"

#include <QString>
#include <optional>

class AppContext;
class PrinterService;

// A loose document stamped at the counter is an administrator's act and leaves a row in the
// audit chain: recorded before it goes to the printer (a stamp never exists without its row)
// and confirmed once the printer stamped it. Only a confirmed stamp is shown as the last one.
class LooseStamp {
public:
    enum class Outcome { Registrada, ValorInvalido, AutenticadoraDesligada, FalhaGravacao };
    struct Resultado {
        Outcome outcome = Outcome::FalhaGravacao;
        qint64 id = 0;
        QString texto; // the line to stamp
        bool confirmada = false;
        Notice notice() const; // the refusal; empty when it was recorded
    };

    // The amount checked as DocumentStamp::preparar does, then the row written for the operator
    // logged in and the administrator who allowed it.
    static Resultado registrar(AppContext& ctx, const std::optional<Money>& valor,
                               const QString& administrador);
    // The printer stamped it.
    static bool confirmar(AppContext& ctx, qint64 id);
    // All of it at once on a printer of the caller's (the command line), its port opened for
    // the stamp only: recorded, stamped and, when the printer stamped it, confirmed.
    static Resultado autenticar(AppContext& ctx, PrinterService& printer,
                                const std::optional<Money>& valor, const QString& administrador);
};
