#pragma once

#include <QDate>
#include <optional>

class clsDataAccess;
class clsMovimento;

// Numbers and inserts the movement of a new cash day: the yearly counter gives MOV (1 for the
// first movement of a year), the row starts open with all amounts zero. Nothing here is shown:
// the caller tells the outcome once the transaction has ended.
class MovementNumbering {
public:
    enum class Outcome {
        Resumed,           // the day already had its movement
        Opened,            // a new movement was numbered and written
        CounterNotWritten, // "Erro de gravação do contador!!!"
        CounterNotUpdated, // "Erro de alteração do contador!!!"
        Failed,            // anything else; the database's own report says why
    };
    static bool succeeded(Outcome o) { return o == Outcome::Resumed || o == Outcome::Opened; }

    // The next number of the year, counter row written; nullopt (with why) on failure.
    static std::optional<qint16> nextNumber(clsDataAccess& db, int year, Outcome& why);
    // Counter and movement in one transaction, so a failed insert does not spend a number.
    static Outcome openNew(clsDataAccess& db, const QDate& day, clsMovimento& out);
    // The day's movement: the one it has, or a new one. A new one is looked up again under the
    // write lock, so two programs opening the same day at once end with one movement and one
    // number, and only after the whole database file is found sound.
    static Outcome openOrResume(clsDataAccess& db, const QDate& day, clsMovimento& out);
};
