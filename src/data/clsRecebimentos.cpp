#include "clsRecebimentos.h"

#include "AuditChain.h"
#include "Transaction.h"
#include "clsDataAccess.h"

#include <limits>

const QString clsRecebimentos::kSemCodigo = QString(44, QLatin1Char('0'));

namespace {
const QString kTable = QStringLiteral("Recebimentos");
const QString kKey = QStringLiteral("IDRECEBE");
const QString kMomentoFormat = QStringLiteral("yyyy-MM-dd hh:mm:ss");
const QString kColumns = QStringLiteral(
    "SELECT AUTENTICA, CODBARRA, IDMOVIMENTO, IDRECEBE, TIPO, INTEGRA, EXPORT, VALOR, "
    "VENCIMENTO, PARCELA, OBS, MOMENTO, DUPLICADO FROM Recebimentos ");
} // namespace

bool clsRecebimentos::isUniqueCode(const QString& code) {
    return !code.isEmpty() && !code.startsWith(QLatin1String("000"));
}

std::optional<bool> clsRecebimentos::codigoRecebido(clsDataAccess& db, const QString& code) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT IDRECEBE FROM Recebimentos WHERE CODBARRA = ?"), {code});
    if (!rs)
        return std::nullopt;
    return rs->recordCount() > 0;
}

void clsRecebimentos::fill(const Recordset& rs) {
    AUTENTICA = static_cast<qint32>(rs.integer(QStringLiteral("AUTENTICA")));
    CODBARRA = rs.text(QStringLiteral("CODBARRA"));
    IDMOVIMENTO = static_cast<qint16>(rs.integer(QStringLiteral("IDMOVIMENTO")));
    IDRECEBE = static_cast<qint32>(rs.integer(QStringLiteral("IDRECEBE")));
    TIPO = static_cast<qint16>(rs.integer(QStringLiteral("TIPO")));
    INTEGRA = static_cast<qint16>(rs.integer(QStringLiteral("INTEGRA")));
    EXPORT = static_cast<qint16>(rs.integer(QStringLiteral("EXPORT")));
    VALOR = rs.money(QStringLiteral("VALOR"));
    VENCIMENTO = rs.text(QStringLiteral("VENCIMENTO"));
    PARCELA = rs.text(QStringLiteral("PARCELA"));
    OBS = rs.text(QStringLiteral("OBS"));
    MOMENTO = QDateTime::fromString(rs.text(QStringLiteral("MOMENTO")), kMomentoFormat);
    DUPLICADO = rs.integer(QStringLiteral("DUPLICADO"));
}

bool clsRecebimentos::SQLSelect(qint32 idRecebe) {
    const auto rs =
        m_db->SQLSelect_ReadOnly(kColumns + QStringLiteral("WHERE IDRECEBE = ?"), {idRecebe});
    if (!clsDataAccess::CheckValidRecordset(rs))
        return false;
    fill(*rs);
    return true;
}

std::optional<QList<clsRecebimentos::ComTipo>>
clsRecebimentos::listarMovimento(clsDataAccess& db, qint32 idMovimento) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT r.AUTENTICA, r.CODBARRA, r.IDMOVIMENTO, r.IDRECEBE, r.TIPO, "
                       "r.INTEGRA, r.EXPORT, r.VALOR, r.VENCIMENTO, r.PARCELA, r.OBS, r.MOMENTO, "
                       "r.DUPLICADO, c.DESCRICAO FROM Recebimentos r LEFT JOIN CodBarra c ON "
                       "c.IDCOD = r.TIPO WHERE r.IDMOVIMENTO = ? ORDER BY r.AUTENTICA, r.IDRECEBE"),
        {idMovimento});
    if (!rs)
        return std::nullopt;
    QList<ComTipo> out;
    for (Recordset r = *rs; !r.EOF_(); r.moveNext()) {
        ComTipo row{clsRecebimentos(db), r.text(QStringLiteral("DESCRICAO"))};
        row.r.fill(r);
        out.append(row);
    }
    return out;
}

bool clsRecebimentos::SQLSelectMax(qint32 idMovimento) {
    const auto rs = m_db->SQLSelect_ReadOnly(
        QStringLiteral("SELECT MAX(AUTENTICA) as MaxAUT FROM Recebimentos WHERE IDMOVIMENTO = ?"),
        {idMovimento});
    if (!clsDataAccess::CheckValidRecordset(rs) || rs->isNull(QStringLiteral("MaxAUT")))
        return false;
    AUTENTICA = static_cast<qint32>(rs->integer(QStringLiteral("MaxAUT")));
    return true;
}

bool clsRecebimentos::track(AuditChain::Op op) {
    return AuditChain::track(*m_db, kTable, kKey, IDRECEBE, op);
}

bool clsRecebimentos::SQLInsert() {
    if (CODBARRA == kSemCodigo)
        EXPORT = 1; // items without barcode never go to a bank file
    qint64 id = 0;
    if (!AuditChain::insert(
            *m_db, kTable, kKey,
            QStringLiteral(
                "INSERT INTO Recebimentos (AUTENTICA, CODBARRA, IDMOVIMENTO, TIPO, INTEGRA, "
                "EXPORT, VALOR, VENCIMENTO, PARCELA, OBS, MOMENTO) VALUES (?, ?, ?, ?, ?, ?, ?, ?, "
                "?, ?, ?)"),
            {int(AUTENTICA), CODBARRA, int(IDMOVIMENTO), int(TIPO), int(INTEGRA), int(EXPORT),
             VALOR.units(), VENCIMENTO, PARCELA, OBS,
             MOMENTO.isValid() ? QVariant(MOMENTO.toString(kMomentoFormat))
                               : QVariant(QMetaType(QMetaType::QString))},
            id))
        return false;
    IDRECEBE = static_cast<qint32>(id);
    return true;
}

bool clsRecebimentos::SQLUpdate() {
    return AuditChain::execute(
        *m_db, kTable, kKey, IDRECEBE, AuditChain::Op::Update,
        QStringLiteral(
            "UPDATE Recebimentos SET AUTENTICA = ?, CODBARRA = ?, IDMOVIMENTO = ?, "
            "TIPO = ?, VALOR = ?, VENCIMENTO = ?, PARCELA = ?, OBS = ? WHERE IDRECEBE = ?"),
        {int(AUTENTICA), CODBARRA, int(IDMOVIMENTO), int(TIPO), VALOR.units(), VENCIMENTO, PARCELA,
         OBS, IDRECEBE});
}

bool clsRecebimentos::SQLUpdateIntegra(qint32 idMovimento, int flag) {
    Transaction tx(*m_db);
    return tx.ok() &&
           m_db->SQLExecute(
               QStringLiteral("UPDATE Recebimentos SET INTEGRA = ? WHERE IDMOVIMENTO = ?"),
               {flag, idMovimento}) &&
           AuditChain::trackWhere(*m_db, kTable, kKey, QStringLiteral("IDMOVIMENTO = ?"),
                                  {idMovimento}) &&
           tx.commit();
}

bool clsRecebimentos::SQLUpdateExport(qint32 idRecebe, int flag) {
    return AuditChain::execute(
        *m_db, kTable, kKey, idRecebe, AuditChain::Op::Update,
        QStringLiteral("UPDATE Recebimentos SET EXPORT = ? WHERE IDRECEBE = ?"), {flag, idRecebe});
}

bool clsRecebimentos::SQLDelete() {
    return AuditChain::execute(*m_db, kTable, kKey, IDRECEBE, AuditChain::Op::Delete,
                               QStringLiteral("DELETE FROM Recebimentos WHERE IDRECEBE = ?"),
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
    return listarDoMovimento(db, idMovimento, 0, std::numeric_limits<int>::max());
}

std::optional<QList<clsRecebimentos>>
clsRecebimentos::listarExportacao(clsDataAccess& db, qint32 idMovimento, int tipo, int exportFlag) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT Recebimentos.IDRECEBE, Recebimentos.AUTENTICA, Recebimentos.VALOR, "
                       "Recebimentos.CODBARRA, Recebimentos.EXPORT FROM Recebimentos, CodBarra "
                       "WHERE Recebimentos.TIPO = CodBarra.IDCOD AND Recebimentos.IDMOVIMENTO = ? "
                       "AND Recebimentos.TIPO = ? AND Recebimentos.EXPORT = ? "
                       "ORDER BY Recebimentos.AUTENTICA, Recebimentos.IDRECEBE"),
        {idMovimento, tipo, exportFlag});
    if (!rs)
        return std::nullopt;
    QList<clsRecebimentos> rows;
    rows.reserve(rs->recordCount());
    for (Recordset r = *rs; !r.EOF_(); r.moveNext()) {
        clsRecebimentos row(db);
        row.IDRECEBE = static_cast<qint32>(r.integer(QStringLiteral("IDRECEBE")));
        row.AUTENTICA = static_cast<qint32>(r.integer(QStringLiteral("AUTENTICA")));
        row.VALOR = r.money(QStringLiteral("VALOR"));
        row.CODBARRA = r.text(QStringLiteral("CODBARRA"));
        row.EXPORT = static_cast<qint16>(r.integer(QStringLiteral("EXPORT")));
        row.IDMOVIMENTO = static_cast<qint16>(idMovimento);
        row.TIPO = static_cast<qint16>(tipo);
        rows.append(row);
    }
    return rows;
}

bool clsRecebimentos::SQLUpdateExport(clsDataAccess& db, const QList<QPair<qint32, int>>& marks) {
    Transaction tx(db);
    if (!tx.ok())
        return false;
    for (const auto& [id, flag] : marks)
        if (!db.SQLExecute(QStringLiteral("UPDATE Recebimentos SET EXPORT = ? WHERE IDRECEBE = ?"),
                           {flag, id}) ||
            !AuditChain::track(db, kTable, kKey, id, AuditChain::Op::Update))
            return false;
    return tx.commit();
}
std::optional<QList<clsRecebimentos>> clsRecebimentos::paraIntegracao(clsDataAccess& db,
                                                                      qint32 idMovimento) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT Recebimentos.IDRECEBE, Recebimentos.AUTENTICA, Recebimentos.VALOR, "
                       "Recebimentos.CODBARRA, Recebimentos.EXPORT, CodBarra.IDCOD FROM "
                       "Recebimentos, CodBarra WHERE Recebimentos.TIPO = CodBarra.IDCOD AND "
                       "Recebimentos.IDMOVIMENTO = ? ORDER BY Recebimentos.IDRECEBE"),
        {idMovimento});
    if (!rs)
        return std::nullopt;
    QList<clsRecebimentos> out;
    out.reserve(rs->recordCount());
    for (const QVector<QVariant>& row : rs->rows()) {
        clsRecebimentos r(db);
        r.IDRECEBE = static_cast<qint32>(variantToInt64(row[0]));
        r.AUTENTICA = static_cast<qint32>(variantToInt64(row[1]));
        r.VALOR = Money::fromUnits(variantToInt64(row[2]));
        r.CODBARRA = row[3].toString();
        r.EXPORT = static_cast<qint16>(variantToInt64(row[4]));
        r.TIPO = static_cast<qint16>(variantToInt64(row[5]));
        r.IDMOVIMENTO = static_cast<qint16>(idMovimento);
        out.append(r);
    }
    return out;
}

bool clsRecebimentos::SQLRestore() {
    Transaction tx(*m_db);
    if (!tx.ok() ||
        !m_db->SQLExecute(
            QStringLiteral("INSERT INTO Recebimentos (IDRECEBE, AUTENTICA, CODBARRA, IDMOVIMENTO, "
                           "TIPO, INTEGRA, EXPORT, VALOR, VENCIMENTO, PARCELA, OBS, MOMENTO) "
                           "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
            {IDRECEBE, int(AUTENTICA), CODBARRA, int(IDMOVIMENTO), int(TIPO), int(INTEGRA),
             int(EXPORT), VALOR.units(), VENCIMENTO, PARCELA, OBS,
             MOMENTO.isValid() ? QVariant(MOMENTO.toString(kMomentoFormat))
                               : QVariant(QMetaType::fromType<QString>())}))
        return false;
    m_db->syncIdentity(kTable, kKey);
    return track(AuditChain::Op::Insert) && tx.commit();
}

std::optional<QList<clsRecebimentos::Corrigivel>>
clsRecebimentos::listarParaCorrecao(clsDataAccess& db, qint32 idMovimento,
                                    std::optional<qint32> autentica) {
    QString sql = QStringLiteral(
        "SELECT Recebimentos.IDRECEBE, Recebimentos.AUTENTICA, CodBarra.IDCOD, "
        "CodBarra.DESCRICAO, Recebimentos.VALOR, Recebimentos.CODBARRA FROM Recebimentos, "
        "CodBarra WHERE Recebimentos.TIPO = CodBarra.IDCOD AND Recebimentos.IDMOVIMENTO = ?");
    QVariantList params{idMovimento};
    if (autentica) {
        sql += QStringLiteral(" AND Recebimentos.AUTENTICA = ?");
        params << int(*autentica);
    }
    const auto rs =
        db.SQLSelect_ReadOnly(sql + QStringLiteral(" ORDER BY Recebimentos.IDRECEBE DESC"), params);
    if (!rs)
        return std::nullopt;
    QList<Corrigivel> out;
    for (Recordset r = *rs; !r.EOF_(); r.moveNext())
        out.append({static_cast<qint32>(r.integer(QStringLiteral("IDRECEBE"))),
                    static_cast<qint32>(r.integer(QStringLiteral("AUTENTICA"))),
                    static_cast<qint16>(r.integer(QStringLiteral("IDCOD"))),
                    r.text(QStringLiteral("DESCRICAO")), r.money(QStringLiteral("VALOR")),
                    r.text(QStringLiteral("CODBARRA"))});
    return out;
}

std::optional<bool> clsRecebimentos::autenticaEmUso(clsDataAccess& db, qint32 idMovimento,
                                                    qint32 autentica, qint32 outro) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT COUNT(*) AS N FROM Recebimentos WHERE IDMOVIMENTO = ? AND "
                       "AUTENTICA = ? AND IDRECEBE <> ?"),
        {idMovimento, int(autentica), outro});
    if (!clsDataAccess::CheckValidRecordset(rs))
        return std::nullopt;
    return rs->integer(QStringLiteral("N")) > 0;
}

std::optional<bool> clsRecebimentos::codigoEmUso(clsDataAccess& db, const QString& codbarra,
                                                 qint32 outro) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral(
            "SELECT COUNT(*) AS N FROM Recebimentos WHERE CODBARRA = ? AND IDRECEBE <> ?"),
        {codbarra, outro});
    if (!clsDataAccess::CheckValidRecordset(rs))
        return std::nullopt;
    return rs->integer(QStringLiteral("N")) > 0;
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
                    static_cast<qint32>(r.integer(QStringLiteral("AUTENTICA"))),
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
