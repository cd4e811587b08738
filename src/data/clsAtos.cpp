#include "clsAtos.h"

#include "AuditChain.h"
#include "Recordset.h"
#include "clsDataAccess.h"

bool clsAtos::gravar(clsDataAccess& db, const Ato& a) {
    qint64 id = 0;
    return AuditChain::insert(
        db, QStringLiteral("Atos"), QStringLiteral("ID"),
        QStringLiteral("INSERT INTO Atos (MOMENTO, ATO, TABELA, CHAVE, OPERADOR, AUTORIZADO_POR) "
                       "VALUES (?, ?, ?, ?, ?, ?)"),
        {a.momento.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")), a.ato, a.tabela, a.chave,
         a.operador, a.autorizadoPor},
        id);
}

std::optional<QList<clsAtos::Ato>> clsAtos::doRegistro(clsDataAccess& db, const QString& tabela,
                                                       qint64 chave) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT MOMENTO, ATO, TABELA, CHAVE, OPERADOR, AUTORIZADO_POR FROM Atos "
                       "WHERE TABELA = ? AND CHAVE = ? ORDER BY ID"),
        {tabela, chave});
    if (!rs)
        return std::nullopt;
    QList<Ato> out;
    for (Recordset r = *rs; !r.EOF_(); r.moveNext())
        out.append({QDateTime::fromString(r.text(QStringLiteral("MOMENTO")),
                                          QStringLiteral("yyyy-MM-dd hh:mm:ss")),
                    r.text(QStringLiteral("ATO")), r.text(QStringLiteral("TABELA")),
                    r.integer(QStringLiteral("CHAVE")), r.text(QStringLiteral("OPERADOR")),
                    r.text(QStringLiteral("AUTORIZADO_POR"))});
    return out;
}
