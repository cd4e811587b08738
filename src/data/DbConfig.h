#pragma once

#include <QString>

enum class DbBackend { SQLite, PostgreSQL };

// Where the data lives: SQLite file caixa.db in the application folder by default, or a
// PostgreSQL server chosen in Config.ini:
//   [Banco]
//   tipo=postgres
//   host=127.0.0.1  porta=5432  nome=tolvane  usuario=tolvane  senha=...
struct DbConfig {
    DbBackend backend = DbBackend::SQLite;
    QString sqlitePath;
    QString host = QStringLiteral("127.0.0.1");
    int port = 5432;
    QString name;
    QString user;
    QString password;
    int connectTimeout = 10;    // seconds; libpq waits 2 at least
    int statementTimeoutMs = 0; // 0: statements may take as long as they need
    QString extraOptions;       // more libpq options, "key=value;key=value"

    static DbConfig fromIni(const QString& appFolder);
    static DbConfig sqlite(const QString& path);
    QString describe() const;
};
