#pragma once

#include <QImage>
#include <QSize>

struct PeriodReport;

// The period's charts drawn by Qt Charts into pictures the report's pages carry (and the
// preview shows): receipts per day, each kind's share and receipts per hour of the day.
class ReportCharts {
public:
    static QImage dias(const PeriodReport& p, QSize size);
    static QImage tipos(const PeriodReport& p, QSize size);
    static QImage horas(const PeriodReport& p, QSize size);
};
