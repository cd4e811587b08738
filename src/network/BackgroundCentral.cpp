#include "BackgroundCentral.h"

#include "AppContext.h"
#include "CentralLink.h"
#include "DirectCentral.h"
#include "ErrorLog.h"
#include "SilentDialogPort.h"
#include "SystemTexts.h"

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
        m_novidades << SystemTexts::text(SystemText::CentralSozinho);
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

// What the thread keeps between wakes; it lives and dies on the thread.
struct BackgroundCentral::Worker {
    explicit Worker(BackgroundCentral& owner)
        : log(port, owner.m_clock, owner.m_folder), local(log), link(log, owner.m_clock),
          config(owner.m_inicial) {
        leitura.start();
    }
    SilentDialogPort port;
    ErrorLog log;
    clsDataAccess local;
    CentralLink link;
    CentralConfig config;
    QElapsedTimer tentativa, verificacao, leitura;
};

void BackgroundCentral::run() {
    Worker w(*this);
    QMutexLocker lock(&m_mutex);
    while (!m_parar) {
        const QList<std::shared_ptr<Pedido>> pedidos = m_pedidos;
        m_pedidos.clear();
        const QStringList liberar = std::exchange(m_liberar, {});
        bool enviar = std::exchange(m_enviar, false);
        const bool suspeita = m_suspeita;
        lock.unlock();

        rereadConfig(w);
        if (connectIfDue(w))
            enviar = true;
        answer(w, pedidos);
        for (const QString& r : liberar)
            w.link.liberar(r);
        const bool confirmada = checkIfDue(w, suspeita);
        enviar = enviar || confirmada; // retried every few seconds until the central has it
        QStringList avisos;
        const bool restam = w.link.ativa() && enviar && send(w, avisos);
        if (w.link.problemaNovo())
            avisos.prepend(w.link.problema());

        lock.relock();
        m_configurada = w.config.configurada();
        m_tempoMs = w.config.tempoMs;
        m_ativa = w.link.ativa();
        if (confirmada || !m_ativa)
            m_suspeita = false;
        if (confirmada)
            m_avisadoSozinho = false;
        m_verificada = m_verificada || !w.config.configurada() || w.tentativa.isValid();
        m_novidades << avisos;
        m_enviar = m_enviar || restam;
        m_respondido.wakeAll();
        if (!m_parar && m_pedidos.isEmpty() && !m_enviar)
            m_acorda.wait(&m_mutex, QDeadlineTimer(kIntervaloMs));
    }
    lock.unlock();
    w.local.close();
    w.link.desconectar();
}

// Config.ini is read again now and then: the options screen may have changed [Rede].
void BackgroundCentral::rereadConfig(Worker& w) {
    if (!w.leitura.hasExpired(kIntervaloMs - kFolgaMs))
        return;
    w.leitura.start();
    const CentralConfig now = CentralConfig::fromIni(m_iniPath);
    if (now == w.config)
        return;
    w.config = now;
    w.link.desconectar();
    w.tentativa.invalidate();
}

bool BackgroundCentral::connectIfDue(Worker& w) {
    if (!w.config.configurada() || w.link.ativa() ||
        (w.tentativa.isValid() && !w.tentativa.hasExpired(kIntervaloMs - kFolgaMs)))
        return false;
    w.tentativa.start();
    const bool connected = w.link.conectar(w.config, kSentencaMs);
    w.verificacao.start();
    return connected;
}

void BackgroundCentral::answer(Worker& w, const QList<std::shared_ptr<Pedido>>& pedidos) {
    if (pedidos.isEmpty())
        return;
    QList<std::optional<bool>> respostas;
    QList<ReservaRede> reservas;
    for (const auto& p : pedidos) {
        const bool claim = !p->reservar.isEmpty();
        respostas << (claim ? std::nullopt : w.link.recebida(p->codigo));
        reservas << (claim ? w.link.reservar(p->reservar, p->origem, p->guiche) : ReservaRede{});
    }
    // Answered at once: the interface thread does not wait for the sending that follows.
    QMutexLocker lock(&m_mutex);
    for (int i = 0; i < pedidos.size(); ++i) {
        pedidos[i]->resposta = respostas[i];
        pedidos[i]->reserva = reservas[i];
        pedidos[i]->pronto = true;
    }
    m_respondido.wakeAll();
}

bool BackgroundCentral::checkIfDue(Worker& w, bool suspeita) {
    if (!w.link.ativa() || !(suspeita || !w.verificacao.isValid() ||
                             w.verificacao.hasExpired(kIntervaloMs - kFolgaMs)))
        return false;
    const bool confirmada = w.link.ping();
    w.verificacao.start();
    return confirmada;
}

bool BackgroundCentral::send(Worker& w, QStringList& avisos) {
    if (!w.local.isOpen() && w.local.open(m_local))
        w.local.setLockWait(500, 2); // the counter's own writes come first
    if (!w.local.isOpen())
        return false;
    const CentralLink::Envio e = w.link.enviar(w.local);
    for (const clsConflitoRede& c : e.conflitos)
        avisos << CentralLink::textoConflito(c);
    return e.restam && !e.falhou;
}
