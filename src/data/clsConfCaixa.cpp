#include "clsConfCaixa.h"

#include "AuditChain.h"
#include "Transaction.h"
#include "clsDataAccess.h"

namespace {
const QString kTable = QStringLiteral("ConfCaixa");
const QString kKey = QStringLiteral("ID");
} // namespace

bool clsConfCaixa::SQLInsert(qint32 id) {
    if (id != 0) {
        Transaction tx(*m_db);
        if (!tx.ok() ||
            !m_db->SQLExecute(QStringLiteral("INSERT INTO ConfCaixa (ESPECIE, ID, IDMOVIMENTO, "
                                             "NUMERO, VALOR) VALUES (?, ?, ?, ?, ?)"),
                              {int(ESPECIE), id, IDMOVIMENTO, NUMERO, VALOR.units()}))
            return false;
        m_db->syncIdentity(QStringLiteral("ConfCaixa"), QStringLiteral("ID"));
        if (!AuditChain::track(*m_db, kTable, kKey, id, AuditChain::Op::Insert) || !tx.commit())
            return false;
        ID = id;
        return true;
    }
    qint64 newId = 0;
    if (!AuditChain::insert(*m_db, kTable, kKey,
                            QStringLiteral("INSERT INTO ConfCaixa (ESPECIE, IDMOVIMENTO, NUMERO, "
                                           "VALOR) VALUES (?, ?, ?, ?)"),
                            {int(ESPECIE), IDMOVIMENTO, NUMERO, VALOR.units()}, newId))
        return false;
    ID = static_cast<qint32>(newId);
    return true;
}

bool clsConfCaixa::SQLUpdate(qint32 id) {
    if (id != 0)
        ID = id;
    return AuditChain::execute(*m_db, kTable, kKey, ID, AuditChain::Op::Update,
                               QStringLiteral("UPDATE ConfCaixa SET ESPECIE = ?, IDMOVIMENTO = ?, "
                                              "NUMERO = ?, VALOR = ? WHERE ID = ?"),
                               {int(ESPECIE), IDMOVIMENTO, NUMERO, VALOR.units(), ID});
}

bool clsConfCaixa::SQLDelete(qint32 id) {
    if (id != 0)
        ID = id;
    return AuditChain::execute(*m_db, kTable, kKey, ID, AuditChain::Op::Delete,
                               QStringLiteral("DELETE FROM ConfCaixa WHERE ID = ?"), {ID});
}

bool clsConfCaixa::SQLSelect(qint32 id) {
    const auto rs = m_db->SQLSelect_ReadOnly(
        QStringLiteral(
            "SELECT ID, ESPECIE, IDMOVIMENTO, NUMERO, VALOR FROM ConfCaixa WHERE ID = ?"),
        {id});
    if (!clsDataAccess::CheckValidRecordset(rs))
        return false;
    ID = static_cast<qint32>(rs->integer(QStringLiteral("ID")));
    ESPECIE = static_cast<qint16>(rs->integer(QStringLiteral("ESPECIE")));
    IDMOVIMENTO = static_cast<qint32>(rs->integer(QStringLiteral("IDMOVIMENTO")));
    NUMERO = rs->text(QStringLiteral("NUMERO"));
    VALOR = rs->money(QStringLiteral("VALOR"));
    return true;
}

std::optional<QList<clsConfCaixa>> clsConfCaixa::listar(clsDataAccess& db, qint32 idMovimento) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT ConfCaixa.ID, ConfCaixa.ESPECIE, ConfCaixa.IDMOVIMENTO, "
                       "ConfCaixa.NUMERO, ConfCaixa.VALOR, CodBarra.DESCRICAO FROM ConfCaixa "
                       "LEFT JOIN CodBarra ON CodBarra.IDCOD = ConfCaixa.ESPECIE "
                       "WHERE ConfCaixa.IDMOVIMENTO = ? ORDER BY ConfCaixa.ID"),
        {idMovimento});
    if (!rs)
        return std::nullopt;
    QList<clsConfCaixa> out;
    for (Recordset r = *rs; !r.EOF_(); r.moveNext()) {
        clsConfCaixa c(db);
        c.ID = static_cast<qint32>(r.integer(QStringLiteral("ID")));
        c.ESPECIE = static_cast<qint16>(r.integer(QStringLiteral("ESPECIE")));
        c.IDMOVIMENTO = static_cast<qint32>(r.integer(QStringLiteral("IDMOVIMENTO")));
        c.NUMERO = r.text(QStringLiteral("NUMERO"));
        c.VALOR = r.money(QStringLiteral("VALOR"));
        c.especieDescricao = r.text(QStringLiteral("DESCRICAO"));
        out.append(c);
    }
    return out;
}
