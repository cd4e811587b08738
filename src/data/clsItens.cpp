#include "clsItens.h"

#include "AuditChain.h"
#include "clsCodBarra.h"
#include "clsDataAccess.h"

namespace {
const QString kTable = QStringLiteral("Itens");
const QString kKey = QStringLiteral("ID");
} // namespace

bool clsItens::inserirNovo() {
    const QVariantList values = {IDSANGRIA, int(ESPECIE), NUMERO, VALOR.units()};
    qint64 newId = 0;
    if (!AuditChain::insert(*m_db, kTable, kKey,
                            QStringLiteral("INSERT INTO Itens (IDSANGRIA, ESPECIE, NUMERO, "
                                           "VALOR) VALUES (?, ?, ?, ?)"),
                            values, newId))
        return false;
    ID = static_cast<qint32>(newId);
    return true;
}

bool clsItens::alterar() {
    const QVariantList values = {IDSANGRIA, int(ESPECIE), NUMERO, VALOR.units()};
    return AuditChain::execute(*m_db, kTable, kKey, ID, AuditChain::Op::Update,
                               QStringLiteral("UPDATE Itens SET IDSANGRIA = ?, ESPECIE = ?, "
                                              "NUMERO = ?, VALOR = ? WHERE ID = ?"),
                               values + QVariantList{ID});
}

bool clsItens::excluir(qint32 id) {
    ID = id;
    return AuditChain::execute(*m_db, kTable, kKey, ID, AuditChain::Op::Delete,
                               QStringLiteral("DELETE FROM Itens WHERE ID = ?"), {ID});
}

bool clsItens::SQLSelect(qint32 id) {
    const auto rs = m_db->SQLSelect_ReadOnly(
        QStringLiteral("SELECT ID, IDSANGRIA, ESPECIE, NUMERO, VALOR FROM Itens WHERE ID = ?"),
        {id});
    if (!clsDataAccess::CheckValidRecordset(rs))
        return false;
    ID = static_cast<qint32>(rs->integer(QStringLiteral("ID")));
    IDSANGRIA = static_cast<qint32>(rs->integer(QStringLiteral("IDSANGRIA")));
    ESPECIE = static_cast<qint16>(rs->integer(QStringLiteral("ESPECIE")));
    NUMERO = rs->text(QStringLiteral("NUMERO"));
    VALOR = rs->money(QStringLiteral("VALOR"));
    return true;
}

std::optional<QList<clsItens>> clsItens::listar(clsDataAccess& db, qint32 idSangria) {
    // A left join, so an item whose kind was removed still shows and still counts.
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral(
            "SELECT Itens.ID, Itens.IDSANGRIA, Itens.ESPECIE, Itens.NUMERO, "
            "Itens.VALOR, CodBarra.DESCRICAO FROM Itens LEFT JOIN CodBarra ON "
            "CodBarra.IDCOD = Itens.ESPECIE WHERE Itens.IDSANGRIA = ? ORDER BY Itens.ID"),
        {idSangria});
    if (!rs)
        return std::nullopt;
    QList<clsItens> out;
    for (Recordset r = *rs; !r.EOF_(); r.moveNext()) {
        clsItens i(db);
        i.ID = static_cast<qint32>(r.integer(QStringLiteral("ID")));
        i.IDSANGRIA = static_cast<qint32>(r.integer(QStringLiteral("IDSANGRIA")));
        i.ESPECIE = static_cast<qint16>(r.integer(QStringLiteral("ESPECIE")));
        i.NUMERO = r.text(QStringLiteral("NUMERO"));
        i.VALOR = r.money(QStringLiteral("VALOR"));
        i.especieDescricao = r.text(QStringLiteral("DESCRICAO"));
        out.append(i);
    }
    return out;
}

std::optional<QList<QPair<qint16, QString>>> clsItens::especies(clsDataAccess& db) {
    const auto kinds = clsCodBarra::listar(db, clsCodBarra::Lista::Especie);
    if (!kinds)
        return std::nullopt;
    QList<QPair<qint16, QString>> out;
    for (const GuideKind& k : *kinds)
        out.append({static_cast<qint16>(k.idcod), k.descricao});
    return out;
}
