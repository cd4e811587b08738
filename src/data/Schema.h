#pragma once

#include <QString>

class clsDataAccess;

// Numbered migrations. Each runs in its own transaction with its version bump; a database
// newer than the program is refused; an SQLite file is copied aside before it is migrated.
class Schema {
public:
    enum class Result { Ok, Newer, Failed };

    static int currentVersion();             // the version this program writes
    static int versionOf(clsDataAccess& db); // 0 for an empty database
    static Result migrate(clsDataAccess& db, QString* message = nullptr);

    static const QStringList& tableNames();
};
