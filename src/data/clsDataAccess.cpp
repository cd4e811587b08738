#include "clsDataAccess.h"

#include "CheckRecord.h"
#include "SystemTexts.h"

#include "ErrorLog.h"
#include "Transaction.h"

#include <QAtomicInt>
#include <QDir>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QStorageInfo>
#include <QUrl>

const QString clsDataAccess::kLabelExecute = QStringLiteral("Função SQLExecute em clsDataAccess");
const QString clsDataAccess::kLabelSelect =
    QStringLiteral("Função sqlSelect_ReadyOnly em clsDataAccess");
const QString clsDataAccess::kLabelArray =
    QStringLiteral("Função SQLSelectAllArray_Error em clsDataAccess");
const QString clsDataAccess::kLabelCommit = QStringLiteral("Função CommitTrans em clsDataAccess");

namespace {
QAtomicInt g_connectionSerial;
constexpr qint32 kQuoteError = 3075; // the syntax error such a text causes in a built statement
constexpr qint32 kNotOpenError = 3704;
// The key of the writers' advisory lock on PostgreSQL (advisory locks belong to one database).
constexpr qint64 kWriteLockKey = 0x546f6c76616e65; // "Tolvane"

int sqliteCode(const QString& native) {
    return native.toInt() & 0xff; // primary code of an extended result code
}

// SQLite says SQLITE_FULL when the database itself cannot grow; growing its shared-memory or
// journal files on a full disk comes back as an I/O error, told apart by the disk's free space.
bool diskFull(const DbConfig& c, const QString& native) {
    if (c.backend == DbBackend::PostgreSQL)
        return native == QLatin1String("53100");
    const int code = sqliteCode(native);
    if (code == 13 /* SQLITE_FULL */)
        return true;
    if (code != 10 /* SQLITE_IOERR */)
        return false;
    const QStorageInfo disk(QFileInfo(c.sqlitePath).absolutePath());
    return disk.isValid() && disk.bytesAvailable() < 256 * 1024;
}
} // namespace

clsDataAccess::clsDataAccess(ErrorLog& log)
    : m_log(log),
      m_connection(QStringLiteral("tolvane-%1").arg(g_connectionSerial.fetchAndAddRelaxed(1))) {}

clsDataAccess::~clsDataAccess() {
    close();
}

QSqlDatabase clsDataAccess::database() const {
    return QSqlDatabase::database(m_connection, false);
}

bool clsDataAccess::isOpen() const {
    return QSqlDatabase::contains(m_connection) && database().isOpen();
}

void clsDataAccess::close() {
    if (!QSqlDatabase::contains(m_connection))
        return;
    {
        QSqlDatabase db = database();
        if (db.isOpen())
            db.close();
    }
    QSqlDatabase::removeDatabase(m_connection);
    m_depth = 0;
    if (m_record)
        m_record->stopped(); // after the close, which leaves the whole database in the file
    m_record.reset();
}

void clsDataAccess::attachRecord(std::unique_ptr<CheckRecord> record) {
    m_record = std::move(record);
}

bool clsDataAccess::wholeFileSound(bool fresh, QString* why) {
    if (m_config.backend != DbBackend::SQLite || !m_record)
        return true;
    QString reason;
    if (m_record->writable(&reason) && (fresh || !m_record->wholeFileChecked())) {
        const DatabaseCheck::Result r = DatabaseCheck::wholeFile(database(), m_config.sqlitePath);
        if (r.ok)
            m_record->wholeFileSound(QDateTime::currentDateTime());
        else
            m_record->damaged(DatabaseCheck::damagedText(m_config.describe(), r));
    }
    if (m_record->writable(&reason))
        return true;
    if (!m_damageTold)
        logFailure(kLabelExecute, 0, reason);
    m_damageTold = true;
    m_lastError = reason;
    if (why)
        *why = reason;
    return false;
}

void clsDataAccess::remember(const QSqlError& e) {
    m_lastCode = e.nativeErrorCode();
    if (diskFull(m_config, m_lastCode)) {
        const QString where = m_config.backend == DbBackend::SQLite
                                  ? QDir::toNativeSeparators(m_config.sqlitePath)
                                  : QStringLiteral("servidor ") + m_config.describe();
        m_lastError = QStringLiteral("Disco cheio: %1 (%2)").arg(where, e.databaseText());
        return;
    }
    m_lastError = e.text();
}

bool clsDataAccess::open(const DbConfig& config, OpenMode mode) {
    close();
    m_config = config;
    m_mode = mode;
    m_walIgnored = false;
    m_damageTold = false;
    m_lastCode.clear();
    if (config.backend == DbBackend::PostgreSQL) {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), m_connection);
        db.setHostName(config.host);
        db.setPort(config.port);
        db.setDatabaseName(config.name);
        db.setUserName(config.user);
        // Without a password here, libpq looks in PGPASSFILE or ~/.pgpass.
        db.setPassword(config.password);
        QString options = QStringLiteral("connect_timeout=%1").arg(config.connectTimeout);
        if (!config.extraOptions.isEmpty())
            options += QLatin1Char(';') + config.extraOptions;
        db.setConnectOptions(options);
        if (!openConnection(db))
            return false;
        QStringList setup = {QStringLiteral("SET client_min_messages TO warning")};
        if (mode == OpenMode::ReadOnly)
            setup << QStringLiteral("SET default_transaction_read_only = on");
        if (config.statementTimeoutMs > 0)
            setup << QStringLiteral("SET statement_timeout = %1").arg(config.statementTimeoutMs);
        for (const QString& stmt : setup)
            if (!execRaw(stmt)) {
                db = QSqlDatabase();
                close();
                return false;
            }
        applyLockWait();
        return true;
    }
    if (openSqlite(false))
        return true;
    // A read-only folder cannot hold the shared-memory file of the write-ahead log; the file
    // opened as immutable needs none.
    return mode == OpenMode::ReadOnly && openSqlite(true);
}

bool clsDataAccess::openSqlite(bool immutable) {
    close();
    if (!openSqliteConnection(immutable))
        return false;
    // A file that is not a database only shows itself on the first read.
    QStringList pragmas = {QStringLiteral("PRAGMA schema_version")};
    if (m_mode != OpenMode::ReadOnly)
        pragmas << QStringLiteral("PRAGMA journal_mode=WAL")
                << QStringLiteral("PRAGMA synchronous=FULL")
                << QStringLiteral("PRAGMA foreign_keys=OFF");
    for (const QString& pragma : pragmas) {
        if (!execRaw(pragma)) {
            close();
            return false;
        }
    }
    if (immutable) {
        const QFileInfo wal(m_config.sqlitePath + QStringLiteral("-wal"));
        m_walIgnored = wal.exists() && wal.size() > 0;
    }
    return true;
}

bool clsDataAccess::openSqliteConnection(bool immutable) {
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    const char* access = m_mode == OpenMode::Create     ? "rwc"
                         : m_mode == OpenMode::ReadOnly ? "ro"
                                                        : "rw";
    // A URI, so that "rw" refuses to create a missing file instead of starting an empty one.
    QString uri = QUrl::fromLocalFile(QFileInfo(m_config.sqlitePath).absoluteFilePath())
                      .toString(QUrl::FullyEncoded) +
                  QStringLiteral("?mode=") + QLatin1String(access);
    if (immutable)
        uri += QStringLiteral("&immutable=1");
    db.setDatabaseName(uri);
    QString options = QStringLiteral("QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=%1").arg(m_lockWaitMs);
    if (m_mode == OpenMode::ReadOnly)
        options += QStringLiteral(";QSQLITE_OPEN_READONLY");
    db.setConnectOptions(options);
    return openConnection(db);
}

// Opens the connection set up in `db`; on failure remembers why and leaves nothing open.
bool clsDataAccess::openConnection(QSqlDatabase& db) {
    if (db.open())
        return true;
    remember(db.lastError());
    db = QSqlDatabase(); // the last handle goes before the connection is removed
    close();
    return false;
}

void clsDataAccess::setLockWait(int waitMs, int attempts) {
    m_lockWaitMs = qMax(1, waitMs);
    m_lockAttempts = qMax(1, attempts);
    if (isOpen())
        applyLockWait();
}

void clsDataAccess::applyLockWait() {
    if (m_config.backend == DbBackend::SQLite)
        execRaw(QStringLiteral("PRAGMA busy_timeout = %1").arg(m_lockWaitMs));
    else
        execRaw(QStringLiteral("SET lock_timeout = %1").arg(m_lockWaitMs));
}

void clsDataAccess::logFailure(const QString& label, qint32 number, const QString& description) {
    m_lastError = description;
    if (m_quiet)
        return;
    // Inside a transaction the box would hold the write lock: it is shown when the scope ends.
    if (m_depth > 0)
        m_log.reportDeferred(label, {number, description, QStringLiteral("clsDataAccess")});
    else
        m_log.report(label, {number, description, QStringLiteral("clsDataAccess")});
}

bool clsDataAccess::refusesText(const QVariantList& values, const QString& label) {
    for (const QVariant& v : values) {
        if (v.typeId() == QMetaType::QString && v.toString().contains(QLatin1Char('\''))) {
            // The value itself is never shown nor logged: it may be a password.
            logFailure(label, kQuoteError,
                       QStringLiteral("Erro de sintaxe: um texto contém aspa simples; o comando "
                                      "não foi executado."));
            return true;
        }
    }
    return false;
}

bool clsDataAccess::run(QSqlQuery& q, const QString& sql, const QVariantList& params) {
    if (faultHook && faultHook(sql)) {
        m_lastCode.clear();
        m_lastError = QStringLiteral("falha simulada");
        return false;
    }
    if (!q.prepare(sql)) {
        remember(q.lastError());
        return false;
    }
    for (const QVariant& p : params)
        q.addBindValue(p);
    if (!q.exec()) {
        remember(q.lastError());
        return false;
    }
    return true;
}

std::optional<Recordset> clsDataAccess::SQLSelect_ReadOnly(const QString& sql,
                                                           const QVariantList& params) {
    if (refusesText(params, kLabelSelect))
        return std::nullopt;
    if (!isOpen()) {
        logFailure(kLabelSelect, kNotOpenError, SystemTexts::text(SystemText::BancoNaoAberto));
        return std::nullopt;
    }
    QSqlQuery q(database());
    q.setForwardOnly(true);
    if (!run(q, sql, params)) {
        logFailure(kLabelSelect, q.lastError().nativeErrorCode().toInt(), m_lastError);
        return std::nullopt;
    }
    const QSqlRecord rec = q.record();
    QStringList fields;
    for (int i = 0; i < rec.count(); ++i)
        fields << rec.fieldName(i);
    QVector<QVector<QVariant>> rows;
    while (q.next()) {
        QVector<QVariant> row(rec.count());
        for (int i = 0; i < rec.count(); ++i)
            row[i] = q.value(i);
        rows.append(std::move(row));
    }
    return Recordset(fields, std::move(rows));
}

QVector<QVector<QVariant>> clsDataAccess::SQLSelectAllArray(const QString& sql,
                                                            const QVariantList& params) {
    if (refusesText(params, kLabelArray))
        return {};
    if (!isOpen()) {
        logFailure(kLabelArray, kNotOpenError, SystemTexts::text(SystemText::BancoNaoAberto));
        return {};
    }
    QSqlQuery q(database());
    q.setForwardOnly(true);
    if (!run(q, sql, params)) {
        logFailure(kLabelArray, q.lastError().nativeErrorCode().toInt(), m_lastError);
        return {};
    }
    const int n = q.record().count();
    QVector<QVector<QVariant>> byField(n);
    bool any = false;
    while (q.next()) {
        any = true;
        for (int i = 0; i < n; ++i)
            byField[i].append(q.value(i));
    }
    return any ? byField : QVector<QVector<QVariant>>{};
}

bool clsDataAccess::SQLExecute(const QString& sql, const QVariantList& params) {
    if (refusesText(params, kLabelExecute))
        return false;
    if (!isOpen()) {
        logFailure(kLabelExecute, kNotOpenError, SystemTexts::text(SystemText::BancoNaoAberto));
        return false;
    }
    Transaction tx(*this);
    if (!tx.ok()) {
        logFailure(kLabelExecute, 0, m_lastError);
        return false;
    }
    QSqlQuery q(database());
    if (!run(q, sql, params)) {
        const qint32 code = q.lastError().nativeErrorCode().toInt();
        const QString err = m_lastError;
        const QString native = m_lastCode;
        // PostgreSQL frees the statement only once its failed transaction has ended.
        tx.rollback();
        q = QSqlQuery();
        m_lastError = err;
        m_lastCode = native;
        logFailure(kLabelExecute, code, err);
        return false;
    }
    q.finish();
    return tx.commit(); // a failed commit is logged by the scope
}

bool clsDataAccess::SQLInsertIdentity(const QString& sql, const QVariantList& params,
                                      qint64& newId) {
    // Key and insert in one unit, so the identity read belongs to this insert.
    Transaction tx(*this);
    if (!tx.ok() || !SQLExecute(sql, params))
        return false;
    const QString idSql = m_config.backend == DbBackend::PostgreSQL
                              ? QStringLiteral("SELECT lastval()")
                              : QStringLiteral("SELECT last_insert_rowid()");
    const auto rs = SQLSelect_ReadOnly(idSql);
    if (!CheckValidRecordset(rs) || !tx.commit())
        return false;
    newId = variantToInt64(rs->value(0));
    return true;
}

bool clsDataAccess::CheckValidRecordset(const std::optional<Recordset>& rs) {
    return rs.has_value() && rs->atRow();
}

bool clsDataAccess::execRaw(const QString& sql) {
    if (faultHook && faultHook(sql)) {
        m_lastCode.clear();
        m_lastError = QStringLiteral("falha simulada");
        return false;
    }
    QSqlQuery q(database());
    if (q.exec(sql))
        return true;
    remember(q.lastError());
    return false;
}

bool clsDataAccess::lockBusy() const {
    if (m_config.backend == DbBackend::SQLite) {
        const int code = sqliteCode(m_lastCode);
        return code == 5 /* SQLITE_BUSY */ || code == 6 /* SQLITE_LOCKED */;
    }
    return m_lastCode == QLatin1String("55P03"); // lock_not_available: lock_timeout ran out
}

bool clsDataAccess::beginWrite() {
    const bool sqlite = m_config.backend == DbBackend::SQLite;
    for (int attempt = 1;; ++attempt) {
        bool ok = false;
        if (sqlite) {
            ok = execRaw(QStringLiteral("BEGIN IMMEDIATE"));
        } else if (execRaw(QStringLiteral("BEGIN"))) {
            ok = execRaw(QStringLiteral("SELECT pg_advisory_xact_lock(%1)").arg(kWriteLockKey));
            if (!ok) {
                const QString err = m_lastError, code = m_lastCode;
                execRaw(QStringLiteral("ROLLBACK"));
                m_lastError = err;
                m_lastCode = code;
            }
        }
        if (ok)
            return true;
        if (!lockBusy())
            return false;
        if (attempt >= m_lockAttempts) {
            m_lastError = QStringLiteral("O banco de dados continua ocupado por outro programa "
                                         "depois de %1 s de espera: %2")
                              .arg(qint64(m_lockWaitMs) * m_lockAttempts / 1000)
                              .arg(m_lastError);
            return false;
        }
        if (attempt == 1 && onLockWait)
            onLockWait(SystemTexts::text(SystemText::AguardandoBanco));
    }
}

bool clsDataAccess::beginScope(bool write, QString& savepoint) {
    if (!isOpen()) {
        m_lastError = SystemTexts::text(SystemText::BancoNaoAberto);
        return false;
    }
    if (write && readOnly()) {
        m_lastError = SystemTexts::text(SystemText::BancoSoConsulta);
        return false;
    }
    if (m_depth > 0) {
        savepoint = QStringLiteral("sp%1").arg(++m_savepointSerial);
        if (!execRaw(QStringLiteral("SAVEPOINT ") + savepoint))
            return false;
        ++m_depth;
        return true;
    }
    savepoint.clear();
    if (write && m_record && !m_record->writable(&m_lastError)) {
        // Told once, with what to do; every later write is refused the same way.
        if (!m_damageTold)
            logFailure(kLabelExecute, 0, m_lastError);
        m_damageTold = true;
        return false;
    }
    // A writer takes the write lock before its first read, so nothing it read can change before
    // it writes, and the wait for the lock happens here, where it can be retried.
    if (write ? !beginWrite() : !execRaw(QStringLiteral("BEGIN")))
        return false;
    m_depth = 1;
    return true;
}

bool clsDataAccess::endScope(const QString& savepoint, bool commit) {
    if (m_depth <= 0)
        return false;
    bool ok = true;
    if (!savepoint.isEmpty()) {
        if (!commit)
            ok = execRaw(QStringLiteral("ROLLBACK TO SAVEPOINT ") + savepoint);
        ok = execRaw(QStringLiteral("RELEASE SAVEPOINT ") + savepoint) && ok;
        --m_depth;
        return ok && commit;
    }
    m_depth = 0;
    if (commit && execRaw(QStringLiteral("COMMIT"))) {
        m_log.showDeferred();
        return true;
    }
    const QString err = m_lastError;
    const QString code = m_lastCode;
    execRaw(QStringLiteral("ROLLBACK"));
    m_lastError = err;
    m_lastCode = code;
    m_log.showDeferred();
    if (commit)
        logFailure(kLabelCommit, code.toInt(), err);
    return false;
}

void clsDataAccess::syncIdentity(const QString& table, const QString& column) {
    if (m_config.backend != DbBackend::PostgreSQL)
        return;
    SQLSelect_ReadOnly(QStringLiteral("SELECT setval(pg_get_serial_sequence('%1', '%2'), "
                                      "GREATEST((SELECT COALESCE(MAX(%2), 0) FROM %1), 1))")
                           .arg(table.toLower(), column.toLower()));
}
