#include "clsGuiche.h"

#include "AuditChain.h"
#include "Transaction.h"
#include "clsDataAccess.h"

bool clsGuiche::SQLSelect() {
    const auto rs =
        m_db->SQLSelect_ReadOnly(QStringLiteral("SELECT GUICHE, DESDE FROM Guiche WHERE ID = 1"));
    if (!clsDataAccess::CheckValidRecordset(rs))
        return false;
    GUICHE = rs->text(QStringLiteral("GUICHE"));
    DESDE = rs->text(QStringLiteral("DESDE"));
    return true;
}

// The counter's letter is chained: its one row is written again whole at each change.
bool clsGuiche::SQLInsert() {
    return AuditChain::execute(
        *m_db, QStringLiteral("Guiche"), QStringLiteral("ID"), 1, AuditChain::Op::Insert,
        QStringLiteral("INSERT INTO Guiche (ID, GUICHE, DESDE) VALUES (1, ?, ?)"), {GUICHE, DESDE});
}

bool clsGuiche::gravar() {
    Transaction tx(*m_db);
    return tx.ok() && m_db->SQLExecute(QStringLiteral("DELETE FROM Guiche")) && SQLInsert() &&
           tx.commit();
}
