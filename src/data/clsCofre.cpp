#include "clsCofre.h"

#include "AuditChain.h"
#include "Transaction.h"
#include "clsDataAccess.h"

const QString clsCofre::kEntrada = QStringLiteral("ENTRADA");
const QString clsCofre::kSaida = QStringLiteral("SAIDA");
const QString clsCofre::kSaldoInicial = QStringLiteral("SALDO INICIAL");

std::optional<Money> clsCofre::saldo(clsDataAccess& db) {
    const auto rs = db.SQLSelect_ReadOnly(QStringLiteral("SELECT SALDO FROM Cofre WHERE ID = 1"));
    if (!rs || !rs->atRow())
        return std::nullopt;
    return rs->money(QStringLiteral("SALDO"));
}

bool clsCofre::gravar(clsDataAccess& db, const Lancamento& l, qint64* idLancamento) {
    Transaction tx(db);
    qint64 id = 0;
    return tx.ok() &&
           AuditChain::execute(
               db, QStringLiteral("Cofre"), QStringLiteral("ID"), 1, AuditChain::Op::Update,
               QStringLiteral("UPDATE Cofre SET SALDO = ? WHERE ID = 1"), {l.saldo.units()}) &&
           AuditChain::insert(
               db, QStringLiteral("CofreMovimentos"), QStringLiteral("ID"),
               QStringLiteral("INSERT INTO CofreMovimentos (IDMOVIMENTO, OPERACAO, VALOR, SALDO, "
                              "USUARIO, MOMENTO) VALUES (?, ?, ?, ?, ?, ?)"),
               {l.idMovimento, l.operacao, l.valor.units(), l.saldo.units(), l.usuario,
                l.momento.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"))},
               id) &&
           (!idLancamento || (*idLancamento = id) != 0) && tx.commit();
}

std::optional<QList<clsCofre::Lancamento>> clsCofre::lancamentos(clsDataAccess& db) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT IDMOVIMENTO, OPERACAO, VALOR, SALDO, USUARIO, MOMENTO FROM "
                       "CofreMovimentos ORDER BY ID"));
    if (!rs)
        return std::nullopt;
    QList<Lancamento> out;
    for (Recordset r = *rs; !r.EOF_(); r.moveNext())
        out.append({qint32(r.integer(QStringLiteral("IDMOVIMENTO"))),
                    r.text(QStringLiteral("OPERACAO")), r.money(QStringLiteral("VALOR")),
                    r.money(QStringLiteral("SALDO")), r.text(QStringLiteral("USUARIO")),
                    QDateTime::fromString(r.text(QStringLiteral("MOMENTO")),
                                          QStringLiteral("yyyy-MM-dd hh:mm:ss"))});
    return out;
}
