#include "ChainRewrite.h"

#include "AuditChain.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QVariantList>

namespace {

bool exec(QSqlDatabase db, const QString& sql, const QVariantList& values, QString* why) {
    QSqlQuery q(db);
    q.prepare(sql);
    for (const QVariant& v : values)
        q.addBindValue(v);
    if (q.exec())
        return true;
    *why = sql + QStringLiteral(": ") + q.lastError().text();
    return false;
}

} // namespace

QSqlDatabase ChainRewrite::openSqlite(const QString& file) {
    const QString name = QStringLiteral("rewrite-") + file;
    QSqlDatabase db = QSqlDatabase::contains(name)
                          ? QSqlDatabase::database(name)
                          : QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
    db.setDatabaseName(file);
    db.open();
    return db;
}

bool ChainRewrite::lowerReceipt(QSqlDatabase db, int autentica, qint64 units, bool totals,
                                bool seal, QString* why) {
    QSqlQuery r(db);
    r.prepare(QStringLiteral("SELECT IDRECEBE, VALOR, IDMOVIMENTO FROM Recebimentos WHERE "
                             "AUTENTICA = ?"));
    r.addBindValue(autentica);
    if (!r.exec() || !r.next()) {
        *why = QStringLiteral("receipt not found");
        return false;
    }
    const qint64 key = r.value(0).toLongLong();
    const QString before = QStringLiteral("\"VALOR\":\"%1\"").arg(r.value(1).toLongLong());
    const QString after = QStringLiteral("\"VALOR\":\"%1\"").arg(r.value(1).toLongLong() - units);
    const qint64 movement = r.value(2).toLongLong();
    QSqlQuery m(db);
    m.prepare(QStringLiteral("SELECT HASH_CADEIA, VALOR_ARRECADADO FROM Movimento WHERE ID = ?"));
    m.addBindValue(movement);
    if (!m.exec() || !m.next()) {
        *why = QStringLiteral("movement not found");
        return false;
    }
    const QString closing = m.value(0).toString();
    const QString totalBefore =
        QStringLiteral("\"VALOR_ARRECADADO\":\"%1\"").arg(m.value(1).toLongLong());
    const QString totalAfter =
        QStringLiteral("\"VALOR_ARRECADADO\":\"%1\"").arg(m.value(1).toLongLong() - units);
    QSqlQuery q(db);
    if (!q.exec(QStringLiteral("SELECT SEQ, TABELA, CAMPO, CHAVE, OPERACAO, MOMENTO, CONTEUDO, "
                               "HASH FROM Cadeia ORDER BY SEQ"))) {
        *why = q.lastError().text();
        return false;
    }
    QList<QVariantList> rewritten;
    QString previous = AuditChain::kGenesis;
    QString newClosing;
    while (q.next()) {
        QString content = q.value(6).toString();
        if (q.value(1).toString() == QLatin1String("Recebimentos") &&
            q.value(3).toLongLong() == key)
            content.replace(before, after);
        // The day's row is chained too: its entries say what the rewrite makes it say.
        if (q.value(1).toString() == QLatin1String("Movimento") &&
            q.value(3).toLongLong() == movement) {
            if (totals)
                content.replace(totalBefore, totalAfter);
            if (seal && !closing.isEmpty() && !newClosing.isEmpty())
                content.replace(closing, newClosing);
        }
        previous = AuditChain::entryHash(previous, q.value(0).toLongLong(), q.value(1).toString(),
                                         q.value(2).toString(), q.value(3).toLongLong(),
                                         q.value(4).toString(), q.value(5).toString(), content);
        if (q.value(7).toString() == closing)
            newClosing = previous;
        rewritten << QVariantList{content, previous, q.value(0)};
    }
    q.finish();
    if (!exec(db, QStringLiteral("UPDATE Recebimentos SET VALOR = VALOR - ? WHERE IDRECEBE = ?"),
              {units, key}, why))
        return false;
    for (const QVariantList& row : rewritten)
        if (!exec(db, QStringLiteral("UPDATE Cadeia SET CONTEUDO = ?, HASH = ? WHERE SEQ = ?"), row,
                  why))
            return false;
    if (totals && !exec(db,
                        QStringLiteral("UPDATE Movimento SET VALOR_ARRECADADO = VALOR_ARRECADADO "
                                       "- ? WHERE ID = ?"),
                        {units, movement}, why))
        return false;
    return !seal || exec(db, QStringLiteral("UPDATE Movimento SET HASH_CADEIA = ? WHERE ID = ?"),
                         {newClosing, movement}, why);
}
