// `tolvane linha -` as a back office runs it on a file: one answer per line, in order, on
// standard output, and the exit status says whether every line was a good one.
#include "CliRun.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {
CliRun linha(const QByteArray& input) {
    QTemporaryDir dir;
    return runTolvane(dir.path(), {QStringLiteral("linha"), QStringLiteral("-")}, input);
}

// The same with a file as standard input (`tolvane linha - < arquivo`), which is read where it
// lies and answered in pieces on two threads: the answers must come out the same, in order.
CliRun linhaFromFile(const QByteArray& input) {
    QTemporaryDir dir;
    QFile in(dir.filePath(QStringLiteral("linhas.txt")));
    if (!in.open(QIODevice::WriteOnly) || in.write(input) != input.size())
        return {};
    in.close();
    QProcess p;
    p.setStandardInputFile(in.fileName());
    p.start(qEnvironmentVariable("TOLVANE_EXE"),
            {QStringLiteral("--pasta"), dir.path(), QStringLiteral("linha"), QStringLiteral("-")});
    p.waitForFinished(120000);
    CliRun r;
    r.code = p.exitCode();
    r.outBytes = p.readAllStandardOutput();
    r.errBytes = p.readAllStandardError();
    return r;
}

const QByteArray kSlip = "23793.38128 60005.963347 21000.063301 1 74640000116037";
const QByteArray kSlipCode = "23791746400001160373381260005963342100006330\n";
const QByteArray kBill = "83640000001-1 33120138000-2 81288462711-6 08013618155-1";
const QByteArray kBillCode = "83640000001331201380008128846271108013618155\n";
const QByteArray kLength = "A linha digitável deve ter 47 (boleto) ou 48 (arrecadação) números.\n";
} // namespace

class tst_linha_cli : public QObject {
    Q_OBJECT
private slots:
    void answers_data() {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<int>("code");
        QTest::newRow("all good, CRLF") << kSlip + "\r\n" + kBill + "\r\n"
                                        << kSlipCode + kBillCode << 0;
        QTest::newRow("last line without its end")
            << kSlip + "\n" + kBill << kSlipCode + kBillCode << 0;
        QTest::newRow("nothing") << QByteArray() << QByteArray() << 0;
        QTest::newRow("blank lines") << "\n" + kBill + "\r\n\n"
                                     << kLength + kBillCode + kLength << 1;
        QTest::newRow("mixed")
            << "123\n" + kSlip + "\n836400000011 331201380003 812884627116 080136181551\n" +
                   "736400000011 331201380002 812884627116 080136181551\n" +
                   "888000000013000012342025612310000000000000000779\n" +
                   "23793.38128 60005.963347 21000.063301 4 74640000116037\n"
            << kLength + kSlipCode +
                   "O dígito verificador do campo 2 da linha digitável não confere.\n"
                   "A linha digitável de 48 números é de arrecadação e começa com 8.\n"
                   "O segmento 8 (segundo número da linha digitável) não existe na arrecadação.\n"
                   "O dígito verificador geral da linha digitável não confere.\n"
            << 1;
    }
    void answers() {
        QFETCH(QByteArray, input);
        QFETCH(QByteArray, output);
        QFETCH(int, code);
        for (const CliRun& r : {linha(input), linhaFromFile(input)}) {
            QCOMPARE(r.outBytes, output);
            QCOMPARE(r.errBytes, QByteArray());
            QCOMPARE(r.code, code);
        }
    }

    // A file bigger than one read, with a bad line at the end only.
    void manyLines() {
        QByteArray input;
        QByteArray output;
        for (int i = 0; i < 40000; ++i) {
            input += (i % 2 ? kSlip : kBill) + "\n";
            output += i % 2 ? kSlipCode : kBillCode;
        }
        CliRun r = linha(input);
        QCOMPARE(r.code, 0);
        QVERIFY(r.outBytes == output);
        r = linha(input + "x\n");
        QCOMPARE(r.code, 1);
        QVERIFY(r.outBytes == output + kLength);
    }

    // A file of several pieces, read where it lies: every answer in its place, the bad lines
    // (one at the very start, one at the end of a piece, one at the end) included.
    void bigFileInPieces() {
        QByteArray input = "x\n";
        QByteArray output = kLength;
        for (int i = 0; i < 330000; ++i) {
            input += (i % 3 ? kSlip + "\n" : kBill + "\r\n");
            output += i % 3 ? kSlipCode : kBillCode;
            if (i == 150000) {
                input += "\n";
                output += kLength;
            }
        }
        input += "12";
        output += kLength;
        QVERIFY(input.size() > 16 << 20); // more than two pieces
        const CliRun r = linhaFromFile(input);
        QCOMPARE(r.code, 1);
        QCOMPARE(r.outBytes.size(), output.size());
        QVERIFY(r.outBytes == output);
    }
};

QTEST_GUILESS_MAIN(tst_linha_cli)
#include "tst_linha_cli.moc"
