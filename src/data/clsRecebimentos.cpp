#include "clsRecebimentos.h"

#include "clsDataAccess.h"

const QString clsRecebimentos::kSemCodigo = QString(44, QLatin1Char('0'));

bool clsRecebimentos::SQLSelect(qint32 idRecebe) {
    const auto rs = m_db->SQLSelect_ReadOnly(
        QStringLiteral("SELECT AUTENTICA, CODBARRA, IDMOVIMENTO, IDRECEBE, TIPO, INTEGRA, EXPORT, "
                       "VALOR, VENCIMENTO, PARCELA, OBS FROM Recebimentos WHERE IDRECEBE = ?"),
        {idRecebe});
    if (!clsDataAccess::CheckValidRecordset(rs))
        return false;
    AUTENTICA = static_cast<qint16>(rs->integer(QStringLiteral("AUTENTICA")));
    CODBARRA = rs->text(QStringLiteral("CODBARRA"));
    IDMOVIMENTO = static_cast<qint16>(rs->integer(QStringLiteral("IDMOVIMENTO")));
    IDRECEBE = static_cast<qint32>(rs->integer(QStringLiteral("IDRECEBE")));
    TIPO = static_cast<qint16>(rs->integer(QStringLiteral("TIPO")));
    INTEGRA = static_cast<qint16>(rs->integer(QStringLiteral("INTEGRA")));
    EXPORT = static_cast<qint16>(rs->integer(QStringLiteral("EXPORT")));
    VALOR = rs->money(QStringLiteral("VALOR"));
    VENCIMENTO = rs->text(QStringLiteral("VENCIMENTO"));
    PARCELA = rs->text(QStringLiteral("PARCELA"));
    OBS = rs->text(QStringLiteral("OBS"));
    return true;
}

bool clsRecebimentos::SQLSelectMax(qint32 idMovimento) {
    const auto rs = m_db->SQLSelect_ReadOnly(
        QStringLiteral("SELECT MAX(AUTENTICA) as MaxAUT FROM Recebimentos WHERE IDMOVIMENTO = ?"),
        {idMovimento});
    if (!clsDataAccess::CheckValidRecordset(rs) || rs->isNull(QStringLiteral("MaxAUT")))
        return false;
    AUTENTICA = static_cast<qint16>(rs->integer(QStringLiteral("MaxAUT")));
    return true;
}

bool clsRecebimentos::SQLInsert() {
    if (CODBARRA == kSemCodigo)
        EXPORT = 1; // items without barcode never go to a bank file
    qint64 id = 0;
    if (!m_db->SQLInsertIdentity(
            QStringLiteral(
                "INSERT INTO Recebimentos (AUTENTICA, CODBARRA, IDMOVIMENTO, TIPO, INTEGRA, "
                "EXPORT, VALOR, VENCIMENTO, PARCELA, OBS) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
            {int(AUTENTICA), CODBARRA, int(IDMOVIMENTO), int(TIPO), int(INTEGRA), int(EXPORT),
             VALOR.units(), VENCIMENTO, PARCELA, OBS},
            id))
        return false;
    IDRECEBE = static_cast<qint32>(id);
    return true;
}

bool clsRecebimentos::SQLUpdate() {
    return m_db->SQLExecute(
        QStringLiteral(
            "UPDATE Recebimentos SET AUTENTICA = ?, CODBARRA = ?, IDMOVIMENTO = ?, TIPO = ?, "
            "VALOR = ?, VENCIMENTO = ?, PARCELA = ?, OBS = ? WHERE IDRECEBE = ?"),
        {int(AUTENTICA), CODBARRA, int(IDMOVIMENTO), int(TIPO), VALOR.units(), VENCIMENTO, PARCELA,
         OBS, IDRECEBE});
}

bool clsRecebimentos::SQLUpdateIntegra(qint32 idMovimento, int flag) {
    return m_db->SQLExecute(
        QStringLiteral("UPDATE Recebimentos SET INTEGRA = ? WHERE IDMOVIMENTO = ?"),
        {flag, idMovimento});
}

bool clsRecebimentos::SQLUpdateExport(qint32 idRecebe, int flag) {
    return m_db->SQLExecute(QStringLiteral("UPDATE Recebimentos SET EXPORT = ? WHERE IDRECEBE = ?"),
                            {flag, idRecebe});
}

bool clsRecebimentos::SQLDelete() {
    return m_db->SQLExecute(QStringLiteral("DELETE FROM Recebimentos WHERE IDRECEBE = ?"),
                            {IDRECEBE});
}

std::optional<int> clsRecebimentos::contarCodigo(clsDataAccess& db, const QString& codbarra) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT COUNT(*) AS N FROM Recebimentos WHERE CODBARRA = ?"), {codbarra});
    if (!clsDataAccess::CheckValidRecordset(rs))
        return std::nullopt;
    return int(rs->integer(QStringLiteral("N")));
}

std::optional<QList<clsRecebimentos::Lancado>>
clsRecebimentos::listarDoMovimento(clsDataAccess& db, qint32 idMovimento) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT Recebimentos.IDRECEBE, Recebimentos.AUTENTICA, CodBarra.DESCRICAO, "
                       "Recebimentos.VALOR FROM Recebimentos, CodBarra WHERE Recebimentos.TIPO = "
                       "CodBarra.IDCOD AND Recebimentos.IDMOVIMENTO = ? ORDER BY "
                       "Recebimentos.IDRECEBE DESC"),
        {idMovimento});
    if (!rs)
        return std::nullopt;
    QList<Lancado> out;
    for (Recordset r = *rs; !r.EOF_(); r.moveNext())
        out.append({static_cast<qint32>(r.integer(QStringLiteral("IDRECEBE"))),
                    static_cast<qint16>(r.integer(QStringLiteral("AUTENTICA"))),
                    r.text(QStringLiteral("DESCRICAO")), r.money(QStringLiteral("VALOR"))});
    return out;
}

std::optional<QList<clsRecebimentos::Lancado>>
clsRecebimentos::listarDoMovimento(clsDataAccess& db, qint32 idMovimento, qint32 antesDe,
                                   int limite) {
    // Two plain statements rather than one with an OR, so the movement's index walks the page
    // in order and a page costs the same on any day.
    const QString base =
        QStringLiteral("SELECT Recebimentos.IDRECEBE, Recebimentos.AUTENTICA, CodBarra.DESCRICAO, "
                       "Recebimentos.VALOR FROM Recebimentos, CodBarra WHERE Recebimentos.TIPO = "
                       "CodBarra.IDCOD AND Recebimentos.IDMOVIMENTO = ? ");
    const QString order = QStringLiteral("ORDER BY Recebimentos.IDRECEBE DESC LIMIT ?");
    const auto rs =
        antesDe > 0
            ? db.SQLSelect_ReadOnly(base + QStringLiteral("AND Recebimentos.IDRECEBE < ? ") + order,
                                    {idMovimento, antesDe, limite})
            : db.SQLSelect_ReadOnly(base + order, {idMovimento, limite});
    if (!rs)
        return std::nullopt;
    QList<Lancado> out;
    for (Recordset r = *rs; !r.EOF_(); r.moveNext())
        out.append({static_cast<qint32>(r.integer(QStringLiteral("IDRECEBE"))),
                    static_cast<qint16>(r.integer(QStringLiteral("AUTENTICA"))),
                    r.text(QStringLiteral("DESCRICAO")), r.money(QStringLiteral("VALOR"))});
    return out;
}

std::optional<clsRecebimentos::Resumo> clsRecebimentos::resumoDoMovimento(clsDataAccess& db,
                                                                          qint32 idMovimento) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT COUNT(*) AS N, SUM(VALOR) AS TOTAL FROM Recebimentos WHERE "
                       "IDMOVIMENTO = ?"),
        {idMovimento});
    if (!clsDataAccess::CheckValidRecordset(rs))
        return std::nullopt;
    Resumo r;
    r.quantidade = rs->integer(QStringLiteral("N"));
    if (!rs->isNull(QStringLiteral("TOTAL")))
        r.total = rs->money(QStringLiteral("TOTAL"));
    return r;
}

bool clsRecebimentos::SQLSelectAutentica(qint32 idMovimento, qint32 autentica, QString* descricao) {
    const auto rs = m_db->SQLSelect_ReadOnly(
        QStringLiteral("SELECT Recebimentos.IDRECEBE, CodBarra.DESCRICAO FROM Recebimentos LEFT "
                       "JOIN CodBarra ON Recebimentos.TIPO = CodBarra.IDCOD WHERE "
                       "Recebimentos.IDMOVIMENTO = ? AND Recebimentos.AUTENTICA = ? ORDER BY "
                       "Recebimentos.IDRECEBE"),
        {idMovimento, autentica});
    if (!clsDataAccess::CheckValidRecordset(rs))
        return false;
    if (descricao)
        *descricao = rs->text(QStringLiteral("DESCRICAO"));
    return SQLSelect(static_cast<qint32>(rs->integer(QStringLiteral("IDRECEBE"))));
}
