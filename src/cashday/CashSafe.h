#pragma once

#include "Money.h"

#include <QString>
#include <optional>

class AppContext;

// The safe: its balance lives in Config.ini ([Reserva] cofre). Money put into the safe leaves
// the till and money taken out goes back into it, so each movement also moves the day's
// supplies (Movimento.SUPRIMENTO), which the cash count can add to what was counted.
class CashSafe {
public:
    enum class Direction { In, Out };
    enum class Outcome { Done, InvalidValue, AboveBalance, Closed, Failed };
    struct Result {
        Outcome outcome = Outcome::Failed;
        Money saldo;
    };

    static const QString kTitulo;         // "Aviso"
    static const QString kCaixaEncerrado; // moving the safe on a closed day
    static const QString kAcimaDoSaldo;   // "Valor não pode ser maior que o saldo disponível."
    static const QString kGravado;        // "Valor gravado. Saldo atualizado para R$ "

    // The balance; nullopt (message shown) when the setting holds something that is not money.
    static std::optional<Money> saldo(AppContext& ctx);
    // The counter's refusal before the safe screen opens.
    static bool podeMovimentar(AppContext& ctx, qint32 idMovimento);
    // Applies a typed value. Every outcome but Done leaves the balance and the movement as
    // they were; the operator is told either way.
    static Result movimentar(AppContext& ctx, qint32 idMovimento, Direction direction,
                             const QString& valor);
};
