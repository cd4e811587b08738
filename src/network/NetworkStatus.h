#pragma once

#include <QDateTime>
#include <QString>

class AppContext;

// Where the counter stands with the central: whether it answers and what the outbox holds. The
// counter screen's network label and `rede status` both follow it.
class NetworkStatus {
public:
    struct Situacao {
        bool configurada = false;
        bool ativa = false;
        qint64 pendentes = 0;
        QDateTime maisAntigo; // of the codes waiting
        QDateTime ultimoEnvio;
        bool lida = true; // the outbox could be read
    };
    // Codes older than this in the outbox mean the central is not getting them.
    static constexpr int kAtrasoSegundos = 60;

    // Asks the central (within its time-out) and reads the outbox.
    static Situacao consultar(AppContext& ctx);
    static bool atrasada(const Situacao& s, const QDateTime& agora);
    // lblStatusRede: shown while the central does not answer or the outbox is late.
    static bool mostrarRotulo(const Situacao& s, const QDateTime& agora);
};
