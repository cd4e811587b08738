#pragma once

#include <QString>

// Text a person types that the program later writes into its files (the integration file, the
// year's corrections log, the tape, the daily control file): checked when it is typed, never
// changed on the way out. One line of ISO-8859-1 characters, no control characters, and no
// longer than the field it reaches.
class FileText {
public:
    // The fields and the widths of the places they reach.
    enum class Field {
        DescricaoLancamento, // a payment out's description: the integration file's debit header
        NumeroDocumento,     // an item's document number: the debit item record
        Motivo,              // a correction's or reversal's reason: one line of the year's log
        NomeOperador,        // an operator's name: logs, tape, corrections log
        Observacao,          // a one-off item's observation
        DescricaoTipo,       // a kind of guide's or of money's name: stamps, tape, coupon
        Opcao,               // a text option printed on the tape or written in a file header
    };
    static int width(Field field);
    static QString label(Field field);

    // Why `text` cannot be written in `field`, as the message to show; empty when it can.
    static QString problem(const QString& text, Field field);
    // The same for a field of `width` characters named `label`.
    static QString problem(const QString& text, int width, const QString& label);
};
