// The ordinary printer's selection rules and the stamp of a loose document.
#include "DocumentStamp.h"
#include "PrinterSelection.h"
#include "TestApp.h"

class tst_document_stamp : public QObject {
    Q_OBJECT
private slots:
    void portsEntry_data() {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("driver");
        QTest::addColumn<QString>("port");
        auto row = [](const char* tag, const char* entry, const char* driver, const char* port) {
            QTest::newRow(tag) << entry << driver << port;
        };
        row("driver, port and times", "winspool,Ne00:,15,45", "winspool", "Ne00:");
        row("driver and port", "winspool,LPT1:,", "winspool", "LPT1:");
        row("one comma", "winspool,LPT1:", "winspool", "");
        row("no comma", "winspool", "", "");
        row("empty driver", ",USB001,", "", "USB001");
    }
    void portsEntry() {
        QFETCH(QString, entry);
        QFETCH(QString, driver);
        QFETCH(QString, port);
        const auto e = PrinterSelection::splitPortsEntry(entry);
        QCOMPARE(e.driver, driver);
        QCOMPARE(e.port, port);
    }

    void defaultDevice_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("current");
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("device"); // empty: no change
        auto row = [](const char* tag, const char* name, const char* current, const char* entry,
                      const char* device) {
            QTest::newRow(tag) << name << current << entry << device;
        };
        row("change", "Termica", "Laser", "winspool,USB001,15,45", "Termica,winspool,USB001");
        row("already current", "Termica", "Termica", "winspool,USB001,15,45", "");
        row("empty name", "", "Laser", "winspool,USB001,15,45", "");
        row("entry without port", "Termica", "Laser", "winspool,USB001", "");
        row("not installed", "Termica", "Laser", "", "");
    }
    void defaultDevice() {
        QFETCH(QString, name);
        QFETCH(QString, current);
        QFETCH(QString, entry);
        QFETCH(QString, device);
        QCOMPARE(PrinterSelection::defaultDevice(name, current, entry).value_or(QString()), device);
    }

    // The line, the amounts a stamp refuses and the printer switched off in the settings.
    void stamp_data() {
        QTest::addColumn<QString>("modo");
        QTest::addColumn<QString>("printCabecalho");
        QTest::addColumn<QString>("valor");
        QTest::addColumn<int>("outcome");
        QTest::addColumn<QString>("line");
        using O = DocumentStamp::Outcome;
        auto row = [](const char* tag, const char* modo, const char* cab, const char* valor, O o,
                      const char* line) {
            QTest::newRow(tag) << modo << cab << valor << int(o) << line;
        };
        row("header of the counter", "1", "1", "150,00", O::Sent,
            "PMX B 20/11/2026        150,00R");
        row("no header", "1", "0", "1.234.567,89", O::Sent, "B 20/11/2026  1.234.567,89R");
        row("key missing", "1", "", "0,01", O::Sent, "B 20/11/2026          0,01R");
        row("header text of its own", "1", "PREFEITURA MUNICIPAL", "10,00", O::Sent,
            "PREFEITURA B 20/11/2026         10,00R");
        row("printer off", "0", "1", "150,00", O::PrinterOff, "");
        row("zero", "1", "1", "0,00", O::InvalidValue, "");
        row("negative", "1", "1", "-5,00", O::InvalidValue, "");
        row("not a value", "1", "1", "abc", O::InvalidValue, "");
        row("wider than the stamp", "1", "1", "100.000.000,00", O::InvalidValue, "");
    }
    void stamp() {
        QFETCH(QString, modo);
        QFETCH(QString, printCabecalho);
        QFETCH(QString, valor);
        QFETCH(int, outcome);
        QFETCH(QString, line);
        TestApp app;
        app.setOption(QStringLiteral("Print"), QStringLiteral("modo"), modo);
        app.setOption(QStringLiteral("Print"), QStringLiteral("cabecalho"), printCabecalho);
        app.setOption(QStringLiteral("Mensagem"), QStringLiteral("cabecalho"),
                      QStringLiteral("PMX"));
        app.setOption(QStringLiteral("Export"), QStringLiteral("guiche"), QStringLiteral("B"));
        app.ctx().workingDate = QDate(2026, 11, 20);
        QString text;
        QCOMPARE(int(DocumentStamp::preparar(app.ctx(), Money::parse(valor), &text)), outcome);
        QCOMPARE(text, line);
        QVERIFY(text.size() <= 40);
        QVERIFY(app.dialogs().shown().isEmpty());
    }
};

QTEST_MAIN(tst_document_stamp)
#include "tst_document_stamp.moc"
