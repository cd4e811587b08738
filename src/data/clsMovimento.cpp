#include "clsMovimento.h"

#include "AuditChain.h"
#include "Recordset.h"
#include "Transaction.h"
#include "clsDataAccess.h"

namespace {
// The day's row (totals, status, seal) is chained: a total or a status changed behind the
// program's back no longer matches its last entry.
const QString kTabela = QStringLiteral("Movimento");
const QString kChave = QStringLiteral("ID");
const QString kColumns = QStringLiteral(
    "SELECT ID, MDATA, MOV, STATUS, VALOR_ARRECADADO, ENTRADA, SAIDA, SUPRIMENTO, HASH_CADEIA "
    "FROM Movimento ");
} // namespace

bool clsMovimento::load(const QString& where, const QVariant& key) {
    const auto rs = m_db->SQLSelect_ReadOnly(kColumns + where, {key});
    if (!clsDataAccess::CheckValidRecordset(rs))
        return false;
    fill(*rs);
    return true;
}

void clsMovimento::fill(const Recordset& rs) {
    ID = static_cast<qint32>(rs.integer(QStringLiteral("ID")));
    MDATA = rs.date(QStringLiteral("MDATA"));
    MOV = static_cast<qint16>(rs.integer(QStringLiteral("MOV")));
    STATUS = rs.text(QStringLiteral("STATUS"));
    VALOR_ARRECADADO = rs.money(QStringLiteral("VALOR_ARRECADADO"));
    ENTRADA = rs.money(QStringLiteral("ENTRADA"));
    SAIDA = rs.money(QStringLiteral("SAIDA"));
    SUPRIMENTO = rs.money(QStringLiteral("SUPRIMENTO"));
    HASH_CADEIA = rs.text(QStringLiteral("HASH_CADEIA"));
}

std::optional<QList<clsMovimento>> clsMovimento::encerrados(clsDataAccess& db) {
    auto rs =
        db.SQLSelect_ReadOnly(kColumns + QStringLiteral("WHERE STATUS = ? ORDER BY MDATA, ID"),
                              {QStringLiteral("FECHADO")});
    if (!rs)
        return std::nullopt;
    QList<clsMovimento> out;
    for (; rs->atRow(); rs->moveNext()) {
        clsMovimento m(db);
        m.fill(*rs);
        out.append(m);
    }
    return out;
}

bool clsMovimento::SQLSelect(qint32 id) {
    return load(QStringLiteral("WHERE ID = ?"), id);
}

bool clsMovimento::SQLSelectByDate(const QDate& day) {
    return load(QStringLiteral("WHERE MDATA = ? ORDER BY ID DESC"), day);
}

DayStatus clsMovimento::status() const {
    // Anything but an open day is treated as closed: nothing is written into it.
    return STATUS.trimmed().compare(QLatin1String("ABERTO"), Qt::CaseInsensitive) == 0
               ? DayStatus::Open
               : DayStatus::Closed;
}

void clsMovimento::setStatus(DayStatus s) {
    STATUS = s == DayStatus::Open ? QStringLiteral("ABERTO") : QStringLiteral("FECHADO");
}

bool clsMovimento::inserirNovo() {
    return insert(0);
}

bool clsMovimento::inserirComId(qint32 id) {
    return insert(id);
}

bool clsMovimento::insert(qint32 id) {
    const QVariantList values = {MDATA,          int(MOV),           STATUS,
                                 SAIDA.units(),  SUPRIMENTO.units(), VALOR_ARRECADADO.units(),
                                 ENTRADA.units()};
    const QString cols =
        QStringLiteral("MDATA, MOV, STATUS, SAIDA, SUPRIMENTO, VALOR_ARRECADADO, ENTRADA");
    if (id == 0) {
        qint64 newId = 0;
        if (!AuditChain::insert(
                *m_db, kTabela, kChave,
                QStringLiteral("INSERT INTO Movimento (%1) VALUES (?, ?, ?, ?, ?, ?, ?)").arg(cols),
                values, newId))
            return false;
        ID = static_cast<qint32>(newId);
        return true;
    }
    Transaction tx(*m_db);
    if (!tx.ok() ||
        !m_db->SQLExecute(
            QStringLiteral("INSERT INTO Movimento (ID, %1) VALUES (?, ?, ?, ?, ?, ?, ?, ?)")
                .arg(cols),
            QVariantList{id} + values))
        return false;
    m_db->syncIdentity(kTabela, kChave);
    if (!AuditChain::track(*m_db, kTabela, kChave, id, AuditChain::Op::Insert) || !tx.commit())
        return false;
    ID = id;
    return true;
}

bool clsMovimento::SQLUpdate() {
    return AuditChain::execute(
        *m_db, kTabela, kChave, ID, AuditChain::Op::Update,
        QStringLiteral(
            "UPDATE Movimento SET MDATA = ?, MOV = ?, STATUS = ?, SAIDA = ?, SUPRIMENTO = ?, "
            "VALOR_ARRECADADO = ?, ENTRADA = ?, HASH_CADEIA = ? WHERE ID = ?"),
        {MDATA, int(MOV), STATUS, SAIDA.units(), SUPRIMENTO.units(), VALOR_ARRECADADO.units(),
         ENTRADA.units(), HASH_CADEIA, ID});
}

bool clsMovimento::SQLUpdateTotais() {
    // A day is closed on a file checked whole, then and there.
    if (status() == DayStatus::Closed && !m_db->wholeFileSound(true))
        return false;
    return AuditChain::execute(
        *m_db, kTabela, kChave, ID, AuditChain::Op::Update,
        QStringLiteral(
            "UPDATE Movimento SET SAIDA = ?, SUPRIMENTO = ?, VALOR_ARRECADADO = ?, ENTRADA = ?, "
            "STATUS = ?, HASH_CADEIA = ? WHERE ID = ?"),
        {SAIDA.units(), SUPRIMENTO.units(), VALOR_ARRECADADO.units(), ENTRADA.units(), STATUS,
         HASH_CADEIA, ID});
}

bool clsMovimento::SQLDelete() {
    return AuditChain::execute(*m_db, kTabela, kChave, ID, AuditChain::Op::Delete,
                               QStringLiteral("DELETE FROM Movimento WHERE ID = ?"), {ID});
}

std::optional<clsMovimento::SomasDia> clsMovimento::somarDia(clsDataAccess& db, qint32 idMovimento,
                                                             const QDate& dia) {
    const auto cash = db.SQLSelect_ReadOnly(
        QStringLiteral(
            "SELECT SUM(ENTRADA) AS ENTRADA, SUM(SAIDA) AS SAIDA FROM Sangria WHERE SDATA = ?"),
        {dia});
    const auto received = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT SUM(VALOR) AS SOMA FROM Recebimentos WHERE IDMOVIMENTO = ?"),
        {idMovimento});
    if (!cash || !received)
        return std::nullopt;
    return SomasDia{received->money(QStringLiteral("SOMA")), cash->money(QStringLiteral("ENTRADA")),
                    cash->money(QStringLiteral("SAIDA"))};
}

std::optional<int> clsMovimento::abertos(clsDataAccess& db) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT COUNT(*) AS N FROM Movimento WHERE STATUS = ?"),
        {QStringLiteral("ABERTO")});
    if (!clsDataAccess::CheckValidRecordset(rs))
        return std::nullopt;
    return int(rs->integer(QStringLiteral("N")));
}

std::optional<int> clsMovimento::contar(clsDataAccess& db) {
    const auto rs = db.SQLSelect_ReadOnly(QStringLiteral("SELECT COUNT(*) AS N FROM Movimento"));
    if (!clsDataAccess::CheckValidRecordset(rs))
        return std::nullopt;
    return int(rs->integer(QStringLiteral("N")));
}
