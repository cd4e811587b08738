#pragma once

#include <QString>

class clsDataAccess;

// A transaction as a scope: it begins in the constructor and rolls back in the destructor
// unless commit() was called. A scope opened while another is active becomes a savepoint of
// the outer one: its rollback undoes only its own statements and never ends the outer
// transaction. Writers take the database's write lock when they begin (BEGIN IMMEDIATE on
// SQLite, an advisory lock on PostgreSQL; a taken lock is waited for and retried as
// clsDataAccess says), so what they read inside the scope cannot change before they write.
class Transaction {
public:
    enum class Mode { Read, Write };

    explicit Transaction(clsDataAccess& db, Mode mode = Mode::Write);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    bool ok() const { return m_active; } // false when the transaction could not begin
    bool commit();                       // false (and rolled back) when the commit failed
    void rollback();

private:
    clsDataAccess& m_db;
    QString m_savepoint; // empty for the outermost scope
    bool m_active = false;
};
