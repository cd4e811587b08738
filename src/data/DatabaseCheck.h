#pragma once

#include <QString>
#include <QStringList>

class clsDataAccess;

// Whether the database file is sound. SQLite checks its own pages and indexes (quick_check,
// integrity_check); a PostgreSQL server keeps its own, so there the check only asks it to
// answer.
class DatabaseCheck {
public:
    enum class Depth {
        Quick, // pages and records, not whether the indexes match their tables
        Full,  // everything, table by table, naming the tables hit
    };
    struct Result {
        bool ok = true;
        QStringList messages; // what SQLite found (at most a few dozen lines)
        QStringList tables;   // tables (or "catálogo", "páginas livres") hit; Full only
    };

    static Result run(clsDataAccess& db, Depth depth);
    // The check made on every open: the full one up to kFullOnOpenBytes, the quick one above.
    static Result onOpen(clsDataAccess& db);
    static constexpr qint64 kFullOnOpenBytes = 32LL * 1024 * 1024;
};
