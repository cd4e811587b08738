// The seal of each closed day: shown by the closing, printed on the text coupon when there is no
// tape, and checked by a plain `auditar` against the chain and the day's totals.
#include "ChainRewrite.h"
#include "CliFolder.h"
#include "TestCodes.h"

#include <QDir>
#include <QFile>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSqlQuery>
#include <QTest>

namespace {

const QString kDia = QStringLiteral("23/11/2026");

// A demo folder whose day 23/11/2026 received three guides of 150,00 and was closed.
class ClosedDay : public CliFolder {
public:
    ClosedDay() {
        asAdmin(words("caixa abrir --data") << kDia);
        QStringList codes;
        for (int n = 1; n <= 3; ++n)
            codes << TestCodes::guide(QStringLiteral("0425"), 15000, QStringLiteral("20261130"),
                                      QStringLiteral("%1").arg(n, 17, 10, QLatin1Char('0')));
        received = asAdmin(words("caixa receber --data") << kDia << codes).code == 0;
        closing = asAdmin(words("caixa encerrar --json --data") << kDia);
    }
    CliRun audit() const { return asAdmin(words("auditar")); }
    bool received = false;
    CliRun closing;
};

QString couponsText(const QString& folder) {
    QString all;
    const QDir dir(QDir(folder).filePath(QStringLiteral("Cupons")));
    for (const QString& name : dir.entryList(QDir::Files)) {
        QFile f(dir.filePath(name));
        if (f.open(QIODevice::ReadOnly))
            all += QString::fromLatin1(f.readAll());
    }
    return all;
}

} // namespace

class tst_seal_cli : public QObject {
    Q_OBJECT
private slots:
    // The template's printer is "txt": the seal is in the JSON and on the closing's coupon.
    void closingShowsAndPrintsTheSeal() {
        ClosedDay f;
        QVERIFY(f.ok() && f.received);
        QCOMPARE(f.closing.code, 0);
        const QString seal = f.closing.json().value(u"selo").toString();
        QVERIFY2(QRegularExpression(QStringLiteral("^[0-9a-f]{64}$")).match(seal).hasMatch(),
                 qPrintable(f.closing.out));
        const QString coupons = couponsText(f.path());
        QVERIFY2(coupons.contains(QStringLiteral("CADEIA: ") + seal.left(32)), qPrintable(coupons));
        QVERIFY(coupons.contains(seal.mid(32)));
        QCOMPARE(f.audit().code, 0);

        // Reopened, another guide, closed again: a new seal, shown in words this time.
        QCOMPARE(f.asAdmin(words("caixa reabrir --sem-cupom --data") << kDia).code, 0);
        QCOMPARE(
            f.asAdmin(words("caixa receber --data")
                      << kDia
                      << TestCodes::guide(QStringLiteral("0425"), 990, QStringLiteral("20261130"),
                                          QStringLiteral("00000000000000009")))
                .code,
            0);
        const CliRun again = f.asAdmin(words("caixa encerrar --sem-cupom --data") << kDia);
        QCOMPARE(again.code, 0);
        const QString now = f.asAdmin(words("caixa situacao --json --data") << kDia)
                                .json()
                                .value(u"selo")
                                .toString();
        QVERIFY(now.size() == 64 && now != seal);
        QVERIFY2(
            again.out.contains(QStringLiteral("Selo do dia 23/11/2026 (hash da cadeia): ") + now),
            qPrintable(again.out));
        QCOMPARE(f.audit().code, 0);
    }

    // A closed day changed with a database tool, as far as the file alone lets one see.
    void plainAuditOfAChangedClosedDay_data() {
        QTest::addColumn<bool>("receipt"); // a receipt lowered and the chain rebuilt after it
        QTest::addColumn<bool>("totals");  // VALOR_ARRECADADO lowered by 100,00
        QTest::addColumn<bool>("seal");    // HASH_CADEIA set to the rebuilt chain's hash
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("found");
        // The day's row is chained: its own entry says what it held.
        QTest::newRow("total lowered")
            << false << true << false << 1
            << "Primeira diferença: Movimento ID=1 foi alterado fora do programa: "
               "VALOR_ARRECADADO era \"4500000\", agora \"3500000\".";
        QTest::newRow("receipt and chain, not the total")
            << true << false << true << 1
            << "VALOR_ARRECADADO guardado 450,00, mas os registros do dia somam 350,00.";
        QTest::newRow("receipt, chain and total, not the seal")
            << true << true << false << 1 << "O selo do dia 23/11/2026 (";
        // Everything coherent: the file alone cannot tell (the central can).
        QTest::newRow("all of it") << true << true << true << 0 << "Tudo confere.";
    }
    void plainAuditOfAChangedClosedDay() {
        QFETCH(bool, receipt);
        QFETCH(bool, totals);
        QFETCH(bool, seal);
        QFETCH(int, code);
        QFETCH(QString, found);
        ClosedDay f;
        QVERIFY(f.ok() && f.received && f.closing.code == 0);
        QCOMPARE(f.audit().code, 0);
        {
            QSqlDatabase db = ChainRewrite::openSqlite(f.path(QStringLiteral("caixa.db")));
            QVERIFY(db.isOpen());
            QString why;
            if (receipt)
                QVERIFY2(ChainRewrite::lowerReceipt(db, 2, 1000000, totals, seal, &why),
                         qPrintable(why));
            else
                QVERIFY(QSqlQuery(db).exec(QStringLiteral(
                    "UPDATE Movimento SET VALOR_ARRECADADO = VALOR_ARRECADADO - 1000000")));
            db.close();
        }
        const CliRun r = f.audit();
        QCOMPARE(r.code, code);
        QVERIFY2(r.out.contains(found), qPrintable(r.out));
        if (code == 1) // `auditar --data` of the day says the same
            QCOMPARE(f.asAdmin(words("auditar --data") << kDia).code, 1);
    }
};

QTEST_GUILESS_MAIN(tst_seal_cli)
#include "tst_seal_cli.moc"
