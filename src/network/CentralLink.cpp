#include "CentralLink.h"

#include "CentralSchema.h"
#include "Clock.h"
#include "ErrorLog.h"
#include "Transaction.h"
#include "clsRecebimentos.h"

#include <QTcpSocket>

const QString CentralLink::kLabel = QStringLiteral("Rede: central de recebimentos");

namespace {
const QString kPublicado = QStringLiteral("publicado");
const QString kConflito = QStringLiteral("conflito");
const QString kRetirado = QStringLiteral("retirado");
const QString kMomento = QStringLiteral("dd/MM/yyyy hh:mm:ss");
} // namespace

CentralLink::CentralLink(ErrorLog& log, const Clock& clock)
    : m_log(log), m_clock(clock), m_db(log) {
    m_db.setQuiet(true);
}

CentralLink::~CentralLink() = default;

QString CentralLink::textoConflito(const clsConflitoRede& c) {
    const QDateTime there = QDateTime::fromString(c.MOMENTO_CENTRAL, Qt::ISODateWithMs);
    const QString quando =
        there.isValid() ? QStringLiteral(" em ") + there.toString(kMomento) : QString();
    const QString onde = c.GUICHE_CENTRAL.isEmpty()
                             ? QStringLiteral("num ano anterior (importado)")
                             : QStringLiteral("no guichê %1%2").arg(c.GUICHE_CENTRAL, quando);
    return QStringLiteral("Conflito na rede: o código %1 (autenticação %2, %3), recebido neste "
                          "guichê em %4, também foi recebido %5, e a central ficou com aquele. O "
                          "valor foi cobrado aqui: confira a guia com o supervisor (tolvane rede "
                          "conflitos).")
        .arg(c.CODBARRA)
        .arg(c.AUTENTICA, 4, 10, QLatin1Char('0'))
        .arg(c.VALOR.formatCurrency(), c.MOMENTO.toString(kMomento), onde);
}

bool CentralLink::problemaNovo() {
    const bool novo = m_novo;
    m_novo = false;
    return novo;
}

void CentralLink::falha(Estado e, const QString& texto) {
    m_estado = e;
    m_problema = texto;
    if (texto == m_registrado)
        return;
    m_registrado = texto;
    m_novo = true;
    m_log.append(kLabel, {0, texto, QStringLiteral("Rede")});
}

void CentralLink::limpar() {
    m_problema.clear();
    m_registrado.clear();
}

bool CentralLink::sondar(QString* why) {
    QTcpSocket probe;
    probe.connectToHost(m_config.host, quint16(m_config.porta));
    m_semResposta = false;
    if (probe.waitForConnected(m_config.tempoMs)) {
        probe.abort();
        return true;
    }
    m_semResposta = probe.error() == QAbstractSocket::SocketTimeoutError;
    *why = m_semResposta ? QStringLiteral("sem resposta em %1 ms").arg(m_config.tempoMs)
                         : probe.errorString();
    probe.abort();
    return false;
}

bool CentralLink::conectar(const CentralConfig& config, int statementMs) {
    desconectar();
    m_config = config;
    if (!config.configurada()) {
        m_estado = Estado::Desligada;
        return false;
    }
    QString why;
    if (!sondar(&why)) {
        falha(Estado::Inacessivel,
              QStringLiteral("A central da rede (%1) não responde: %2. O caixa continua "
                             "recebendo; os códigos ficam guardados e vão para a central quando "
                             "ela voltar.")
                  .arg(config.describe(), why));
        return false;
    }
    if (!m_db.open(config.db(statementMs))) {
        falha(Estado::Recusada,
              QStringLiteral("A central da rede (%1) recusou a conexão: %2. Confira host, porta, "
                             "nome, usuario e senha na seção [Rede] do Config.ini (ou o "
                             "~/.pgpass). O caixa continua recebendo; os códigos ficam guardados.")
                  .arg(config.describe(), m_db.lastError().trimmed()));
        return false;
    }
    if (!CentralSchema::preparar(m_db, &why)) {
        m_db.close();
        falha(Estado::Recusada,
              QStringLiteral("Central da rede (%1): %2").arg(config.describe(), why));
        return false;
    }
    // Short waits for the central's write lock: a busy central is retried later, not waited on.
    m_db.setLockWait(qMax(100, config.tempoMs), 1);
    m_estado = Estado::Ativa;
    limpar();
    return true;
}

void CentralLink::desconectar() {
    m_db.close();
    if (m_estado == Estado::Ativa)
        m_estado = Estado::Desligada;
}

bool CentralLink::ping() {
    if (!ativa())
        return false;
    if (CentralSchema::responde(m_db))
        return true;
    const QString err = m_db.lastError();
    m_db.close();
    falha(Estado::Inacessivel, QStringLiteral("A central da rede (%1) deixou de responder: %2. O "
                                              "caixa continua recebendo; os códigos ficam "
                                              "guardados.")
                                   .arg(m_config.describe(), err.trimmed()));
    return false;
}

std::optional<bool> CentralLink::recebida(const QString& codbarra) {
    if (!ativa())
        return std::nullopt;
    const auto n = clsRecebimentos1::contarCodigo(m_db, codbarra);
    if (n)
        return *n > 0;
    ping();
    return std::nullopt;
}

bool CentralLink::enviarCentral(const QList<clsPublicacaoRede>& rows, const QString& origem,
                                QList<QString>& resultados, QList<clsRecebimentos1>& titulares) {
    Transaction tx(m_db);
    if (!tx.ok())
        return false;
    for (const clsPublicacaoRede& p : rows) {
        clsRecebimentos1 row(m_db);
        row.CODBARRA = p.CODBARRA;
        row.ORIGEM = origem;
        row.IDRECEBE = p.IDRECEBE;
        if (p.OPERACAO == clsPublicacaoRede::Operacao::Retirar) {
            if (!row.SQLDelete())
                return false;
            resultados << kRetirado;
            titulares << row;
            continue;
        }
        row.GUICHE = p.GUICHE;
        row.MOMENTO = clsPublicacaoRede::momentText(p.MOMENTO);
        row.AUTENTICA = p.AUTENTICA;
        const auto inserted = row.SQLInsert();
        if (!inserted)
            return false;
        clsRecebimentos1 holder(m_db);
        if (!*inserted && !holder.SQLSelect(p.CODBARRA).value_or(false))
            return false;
        const bool mine = *inserted || (holder.ORIGEM == origem && holder.IDRECEBE == p.IDRECEBE &&
                                        holder.MOMENTO == row.MOMENTO);
        resultados << (mine ? kPublicado : kConflito);
        titulares << (*inserted ? row : holder);
    }
    return tx.commit();
}

CentralLink::Envio CentralLink::enviar(clsDataAccess& local, int limite) {
    Envio e;
    if (!ativa()) {
        e.falhou = true;
        return e;
    }
    const auto rows = clsPublicacaoRede::pendentes(local, limite + 1);
    const auto origem = clsPublicacaoRede::origem(local);
    if (!rows || !origem) {
        e.falhou = true;
        return e;
    }
    if (rows->isEmpty())
        return e;
    const QList<clsPublicacaoRede> batch = rows->mid(0, limite);
    e.restam = rows->size() > limite;
    QList<QString> resultados;
    QList<clsRecebimentos1> titulares;
    if (!enviarCentral(batch, *origem, resultados, titulares)) {
        e.falhou = true;
        const QString err = m_db.lastError().trimmed();
        if (ping())
            falha(Estado::Ativa, QStringLiteral("A central da rede (%1) não gravou os códigos: "
                                                "%2. Eles ficam guardados e serão enviados de "
                                                "novo.")
                                     .arg(m_config.describe(), err));
        return e;
    }
    const QDateTime agora = m_clock.now();
    Transaction tx(local);
    bool ok = tx.ok();
    QList<clsConflitoRede> novos;
    for (int i = 0; ok && i < batch.size(); ++i) {
        const clsPublicacaoRede& p = batch[i];
        if (resultados[i] == kConflito) {
            clsConflitoRede c(local);
            c.IDPUBLICACAO = p.ID;
            c.CODBARRA = p.CODBARRA;
            c.IDRECEBE = p.IDRECEBE;
            c.AUTENTICA = p.AUTENTICA;
            c.IDMOVIMENTO = p.IDMOVIMENTO;
            c.MOMENTO = p.MOMENTO;
            c.GUICHE_CENTRAL = titulares[i].GUICHE;
            c.MOMENTO_CENTRAL = titulares[i].MOMENTO;
            c.DETECTADO = agora;
            clsRecebimentos r(local);
            if (r.SQLSelect(qint32(p.IDRECEBE)) && r.CODBARRA == p.CODBARRA)
                c.VALOR = r.VALOR;
            bool novo = false;
            ok = c.SQLInsert(&novo);
            if (ok && novo)
                novos << c;
        }
        ok = ok && clsPublicacaoRede::marcarEnviado(local, p.ID, agora, resultados[i]);
    }
    if (!ok || !tx.commit()) {
        e.falhou = true; // the central has them: the next try finds them there and marks them
        return e;
    }
    e.enviados = int(batch.size());
    e.conflitos = novos;
    if (m_estado == Estado::Ativa && !m_problema.isEmpty())
        limpar(); // a failure of the central's writes is over
    for (const clsConflitoRede& c : novos)
        m_log.append(kLabel, {0, textoConflito(c), QStringLiteral("Rede")});
    return e;
}
