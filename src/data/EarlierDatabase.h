#pragma once

#include <QList>
#include <QPair>
#include <QString>
#include <optional>

class clsDataAccess;

// The receipts of an earlier caixa.db, read page by page for the import into the central.
class EarlierDatabase {
public:
    // Codes of the receipts after `depoisDe` (IDRECEBE order), at most `limite`.
    static std::optional<QList<QPair<qint64, QString>>> codigos(clsDataAccess& db, qint64 depoisDe,
                                                                int limite);
    static std::optional<qint64> contar(clsDataAccess& db);
    // The counter that owned it (empty when the database never recorded one).
    static QString guiche(clsDataAccess& db);
};
