#pragma once

#include "DbConfig.h"

#include <QString>
#include <memory>

// A throwaway PostgreSQL server for the tests: initdb and pg_ctl in a temporary folder, on
// 127.0.0.1 and a free port, stopped when the test program ends. As root the server runs as
// the postgres user, since initdb refuses root.
class PgServer {
public:
    static PgServer& instance(); // started on first use
    ~PgServer();

    bool ok() const { return m_ok; }
    QString error() const { return m_error; }
    // A new, empty database on the server.
    DbConfig freshDatabase();
    // The server goes away (connections are cut) and comes back on the same port.
    bool pause();
    bool resume();

private:
    PgServer();
    bool start();
    bool startServer();
    bool runAsServerUser(const QString& program, const QStringList& args,
                         QString* output = nullptr);

    struct Impl;
    std::unique_ptr<Impl> d;
    bool m_ok = false;
    QString m_error;
    int m_port = 0;
    int m_serial = 0;
};
