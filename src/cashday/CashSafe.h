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

    static const QString kTitulo;         // "Aviso"
    static const QString kCaixaEncerrado; // moving the safe on a closed day
    static const QString kAcimaDoSaldo;   // "Valor não pode ser maior que o saldo disponível."
    static const QString kGravado;        // "Valor gravado. Saldo atualizado para R$ "
    static const QString
        kAcimaDoLimite; // the balance or the day's supplies would pass R$ 999.999.999,99
    static const QString kFalhou;

    // The balance; nullopt (message shown) when it could not be read.
    static std::optional<Money> saldo(AppContext& ctx);
    // The counter's refusal before the safe screen opens.
    static bool podeMovimentar(AppContext& ctx, qint32 idMovimento);
    // Decides and writes a typed value in one transaction and answers what happened; every
    // outcome but Done leaves the balance and the movement as they were. Nothing is shown.
    static Result aplicar(AppContext& ctx, qint32 idMovimento, Direction direction,
                          const QString& valor);
    // aplicar, then the operator is told its message.
    static Result movimentar(AppContext& ctx, qint32 idMovimento, Direction direction,
                             const QString& valor);
};
