#pragma once

#include "Money.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <optional>

class clsDataAccess;

// The safe: its balance (Cofre, one row) and each move of it (CofreMovimentos: the movement,
// who, when, the amount and the balance after it). Both tables are in the audit chain.
class clsCofre {
public:
    // The balance; nullopt when it could not be read.
    static std::optional<Money> saldo(clsDataAccess& db);

    struct Lancamento {
        qint32 idMovimento = 0;
        QString operacao; // "ENTRADA", "SAIDA" or "SALDO INICIAL"
        Money valor;      // positive for both directions
        Money saldo;      // after the move
        QString usuario;
        QDateTime momento;
    };
    // Writes the new balance and its move row, chained; inside the caller's transaction, which
    // has already read the balance under its write lock and decided.
    static bool gravar(clsDataAccess& db, const Lancamento& l, qint64* idLancamento = nullptr);
    // The moves, oldest first; nullopt when the query failed.
    static std::optional<QList<Lancamento>> lancamentos(clsDataAccess& db);

    static const QString kEntrada;
    static const QString kSaida;
    static const QString kSaldoInicial;
};
