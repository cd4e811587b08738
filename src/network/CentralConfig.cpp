#include "CentralConfig.h"

#include "IniFile.h"
#include "TextFile.h"

CentralConfig CentralConfig::fromIni(const QString& iniPath) {
    const QStringList lines = TextFile::readLines(iniPath, IniFile::kMaxFileBytes);
    auto raw = [&](const char* key) {
        return IniFile::valueIn(QStringLiteral("Rede"), QLatin1String(key), lines);
    };
    auto get = [&](const char* key) { return raw(key).trimmed(); };
    CentralConfig c;
    c.host = get("host");
    bool ok = false;
    const int porta = get("porta").toInt(&ok);
    if (ok && porta > 0 && porta < 65536)
        c.porta = porta;
    if (const QString nome = get("nome"); !nome.isEmpty())
        c.nome = nome;
    c.usuario = get("usuario");
    c.senha = raw("senha");
    const int tempo = get("tempo_limite").toInt(&ok);
    if (ok)
        c.tempoMs = qBound(kTempoMinimo, tempo, kTempoMaximo);
    return c;
}

DbConfig CentralConfig::db(int statementMs) const {
    DbConfig d;
    d.backend = DbBackend::PostgreSQL;
    d.host = host;
    d.port = porta;
    d.name = nome;
    d.user = usuario;
    d.password = senha;
    d.connectTimeout = qMax(2, (tempoMs + 999) / 1000);
    d.statementTimeoutMs = statementMs;
    // A peer that stops answering in the middle of a statement is given up after a few
    // time-outs instead of the system's minutes.
    d.extraOptions = QStringLiteral("keepalives=1;keepalives_idle=5;keepalives_interval=2;"
                                    "keepalives_count=2;tcp_user_timeout=%1;"
                                    "application_name=tolvane")
                         .arg(qMax(2000, tempoMs * 3));
    return d;
}

QString CentralConfig::describe() const {
    return QStringLiteral("postgres://%1@%2:%3/%4").arg(usuario, host).arg(porta).arg(nome);
}
