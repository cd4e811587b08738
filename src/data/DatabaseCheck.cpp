#include "DatabaseCheck.h"

#include "clsDataAccess.h"

#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>

namespace {

constexpr int kMaxMessages = 50;

// The rows of one check pragma: empty when it answered "ok", else what it found (the error
// itself when the pragma could not even run).
QStringList pragmaFindings(QSqlDatabase db, const QString& pragma) {
    QSqlQuery q(db);
    q.setForwardOnly(true);
    if (!q.exec(pragma))
        return {q.lastError().text()};
    QStringList rows;
    while (q.next())
        rows << q.value(0).toString();
    if (rows == QStringList{QStringLiteral("ok")})
        return {};
    return rows.isEmpty() ? QStringList{q.lastError().text()} : rows;
}

} // namespace

DatabaseCheck::Result DatabaseCheck::run(clsDataAccess& db, Depth depth) {
    Result r;
    QSqlDatabase sql = db.database();
    if (db.backend() == DbBackend::PostgreSQL) {
        QSqlQuery q(sql);
        if (!q.exec(QStringLiteral("SELECT 1"))) {
            r.ok = false;
            r.messages << q.lastError().text();
        }
        return r;
    }
    if (depth == Depth::Quick) {
        r.messages =
            pragmaFindings(sql, QStringLiteral("PRAGMA quick_check(%1)").arg(kMaxMessages));
        r.ok = r.messages.isEmpty();
        return r;
    }
    r.messages =
        pragmaFindings(sql, QStringLiteral("PRAGMA integrity_check(%1)").arg(kMaxMessages));
    r.ok = r.messages.isEmpty();
    if (r.ok)
        return r;
    // Table by table, to say which ones are hit.
    QSqlQuery q(sql);
    q.setForwardOnly(true);
    if (!q.exec(
            QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name"))) {
        r.tables << QStringLiteral("catálogo (sqlite_master)");
        return r;
    }
    QStringList names;
    while (q.next())
        names << q.value(0).toString();
    q.finish();
    for (const QString& name : names) {
        const QStringList found = pragmaFindings(
            sql, QStringLiteral("PRAGMA integrity_check(\"%1\")")
                     .arg(QString(name).replace(QLatin1Char('"'), QStringLiteral("\"\""))));
        if (!found.isEmpty())
            r.tables << name;
    }
    if (r.tables.isEmpty())
        r.tables << QStringLiteral("páginas livres (nenhuma tabela)");
    return r;
}

DatabaseCheck::Result DatabaseCheck::onOpen(clsDataAccess& db) {
    if (db.backend() != DbBackend::SQLite)
        return run(db, Depth::Quick);
    const bool small = QFileInfo(db.config().sqlitePath).size() <= kFullOnOpenBytes;
    Result r;
    r.messages = pragmaFindings(db.database(), QStringLiteral("PRAGMA %1(%2)")
                                                   .arg(small ? QStringLiteral("integrity_check")
                                                              : QStringLiteral("quick_check"))
                                                   .arg(kMaxMessages));
    r.ok = r.messages.isEmpty();
    return r;
}
