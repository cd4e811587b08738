#pragma once

#include "Notice.h"
#include "clsFeriado.h"

#include <QDate>
#include <QList>
#include <functional>
#include <optional>

class AppContext;
class clsDataAccess;

// The holiday calendar: a date is a holiday when exactly one Feriados row has it (a date
// entered twice, possible only outside the program, is no holiday).
class HolidayCalendar {
public:
    using IsHoliday = std::function<bool(const QDate&)>;

    explicit HolidayCalendar(clsDataAccess& db) : m_db(db) {}

    bool E_feriado(const QDate& day);
    // The first day after `day` that is neither Saturday, Sunday nor a holiday; never `day`.
    QDate Proximo_dia_util(const QDate& day);
    static QDate Proximo_dia_util(const QDate& day, const IsHoliday& isHoliday);
    static bool diaUtil(const QDate& day, const IsHoliday& isHoliday);
    IsHoliday isHoliday();

    // The holiday screen and `feriado`: the calendar by date, a new date unless it is already
    // there ("Data já lançada!!!"), one holiday deleted by its id, or all of them. The caller
    // tells the outcome. Each change is an act of the operator and the administrator in ctx.
    std::optional<QList<clsFeriado>> listar();
    static Outcome gravar(AppContext& ctx, const QDate& day, qint32* id = nullptr);
    static Outcome excluir(AppContext& ctx, qint32 id);
    static Outcome excluirTodos(AppContext& ctx);

private:
    clsDataAccess& m_db;
};
