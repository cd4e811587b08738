#pragma once

#include <QString>
#include <QStringList>
#include <optional>

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
    // The outbox has new rows: send them now (or as soon as the central answers).
    virtual void publicar() = 0;
    // What the operator has not been told yet (a refused connection, a conflict), each once.
    virtual QStringList novidades() = 0;
};
