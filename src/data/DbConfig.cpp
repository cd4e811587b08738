#include "DbConfig.h"

#include "IniFile.h"
#include "TextFile.h"

#include <QDir>

DbConfig DbConfig::sqlite(const QString& path) {
    DbConfig c;
    c.backend = DbBackend::SQLite;
    c.sqlitePath = path;
    return c;
}

DbConfig DbConfig::fromIni(const QString& appFolder) {
    const QString ini = QDir(appFolder).filePath(QStringLiteral("Config.ini"));
    const QStringList lines = TextFile::readLines(ini, IniFile::kMaxFileBytes);
    auto get = [&](const char* key) {
        return IniFile::valueIn(QStringLiteral("Banco"), QLatin1String(key), lines);
    };
    const QString kind = get("tipo").trimmed().toLower();
    if (kind == QLatin1String("postgres") || kind == QLatin1String("postgresql")) {
        DbConfig c;
        c.backend = DbBackend::PostgreSQL;
        if (const QString host = get("host"); !host.isEmpty())
            c.host = host;
        bool ok = false;
        const int port = get("porta").toInt(&ok);
        if (ok && port > 0)
            c.port = port;
        const QString nome = get("nome");
        c.name = nome.isEmpty() ? QStringLiteral("tolvane") : nome;
        c.user = get("usuario");
        c.password = get("senha");
        return c;
    }
    return sqlite(QDir(appFolder).filePath(QStringLiteral("caixa.db")));
}

QString DbConfig::describe() const {
    if (backend == DbBackend::SQLite)
        return QDir::toNativeSeparators(sqlitePath);
    return QStringLiteral("postgres://%1@%2:%3/%4").arg(user, host).arg(port).arg(name);
}
