#pragma once

#include <QDate>
#include <QString>
#include <optional>

// The due date of a bank slip from its four-digit due factor. Febraban restarts the factor at
// 1000 every 9000 days (03/07/2000, then 22/02/2025, ...); the cycle meant is the one that puts
// the date between 3000 days before and 5500 days after the working date. Factor 0000 means the
// slip has no due date. The fixed-base rule (07/10/1997 + factor, no cycles) is the setting
// "legado".
class DueFactor {
public:
    enum class Rule { Febraban, Legado };
    enum class Status { Ok, NoDueDate, OutOfWindow, Invalid };

    struct Result {
        Status status = Status::Invalid;
        QDate date; // valid only with Ok
    };

    static Rule ruleFromSetting(const QString& value); // [Opcoes] fator_vencimento
    static Result dueDate(const QString& factor4, const QDate& working, Rule rule);
    // The factor that prints the given date in the cycle of the working date (for tests, files).
    static int factorOf(const QDate& due);

    static const QDate kBase;        // 07/10/1997
    static const QDate kSecondCycle; // 22/02/2025, factor 1000 again
};
