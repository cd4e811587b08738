#pragma once

#include "Money.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <optional>

class clsDataAccess;

// Autenticacoes: per receipt, how many times the printer confirmed its stamp, the first and the
// last time, and the operator of the last one. A payment writes its receipts' rows with no stamp
// in its own transaction; each confirmation counts one more. Every write joins the audit chain.
class clsAutenticacoes {
public:
    // What is known of one receipt's stamps. `registrado` false: a receipt recorded before the
    // program kept its stamps (nothing is known of them).
    struct Estado {
        bool registrado = false;
        int vezes = 0;
        QDateTime primeira, ultima;
        QString usuario;
    };
    // A receipt of the movement still without a confirmed stamp.
    struct Pendente {
        qint32 idrecebe = 0;
        qint32 autentica = 0;
        qint16 tipo = 0;
        QString descricao; // its kind's
        Money valor;
        QString codbarra;
        QDateTime momento; // when it was recorded
    };

    // The row of a receipt just recorded; inside the caller's transaction.
    static bool registrar(clsDataAccess& db, qint32 idRecebe, qint32 idMovimento, qint32 autentica);
    // One stamp the printer confirmed. A receipt recorded before the program kept stamps gets
    // its row now.
    static bool confirmar(clsDataAccess& db, qint32 idRecebe, const QDateTime& quando,
                          const QString& usuario);
    // nullopt when the query failed.
    static std::optional<Estado> estado(clsDataAccess& db, qint32 idRecebe);
    // The movement's receipts still to be stamped, by authentication number (receipts reversed
    // since are not among them).
    static std::optional<QList<Pendente>> pendentes(clsDataAccess& db, qint32 idMovimento);
    // How many of the movement's receipts were stamped more than once.
    static std::optional<qint64> repetidas(clsDataAccess& db, qint32 idMovimento);
};
