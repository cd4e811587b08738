#include "clsEstornos.h"

#include "AuditChain.h"
#include "clsDataAccess.h"
#include "clsRecebimentos.h"

namespace {
const QString kTable = QStringLiteral("Estornos");
const QString kKey = QStringLiteral("ID");
const QString kColumns = QStringLiteral(
    "SELECT ID, OPERACAO, MOMENTO, USUARIO, MOTIVO, IDRECEBE, AUTENTICA, CODBARRA, IDMOVIMENTO, "
    "TIPO, INTEGRA, EXPORT, VALOR, VENCIMENTO, PARCELA, OBS, NOVO_AUTENTICA, NOVO_CODBARRA, "
    "NOVO_TIPO, NOVO_VALOR, REVERTIDO_EM, REVERTIDO_POR FROM Estornos ");

// Moments are kept as ISO text on both engines, so they sort and compare as text.
QString momentText(const QDateTime& when) {
    return when.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
}

QDateTime momentFrom(const QString& text) {
    return text.isEmpty()
               ? QDateTime()
               : QDateTime::fromString(text.left(19), QStringLiteral("yyyy-MM-dd hh:mm:ss"));
}

QString operacaoText(clsEstornos::Operacao o) {
    return o == clsEstornos::Operacao::Estorno ? QStringLiteral("ESTORNO")
                                               : QStringLiteral("ALTERACAO");
}

QVariant nullableInt(const std::optional<qint16>& v) {
    return v ? QVariant(int(*v)) : QVariant(QMetaType::fromType<int>());
}
} // namespace

void clsEstornos::copiarRecebimento(const clsRecebimentos& r) {
    IDRECEBE = r.IDRECEBE;
    AUTENTICA = r.AUTENTICA;
    CODBARRA = r.CODBARRA;
    IDMOVIMENTO = r.IDMOVIMENTO;
    TIPO = r.TIPO;
    INTEGRA = r.INTEGRA;
    EXPORT = r.EXPORT;
    VALOR = r.VALOR;
    VENCIMENTO = r.VENCIMENTO;
    PARCELA = r.PARCELA;
    OBS = r.OBS;
}

void clsEstornos::restaurarEm(clsRecebimentos& r) const {
    r.IDRECEBE = IDRECEBE;
    r.AUTENTICA = AUTENTICA;
    r.CODBARRA = CODBARRA;
    r.IDMOVIMENTO = IDMOVIMENTO;
    r.TIPO = TIPO;
    r.INTEGRA = INTEGRA;
    r.EXPORT = EXPORT;
    r.VALOR = VALOR;
    r.VENCIMENTO = VENCIMENTO;
    r.PARCELA = PARCELA;
    r.OBS = OBS;
}

std::optional<QList<clsEstornos>> clsEstornos::select(clsDataAccess& db, const QString& where,
                                                      const QVariantList& params) {
    const auto rs = db.SQLSelect_ReadOnly(kColumns + where, params);
    if (!rs)
        return std::nullopt;
    QList<clsEstornos> out;
    for (Recordset r = *rs; !r.EOF_(); r.moveNext()) {
        clsEstornos e(db);
        e.ID = static_cast<qint32>(r.integer(QStringLiteral("ID")));
        e.OPERACAO = r.text(QStringLiteral("OPERACAO")).toUpper() == QLatin1String("ESTORNO")
                         ? Operacao::Estorno
                         : Operacao::Alteracao;
        e.MOMENTO = momentFrom(r.text(QStringLiteral("MOMENTO")));
        e.USUARIO = r.text(QStringLiteral("USUARIO"));
        e.MOTIVO = r.text(QStringLiteral("MOTIVO"));
        e.IDRECEBE = static_cast<qint32>(r.integer(QStringLiteral("IDRECEBE")));
        e.AUTENTICA = static_cast<qint32>(r.integer(QStringLiteral("AUTENTICA")));
        e.CODBARRA = r.text(QStringLiteral("CODBARRA"));
        e.IDMOVIMENTO = static_cast<qint16>(r.integer(QStringLiteral("IDMOVIMENTO")));
        e.TIPO = static_cast<qint16>(r.integer(QStringLiteral("TIPO")));
        e.INTEGRA = static_cast<qint16>(r.integer(QStringLiteral("INTEGRA")));
        e.EXPORT = static_cast<qint16>(r.integer(QStringLiteral("EXPORT")));
        e.VALOR = r.money(QStringLiteral("VALOR"));
        e.VENCIMENTO = r.text(QStringLiteral("VENCIMENTO"));
        e.PARCELA = r.text(QStringLiteral("PARCELA"));
        e.OBS = r.text(QStringLiteral("OBS"));
        if (!r.isNull(QStringLiteral("NOVO_AUTENTICA")))
            e.NOVO_AUTENTICA = static_cast<qint32>(r.integer(QStringLiteral("NOVO_AUTENTICA")));
        e.NOVO_CODBARRA = r.text(QStringLiteral("NOVO_CODBARRA"));
        if (!r.isNull(QStringLiteral("NOVO_TIPO")))
            e.NOVO_TIPO = static_cast<qint16>(r.integer(QStringLiteral("NOVO_TIPO")));
        if (!r.isNull(QStringLiteral("NOVO_VALOR")))
            e.NOVO_VALOR = r.money(QStringLiteral("NOVO_VALOR"));
        e.REVERTIDO_EM = momentFrom(r.text(QStringLiteral("REVERTIDO_EM")));
        e.REVERTIDO_POR = r.text(QStringLiteral("REVERTIDO_POR"));
        out.append(e);
    }
    return out;
}

bool clsEstornos::SQLSelect(qint32 id) {
    const auto rows = select(*m_db, QStringLiteral("WHERE ID = ?"), {id});
    if (!rows || rows->isEmpty())
        return false;
    *this = rows->first();
    return true;
}

bool clsEstornos::SQLInsert() {
    qint64 id = 0;
    if (!AuditChain::insert(
            *m_db, kTable, kKey,
            QStringLiteral("INSERT INTO Estornos (OPERACAO, MOMENTO, USUARIO, MOTIVO, IDRECEBE, "
                           "AUTENTICA, CODBARRA, IDMOVIMENTO, TIPO, INTEGRA, EXPORT, VALOR, "
                           "VENCIMENTO, PARCELA, OBS, NOVO_AUTENTICA, NOVO_CODBARRA, NOVO_TIPO, "
                           "NOVO_VALOR) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
                           "?, ?, ?)"),
            {operacaoText(OPERACAO), momentText(MOMENTO), USUARIO, MOTIVO, IDRECEBE, int(AUTENTICA),
             CODBARRA, int(IDMOVIMENTO), int(TIPO), int(INTEGRA), int(EXPORT), VALOR.units(),
             VENCIMENTO, PARCELA, OBS, nullableInt(NOVO_AUTENTICA), NOVO_CODBARRA,
             nullableInt(NOVO_TIPO),
             NOVO_VALOR ? QVariant(NOVO_VALOR->units()) : QVariant(QMetaType::fromType<qint64>())},
            id))
        return false;
    ID = static_cast<qint32>(id);
    return true;
}

bool clsEstornos::SQLMarcarRevertido(const QDateTime& quando, const QString& usuario) {
    if (!AuditChain::execute(*m_db, kTable, kKey, ID, AuditChain::Op::Update,
                             QStringLiteral("UPDATE Estornos SET REVERTIDO_EM = ?, "
                                            "REVERTIDO_POR = ? WHERE ID = ? AND REVERTIDO_EM "
                                            "IS NULL"),
                             {momentText(quando), usuario, ID}))
        return false;
    REVERTIDO_EM = quando;
    REVERTIDO_POR = usuario;
    return true;
}

std::optional<QList<clsEstornos>> clsEstornos::listarTodos(clsDataAccess& db) {
    return select(db, QStringLiteral("ORDER BY ID"), {});
}

std::optional<QList<clsEstornos>> clsEstornos::listarDoMovimento(clsDataAccess& db,
                                                                 qint32 idMovimento) {
    return select(db, QStringLiteral("WHERE IDMOVIMENTO = ? ORDER BY ID DESC"), {idMovimento});
}

std::optional<QList<clsEstornos>> clsEstornos::estornosAbertos(clsDataAccess& db,
                                                               qint32 idMovimento) {
    return select(db,
                  QStringLiteral("WHERE IDMOVIMENTO = ? AND OPERACAO = 'ESTORNO' AND "
                                 "REVERTIDO_EM IS NULL ORDER BY ID DESC"),
                  {idMovimento});
}

std::optional<clsEstornos> clsEstornos::ultimoEstorno(clsDataAccess& db, qint32 idRecebe) {
    const auto rows = select(db,
                             QStringLiteral("WHERE IDRECEBE = ? AND OPERACAO = 'ESTORNO' AND "
                                            "REVERTIDO_EM IS NULL ORDER BY ID DESC"),
                             {idRecebe});
    if (!rows || rows->isEmpty())
        return std::nullopt;
    return rows->first();
}
