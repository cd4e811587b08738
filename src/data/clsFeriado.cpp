#include "clsFeriado.h"

#include "clsDataAccess.h"

bool clsFeriado::SQLSelect(qint32 id) {
    const auto rs = m_db->SQLSelect_ReadOnly(
        QStringLiteral("SELECT ID, FERIADO FROM Feriados WHERE ID = ?"), {id});
    if (!clsDataAccess::CheckValidRecordset(rs))
        return false;
    ID = static_cast<qint32>(rs->integer(QStringLiteral("ID")));
    FERIADO = rs->date(QStringLiteral("FERIADO"));
    return true;
}

bool clsFeriado::Incluir() {
    qint64 id = 0;
    if (!m_db->SQLInsertIdentity(QStringLiteral("INSERT INTO Feriados (FERIADO) VALUES (?)"),
                                 {FERIADO}, id))
        return false;
    ID = static_cast<qint32>(id);
    return true;
}

bool clsFeriado::excluir(qint32 id) {
    ID = id;
    return m_db->SQLExecute(QStringLiteral("DELETE FROM Feriados WHERE ID = ?"), {ID});
}

bool clsFeriado::excluirTodos(clsDataAccess& db) {
    return db.SQLExecute(QStringLiteral("DELETE FROM Feriados"));
}

std::optional<QList<clsFeriado>> clsFeriado::listar(clsDataAccess& db) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT ID, FERIADO FROM Feriados ORDER BY FERIADO, ID"));
    if (!rs)
        return std::nullopt;
    QList<clsFeriado> out;
    for (Recordset r = *rs; !r.EOF_(); r.moveNext()) {
        clsFeriado f(db);
        f.ID = static_cast<qint32>(r.integer(QStringLiteral("ID")));
        f.FERIADO = r.date(QStringLiteral("FERIADO"));
        out.append(f);
    }
    return out;
}

std::optional<int> clsFeriado::contar(clsDataAccess& db, const QDate& day) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT COUNT(*) AS N FROM Feriados WHERE FERIADO = ?"), {day});
    if (!clsDataAccess::CheckValidRecordset(rs))
        return std::nullopt;
    return int(rs->integer(QStringLiteral("N")));
}
