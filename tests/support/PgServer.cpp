#include "PgServer.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTcpServer>
#include <QTemporaryDir>
#include <unistd.h>

struct PgServer::Impl {
    QTemporaryDir dir{QDir::tempPath() + QStringLiteral("/tolvane-pg-XXXXXX")};
    QString bin;
};

PgServer& PgServer::instance() {
    static PgServer server;
    return server;
}

PgServer::PgServer() : d(std::make_unique<Impl>()) {
    m_ok = start();
}

PgServer::~PgServer() {
    if (m_ok)
        runAsServerUser(d->bin + QStringLiteral("/pg_ctl"),
                        {QStringLiteral("-D"), d->dir.filePath(QStringLiteral("data")),
                         QStringLiteral("-m"), QStringLiteral("immediate"),
                         QStringLiteral("stop")});
}

static QString findBin() {
    QDir root(QStringLiteral("/usr/lib/postgresql"));
    QStringList versions = root.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    std::sort(versions.begin(), versions.end(),
              [](const QString& a, const QString& b) { return a.toInt() > b.toInt(); });
    for (const QString& v : versions) {
        const QString bin = root.filePath(v + QStringLiteral("/bin"));
        if (QFile::exists(bin + QStringLiteral("/initdb")))
            return bin;
    }
    return {};
}

bool PgServer::runAsServerUser(const QString& program, const QStringList& args, QString* output) {
    QProcess p;
    p.setProcessChannelMode(QProcess::MergedChannels);
    p.setWorkingDirectory(d->dir.path());
    if (geteuid() == 0)
        p.start(QStringLiteral("runuser"),
                QStringList{QStringLiteral("-u"), QStringLiteral("postgres"), QStringLiteral("--"),
                            program} +
                    args);
    else
        p.start(program, args);
    const bool finished = p.waitForFinished(120000);
    const QString out = QString::fromLocal8Bit(p.readAll());
    if (output)
        *output = out;
    if (!finished || p.exitStatus() != QProcess::NormalExit || p.exitCode() != 0) {
        m_error = program + QStringLiteral(": ") + out;
        return false;
    }
    return true;
}

bool PgServer::start() {
    d->bin = findBin();
    if (d->bin.isEmpty() || !d->dir.isValid()) {
        m_error = QStringLiteral("PostgreSQL server binaries not found under /usr/lib/postgresql");
        return false;
    }
    if (geteuid() == 0) {
        QProcess::execute(QStringLiteral("chown"),
                          {QStringLiteral("postgres:postgres"), d->dir.path()});
        QFile::setPermissions(d->dir.path(),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    {
        QTcpServer probe;
        probe.listen(QHostAddress::LocalHost, 0);
        m_port = probe.serverPort();
    }
    const QString data = d->dir.filePath(QStringLiteral("data"));
    if (!runAsServerUser(d->bin + QStringLiteral("/initdb"),
                         {QStringLiteral("-D"), data, QStringLiteral("-U"),
                          QStringLiteral("tolvane"), QStringLiteral("--auth=trust"),
                          QStringLiteral("-E"), QStringLiteral("UTF8"),
                          QStringLiteral("--locale=C"), QStringLiteral("--no-sync")}))
        return false;
    return startServer();
}

bool PgServer::startServer() {
    const QString opts = QStringLiteral("-p %1 -k %2 -c listen_addresses=127.0.0.1 -c fsync=off "
                                        "-c synchronous_commit=off -c full_page_writes=off")
                             .arg(m_port)
                             .arg(d->dir.path());
    return runAsServerUser(d->bin + QStringLiteral("/pg_ctl"),
                           {QStringLiteral("-D"), d->dir.filePath(QStringLiteral("data")),
                            QStringLiteral("-o"), opts, QStringLiteral("-l"),
                            d->dir.filePath(QStringLiteral("server.log")), QStringLiteral("-w"),
                            QStringLiteral("start")});
}

bool PgServer::pause() {
    // The admin connection would not survive the stop.
    if (QSqlDatabase::contains(QStringLiteral("pg-admin")))
        QSqlDatabase::removeDatabase(QStringLiteral("pg-admin"));
    return m_ok && runAsServerUser(d->bin + QStringLiteral("/pg_ctl"),
                                   {QStringLiteral("-D"), d->dir.filePath(QStringLiteral("data")),
                                    QStringLiteral("-m"), QStringLiteral("fast"),
                                    QStringLiteral("-w"), QStringLiteral("stop")});
}

bool PgServer::resume() {
    return m_ok && startServer();
}

DbConfig PgServer::freshDatabase() {
    DbConfig c;
    c.backend = DbBackend::PostgreSQL;
    c.host = QStringLiteral("127.0.0.1");
    c.port = m_port;
    c.user = QStringLiteral("tolvane");
    c.name = QStringLiteral("t%1_%2").arg(QCoreApplication::applicationPid()).arg(++m_serial);
    const QString conn = QStringLiteral("pg-admin");
    {
        QSqlDatabase admin = QSqlDatabase::contains(conn)
                                 ? QSqlDatabase::database(conn)
                                 : QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), conn);
        admin.setHostName(c.host);
        admin.setPort(c.port);
        admin.setUserName(c.user);
        admin.setDatabaseName(QStringLiteral("postgres"));
        if (!admin.isOpen() && !admin.open())
            m_error = admin.lastError().text();
        QSqlQuery q(admin);
        if (!q.exec(QStringLiteral("CREATE DATABASE %1").arg(c.name)))
            m_error = q.lastError().text();
    }
    return c;
}
