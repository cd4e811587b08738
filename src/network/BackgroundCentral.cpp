#include "BackgroundCentral.h"

#include "AppContext.h"
#include "CentralLink.h"
#include "DirectCentral.h"
#include "ErrorLog.h"
#include "SilentDialogPort.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QThread>

namespace {
// The thread wakes every kIntervaloMs; what is due within this much is done on that wake.
constexpr int kFolgaMs = 250;
} // namespace

BackgroundCentral::BackgroundCentral(AppContext& ctx)
    : m_folder(ctx.folder), m_iniPath(ctx.iniPath()), m_local(ctx.db.config()), m_clock(ctx.clock),
      m_inicial(CentralConfig::fromIni(m_iniPath)) {
    m_configurada = m_inicial.configurada();
    m_tempoMs = m_inicial.tempoMs;
    m_thread = QThread::create([this] { run(); });
    m_thread->start();
}

BackgroundCentral::~BackgroundCentral() {
    {
        QMutexLocker lock(&m_mutex);
        m_parar = true;
        m_acorda.wakeAll();
    }
    m_thread->wait();
    delete m_thread;
}

bool BackgroundCentral::configurada() {
    QMutexLocker lock(&m_mutex);
    return m_configurada;
}

bool BackgroundCentral::ativa() {
    QMutexLocker lock(&m_mutex);
    return m_ativa && !m_suspeita;
}

bool BackgroundCentral::aguardar(QMutexLocker<QMutex>& lock, const std::shared_ptr<Pedido>& p) {
    Q_UNUSED(lock) // held: the waits below release it
    m_pedidos.append(p);
    m_acorda.wakeAll();
    QDeadlineTimer deadline(m_tempoMs);
    while (!p->pronto && !deadline.hasExpired())
        m_respondido.wait(&m_mutex, deadline);
    if (p->pronto)
        return true;
    m_pedidos.removeAll(p);
    m_suspeita = true;
    return false;
}

std::optional<bool> BackgroundCentral::recebida(const QString& codbarra) {
    QMutexLocker lock(&m_mutex);
    if (!m_ativa || m_suspeita)
        return std::nullopt;
    auto p = std::make_shared<Pedido>();
    p->codigo = codbarra;
    return aguardar(lock, p) ? p->resposta : std::nullopt;
}

ReservaRede BackgroundCentral::reservar(const QStringList& codigos, const QString& origem,
                                        const QString& guiche) {
    QMutexLocker lock(&m_mutex);
    if (!m_ativa || m_suspeita)
        return {}; // the thread has told why, when the central went away
    auto p = std::make_shared<Pedido>();
    p->reservar = codigos;
    p->origem = origem;
    p->guiche = guiche;
    if (aguardar(lock, p))
        return p->reserva;
    // A claim still under way at the central is this counter's: its receipt, when it arrives,
    // takes it over; otherwise it expires.
    if (!std::exchange(m_avisadoSozinho, true))
        m_novidades << DirectCentral::kSozinho;
    return {};
}

void BackgroundCentral::liberar(const QString& reserva) {
    QMutexLocker lock(&m_mutex);
    m_liberar << reserva;
    m_acorda.wakeAll();
}

void BackgroundCentral::publicar() {
    QMutexLocker lock(&m_mutex);
    m_enviar = true;
    m_acorda.wakeAll();
}

QStringList BackgroundCentral::novidades() {
    QMutexLocker lock(&m_mutex);
    QStringList out;
    out.swap(m_novidades);
    return out;
}

bool BackgroundCentral::aguardarPrimeiraVerificacao(int ms) {
    QMutexLocker lock(&m_mutex);
    QDeadlineTimer deadline(ms);
    while (!m_verificada && !deadline.hasExpired())
        m_respondido.wait(&m_mutex, deadline);
    return m_verificada;
}

void BackgroundCentral::run() {
    SilentDialogPort port;
    ErrorLog log(port, m_clock, m_folder);
    clsDataAccess local(log);
    CentralLink link(log, m_clock);
    CentralConfig config = m_inicial;
    QElapsedTimer tentativa, verificacao, leitura;
    leitura.start();
    QMutexLocker lock(&m_mutex);
    while (!m_parar) {
        const QList<std::shared_ptr<Pedido>> pedidos = m_pedidos;
        m_pedidos.clear();
        const QStringList liberar = std::exchange(m_liberar, {});
        bool enviar = std::exchange(m_enviar, false);
        const bool suspeita = m_suspeita;
        lock.unlock();

        // Config.ini is read again now and then: the options screen may have changed [Rede].
        if (leitura.hasExpired(kIntervaloMs - kFolgaMs)) {
            leitura.start();
            const CentralConfig now = CentralConfig::fromIni(m_iniPath);
            if (!(now == config)) {
                config = now;
                link.desconectar();
                tentativa.invalidate();
            }
        }
        if (config.configurada() && !link.ativa() &&
            (!tentativa.isValid() || tentativa.hasExpired(kIntervaloMs - kFolgaMs))) {
            tentativa.start();
            if (link.conectar(config, kSentencaMs))
                enviar = true;
            verificacao.start();
        }
        QList<std::optional<bool>> respostas;
        QList<ReservaRede> reservas;
        for (const auto& p : pedidos) {
            const bool claim = !p->reservar.isEmpty();
            respostas << (claim ? std::nullopt : link.recebida(p->codigo));
            reservas << (claim ? link.reservar(p->reservar, p->origem, p->guiche) : ReservaRede{});
        }
        if (!pedidos.isEmpty()) {
            // Answered at once: the interface thread does not wait for the sending below.
            QMutexLocker answer(&m_mutex);
            for (int i = 0; i < pedidos.size(); ++i) {
                pedidos[i]->resposta = respostas[i];
                pedidos[i]->reserva = reservas[i];
                pedidos[i]->pronto = true;
            }
            m_respondido.wakeAll();
        }
        for (const QString& r : liberar)
            link.liberar(r);
        bool confirmada = false;
        if (link.ativa() && (suspeita || !verificacao.isValid() ||
                             verificacao.hasExpired(kIntervaloMs - kFolgaMs))) {
            confirmada = link.ping();
            verificacao.start();
            enviar = enviar || confirmada; // retried every few seconds until the central has it
        }
        QStringList avisos;
        bool restam = false;
        if (link.ativa() && enviar) {
            if (!local.isOpen() && local.open(m_local))
                local.setLockWait(500, 2); // the counter's own writes come first
            if (local.isOpen()) {
                const CentralLink::Envio e = link.enviar(local);
                for (const clsConflitoRede& c : e.conflitos)
                    avisos << CentralLink::textoConflito(c);
                restam = e.restam && !e.falhou;
            }
        }
        if (link.problemaNovo())
            avisos.prepend(link.problema());

        lock.relock();
        m_configurada = config.configurada();
        m_tempoMs = config.tempoMs;
        m_ativa = link.ativa();
        if (confirmada || !m_ativa)
            m_suspeita = false;
        if (confirmada)
            m_avisadoSozinho = false;
        m_verificada = m_verificada || !config.configurada() || tentativa.isValid();
        m_novidades << avisos;
        m_enviar = m_enviar || restam;
        m_respondido.wakeAll();
        if (!m_parar && m_pedidos.isEmpty() && !m_enviar)
            m_acorda.wait(&m_mutex, QDeadlineTimer(kIntervaloMs));
    }
    lock.unlock();
    local.close();
    link.desconectar();
}
