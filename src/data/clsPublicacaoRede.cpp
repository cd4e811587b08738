#include "clsPublicacaoRede.h"

#include "AuditChain.h"
#include "clsDataAccess.h"

namespace {
// The outbox is chained: a row taken out or marked as sent behind the program's back would
// keep a receipt from the central unseen.
const QString kTabela = QStringLiteral("PublicacaoRede");
const QString kChave = QStringLiteral("ID");

const QString kPublicar = QStringLiteral("PUBLICAR");
const QString kRetirar = QStringLiteral("RETIRAR");
const QString kSelar = QStringLiteral("SELAR");

const QString& operationText(clsPublicacaoRede::Operacao op) {
    switch (op) {
    case clsPublicacaoRede::Operacao::Retirar:
        return kRetirar;
    case clsPublicacaoRede::Operacao::Selar:
        return kSelar;
    case clsPublicacaoRede::Operacao::Publicar:
        break;
    }
    return kPublicar;
}

clsPublicacaoRede::Operacao operationFrom(const QString& text) {
    if (text == kRetirar)
        return clsPublicacaoRede::Operacao::Retirar;
    return text == kSelar ? clsPublicacaoRede::Operacao::Selar
                          : clsPublicacaoRede::Operacao::Publicar;
}
} // namespace

QString clsPublicacaoRede::momentText(const QDateTime& t) {
    return t.toString(Qt::ISODateWithMs);
}

QDateTime clsPublicacaoRede::momentFrom(const QString& text) {
    return QDateTime::fromString(text, Qt::ISODateWithMs);
}

bool clsPublicacaoRede::SQLInsert() {
    qint64 id = 0;
    if (!AuditChain::insert(
            *m_db, kTabela, kChave,
            QStringLiteral("INSERT INTO PublicacaoRede (OPERACAO, CODBARRA, IDRECEBE, AUTENTICA, "
                           "IDMOVIMENTO, GUICHE, MOMENTO, PENDENTE) VALUES (?, ?, ?, ?, ?, ?, ?, "
                           "1)"),
            {operationText(OPERACAO), CODBARRA, IDRECEBE, AUTENTICA, IDMOVIMENTO, GUICHE,
             momentText(MOMENTO)},
            id))
        return false;
    ID = id;
    return true;
}

std::optional<QList<clsPublicacaoRede>> clsPublicacaoRede::pendentes(clsDataAccess& db,
                                                                     int limite) {
    auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT ID, OPERACAO, CODBARRA, IDRECEBE, AUTENTICA, IDMOVIMENTO, GUICHE, "
                       "MOMENTO FROM PublicacaoRede WHERE PENDENTE = 1 ORDER BY ID LIMIT ?"),
        {limite});
    if (!rs)
        return std::nullopt;
    QList<clsPublicacaoRede> out;
    for (; rs->atRow(); rs->moveNext()) {
        clsPublicacaoRede p(db);
        p.ID = rs->integer(QStringLiteral("ID"));
        p.OPERACAO = operationFrom(rs->text(QStringLiteral("OPERACAO")));
        p.CODBARRA = rs->text(QStringLiteral("CODBARRA"));
        p.IDRECEBE = rs->integer(QStringLiteral("IDRECEBE"));
        p.AUTENTICA = qint32(rs->integer(QStringLiteral("AUTENTICA")));
        p.IDMOVIMENTO = qint32(rs->integer(QStringLiteral("IDMOVIMENTO")));
        p.GUICHE = rs->text(QStringLiteral("GUICHE"));
        p.MOMENTO = momentFrom(rs->text(QStringLiteral("MOMENTO")));
        out.append(p);
    }
    return out;
}

bool clsPublicacaoRede::marcarEnviado(clsDataAccess& db, qint64 id, const QDateTime& quando,
                                      const QString& resultado) {
    return AuditChain::execute(db, kTabela, kChave, id, AuditChain::Op::Update,
                               QStringLiteral("UPDATE PublicacaoRede SET PENDENTE = 0, ENVIADO = "
                                              "?, RESULTADO = ? WHERE ID = ? AND PENDENTE = 1"),
                               {momentText(quando), resultado, id});
}

std::optional<clsPublicacaoRede::Resumo> clsPublicacaoRede::resumo(clsDataAccess& db) {
    const auto waiting = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT COUNT(*) AS N, MIN(MOMENTO) AS MAIS_ANTIGO FROM PublicacaoRede "
                       "WHERE PENDENTE = 1"));
    // Rows are sent in the order they were written: the last one sent has the highest ID.
    const auto sent = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT ENVIADO AS ULTIMO FROM PublicacaoRede WHERE PENDENTE = 0 ORDER BY "
                       "ID DESC LIMIT 1"));
    if (!clsDataAccess::CheckValidRecordset(waiting) || !sent)
        return std::nullopt;
    Resumo r;
    r.pendentes = waiting->integer(QStringLiteral("N"));
    r.maisAntigo = momentFrom(waiting->text(QStringLiteral("MAIS_ANTIGO")));
    if (sent->atRow())
        r.ultimoEnvio = momentFrom(sent->text(QStringLiteral("ULTIMO")));
    return r;
}

std::optional<QString> clsPublicacaoRede::origem(clsDataAccess& db) {
    const auto rs =
        db.SQLSelect_ReadOnly(QStringLiteral("SELECT ORIGEM FROM OrigemRede WHERE ID = 1"));
    if (!clsDataAccess::CheckValidRecordset(rs))
        return std::nullopt;
    return rs->text(QStringLiteral("ORIGEM"));
}

std::optional<clsPublicacaoRede::Pausa> clsPublicacaoRede::pausa(clsDataAccess& db) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT PAUSA_ATE, PAUSA_MOTIVO FROM OrigemRede WHERE ID = 1"));
    if (!clsDataAccess::CheckValidRecordset(rs))
        return std::nullopt;
    Pausa p;
    p.ate =
        QDateTime::fromString(rs->text(QStringLiteral("PAUSA_ATE")), Qt::ISODateWithMs); // "Z": UTC
    p.motivo = rs->text(QStringLiteral("PAUSA_MOTIVO"));
    return p;
}

bool clsPublicacaoRede::gravarPausa(clsDataAccess& db, const Pausa& p) {
    const QVariant none(QMetaType::fromType<QString>());
    return db.SQLExecute(
        QStringLiteral("UPDATE OrigemRede SET PAUSA_ATE = ?, PAUSA_MOTIVO = ? WHERE ID = 1"),
        {p.ate.isValid() ? QVariant(p.ate.toUTC().toString(Qt::ISODateWithMs)) : none,
         p.ate.isValid() ? QVariant(QString(p.motivo).remove(QLatin1Char('\''))) : none});
}
