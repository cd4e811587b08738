#include "clsArquivoBanco.h"

#include "AuditChain.h"
#include "Transaction.h"
#include "clsDataAccess.h"

#include <algorithm>

namespace {
const QString kFormato = QStringLiteral("yyyy-MM-dd hh:mm:ss");
const QString kColunas = QStringLiteral(
    "SELECT a.ID, a.ARQUIVO, a.PADRAO, a.BANCO, a.NSA, a.IDMOVIMENTO, a.IDCOD, a.MOMENTO, "
    "a.USUARIO, a.REGISTROS, a.TOTAL, r.IDRECEBE FROM ArquivosBanco a INNER JOIN "
    "ArquivoRecebimentos r ON r.IDARQUIVO = a.ID ");

clsArquivoBanco::Arquivo ler(const Recordset& r) {
    clsArquivoBanco::Arquivo a;
    a.id = r.integer(QStringLiteral("ID"));
    a.arquivo = r.text(QStringLiteral("ARQUIVO"));
    a.padrao = r.text(QStringLiteral("PADRAO"));
    a.banco = r.text(QStringLiteral("BANCO"));
    a.nsa = int(r.integer(QStringLiteral("NSA")));
    a.idMovimento = qint32(r.integer(QStringLiteral("IDMOVIMENTO")));
    a.idcod = int(r.integer(QStringLiteral("IDCOD")));
    a.momento = QDateTime::fromString(r.text(QStringLiteral("MOMENTO")), kFormato);
    a.usuario = r.text(QStringLiteral("USUARIO"));
    a.registros = int(r.integer(QStringLiteral("REGISTROS")));
    a.total = r.money(QStringLiteral("TOTAL"));
    return a;
}
} // namespace

QString clsArquivoBanco::Arquivo::descricao() const {
    return nsa > 0 ? QStringLiteral("%1 (NSA %2)").arg(arquivo).arg(nsa) : arquivo;
}

bool clsArquivoBanco::registrar(clsDataAccess& db, Arquivo& a, const QList<qint32>& idrecebes) {
    Transaction tx(db);
    qint64 id = 0;
    if (!tx.ok() ||
        !AuditChain::insert(
            db, QStringLiteral("ArquivosBanco"), QStringLiteral("ID"),
            QStringLiteral("INSERT INTO ArquivosBanco (ARQUIVO, PADRAO, BANCO, NSA, IDMOVIMENTO, "
                           "IDCOD, MOMENTO, USUARIO, REGISTROS, TOTAL) VALUES (?, ?, ?, ?, ?, ?, "
                           "?, ?, ?, ?)"),
            {a.arquivo, a.padrao, a.banco, a.nsa, a.idMovimento, a.idcod,
             a.momento.toString(kFormato), a.usuario, a.registros, a.total.units()},
            id))
        return false;
    // Many rows per statement: a file of 49 999 slips is one run, not 49 999 round trips.
    constexpr int kPorComando = 400;
    for (qsizetype at = 0; at < idrecebes.size(); at += kPorComando) {
        const qsizetype n = std::min<qsizetype>(kPorComando, idrecebes.size() - at);
        QStringList rows;
        QVariantList values;
        for (qsizetype i = at; i < at + n; ++i) {
            rows << QStringLiteral("(?, ?)");
            values << id << idrecebes.at(i);
        }
        if (!db.SQLExecute(QStringLiteral("INSERT INTO ArquivoRecebimentos (IDARQUIVO, IDRECEBE) "
                                          "VALUES ") +
                               rows.join(QLatin1Char(',')),
                           values))
            return false;
    }
    if (!tx.commit())
        return false;
    a.id = id;
    return true;
}

std::optional<bool> clsArquivoBanco::registrado(clsDataAccess& db, const QString& arquivo) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT COUNT(*) AS N FROM ArquivosBanco WHERE ARQUIVO = ?"), {arquivo});
    if (!rs || !rs->atRow())
        return std::nullopt;
    return rs->integer(QStringLiteral("N")) > 0;
}

std::optional<QList<clsArquivoBanco::Arquivo>> clsArquivoBanco::doRecebimento(clsDataAccess& db,
                                                                              qint32 idrecebe) {
    const auto rs = db.SQLSelect_ReadOnly(
        kColunas + QStringLiteral("WHERE r.IDRECEBE = ? ORDER BY a.ID"), {idrecebe});
    if (!rs)
        return std::nullopt;
    QList<Arquivo> out;
    for (Recordset r = *rs; !r.EOF_(); r.moveNext())
        out.append(ler(r));
    return out;
}

std::optional<QHash<qint32, QList<clsArquivoBanco::Arquivo>>>
clsArquivoBanco::doMovimento(clsDataAccess& db, qint32 idMovimento) {
    const auto rs = db.SQLSelect_ReadOnly(
        kColunas + QStringLiteral("WHERE a.IDMOVIMENTO = ? ORDER BY a.ID"), {idMovimento});
    if (!rs)
        return std::nullopt;
    QHash<qint32, QList<Arquivo>> out;
    for (Recordset r = *rs; !r.EOF_(); r.moveNext())
        out[qint32(r.integer(QStringLiteral("IDRECEBE")))].append(ler(r));
    return out;
}
