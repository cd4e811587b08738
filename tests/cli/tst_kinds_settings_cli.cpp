// Kinds of guide and settings that could hide money or break the day: a kind with receipts, a
// layout code used twice, a correction across standards, the counter's letter and the cash
// count's list of kinds of money.
#include "CliFolder.h"
#include "TestCodes.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QTest>

namespace {

const QString kDia = QStringLiteral("23/11/2026");

QString iptu(int n) {
    return TestCodes::guide(QStringLiteral("0425"), 2500, QStringLiteral("20261130"),
                            QStringLiteral("%1").arg(n, 17, 10, QLatin1Char('0')));
}

// A demo folder whose day 23/11/2026 is open with one IPTU guide of 25,00 received.
class OpenDay : public CliFolder {
public:
    OpenDay() {
        asAdmin(words("caixa abrir --data") << kDia);
        received = day(words("caixa receber") << iptu(1)).code == 0;
    }
    CliRun day(QStringList args) const { return asAdmin(args << QStringLiteral("--data") << kDia); }
    int firstReceipt() const {
        return day(words("caixa recebimentos --json"))
            .array()
            .first()
            .toObject()
            .value(u"idrecebe")
            .toInt();
    }
    QByteArray file(const char* name) const {
        QFile f(path(QLatin1String(name)));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    bool received = false;
};

} // namespace

class tst_kinds_settings_cli : public QObject {
    Q_OBJECT
private slots:
    void aKindWithReceiptsIsNotDeleted_data() {
        QTest::addColumn<QString>("idcod");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("err");
        QTest::newRow("IPTU, received") << "1" << 1
                                        << "O código 001 tem recebimentos gravados e não pode ser "
                                           "excluído: o dinheiro recebido nele sairia das listas e "
                                           "dos arquivos.";
        QTest::newRow("never used") << "8" << 0 << "";
    }
    void aKindWithReceiptsIsNotDeleted() {
        QFETCH(QString, idcod);
        QFETCH(int, code);
        QFETCH(QString, err);
        OpenDay f;
        QVERIFY(f.ok() && f.received);
        const CliRun r = f.asAdmin(words("tipo excluir --idcod") << idcod);
        QCOMPARE(r.code, code);
        QCOMPARE(r.err.trimmed(), err);
        bool listed = false;
        for (const QJsonValue& k : f.run(words("tipo listar --json")).array())
            listed = listed || k.toObject().value(u"idcod").toInt() == idcod.toInt();
        QCOMPARE(listed, code != 0);
        // The day's receipts and its total still agree.
        QCOMPARE(f.day(words("caixa recebimentos --json")).array().size(), 1);
    }

    void aLayoutCodeBelongsToOneKind_data() {
        QTest::addColumn<QString>("args");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("err");
        const QString taken = QStringLiteral("O tipo 0425 já é usado pelo código 001 - IPTU: cada "
                                             "leiaute de código de barras pertence a um só tipo.");
        QTest::newRow("new kind, IPTU's code")
            << "--idcod 9 --idtipo 0425 --descricao NOVA --padrao F --juros N --bloqueio N" << 1
            << taken;
        QTest::newRow("another kind changed to it")
            << "--idcod 2 --idtipo 0425 --descricao TAXAS --padrao F --juros S --bloqueio S "
               "--alterar"
            << 1 << taken;
        QTest::newRow("IPTU saved again") << "--idcod 1 --idtipo 0425 --descricao IPTU --padrao F "
                                             "--juros N --bloqueio N --alterar"
                                          << 0 << "";
        QTest::newRow("new kind, new code")
            << "--idcod 9 --idtipo 0428 --descricao NOVA --padrao F --juros N --bloqueio N" << 0
            << "";
    }
    void aLayoutCodeBelongsToOneKind() {
        QFETCH(QString, args);
        QFETCH(int, code);
        QFETCH(QString, err);
        CliFolder f;
        QVERIFY(f.ok());
        const CliRun r = f.asAdmin(words("tipo gravar") + args.split(QLatin1Char(' ')));
        QCOMPARE(r.code, code);
        QCOMPARE(r.err.trimmed(), err);
        // IPTU guides are still read as IPTU.
        const CliRun read = f.run(words("ler") << iptu(2) << words("--json --data") << kDia);
        QCOMPARE(read.json().value(u"descricao").toString(), QStringLiteral("IPTU"));
    }

    void aCorrectionKeepsTheStandard_data() {
        QTest::addColumn<QString>("tipo");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("err");
        QTest::newRow("Febraban to bank slip")
            << "4" << 1
            << "O tipo 004 é de outro padrão: o recebimento só pode passar para um tipo do mesmo "
               "padrão (F).";
        QTest::newRow("Febraban to loose item")
            << "7" << 1
            << "O tipo 007 é de outro padrão: o recebimento só pode passar para um tipo do mesmo "
               "padrão (F).";
        QTest::newRow("Febraban to Febraban") << "2" << 0 << "";
    }
    void aCorrectionKeepsTheStandard() {
        QFETCH(QString, tipo);
        QFETCH(int, code);
        QFETCH(QString, err);
        OpenDay f;
        QVERIFY(f.ok() && f.received);
        const CliRun r = f.day(words("recebimento alterar --id")
                               << QString::number(f.firstReceipt()) << QStringLiteral("--tipo")
                               << tipo << words("--motivo engano"));
        QCOMPARE(r.code, code);
        if (code != 0)
            QVERIFY2(r.err.contains(err), qPrintable(r.err));
    }

    // The letter is in every stamp and names the database's owner: never from the options, and
    // only between days.
    void theCounterLetterChangesOnlyBetweenDays() {
        OpenDay f;
        QVERIFY(f.ok() && f.received);
        const QByteArray before = f.file("Config.ini");
        CliRun r = f.options(words("Export/guiche=B"));
        QCOMPARE(r.code, 1);
        QCOMPARE(r.err.trimmed(), QStringLiteral("O guichê de trabalho não muda pelas opções: com "
                                                 "o movimento fechado, o administrador usa "
                                                 "tolvane guiche assumir LETRA."));
        QCOMPARE(f.file("Config.ini"), before);
        r = f.asAdmin(words("guiche assumir B"));
        QCOMPARE(r.code, 1);
        QCOMPARE(r.err.trimmed(),
                 QStringLiteral("Há um movimento aberto: encerre-o antes de mudar o guichê."));
        QCOMPARE(f.file("Config.ini"), before);
        QCOMPARE(f.day(words("caixa receber") << iptu(3)).code, 0); // still its own counter

        QCOMPARE(f.day(words("caixa encerrar --sem-cupom")).code, 0);
        r = f.asAdmin(words("guiche assumir b"));
        QCOMPARE(r.code, 0);
        QVERIFY(f.file("Config.ini").contains("guiche=B\r\n"));
        QCOMPARE(f.run(words("opcoes --json")).json().value(u"Export").toObject().value(u"guiche"),
                 QJsonValue(QStringLiteral("B")));
        // The database follows: the next day opens and receives under the new letter.
        QCOMPARE(f.asAdmin(words("caixa abrir --data 24/11/2026")).code, 0);
        QCOMPARE(f.asAdmin(words("caixa receber --data 24/11/2026") << iptu(4)).code, 0);
    }

    void theCashCountKeepsItsKindsOfMoney() {
        OpenDay f;
        QVERIFY(f.ok() && f.received);
        QCOMPARE(f.options(words("Export/Path3=Integracao")).code, 0);
        QVERIFY(f.file("Config.ini").contains("itens=\r\n"));
        QCOMPARE(f.day(words("caixa encerrar --sem-cupom")).code, 0);
        QCOMPARE(f.day(words("conferencia --item 100:25,00")).code, 0);

        // A Config.ini spoiled by an earlier save is repaired on opening, and Log.ini says so.
        f.set(QStringLiteral("Reserva"), QStringLiteral("itens"), QStringLiteral("Integracao/"));
        const CliRun r = f.day(words("conferencia --item 101:1,00"));
        QCOMPARE(r.code, 0);
        QVERIFY(f.file("Config.ini").contains("itens=\r\n"));
        QVERIFY2(QString::fromLatin1(f.file("Log.ini"))
                     .contains(QStringLiteral("[Reserva] itens tinha \"Integracao/\"")),
                 f.file("Log.ini").constData());
        // A list of kinds is a setting of its own, kept as it is.
        QCOMPARE(f.options(words("Reserva/itens=100;101")).code, 0);
        QCOMPARE(f.day(words("conferencia --item 102:1,00")).code, 1);
        QCOMPARE(f.day(words("conferencia --item 100:1,00")).code, 0);
    }
};

QTEST_GUILESS_MAIN(tst_kinds_settings_cli)
#include "tst_kinds_settings_cli.moc"
