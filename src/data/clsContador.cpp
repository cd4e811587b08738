#include "clsContador.h"

#include "clsDataAccess.h"

bool clsContador::SQLSelect(int year) {
    const auto rs = m_db->SQLSelect_ReadOnly(
        QStringLiteral("SELECT ANO, CONTADOR FROM Contador WHERE ANO = ?"), {year});
    if (!clsDataAccess::CheckValidRecordset(rs))
        return false;
    ANO = static_cast<qint16>(rs->integer(QStringLiteral("ANO")));
    CONTADOR = static_cast<qint16>(rs->integer(QStringLiteral("CONTADOR")));
    return true;
}

bool clsContador::SQLInsert() {
    return m_db->SQLExecute(QStringLiteral("INSERT INTO Contador (ANO, CONTADOR) VALUES (?, ?)"),
                            {int(ANO), int(CONTADOR)});
}

bool clsContador::SQLUpdate() {
    return m_db->SQLExecute(QStringLiteral("UPDATE Contador SET CONTADOR = ? WHERE ANO = ?"),
                            {int(CONTADOR), int(ANO)});
}

bool clsContador::SQLDelete() {
    return m_db->SQLExecute(QStringLiteral("DELETE FROM Contador WHERE ANO = ?"), {int(ANO)});
}
