#pragma once

#include <QSqlDatabase>
#include <QString>

// What someone holding a counter's database file can do with a SQL tool: lower one receipt of a
// closed day and rebuild the audit chain after it, so that the chain is consistent in itself.
// `totals` lowers the day's VALOR_ARRECADADO by the same amount; `seal` puts the rebuilt chain's
// hash of the closing into Movimento.HASH_CADEIA; the day's own chain entries are rewritten to
// match. False (with `why`) when the rewrite failed.
namespace ChainRewrite {

bool lowerReceipt(QSqlDatabase db, int autentica, qint64 units, bool totals, bool seal,
                  QString* why);

// The counter's SQLite file opened under a connection of its own.
QSqlDatabase openSqlite(const QString& file);

} // namespace ChainRewrite
