#include "clsUsuarios.h"

#include "clsDataAccess.h"

bool clsUsuarios::SQLSelect(qint32 id)
{
    const auto rs = m_db->SQLSelect_ReadOnly(
        QStringLiteral("SELECT ID, NOME, SENHA, TIPO, ATIVO FROM Usuarios WHERE ID = ?"), {id});
    if (!clsDataAccess::CheckValidRecordset(rs))
        return false;
    ID = static_cast<qint32>(rs->integer(QStringLiteral("ID")));
    NOME = rs->text(QStringLiteral("NOME"));
    SENHA = rs->text(QStringLiteral("SENHA"));
    TIPO = rs->text(QStringLiteral("TIPO"));
    ATIVO = static_cast<qint16>(rs->integer(QStringLiteral("ATIVO")));
    return true;
}

bool clsUsuarios::SQLInsert(int mode)
{
    if (mode == 1) {
        qint64 id = 0;
        if (!m_db->SQLInsertIdentity(
                QStringLiteral("INSERT INTO Usuarios (NOME, SENHA, TIPO, ATIVO) VALUES (?, ?, ?, ?)"),
                {NOME, SENHA, TIPO, int(ATIVO)}, id))
            return false;
        ID = static_cast<qint32>(id);
        return true;
    }
    if (SENHA.isEmpty())
        return m_db->SQLExecute(
            QStringLiteral("UPDATE Usuarios SET NOME = ?, TIPO = ?, ATIVO = ? WHERE ID = ?"),
            {NOME, TIPO, int(ATIVO), ID});
    return m_db->SQLExecute(
        QStringLiteral("UPDATE Usuarios SET NOME = ?, SENHA = ?, TIPO = ?, ATIVO = ? WHERE ID = ?"),
        {NOME, SENHA, TIPO, int(ATIVO), ID});
}

bool clsUsuarios::SQLDelete()
{
    return m_db->SQLExecute(QStringLiteral("DELETE FROM Usuarios WHERE ID = ?"), {ID});
}
