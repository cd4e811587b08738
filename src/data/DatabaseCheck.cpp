#include "DatabaseCheck.h"

#include "SystemTexts.h"
#include "clsDataAccess.h"

#include <QAtomicInt>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QUrl>

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

DatabaseCheck::Result DatabaseCheck::wholeFile(QSqlDatabase sql, const QString& path) {
    const bool small = QFileInfo(path).size() <= kFullOnOpenBytes;
    Result r;
    r.messages = pragmaFindings(
        sql, QStringLiteral("PRAGMA %1(%2)")
                 .arg(small ? QStringLiteral("integrity_check") : QStringLiteral("quick_check"))
                 .arg(kMaxMessages));
    r.ok = r.messages.isEmpty();
    return r;
}

std::shared_future<DatabaseCheck::Result>
DatabaseCheck::wholeFileInBackground(const QString& path) {
    static QAtomicInt serial;
    const QString name = QStringLiteral("tolvane-check-%1").arg(serial.fetchAndAddRelaxed(1));
    const QString uri =
        QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()).toString(QUrl::FullyEncoded) +
        QStringLiteral("?mode=ro");
    return std::async(std::launch::async,
                      [name, uri, path] {
                          Result r;
                          {
                              QSqlDatabase sql =
                                  QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
                              sql.setDatabaseName(uri);
                              sql.setConnectOptions(
                                  QStringLiteral("QSQLITE_OPEN_URI;QSQLITE_OPEN_READONLY;"
                                                 "QSQLITE_BUSY_TIMEOUT=5000"));
                              if (sql.open()) {
                                  r = wholeFile(sql, path);
                              } else {
                                  r.ok = false;
                                  r.messages << sql.lastError().text();
                              }
                              sql.close();
                          }
                          QSqlDatabase::removeDatabase(name);
                          return r;
                      })
        .share();
}

namespace {

quint32 bigEndian(const QByteArray& b, int at, int bytes) {
    quint32 v = 0;
    for (int i = 0; i < bytes; ++i)
        v = (v << 8) | quint8(b.at(at + i));
    return v;
}

// What is wrong with a database file's header, or nothing.
QString headerProblem(const QByteArray& h, qint64 size, bool walInUse) {
    if (h.size() < 100 || !h.startsWith(QByteArrayLiteral("SQLite format 3\0")))
        return QStringLiteral("o arquivo não começa com o cabeçalho de um banco SQLite");
    const quint32 raw = bigEndian(h, 16, 2);
    const qint64 pageSize = raw == 1 ? 65536 : raw;
    if (pageSize < 512 || pageSize > 65536 || (pageSize & (pageSize - 1)) != 0)
        return QStringLiteral("tamanho de página inválido no cabeçalho (%1)").arg(raw);
    const auto in = [&](int at, quint32 lo, quint32 hi) {
        const quint32 v = bigEndian(h, at, 1);
        return v >= lo && v <= hi;
    };
    if (!in(18, 1, 2) || !in(19, 1, 2) || bigEndian(h, 21, 1) != 64 || bigEndian(h, 22, 1) != 32 ||
        bigEndian(h, 23, 1) != 32 || pageSize - qint64(bigEndian(h, 20, 1)) < 480 ||
        bigEndian(h, 44, 4) > 4 || bigEndian(h, 56, 4) > 3)
        return QStringLiteral("cabeçalho do arquivo com valores inválidos");
    // While a write-ahead log holds pages, the file itself may lag behind the header's count.
    if (walInUse)
        return {};
    if (size % pageSize != 0)
        return QStringLiteral("o arquivo tem %1 bytes, que não é um número inteiro de páginas de "
                              "%2 bytes")
            .arg(size)
            .arg(pageSize);
    const quint32 pages = bigEndian(h, 28, 4);
    const bool countValid = pages != 0 && bigEndian(h, 24, 4) == bigEndian(h, 92, 4);
    if (countValid && qint64(pages) * pageSize != size)
        return QStringLiteral("o cabeçalho conta %1 páginas e o arquivo tem %2")
            .arg(pages)
            .arg(size / pageSize);
    return {};
}

} // namespace

DatabaseCheck::Result DatabaseCheck::header(const QString& path) {
    Result r;
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) {
        r.ok = false;
        r.messages << f.errorString();
        return r;
    }
    const QByteArray h = f.read(100);
    const QFileInfo wal(path + QStringLiteral("-wal"));
    const QString problem = headerProblem(h, f.size(), wal.exists() && wal.size() > 0);
    if (!problem.isEmpty()) {
        r.ok = false;
        r.messages << problem;
    }
    return r;
}

DatabaseCheck::Result DatabaseCheck::catalog(clsDataAccess& db) {
    // Every row of the catalog, so that a damaged catalog page shows itself here.
    Result r;
    QSqlQuery q(db.database());
    q.setForwardOnly(true);
    if (q.exec(QStringLiteral("SELECT type, name, tbl_name, rootpage, sql FROM sqlite_master")))
        while (q.next()) {
        }
    if (q.lastError().isValid()) {
        r.ok = false;
        r.messages << q.lastError().text();
    }
    return r;
}

QString DatabaseCheck::conselho() {
    return SystemTexts::text(SystemText::DanificadoConselho);
}

QString DatabaseCheck::damagedText(const QString& where, const Result& r) {
    return QStringLiteral("O banco de dados %1 está danificado (%2). %3")
        .arg(where, r.messages.value(0), conselho());
}
