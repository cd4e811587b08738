#pragma once

#include "DbConfig.h"
#include "Recordset.h"

#include <QSqlDatabase>
#include <QVariant>
#include <functional>
#include <memory>
#include <optional>

class CheckRecord;

class ErrorLog;
class QSqlError;

// The one data access object. Every statement uses bound values; a text value holding a single
// quote is refused here, logged under the routine's label (without the value, which may be a
// password) and written nowhere.
//
// Writers are serialised: a write transaction first takes the database's write lock (BEGIN
// IMMEDIATE on SQLite, a transaction-scoped advisory lock on PostgreSQL). A writer that finds
// the lock taken waits lockWaitMs, tells the operator "Aguardando o banco de dados..." once
// through onLockWait, and tries again, lockAttempts times in all, before it gives up.
class clsDataAccess {
public:
    enum class OpenMode {
        ReadWrite, // the file must exist
        Create,    // `iniciar`: the file may be created
        ReadOnly,  // consultation: nothing is written, works on read-only media
    };

    explicit clsDataAccess(ErrorLog& log);
    ~clsDataAccess();
    clsDataAccess(const clsDataAccess&) = delete;
    clsDataAccess& operator=(const clsDataAccess&) = delete;

    bool open(const DbConfig& config, OpenMode mode = OpenMode::ReadWrite);
    void close();
    bool isOpen() const;
    bool readOnly() const { return m_mode == OpenMode::ReadOnly; }
    // True while a Transaction scope is open on this connection: no box may be shown then.
    bool inTransaction() const { return m_depth > 0; }
    // A read-only SQLite file opened without its shared-memory file: changes still in the
    // write-ahead log (a program that ended abruptly) are not seen.
    bool walIgnored() const { return m_walIgnored; }
    DbBackend backend() const { return m_config.backend; }
    const DbConfig& config() const { return m_config; }
    QString lastError() const { return m_lastError; }
    QSqlDatabase database() const;

    // nullopt when the statement failed ("no recordset"); an empty Recordset when nothing matched.
    std::optional<Recordset> SQLSelect_ReadOnly(const QString& sql,
                                                const QVariantList& params = {});
    // result[field][row]; empty when there are no rows or the statement failed.
    QVector<QVector<QVariant>> SQLSelectAllArray(const QString& sql,
                                                 const QVariantList& params = {});
    // Its own transaction, unless the caller holds one (a Transaction scope).
    bool SQLExecute(const QString& sql, const QVariantList& params = {});
    // SQLExecute of an insert, then the new key of the counter-keyed table into newId.
    bool SQLInsertIdentity(const QString& sql, const QVariantList& params, qint64& newId);
    static bool CheckValidRecordset(const std::optional<Recordset>& rs);

    // True, with the failure logged under `label`, when a text value holds a single quote.
    bool refusesText(const QVariantList& values, const QString& label);

    // After inserting explicit keys, PostgreSQL's sequence must move past them.
    void syncIdentity(const QString& table, const QString& column);

    // The wait for the write lock: per attempt, and how many attempts before giving up.
    static constexpr int kLockWaitMs = 5000;
    static constexpr int kLockAttempts = 6;
    void setLockWait(int waitMs, int attempts);
    // Told once per wait, before the second attempt.
    std::function<void(const QString& text)> onLockWait;

    // A connection whose failures are expected (a network link): they are kept in lastError()
    // for the caller, which tells them once, instead of a report for each statement.
    void setQuiet(bool quiet) { m_quiet = quiet; }

    // The record of the file's checks (SQLite only), kept while the file is open: writes wait
    // for a whole-file check still running and are refused once the file is found damaged; a
    // clean close records the file as it is left.
    void attachRecord(std::unique_ptr<CheckRecord> record);
    CheckRecord* record() const { return m_record.get(); }
    // Whether the whole file is sound: a check passed by this program (or the one running in the
    // background, awaited), else a check now; `fresh` always checks now. The record and the
    // write refusal follow the answer. A server's database answers true.
    bool wholeFileSound(bool fresh, QString* why = nullptr);

    // Tests: a hook that makes chosen statements fail as if the database had refused them.
    std::function<bool(const QString& sql)> faultHook;

    static const QString kLabelExecute;
    static const QString kLabelSelect;
    static const QString kLabelArray;
    static const QString kLabelCommit;

private:
    friend class Transaction;
    // The scopes of Transaction: depth 0 begins the transaction, deeper ones are savepoints.
    bool beginScope(bool write, QString& savepoint);
    bool endScope(const QString& savepoint, bool commit);
    bool beginWrite();
    bool openSqlite(bool immutable);
    bool openSqliteConnection(bool immutable);
    bool openConnection(QSqlDatabase& db);
    bool execRaw(const QString& sql);
    bool lockBusy() const;
    void applyLockWait();

    bool run(QSqlQuery& q, const QString& sql, const QVariantList& params);
    void remember(const QSqlError& e);
    void logFailure(const QString& label, qint32 number, const QString& description);

    ErrorLog& m_log;
    std::unique_ptr<CheckRecord> m_record;
    DbConfig m_config;
    OpenMode m_mode = OpenMode::ReadWrite;
    bool m_walIgnored = false;
    bool m_quiet = false;
    bool m_damageTold = false;
    QString m_connection;
    QString m_lastError;
    QString m_lastCode; // the engine's own code of the last failure
    int m_depth = 0;
    int m_savepointSerial = 0;
    int m_lockWaitMs = kLockWaitMs;
    int m_lockAttempts = kLockAttempts;
};
