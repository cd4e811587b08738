#pragma once

#include "CentralNetwork.h"

#include <QDateTime>
#include <QStringList>

class AppContext;
class clsMovimento;
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
    // Before a payment's transaction: its codes that may be received once are claimed at the
    // central, so that no other counter records them meanwhile. Sozinho (record alone) without a
    // central, without such codes or when the central does not answer in time.
    static ReservaRede reservar(AppContext& ctx, const QStringList& codigos);
    // The payment of that claim was not recorded.
    static void liberar(AppContext& ctx, const ReservaRede& r);
    // Inside the closing transaction: the day's seal (its chain hash) goes to the central.
    static bool selar(AppContext& ctx, const clsMovimento& mov, const QDateTime& quando);
    // After the commit: the central link sends what was written (a command waits for it, the
    // screens' link does it on its own thread).
    static void enviar(AppContext& ctx);
};
