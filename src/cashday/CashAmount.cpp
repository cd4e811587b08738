#include "CashAmount.h"

const QString CashAmount::kValorInvalido =
    QStringLiteral("Você precisa informar um valor válido!!");

std::optional<Money> CashAmount::parse(const QString& text) {
    const auto v = Money::parseTyped(text);
    if (!v || v->isNegative() || v->isZero())
        return std::nullopt;
    return v;
}
