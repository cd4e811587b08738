#include "Transaction.h"

#include "clsDataAccess.h"

Transaction::Transaction(clsDataAccess& db, Mode mode) : m_db(db) {
    m_active = m_db.beginScope(mode == Mode::Write, m_savepoint);
}

Transaction::~Transaction() {
    rollback();
}

bool Transaction::commit() {
    if (!m_active)
        return false;
    m_active = false;
    return m_db.endScope(m_savepoint, true);
}

void Transaction::rollback() {
    if (!m_active)
        return;
    m_active = false;
    m_db.endScope(m_savepoint, false);
}
