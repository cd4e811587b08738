#include "clsCodBarra.h"

#include "clsDataAccess.h"

namespace {
const QString kSelect = QStringLiteral(
    "SELECT IDCOD, IDTIPO, DESCRICAO, PADRAO, JUROS, BLOQUEIO, CODBANCO FROM CodBarra ");

GuideKind kindAt(const Recordset& r) {
    GuideKind k;
    k.idcod = int(r.integer(QStringLiteral("IDCOD")));
    k.idtipo = r.text(QStringLiteral("IDTIPO"));
    k.descricao = r.text(QStringLiteral("DESCRICAO"));
    k.padraoLetra = r.text(QStringLiteral("PADRAO"));
    k.padrao = GuideKind::padraoOf(k.padraoLetra);
    k.juros = r.text(QStringLiteral("JUROS")).trimmed() == QLatin1String("S");
    k.bloqueio = r.text(QStringLiteral("BLOQUEIO")).trimmed() == QLatin1String("S");
    k.codbanco = r.text(QStringLiteral("CODBANCO"));
    return k;
}

std::optional<GuideKinds> kinds(clsDataAccess& db, const QString& where,
                                const QVariantList& params = {}) {
    const auto rs = db.SQLSelect_ReadOnly(kSelect + where, params);
    if (!rs)
        return std::nullopt;
    GuideKinds out;
    for (Recordset r = *rs; !r.EOF_(); r.moveNext())
        out.append(kindAt(r));
    return out;
}
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

GuideKind clsCodBarra::kind() const {
    GuideKind k;
    k.idcod = IDCOD;
    k.idtipo = IDTIPO;
    k.descricao = DESCRICAO;
    k.padraoLetra = PADRAO;
    k.padrao = GuideKind::padraoOf(PADRAO);
    k.juros = Juros.trimmed() == QLatin1String("S");
    k.bloqueio = BLOQUEIO.trimmed() == QLatin1String("S");
    k.codbanco = CODBANCO;
    return k;
}

std::optional<GuideKinds> clsCodBarra::listar(clsDataAccess& db, Lista lista) {
    switch (lista) {
    case Lista::Entrada:
        return kinds(db, QStringLiteral("WHERE IDCOD < 100 ORDER BY DESCRICAO, IDCOD"));
    case Lista::Avulso:
        return kinds(db, QStringLiteral("WHERE IDCOD < 100 AND PADRAO <> 'C' AND PADRAO <> 'F' "
                                        "ORDER BY DESCRICAO, IDCOD"));
    case Lista::Especie:
        return kinds(db, QStringLiteral("WHERE PADRAO = 'S' ORDER BY IDCOD"));
    }
    return std::nullopt;
}

std::optional<GuideKinds> clsCodBarra::candidatosLeitura(clsDataAccess& db, const QString& a,
                                                         const QString& b, const QString& c,
                                                         const QString& d) {
    return kinds(db,
                 QStringLiteral("WHERE IDTIPO = ? OR IDTIPO = ? OR IDTIPO = ? OR IDTIPO = ? AND "
                                "PADRAO <> 'S' ORDER BY IDCOD"),
                 {a, b, c, d});
}

std::optional<GuideKinds> clsCodBarra::porIdtipo(clsDataAccess& db, const QString& idtipo) {
    return kinds(db, QStringLiteral("WHERE IDTIPO = ? ORDER BY IDCOD"), {idtipo});
}

bool clsCodBarra::SQLSelect(int idcod) {
    const auto rs = m_db->SQLSelect_ReadOnly(kSelect + QStringLiteral("WHERE IDCOD = ?"), {idcod});
    if (!clsDataAccess::CheckValidRecordset(rs) || rs->recordCount() != 1)
        return false;
    fill(*this, *rs);
    return true;
}

std::optional<QList<clsCodBarra>> clsCodBarra::listar(clsDataAccess& db) {
    const auto rs = db.SQLSelect_ReadOnly(kSelect + QStringLiteral("ORDER BY IDCOD"));
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

bool clsCodBarra::inserir() {
    return m_db->SQLExecute(
        QStringLiteral("INSERT INTO CodBarra (IDCOD, IDTIPO, DESCRICAO, PADRAO, JUROS, BLOQUEIO, "
                       "CODBANCO) VALUES (?, ?, ?, ?, ?, ?, ?)"),
        {int(IDCOD), IDTIPO, DESCRICAO, PADRAO, Juros, BLOQUEIO, CODBANCO});
}

bool clsCodBarra::alterar() {
    return m_db->SQLExecute(
        QStringLiteral("UPDATE CodBarra SET IDTIPO = ?, DESCRICAO = ?, PADRAO = ?, JUROS = ?, "
                       "BLOQUEIO = ?, CODBANCO = ? WHERE IDCOD = ?"),
        {IDTIPO, DESCRICAO, PADRAO, Juros, BLOQUEIO, CODBANCO, int(IDCOD)});
}

std::optional<qint64> clsCodBarra::usos(clsDataAccess& db, int idcod) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT (SELECT COUNT(*) FROM Recebimentos WHERE TIPO = ?) + (SELECT "
                       "COUNT(*) FROM Itens WHERE ESPECIE = ?) + (SELECT COUNT(*) FROM ConfCaixa "
                       "WHERE ESPECIE = ?) AS N"),
        {idcod, idcod, idcod});
    if (!clsDataAccess::CheckValidRecordset(rs))
        return std::nullopt;
    return rs->integer(QStringLiteral("N"));
}

bool clsCodBarra::excluir() {
    return m_db->SQLExecute(QStringLiteral("DELETE FROM CodBarra WHERE IDCOD = ?"), {int(IDCOD)});
}

std::optional<QList<clsCodBarra>> clsCodBarra::listarPorPadrao(clsDataAccess& db,
                                                               const QString& padrao) {
    const auto rs = db.SQLSelect_ReadOnly(
        kSelect + QStringLiteral("WHERE PADRAO = ? ORDER BY DESCRICAO, IDCOD"), {padrao});
    if (!rs)
        return std::nullopt;
    QList<clsCodBarra> kinds;
    for (Recordset r = *rs; !r.EOF_(); r.moveNext()) {
        clsCodBarra k(db);
        fill(k, r);
        kinds.append(k);
    }
    return kinds;
}
