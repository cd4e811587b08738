// The counter's printing end to end: opening block, stamps and tape lines of a payment, the
// coupon, the re-stamp and the closing block, as the emulated printer receives them.
#include "AuditChain.h"
#include "AuthCounterPrinter.h"
#include "CounterSession.h"
#include "DemoData.h"
#include "DescriptionTexts.h"
#include "OpenCounter.h"
#include "PaymentRecorder.h"
#include "PrinterEmulator.h"
#include "PrinterService.h"
#include "PrinterWorker.h"
#include "TestApp.h"
#include "TestCodes.h"
#include "TextFile.h"
#include "clsAutenticacoes.h"
#include "clsMovimento.h"

#include <QDir>
#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlQuery>

namespace {
const QString kGuia = QStringLiteral("81660000003124004262026113058888888888888888");
const QString kBoleto = QStringLiteral("00193165100000089151234500000000000000000000");

// The shared counter on its emulated printer, the coupon on: [Print] impressora and modo as given.
void print(OpenCounter& c, const QString& modelo = QStringLiteral("bematech"),
           const QString& modo = QStringLiteral("1")) {
    c.app.setOption(QStringLiteral("Print"), QStringLiteral("impressora"), modelo);
    c.app.setOption(QStringLiteral("Print"), QStringLiteral("modo"), modo);
    c.app.setOption(QStringLiteral("Print"), QStringLiteral("print_cupom"), QStringLiteral("1"));
}

QList<qint32> pendingNumbers(OpenCounter& c) {
    QList<qint32> out;
    const auto pending = c.session.pendentes();
    for (const auto& p : pending.value())
        out << p.autentica;
    return out;
}

int stampCount(OpenCounter& c, qint32 idrecebe) {
    return clsAutenticacoes::estado(c.app.db(), idrecebe).value().vezes;
}
} // namespace

class tst_counter_printing : public QObject {
    Q_OBJECT
private slots:
    // With the printer switched off in the settings a payment leaves no document waiting for a
    // re-stamp and says nothing about the printer.
    void printerSwitchedOffLeavesNothingToReStamp() {
        OpenCounter c(TestApp::Backend::SQLite, OpenCounter::Printer::Bematech);
        print(c, QStringLiteral("bematech"), QStringLiteral("0"));
        QVERIFY(c.open());
        QVERIFY(c.session.ler(kBoleto).accepted);
        QVERIFY(c.session.gravar());
        QCOMPARE(c.missed, QList<QList<int>>{{}});
        QCOMPARE(c.app.dialogs().texts(), QStringList{Desc::kRegistroGravado});
        QVERIFY(c.emulator.documents().isEmpty());
    }

    void wholeDay() {
        OpenCounter c(TestApp::Backend::SQLite, OpenCounter::Printer::Bematech);
        print(c);
        QVERIFY(c.open());
        QCOMPARE(c.emulator.tape().mid(0, 5),
                 (QStringList{QString(40, QLatin1Char('=')),
                              QStringLiteral("=      ABERTURA DE MOVIMENTO: 001      ="),
                              QStringLiteral("=              GUICHE:  3              ="),
                              QString(40, QLatin1Char('=')),
                              QStringLiteral("DATA/HORA: 23/11/2026 10:00:00")}));

        QVERIFY(c.session.ler(kGuia).accepted);
        QVERIFY(c.session.ler(kBoleto).accepted);
        c.session.tender(Money::fromReais(500));
        QVERIFY(c.session.gravar());
        QCOMPARE(c.emulator.documents(),
                 (QStringList{QStringLiteral("PMX 3 0001 23/11/2026        312,40R"),
                              QStringLiteral("PMX 3 0002 23/11/2026         89,15R")}));
        const QStringList tape = c.emulator.tape();
        for (const char* line :
             {"0001 23/11/2026 TAXAS DIVE        312,40",
              "TOTAL PAGO:                       500,00",
              "TROCO:                             98,45", " OPR: ANA", "DATA/HORA: 23-11-26 10:00"})
            QVERIFY2(tape.contains(QLatin1String(line)), line);
        for (const QString& line : tape)
            QVERIFY2(line.size() <= 40, qPrintable(line));

        QVERIFY(c.session.day().encerrar());
        QVERIFY(c.session.day().imprimirEncerramento());
        // The closing is the four single lines, one after the other, and no block of its own.
        const QStringList closing = {QStringLiteral("(+)========== ARRECADADO -->      401,55"),
                                     QStringLiteral("(+)========== ENTRADAS   -->        0,00"),
                                     QStringLiteral("(-)========== RETIRADAS  -->        0,00"),
                                     QStringLiteral("(=)========== TOTAL/DIA  -->      401,55")};
        const QStringList tapeAfter = c.emulator.tape();
        const qsizetype at = tapeAfter.indexOf(closing.first());
        QVERIFY(at >= 0);
        QCOMPARE(tapeAfter.mid(at, 4), closing);
        QVERIFY(!tapeAfter.contains(QStringLiteral("                     -------------------")));
        QVERIFY(c.emulator.attributesOff());
        QVERIFY(!c.emulator.inDocumentMode());
    }

    // A customer of three documents with the printer silent: one message, the payment kept, the
    // documents kept in the database as unstamped. With the printer back the day's unstamped
    // documents go out in order after the tape lines kept meanwhile, and each confirmed stamp
    // is counted.
    void silentPrinterAndRestamp() {
        OpenCounter c(TestApp::Backend::SQLite, OpenCounter::Printer::Bematech);
        print(c);
        QVERIFY(c.open());
        c.emulator.setSilent(true);
        QVERIFY(c.session.ler(kGuia).accepted);
        QVERIFY(c.session.ler(kBoleto).accepted);
        QVERIFY(c.session.adicionarDigitado(7, QStringLiteral("TAXA DE EXPEDIENTE"),
                                            Money::fromReais(5)));
        const auto rows = c.session.gravar();
        QVERIFY(rows);
        QCOMPARE(c.app.dialogs().texts(),
                 QStringList{QStringLiteral("Registro Gravado!!!\n\nProblemas na autenticação do "
                                            "documento.\nA autenticadora não responde: verifique "
                                            "se está ligada e se o cabo está conectado.")});
        QCOMPARE(c.app.count(QStringLiteral("Recebimentos")), 3);
        QCOMPARE(c.missed, (QList<QList<int>>{{1, 2, 3}}));
        QCOMPARE(c.stamped, (QList<QList<int>>{{}}));
        QVERIFY(c.emulator.documents().isEmpty());
        QCOMPARE(pendingNumbers(c), (QList<qint32>{1, 2, 3}));

        c.emulator.setSilent(false);
        c.app.dialogs().clear();
        QCOMPARE(c.session.autenticarPendentes().result, ReceiptStamps::Result::Enviado);
        QCOMPARE(c.emulator.documents(),
                 (QStringList{QStringLiteral("PMX 3 0001 23/11/2026        312,40R"),
                              QStringLiteral("PMX 3 0002 23/11/2026         89,15R"),
                              QStringLiteral("PMX 3 0003 23/11/2026          5,00R")}));
        QCOMPARE(c.stamped.last(), (QList<int>{1, 2, 3}));
        QVERIFY(pendingNumbers(c).isEmpty());
        QCOMPARE(stampCount(c, rows->at(2).idrecebe), 1);
        QCOMPARE(c.session.autenticarPendentes().result, ReceiptStamps::Result::Nenhum);
        // The tape lines and the coupon kept while the printer was off come first, then the
        // re-stamp's own tape lines.
        const QStringList tape = c.emulator.tape();
        const QString line1 = QStringLiteral("0001 23/11/2026 TAXAS DIVE        312,40");
        QCOMPARE(tape.count(line1), 2);
        QVERIFY(tape.indexOf(line1) < tape.indexOf(QStringLiteral(" OPR: ANA")));
        QVERIFY(tape.indexOf(QStringLiteral(" OPR: ANA")) < tape.lastIndexOf(line1));
    }

    // A document already stamped is asked about first and goes out again only with "Sim"; each
    // confirmed stamp is counted, and the counts are in the audit chain.
    void restampAsksAndCounts() {
        OpenCounter c(TestApp::Backend::SQLite, OpenCounter::Printer::Bematech);
        print(c);
        QVERIFY(c.open());
        QVERIFY(c.session.ler(kGuia).accepted);
        QVERIFY(c.session.ler(kBoleto).accepted);
        QVERIFY(c.session.adicionarDigitado(7, QStringLiteral("TAXA DE EXPEDIENTE"),
                                            Money::fromReais(5)));
        const auto rows = c.session.gravar();
        QVERIFY(rows);
        QCOMPARE(c.emulator.documents().size(), 3);
        QCOMPARE(stampCount(c, rows->at(1).idrecebe), 1);
        auto o = c.session.reautenticar(2);
        QCOMPARE(o.result, ReceiptStamps::Result::PrecisaConfirmar);
        QCOMPARE(o.texto, QStringLiteral("0002 já autenticado 1 vez(es), a última em 23/11/2026 "
                                         "10:00.\nAutenticar novamente?"));
        QCOMPARE(o.icon, DialogIcon::Question);
        QCOMPARE(c.emulator.documents().size(), 3);
        QCOMPARE(c.session.reautenticar(2, ReceiptStamps::Repetir::Nao).result,
                 ReceiptStamps::Result::Nenhum);
        QCOMPARE(c.emulator.documents().size(), 3);
        QCOMPARE(c.session.reautenticar(2, ReceiptStamps::Repetir::Sim).result,
                 ReceiptStamps::Result::Enviado);
        QCOMPARE(c.emulator.documents().last(),
                 QStringLiteral("PMX 3 0002 23/11/2026         89,15R"));
        QCOMPARE(stampCount(c, rows->at(1).idrecebe), 2);
        QCOMPARE(stampCount(c, rows->at(0).idrecebe), 1);
        // The last payment's three documents: all stamped, so the question names each.
        o = c.session.reautenticarUltimo();
        QCOMPARE(o.result, ReceiptStamps::Result::PrecisaConfirmar);
        QVERIFY(o.texto.startsWith(QStringLiteral("0001 já autenticado 1 vez(es)")));
        QVERIFY(o.texto.contains(QStringLiteral("\n0002 já autenticado 2 vez(es)")));
        o = c.session.reautenticar(9);
        QCOMPARE(o.result, ReceiptStamps::Result::NaoEncontrado);
        QCOMPARE(o.texto, QStringLiteral("Autenticação 0009 não encontrada neste movimento."));
        // A stamp count is evidence: the counts are in the audit chain.
        QVERIFY(AuditChain::audit(c.app.db()).ok);
        QVERIFY(c.app.db().SQLExecute(QStringLiteral("UPDATE Autenticacoes SET VEZES = 0")));
        QVERIFY(!AuditChain::audit(c.app.db()).ok);
    }

    // A stamp the printer does not confirm is not counted; one it confirms later is.
    void onlyConfirmedStampsCount() {
        OpenCounter c(TestApp::Backend::SQLite, OpenCounter::Printer::Bematech);
        print(c);
        QVERIFY(c.open());
        c.emulator.setDocument(false); // the document never comes: "Tempo maior que o permitido."
        c.service->documentTimeoutMs = 200;
        QVERIFY(c.session.ler(kBoleto).accepted);
        const auto rows = c.session.gravar();
        QVERIFY(rows);
        QVERIFY(c.app.dialogs().texts().contains(QStringLiteral("Tempo maior que o permitido.")));
        QCOMPARE(stampCount(c, rows->first().idrecebe), 0);
        QCOMPARE(pendingNumbers(c), QList<qint32>{1});
        c.emulator.setDocument(true);
        QCOMPARE(c.session.reautenticarUltimo().result, ReceiptStamps::Result::Enviado);
        QCOMPARE(stampCount(c, rows->first().idrecebe), 1);
        QVERIFY(pendingNumbers(c).isEmpty());
    }

    // The printer off for three customers: each is told once, in the box that says the payment
    // was recorded, why nothing was stamped, with the cause's icon. The same through the
    // printer's own thread, where nothing else pops up afterwards.
    void printerOffOneMessagePerCustomer_data() {
        QTest::addColumn<QString>("fault");
        QTest::addColumn<bool>("thread");
        QTest::addColumn<QString>("cause");
        QTest::addColumn<int>("icon");
        const QString doc = QStringLiteral("Problemas na autenticação do documento.\n");
        const struct {
            const char* name;
            const char* fault;
            QString cause;
            DialogIcon icon;
        } rows[] = {
            {"port refused", "refused",
             QStringLiteral("Problemas ao Abrir a Porta de Comunicação.\nA porta \"/dev/usb/lp0\" "
                            "recusou a conexão ou não existe: confira a porta em Opções e o cabo."),
             DialogIcon::Critical},
            {"no answer", "silent",
             doc + QStringLiteral("A autenticadora não responde: verifique se está ligada e se o "
                                  "cabo está conectado."),
             DialogIcon::Critical},
            {"no paper", "paper", doc + QStringLiteral("A autenticadora está sem papel."),
             DialogIcon::Exclamation},
            {"off line", "offline",
             doc + QStringLiteral("A autenticadora está fora de linha (off-line)."),
             DialogIcon::Exclamation}};
        for (const auto& r : rows)
            for (bool thread : {false, true})
                QTest::newRow(qPrintable(QString::fromLatin1(r.name) +
                                         (thread ? QStringLiteral(", own thread") : QString())))
                    << r.fault << thread << r.cause << int(r.icon);
    }
    void printerOffOneMessagePerCustomer() {
        QFETCH(QString, fault);
        QFETCH(bool, thread);
        QFETCH(QString, cause);
        QFETCH(int, icon);
        OpenCounter c(TestApp::Backend::SQLite, OpenCounter::Printer::Bematech);
        print(c);
        c.app.setOption(QStringLiteral("Print"), QStringLiteral("porta"),
                        QStringLiteral("/dev/usb/lp0"));
        PrinterWorker worker(c.app.ctx());
        AuthCounterPrinter threaded(c.app.ctx(), worker);
        CounterSession s(c.app.ctx(), thread ? &threaded : c.printer.get());
        QSignalSpy told(&worker, &PrinterWorker::aviso);
        for (PrinterService* p : {c.service.get(), &worker.service()}) {
            p->makeTransport = [&c, fault]() -> std::unique_ptr<Transport> {
                if (fault == QLatin1String("refused"))
                    return nullptr;
                return std::make_unique<MemoryTransport>(c.emulator);
            };
            p->replyTimeoutMs = 100;
        }
        c.emulator.setSilent(fault == QLatin1String("silent"));
        c.emulator.setPaperOut(fault == QLatin1String("paper"));
        c.emulator.setOffline(fault == QLatin1String("offline"));
        QVERIFY(s.day().abrir()); // the opening block's own message is not the customers'
        QTRY_VERIFY(!worker.ocupada());
        told.clear();
        c.app.dialogs().clear();
        for (int i = 0; i < 3; ++i) {
            const QString third = TestCodes::guide(QStringLiteral("0426"), 1000,
                                                   QStringLiteral("20261130"), QString(17, u'3'));
            QVERIFY(s.ler(i == 0 ? kGuia : i == 1 ? kBoleto : third).accepted);
            QVERIFY(s.gravar());
        }
        if (thread)
            QTRY_VERIFY(!worker.ocupada());
        QCOMPARE(c.app.dialogs().shown().size(), 3);
        for (const auto& shown : c.app.dialogs().shown()) {
            QCOMPARE(shown.title, QStringLiteral("Gravar Registro"));
            QCOMPARE(shown.text, QStringLiteral("Registro Gravado!!!\n\n") + cause);
            QCOMPARE(int(shown.icon), icon);
        }
        QCOMPARE(told.count(), 0);
        QVERIFY(c.emulator.documents().isEmpty());
    }

    void textModelCoupon() {
        OpenCounter c(TestApp::Backend::SQLite, OpenCounter::Printer::Bematech);
        print(c, QStringLiteral("txt"));
        QVERIFY(c.open());
        QVERIFY(c.session.ler(kBoleto).accepted);
        c.session.tender(Money::fromReais(100));
        QVERIFY(c.session.gravar());
        const QStringList files = QDir(c.app.path(QStringLiteral("Cupons"))).entryList(QDir::Files);
        QCOMPARE(files.size(), 1);
        QFile f(c.app.path(QStringLiteral("Cupons/")) + files.first());
        QVERIFY(f.open(QIODevice::ReadOnly));
        const QByteArray text = f.readAll();
        QVERIFY(text.contains("\r\nTROCO:                             10,85\r\n"));
        QVERIFY(text.endsWith("\r\n"));
    }

    // The closing prints the audit chain's last hash and leaves a copy of the closed database;
    // only the newest 30 copies stay.
    void closingAnchorsTheChainAndCopiesTheDatabase() {
        OpenCounter c(TestApp::Backend::SQLite, OpenCounter::Printer::Bematech);
        print(c);
        const QString copies = c.app.path(QStringLiteral("copias"));
        QVERIFY(QDir().mkpath(copies));
        for (int day = 1; day <= 30; ++day)
            QVERIFY(TextFile::writeAll(
                QDir(copies).filePath(
                    QStringLiteral("caixa-202610%1-180000.db").arg(day, 2, 10, QLatin1Char('0'))),
                {}));
        QVERIFY(c.open());
        QVERIFY(c.session.ler(kGuia).accepted);
        QVERIFY(c.session.gravar());
        QVERIFY(c.session.day().encerrar());
        QVERIFY(c.session.day().imprimirEncerramento());
        // The seal is the chain's hash when the day was summed; the closing's own rows (the
        // day's row, its act) come after it in the chain.
        const QString hash = c.session.day().movimento().HASH_CADEIA;
        QCOMPARE(hash.size(), 64);
        QVERIFY(hash != *AuditChain::lastHash(c.app.db()));
        const AuditChain::Report r =
            AuditChain::audit(c.app.db(), c.session.day().movimento().ID, hash);
        QVERIFY2(r.ok && r.anchorFound, qPrintable(r.problems.join(QLatin1Char('\n'))));
        QVERIFY(c.emulator.tape().contains(QStringLiteral("CADEIA: ") + hash.left(32)));
        QVERIFY(c.emulator.tape().contains(QString(8, QLatin1Char(' ')) + hash.mid(32)));
        clsMovimento stored(c.app.db());
        QVERIFY(stored.SQLSelect(c.session.day().movimento().ID));
        QCOMPARE(stored.HASH_CADEIA, hash);

        const QStringList kept =
            QDir(copies).entryList({QStringLiteral("caixa-*.db")}, QDir::Files, QDir::Name);
        QCOMPARE(kept.size(), 30);
        QVERIFY(!kept.contains(QStringLiteral("caixa-20261001-180000.db")));
        QCOMPARE(kept.last(), QStringLiteral("caixa-20261123-100000.db"));
        {
            QSqlDatabase copy =
                QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("copy"));
            copy.setDatabaseName(QDir(copies).filePath(kept.last()));
            QVERIFY(copy.open());
            QSqlQuery q(copy);
            QVERIFY(q.exec(QStringLiteral("SELECT STATUS, HASH_CADEIA FROM Movimento")) &&
                    q.next());
            QCOMPARE(q.value(0).toString(), QStringLiteral("FECHADO")); // the closed day itself
            QCOMPARE(q.value(1).toString(), hash);
        }
        QSqlDatabase::removeDatabase(QStringLiteral("copy"));
    }
};

QTEST_MAIN(tst_counter_printing)
#include "tst_counter_printing.moc"
