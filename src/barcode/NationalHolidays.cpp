#include "NationalHolidays.h"

#include <algorithm>

QDate NationalHolidays::easter(int y) {
    // Anonymous Gregorian algorithm.
    const int a = y % 19, b = y / 100, c = y % 100, d = b / 4, e = b % 4;
    const int f = (b + 8) / 25, g = (b - f + 1) / 3, h = (19 * a + b - d - g + 15) % 30;
    const int i = c / 4, k = c % 4, l = (32 + 2 * e + 2 * i - h - k) % 7;
    const int m = (a + 11 * h + 22 * l) / 451;
    const int month = (h + l - 7 * m + 114) / 31, day = ((h + l - 7 * m + 114) % 31) + 1;
    return QDate(y, month, day);
}

QList<QDate> NationalHolidays::ofYear(int y) {
    const QDate e = easter(y);
    QList<QDate> days = {QDate(y, 1, 1),   e.addDays(-48),  e.addDays(-47),   e.addDays(-2),
                         QDate(y, 4, 21),  QDate(y, 5, 1),  e.addDays(60),    QDate(y, 9, 7),
                         QDate(y, 10, 12), QDate(y, 11, 2), QDate(y, 11, 15), QDate(y, 11, 20),
                         QDate(y, 12, 25)};
    std::sort(days.begin(), days.end());
    return days;
}
