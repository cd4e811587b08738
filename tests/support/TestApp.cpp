#include "TestApp.h"

#include "CentralAccess.h"
#include "IniFile.h"
#include "PasswordHash.h"
#include "PgServer.h"
#include "Schema.h"
#include "Startup.h"
#include "clsUsuarios.h"

#include <QFile>

void failOnLockedBox(DialogPort& dialogs) {
    dialogs.onLockedBox = [](const QString& kind, const QString& title, const QString& text) {
        const QByteArray what =
            QStringLiteral("a %1 was asked while a transaction is active: %2 / %3")
                .arg(kind, title, text)
                .toUtf8();
        QTest::qFail(what.constData(), __FILE__, __LINE__);
    };
}

TestApp::TestApp(Backend backend, const QDateTime& now, DialogPort* shown) : m_clock(now) {
    CentralAccess::registrar(); // as the program's start does
    DialogPort& port = shown ? *shown : m_dialogs;
    m_ctx = std::make_unique<AppContext>(m_dir.path(), port, m_clock);
    failOnLockedBox(port);
    if (backend == Backend::PostgreSQL) {
        PgServer& pg = PgServer::instance();
        if (!pg.ok()) {
            qWarning("PostgreSQL test server: %s", qPrintable(pg.error()));
            return;
        }
        const DbConfig c = pg.freshDatabase();
        setOption(QStringLiteral("Banco"), QStringLiteral("tipo"), QStringLiteral("postgres"));
        setOption(QStringLiteral("Banco"), QStringLiteral("host"), c.host);
        setOption(QStringLiteral("Banco"), QStringLiteral("porta"), QString::number(c.port));
        setOption(QStringLiteral("Banco"), QStringLiteral("nome"), c.name);
        setOption(QStringLiteral("Banco"), QStringLiteral("usuario"), c.user);
    } else {
        setOption(QStringLiteral("Banco"), QStringLiteral("tipo"), QStringLiteral("sqlite"));
    }
    QString detail;
    m_ok = Startup::Abre_conexao(*m_ctx, true, &detail);
    if (!m_ok)
        qWarning("test database: %s", qPrintable(detail));
    m_ctx->reloadSettings();
}

void TestApp::setOption(const QString& section, const QString& key, const QString& value) {
    IniFile::write(section, key, value, path(QStringLiteral("Config.ini")));
    if (m_ctx)
        m_ctx->reloadSettings();
}

int TestApp::addUser(const QString& nome, const QString& senha, const QString& tipo, int ativo) {
    clsUsuarios u(db());
    u.NOME = nome;
    u.SENHA = PasswordHash::hash(senha, 10); // few rounds: the tests check the rule, not the cost
    u.TIPO = tipo;
    u.ATIVO = static_cast<qint16>(ativo);
    return u.inserirNovo() ? u.ID : -1;
}

int TestApp::count(const QString& table, const QString& where) {
    const auto rs =
        db().SQLSelect_ReadOnly(QStringLiteral("SELECT COUNT(*) AS N FROM ") + table +
                                (where.isEmpty() ? QString() : QStringLiteral(" WHERE ") + where));
    return rs && rs->atRow() ? static_cast<int>(rs->integer(QStringLiteral("N"))) : -1;
}

QString TestApp::log() const {
    QFile f(path(QStringLiteral("Log.ini")));
    return f.open(QIODevice::ReadOnly) ? QString::fromLatin1(f.readAll()) : QString();
}

void addBackendRows() {
    QTest::addColumn<QString>("backend");
    QTest::newRow("sqlite") << QStringLiteral("sqlite");
    QTest::newRow("postgres") << QStringLiteral("postgres");
}
