#pragma once

#include "DbConfig.h"

#include <QString>

// The central database of several counters, from the [Rede] section of Config.ini:
//   [Rede]
//   host=10.0.0.5  porta=5432  nome=tolvane_central  usuario=tolvane  senha=...
//   tempo_limite=1000   (milliseconds the counter waits for the central, at most)
// Without senha, libpq looks in PGPASSFILE or ~/.pgpass. No host: no central.
struct CentralConfig {
    QString host;
    int porta = 5432;
    QString nome = QStringLiteral("tolvane_central");
    QString usuario;
    QString senha;
    int tempoMs = kTempoPadrao;

    static constexpr int kTempoPadrao = 1000;
    static constexpr int kTempoMinimo = 100;
    static constexpr int kTempoMaximo = 30000;

    static CentralConfig fromIni(const QString& iniPath);
    bool configurada() const { return !host.isEmpty(); }
    // The connection: a short connect time-out, keep-alives that notice a dead peer, and
    // statements cut at `statementMs` (0: no limit, for imports).
    DbConfig db(int statementMs) const;
    QString describe() const;
    bool operator==(const CentralConfig&) const = default;
};
