#pragma once

#include "OutputPath.h"

#include <QDateTime>
#include <QString>
#include <optional>

class clsDataAccess;

// Copies of the counter's SQLite database taken while it is in use: SQLite's online backup
// reads one consistent state of the file (a payment being written is either wholly in the copy
// or not at all) and the copy appears under its final name only when complete. A PostgreSQL
// database is copied with pg_dump on the server instead.
class DatabaseBackup {
public:
    static constexpr int kKeep = 30;

    // Into `destination`: a new file, or a folder (the copy is named as in intoFolder). Never
    // overwrites. Answers the file written.
    // `guarded`: files the copy may never take (see OutputPath).
    static std::optional<QString> copy(clsDataAccess& db, const QString& destination,
                                       const QDateTime& now, QString* error,
                                       const OutputPath::Guarded& guarded = {});
    // The file a copy into `destination` would be.
    static QString target(const QString& destination, const QDateTime& now);
    // Removes what copies cut short left in `folder` (".parcial" files and their journals)
    // once they are old enough not to be another run's copy in progress. Answers how many.
    static int removeLeftovers(const QString& folder, const QDateTime& now);
    static constexpr int kLeftoverAgeSeconds = 600;
    // The closing's copy, "caixa-AAAAMMDD-HHMMSS.db" in `folder`; only the newest `keep`
    // copies stay.
    static std::optional<QString> intoFolder(clsDataAccess& db, const QString& folder,
                                             const QDateTime& now, int keep, QString* error);
};
