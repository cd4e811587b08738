#pragma once

#include "Money.h"

#include <QString>
#include <optional>

// An amount of money typed for the cash day (items, count lines, the safe): "1.234,56" or
// "150", positive, whole centavos (Money::parseTyped). Letters, two commas, a negative or a zero
// are not amounts.
class CashAmount {
public:
    static std::optional<Money> parse(const QString& text);
    static const QString kValorInvalido; // "Você precisa informar um valor válido!!"
};
