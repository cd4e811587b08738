#include "clsSeloRede.h"

#include "clsDataAccess.h"

namespace {
const QString kColumns = QStringLiteral(
    "SELECT GUICHE, DIA, HASH, ORIGEM, IDMOVIMENTO, ENCERRADO, RECEBIDO FROM SelosRede ");

void fill(clsSeloRede& s, const Recordset& rs) {
    s.GUICHE = rs.text(QStringLiteral("GUICHE"));
    s.DIA = rs.date(QStringLiteral("DIA"));
    s.HASH = rs.text(QStringLiteral("HASH"));
    s.ORIGEM = rs.text(QStringLiteral("ORIGEM"));
    s.IDMOVIMENTO = qint32(rs.integer(QStringLiteral("IDMOVIMENTO")));
    s.ENCERRADO = rs.text(QStringLiteral("ENCERRADO"));
    s.RECEBIDO = rs.value(QStringLiteral("RECEBIDO")).toDateTime();
}
} // namespace

bool clsSeloRede::SQLInsert() {
    return m_db->SQLExecute(
        QStringLiteral("INSERT INTO SelosRede (GUICHE, DIA, HASH, ORIGEM, IDMOVIMENTO, ENCERRADO) "
                       "VALUES (?, ?, ?, ?, ?, ?) ON CONFLICT (GUICHE, DIA, HASH) DO NOTHING"),
        {GUICHE, DIA, HASH, ORIGEM, IDMOVIMENTO, ENCERRADO});
}

std::optional<bool> clsSeloRede::SQLSelectUltimo(const QString& guiche) {
    const auto rs = m_db->SQLSelect_ReadOnly(
        kColumns + QStringLiteral("WHERE GUICHE = ? ORDER BY DIA DESC, RECEBIDO DESC LIMIT 1"),
        {guiche});
    if (!rs)
        return std::nullopt;
    if (!rs->atRow())
        return false;
    fill(*this, *rs);
    return true;
}

std::optional<QList<clsSeloRede>> clsSeloRede::porDia(clsDataAccess& db, const QString& guiche) {
    auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT DISTINCT ON (DIA) GUICHE, DIA, HASH, ORIGEM, IDMOVIMENTO, "
                       "ENCERRADO, RECEBIDO FROM SelosRede WHERE GUICHE = ? ORDER BY DIA, "
                       "RECEBIDO DESC"),
        {guiche});
    if (!rs)
        return std::nullopt;
    QList<clsSeloRede> out;
    for (; rs->atRow(); rs->moveNext()) {
        clsSeloRede s(db);
        fill(s, *rs);
        out.append(s);
    }
    return out;
}

std::optional<QStringList> clsSeloRede::doDia(clsDataAccess& db, const QDate& dia) {
    auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT DISTINCT TRIM(GUICHE) AS G FROM SelosRede WHERE DIA = ? ORDER BY G"),
        {dia});
    if (!rs)
        return std::nullopt;
    QStringList out;
    for (; rs->atRow(); rs->moveNext())
        out.append(rs->text(QStringLiteral("G")));
    return out;
}

std::optional<QList<clsSeloRede::DiaEncerrado>> clsSeloRede::encerrados(clsDataAccess& local) {
    auto rs = local.SQLSelect_ReadOnly(
        QStringLiteral("SELECT ID, MDATA, HASH_CADEIA FROM Movimento WHERE STATUS = ? AND "
                       "HASH_CADEIA IS NOT NULL ORDER BY MDATA, ID"),
        {QStringLiteral("FECHADO")});
    if (!rs)
        return std::nullopt;
    QList<DiaEncerrado> out;
    for (; rs->atRow(); rs->moveNext())
        if (!rs->text(QStringLiteral("HASH_CADEIA")).isEmpty())
            out.append({qint32(rs->integer(QStringLiteral("ID"))),
                        rs->date(QStringLiteral("MDATA")),
                        rs->text(QStringLiteral("HASH_CADEIA"))});
    return out;
}
