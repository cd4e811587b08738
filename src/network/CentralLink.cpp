#include "CentralLink.h"

#include "CentralSchema.h"
#include "Clock.h"
#include "ErrorLog.h"
#include "SystemTexts.h"
#include "Transaction.h"
#include "clsMovimento.h"
#include "clsRecebimentos.h"

#include <QTcpSocket>
#include <QUuid>

const QString CentralLink::kLabel = QStringLiteral("Rede: central de recebimentos");

namespace {
const QString kPublicado = QStringLiteral("publicado");
const QString kConflito = QStringLiteral("conflito");
const QString kRetirado = QStringLiteral("retirado");
const QString kSelado = QStringLiteral("selado");
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
    return SystemTexts::text(SystemText::ConflitoRede)
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
              SystemTexts::text(SystemText::CentralNaoResponde).arg(config.describe(), why));
        return false;
    }
    if (!m_db.open(config.db(statementMs))) {
        falha(Estado::Recusada, SystemTexts::text(SystemText::CentralRecusou)
                                    .arg(config.describe(), m_db.lastError().trimmed()));
        return false;
    }
    if (!CentralSchema::preparar(m_db, &why)) {
        m_db.close();
        falha(Estado::Recusada,
              SystemTexts::text(SystemText::CentralProblema).arg(config.describe(), why));
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
    falha(Estado::Inacessivel, SystemTexts::text(SystemText::CentralDeixouDeResponder)
                                   .arg(m_config.describe(), err.trimmed()));
    return false;
}

std::optional<bool> CentralLink::recebida(const QString& codbarra) {
    if (!ativa())
        return std::nullopt;
    const auto held = clsRecebimentos1::retidoNaCentral(m_db, codbarra);
    if (held)
        return held;
    ping();
    return std::nullopt;
}

void CentralLink::naoGravou(const QString& err) {
    if (ping())
        falha(Estado::Ativa,
              SystemTexts::text(SystemText::CentralNaoGravou).arg(m_config.describe(), err));
}

ReservaRede CentralLink::reservar(const QStringList& lista, const QString& origem,
                                  const QString& guiche) {
    ReservaRede r;
    if (!ativa())
        return r;
    QStringList codigos = lista;
    codigos.removeDuplicates();
    const QString reserva = QUuid::createUuid().toString(QUuid::WithoutBraces);
    const QString momento = clsPublicacaoRede::momentText(m_clock.now());
    Transaction tx(m_db);
    const auto taken = tx.ok() ? clsRecebimentos1::reservar(m_db, codigos, reserva, origem, guiche,
                                                            momento, kValidadeReservaS)
                               : std::nullopt;
    if (taken && *taken == codigos.size() && tx.commit()) {
        r.estado = ReservaRede::Estado::Reservada;
        r.reserva = reserva;
        return r;
    }
    if (taken) {
        clsRecebimentos1 holder(m_db);
        if (holder.SQLSelectRetido(codigos, reserva).value_or(false)) {
            r.estado = ReservaRede::Estado::JaRecebida;
            r.codigo = holder.CODBARRA;
            r.guiche = holder.GUICHE;
            return r; // the transaction ends without the claims taken
        }
    }
    const QString err = m_db.lastError().trimmed();
    tx.rollback();
    naoGravou(err);
    return r;
}

bool CentralLink::liberar(const QString& reserva) {
    if (ativa() && clsRecebimentos1::liberar(m_db, reserva))
        return true;
    // Not told: the payment's own failure is. The claim ends by itself.
    m_log.append(kLabel, {0,
                          QStringLiteral("A reserva %1 não pôde ser desfeita na central; ela "
                                         "expira em %2 minutos.")
                              .arg(reserva)
                              .arg(kValidadeReservaS / 60),
                          QStringLiteral("Rede")});
    return false;
}

std::optional<std::optional<clsSeloRede>> CentralLink::ultimoSelo(const QString& guiche) {
    if (!ativa())
        return std::nullopt;
    clsSeloRede s(m_db);
    const auto found = s.SQLSelectUltimo(guiche);
    if (!found)
        return std::nullopt;
    return *found ? std::optional<clsSeloRede>(s) : std::nullopt;
}

std::optional<QList<clsSeloRede>> CentralLink::selos(const QString& guiche) {
    if (!ativa())
        return std::nullopt;
    return clsSeloRede::porDia(m_db, guiche);
}

bool CentralLink::enviarCentral(clsDataAccess& local, const QList<clsPublicacaoRede>& rows,
                                const QString& origem, QList<QString>& resultados,
                                QList<clsRecebimentos1>& titulares) {
    Transaction tx(m_db);
    if (!tx.ok())
        return false;
    for (const clsPublicacaoRede& p : rows) {
        clsRecebimentos1 row(m_db);
        if (p.OPERACAO == clsPublicacaoRede::Operacao::Selar) {
            clsMovimento mov(local);
            clsSeloRede selo(m_db);
            selo.GUICHE = p.GUICHE;
            selo.HASH = p.CODBARRA;
            selo.ORIGEM = origem;
            selo.IDMOVIMENTO = p.IDMOVIMENTO;
            selo.ENCERRADO = clsPublicacaoRede::momentText(p.MOMENTO);
            if (!mov.SQLSelect(p.IDMOVIMENTO))
                return false;
            selo.DIA = mov.MDATA;
            if (!selo.SQLInsert())
                return false;
            resultados << kSelado;
            titulares << row;
            continue;
        }
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

namespace {

// The local record of a code the central holds for another counter's receipt.
clsConflitoRede conflito(clsDataAccess& local, const clsPublicacaoRede& p,
                         const clsRecebimentos1& titular, const QDateTime& agora) {
    clsConflitoRede c(local);
    c.IDPUBLICACAO = p.ID;
    c.CODBARRA = p.CODBARRA;
    c.IDRECEBE = p.IDRECEBE;
    c.AUTENTICA = p.AUTENTICA;
    c.IDMOVIMENTO = p.IDMOVIMENTO;
    c.MOMENTO = p.MOMENTO;
    c.GUICHE_CENTRAL = titular.GUICHE;
    c.MOMENTO_CENTRAL = titular.MOMENTO;
    c.DETECTADO = agora;
    clsRecebimentos r(local);
    if (r.SQLSelect(qint32(p.IDRECEBE)) && r.CODBARRA == p.CODBARRA)
        c.VALOR = r.VALOR;
    return c;
}

// Marks the batch sent, in one local transaction, recording each conflict; `novos` receives the
// conflicts recorded for the first time.
bool marcarLocal(clsDataAccess& local, const QList<clsPublicacaoRede>& batch,
                 const QList<QString>& resultados, const QList<clsRecebimentos1>& titulares,
                 const QDateTime& agora, QList<clsConflitoRede>& novos) {
    Transaction tx(local);
    bool ok = tx.ok();
    for (int i = 0; ok && i < batch.size(); ++i) {
        const clsPublicacaoRede& p = batch[i];
        if (resultados[i] == kConflito) {
            clsConflitoRede c = conflito(local, p, titulares[i], agora);
            bool novo = false;
            ok = c.SQLInsert(&novo);
            if (ok && novo)
                novos << c;
        }
        ok = ok && clsPublicacaoRede::marcarEnviado(local, p.ID, agora, resultados[i]);
    }
    return ok && tx.commit();
}

} // namespace

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
    if (!enviarCentral(local, batch, *origem, resultados, titulares)) {
        e.falhou = true;
        naoGravou(m_db.lastError().trimmed());
        return e;
    }
    QList<clsConflitoRede> novos;
    if (!marcarLocal(local, batch, resultados, titulares, m_clock.now(), novos)) {
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
