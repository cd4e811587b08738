#include "Acrescimos.h"

std::optional<int> Acrescimos::Meses_atraso(const QDate& v, const QDate& r) {
    qint64 m = qint64(r.year() - v.year()) * 12 + (r.month() - v.month());
    if (r.day() > v.day())
        ++m; // a month begun counts whole
    if (m < -32768 || m > 32767)
        return std::nullopt;
    return int(m);
}

const QDate Acrescimos::kPrimeiroVencimento = QDate(1997, 1, 1);

bool Acrescimos::calculavel(const QDate& v, Money valor) {
    return v.isValid() && v >= kPrimeiroVencimento && !valor.isNegative() && valor.withinLimit();
}

std::optional<Encargos> Acrescimos::Calcula_acrescimos(const QDate& v, const QDate& w, Money valor,
                                                       int esquema) {
    const auto meses = Meses_atraso(v, w);
    if (!meses || !calculavel(v, valor))
        return std::nullopt;
    Encargos e;
    e.vencimento = v;
    e.vencida = v < w;
    e.dias = int(v.daysTo(w));
    e.meses = *meses;
    e.valor = valor;
    const double base = valor.toDouble();
    if (esquema == 1 || esquema == 2) {
        e.juros = Money::fromDoubleRounded(base * e.meses / 100.0);
        if (esquema == 1) {
            float rate = float(e.dias * 0.33); // the day rate is held in single precision
            if (rate > 10.0f)
                rate = 10.0f;
            e.multa = Money::fromDoubleRounded(base * double(rate) / 100.0);
        } else {
            e.multa = Money::fromDoubleRounded(base * 2.0 / 100.0);
        }
    }
    e.total = valor + e.juros + e.multa;
    if (!e.total.withinLimit())
        return std::nullopt;
    return e;
}

QDate Acrescimos::vencimentoEfetivo(const QDate& v, const QDate& w, const IsHoliday& isHoliday) {
    if (!HolidayCalendar::diaUtil(v, isHoliday)) {
        const QDate n = HolidayCalendar::Proximo_dia_util(v, isHoliday);
        if (n == w)
            return n;
    }
    return v;
}

std::optional<Encargos> Acrescimos::avaliar(const QDate& v, const QDate& w, Money valor,
                                            bool comJuros, int esquema,
                                            const IsHoliday& isHoliday) {
    const QDate due = vencimentoEfetivo(v, w, isHoliday);
    if (!calculavel(due, valor))
        return std::nullopt;
    if (due >= w || !comJuros) {
        Encargos e;
        e.vencimento = due;
        e.vencida = due < w;
        e.dias = due < w ? int(due.daysTo(w)) : 0;
        const auto m = due < w ? Meses_atraso(due, w) : std::optional<int>(0);
        if (!m)
            return std::nullopt;
        e.meses = *m;
        e.valor = e.total = valor;
        return e;
    }
    return Calcula_acrescimos(due, w, valor, esquema);
}
