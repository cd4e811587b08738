#pragma once

#include <QByteArray>

struct PeriodReport;

// The period as a spreadsheet opens it without questions in Brazil: UTF-8 with a byte order
// mark, ";" between fields, "," before the centavos and no thousands mark, CRLF. One line per
// day and kind of guide, after a line of column names.
class PeriodCsv {
public:
    static QByteArray texto(const PeriodReport& p);
};
