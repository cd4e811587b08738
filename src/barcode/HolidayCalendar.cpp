#include "HolidayCalendar.h"

#include "DateUtil.h"
#include "DialogPort.h"

const QString HolidayCalendar::kDataJaLancada = QStringLiteral("Data já lançada!!!");

bool HolidayCalendar::E_feriado(const QDate& day) {
    const auto n = clsFeriado::contar(m_db, day);
    return n && *n == 1; // a failed read leaves only the weekends
}

HolidayCalendar::IsHoliday HolidayCalendar::isHoliday() {
    return [this](const QDate& d) { return E_feriado(d); };
}

bool HolidayCalendar::diaUtil(const QDate& day, const IsHoliday& isHoliday) {
    return !DateUtil::isWeekend(day) && !(isHoliday && isHoliday(day));
}

QDate HolidayCalendar::Proximo_dia_util(const QDate& day, const IsHoliday& isHoliday) {
    QDate d = day.addDays(1);
    while (!diaUtil(d, isHoliday))
        d = d.addDays(1);
    return d;
}

QDate HolidayCalendar::Proximo_dia_util(const QDate& day) {
    return Proximo_dia_util(day, isHoliday());
}

std::optional<QList<clsFeriado>> HolidayCalendar::listar() {
    return clsFeriado::listar(m_db);
}

bool HolidayCalendar::gravar(const QDate& day, DialogPort& dialogs, qint32* id) {
    const auto n = clsFeriado::contar(m_db, day);
    if (!n)
        return false;
    if (*n > 0) {
        dialogs.warn(QStringLiteral("Aviso"), kDataJaLancada);
        return false;
    }
    clsFeriado f(m_db);
    f.FERIADO = day;
    if (!f.Incluir())
        return false;
    if (id)
        *id = f.ID;
    return true;
}
