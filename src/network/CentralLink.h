#pragma once

#include "CentralConfig.h"
#include "CentralNetwork.h"
#include "clsConflitoRede.h"
#include "clsDataAccess.h"
#include "clsPublicacaoRede.h"
#include "clsRecebimentos1.h"
#include "clsSeloRede.h"

#include <QList>
#include <QString>
#include <optional>

class Clock;
class ErrorLog;

// One connection to the central database, used from one thread. It never waits longer than
// the configured time-out to learn that the central does not answer: a TCP connection is tried
// first, within the time-out, and only then the database itself. Every problem is written to
// Log.ini once (until the central answers again) and handed to the owner to tell once.
class CentralLink {
public:
    enum class Estado { Desligada, Ativa, Inacessivel, Recusada };

    CentralLink(ErrorLog& log, const Clock& clock);
    ~CentralLink();
    CentralLink(const CentralLink&) = delete;
    CentralLink& operator=(const CentralLink&) = delete;

    // `statementMs` cuts statements that take longer (0: no limit).
    bool conectar(const CentralConfig& config, int statementMs);
    void desconectar();
    const CentralConfig& config() const { return m_config; }

    Estado estado() const { return m_estado; }
    bool ativa() const { return m_estado == Estado::Ativa; }
    QString problema() const { return m_problema; }
    // The last try found no answer at all within the time-out (not a refusal): a host that is
    // down or cut off, which costs the whole time-out each time it is tried.
    bool semResposta() const { return m_semResposta; }
    // True once for each new problem (already logged): the owner tells the operator.
    bool problemaNovo();

    // Whether the central holds the code; nullopt when it did not answer (then not active).
    std::optional<bool> recebida(const QString& codbarra);
    bool ping();

    // Claims the codes of one payment, all or none, in one central transaction; Sozinho when the
    // central did not do it (then the problem is logged and told once, like a failed send).
    ReservaRede reservar(const QStringList& codigos, const QString& origem, const QString& guiche);
    bool liberar(const QString& reserva);
    // How long a claim holds a code when its payment neither arrives nor is let go (a counter
    // that stopped between its claim and its receipt): then anyone may claim it again.
    static constexpr int kValidadeReservaS = 300;

    // The seals the central holds for this counter: the last one received, or every day's.
    std::optional<std::optional<clsSeloRede>> ultimoSelo(const QString& guiche);
    std::optional<QList<clsSeloRede>> selos(const QString& guiche);

    struct Envio {
        int enviados = 0;                 // rows the central now has (or no longer has)
        QList<clsConflitoRede> conflitos; // codes refused, new this time
        bool falhou = false;              // nothing was marked; everything stays pending
        bool restam = false;              // more rows wait after this batch
    };
    // One batch of the outbox of `local`, oldest first: each code is published or withdrawn in
    // one central transaction, then the rows are marked in one local transaction. A row whose
    // code the central already holds from this very receipt (a batch sent before the local mark
    // failed) counts as sent; from anyone else, it is a conflict.
    Envio enviar(clsDataAccess& local, int limite = kLote);
    static constexpr int kLote = 100;

    clsDataAccess& db() { return m_db; }

    static const QString kLabel; // the Log.ini label of the link's problems
    static QString textoConflito(const clsConflitoRede& c);

private:
    bool sondar(QString* why);
    void falha(Estado e, const QString& texto);
    void limpar();
    bool enviarCentral(clsDataAccess& local, const QList<clsPublicacaoRede>& rows,
                       const QString& origem, QList<QString>& resultados,
                       QList<clsRecebimentos1>& titulares);
    void naoGravou(const QString& err);

    ErrorLog& m_log;
    const Clock& m_clock;
    clsDataAccess m_db;
    CentralConfig m_config;
    Estado m_estado = Estado::Desligada;
    QString m_problema;
    QString m_registrado; // the problem last written to Log.ini
    bool m_novo = false;
    bool m_semResposta = false;
};
