#pragma once

#include "Money.h"

#include <QString>
#include <optional>

// The value a 44-digit code carries, cut by its layout. The reading takes it from here, and the
// reports split what was paid into the document's value and the charges added at the counter.
class DocumentValue {
public:
    // A collection guide (first digit "8"): reais in positions 6-13, centavos in 14-15.
    static std::optional<Money> arrecadacao(const QString& code);
    // A bank slip: reais in positions 11-17, centavos in 18-19.
    static std::optional<Money> boleto(const QString& code);
    // By the code's own layout; nullopt for anything that is not 44 digits or carries no
    // document of its own (codes starting "000", the one-off items).
    static std::optional<Money> doCodigo(const QString& code);
};
