#pragma once

#include <QDate>
#include <optional>

class clsDataAccess;
class clsMovimento;
class DialogPort;

// Numbers and inserts the movement of a new cash day: the yearly counter gives MOV (1 for the
// first movement of a year), the row starts "ABERTO" with all amounts zero.
class MovementNumbering {
public:
    // The next number of the year, counter row written; nullopt (message shown) on failure.
    static std::optional<qint16> nextNumber(clsDataAccess& db, DialogPort& dialogs, int year);
    // Counter and movement in one transaction, so a failed insert does not spend a number.
    static bool openNew(clsDataAccess& db, DialogPort& dialogs, const QDate& day,
                        clsMovimento& out);
    // The day's movement: the one it has, or a new one. A new one is looked up again under the
    // write lock, so two programs opening the same day at once end with one movement and one
    // number, and only after the whole database file is found sound.
    static bool openOrResume(clsDataAccess& db, DialogPort& dialogs, const QDate& day,
                             clsMovimento& out, bool& opened);
};
