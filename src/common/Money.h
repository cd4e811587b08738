#pragma once

#include <QString>
#include <QtGlobal>
#include <compare>
#include <limits>
#include <optional>

// Fixed-point currency: a 64-bit count of ten-thousandths of a real (12,5 is 125000).
// There is deliberately no constructor from double: charges computed in floating point come
// back through fromDoubleRounded, which rounds half away from zero to centavos.
//
// No amount the program takes in or writes may exceed kMaxUnits, R$ 999.999.999,99: the
// eleven digits of a Febraban value field, more than any guide carries. The arithmetic never
// wraps: the operators saturate far beyond that maximum (so a result that went wrong is caught
// by withinLimit()), and the checked forms answer nullopt instead.
class Money {
public:
    static constexpr qint64 kUnitsPerReal = 10000;
    static constexpr qint64 kUnitsPerCent = 100;
    static constexpr qint64 kMaxUnits = 99'999'999'999LL * kUnitsPerCent;

    constexpr Money() = default;
    static constexpr Money fromUnits(qint64 units) { return Money(clamp(units)); }
    static constexpr Money fromCents(qint64 cents) { return Money(scaled(cents, kUnitsPerCent)); }
    static constexpr Money fromReais(qint64 reais) { return Money(scaled(reais, kUnitsPerReal)); }
    static Money fromDoubleRounded(double reais);
    static constexpr Money maximum() { return Money(kMaxUnits); }

    // "1.234,56", "1234,56", "12,5", ",5", "0,00", "-3,10", "R$ 10,00". At most one comma with
    // one to four decimals after it; dots only as thousands separators; never beyond the
    // maximum. Anything else ("", ",", "12,", "1,0,0", "dez") is not a value.
    static std::optional<Money> parse(const QString& text);
    // An amount a person typed (a field of a screen, a command's option): as parse, but whole
    // centavos, at most two decimals ("10,005" is not an amount). `why`, when given, gets the
    // message to show.
    static std::optional<Money> parseTyped(const QString& text, QString* why = nullptr);
    static QString subCentavoMessage(const QString& text);

    constexpr qint64 units() const { return m_units; }
    qint64 centsRounded() const; // half away from zero
    double toDouble() const { return double(m_units) / kUnitsPerReal; }
    bool isZero() const { return m_units == 0; }
    bool isNegative() const { return m_units < 0; }
    constexpr bool withinLimit() const { return m_units >= -kMaxUnits && m_units <= kMaxUnits; }

    QString format() const;             // "#,##0.00": "1.234,56", "-0,50"
    QString formatCurrency() const;     // "R$ #,##0.00"
    QString centsText(int width) const; // digits-only cents, zero-filled ("0000012345")

    // Checked forms: nullopt when the result leaves the 64-bit range.
    static std::optional<Money> add(Money a, Money b);
    static std::optional<Money> subtract(Money a, Money b);
    std::optional<Money> times(qint64 factor) const;

    constexpr Money operator+(Money o) const { return Money(sum(m_units, o.m_units)); }
    constexpr Money operator-(Money o) const { return Money(sum(m_units, -o.m_units)); }
    constexpr Money operator-() const { return Money(-m_units); }
    Money& operator+=(Money o) { return *this = *this + o; }
    Money& operator-=(Money o) { return *this = *this - o; }
    constexpr auto operator<=>(const Money&) const = default;

private:
    // The saturation bound is symmetric, so negating a value is always defined.
    static constexpr qint64 kTop = std::numeric_limits<qint64>::max();

    static constexpr qint64 clamp(qint64 v) { return v < -kTop ? -kTop : v; }
    static constexpr qint64 sum(qint64 a, qint64 b) {
        if (b > 0 && a > kTop - b)
            return kTop;
        if (b < 0 && a < -kTop - b)
            return -kTop;
        return a + b;
    }
    static constexpr qint64 scaled(qint64 v, qint64 factor) {
        if (v > kTop / factor)
            return kTop;
        if (v < -kTop / factor)
            return -kTop;
        return v * factor;
    }

    constexpr explicit Money(qint64 units) : m_units(units) {}
    qint64 m_units = 0;
};
