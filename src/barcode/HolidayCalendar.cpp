#include "HolidayCalendar.h"

#include "clsDataAccess.h"

bool HolidayCalendar::E_feriado(const QDate& day) {
    // A date entered twice is no holiday: the rule is exactly one row.
    const auto rs =
        m_db.SQLSelect_ReadOnly(QStringLiteral("SELECT ID FROM Feriados WHERE FERIADO = ?"), {day});
    return rs && rs->recordCount() == 1;
}

QDate HolidayCalendar::Proximo_dia_util(const QDate& day) {
    QDate d = day;
    int found = 0;
    while (found < 1) {
        d = d.addDays(1);
        if (d.dayOfWeek() != Qt::Sunday && d.dayOfWeek() != Qt::Saturday && !E_feriado(d))
            ++found;
    }
    return d;
}
