#pragma once

#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <future>

class clsDataAccess;

// Whether the database file is sound. SQLite checks its own pages and indexes (quick_check,
// integrity_check); a PostgreSQL server keeps its own, so there the check only asks it to
// answer.
//
// The whole file is read only where it is worth it (see CheckRecord for the rule): the cheap
// checks below cost the same on a database of any size.
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
    // The whole file on an open SQLite connection: integrity_check up to kFullOnOpenBytes,
    // quick_check above (its cost grows with the file; see CheckRecord for when it is paid).
    static Result wholeFile(QSqlDatabase sql, const QString& path);
    static constexpr qint64 kFullOnOpenBytes = 32LL * 1024 * 1024;
    // wholeFile on a connection of its own, read-only, on a thread of its own.
    static std::shared_future<Result> wholeFileInBackground(const QString& path);

    // Before SQLite sees the file: its 100-byte header (signature, page size, formats) and its
    // size against the page count the header gives. Reads 100 bytes.
    static Result header(const QString& path);
    // "O banco de dados ... está danificado (...)", with what to do.
    static QString damagedText(const QString& where, const Result& r);
    static QString conselho();

    // After opening: the catalog is readable and holds the program's tables.
    static Result catalog(clsDataAccess& db);
};
