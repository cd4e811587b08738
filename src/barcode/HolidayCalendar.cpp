#include "HolidayCalendar.h"

#include "ActLog.h"
#include "AppContext.h"
#include "DateUtil.h"
#include "SystemTexts.h"
#include "Transaction.h"

namespace {
const QString kTabela = QStringLiteral("Feriados");
}

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

Outcome HolidayCalendar::gravar(AppContext& ctx, const QDate& day, qint32* id) {
    Transaction tx(ctx.db);
    const auto n = tx.ok() ? clsFeriado::contar(ctx.db, day) : std::nullopt;
    if (!n)
        return Outcome::refused({}); // the database's report says why
    if (*n > 0)
        return Outcome::refused(SystemTexts::notice(SystemText::DataJaLancada));
    clsFeriado f(ctx.db);
    f.FERIADO = day;
    if (!f.Incluir() ||
        !ActLog::gravar(ctx, Act::Feriados, ActLog::Acao::Inclusao, kTabela, f.ID) || !tx.commit())
        return Outcome::refused({});
    if (id)
        *id = f.ID;
    return Outcome::ok();
}

Outcome HolidayCalendar::excluir(AppContext& ctx, qint32 id) {
    Transaction tx(ctx.db);
    clsFeriado f(ctx.db);
    if (!tx.ok() || id <= 0 || !f.SQLSelect(id))
        return Outcome::refused(SystemTexts::notice(SystemText::InformeItem));
    if (!f.excluir(id) ||
        !ActLog::gravar(ctx, Act::Feriados, ActLog::Acao::Exclusao, kTabela, id) || !tx.commit())
        return Outcome::refused(SystemTexts::notice(SystemText::ErroExcluirFeriado));
    return Outcome::ok();
}

Outcome HolidayCalendar::excluirTodos(AppContext& ctx) {
    Transaction tx(ctx.db);
    return tx.ok() && clsFeriado::excluirTodos(ctx.db) &&
                   ActLog::gravar(ctx, Act::Feriados, ActLog::Acao::Exclusao, kTabela, 0) &&
                   tx.commit()
               ? Outcome::ok()
               : Outcome::refused(SystemTexts::notice(SystemText::ErroExcluirFeriado));
}
