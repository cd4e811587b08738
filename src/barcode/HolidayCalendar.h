#pragma once

#include <QDate>

class clsDataAccess;

// The holiday calendar: a date is a holiday when exactly one Feriados row has it.
class HolidayCalendar {
public:
    explicit HolidayCalendar(clsDataAccess& db) : m_db(db) {}

    bool E_feriado(const QDate& day);
    // The first day after `day` that is neither Saturday, Sunday nor a holiday.
    QDate Proximo_dia_util(const QDate& day);

private:
    clsDataAccess& m_db;
};
