#pragma once

#include <QList>
#include <QPair>
#include <QString>

class clsDataAccess;

// An item received without a barcode: its kind, typed value, due date ("yyyyMMdd"), instalment
// and note, as the one-off screen hands them to the counter.
struct OneOffItem {
    int idcod = 0;
    QString descricao;
    QString valor;
    QString vencimento; // "yyyyMMdd"
    QString parcela;
    QString obs;

    // The kinds that may be received so: entry kinds that are neither bank slips nor Febraban
    // guides.
    static QList<QPair<int, QString>> kinds(clsDataAccess& db);
    // "IDCOD:VALOR[:DD/MM/AAAA[:PARCELA[:OBS]]]" of the command line; false when malformed.
    static bool fromArgument(const QString& text, OneOffItem& out, QString* error);
};
