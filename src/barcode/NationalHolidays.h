#pragma once

#include <QDate>
#include <QList>

// Brazil's national bank holidays of a year (fixed dates and the ones that follow Easter).
class NationalHolidays {
public:
    static QDate easter(int year);
    static QList<QDate> ofYear(int year);
};
