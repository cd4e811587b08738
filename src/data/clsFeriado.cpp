#include "clsFeriado.h"

#include "clsDataAccess.h"

bool clsFeriado::Incluir() {
    qint64 id = 0;
    if (!m_db->SQLInsertIdentity(QStringLiteral("INSERT INTO Feriados (FERIADO) VALUES (?)"),
                                 {FERIADO}, id))
        return false;
    ID = static_cast<qint32>(id);
    return true;
}

bool clsFeriado::Excluir(bool one) {
    if (one)
        return m_db->SQLExecute(QStringLiteral("DELETE FROM Feriados WHERE ID = ?"), {ID});
    return m_db->SQLExecute(QStringLiteral("DELETE FROM Feriados"));
}
