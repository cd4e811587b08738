#pragma once

#include "HolidayCalendar.h"
#include "Money.h"

#include <QDate>
#include <functional>
#include <optional>

// Late charges of overdue guides. Scheme 1: 1% a month plus 0,33% a day (at most 10%); scheme 2:
// 1% a month plus 2% once; any other: none. Each charge is rounded to centavos (half away from
// zero) before it is added.
struct Encargos {
    QDate vencimento; // after the weekend or holiday shift
    bool vencida = false;
    int dias = 0;
    int meses = 0;
    Money valor; // face value
    Money juros; // 1% a month: the "(+) Outros Acrescimos" line
    Money multa; // the day rate or the 2%: the "(+) Mora / Multa" line
    Money total;
};

class Acrescimos {
public:
    using IsHoliday = HolidayCalendar::IsHoliday;

    // Months of delay: whole months between the dates, plus one when the day of the month of
    // `r` is past that of `v`. nullopt when it does not fit 16 bits.
    static std::optional<int> Meses_atraso(const QDate& v, const QDate& r);

    // Charges are computed only for guides due from this day on (no guide of the system is
    // older) and only for amounts within Money's maximum, so every result fits.
    static const QDate kPrimeiroVencimento; // 01/01/1997
    static bool calculavel(const QDate& v, Money valor);

    // The charges of `valor` due `v` and paid `w`; nullopt when the months overflow, the guide
    // is not calculavel or the total would pass Money's maximum.
    static std::optional<Encargos> Calcula_acrescimos(const QDate& v, const QDate& w, Money valor,
                                                      int esquema);

    // A due date on a weekend or holiday is moved to the next business day only when that day is
    // the working date.
    static QDate vencimentoEfetivo(const QDate& v, const QDate& w, const IsHoliday& isHoliday);

    // Whole decision for one guide: shift, overdue or not, and the charges when `comJuros`.
    static std::optional<Encargos> avaliar(const QDate& v, const QDate& w, Money valor,
                                           bool comJuros, int esquema, const IsHoliday& isHoliday);
};
