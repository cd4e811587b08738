#include "clsAutenticacaoAvulsa.h"

#include "AuditChain.h"
#include "Recordset.h"
#include "clsDataAccess.h"

namespace {
const QString kTable = QStringLiteral("AutenticacoesAvulsas");
const QString kKey = QStringLiteral("ID");
const QString kMoment = QStringLiteral("yyyy-MM-dd hh:mm:ss");
} // namespace

bool clsAutenticacaoAvulsa::SQLInsert() {
    qint64 id = 0;
    if (!AuditChain::insert(*m_db, kTable, kKey,
                            QStringLiteral("INSERT INTO AutenticacoesAvulsas (MOMENTO, DIA, VALOR, "
                                           "TEXTO, GUICHE, OPERADOR, ADMINISTRADOR, CONFIRMADA) "
                                           "VALUES (?, ?, ?, ?, ?, ?, ?, ?)"),
                            {MOMENTO.toString(kMoment), DIA, VALOR.units(), TEXTO, GUICHE, OPERADOR,
                             ADMINISTRADOR, CONFIRMADA ? 1 : 0},
                            id))
        return false;
    ID = id;
    return true;
}

bool clsAutenticacaoAvulsa::SQLConfirmar() {
    if (!AuditChain::execute(
            *m_db, kTable, kKey, ID, AuditChain::Op::Update,
            QStringLiteral("UPDATE AutenticacoesAvulsas SET CONFIRMADA = 1 WHERE ID = ?"), {ID}))
        return false;
    CONFIRMADA = true;
    return true;
}

std::optional<QList<clsAutenticacaoAvulsa>>
clsAutenticacaoAvulsa::listar(clsDataAccess& db, std::optional<QDate> dia) {
    const QString select =
        QStringLiteral("SELECT ID, MOMENTO, DIA, VALOR, TEXTO, GUICHE, OPERADOR, ADMINISTRADOR, "
                       "CONFIRMADA FROM AutenticacoesAvulsas ");
    auto rs =
        dia ? db.SQLSelect_ReadOnly(select + QStringLiteral("WHERE DIA = ? ORDER BY ID"), {*dia})
            : db.SQLSelect_ReadOnly(select + QStringLiteral("ORDER BY ID"));
    if (!rs)
        return std::nullopt;
    QList<clsAutenticacaoAvulsa> out;
    for (; rs->atRow(); rs->moveNext()) {
        clsAutenticacaoAvulsa a(db);
        a.ID = rs->integer(QStringLiteral("ID"));
        a.MOMENTO = QDateTime::fromString(rs->text(QStringLiteral("MOMENTO")).left(19), kMoment);
        a.DIA = rs->date(QStringLiteral("DIA"));
        a.VALOR = rs->money(QStringLiteral("VALOR"));
        a.TEXTO = rs->text(QStringLiteral("TEXTO"));
        a.GUICHE = rs->text(QStringLiteral("GUICHE"));
        a.OPERADOR = rs->text(QStringLiteral("OPERADOR"));
        a.ADMINISTRADOR = rs->text(QStringLiteral("ADMINISTRADOR"));
        a.CONFIRMADA = rs->integer(QStringLiteral("CONFIRMADA")) != 0;
        out.append(a);
    }
    return out;
}
