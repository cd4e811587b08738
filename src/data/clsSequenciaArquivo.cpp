#include "clsSequenciaArquivo.h"

#include "Transaction.h"
#include "clsDataAccess.h"

namespace {
const QString kSelect = QStringLiteral("SELECT NSA FROM SequenciaArquivo WHERE BANCO = ?");
}

std::optional<int> clsSequenciaArquivo::ultimo(clsDataAccess& db, const QString& banco) {
    const auto rs = db.SQLSelect_ReadOnly(kSelect, {banco});
    if (!rs)
        return std::nullopt;
    return rs->atRow() ? int(rs->integer(QStringLiteral("NSA"))) : 0;
}

std::optional<int> clsSequenciaArquivo::proximo(clsDataAccess& db, const QString& banco) {
    Transaction tx(db);
    if (!tx.ok())
        return std::nullopt;
    const auto rs = db.SQLSelect_ReadOnly(kSelect, {banco});
    if (!rs)
        return std::nullopt;
    const int last = rs->atRow() ? int(rs->integer(QStringLiteral("NSA"))) : 0;
    const int next = last >= kMaximo ? 1 : last + 1;
    const bool stored =
        rs->atRow()
            ? db.SQLExecute(QStringLiteral("UPDATE SequenciaArquivo SET NSA = ? WHERE BANCO = ?"),
                            {next, banco})
            : db.SQLExecute(
                  QStringLiteral("INSERT INTO SequenciaArquivo (BANCO, NSA) VALUES (?, ?)"),
                  {banco, next});
    if (!stored || !tx.commit())
        return std::nullopt;
    return next;
}
