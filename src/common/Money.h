#pragma once

#include <QString>
#include <QtGlobal>
#include <compare>
#include <optional>

// Fixed-point currency: a 64-bit count of ten-thousandths of a real (12,5 is 125000).
// There is deliberately no constructor from double: charges computed in floating point come
// back through fromDoubleRounded, which rounds half away from zero to centavos.
class Money {
public:
    static constexpr qint64 kUnitsPerReal = 10000;
    static constexpr qint64 kUnitsPerCent = 100;

    constexpr Money() = default;
    static constexpr Money fromUnits(qint64 units) { return Money(units); }
    static constexpr Money fromCents(qint64 cents) { return Money(cents * kUnitsPerCent); }
    static constexpr Money fromReais(qint64 reais) { return Money(reais * kUnitsPerReal); }
    static Money fromDoubleRounded(double reais);

    // "1.234,56", "1234,56", "12,5", ",5", "0,00", "-3,10", "R$ 10,00". At most one comma with
    // one to four decimals after it; dots only as thousands separators. Anything else ("", ",",
    // "12,", "1,0,0", "dez") is not a value.
    static std::optional<Money> parse(const QString& text);

    constexpr qint64 units() const { return m_units; }
    qint64 centsRounded() const; // half away from zero
    double toDouble() const { return double(m_units) / kUnitsPerReal; }
    bool isZero() const { return m_units == 0; }
    bool isNegative() const { return m_units < 0; }

    QString format() const;             // "#,##0.00": "1.234,56", "-0,50"
    QString formatCurrency() const;     // "R$ #,##0.00"
    QString centsText(int width) const; // digits-only cents, zero-filled ("0000012345")

    constexpr Money operator+(Money o) const { return Money(m_units + o.m_units); }
    constexpr Money operator-(Money o) const { return Money(m_units - o.m_units); }
    constexpr Money operator-() const { return Money(-m_units); }
    Money& operator+=(Money o) {
        m_units += o.m_units;
        return *this;
    }
    Money& operator-=(Money o) {
        m_units -= o.m_units;
        return *this;
    }
    constexpr auto operator<=>(const Money&) const = default;

private:
    constexpr explicit Money(qint64 units) : m_units(units) {}
    qint64 m_units = 0;
};
