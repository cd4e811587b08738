#include "clsRecebimentos1.h"

#include "clsDataAccess.h"

std::optional<int> clsRecebimentos1::contarCodigo(clsDataAccess& db, const QString& codbarra) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT COUNT(*) AS N FROM RECEBIMENTOS1 WHERE CODBARRA = ?"), {codbarra});
    if (!clsDataAccess::CheckValidRecordset(rs))
        return std::nullopt;
    return int(rs->integer(QStringLiteral("N")));
}
