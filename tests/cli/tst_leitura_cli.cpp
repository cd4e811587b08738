// Kinds written with `tipo gravar` on a new folder, then printed slips and bills read with `ler`
// on different working days.
#include "CliFolder.h"
#include "CliRun.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

namespace {
// `tipo gravar` from "IDCOD IDTIPO PADRAO JUROS BLOQUEIO".
QStringList kind(const char* fields) {
    const QStringList f = words(fields);
    return words("tipo gravar --idcod")
           << f[0] << QStringLiteral("--idtipo") << f[1] << QStringLiteral("--descricao")
           << QStringLiteral("TIPO ") + f[1] << QStringLiteral("--padrao") << f[2]
           << QStringLiteral("--juros") << f[3] << QStringLiteral("--bloqueio") << f[4];
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
        QCOMPARE(run(words("iniciar")).code, 0);
        QCOMPARE(
            runTolvane(m_dir.path(), words("usuario gravar --nome CHEFE --tipo ADM"), "chefe-1\n")
                .code,
            0);
        QCOMPARE(asAdmin(kind("11 20065 C N N")).code, 0);
        QCOMPARE(asAdmin(kind("12 0296 F S N")).code, 0);
    }

    void read_data() {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("data");
        QTest::addColumn<int>("exit");
        QTest::addColumn<QString>("answer"); // resultado|vencimento|valor|juros
        QTest::addColumn<int>("mensagens");
        QTest::newRow("slip before the restart")
            << kCef << "02/05/2022" << 0 << "aceito|10/05/2022|214,03|NÃO" << 0;
        QTest::newRow("slip of an earlier year")
            << kCef << "23/11/2026" << 0 << "aceito|10/05/2022|214,03|NÃO" << 1;
        QTest::newRow("slip outside every window") << kCef << "02/01/2006" << 1 << "erro|||" << 1;
        QTest::newRow("bill, same year")
            << kTaxes << "01/04/2020" << 0 << "aceito|10/04/2020|29,99|SIM" << 0;
        QTest::newRow("bill, one digit changed") << QString(kTaxes).replace(20, 1, QLatin1Char('9'))
                                                 << "01/04/2020" << 1 << "digito|||" << 0;
        QTest::newRow("typed line is no barcode")
            << "10492006506100010004200997263900989810000021403"
            << "02/05/2022" << 1 << "ignorada|||" << 0;
    }
    void read() {
        QFETCH(QString, code);
        QFETCH(QString, data);
        QFETCH(int, exit);
        QFETCH(QString, answer);
        QFETCH(int, mensagens);
        const CliRun r = run(words("ler") << code << words("--data") << data << words("--json"));
        const QJsonObject o = r.json();
        QCOMPARE(r.code, exit);
        QStringList got;
        for (const char16_t* key : {u"resultado", u"vencimento", u"valor", u"juros"})
            got << o.value(QStringView(key)).toString();
        QCOMPARE(got.join(QLatin1Char('|')), answer);
        QCOMPARE(o.value(u"mensagens").toArray().size(), mensagens);
    }

    void blockFollowsTheKind() {
        const QStringList args = words("ler --data 23/11/2026 --json") << kTaxes;
        QCOMPARE(run(args).json().value(u"resultado").toString(), QStringLiteral("aceito"));
        QCOMPARE(asAdmin(kind("12 0296 F N S") << QStringLiteral("--alterar")).code, 0);
        const CliRun r = run(args);
        QCOMPARE(r.code, 1);
        QCOMPARE(r.json().value(u"resultado").toString(), QStringLiteral("bloqueada"));
        QCOMPARE(r.json().value(u"mensagens").toArray().at(0).toString(),
                 QStringLiteral("Não pode ser recebida!!! Conta de um ano anterior."));
    }

private:
    CliRun run(const QStringList& args) const { return runTolvane(m_dir.path(), args); }
    CliRun asAdmin(const QStringList& args) const {
        return runTolvane(m_dir.path(), args, CliFolder::passwords("chefe-1", "chefe-1"));
    }
    QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(tst_leitura_cli)
#include "tst_leitura_cli.moc"
