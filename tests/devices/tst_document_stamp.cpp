// The ordinary printer's selection rules and the stamp of a loose document.
#include "DocumentStamp.h"
#include "PrinterEmulator.h"
#include "PrinterSelection.h"
#include "PrinterService.h"
#include "TestApp.h"

class tst_document_stamp : public QObject {
    Q_OBJECT
private slots:
    void portsEntry_data() {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("driver");
        QTest::addColumn<QString>("port");
        QTest::newRow("driver, port and times") << "winspool,Ne00:,15,45"
                                                << "winspool"
                                                << "Ne00:";
        QTest::newRow("driver and port") << "winspool,LPT1:,"
                                         << "winspool"
                                         << "LPT1:";
        QTest::newRow("one comma") << "winspool,LPT1:"
                                   << "winspool"
                                   << "";
        QTest::newRow("no comma") << "winspool"
                                  << ""
                                  << "";
        QTest::newRow("empty") << ""
                               << ""
                               << "";
        QTest::newRow("empty driver") << ",USB001,"
                                      << ""
                                      << "USB001";
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
        QTest::newRow("change") << "Termica"
                                << "Laser"
                                << "winspool,USB001,15,45"
                                << "Termica,winspool,USB001";
        QTest::newRow("already current") << "Termica"
                                         << "Termica"
                                         << "winspool,USB001,15,45"
                                         << "";
        QTest::newRow("empty name") << ""
                                    << "Laser"
                                    << "winspool,USB001,15,45"
                                    << "";
        QTest::newRow("entry without port") << "Termica"
                                            << "Laser"
                                            << "winspool,USB001"
                                            << "";
        QTest::newRow("not installed") << "Termica"
                                       << "Laser"
                                       << ""
                                       << "";
    }

    void defaultDevice() {
        QFETCH(QString, name);
        QFETCH(QString, current);
        QFETCH(QString, entry);
        QFETCH(QString, device);
        QCOMPARE(PrinterSelection::defaultDevice(name, current, entry).value_or(QString()), device);
    }

    void stampLine_data() {
        QTest::addColumn<QString>("printCabecalho");
        QTest::addColumn<QString>("valor");
        QTest::addColumn<QString>("line");
        QTest::newRow("header of the counter") << "1"
                                               << "150,00"
                                               << "PMX A 23/11/2026        150,00R";
        QTest::newRow("no header") << "0"
                                   << "1.234.567,89"
                                   << "A 23/11/2026  1.234.567,89R";
        QTest::newRow("key missing") << ""
                                     << "0,01"
                                     << "A 23/11/2026          0,01R";
        QTest::newRow("header text of its own") << "PREFEITURA MUNICIPAL"
                                                << "10,00"
                                                << "PREFEITURA A 23/11/2026         10,00R";
    }

    void stampLine() {
        QFETCH(QString, printCabecalho);
        QFETCH(QString, valor);
        QFETCH(QString, line);
        const QString header = DocumentStamp::header(printCabecalho, QStringLiteral("PMX"));
        const QString l = DocumentStamp::line(header, QStringLiteral("A"), QDate(2026, 11, 23),
                                              *Money::parse(valor));
        QCOMPARE(l, line);
        QVERIFY(l.size() <= 40);
    }

    void stampOnThePrinter_data() {
        QTest::addColumn<QString>("modo");
        QTest::addColumn<QString>("valor");
        QTest::addColumn<bool>("document");
        QTest::addColumn<int>("outcome");
        QTest::addColumn<QString>("message");
        using O = DocumentStamp::Outcome;
        QTest::newRow("stamped") << "1"
                                 << "150,00" << true << int(O::Sent) << "";
        QTest::newRow("no document")
            << "1"
            << "150,00" << false << int(O::Sent) << PrinterService::kTempoExcedido;
        QTest::newRow("printer off") << "0"
                                     << "150,00" << true << int(O::PrinterOff) << "";
        QTest::newRow("zero") << "1"
                              << "0,00" << true << int(O::InvalidValue) << "";
        QTest::newRow("negative") << "1"
                                  << "-5,00" << true << int(O::InvalidValue) << "";
        QTest::newRow("not a value") << "1"
                                     << "abc" << true << int(O::InvalidValue) << "";
        QTest::newRow("wider than the stamp")
            << "1"
            << "100.000.000,00" << true << int(O::InvalidValue) << "";
    }

    void stampOnThePrinter() {
        QFETCH(QString, modo);
        QFETCH(QString, valor);
        QFETCH(bool, document);
        QFETCH(int, outcome);
        QFETCH(QString, message);
        TestApp app;
        app.setOption(QStringLiteral("Print"), QStringLiteral("impressora"),
                      QStringLiteral("bematech"));
        app.setOption(QStringLiteral("Print"), QStringLiteral("modo"), modo);
        app.setOption(QStringLiteral("Print"), QStringLiteral("cabecalho"), QStringLiteral("1"));
        app.setOption(QStringLiteral("Mensagem"), QStringLiteral("cabecalho"),
                      QStringLiteral("PMX"));
        app.setOption(QStringLiteral("Export"), QStringLiteral("guiche"), QStringLiteral("B"));
        app.ctx().workingDate = QDate(2026, 11, 20);
        PrinterEmulator emulator(PrinterEmulator::Model::Bematech);
        emulator.setDocument(document);
        PrinterService service(app.ctx());
        service.makeTransport = [&emulator] { return std::make_unique<MemoryTransport>(emulator); };
        service.sleep = [](int) {};
        service.documentTimeoutMs = 50;
        QString sent;
        QCOMPARE(int(DocumentStamp::stamp(app.ctx(), service, Money::parse(valor), &sent)),
                 outcome);
        const bool stamped = outcome == int(DocumentStamp::Outcome::Sent) && document;
        QCOMPARE(emulator.documents(),
                 stamped ? QStringList{QStringLiteral("PMX B 20/11/2026        150,00R")}
                         : QStringList{});
        if (message.isEmpty())
            QVERIFY(app.dialogs().shown().isEmpty());
        else
            QCOMPARE(app.dialogs().last().text, message);
    }
};

QTEST_MAIN(tst_document_stamp)
#include "tst_document_stamp.moc"
