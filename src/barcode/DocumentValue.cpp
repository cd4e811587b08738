#include "DocumentValue.h"

namespace {

// Whole reais and centavos cut from the code; nullopt unless both are all digits.
std::optional<Money> digitsValue(const QString& whole, const QString& cents) {
    if (whole.isEmpty() || cents.size() != 2)
        return std::nullopt;
    for (const QChar c : whole + cents)
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return std::nullopt;
    return Money::fromCents(whole.toLongLong() * 100 + cents.toLongLong());
}

} // namespace

std::optional<Money> DocumentValue::arrecadacao(const QString& code) {
    return digitsValue(code.mid(5, 8), code.mid(13, 2));
}

std::optional<Money> DocumentValue::boleto(const QString& code) {
    return digitsValue(code.mid(10, 7), code.mid(17, 2));
}

std::optional<Money> DocumentValue::doCodigo(const QString& code) {
    if (code.size() != 44 || code.startsWith(QLatin1String("000")))
        return std::nullopt;
    for (const QChar c : code)
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return std::nullopt;
    return code.startsWith(QLatin1Char('8')) ? arrecadacao(code) : boleto(code);
}
