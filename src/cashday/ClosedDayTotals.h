#pragma once

#include "Money.h"

#include <QDate>
#include <QList>
#include <optional>

class clsDataAccess;

// A closed day's totals in Movimento are what its closing summed from the chained rows (the
// movement's receipts, the cash entries of its date). Movimento itself is not chained: the audit
// sums those rows again and compares, so a total changed behind the program's back is found.
class ClosedDayTotals {
public:
    enum class Total { Arrecadado, Entrada, Saida };
    struct Difference {
        qint32 idMovimento = 0;
        QDate dia;
        qint16 mov = 0;
        Total total = Total::Arrecadado;
        Money guardado; // in Movimento
        Money somado;   // from the rows
    };
    // Every closed day, or only the movement `idMovimento` when it is closed. nullopt when the
    // database could not be read.
    static std::optional<QList<Difference>>
    conferir(clsDataAccess& db, std::optional<qint32> idMovimento = std::nullopt);
    // The column of Movimento that holds the total.
    static QString coluna(Total total);
};
