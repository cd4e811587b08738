#pragma once

#include <QString>
#include <string_view>

// The typed line printed under a barcode: 47 digits for a bank slip, 48 for a collection code
// (which starts with 8). Dots, blanks and dashes are ignored.
class TypedLine {
public:
    enum class Reason : quint8 {
        Ok,
        NotALine,      // length or characters
        NotCollection, // 48 digits that do not start with 8
        Segment0,      // collection segments the standard does not assign
        Segment8,
        GeneralDigit,
        Field1, // the first field (block) whose check digit fails
        Field2,
        Field3,
        Field4,
    };
    static constexpr int kReasons = 10;

    struct Result {
        QString barcode; // the 44 digits, when every check digit holds
        int campo = -1;  // the first field whose check digit fails; 0 = the general one;
                         // -1 = not a line (length, characters, start or segment)
        QString erro;    // the message for the operator
        Reason reason = Reason::NotALine;
        bool ok() const { return !barcode.isEmpty(); }
    };

    // ASCII bytes; any other byte is refused like a letter. On Ok the 44 digits are written to
    // barcode44. Allocates nothing.
    static Reason decode(std::string_view line, char* barcode44);
    // The same on text, where every Unicode blank is a separator.
    static Reason decode(const QString& line, char* barcode44);

    static Result toBarcode(const QString& line);
    // The other way, for tests and for the back office: the line of a 44-digit barcode.
    static QString fromBarcode(const QString& barcode);
    // Whether 44 digits are the start of a typed line rather than a barcode: the check digits of
    // the line's first blocks (three fields of a slip's line, three blocks of a collection line)
    // all verify, which a barcode does once in a thousand.
    static bool pareceComecoDeLinha(const QString& digits44);

    static int campo(Reason reason);
    static QString message(Reason reason);
};
