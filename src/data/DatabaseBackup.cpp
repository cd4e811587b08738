#include "DatabaseBackup.h"

#include "OutputPath.h"
#include "PrivateFiles.h"
#include "SystemTexts.h"
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
bool runBackup(Connection& from, Connection& to, const QString& target, QString* error) {
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
    if (rc == SQLITE_FULL) {
        *error = OutputPath::diskFullMessage(target);
        return false;
    }
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
             runBackup(from, to, target, error);
        if (!ok && error->isEmpty())
            *error = to.error();
    }
    // The final name is taken only if nothing holds it, even now.
    if (ok)
        ok = OutputPath::publish(partial, target, error);
    QFile::remove(partial);
    QFile::remove(partial + QStringLiteral("-journal"));
    if (ok)
        PrivateFiles::secureFile(target);
    return ok;
}

QString copyName(const QDateTime& now) {
    return QStringLiteral("caixa-") + now.toString(QStringLiteral("yyyyMMdd-hhmmss")) +
           QStringLiteral(".db");
}

} // namespace

QString DatabaseBackup::target(const QString& destination, const QDateTime& now) {
    const QFileInfo info(destination);
    if (info.isDir() && !info.isSymLink())
        return QDir(destination).filePath(copyName(now));
    return destination;
}

int DatabaseBackup::removeLeftovers(const QString& folder, const QDateTime& now) {
    int removed = 0;
    const QDir dir(folder);
    const QStringList names = dir.entryList(
        {QStringLiteral("*.parcial"), QStringLiteral("*.parcial-journal")}, QDir::Files);
    for (const QString& name : names) {
        // A copy still being written by another run is younger than this.
        const QFileInfo info(dir.filePath(name));
        if (info.lastModified().secsTo(now) >= kLeftoverAgeSeconds &&
            QFile::remove(info.filePath()))
            ++removed;
    }
    return removed;
}

std::optional<QString> DatabaseBackup::copy(clsDataAccess& db, const QString& destination,
                                            const QDateTime& now, QString* error,
                                            const OutputPath::Guarded& guarded) {
    QString e;
    const QString t = target(destination, now);
    if (db.backend() != DbBackend::SQLite)
        e = SystemTexts::text(SystemText::BancoNoServidor);
    if (e.isEmpty() &&
        QFileInfo(t).absoluteFilePath() == QFileInfo(db.config().sqlitePath).absoluteFilePath())
        e = SystemTexts::text(SystemText::DestinoProprioBanco);
    if (e.isEmpty())
        e = OutputPath::problem(t, guarded);
    if (e.isEmpty() && backupTo(db.config().sqlitePath, t, &e))
        return t;
    if (error)
        *error = SystemTexts::text(SystemText::CopiaNaoFeita).arg(e);
    return std::nullopt;
}

std::optional<QString> DatabaseBackup::intoFolder(clsDataAccess& db, const QString& folder,
                                                  const QDateTime& now, int keep, QString* error) {
    if (!QDir().mkpath(folder)) {
        if (error)
            *error = SystemTexts::text(SystemText::CopiaNaoFeitaPasta)
                         .arg(QDir::toNativeSeparators(folder));
        return std::nullopt;
    }
    removeLeftovers(folder, now);
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
