#pragma once

#include <QString>
#include <QStringList>

class clsDataAccess;

// Numbered migrations. Each runs in its own transaction with its version bump; a database
// newer than the program is refused; an SQLite file is copied aside before it is migrated.
class Schema {
public:
    enum class Result { Ok, Newer, Failed };

    // Values the program kept outside the database before a version took them in; each is read
    // by its migration only. `cofre`: Config.ini's [Reserva] cofre, the safe's balance.
    struct Legacy {
        QString cofre;
    };

    static int currentVersion();             // the version this program writes
    static int versionOf(clsDataAccess& db); // 0 for an empty database
    // `notes` receives what an update found and kept (receipts already repeated, marked).
    // `upTo` stops at an older version (tests build the databases of earlier versions).
    static Result migrate(clsDataAccess& db, QString* message = nullptr,
                          QStringList* notes = nullptr, int upTo = -1, const Legacy& legacy = {});
    // Receipts marked as repeating an earlier one (kept, outside the unique-code rule).
    static QStringList markedDuplicates(clsDataAccess& db);

    static const QStringList& tableNames();
};
