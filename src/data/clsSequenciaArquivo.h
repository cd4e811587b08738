#pragma once

#include <QString>
#include <optional>

class clsDataAccess;

// The sequence number of the bank files, one per bank (SequenciaArquivo): each file takes the
// next number inside a transaction, so no two files of a bank ever carry the same one.
class clsSequenciaArquivo {
public:
    static constexpr int kMaximo = 999999; // six digits; after it the sequence starts at 1 again

    // The bank's next number, stored before it is answered; nullopt when it could not be stored.
    static std::optional<int> proximo(clsDataAccess& db, const QString& banco);
    // The last number given to the bank (0 when none yet); nullopt when the query failed.
    static std::optional<int> ultimo(clsDataAccess& db, const QString& banco);
};
