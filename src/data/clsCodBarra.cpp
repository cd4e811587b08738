#include "clsCodBarra.h"

#include "clsDataAccess.h"

namespace {
void fill(clsCodBarra& k, const Recordset& r) {
    k.IDCOD = static_cast<qint16>(r.integer(QStringLiteral("IDCOD")));
    k.IDTIPO = r.text(QStringLiteral("IDTIPO"));
    k.DESCRICAO = r.text(QStringLiteral("DESCRICAO"));
    k.PADRAO = r.text(QStringLiteral("PADRAO"));
    k.Juros = r.text(QStringLiteral("JUROS"));
    k.BLOQUEIO = r.text(QStringLiteral("BLOQUEIO"));
    k.CODBANCO = r.text(QStringLiteral("CODBANCO"));
}
} // namespace

bool clsCodBarra::SQLSelect(int idcod) {
    const auto rs =
        m_db->SQLSelect_ReadOnly(QStringLiteral("SELECT IDCOD, IDTIPO, DESCRICAO, PADRAO, JUROS, "
                                                "BLOQUEIO, CODBANCO FROM CodBarra WHERE IDCOD = ?"),
                                 {idcod});
    if (!clsDataAccess::CheckValidRecordset(rs) || rs->recordCount() != 1)
        return false;
    fill(*this, *rs);
    return true;
}

std::optional<QList<clsCodBarra>> clsCodBarra::listar(clsDataAccess& db) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT IDCOD, IDTIPO, DESCRICAO, PADRAO, JUROS, BLOQUEIO, CODBANCO FROM "
                       "CodBarra ORDER BY IDCOD"));
    if (!rs)
        return std::nullopt;
    QList<clsCodBarra> out;
    for (Recordset r = *rs; !r.EOF_(); r.moveNext()) {
        clsCodBarra k(db);
        fill(k, r);
        out.append(k);
    }
    return out;
}

bool clsCodBarra::Gravar(int mode) {
    if (mode == 1)
        return m_db->SQLExecute(
            QStringLiteral(
                "INSERT INTO CodBarra (IDCOD, IDTIPO, DESCRICAO, PADRAO, JUROS, BLOQUEIO, "
                "CODBANCO) VALUES (?, ?, ?, ?, ?, ?, ?)"),
            {int(IDCOD), IDTIPO, DESCRICAO, PADRAO, Juros, BLOQUEIO, CODBANCO});
    return m_db->SQLExecute(
        QStringLiteral("UPDATE CodBarra SET IDTIPO = ?, DESCRICAO = ?, PADRAO = ?, JUROS = ?, "
                       "BLOQUEIO = ?, CODBANCO = ? WHERE IDCOD = ?"),
        {IDTIPO, DESCRICAO, PADRAO, Juros, BLOQUEIO, CODBANCO, int(IDCOD)});
}

bool clsCodBarra::Excluir() {
    return m_db->SQLExecute(QStringLiteral("DELETE FROM CodBarra WHERE IDCOD = ?"), {int(IDCOD)});
}
