#include "Money.h"

#include "SystemTexts.h"

#include <QStringList>
#include <cmath>
#include <limits>

Money Money::fromDoubleRounded(double reais) {
    // Half away from zero on the decimal value: 2,675 is taken as written, not as the binary
    // 2,67499... a double holds, so a tolerance decides the halves.
    const double x = std::fabs(reais * 100.0);
    // Far beyond any amount (or not a number at all): saturate instead of converting, which
    // would be undefined; withinLimit() then refuses it.
    if (!(x < 9.0e16))
        return fromUnits(reais < 0 ? std::numeric_limits<qint64>::min()
                                   : std::numeric_limits<qint64>::max());
    double whole = std::floor(x);
    if (x - whole >= 0.5 - 1e-7)
        whole += 1.0;
    const qint64 cents = static_cast<qint64>(whole);
    return fromCents(reais < 0 ? -cents : cents);
}

std::optional<Money> Money::add(Money a, Money b) {
    const qint64 r = sum(a.m_units, b.m_units);
    if (r == kTop || r == -kTop)
        return std::nullopt;
    return Money(r);
}

std::optional<Money> Money::subtract(Money a, Money b) {
    return add(a, -b);
}

std::optional<Money> Money::times(qint64 factor) const {
    if (factor == 0 || m_units == 0)
        return Money();
    const qint64 a = m_units < 0 ? -m_units : m_units;
    const qint64 f =
        factor < 0 ? (factor == std::numeric_limits<qint64>::min() ? 0 : -factor) : factor;
    if (f == 0 || a > (kTop - 1) / f)
        return std::nullopt;
    return Money((m_units < 0) != (factor < 0) ? -(a * f) : a * f);
}

QString Money::subCentavoMessage(const QString& text) {
    return SystemTexts::text(SystemText::ValorComCentavoPartido).arg(text.trimmed());
}

std::optional<Money> Money::parseTyped(const QString& text, QString* why) {
    const auto v = parse(text);
    if (!v) {
        if (why)
            *why = SystemTexts::text(SystemText::ValorInvalidoDigitado).arg(text.trimmed());
        return std::nullopt;
    }
    const QString t = text.trimmed();
    const int comma = t.indexOf(QLatin1Char(','));
    if ((comma >= 0 && t.size() - comma - 1 > 2) || v->units() % kUnitsPerCent != 0) {
        if (why)
            *why = subCentavoMessage(text);
        return std::nullopt;
    }
    return v;
}

std::optional<Money> Money::parse(const QString& input) {
    QString text = input.trimmed();
    if (text.startsWith(QLatin1String("R$")))
        text = text.mid(2).trimmed();
    bool negative = false;
    if (text.startsWith(QLatin1Char('-'))) {
        negative = true;
        text = text.mid(1);
    }
    if (text.isEmpty() || text.count(QLatin1Char(',')) > 1)
        return std::nullopt;

    const int comma = text.indexOf(QLatin1Char(','));
    QString whole = comma < 0 ? text : text.left(comma);
    const QString frac = comma < 0 ? QString() : text.mid(comma + 1);

    if (whole.contains(QLatin1Char('.'))) {
        // Dots must group thousands exactly: 1.234.567
        const QStringList groups = whole.split(QLatin1Char('.'));
        if (groups.first().isEmpty() || groups.first().size() > 3)
            return std::nullopt;
        for (int i = 1; i < groups.size(); ++i)
            if (groups[i].size() != 3)
                return std::nullopt;
        whole = groups.join(QString());
    }
    if (whole.isEmpty())
        whole = QStringLiteral("0");
    if (frac.size() > 4 || (comma >= 0 && frac.isEmpty()))
        return std::nullopt;
    for (QChar c : whole + frac)
        if (!c.isDigit() || c.unicode() > 127)
            return std::nullopt;
    while (whole.size() > 1 && whole.startsWith(QLatin1Char('0')))
        whole.remove(0, 1);
    if (whole.size() > 9)
        return std::nullopt; // beyond R$ 999.999.999,99

    bool ok = false;
    const qint64 reais = whole.toLongLong(&ok);
    if (!ok)
        return std::nullopt;
    const qint64 fracUnits = QString(frac).leftJustified(4, QLatin1Char('0')).toLongLong();
    const qint64 units = reais * kUnitsPerReal + fracUnits;
    if (units > kMaxUnits)
        return std::nullopt;
    return Money(negative ? -units : units);
}

qint64 Money::centsRounded() const {
    const qint64 a = m_units < 0 ? -m_units : m_units;
    const qint64 c = a / kUnitsPerCent + (a % kUnitsPerCent >= kUnitsPerCent / 2 ? 1 : 0);
    return m_units < 0 ? -c : c;
}

QString Money::format() const {
    const qint64 cents = centsRounded();
    const qint64 a = cents < 0 ? -cents : cents;
    QString whole = QString::number(a / 100);
    for (int i = whole.size() - 3; i > 0; i -= 3)
        whole.insert(i, QLatin1Char('.'));
    const QString frac = QStringLiteral("%1").arg(a % 100, 2, 10, QLatin1Char('0'));
    return (cents < 0 ? QStringLiteral("-") : QString()) + whole + QLatin1Char(',') + frac;
}

QString Money::formatCurrency() const {
    return QStringLiteral("R$ ") + format();
}

QString Money::centsText(int width) const {
    const qint64 cents = centsRounded();
    return QString::number(cents < 0 ? -cents : cents).rightJustified(width, QLatin1Char('0'));
}
