#include "clsAutenticacoes.h"

#include "AuditChain.h"
#include "Transaction.h"
#include "clsDataAccess.h"

namespace {
const QString kTable = QStringLiteral("Autenticacoes");
const QString kKey = QStringLiteral("IDRECEBE");
const QString kMomento = QStringLiteral("yyyy-MM-dd hh:mm:ss");

QDateTime moment(const QString& text) {
    return text.isEmpty() ? QDateTime() : QDateTime::fromString(text, kMomento);
}
} // namespace

bool clsAutenticacoes::registrar(clsDataAccess& db, qint32 idRecebe, qint32 idMovimento,
                                 qint32 autentica) {
    return AuditChain::execute(db, kTable, kKey, idRecebe, AuditChain::Op::Insert,
                               QStringLiteral("INSERT INTO Autenticacoes (IDRECEBE, IDMOVIMENTO, "
                                              "AUTENTICA, VEZES) VALUES (?, ?, ?, 0)"),
                               {idRecebe, idMovimento, autentica});
}

bool clsAutenticacoes::confirmar(clsDataAccess& db, qint32 idRecebe, const QDateTime& quando,
                                 const QString& usuario) {
    Transaction tx(db);
    if (!tx.ok())
        return false;
    const auto known = estado(db, idRecebe);
    if (!known)
        return false;
    const QString when = quando.toString(kMomento);
    if (!known->registrado) {
        if (!AuditChain::execute(
                db, kTable, kKey, idRecebe, AuditChain::Op::Insert,
                QStringLiteral("INSERT INTO Autenticacoes (IDRECEBE, IDMOVIMENTO, AUTENTICA, "
                               "VEZES, PRIMEIRA, ULTIMA, USUARIO) SELECT IDRECEBE, IDMOVIMENTO, "
                               "AUTENTICA, 1, ?, ?, ? FROM Recebimentos WHERE IDRECEBE = ?"),
                {when, when, usuario, idRecebe}))
            return false;
        return tx.commit();
    }
    return AuditChain::execute(db, kTable, kKey, idRecebe, AuditChain::Op::Update,
                               QStringLiteral("UPDATE Autenticacoes SET VEZES = VEZES + 1, "
                                              "PRIMEIRA = COALESCE(PRIMEIRA, ?), ULTIMA = ?, "
                                              "USUARIO = ? WHERE IDRECEBE = ?"),
                               {when, when, usuario, idRecebe}) &&
           tx.commit();
}

std::optional<clsAutenticacoes::Estado> clsAutenticacoes::estado(clsDataAccess& db,
                                                                 qint32 idRecebe) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT VEZES, PRIMEIRA, ULTIMA, USUARIO FROM Autenticacoes WHERE "
                       "IDRECEBE = ?"),
        {idRecebe});
    if (!rs)
        return std::nullopt;
    Estado e;
    if (!rs->atRow())
        return e;
    e.registrado = true;
    e.vezes = int(rs->integer(QStringLiteral("VEZES")));
    e.primeira = moment(rs->text(QStringLiteral("PRIMEIRA")));
    e.ultima = moment(rs->text(QStringLiteral("ULTIMA")));
    e.usuario = rs->text(QStringLiteral("USUARIO"));
    return e;
}

std::optional<QList<clsAutenticacoes::Pendente>> clsAutenticacoes::pendentes(clsDataAccess& db,
                                                                             qint32 idMovimento) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT Recebimentos.IDRECEBE, Recebimentos.AUTENTICA, Recebimentos.TIPO, "
                       "CodBarra.DESCRICAO, Recebimentos.VALOR, Recebimentos.CODBARRA, "
                       "Recebimentos.MOMENTO FROM Autenticacoes INNER JOIN Recebimentos ON "
                       "Recebimentos.IDRECEBE = Autenticacoes.IDRECEBE LEFT JOIN CodBarra ON "
                       "CodBarra.IDCOD = Recebimentos.TIPO WHERE Autenticacoes.IDMOVIMENTO = ? "
                       "AND Autenticacoes.VEZES = 0 ORDER BY Recebimentos.AUTENTICA, "
                       "Recebimentos.IDRECEBE"),
        {idMovimento});
    if (!rs)
        return std::nullopt;
    QList<Pendente> out;
    for (Recordset r = *rs; !r.EOF_(); r.moveNext())
        out.append({qint32(r.integer(QStringLiteral("IDRECEBE"))),
                    qint32(r.integer(QStringLiteral("AUTENTICA"))),
                    qint16(r.integer(QStringLiteral("TIPO"))), r.text(QStringLiteral("DESCRICAO")),
                    r.money(QStringLiteral("VALOR")), r.text(QStringLiteral("CODBARRA")),
                    moment(r.text(QStringLiteral("MOMENTO")))});
    return out;
}

std::optional<qint64> clsAutenticacoes::repetidas(clsDataAccess& db, qint32 idMovimento) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT COUNT(*) AS N FROM Autenticacoes INNER JOIN Recebimentos ON "
                       "Recebimentos.IDRECEBE = Autenticacoes.IDRECEBE WHERE "
                       "Autenticacoes.IDMOVIMENTO = ? AND Autenticacoes.VEZES > 1"),
        {idMovimento});
    if (!rs || !rs->atRow())
        return std::nullopt;
    return rs->integer(QStringLiteral("N"));
}
