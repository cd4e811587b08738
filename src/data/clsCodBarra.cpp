#include "clsCodBarra.h"

#include "clsDataAccess.h"

bool clsCodBarra::SQLSelect(int idcod) {
    const auto rs =
        m_db->SQLSelect_ReadOnly(QStringLiteral("SELECT IDCOD, IDTIPO, DESCRICAO, PADRAO, JUROS, "
                                                "BLOQUEIO, CODBANCO FROM CodBarra WHERE IDCOD = ?"),
                                 {idcod});
    if (!clsDataAccess::CheckValidRecordset(rs) || rs->recordCount() != 1)
        return false;
    IDCOD = static_cast<qint16>(rs->integer(QStringLiteral("IDCOD")));
    IDTIPO = rs->text(QStringLiteral("IDTIPO"));
    DESCRICAO = rs->text(QStringLiteral("DESCRICAO"));
    PADRAO = rs->text(QStringLiteral("PADRAO"));
    Juros = rs->text(QStringLiteral("JUROS"));
    BLOQUEIO = rs->text(QStringLiteral("BLOQUEIO"));
    CODBANCO = rs->text(QStringLiteral("CODBANCO"));
    return true;
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

std::optional<QList<clsCodBarra>> clsCodBarra::listarPorPadrao(clsDataAccess& db,
                                                               const QString& padrao) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT IDCOD, IDTIPO, DESCRICAO, PADRAO, JUROS, BLOQUEIO, CODBANCO FROM "
                       "CodBarra WHERE PADRAO = ? ORDER BY DESCRICAO, IDCOD"),
        {padrao});
    if (!rs)
        return std::nullopt;
    QList<clsCodBarra> kinds;
    for (Recordset r = *rs; !r.EOF_(); r.moveNext()) {
        clsCodBarra k(db);
        k.IDCOD = static_cast<qint16>(r.integer(QStringLiteral("IDCOD")));
        k.IDTIPO = r.text(QStringLiteral("IDTIPO"));
        k.DESCRICAO = r.text(QStringLiteral("DESCRICAO"));
        k.PADRAO = r.text(QStringLiteral("PADRAO"));
        k.Juros = r.text(QStringLiteral("JUROS"));
        k.BLOQUEIO = r.text(QStringLiteral("BLOQUEIO"));
        k.CODBANCO = r.text(QStringLiteral("CODBANCO"));
        kinds.append(k);
    }
    return kinds;
}
