#pragma once

#include "clsFeriado.h"

#include <QDate>
#include <QList>
#include <functional>
#include <optional>

class clsDataAccess;
class DialogPort;

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

    // The holiday screen and `feriado`: the calendar by date, and a new date unless it is
    // already there ("Data já lançada!!!").
    std::optional<QList<clsFeriado>> listar();
    bool gravar(const QDate& day, DialogPort& dialogs, qint32* id = nullptr);

    static const QString kDataJaLancada; // "Data já lançada!!!"

private:
    clsDataAccess& m_db;
};
