#pragma once

#include "Money.h"

#include <QDate>
#include <QString>

// An item received without a barcode: its kind, value, due date, instalment and note, as the
// one-off screen (or `caixa receber --avulso`) hands them to the counter.
struct OneOffItem {
    int idcod = 0;
    Money valor;
    QDate vencimento; // invalid: due on the working date
    QString parcela;
    QString obs;

    // "IDCOD:VALOR[:DD/MM/AAAA[:PARCELA[:OBS]]]" of the command line; false when malformed.
    static bool fromArgument(const QString& text, OneOffItem& out, QString* error);
    // The message of a one-off entry that cannot be summed: the entry, then kErroSoma.
    static QString erroSoma(const QString& entry);
    static const QString kErroSoma; // " - Erro na Soma Avulso!!"
};
