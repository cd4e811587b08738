#pragma once

#include "Money.h"

#include <QDate>
#include <QString>
#include <optional>

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
    // The typed value, the one rule of the screen and the command: whole centavos, at most two
    // decimals. nullopt with the message to show in `why`.
    static std::optional<Money> valorDigitado(const QString& text, QString* why);
    // Why the instalment or the note cannot be kept (they reach the sum file and the tape), or
    // empty.
    static QString textoProblema(const QString& parcela, const QString& obs);
    // The message of a one-off entry that cannot be summed, naming the entry.
    static QString erroSoma(const QString& entry);
};
