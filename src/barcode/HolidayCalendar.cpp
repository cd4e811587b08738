#include "HolidayCalendar.h"

#include "DateUtil.h"
#include "SystemTexts.h"

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

Outcome HolidayCalendar::gravar(const QDate& day, qint32* id) {
    const auto n = clsFeriado::contar(m_db, day);
    if (!n)
        return Outcome::refused({}); // the database's report says why
    if (*n > 0)
        return Outcome::refused(SystemTexts::notice(SystemText::DataJaLancada));
    clsFeriado f(m_db);
    f.FERIADO = day;
    if (!f.Incluir())
        return Outcome::refused({});
    if (id)
        *id = f.ID;
    return Outcome::ok();
}

Outcome HolidayCalendar::excluir(qint32 id) {
    clsFeriado f(m_db);
    if (id <= 0 || !f.SQLSelect(id))
        return Outcome::refused(SystemTexts::notice(SystemText::InformeItem));
    if (!f.excluir(id))
        return Outcome::refused(SystemTexts::notice(SystemText::ErroExcluirFeriado));
    return Outcome::ok();
}

Outcome HolidayCalendar::excluirTodos() {
    return clsFeriado::excluirTodos(m_db)
               ? Outcome::ok()
               : Outcome::refused(SystemTexts::notice(SystemText::ErroExcluirFeriado));
}
