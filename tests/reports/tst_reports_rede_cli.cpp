// relatorio rede with two counters and a central: what each counter published, the documents'
// value and the last moment, this counter's own queue, and whose closing seal arrived.
#include "CentralCliFolder.h"
#include "PgServer.h"
#include "TestCodes.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTest>

namespace {

QString code(int n) {
    return TestCodes::guide(QStringLiteral("0425"), 2000 + n, QStringLiteral("20261130"),
                            QStringLiteral("%1").arg(n, 17, 10, QLatin1Char('0')));
}

// The central keeps the moment each code was received, by the counter's clock: the report's
// day is today's.
QString today() {
    return QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy"));
}

class Folder : public CentralCliFolder {
public:
    Folder(const QString& guiche, const DbConfig& central) : CentralCliFolder(guiche, central) {
        asAdmin(words("caixa abrir --data") << today());
    }
    CliRun receive(const QStringList& codes) const {
        return asAdmin(words("caixa receber --json --data") << today() << codes);
    }
    // guiche -> its line of `relatorio rede --json`.
    QMap<QString, QJsonObject> report() const {
        QMap<QString, QJsonObject> out;
        const CliRun r = run(words("relatorio rede --json --data") << today());
        for (const auto& v : r.json().value(u"guiches").toArray())
            out.insert(v.toObject().value(u"guiche").toString(), v.toObject());
        return out;
    }
};

// Runs one statement at the central, as another program would: the error, empty when none.
QString atCentral(const DbConfig& c, const QString& sql) {
    const QString name = QStringLiteral("reports-central-") + c.name;
    QString error;
    {
        QSqlDatabase d = QSqlDatabase::contains(name)
                             ? QSqlDatabase::database(name)
                             : QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), name);
        d.setHostName(c.host);
        d.setPort(c.port);
        d.setDatabaseName(c.name);
        d.setUserName(c.user);
        if (!d.isOpen() && !d.open())
            return d.lastError().text();
        QSqlQuery q(d);
        if (!q.exec(sql))
            error = q.lastError().text();
    }
    return error;
}

} // namespace

class tst_reports_rede_cli : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() {
        QVERIFY2(PgServer::instance().ok(), qPrintable(PgServer::instance().error()));
    }

    void everyCounterAsTheCentralSeesIt() {
        const DbConfig central = PgServer::instance().freshDatabase();
        Folder a(QStringLiteral("A"), central), b(QStringLiteral("B"), central);
        QCOMPARE(a.receive({code(1), code(2)}).code, 0);
        const int port = central.port;
        QCOMPARE(
            b.options({QStringLiteral("Rede/porta=%1").arg(CentralCliFolder::closedPort())}).code,
            0);
        QCOMPARE(b.receive({code(3)}).code, 0); // kept in B's queue
        QCOMPARE(b.options({QStringLiteral("Rede/porta=%1").arg(port)}).code, 0);

        QMap<QString, QJsonObject> seen = a.report();
        QCOMPARE(seen.keys(), QStringList{QStringLiteral("A")});
        QCOMPARE(seen[QStringLiteral("A")].value(u"recebimentos").toInt(), 2);
        QCOMPARE(seen[QStringLiteral("A")].value(u"valor_documentos").toString(),
                 QStringLiteral("40,03"));
        QVERIFY(!seen[QStringLiteral("A")].value(u"ultimo").toString().isEmpty());
        QCOMPARE(seen[QStringLiteral("A")].value(u"pendentes").toInt(), 0);
        QCOMPARE(seen[QStringLiteral("A")].value(u"selo").toString(), QStringLiteral("ausente"));

        seen = b.report();
        QCOMPARE(seen[QStringLiteral("B")].value(u"recebimentos").toInt(), 0);
        QCOMPARE(seen[QStringLiteral("B")].value(u"pendentes").toInt(), 1);
        QCOMPARE(seen[QStringLiteral("B")].value(u"este_guiche").toBool(), true);
        // Another counter's queue is not known here.
        QCOMPARE(seen[QStringLiteral("A")].value(u"pendentes"), QJsonValue(QJsonValue::Null));

        QCOMPARE(b.asAdmin(words("rede publicar")).code, 0);
        seen = b.report();
        QCOMPARE(seen[QStringLiteral("B")].value(u"recebimentos").toInt(), 1);
        QCOMPARE(seen[QStringLiteral("B")].value(u"pendentes").toInt(), 0);
    }

    void theSealsOfTheDayAndNoClaimCounted() {
        const DbConfig central = PgServer::instance().freshDatabase();
        Folder a(QStringLiteral("A"), central), b(QStringLiteral("B"), central);
        QCOMPARE(a.receive({code(1)}).code, 0);
        QCOMPARE(b.receive({code(2), code(3)}).code, 0);
        // Claims another program left at the central, one alive and one expired: not receipts.
        const QString moment =
            QDate::currentDate().toString(Qt::ISODate) + QStringLiteral("T10:00:00.000");
        const QString claim = QStringLiteral(
            "INSERT INTO RECEBIMENTOS1 (CODBARRA, GUICHE, MOMENTO, ORIGEM, RESERVA, RESERVA_ATE) "
            "VALUES ('%1', '%2', '%3', 'outro', 'r%2', now() + interval '%4 minutes')");
        QCOMPARE(atCentral(central,
                           claim.arg(code(4), QStringLiteral("B"), moment, QStringLiteral("10"))),
                 QString());
        QCOMPARE(atCentral(central,
                           claim.arg(code(5), QStringLiteral("C"), moment, QStringLiteral("-10"))),
                 QString());

        QMap<QString, QJsonObject> seen = a.report();
        QCOMPARE(seen.keys(), (QStringList{QStringLiteral("A"), QStringLiteral("B")}));
        QCOMPARE(seen[QStringLiteral("A")].value(u"selo").toString(), QStringLiteral("ausente"));
        QCOMPARE(seen[QStringLiteral("B")].value(u"selo").toString(), QStringLiteral("ausente"));
        QCOMPARE(seen[QStringLiteral("B")].value(u"recebimentos").toInt(), 2);

        QCOMPARE(a.asAdmin(words("caixa encerrar --sem-cupom --data") << today()).code, 0);
        QVERIFY(!a.run(words("rede status --json")).json().value(u"ultimo_selo").isNull());
        for (const Folder* f : {&a, &b}) {
            seen = f->report();
            QCOMPARE(seen.keys(), (QStringList{QStringLiteral("A"), QStringLiteral("B")}));
            QCOMPARE(seen[QStringLiteral("A")].value(u"selo").toString(),
                     QStringLiteral("recebido"));
            QCOMPARE(seen[QStringLiteral("A")].value(u"recebimentos").toInt(), 1);
            QCOMPARE(seen[QStringLiteral("B")].value(u"selo").toString(),
                     QStringLiteral("ausente"));
            QCOMPARE(seen[QStringLiteral("B")].value(u"recebimentos").toInt(), 2);
        }
        // Another day's seal is not this day's.
        const QString yesterday = QDate::currentDate().addDays(-1).toString(Qt::ISODate);
        QCOMPARE(
            atCentral(central, QStringLiteral("UPDATE SelosRede SET DIA = '%1'").arg(yesterday)),
            QString());
        QCOMPARE(a.report()[QStringLiteral("A")].value(u"selo").toString(),
                 QStringLiteral("ausente"));

        // Without SelosRede readable the codes still show and the seals are unknown.
        QCOMPARE(atCentral(central,
                           QStringLiteral("ALTER TABLE SelosRede RENAME COLUMN DIA TO DIA_FORA")),
                 QString());
        seen = b.report();
        QCOMPARE(seen[QStringLiteral("B")].value(u"recebimentos").toInt(), 2);
        QCOMPARE(seen[QStringLiteral("A")].value(u"selo").toString(),
                 QStringLiteral("desconhecido"));
        QCOMPARE(seen[QStringLiteral("B")].value(u"selo").toString(),
                 QStringLiteral("desconhecido"));
    }

    void withoutACentralItIsRefused() {
        CliFolder f;
        const CliRun r = f.run(words("relatorio rede"));
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("Nenhuma central configurada")));
    }
};

QTEST_GUILESS_MAIN(tst_reports_rede_cli)
#include "tst_reports_rede_cli.moc"
