#include "DueFactor.h"

#include "CheckDigits.h"

const QDate DueFactor::kBase(1997, 10, 7);
const QDate DueFactor::kSecondCycle(2025, 2, 22);

namespace {
constexpr int kCycle = 9000;
constexpr int kDaysBefore = 3000;
constexpr int kDaysAfter = 5500;
} // namespace

DueFactor::Rule DueFactor::ruleFromSetting(const QString& value) {
    return value.trimmed().compare(QLatin1String("legado"), Qt::CaseInsensitive) == 0
               ? Rule::Legado
               : Rule::Febraban;
}

DueFactor::Result DueFactor::dueDate(const QString& factor4, const QDate& working, Rule rule) {
    if (factor4.size() != 4 || !isAllDigits(factor4))
        return {Status::Invalid, {}};
    const int factor = factor4.toInt();
    if (rule == Rule::Legado)
        return {Status::Ok, kBase.addDays(factor)};
    if (factor == 0)
        return {Status::NoDueDate, {}};
    // Cycle 0 is the first (1000 = 03/07/2000); cycle n starts 9000 * (n - 1) days after
    // 22/02/2025. Later cycles restart at 1000, so 0001 to 0999 only ever meant a date before July
    // 2000.
    const QDate first = kBase.addDays(factor);
    const int cycles = factor < 1000 ? 1 : 12;
    for (int cycle = 0; cycle < cycles; ++cycle) {
        const QDate d = first.addDays(qint64(cycle) * kCycle);
        const qint64 offset = working.daysTo(d);
        if (offset >= -kDaysBefore && offset <= kDaysAfter)
            return {Status::Ok, d};
    }
    return {Status::OutOfWindow, {}};
}

int DueFactor::factorOf(const QDate& due) {
    qint64 days = kBase.daysTo(due);
    while (days > 9999)
        days -= kCycle;
    return int(days);
}
