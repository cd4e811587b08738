// The rules for what the program writes: where a new file may go, which typed text a file can
// hold, and which typed amounts are money.
#include "FileText.h"
#include "Money.h"
#include "OutputPath.h"
#include "TextFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <sys/stat.h>

class tst_output_rules : public QObject {
    Q_OBJECT
private slots:
    void newFileOnly_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected"); // empty: allowed
        QTest::newRow("new file") << "novo.INT"
                                  << "";
        QTest::newRow("existing file") << "existe.txt"
                                       << "já existe e não será substituído";
        QTest::newRow("fifo") << "fila"
                              << "não é um arquivo comum";
        QTest::newRow("link to a file") << "atalho"
                                        << "não é um arquivo comum";
        QTest::newRow("dangling link") << "quebrado"
                                       << "não é um arquivo comum";
        QTest::newRow("folder") << "pasta"
                                << "não é um arquivo comum";
        QTest::newRow("missing folder") << "nada/novo.txt"
                                        << "não existe";
        QTest::newRow("database") << "caixa.db"
                                  << "arquivo do próprio caixa";
        QTest::newRow("database journal, missing") << "caixa.db-journal"
                                                   << "arquivo do próprio caixa";
        QTest::newRow("log by name, anywhere") << "pasta/Receb_20991231.txt"
                                               << "arquivo do próprio caixa";
        QTest::newRow("settings in any case") << "config.INI"
                                              << "arquivo do próprio caixa";
        QTest::newRow("inside the copies") << "copias/novo.txt"
                                           << "arquivo do próprio caixa";
        QTest::newRow("copies through a linked folder") << "atalho-copias/novo.txt"
                                                        << "arquivo do próprio caixa";
        QTest::newRow("empty") << ""
                               << "Informe o arquivo";
    }
    void newFileOnly() {
        QFETCH(QString, name);
        QFETCH(QString, expected);
        QTemporaryDir dir;
        const auto at = [&](const char* n) { return dir.filePath(QLatin1String(n)); };
        QFile existing(at("existe.txt"));
        QVERIFY(existing.open(QIODevice::WriteOnly));
        existing.close();
        QVERIFY(::mkfifo(QFile::encodeName(at("fila")).constData(), 0600) == 0);
        QVERIFY(QFile::link(at("existe.txt"), at("atalho")));
        QVERIFY(QFile::link(at("ausente.txt"), at("quebrado")));
        QVERIFY(QDir().mkpath(at("pasta")) && QDir().mkpath(at("copias")));
        QVERIFY(QFile::link(at("copias"), at("atalho-copias")));
        OutputPath::Guarded own;
        own.files << at("caixa.db") << at("caixa.db-journal") << at("Config.ini");
        own.names << QStringLiteral("Config.ini") << QStringLiteral("Receb_*");
        own.folders << at("copias");

        const QString why =
            OutputPath::problem(name.isEmpty() ? QString() : dir.filePath(name), own);
        if (expected.isEmpty())
            QVERIFY2(why.isEmpty(), qPrintable(why));
        else
            QVERIFY2(why.contains(expected), qPrintable(why));
    }

    // A whole new file appears only when complete and never over anything already there.
    void createIsExclusive() {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("saida.txt"));
        QString error;
        QVERIFY(TextFile::create(path, {QStringLiteral("AÇÃO")}, &error));
        QFile f(path);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QCOMPARE(f.readAll(), QByteArray("A\xC7\xC3O\r\n"));
        QVERIFY(!TextFile::create(path, {QStringLiteral("outra")}, &error));
        QVERIFY(error.contains(QStringLiteral("já existe")));
        const QString link = dir.filePath(QStringLiteral("link"));
        QVERIFY(QFile::link(dir.filePath(QStringLiteral("alvo")), link));
        QVERIFY(!TextFile::create(link, {QStringLiteral("x")}, &error));
        QVERIFY(!QFileInfo::exists(dir.filePath(QStringLiteral("alvo"))));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    }

    // Files the program keeps (logs, settings) are regular files: a FIFO would hang it, a link
    // would write elsewhere.
    void keptFilesAreRegular() {
        QTemporaryDir dir;
        const QString fifo = dir.filePath(QStringLiteral("Log.ini"));
        QVERIFY(::mkfifo(QFile::encodeName(fifo).constData(), 0600) == 0);
        QString error;
        QVERIFY(!TextFile::append(fifo, {QStringLiteral("linha")}, &error)); // returns at once
        QVERIFY(error.contains(QStringLiteral("não é um arquivo comum")));
        const QString target = dir.filePath(QStringLiteral("caixa.db"));
        QFile t(target);
        QVERIFY(t.open(QIODevice::WriteOnly));
        t.write("banco");
        t.close();
        const QString link = dir.filePath(QStringLiteral("Receb_20261123.txt"));
        QVERIFY(QFile::link(target, link));
        QVERIFY(!TextFile::writeAll(link, {QStringLiteral("linha")}, &error));
        QVERIFY(!TextFile::append(link, {QStringLiteral("linha")}, &error));
        QVERIFY(t.open(QIODevice::ReadOnly));
        QCOMPARE(t.readAll(), QByteArray("banco"));
    }

    void typedTextForFiles_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("width");
        QTest::addColumn<QString>("expected"); // empty: accepted
        QTest::newRow("plain with accents") << QStringLiteral("ÁGUA É LUZ ç") << 20 << "";
        QTest::newRow("exactly the width") << QString(170, QLatin1Char('x')) << 170 << "";
        QTest::newRow("one more") << QString(171, QLatin1Char('x')) << 170
                                  << "tem 171 caracteres; cabem no máximo 170";
        QTest::newRow("CR LF") << QStringLiteral("A\r\nR") << 20 << "quebra de linha";
        QTest::newRow("tab") << QStringLiteral("A\tB") << 20 << "tabulação";
        QTest::newRow("escape") << QStringLiteral("A\x1b[2J") << 20 << "caractere de controle";
        QTest::newRow("delete") << QStringLiteral("A\x7f") << 20 << "caractere de controle";
        QTest::newRow("C1 control") << QString(QChar(0x85)) << 20 << "caractere de controle";
        QTest::newRow("en dash") << QStringLiteral("A – B") << 20 << "\"–\"";
        QTest::newRow("euro") << QStringLiteral("10€") << 20 << "\"€\"";
    }
    void typedTextForFiles() {
        QFETCH(QString, text);
        QFETCH(int, width);
        QFETCH(QString, expected);
        const QString why = FileText::problem(text, width, QStringLiteral("A descrição"));
        if (expected.isEmpty())
            QVERIFY2(why.isEmpty(), qPrintable(why));
        else
            QVERIFY2(why.startsWith(QStringLiteral("A descrição")) && why.contains(expected),
                     qPrintable(why));
    }

    void fieldsMatchTheirRecords() {
        // The integration file's debit header takes 170 characters, its item number 29.
        QCOMPARE(FileText::width(FileText::Field::DescricaoLancamento), 170);
        QCOMPARE(FileText::width(FileText::Field::NumeroDocumento), 29);
    }

    void typedMoney_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<qint64>("cents");  // -1: refused
        QTest::addColumn<bool>("fraction"); // refused for a fraction of a centavo
        QTest::newRow("centavos") << "10,01" << qint64(1001) << false;
        QTest::newRow("one decimal") << "12,5" << qint64(1250) << false;
        QTest::newRow("thousands") << "1.234,56" << qint64(123456) << false;
        QTest::newRow("whole") << "150" << qint64(15000) << false;
        QTest::newRow("half a centavo") << "10,005" << qint64(-1) << true;
        QTest::newRow("three zeros") << "10,000" << qint64(-1) << true;
        QTest::newRow("four decimals") << "0,0001" << qint64(-1) << true;
        QTest::newRow("not a number") << "dez" << qint64(-1) << false;
        QTest::newRow("two commas") << "1,0,0" << qint64(-1) << false;
    }
    void typedMoney() {
        QFETCH(QString, text);
        QFETCH(qint64, cents);
        QFETCH(bool, fraction);
        QString why;
        const auto v = Money::parseTyped(text, &why);
        if (cents >= 0) {
            QVERIFY(v);
            QCOMPARE(v->units(), cents * Money::kUnitsPerCent);
            return;
        }
        QVERIFY(!v);
        QCOMPARE(why.contains(QStringLiteral("mais de duas casas decimais")), fraction);
    }
};

QTEST_GUILESS_MAIN(tst_output_rules)
#include "tst_output_rules.moc"
