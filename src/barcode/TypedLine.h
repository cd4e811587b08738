#pragma once

#include <QString>

// The typed line printed under a barcode: 47 digits for a bank slip, 48 for a collection code.
// Dots, blanks and dashes are ignored.
class TypedLine {
public:
    struct Result {
        QString barcode; // the 44 digits, when every check digit holds
        int campo = -1;  // the first field whose check digit fails; 0 = the general one;
                         // -1 = not a line (length or characters)
        QString erro;    // the message for the operator
        bool ok() const { return !barcode.isEmpty(); }
    };

    static Result toBarcode(const QString& line);
    // The other way, for tests and for the back office: the line of a 44-digit barcode.
    static QString fromBarcode(const QString& barcode);

    static QString fieldMessage(int campo);
};
