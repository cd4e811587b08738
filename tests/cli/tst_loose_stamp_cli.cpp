// A loose document stamped from the command line: the administrator's password, the row in the
// chain whether or not the printer confirmed it, and the listing.
#include "CentralCliFolder.h"
#include "ChainRewrite.h"
#include "CliFolder.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QSqlQuery>
#include <QTest>

class tst_loose_stamp_cli : public QObject {
    Q_OBJECT
private slots:
    void aStampThePrinterDidNotMakeIsRecordedAsSuch() {
        CliFolder f;
        QVERIFY(f.ok());
        // A first-model printer on a port where nothing answers: switched off.
        f.set(QStringLiteral("Print"), QStringLiteral("impressora"), QStringLiteral("bematech"));
        f.set(QStringLiteral("Print"), QStringLiteral("modo"), QStringLiteral("1"));
        f.set(QStringLiteral("Print"), QStringLiteral("porta"),
              QStringLiteral("tcp:127.0.0.1:%1").arg(CentralCliFolder::closedPort()));
        CliRun r = f.asAdmin(words("autenticar 150,00 --data 23/11/2026"));
        QCOMPARE(r.code, 1);
        QVERIFY2(r.err.contains(QStringLiteral("A autenticadora não confirmou a autenticação: ela "
                                               "fica registrada como não impressa.")),
                 qPrintable(r.err));

        r = f.asAdmin(words("autenticacoes --json"));
        QCOMPARE(r.code, 0);
        QCOMPARE(r.json().value(u"total").toInt(), 1);
        const QJsonObject stamp = r.json().value(u"autenticacoes").toArray().first().toObject();
        QCOMPARE(stamp.value(u"confirmada").toBool(), false);
        QCOMPARE(stamp.value(u"valor").toString(), QStringLiteral("150,00"));
        QCOMPARE(stamp.value(u"dia").toString(), QStringLiteral("23/11/2026"));
        QVERIFY(
            stamp.value(u"texto").toString().endsWith(QStringLiteral("23/11/2026        150,00R")));
        QVERIFY(!stamp.value(u"administrador").toString().isEmpty());
        QCOMPARE(f.asAdmin(words("autenticacoes --data 24/11/2026 --json"))
                     .json()
                     .value(u"total")
                     .toInt(),
                 0);
        r = f.asAdmin(words("autenticacoes --data 23/11/2026"));
        QVERIFY2(r.out.contains(QStringLiteral("150,00\tNÃO CONFIRMADA\t")), qPrintable(r.out));

        // Refused before anything is recorded: no administrator, no printer, no amount.
        const struct {
            QByteArray input;
            const char* value;
            const char* err;
        } refusals[] = {
            {f.password() + "\nerrada\n", "10,00", "Senha de administrador não aceita."},
            {f.password() + "\n" + f.password() + "\n", "0,00", "Informe o valor do documento!!"},
        };
        for (const auto& x : refusals) {
            r = f.run(words("autenticar") << QLatin1String(x.value), x.input);
            QVERIFY(r.code != 0);
            QCOMPARE(r.err.trimmed(), QString::fromUtf8(x.err));
        }
        f.set(QStringLiteral("Print"), QStringLiteral("modo"), QStringLiteral("0"));
        r = f.asAdmin(words("autenticar 10,00"));
        QCOMPARE(r.code, 1);
        QCOMPARE(r.err.trimmed(), QStringLiteral("A autenticadora não está habilitada (Opções, "
                                                 "Impressão: \"Habilitar a autenticadora?\")."));
        QCOMPARE(f.asAdmin(words("autenticacoes --json")).json().value(u"total").toInt(), 1);

        // The row is in the chain: marked as printed behind the program's back, it is found.
        QCOMPARE(f.asAdmin(words("auditar")).code, 0);
        {
            QSqlDatabase db = ChainRewrite::openSqlite(f.path(QStringLiteral("caixa.db")));
            QVERIFY(QSqlQuery(db).exec(
                QStringLiteral("UPDATE AutenticacoesAvulsas SET CONFIRMADA = 1")));
            db.close();
        }
        r = f.asAdmin(words("auditar"));
        QCOMPARE(r.code, 1);
        QVERIFY2(r.out.contains(QStringLiteral("AutenticacoesAvulsas ID=1 foi alterado fora do "
                                               "programa: CONFIRMADA era \"0\", agora \"1\"")),
                 qPrintable(r.out));
    }
};

QTEST_GUILESS_MAIN(tst_loose_stamp_cli)
#include "tst_loose_stamp_cli.moc"
