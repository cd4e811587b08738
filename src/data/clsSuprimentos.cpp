#include "clsSuprimentos.h"

#include "clsDataAccess.h"

bool clsSuprimentos::SQLInsert(int mode) {
    const bool hadId = ID > 0;
    const QVariantList values = {int(TIPO), DESCRICAO, VALOR.units()};
    if (mode == 1) {
        const QString sql =
            QStringLiteral("INSERT INTO Suprimentos (TIPO, DESCRICAO, VALOR) VALUES (?, ?, ?)");
        if (hadId)
            return m_db->SQLExecute(sql, values);
        qint64 newId = 0;
        if (!m_db->SQLInsertIdentity(sql, values, newId))
            return false;
        ID = static_cast<qint32>(newId);
        return true;
    }
    if (mode == 2)
        return m_db->SQLExecute(QStringLiteral("UPDATE Suprimentos SET TIPO = ?, DESCRICAO = ?, "
                                               "VALOR = ?,  WHERE ID = ?"),
                                values + QVariantList{ID});
    return false;
}

bool clsSuprimentos::SQLDelete(qint32 id) {
    if (id != 0)
        ID = id;
    return m_db->SQLExecute(QStringLiteral("DELETE FROM Suprimentos WHERE CODIGO = ?"), {ID});
}
