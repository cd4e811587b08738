#include "CashAmount.h"

#include "SystemTexts.h"

std::optional<Money> CashAmount::parse(const QString& text) {
    const auto v = Money::parseTyped(text);
    if (!v || v->isNegative() || v->isZero())
        return std::nullopt;
    return v;
}

std::optional<Money> CashAmount::read(const QString& text, Notice& why) {
    if (text.trimmed().isEmpty()) {
        why = SystemTexts::notice(SystemText::CamposObrigatorios);
        return std::nullopt;
    }
    const auto v = parse(text);
    if (!v)
        why = SystemTexts::notice(SystemText::ValorInvalido);
    return v;
}
