// The counter's printing end to end: opening block, stamps and tape lines of a payment, the
// coupon and the closing block, as the emulated printer receives them.
#include "AuthCounterPrinter.h"
#include "CounterSession.h"
#include "DemoData.h"
#include "PaymentRecorder.h"
#include "PrinterEmulator.h"
#include "PrinterService.h"
#include "TestApp.h"

#include <QDir>

class tst_counter_printing : public QObject {
    Q_OBJECT
private slots:
    // With the printer switched off in the settings a payment leaves no document waiting for a
    // re-stamp and says nothing about the printer.
    void printerSwitchedOffLeavesNothingToReStamp() {
        TestApp app;
        QVERIFY(DemoData::seed(app.ctx(), nullptr, nullptr));
        app.setOption(QStringLiteral("Print"), QStringLiteral("impressora"),
                      QStringLiteral("bematech"));
        app.setOption(QStringLiteral("Print"), QStringLiteral("modo"), QStringLiteral("0"));
        app.ctx().workingDate = QDate(2026, 11, 23);
        PrinterService service(app.ctx());
        AuthCounterPrinter printer(app.ctx(), service);
        QList<int> missed = {-1};
        printer.autenticados = [&](const QList<int>&, const QList<int>& n) { missed = n; };
        CounterSession s(app.ctx(), &printer);
        QVERIFY(s.day().abrir());
        app.dialogs().clear();
        QVERIFY(s.ler(QStringLiteral("00193165100000089151234500000000000000000000")).accepted);
        QVERIFY(s.gravar());
        QCOMPARE(missed, QList<int>{});
        QCOMPARE(app.dialogs().texts(), QStringList{PaymentRecorder::kGravado});
    }

    void wholeDay() {
        TestApp app;
        QVERIFY(DemoData::seed(app.ctx(), nullptr, nullptr));
        app.setOption(QStringLiteral("Print"), QStringLiteral("impressora"),
                      QStringLiteral("bematech"));
        app.setOption(QStringLiteral("Print"), QStringLiteral("modo"), QStringLiteral("1"));
        app.setOption(QStringLiteral("Print"), QStringLiteral("print_cupom"), QStringLiteral("1"));
        app.setOption(QStringLiteral("Mensagem"), QStringLiteral("cabecalho"),
                      QStringLiteral("PMX"));
        app.setOption(QStringLiteral("Export"), QStringLiteral("guiche"), QStringLiteral("3"));
        app.ctx().workingDate = QDate(2026, 11, 23);
        app.ctx().userName = QStringLiteral("ANA");
        PrinterEmulator emulator(PrinterEmulator::Model::Bematech);
        emulator.setDocument(true);
        PrinterService service(app.ctx());
        service.makeTransport = [&] { return std::make_unique<MemoryTransport>(emulator); };
        AuthCounterPrinter printer(app.ctx(), service);
        service.abrirPorta();
        CounterSession s(app.ctx(), &printer);

        QVERIFY(s.day().abrir());
        QCOMPARE(emulator.tape().mid(0, 4),
                 (QStringList{QString(40, QLatin1Char('=')),
                              QStringLiteral("=      ABERTURA DE MOVIMENTO: 001      ="),
                              QStringLiteral("=              GUICHE:  3              ="),
                              QString(40, QLatin1Char('='))}));
        QCOMPARE(emulator.tape().at(4), QStringLiteral("DATA/HORA: 23/11/2026 10:00:00"));

        QVERIFY(s.ler(QStringLiteral("81660000003124004262026113058888888888888888")).accepted);
        QVERIFY(s.ler(QStringLiteral("00193165100000089151234500000000000000000000")).accepted);
        s.tender(Money::fromReais(500));
        QVERIFY(s.gravar());
        QCOMPARE(emulator.documents(),
                 (QStringList{QStringLiteral("PMX 3 0001 23/11/2026        312,40R"),
                              QStringLiteral("PMX 3 0002 23/11/2026         89,15R")}));
        const QStringList tape = emulator.tape();
        QVERIFY(tape.contains(QStringLiteral("0001 23/11/2026 TAXAS DIVE        312,40")));
        QVERIFY(tape.contains(QStringLiteral("TOTAL PAGO:                       500,00")));
        QVERIFY(tape.contains(QStringLiteral("TROCO:                             98,45")));
        QVERIFY(tape.contains(QStringLiteral(" OPR: ANA")));
        QVERIFY(tape.contains(QStringLiteral("DATA/HORA: 23-11-26 10:00")));
        for (const QString& line : tape)
            QVERIFY2(line.size() <= 40, qPrintable(line));

        QVERIFY(s.day().encerrar());
        QVERIFY(s.day().imprimirEncerramento());
        QVERIFY(
            emulator.tape().contains(QStringLiteral("(+)========= ARRECADADO -->       401,55")));
        QVERIFY(
            emulator.tape().contains(QStringLiteral("(=)========= TOTAL/DIA  -->       401,55")));
        QVERIFY(emulator.attributesOff());
        QVERIFY(!emulator.inDocumentMode());
    }

    // A customer of three documents with the printer switched off: one message, the payment
    // kept, the documents named for the re-stamp. With the printer back, the last payment and
    // one receipt by its number are stamped again, after the tape lines kept meanwhile.
    void switchedOffPrinterAndRestamp() {
        TestApp app;
        QVERIFY(DemoData::seed(app.ctx(), nullptr, nullptr));
        app.setOption(QStringLiteral("Print"), QStringLiteral("impressora"),
                      QStringLiteral("bematech"));
        app.setOption(QStringLiteral("Print"), QStringLiteral("modo"), QStringLiteral("1"));
        app.setOption(QStringLiteral("Print"), QStringLiteral("print_cupom"), QStringLiteral("1"));
        app.setOption(QStringLiteral("Mensagem"), QStringLiteral("cabecalho"),
                      QStringLiteral("PMX"));
        app.setOption(QStringLiteral("Export"), QStringLiteral("guiche"), QStringLiteral("3"));
        app.ctx().workingDate = QDate(2026, 11, 23);
        PrinterEmulator emulator(PrinterEmulator::Model::Bematech);
        emulator.setDocument(true);
        PrinterService service(app.ctx());
        service.makeTransport = [&] { return std::make_unique<MemoryTransport>(emulator); };
        service.sleep = [](int) {};
        AuthCounterPrinter printer(app.ctx(), service);
        QList<QList<int>> missed, stamped;
        printer.autenticados = [&](const QList<int>& done, const QList<int>& n) {
            stamped << done;
            missed << n;
        };
        CounterSession s(app.ctx(), &printer);
        QVERIFY(s.day().abrir());

        emulator.setSilent(true);
        app.dialogs().clear();
        QVERIFY(s.ler(QStringLiteral("81660000003124004262026113058888888888888888")).accepted);
        QVERIFY(s.ler(QStringLiteral("00193165100000089151234500000000000000000000")).accepted);
        QVERIFY(s.adicionarDigitado(7, QStringLiteral("TAXA DE EXPEDIENTE"), Money::fromReais(5)));
        QVERIFY(s.gravar());
        QCOMPARE(app.dialogs().texts(),
                 (QStringList{PaymentRecorder::kGravado, PrinterService::kAutenticacaoFalhou}));
        QCOMPARE(app.count(QStringLiteral("Recebimentos")), 3);
        QCOMPARE(missed, (QList<QList<int>>{{1, 2, 3}}));
        QCOMPARE(stamped, (QList<QList<int>>{{}}));
        QVERIFY(emulator.documents().isEmpty());

        emulator.setSilent(false);
        app.dialogs().clear();
        QVERIFY(s.reautenticarUltimo());
        QCOMPARE(emulator.documents(),
                 (QStringList{QStringLiteral("PMX 3 0001 23/11/2026        312,40R"),
                              QStringLiteral("PMX 3 0002 23/11/2026         89,15R"),
                              QStringLiteral("PMX 3 0003 23/11/2026          5,00R")}));
        QCOMPARE(missed.last(), QList<int>{});
        QCOMPARE(stamped.last(), (QList<int>{1, 2, 3}));
        // The tape lines and the coupon kept while the printer was off come first, then the
        // re-stamp's own tape lines.
        const QStringList tape = emulator.tape();
        const QString line1 = QStringLiteral("0001 23/11/2026 TAXAS DIVE        312,40");
        QCOMPARE(tape.count(line1), 2);
        QVERIFY(tape.indexOf(line1) < tape.indexOf(QStringLiteral(" OPR: ")));
        QVERIFY(tape.indexOf(QStringLiteral(" OPR: ")) < tape.lastIndexOf(line1));
        QVERIFY(s.reautenticar(2));
        QCOMPARE(emulator.documents().last(),
                 QStringLiteral("PMX 3 0002 23/11/2026         89,15R"));
        QVERIFY(!s.reautenticar(9));
        QCOMPARE(app.dialogs().texts(),
                 QStringList{QStringLiteral("Autenticação 0009 não encontrada neste movimento.")});
    }

    void textModelCoupon() {
        TestApp app;
        QVERIFY(DemoData::seed(app.ctx(), nullptr, nullptr));
        app.setOption(QStringLiteral("Print"), QStringLiteral("impressora"), QStringLiteral("txt"));
        app.setOption(QStringLiteral("Print"), QStringLiteral("modo"), QStringLiteral("1"));
        app.setOption(QStringLiteral("Print"), QStringLiteral("print_cupom"), QStringLiteral("1"));
        app.ctx().workingDate = QDate(2026, 11, 23);
        PrinterService service(app.ctx());
        AuthCounterPrinter printer(app.ctx(), service);
        CounterSession s(app.ctx(), &printer);
        QVERIFY(s.day().abrir());
        QVERIFY(s.ler(QStringLiteral("00193165100000089151234500000000000000000000")).accepted);
        s.tender(Money::fromReais(100));
        QVERIFY(s.gravar());
        const QStringList files = QDir(app.path(QStringLiteral("Cupons"))).entryList(QDir::Files);
        QCOMPARE(files.size(), 1);
        QFile f(app.path(QStringLiteral("Cupons/")) + files.first());
        QVERIFY(f.open(QIODevice::ReadOnly));
        const QByteArray text = f.readAll();
        QVERIFY(text.contains("TROCO:                             10,85\r\n"));
    }
};

QTEST_MAIN(tst_counter_printing)
#include "tst_counter_printing.moc"
