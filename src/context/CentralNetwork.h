#pragma once

#include <QString>
#include <QStringList>
#include <optional>

// What came of claiming a payment's codes at the central before recording it.
struct ReservaRede {
    enum class Estado {
        Reservada,  // every code is this counter's until its receipt arrives (or the claim ends)
        JaRecebida, // another counter holds `codigo`: nothing may be recorded
        Sozinho,    // the central did not answer in time: the counter records alone
    };
    Estado estado = Estado::Sozinho;
    QString reserva; // Reservada: what liberar() lets go
    QString codigo;  // JaRecebida: the code held, and by which counter ("" when imported)
    QString guiche;
};

// The central database that several counters share (RECEBIMENTOS1 of every counter), as the
// counter sees it. Nothing here waits on the network longer than the configured time-out: the
// counter keeps working when the central does not answer. Made by src/network.
class CentralNetwork {
public:
    virtual ~CentralNetwork() = default;

    // Config.ini has a [Rede] section naming the central.
    virtual bool configurada() = 0;
    // Rede_ativa: whether the central answered its last check.
    virtual bool ativa() = 0;
    // Conta_recebida_rede: whether the central holds the code; nullopt when it did not answer in
    // time (then it counts as not active until its next check).
    virtual std::optional<bool> recebida(const QString& codbarra) = 0;
    // Claims every code at once, within the time-out, for the counter `guiche` whose database
    // publishes as `origem`. A central that does not do claims lets the counter record alone.
    virtual ReservaRede reservar(const QStringList& /*codigos*/, const QString& /*origem*/,
                                 const QString& /*guiche*/) {
        return {};
    }
    // The payment of a claim was not recorded: its codes may be paid again. Never waits.
    virtual void liberar(const QString& /*reserva*/) {}
    // The outbox has new rows: send them now (or as soon as the central answers).
    virtual void publicar() = 0;
    // What the operator has not been told yet (a refused connection, a conflict), each once.
    virtual QStringList novidades() = 0;
};
