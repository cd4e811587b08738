// Kinds written with `tipo gravar` on a new folder, then printed slips and bills read with `ler`
// on different working days, and typed lines converted in a batch.
#include "CliRun.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

namespace {
QStringList kind(const QString& id, const QString& tipo, const QString& padrao,
                 const QString& juros, const QString& bloqueio) {
    return {QStringLiteral("tipo"),        QStringLiteral("gravar"),
            QStringLiteral("--idcod"),     id,
            QStringLiteral("--idtipo"),    tipo,
            QStringLiteral("--descricao"), QStringLiteral("TIPO ") + tipo,
            QStringLiteral("--padrao"),    padrao,
            QStringLiteral("--juros"),     juros,
            QStringLiteral("--bloqueio"),  bloqueio};
}

const QString kCef =
    QStringLiteral("10499898100000214032006561000100040099726390"); // factor 8981, 214,03
const QString kTaxes =
    QStringLiteral("84630000000299902962020041013600000200644114"); // 10/04/2020, 29,99
} // namespace

class tst_leitura_cli : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() {
        QVERIFY(m_dir.isValid());
        QCOMPARE(run({QStringLiteral("iniciar")}).code, 0);
        QCOMPARE(run(kind(QStringLiteral("11"), QStringLiteral("20065"), QStringLiteral("C"),
                          QStringLiteral("N"), QStringLiteral("N")))
                     .code,
                 0);
        QCOMPARE(run(kind(QStringLiteral("12"), QStringLiteral("0296"), QStringLiteral("F"),
                          QStringLiteral("S"), QStringLiteral("N")))
                     .code,
                 0);
    }

    void read_data() {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("data");
        QTest::addColumn<int>("exit");
        QTest::addColumn<QString>("resultado");
        QTest::addColumn<QString>("vencimento");
        QTest::addColumn<QString>("valor");
        QTest::addColumn<QString>("juros");
        QTest::addColumn<int>("mensagens");
        QTest::newRow("slip before the restart") << kCef << "02/05/2022" << 0 << "aceito"
                                                 << "10/05/2022"
                                                 << "214,03"
                                                 << "NÃO" << 0;
        QTest::newRow("slip after the restart") << kCef << "01/03/2040" << 0 << "aceito"
                                                << "30/12/2046"
                                                << "214,03"
                                                << "NÃO" << 0;
        QTest::newRow("slip of an earlier year") << kCef << "23/11/2026" << 0 << "aceito"
                                                 << "10/05/2022"
                                                 << "214,03"
                                                 << "NÃO" << 1;
        QTest::newRow("slip outside every window") << kCef << "02/01/2006" << 1 << "erro"
                                                   << ""
                                                   << ""
                                                   << "" << 1;
        QTest::newRow("bill, same year") << kTaxes << "01/04/2020" << 0 << "aceito"
                                         << "10/04/2020"
                                         << "29,99"
                                         << "SIM" << 0;
        QTest::newRow("bill, one digit changed")
            << QString(kTaxes).replace(20, 1, QLatin1Char('9')) << "01/04/2020" << 1 << "digito"
            << ""
            << ""
            << "" << 0;
        QTest::newRow("slip, one digit changed")
            << QString(kCef).replace(30, 1, QLatin1Char('9')) << "02/05/2022" << 1 << "digito"
            << ""
            << ""
            << "" << 1;
        QTest::newRow("typed line is no barcode")
            << "10492006506100010004200997263900989810000021403"
            << "02/05/2022" << 1 << "ignorada"
            << ""
            << ""
            << "" << 0;
    }
    void read() {
        QFETCH(QString, code);
        QFETCH(QString, data);
        QFETCH(int, exit);
        QFETCH(QString, resultado);
        QFETCH(QString, vencimento);
        QFETCH(QString, valor);
        QFETCH(QString, juros);
        QFETCH(int, mensagens);
        const CliRun r = run({QStringLiteral("ler"), code, QStringLiteral("--data"), data,
                              QStringLiteral("--json")});
        const QJsonObject o = r.json();
        QCOMPARE(r.code, exit);
        QCOMPARE(o.value(QStringLiteral("resultado")).toString(), resultado);
        QCOMPARE(o.value(QStringLiteral("mensagens")).toArray().size(), mensagens);
        QCOMPARE(o.value(QStringLiteral("vencimento")).toString(), vencimento);
        QCOMPARE(o.value(QStringLiteral("valor")).toString(), valor);
        QCOMPARE(o.value(QStringLiteral("juros")).toString(), juros);
    }

    void blockFollowsTheKind() {
        const QStringList args = {QStringLiteral("ler"), kTaxes, QStringLiteral("--data"),
                                  QStringLiteral("23/11/2026"), QStringLiteral("--json")};
        QCOMPARE(run(args).json().value(QStringLiteral("resultado")).toString(),
                 QStringLiteral("aceito"));
        QCOMPARE(run(kind(QStringLiteral("12"), QStringLiteral("0296"), QStringLiteral("F"),
                          QStringLiteral("N"), QStringLiteral("S"))
                     << QStringLiteral("--alterar"))
                     .code,
                 0);
        const CliRun r = run(args);
        QCOMPARE(r.code, 1);
        QCOMPARE(r.json().value(QStringLiteral("resultado")).toString(),
                 QStringLiteral("bloqueada"));
        QCOMPARE(r.json().value(QStringLiteral("mensagens")).toArray().at(0).toString(),
                 QStringLiteral("Não pode ser recebida!!! Conta de um ano anterior."));
    }

    void typedLinesInABatch() {
        const QByteArray input = "00190.50095 40144.816069 06809.350314 3 37370000000100\r\n"
                                 "\r\n"
                                 "858200000007572503282030560708202107539591904460\r\n"
                                 "75691313670103467211159238450015997710000096210\n"
                                 "838600000050096000190009000801782309000343062712";
        const CliRun r = run({QStringLiteral("linha"), QStringLiteral("-")}, input);
        QCOMPARE(r.code, 1);
        const QStringList lines = r.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 5);
        QCOMPARE(lines[0], QStringLiteral("00193373700000001000500940144816060680935031"));
        QVERIFY(lines[1].contains(QStringLiteral("47")));
        QCOMPARE(lines[2], QStringLiteral("85820000000572503282035607082021053959190446"));
        QVERIFY(lines[3].contains(QStringLiteral("campo 1")));
        QCOMPARE(lines[4], QStringLiteral("83860000005096000190000008017823000034306271"));
    }

private:
    CliRun run(const QStringList& args, const QByteArray& input = {}) const {
        return runTolvane(m_dir.path(), args, input);
    }
    QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(tst_leitura_cli)
#include "tst_leitura_cli.moc"
