#pragma once

#include <QDateTime>

class AppContext;
class clsRecebimentos;

// What the recorders write for the central: inside their own transaction, one outbox row per
// code that may be received once, so the central learns of a receipt (or of its reversal)
// exactly when the counter's database does. Sending is never part of that transaction.
class NetworkOutbox {
public:
    // The receipt's code goes to the central. True (nothing written) without a central.
    static bool publicar(AppContext& ctx, const clsRecebimentos& r);
    // The receipt's code leaves the central: reversed, or changed to another code.
    static bool retirar(AppContext& ctx, const clsRecebimentos& r, const QDateTime& quando);
    // After the commit: the central link sends what was written (a command waits for it, the
    // screens' link does it on its own thread).
    static void enviar(AppContext& ctx);
};
