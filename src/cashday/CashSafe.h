#pragma once

#include "DialogPort.h"
#include "Money.h"

#include <QString>
#include <optional>

class AppContext;

// The safe: its balance is a database value (clsCofre), changed in one transaction with the
// day's supplies and chained. Money put into the safe leaves the till and money taken out goes
// back into it, so each move also moves the day's supplies (Movimento.SUPRIMENTO), which the
// cash count can add to what was counted.
class CashSafe {
public:
    enum class Direction { In, Out };
    enum class Outcome { Done, InvalidValue, AboveBalance, AboveCeiling, Closed, Failed };
    struct Result {
        Outcome outcome = Outcome::Failed;
        Money saldo;
        QString mensagem; // what the operator is told, once the transaction has ended
        DialogIcon icon = DialogIcon::Critical;
    };

    // The balance; nullopt (message shown) when it could not be read.
    static std::optional<Money> saldo(AppContext& ctx);
    // The counter's refusal before the safe screen opens.
    static bool podeMovimentar(AppContext& ctx, qint32 idMovimento);
    // Decides and writes a typed value in one transaction and answers what happened; every
    // outcome but Done leaves the balance and the movement as they were. Nothing is shown.
    // `valor` as the edge read it: zero or negative is an invalid value.
    static Result aplicar(AppContext& ctx, qint32 idMovimento, Direction direction, Money valor);
    // The screen's and the command's way: the typed value read (CashAmount), aplicar, and the
    // operator told its message once the transaction has ended.
    static Result movimentar(AppContext& ctx, qint32 idMovimento, Direction direction,
                             const QString& valor);
};
