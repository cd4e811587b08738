#include "clsDataAccess.h"

#include "ErrorLog.h"
#include "Transaction.h"

#include <QAtomicInt>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

const QString clsDataAccess::kLabelExecute = QStringLiteral("Função SQLExecute em clsDataAccess");
const QString clsDataAccess::kLabelSelect =
    QStringLiteral("Função sqlSelect_ReadyOnly em clsDataAccess");
const QString clsDataAccess::kLabelArray =
    QStringLiteral("Função SQLSelectAllArray_Error em clsDataAccess");

namespace {
QAtomicInt g_connectionSerial;
constexpr qint32 kQuoteError = 3075; // reported as a syntax error in the statement
constexpr qint32 kNotOpenError = 3704;
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
}

bool clsDataAccess::open(const DbConfig& config) {
    close();
    m_config = config;
    const bool pg = config.backend == DbBackend::PostgreSQL;
    QSqlDatabase db = QSqlDatabase::addDatabase(
        pg ? QStringLiteral("QPSQL") : QStringLiteral("QSQLITE"), m_connection);
    if (pg) {
        db.setHostName(config.host);
        db.setPort(config.port);
        db.setDatabaseName(config.name);
        db.setUserName(config.user);
        db.setPassword(config.password);
        db.setConnectOptions(QStringLiteral("connect_timeout=10"));
    } else {
        db.setDatabaseName(config.sqlitePath);
        db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000"));
    }
    if (!db.open()) {
        m_lastError = db.lastError().text();
        return false;
    }
    QSqlQuery q(db);
    if (!pg) {
        // A file that is not a database only shows itself on the first read.
        for (const char* pragma : {"PRAGMA schema_version", "PRAGMA journal_mode=WAL",
                                   "PRAGMA synchronous=FULL", "PRAGMA foreign_keys=OFF"}) {
            if (!q.exec(QLatin1String(pragma))) {
                m_lastError = q.lastError().text();
                q.finish();
                close();
                return false;
            }
        }
    } else if (!q.exec(QStringLiteral("SET client_min_messages TO warning"))) {
        m_lastError = q.lastError().text();
        close();
        return false;
    }
    return true;
}

void clsDataAccess::logFailure(const QString& label, qint32 number, const QString& description) {
    m_lastError = description;
    m_log.report(label, {number, description, QStringLiteral("clsDataAccess")});
}

bool clsDataAccess::refusesText(const QVariantList& values, const QString& label) {
    for (const QVariant& v : values) {
        if (v.typeId() == QMetaType::QString && v.toString().contains(QLatin1Char('\''))) {
            logFailure(label, kQuoteError,
                       QStringLiteral("Erro de sintaxe: o texto \"%1\" contém aspa simples.")
                           .arg(v.toString()));
            return true;
        }
    }
    return false;
}

bool clsDataAccess::run(QSqlQuery& q, const QString& sql, const QVariantList& params) {
    if (faultHook && faultHook(sql)) {
        m_lastError = QStringLiteral("falha simulada");
        return false;
    }
    if (!q.prepare(sql)) {
        m_lastError = q.lastError().text();
        return false;
    }
    for (const QVariant& p : params)
        q.addBindValue(p);
    if (!q.exec()) {
        m_lastError = q.lastError().text();
        return false;
    }
    return true;
}

std::optional<Recordset> clsDataAccess::SQLSelect_ReadOnly(const QString& sql,
                                                           const QVariantList& params) {
    if (refusesText(params, kLabelSelect))
        return std::nullopt;
    if (!isOpen()) {
        logFailure(kLabelSelect, kNotOpenError, QStringLiteral("Banco de dados não está aberto."));
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
        logFailure(kLabelArray, kNotOpenError, QStringLiteral("Banco de dados não está aberto."));
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
        logFailure(kLabelExecute, kNotOpenError, QStringLiteral("Banco de dados não está aberto."));
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
        q.finish();
        logFailure(kLabelExecute, code, m_lastError);
        return false;
    }
    q.finish();
    if (!tx.commit()) {
        logFailure(kLabelExecute, 0, m_lastError);
        return false;
    }
    return true;
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
    QSqlQuery q(database());
    if (q.exec(sql))
        return true;
    m_lastError = q.lastError().text();
    return false;
}

bool clsDataAccess::beginScope(bool write, QString& savepoint) {
    if (!isOpen()) {
        m_lastError = QStringLiteral("Banco de dados não está aberto.");
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
    // On SQLite a writer takes the write lock before its first read, so the busy time-out
    // applies to the wait and nothing it read can change before it writes.
    const bool sqlite = m_config.backend == DbBackend::SQLite;
    if (!execRaw(sqlite && write ? QStringLiteral("BEGIN IMMEDIATE") : QStringLiteral("BEGIN")))
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
    if (commit && execRaw(QStringLiteral("COMMIT")))
        return true;
    const QString err = m_lastError;
    execRaw(QStringLiteral("ROLLBACK"));
    m_lastError = err;
    return false;
}

void clsDataAccess::syncIdentity(const QString& table, const QString& column) {
    if (m_config.backend != DbBackend::PostgreSQL)
        return;
    SQLSelect_ReadOnly(QStringLiteral("SELECT setval(pg_get_serial_sequence('%1', '%2'), "
                                      "GREATEST((SELECT COALESCE(MAX(%2), 0) FROM %1), 1))")
                           .arg(table.toLower(), column.toLower()));
}
