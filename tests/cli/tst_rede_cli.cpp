// Two counters and a central driven through the commands, as an installer or a checker does:
// a guide received at one counter is refused at the other, the central away and back, the
// status, the conflicts and an import cut by kill -9 and run again.
#include "CentralCliFolder.h"
#include "ChainRewrite.h"
#include "PgServer.h"
#include "TestCodes.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTest>
#include <memory>

namespace {

QString code(int n) {
    return TestCodes::guide(QStringLiteral("0425"), 2000 + n, QStringLiteral("20261130"),
                            QStringLiteral("%1").arg(n, 17, 10, QLatin1Char('0')));
}

// A counter of the network: its own demo folder, pointed at the central, its day open.
class Folder : public CentralCliFolder {
public:
    Folder(const QString& guiche, const DbConfig& central) : CentralCliFolder(guiche, central) {
        asAdmin(words("caixa abrir --data 23/11/2026"));
    }
    CliRun receive(const QStringList& codes) const {
        return asAdmin(words("caixa receber --data 23/11/2026 --json") + codes);
    }
    CliRun read(const QString& c) const {
        return run(words("ler") << c << words("--data 23/11/2026 --json"));
    }
    // `rede WHAT --json`.
    CliRun rede(const char* what, const QStringList& more = {}) const {
        return asAdmin(words("rede") + words(what) + more << QStringLiteral("--json"));
    }
};

qint64 centralCount(const DbConfig& c, const QString& table = QStringLiteral("RECEBIMENTOS1")) {
    const QString name = QStringLiteral("cli-central-") + c.name;
    qint64 n = -1;
    {
        QSqlDatabase d = QSqlDatabase::contains(name)
                             ? QSqlDatabase::database(name)
                             : QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), name);
        d.setHostName(c.host);
        d.setPort(c.port);
        d.setDatabaseName(c.name);
        d.setUserName(c.user);
        QSqlQuery q(d);
        if ((d.isOpen() || d.open()) && q.exec(QStringLiteral("SELECT COUNT(*) FROM ") + table) &&
            q.next())
            n = q.value(0).toLongLong();
    }
    return n;
}

} // namespace

class tst_rede_cli : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() {
        QVERIFY2(PgServer::instance().ok(), qPrintable(PgServer::instance().error()));
    }

    void twoCountersAndACentral() {
        const DbConfig central = PgServer::instance().freshDatabase();
        Folder a(QStringLiteral("A"), central), b(QStringLiteral("B"), central);
        QCOMPARE(a.receive({code(1)}).code, 0);
        QCOMPARE(centralCount(central), 1);
        CliRun r = b.read(code(1));
        QCOMPARE(r.code, 1);
        QCOMPARE(r.json().value(u"resultado").toString(), QStringLiteral("recebida"));
        QCOMPARE(r.json().value(u"rede").toString(), QStringLiteral("ativa"));
        QVERIFY(r.err.contains(QStringLiteral("Conta já Recebida!!!")));
        QCOMPARE(b.receive({code(1)}).code, 1);

        // The central away: A still receives, says so, and keeps the codes.
        const int port = central.port;
        QCOMPARE(
            a.options({QStringLiteral("Rede/porta=%1").arg(CentralCliFolder::closedPort())}).code,
            0);
        r = a.receive({code(2), code(3)});
        QCOMPARE(r.code, 0);
        QVERIFY(r.err.contains(QStringLiteral("não responde")));
        QCOMPARE(a.read(code(4)).json().value(u"rede").toString(), QStringLiteral("inativa"));
        QJsonObject s = a.rede("status").json();
        QCOMPARE(s.value(u"ativa").toBool(), false);
        QCOMPARE(s.value(u"pendentes").toInt(), 2);
        QCOMPARE(a.rede("publicar").code, 1);
        // Back: they arrive once, however often it is asked.
        QCOMPARE(a.options({QStringLiteral("Rede/porta=%1").arg(port)}).code, 0);
        QCOMPARE(a.rede("publicar").json().value(u"enviados").toInt(), 2);
        QCOMPARE(a.rede("publicar").json().value(u"enviados").toInt(), 0);
        QCOMPARE(centralCount(central), 3);
        s = a.rede("status").json();
        QCOMPARE(s.value(u"ativa").toBool(), true);
        QCOMPARE(s.value(u"pendentes").toInt(), 0);
        QVERIFY(!s.value(u"ultimo_envio").toString().isEmpty());

        // B received code 5 while cut off; A got it to the central first.
        QCOMPARE(
            b.options({QStringLiteral("Rede/porta=%1").arg(CentralCliFolder::closedPort())}).code,
            0);
        QCOMPARE(b.receive({code(5)}).code, 0);
        QCOMPARE(a.receive({code(5)}).code, 0);
        QCOMPARE(b.options({QStringLiteral("Rede/porta=%1").arg(port)}).code, 0);
        r = b.rede("publicar");
        QCOMPARE(r.json().value(u"conflitos").toInt(), 1);
        QVERIFY(r.err.contains(QStringLiteral("Conflito na rede")));
        const QJsonObject c = b.rede("conflitos").json();
        QCOMPARE(c.value(u"total").toInt(), 1);
        const QJsonObject first = c.value(u"conflitos").toArray().first().toObject();
        QCOMPARE(first.value(u"codbarra").toString(), code(5));
        QCOMPARE(first.value(u"guiche_central").toString(), QStringLiteral("A"));
        // Both moments in the counter's own format, whatever the central stores.
        const QRegularExpression moment(QStringLiteral("^\\d\\d/11/2026 \\d\\d:\\d\\d:\\d\\d$"));
        QVERIFY(moment.match(first.value(u"recebido").toString()).hasMatch());
        QVERIFY(moment.match(first.value(u"momento_central").toString()).hasMatch());
        QCOMPARE(a.rede("conflitos").json().value(u"total").toInt(), 0);
    }

    void theClosingSealReachesTheCentralAndTheAuditComparesWithIt() {
        const DbConfig central = PgServer::instance().freshDatabase();
        Folder a(QStringLiteral("A"), central);
        QCOMPARE(a.receive({code(1)}).code, 0);
        QVERIFY(a.rede("status").json().value(u"ultimo_selo").isNull());
        QCOMPARE(a.asAdmin(words("caixa encerrar --data 23/11/2026 --sem-cupom")).code, 0);
        const QJsonObject selo = a.rede("status").json().value(u"ultimo_selo").toObject();
        QCOMPARE(selo.value(u"dia").toString(), QStringLiteral("23/11/2026"));
        const QString hash = selo.value(u"hash").toString();
        QCOMPARE(hash.size(), 64);
        CliRun r = a.asAdmin(words("auditar --json"));
        QCOMPARE(r.code, 0);
        QCOMPARE(r.json().value(u"selos_central").toObject().value(u"conferem").toInt(), 1);

        // The central's seal is not this database's day any more: the audit fails and says why.
        const QString name = QStringLiteral("cli-central-") + central.name;
        centralCount(central); // opens the checker's connection
        QSqlQuery q(QSqlDatabase::database(name));
        QVERIFY(q.exec(QStringLiteral("UPDATE SelosRede SET HASH = md5(HASH)")));
        r = a.asAdmin(words("auditar"));
        QCOMPARE(r.code, 1);
        QVERIFY2(r.out.contains(QStringLiteral("Selo diferente da central: 23/11/2026")),
                 qPrintable(r.out));
    }

    // The day rewritten whole in the counter's file, its closing hash too: the file agrees with
    // itself, the central's seal does not. Every closing (the reopened day's too) reaches it.
    void aCoherentRewriteIsCaughtByTheCentral() {
        const DbConfig central = PgServer::instance().freshDatabase();
        Folder a(QStringLiteral("A"), central);
        const QString big =
            TestCodes::guide(QStringLiteral("0425"), 25000, QStringLiteral("20261130"),
                             QStringLiteral("00000000000000777"));
        QCOMPARE(a.receive({code(1)}).code, 0);
        QCOMPARE(a.asAdmin(words("caixa encerrar --data 23/11/2026 --sem-cupom")).code, 0);
        QCOMPARE(a.asAdmin(words("caixa reabrir --data 23/11/2026 --sem-cupom")).code, 0);
        QCOMPARE(a.receive({big}).code, 0);
        const CliRun closed = a.asAdmin(words("caixa encerrar --data 23/11/2026 --json"));
        QCOMPARE(closed.code, 0);
        const QString seal = closed.json().value(u"selo").toString();
        QCOMPARE(a.rede("status").json().value(u"ultimo_selo").toObject().value(u"hash").toString(),
                 seal);
        CliRun r = a.asAdmin(words("auditar --json"));
        QCOMPARE(r.code, 0);
        QCOMPARE(r.json().value(u"selos_central").toObject().value(u"conferem").toInt(), 1);
        {
            QSqlDatabase db = ChainRewrite::openSqlite(a.path(QStringLiteral("caixa.db")));
            QString why;
            QVERIFY2(ChainRewrite::lowerReceipt(db, 2, 1000000, true, true, &why), qPrintable(why));
            db.close();
        }
        r = a.asAdmin(words("auditar"));
        QCOMPARE(r.code, 1);
        QVERIFY2(r.out.contains(QStringLiteral("Selo diferente da central: 23/11/2026")),
                 qPrintable(r.out));
        QVERIFY(!r.out.contains(QStringLiteral("Primeira diferença"))); // the file agrees
    }

    void anImportCutByKillResumes() {
        const DbConfig central = PgServer::instance().freshDatabase();
        Folder a(QStringLiteral("A"), central);
        const int n = 60000;
        const QString file = QDir(a.path()).filePath(QStringLiteral("anos.txt"));
        {
            QFile f(file);
            QVERIFY(f.open(QIODevice::WriteOnly));
            for (int i = 0; i < n; ++i)
                f.write(QStringLiteral("8%1\n").arg(i, 43, 10, QLatin1Char('0')).toLatin1());
            f.write("não é um código\n");
        }
        const std::unique_ptr<QProcess> p(
            startTolvane(a.path(), words("rede importar --lote 500") << file,
                         CliFolder::passwords(a.password(), a.password())));
        QVERIFY(p->waitForStarted());
        QElapsedTimer t;
        t.start();
        while (centralCount(central) < 2000 && t.elapsed() < 60000 &&
               p->state() == QProcess::Running)
            QTest::qWait(20);
        p->kill(); // SIGKILL: no chance to tidy up
        p->waitForFinished();
        const qint64 before = centralCount(central);
        QVERIFY2(before >= 2000, p->readAllStandardError().constData());
        const CliRun r = a.rede("importar --lote 5000", {file});
        QCOMPARE(r.code, 0);
        const QJsonObject o = r.json();
        QCOMPARE(o.value(u"retomada").toBool(), before < n);
        QCOMPARE(o.value(u"lidos").toInt(), n + 1);
        QCOMPARE(o.value(u"importados").toInt(), n);
        QCOMPARE(o.value(u"ja_existentes").toInt(), 0);
        QCOMPARE(o.value(u"invalidos").toInt(), 1);
        QCOMPARE(centralCount(central), n);
    }
};

QTEST_GUILESS_MAIN(tst_rede_cli)
#include "tst_rede_cli.moc"
