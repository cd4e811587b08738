#pragma once

#include "DbConfig.h"
#include "Recordset.h"

#include <QSqlDatabase>
#include <QVariant>
#include <functional>
#include <optional>

class ErrorLog;

// The one data access object. Every statement uses bound values; a text value holding a single
// quote is refused here, logged under the routine's label and written nowhere, so such a text
// fails the same way whatever statement carries it.
class clsDataAccess {
public:
    explicit clsDataAccess(ErrorLog& log);
    ~clsDataAccess();
    clsDataAccess(const clsDataAccess&) = delete;
    clsDataAccess& operator=(const clsDataAccess&) = delete;

    bool open(const DbConfig& config);
    void close();
    bool isOpen() const;
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

    // Tests: a hook that makes chosen statements fail as if the database had refused them.
    std::function<bool(const QString& sql)> faultHook;

    static const QString kLabelExecute;
    static const QString kLabelSelect;
    static const QString kLabelArray;

private:
    friend class Transaction;
    // The scopes of Transaction: depth 0 begins the transaction, deeper ones are savepoints.
    bool beginScope(bool write, QString& savepoint);
    bool endScope(const QString& savepoint, bool commit);
    bool execRaw(const QString& sql);

    bool run(QSqlQuery& q, const QString& sql, const QVariantList& params);
    void logFailure(const QString& label, qint32 number, const QString& description);

    ErrorLog& m_log;
    DbConfig m_config;
    QString m_connection;
    QString m_lastError;
    int m_depth = 0;
    int m_savepointSerial = 0;
};
