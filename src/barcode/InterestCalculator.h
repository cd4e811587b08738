#pragma once

#include "Acrescimos.h"

#include <QDate>
#include <QString>
#include <optional>

// The interest calculator's rules. Option 1: the rate per day as interest; option 2: the rate
// per day as a fine (at most 10%) plus 1% a month, as the counter's scheme 1; option 3: 2% once
// plus 1% a month, as the counter's scheme 2. Months counted as the counter counts them.
class InterestCalculator {
public:
    struct Input {
        int opcao = 0; // 1, 2, 3; 0 when none is chosen
        QDate hoje;
        QDate vencimento;
        std::optional<Money> prestacao; // nullopt when the field is empty or not a value
        std::optional<Money> taxa;      // a percentage, "0,33", held with four decimals
    };
    struct Result {
        QString erro; // the refusal, in the order the screen checks them
        int dias = 0;
        int meses = 0;
        Money multa;
        Money juros;
        Money total;
        bool ok() const { return erro.isEmpty(); }
    };

    static Result calcular(const Input& in);
};
