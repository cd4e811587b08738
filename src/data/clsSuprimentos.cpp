#include "clsSuprimentos.h"

#include "clsDataAccess.h"

bool clsSuprimentos::SQLInsert() {
    const QString sql =
        QStringLiteral("INSERT INTO Suprimentos (TIPO, DESCRICAO, VALOR) VALUES (?, ?, ?)");
    const QVariantList values = {int(TIPO), DESCRICAO, VALOR.units()};
    if (ID > 0)
        return m_db->SQLExecute(sql, values);
    qint64 newId = 0;
    if (!m_db->SQLInsertIdentity(sql, values, newId))
        return false;
    ID = static_cast<qint32>(newId);
    return true;
}

bool clsSuprimentos::SQLUpdate() {
    return m_db->SQLExecute(QStringLiteral("UPDATE Suprimentos SET TIPO = ?, DESCRICAO = ?, "
                                           "VALOR = ?,  WHERE ID = ?"),
                            {int(TIPO), DESCRICAO, VALOR.units(), ID});
}

bool clsSuprimentos::SQLDelete(qint32 id) {
    if (id != 0)
        ID = id;
    return m_db->SQLExecute(QStringLiteral("DELETE FROM Suprimentos WHERE CODIGO = ?"), {ID});
}
