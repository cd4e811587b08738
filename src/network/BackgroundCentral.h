#pragma once

#include "CentralConfig.h"
#include "CentralNetwork.h"
#include "DbConfig.h"

#include <QMutex>
#include <QStringList>
#include <QWaitCondition>
#include <memory>

class AppContext;
class Clock;
class QThread;

// The central for the counter screen: the connection lives on a thread of its own, which keeps
// checking the central, sends the outbox at once when told, at start-up and every few seconds
// until the central has it, and answers the reading's lookups. The interface thread never
// waits on the network: ativa() answers from the last check, and recebida() waits the time-out
// at most (a central that does not answer in time counts as down until it answers again).
// What the operator must be told (a refused connection, a conflict) waits in novidades().
class BackgroundCentral final : public CentralNetwork {
public:
    explicit BackgroundCentral(AppContext& ctx);
    ~BackgroundCentral() override;
    BackgroundCentral(const BackgroundCentral&) = delete;
    BackgroundCentral& operator=(const BackgroundCentral&) = delete;

    bool configurada() override;
    bool ativa() override;
    std::optional<bool> recebida(const QString& codbarra) override;
    ReservaRede reservar(const QStringList& codigos, const QString& origem,
                         const QString& guiche) override;
    void liberar(const QString& reserva) override;
    void publicar() override;
    QStringList novidades() override;

    // Waits (tests, benchmarks) until the thread has finished its first check of the central.
    bool aguardarPrimeiraVerificacao(int ms);

    static constexpr int kIntervaloMs = 5000; // between checks, and between tries when down
    static constexpr int kSentencaMs = 10000; // the link's statements are cut after this

private:
    struct Pedido {
        QString codigo;
        std::optional<bool> resposta;
        // A claim instead of a lookup: the codes, and what the central said.
        QStringList reservar;
        QString origem, guiche;
        ReservaRede reserva;
        bool pronto = false;
    };
    struct Worker;
    void run();
    // The parts of one wake of the thread, called with the lock released.
    void rereadConfig(Worker& w);
    bool connectIfDue(Worker& w); // true when it connected
    void answer(Worker& w, const QList<std::shared_ptr<Pedido>>& pedidos);
    bool checkIfDue(Worker& w, bool suspeita); // true when the central answered the check
    bool send(Worker& w, QStringList& avisos); // true when some of the outbox remains
    // Waits the time-out at most for the thread to answer `p`; false when it did not.
    bool aguardar(QMutexLocker<QMutex>& lock, const std::shared_ptr<Pedido>& p);

    const QString m_folder;
    const QString m_iniPath;
    const DbConfig m_local;
    const Clock& m_clock;
    const CentralConfig m_inicial; // read once here; the thread starts from it

    QMutex m_mutex;
    QWaitCondition m_acorda;     // the thread has something to do
    QWaitCondition m_respondido; // a lookup was answered, or a check done
    bool m_parar = false;
    bool m_enviar = true; // the outbox is sent at start-up
    bool m_configurada = false;
    bool m_ativa = false;
    bool m_suspeita = false; // a lookup ran out of time: down until a check says otherwise
    bool m_verificada = false;
    int m_tempoMs = 1000;
    bool m_avisadoSozinho = false; // told that a claim went unanswered, until the next check
    QList<std::shared_ptr<Pedido>> m_pedidos;
    QStringList m_liberar; // claims to let go
    QStringList m_novidades;
    QThread* m_thread = nullptr;
};
