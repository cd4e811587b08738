#pragma once

#include "Money.h"

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QString>
#include <optional>

class clsDataAccess;

// The bank files written (ArquivosBanco: name, standard, bank, sequence number, movement, who
// and when) and the receipts each one carried (ArquivoRecebimentos). A run is recorded in the
// transaction that takes its sequence number, so a number belongs to a file written whole.
class clsArquivoBanco {
public:
    struct Arquivo {
        qint64 id = 0;
        QString arquivo; // the file's name, without its folder
        QString padrao;  // "C" (CNAB 240) or "F" (Febraban)
        QString banco;
        int nsa = 0; // 0 for a file that has no sequence number
        qint32 idMovimento = 0;
        int idcod = 0;
        QDateTime momento;
        QString usuario;
        int registros = 0;
        Money total;

        QString descricao() const; // "CnabAGUA202611231030.RET (NSA 3)"
    };

    // Records the file and its receipts; the caller's transaction decides.
    static bool registrar(clsDataAccess& db, Arquivo& a, const QList<qint32>& idrecebes);
    // Whether a file of this name is recorded; nullopt when the query failed.
    static std::optional<bool> registrado(clsDataAccess& db, const QString& arquivo);
    // The files that carried the receipt, oldest first.
    static std::optional<QList<Arquivo>> doRecebimento(clsDataAccess& db, qint32 idrecebe);
    // For each receipt of the movement that went in a file: its files, oldest first.
    static std::optional<QHash<qint32, QList<Arquivo>>> doMovimento(clsDataAccess& db,
                                                                    qint32 idMovimento);
};
