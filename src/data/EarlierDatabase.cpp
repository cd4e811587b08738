#include "EarlierDatabase.h"

#include "clsDataAccess.h"

#include <QSqlQuery>

std::optional<QList<QPair<qint64, QString>>> EarlierDatabase::codigos(clsDataAccess& db,
                                                                      qint64 depoisDe, int limite) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT IDRECEBE, CODBARRA FROM Recebimentos WHERE IDRECEBE > ? ORDER BY "
                       "IDRECEBE LIMIT ?"),
        {depoisDe, limite});
    if (!rs)
        return std::nullopt;
    QList<QPair<qint64, QString>> out;
    out.reserve(rs->recordCount());
    for (const auto& row : rs->rows())
        out.append({variantToInt64(row.value(0)), row.value(1).toString()});
    return out;
}

std::optional<qint64> EarlierDatabase::contar(clsDataAccess& db) {
    const auto rs = db.SQLSelect_ReadOnly(QStringLiteral("SELECT COUNT(*) AS N FROM Recebimentos"));
    if (!clsDataAccess::CheckValidRecordset(rs))
        return std::nullopt;
    return rs->integer(QStringLiteral("N"));
}

QString EarlierDatabase::guiche(clsDataAccess& db) {
    // Databases from before the owner was recorded have no such table: not an error here.
    QSqlQuery q(db.database());
    if (!q.exec(QStringLiteral("SELECT GUICHE FROM Guiche WHERE ID = 1")) || !q.next())
        return {};
    return q.value(0).toString().trimmed();
}
