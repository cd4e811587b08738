#include "clsConflitoRede.h"

#include "AuditChain.h"
#include "Transaction.h"
#include "clsDataAccess.h"
#include "clsPublicacaoRede.h"

bool clsConflitoRede::SQLInsert(bool* novo) {
    if (novo)
        *novo = false;
    Transaction tx(*m_db);
    if (!tx.ok())
        return false;
    const auto there = m_db->SQLSelect_ReadOnly(
        QStringLiteral("SELECT ID FROM ConflitoRede WHERE IDPUBLICACAO = ?"), {IDPUBLICACAO});
    if (!there)
        return false;
    if (there->atRow()) {
        ID = there->integer(QStringLiteral("ID"));
        return tx.commit();
    }
    qint64 id = 0;
    if (!m_db->SQLInsertIdentity(
            QStringLiteral("INSERT INTO ConflitoRede (IDPUBLICACAO, CODBARRA, IDRECEBE, "
                           "AUTENTICA, IDMOVIMENTO, VALOR, MOMENTO, GUICHE_CENTRAL, "
                           "MOMENTO_CENTRAL, DETECTADO) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
            {IDPUBLICACAO, CODBARRA, IDRECEBE, AUTENTICA, IDMOVIMENTO, VALOR.units(),
             clsPublicacaoRede::momentText(MOMENTO), GUICHE_CENTRAL, MOMENTO_CENTRAL,
             clsPublicacaoRede::momentText(DETECTADO)},
            id) ||
        !AuditChain::track(*m_db, QStringLiteral("ConflitoRede"), QStringLiteral("ID"), id,
                           AuditChain::Op::Insert) ||
        !tx.commit())
        return false;
    ID = id;
    if (novo)
        *novo = true;
    return true;
}

std::optional<QList<clsConflitoRede>> clsConflitoRede::listar(clsDataAccess& db) {
    auto rs = db.SQLSelect_ReadOnly(QStringLiteral(
        "SELECT c.ID, c.IDPUBLICACAO, c.CODBARRA, c.IDRECEBE, c.AUTENTICA, c.IDMOVIMENTO, "
        "c.VALOR, c.MOMENTO, c.GUICHE_CENTRAL, c.MOMENTO_CENTRAL, c.DETECTADO, (SELECT COUNT(*) "
        "FROM Recebimentos r WHERE r.IDRECEBE = c.IDRECEBE AND r.CODBARRA = c.CODBARRA) AS "
        "AINDA FROM ConflitoRede c ORDER BY c.ID DESC"));
    if (!rs)
        return std::nullopt;
    QList<clsConflitoRede> out;
    for (; rs->atRow(); rs->moveNext()) {
        clsConflitoRede c(db);
        c.ID = rs->integer(QStringLiteral("ID"));
        c.IDPUBLICACAO = rs->integer(QStringLiteral("IDPUBLICACAO"));
        c.CODBARRA = rs->text(QStringLiteral("CODBARRA"));
        c.IDRECEBE = rs->integer(QStringLiteral("IDRECEBE"));
        c.AUTENTICA = qint32(rs->integer(QStringLiteral("AUTENTICA")));
        c.IDMOVIMENTO = qint32(rs->integer(QStringLiteral("IDMOVIMENTO")));
        c.VALOR = rs->money(QStringLiteral("VALOR"));
        c.MOMENTO = clsPublicacaoRede::momentFrom(rs->text(QStringLiteral("MOMENTO")));
        c.GUICHE_CENTRAL = rs->text(QStringLiteral("GUICHE_CENTRAL"));
        c.MOMENTO_CENTRAL = rs->text(QStringLiteral("MOMENTO_CENTRAL"));
        c.DETECTADO = clsPublicacaoRede::momentFrom(rs->text(QStringLiteral("DETECTADO")));
        c.estornado = rs->integer(QStringLiteral("AINDA")) == 0;
        out.append(c);
    }
    return out;
}
