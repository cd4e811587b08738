#include "DatabaseBackup.h"

#include "PrivateFiles.h"
#include "clsDataAccess.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <QUrl>
#include <sqlite3.h>

namespace {

QString uriFor(const QString& path, const char* params) {
    return QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()).toString(QUrl::FullyEncoded) +
           QLatin1Char('?') + QLatin1String(params);
}

struct Connection {
    sqlite3* handle = nullptr;
    ~Connection() { sqlite3_close_v2(handle); }
    bool open(const QString& uri, int flags) {
        sqlite3_close_v2(handle);
        handle = nullptr;
        return sqlite3_open_v2(uri.toUtf8().constData(), &handle, flags | SQLITE_OPEN_URI,
                               nullptr) == SQLITE_OK;
    }
    QString error() const {
        return handle ? QString::fromUtf8(sqlite3_errmsg(handle)) : QStringLiteral("sem memória");
    }
};

// Page by page from `from` to `to`; while a writer holds the file the copy waits and resumes.
bool runBackup(Connection& from, Connection& to, QString* error) {
    sqlite3_backup* b = sqlite3_backup_init(to.handle, "main", from.handle, "main");
    if (!b) {
        *error = to.error();
        return false;
    }
    int rc = SQLITE_OK;
    for (int waits = 0; waits < 600; ++waits) {
        rc = sqlite3_backup_step(b, -1);
        if (rc != SQLITE_BUSY && rc != SQLITE_LOCKED)
            break;
        QThread::msleep(50);
    }
    sqlite3_backup_finish(b);
    if (rc != SQLITE_DONE) {
        *error = QString::fromUtf8(sqlite3_errstr(rc));
        return false;
    }
    return true;
}

bool backupTo(const QString& source, const QString& target, QString* error) {
    Connection from;
    // A read-only folder has no shared-memory file to offer; an immutable read needs none.
    if (!from.open(uriFor(source, "mode=ro"), SQLITE_OPEN_READONLY) ||
        sqlite3_exec(from.handle, "SELECT count(*) FROM sqlite_master", nullptr, nullptr,
                     nullptr) != SQLITE_OK) {
        if (!from.open(uriFor(source, "mode=ro&immutable=1"), SQLITE_OPEN_READONLY)) {
            *error = from.error();
            return false;
        }
    }
    const QString partial = target + QStringLiteral(".parcial");
    QFile::remove(partial);
    bool ok = false;
    {
        Connection to;
        ok = to.open(uriFor(partial, "mode=rwc"), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE) &&
             runBackup(from, to, error);
        if (!ok && error->isEmpty())
            *error = to.error();
    }
    if (ok && !QFile::rename(partial, target)) {
        *error = QStringLiteral("não foi possível dar o nome final a %1")
                     .arg(QDir::toNativeSeparators(target));
        ok = false;
    }
    if (!ok)
        QFile::remove(partial);
    PrivateFiles::secureFile(target);
    return ok;
}

QString copyName(const QDateTime& now) {
    return QStringLiteral("caixa-") + now.toString(QStringLiteral("yyyyMMdd-hhmmss")) +
           QStringLiteral(".db");
}

} // namespace

std::optional<QString> DatabaseBackup::copy(clsDataAccess& db, const QString& destination,
                                            const QDateTime& now, QString* error) {
    QString e;
    QString target = destination;
    if (db.backend() != DbBackend::SQLite) {
        e = QStringLiteral("O banco está num servidor PostgreSQL: copie-o com pg_dump (veja "
                           "docs/BANCO.md).");
    } else if (QFileInfo(destination).isDir()) {
        target = QDir(destination).filePath(copyName(now));
    }
    if (e.isEmpty() && QFileInfo::exists(target))
        e = QStringLiteral("%1 já existe; a cópia nunca substitui um arquivo.")
                .arg(QDir::toNativeSeparators(target));
    if (e.isEmpty() && QFileInfo(target).absoluteFilePath() ==
                           QFileInfo(db.config().sqlitePath).absoluteFilePath())
        e = QStringLiteral("O destino é o próprio banco.");
    if (e.isEmpty() && backupTo(db.config().sqlitePath, target, &e))
        return target;
    if (error)
        *error = QStringLiteral("Cópia do banco não feita: ") + e;
    return std::nullopt;
}

std::optional<QString> DatabaseBackup::intoFolder(clsDataAccess& db, const QString& folder,
                                                  const QDateTime& now, int keep, QString* error) {
    if (!QDir().mkpath(folder)) {
        if (error)
            *error = QStringLiteral("Cópia do banco não feita: não foi possível criar %1.")
                         .arg(QDir::toNativeSeparators(folder));
        return std::nullopt;
    }
    QString target = QDir(folder).filePath(copyName(now));
    for (int n = 2; QFileInfo::exists(target); ++n)
        target = QDir(folder).filePath(
            copyName(now).replace(QStringLiteral(".db"), QStringLiteral("-%1.db").arg(n)));
    const auto written = copy(db, target, now, error);
    if (!written)
        return std::nullopt;
    // The names sort by date and time, so the oldest come first.
    QStringList copies =
        QDir(folder).entryList({QStringLiteral("caixa-*.db")}, QDir::Files, QDir::Name);
    while (copies.size() > keep)
        QFile::remove(QDir(folder).filePath(copies.takeFirst()));
    return written;
}
