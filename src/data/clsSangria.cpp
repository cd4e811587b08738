#include "clsSangria.h"

#include "AuditChain.h"
#include "clsDataAccess.h"

namespace {
const QString kTable = QStringLiteral("Sangria");
const QString kKey = QStringLiteral("ID");
const QString kSelect =
    QStringLiteral("SELECT ID, IDMOVIMENTO, DESCRICAO, TIPO, SDATA, ENTRADA, SAIDA FROM Sangria ");
} // namespace

bool clsSangria::inserirNovo() {
    const QVariantList values = {IDMOVIMENTO, DESCRICAO,       TIPO,
                                 SDATA,       ENTRADA.units(), SAIDA.units()};
    qint64 newId = 0;
    if (!AuditChain::insert(*m_db, kTable, kKey,
                            QStringLiteral("INSERT INTO Sangria (IDMOVIMENTO, DESCRICAO, TIPO, "
                                           "SDATA, ENTRADA, SAIDA) VALUES (?, ?, ?, ?, ?, ?)"),
                            values, newId))
        return false;
    ID = static_cast<qint32>(newId);
    return true;
}

bool clsSangria::alterar() {
    const QVariantList values = {IDMOVIMENTO, DESCRICAO,       TIPO,
                                 SDATA,       ENTRADA.units(), SAIDA.units()};
    return AuditChain::execute(*m_db, kTable, kKey, ID, AuditChain::Op::Update,
                               QStringLiteral("UPDATE Sangria SET IDMOVIMENTO = ?, DESCRICAO = ?, "
                                              "TIPO = ?, SDATA = ?, ENTRADA = ?, SAIDA = ? "
                                              "WHERE ID = ?"),
                               values + QVariantList{ID});
}

bool clsSangria::excluir(qint32 id) {
    ID = id;
    return AuditChain::execute(*m_db, kTable, kKey, ID, AuditChain::Op::Delete,
                               QStringLiteral("DELETE FROM Sangria WHERE ID = ?"), {ID});
}

std::optional<QList<clsSangria>> clsSangria::select(clsDataAccess& db, const QString& where,
                                                    const QVariantList& params) {
    const auto rs = db.SQLSelect_ReadOnly(kSelect + where, params);
    if (!rs)
        return std::nullopt;
    QList<clsSangria> out;
    for (Recordset r = *rs; !r.EOF_(); r.moveNext()) {
        clsSangria s(db);
        s.ID = static_cast<qint32>(r.integer(QStringLiteral("ID")));
        s.IDMOVIMENTO = static_cast<qint32>(r.integer(QStringLiteral("IDMOVIMENTO")));
        s.DESCRICAO = r.text(QStringLiteral("DESCRICAO"));
        s.TIPO = r.text(QStringLiteral("TIPO"));
        s.SDATA = r.date(QStringLiteral("SDATA"));
        s.ENTRADA = r.money(QStringLiteral("ENTRADA"));
        s.SAIDA = r.money(QStringLiteral("SAIDA"));
        out.append(s);
    }
    return out;
}

bool clsSangria::SQLSelect(qint32 id) {
    const auto rows = select(*m_db, QStringLiteral("WHERE ID = ?"), {id});
    if (!rows || rows->size() != 1)
        return false;
    *this = rows->first();
    return true;
}

std::optional<QList<clsSangria>> clsSangria::listar(clsDataAccess& db, qint32 idMovimento,
                                                    const QString& tipo, const QString& pesquisa) {
    if (pesquisa.isEmpty())
        return select(db, QStringLiteral("WHERE IDMOVIMENTO = ? AND TIPO = ? ORDER BY ID DESC"),
                      {idMovimento, tipo});
    return select(db,
                  QStringLiteral("WHERE DESCRICAO LIKE ? AND IDMOVIMENTO = ? AND TIPO = ? "
                                 "ORDER BY ID DESC"),
                  {QLatin1Char('%') + pesquisa + QLatin1Char('%'), idMovimento, tipo});
}

std::optional<QList<clsSangria>> clsSangria::doMovimento(clsDataAccess& db, qint32 idMovimento) {
    return select(db, QStringLiteral("WHERE IDMOVIMENTO = ? ORDER BY ID"), {idMovimento});
}

std::optional<QList<clsSangria>> clsSangria::debitos(clsDataAccess& db, qint32 idMovimento) {
    return select(db, QStringLiteral("WHERE TIPO <> 'ENTRADA' AND IDMOVIMENTO = ? ORDER BY ID"),
                  {idMovimento});
}

std::optional<QList<clsSangria>> clsSangria::vazios(clsDataAccess& db, qint32 idMovimento) {
    return select(db,
                  QStringLiteral("WHERE IDMOVIMENTO = ? AND ENTRADA = 0 AND SAIDA = 0 AND NOT "
                                 "EXISTS (SELECT 1 FROM Itens WHERE Itens.IDSANGRIA = Sangria.ID) "
                                 "ORDER BY ID"),
                  {idMovimento});
}

std::optional<clsSangria::Somas> clsSangria::somarMovimento(clsDataAccess& db, qint32 idMovimento) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT SUM(ENTRADA) AS ENTRADA, SUM(SAIDA) AS SAIDA FROM Sangria "
                       "WHERE IDMOVIMENTO = ?"),
        {idMovimento});
    if (!clsDataAccess::CheckValidRecordset(rs))
        return std::nullopt;
    return Somas{rs->money(QStringLiteral("ENTRADA")), rs->money(QStringLiteral("SAIDA"))};
}
