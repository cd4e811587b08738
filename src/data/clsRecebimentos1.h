#pragma once

#include <QString>
#include <optional>

class clsDataAccess;

// RECEBIMENTOS1: the receipts of the other counters, consulted by the duplicate refusal.
class clsRecebimentos1 {
public:
    // How many rows carry this barcode.
    static std::optional<int> contarCodigo(clsDataAccess& db, const QString& codbarra);
};
