#pragma once

#include "Money.h"
#include "Notice.h"

#include <QString>
#include <optional>

// An amount of money typed for the cash day (items, count lines, the safe): "1.234,56" or
// "150", positive, whole centavos (Money::parseTyped). Letters, two commas, a negative or a zero
// are not amounts.
class CashAmount {
public:
    static std::optional<Money> parse(const QString& text);
    // The edge's reading of a typed amount: nullopt with `why` set ("Todos os campos
    // obrigatórios..." when empty, "Você precisa informar um valor válido!!" otherwise).
    static std::optional<Money> read(const QString& text, Notice& why);
};
