// The authenticating printer: line composers, both protocols' bytes through the emulator in
// memory, over a pseudo-terminal and over TCP, and every message the operator sees.
#include "BematechProtocol.h"
#include "Cp850.h"
#include "PrinterBytes.h"
#include "PrinterEmulator.h"
#include "PrinterService.h"
#include "PrinterWorker.h"
#include "TestApp.h"
#include "clsAutenticadora.h"

#include <QFile>
#include <QSignalSpy>
#include <QThread>

using namespace PrinterBytes;

namespace {
// The operator's words for each cause: the system's headline, then what was found.
const QString kRecusada = QStringLiteral(
    "Problemas ao Abrir a Porta de Comunicação.\nA porta \"%1\" recusou a conexão ou não existe: "
    "confira a porta em Opções e o cabo.");
const QString kSemResposta =
    QStringLiteral("%1\nA autenticadora não responde: verifique se está ligada e se o cabo está "
                   "conectado.");
const QString kForaDeLinha = QStringLiteral("%1\nA autenticadora está fora de linha (off-line).");
const QString kSemPapel = QStringLiteral("%1\nA autenticadora está sem papel.");
const QString kDoc = QStringLiteral("Problemas na autenticação do documento.");
const QString kTexto = QStringLiteral("Problemas na impressão do texto.");

clsAutenticadora filled() {
    clsAutenticadora a;
    a.MENSAGEM = QStringLiteral("PMX");
    a.GUICHE = QStringLiteral("A");
    a.SEQ_REG = QStringLiteral("0007");
    a.DATA_PAGTO = QStringLiteral("23/11/2026");
    a.VALOR_DOC = QStringLiteral("    1.234,56");
    a.NOME_GUIA = QStringLiteral("IPTU                ");
    a.VALOR_TOTAL = QStringLiteral("   1.234,56");
    a.VALOR_RECEBIDO = QStringLiteral("   5.000,00");
    a.VALOR_ENTRADA = QStringLiteral("     100,00");
    a.VALOR_SAIDA = QStringLiteral("      20,00");
    a.SEQ_MOV = QStringLiteral("012");
    return a;
}

struct Bench {
    TestApp app;
    std::unique_ptr<PrinterEmulator> owned;
    PrinterEmulator& emulator;
    PrinterService service{app.ctx()};
    MemoryTransport* last = nullptr;
    explicit Bench(const QString& model = QStringLiteral("bematech"),
                   const QString& porta = QStringLiteral("LPT1"))
        : owned(std::make_unique<PrinterEmulator>(model == QLatin1String("quattro")
                                                      ? PrinterEmulator::Model::Quattro
                                                      : PrinterEmulator::Model::Bematech)),
          emulator(*owned) {
        app.setOption(QStringLiteral("Print"), QStringLiteral("impressora"), model);
        app.setOption(QStringLiteral("Print"), QStringLiteral("modo"), QStringLiteral("1"));
        app.setOption(QStringLiteral("Print"), QStringLiteral("porta"), porta);
        service.makeTransport = [this] {
            auto t = std::make_unique<MemoryTransport>(emulator);
            last = t.get();
            return t;
        };
        service.sleep = [](int) {};
        service.documentTimeoutMs = 200;
    }
};
} // namespace

class tst_printer : public QObject {
    Q_OBJECT
private slots:
    void modelSetting_data() {
        QTest::addColumn<QString>("setting");
        QTest::addColumn<int>("model");
        QTest::newRow("first model") << " Bematech " << int(PrinterModel::Bematech);
        QTest::newRow("second model") << "quattro" << int(PrinterModel::Quattro);
        QTest::newRow("text") << "TXT" << int(PrinterModel::Txt);
        QTest::newRow("commented value") << "bematech ; comment" << int(PrinterModel::Desconhecido);
        QTest::newRow("empty") << "" << int(PrinterModel::Desconhecido);
    }
    void modelSetting() {
        QFETCH(QString, setting);
        QFETCH(int, model);
        QCOMPARE(int(PrinterService::modelFrom(setting)), model);
    }

    void composers() {
        clsAutenticadora a = filled();
        QVERIFY(a.AutenticaBoleto());
        QCOMPARE(a.BOLETO, QStringLiteral("PMX A 0007 23/11/2026      1.234,56R"));
        QVERIFY(a.AutenticaFita());
        QCOMPARE(a.FITA, QStringLiteral("0007 23/11/2026 IPTU                     1.234,56"));
        QVERIFY(a.AbreCaixa(1));
        QCOMPARE(a.AbreFita, QStringLiteral("=      ABERTURA DE MOVIMENTO: 012      ="));
        QVERIFY(a.AbreCaixa(2));
        QCOMPARE(a.AbreFita, QStringLiteral("=              GUICHE:  A              ="));
        QVERIFY(a.EncerraCaixa(QStringLiteral("ARRECADADO")));
        QCOMPARE(a.EncerraFita, QStringLiteral("(+)========== ARRECADADO -->    5.000,00"));
        QVERIFY(a.EncerraCaixa(QStringLiteral("OUTRO"))); // unknown kind: the previous line stands
        QCOMPARE(a.EncerraFita, QStringLiteral("(+)========== ARRECADADO -->    5.000,00"));
        QVERIFY(a.EncerraCaixaCompleto() == false); // 11-wide values make the block short
        a.VALOR_RECEBIDO = QStringLiteral("    5.000,00");
        a.VALOR_ENTRADA = QStringLiteral("      100,00");
        a.VALOR_SAIDA = QStringLiteral("       20,00");
        a.VALOR_TOTAL = QStringLiteral("    5.080,00");
        QVERIFY(a.EncerraCaixaCompleto());
        QCOMPARE(a.EncerraFita.split(QLatin1Char('\n')).at(5),
                 QStringLiteral("(=)========= TOTAL/DIA  -->     5.080,00"));
        QVERIFY(a.AbreCaixaCompleto());
        QCOMPARE(a.AbreFita.split(QLatin1Char('\n')).size(), 4);
        QVERIFY(a.ReabreCaixa());
        QCOMPARE(a.Reabertura, QStringLiteral("=        REABRINDO MOVIMENTO: 012      ="));
        QVERIFY(a.ReplicaCaracter(QLatin1Char('*')));
        QCOMPARE(a.caracter, QString(40, QLatin1Char('*')));
        QVERIFY(a.PrintCabecalho(QDateTime(QDate(2026, 11, 23), QTime(9, 5, 7))));
        QCOMPARE(a.Cabecalho, QStringLiteral("DATA/HORA: 23/11/2026 09:05:07"));
    }

    void widthTests_data() {
        QTest::addColumn<QString>("what");
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("ok");
        auto row = [](const char* tag, const char* what, const char* value, bool ok) {
            QTest::newRow(tag) << what << value << ok;
        };
        row("stamp 35 wide", "boleto", "   1.234,56", false);
        row("stamp 36 wide", "boleto", "    1.234,56", true);
        row("closing 10 wide", "encerra", "  5.000,00", false);
        row("closing 12 wide", "encerra", "    5.000,00", false);
        row("movement of 4 digits", "abre", "0012", false);
    }
    void widthTests() {
        QFETCH(QString, what);
        QFETCH(QString, value);
        QFETCH(bool, ok);
        clsAutenticadora a = filled();
        if (what == QLatin1String("boleto")) {
            a.VALOR_DOC = value;
            QCOMPARE(a.AutenticaBoleto(), ok);
        } else if (what == QLatin1String("encerra")) {
            a.VALOR_RECEBIDO = value;
            QCOMPARE(a.EncerraCaixa(QStringLiteral("ARRECADADO")), ok);
        } else {
            a.SEQ_MOV = value;
            QCOMPARE(a.AbreCaixa(1), ok);
        }
    }

    void codePage() {
        QCOMPARE(Cp850::encode(QStringLiteral("AÇÃO é")), QByteArray("A\x80\xc7O \x82"));
        QCOMPARE(Cp850::encode(QStringLiteral("€ 1")), QByteArray("? 1"));
        QCOMPARE(Cp850::decode(Cp850::encode(QStringLiteral("ÁGUA E ESGOTO º"))),
                 QStringLiteral("ÁGUA E ESGOTO º"));
    }

    void tapeLineBytes() {
        Bench b;
        b.service.abrirPorta();
        b.service.ImprimeAutenticadora(PrinterOperation::Imprimir, PrinterModel::Bematech,
                                       QStringLiteral("TAXA ÁGUA"));
        const QByteArray expected = kEscBemaMode + kInit + kCondensedOff + kItalicOff +
                                    kUnderlineOff + kExpandedOff + kBoldOff +
                                    QByteArray("TAXA \xb5GUA\n") + kItalicOff + kUnderlineOff +
                                    kExpandedOff + kBoldOff + kCondensedOff + kEnq;
        QCOMPARE(b.emulator.received(), expected);
        QCOMPARE(b.emulator.tape(), QStringList{QStringLiteral("TAXA ÁGUA")});
        QVERIFY(b.emulator.attributesOff());
        QVERIFY(b.app.dialogs().shown().isEmpty());
    }

    void stampOutcomes_data() {
        QTest::addColumn<QString>("state");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("message");
        QTest::addColumn<int>("stamped");
        QTest::addColumn<int>("icon");
        auto row = [](const char* state, const char* title, const QString& message, int n,
                      DialogIcon icon = DialogIcon::Critical) {
            QTest::newRow(state) << state << title << message << n << int(icon);
        };
        row("present", "", "", 1);
        row("after", "", "", 1);
        row("missing", "Autenticação de Documentos", "Tempo maior que o permitido.", 0);
        row("offline", "Aviso", kForaDeLinha.arg(kDoc), 0, DialogIcon::Exclamation);
        row("paper", "Aviso", kSemPapel.arg(kDoc), 0, DialogIcon::Exclamation);
        row("silent", "Aviso", kSemResposta.arg(kDoc), 0);
    }
    void stampOutcomes() {
        QFETCH(QString, state);
        QFETCH(QString, title);
        QFETCH(QString, message);
        QFETCH(int, stamped);
        QFETCH(int, icon);
        Bench b;
        if (state == QLatin1String("present"))
            b.emulator.setDocument(true);
        else if (state == QLatin1String("after"))
            b.emulator.documentAfter(60);
        else if (state == QLatin1String("offline"))
            b.emulator.setOffline(true);
        else if (state == QLatin1String("paper"))
            b.emulator.setPaperOut(true);
        else if (state == QLatin1String("silent"))
            b.emulator.setSilent(true);
        b.service.sleep = [](int ms) { QThread::msleep(ulong(ms)); };
        b.service.abrirPorta();
        b.service.ImprimeAutenticadora(PrinterOperation::Autenticar, PrinterModel::Bematech,
                                       QStringLiteral("PMX A 0007 23/11/2026  1.234,56R"));
        QCOMPARE(b.emulator.documents().size(), stamped);
        if (stamped)
            QCOMPARE(b.emulator.documents().first(),
                     QStringLiteral("PMX A 0007 23/11/2026  1.234,56R"));
        QVERIFY(b.emulator.received().endsWith(kAfterStamp)); // sent in every case
        QVERIFY(!b.emulator.inDocumentMode());
        if (message.isEmpty()) {
            QVERIFY(b.app.dialogs().shown().isEmpty());
        } else {
            QCOMPARE(b.app.dialogs().last().text, message);
            QCOMPARE(b.app.dialogs().last().title, title);
            QCOMPARE(int(b.app.dialogs().last().icon), icon);
        }
    }

    void enableSwitchAndOtherModels() {
        Bench b;
        b.app.setOption(QStringLiteral("Print"), QStringLiteral("modo"), QStringLiteral("0"));
        b.service.ImprimeAutenticadora(PrinterOperation::Autenticar, PrinterModel::Bematech,
                                       QStringLiteral("X"));
        b.service.ImprimeAutenticadora(PrinterOperation::Imprimir, PrinterModel::Bematech,
                                       QStringLiteral("X"));
        QVERIFY(b.emulator.received().isEmpty());
        b.app.setOption(QStringLiteral("Print"), QStringLiteral("modo"), QStringLiteral("1"));
        b.service.ImprimeAutenticadora(PrinterOperation::Nenhuma, PrinterModel::Bematech,
                                       QStringLiteral("X"));
        b.service.ImprimeAutenticadora(PrinterOperation::Imprimir, PrinterModel::Txt,
                                       QStringLiteral("X"));
        QVERIFY(b.emulator.received().isEmpty());
        QVERIFY(b.app.dialogs().shown().isEmpty());
    }

    void quattroPortTable_data() {
        QTest::addColumn<QString>("porta");
        QTest::addColumn<int>("number");
        QTest::addColumn<bool>("refused");
        QTest::newRow("LPT1") << "LPT1" << 888 << false;
        QTest::newRow("LPT2") << "lpt2" << 632 << false;
        QTest::newRow("COM1") << "COM1" << 1 << true;
        QTest::newRow("COM2") << "COM2" << 2 << true;
        QTest::newRow("other") << "tcp:127.0.0.1:9100" << 0 << false;
    }
    void quattroPortTable() {
        QFETCH(QString, porta);
        QFETCH(int, number);
        QFETCH(bool, refused);
        QCOMPARE(PrinterService::portaQuattro(porta), number);
        Bench b(QStringLiteral("quattro"), porta);
        b.emulator.setDocument(true);
        b.service.ImprimeAutenticadora(PrinterOperation::Autenticar, PrinterModel::Quattro,
                                       QStringLiteral("PMX 1 0001"));
        if (refused) {
            QCOMPARE(b.app.dialogs().last().text,
                     QStringLiteral(
                         "Essa função só funciona com as portas paralelas LPT1, LPT2 OU LPT3"));
            QCOMPARE(b.app.dialogs().last().icon, DialogIcon::Information);
            QVERIFY(b.emulator.received().isEmpty());
        } else {
            QCOMPARE(b.emulator.documents(), QStringList{QStringLiteral("PMX 1 0001")});
            // The stamp's text carries no CR LF of its own. The printer is asked once more after
            // the stamp: only an answer counts it stamped.
            QCOMPARE(b.emulator.received(), kQuattroAuthOn + kQuattroStatusDefault + kQuattroStamp +
                                                QByteArray("PMX 1 0001") + kQuattroAuthOff +
                                                kQuattroStatusDefault);
        }
    }

    void quattroDocumentNeverArrives() {
        Bench b(QStringLiteral("quattro"));
        b.app.setOption(QStringLiteral("Print"), QStringLiteral("quattro_espera"),
                        QStringLiteral("150"));
        b.service.sleep = [](int ms) { QThread::msleep(ulong(ms)); };
        b.service.ImprimeAutenticadora(PrinterOperation::Autenticar, PrinterModel::Quattro,
                                       QStringLiteral("X"));
        QVERIFY(b.emulator.documents().isEmpty());
        QVERIFY(!b.emulator.inAuthMode());
        QCOMPARE(b.app.dialogs().last().text, QStringLiteral("Tempo maior que o permitido."));
    }

    // With no limit set, the wait for the document goes on as long as the printer answers, and
    // ends only when the document comes or the cashier cancels it (no message then).
    void quattroWaitEndsWhenCancelled() {
        Bench b(QStringLiteral("quattro"));
        int polls = 0;
        b.service.sleep = [&](int ms) {
            if (ms >= 100 && ++polls == 900) // 90 s of asking
                b.service.cancelarEspera();
        };
        QVERIFY(!b.service.ImprimeAutenticadora(PrinterOperation::Autenticar, PrinterModel::Quattro,
                                                QStringLiteral("X")));
        QCOMPARE(polls, 900);
        QVERIFY(b.emulator.documents().isEmpty());
        QVERIFY(!b.emulator.inAuthMode());
        QVERIFY(b.app.dialogs().shown().isEmpty());
        // The next stamp waits afresh, and the document ends it.
        polls = 0;
        b.service.sleep = [&](int ms) {
            if (ms >= 100 && ++polls == 3)
                b.emulator.setDocument(true);
        };
        QVERIFY(b.service.ImprimeAutenticadora(PrinterOperation::Autenticar, PrinterModel::Quattro,
                                               QStringLiteral("Y")));
        QCOMPARE(b.emulator.documents(), QStringList{QStringLiteral("Y")});
    }

    void overTcp() {
        Bench b;
        auto link = EmulatorLink::tcp(b.emulator);
        QVERIFY(link);
        b.service.makeTransport = nullptr;
        b.app.setOption(QStringLiteral("Print"), QStringLiteral("porta"), link->porta());
        b.emulator.documentAfter(100);
        b.service.documentTimeoutMs = 3000;
        b.service.abrirPorta();
        b.service.ImprimeAutenticadora(PrinterOperation::Imprimir, PrinterModel::Bematech,
                                       QStringLiteral("FITA TCP"));
        b.service.ImprimeAutenticadora(PrinterOperation::Autenticar, PrinterModel::Bematech,
                                       QStringLiteral("CARIMBO TCP"));
        b.service.fecharPorta(true);
        // The emulator reads on its own thread: the last bytes may still be on their way.
        QTRY_COMPARE(b.emulator.tape(), QStringList{QStringLiteral("FITA TCP")});
        QTRY_COMPARE(b.emulator.documents(), QStringList{QStringLiteral("CARIMBO TCP")});
        QVERIFY(b.app.dialogs().shown().isEmpty());
        QTRY_VERIFY(b.emulator.received().contains(kDocumentOn + QByteArray("CARIMBO TCP\r\n") +
                                                   kDocumentOff));
    }

    void overPseudoTerminal() {
        Bench b(QStringLiteral("quattro"));
        auto link = EmulatorLink::pty(b.emulator);
        QVERIFY(link);
        b.service.makeTransport = nullptr;
        b.service.sleep = [](int ms) { QThread::msleep(ulong(ms)); };
        b.app.setOption(QStringLiteral("Print"), QStringLiteral("porta"), link->porta());
        b.emulator.setDocument(true);
        b.service.ImprimeAutenticadora(PrinterOperation::Imprimir, PrinterModel::Quattro,
                                       QStringLiteral("FITA SERIAL"));
        b.service.ImprimeAutenticadora(PrinterOperation::Autenticar, PrinterModel::Quattro,
                                       QStringLiteral("CARIMBO SERIAL"));
        QTRY_COMPARE(b.emulator.tape(), QStringList{QStringLiteral("FITA SERIAL")});
        QTRY_COMPARE(b.emulator.documents(), QStringList{QStringLiteral("CARIMBO SERIAL")});
        QVERIFY(b.app.dialogs().shown().isEmpty());
    }

    void unreachablePrinter() {
        Bench b;
        b.service.makeTransport = nullptr;
        b.app.setOption(QStringLiteral("Print"), QStringLiteral("porta"),
                        QStringLiteral("tcp:127.0.0.1:1"));
        b.service.abrirPorta();
        const QString refused = kRecusada.arg(QStringLiteral("tcp:127.0.0.1:1"));
        QCOMPARE(b.app.dialogs().texts(), QStringList{refused});
        b.service.novoCliente(); // the next customer is told once more, by the same cause
        QVERIFY(!b.service.ImprimeAutenticadora(PrinterOperation::Autenticar,
                                                PrinterModel::Bematech, QStringLiteral("X")));
        QCOMPARE(b.app.dialogs().texts(), (QStringList{refused, refused}));
        QCOMPARE(b.app.dialogs().last().icon, DialogIcon::Critical);
        b.service.fecharPorta(true);
        QCOMPARE(b.app.dialogs().last().text,
                 QStringLiteral("Problemas ao Fechar a Porta de Comunicação."));
        b.service.fecharPorta(false);
        QCOMPARE(b.app.dialogs().last().text,
                 QStringLiteral("Problemas ao fechar a porta de comunicação!!"));
        b.app.setOption(QStringLiteral("Print"), QStringLiteral("porta"),
                        QStringLiteral("/dev/nao-existe"));
        b.service.novoCliente(nullptr, false);
        b.service.ImprimeAutenticadora(PrinterOperation::Imprimir, PrinterModel::Bematech,
                                       QStringLiteral("X"));
        QCOMPARE(b.app.dialogs().last().text, kRecusada.arg(QStringLiteral("/dev/nao-existe")));
        QCOMPARE(b.app.dialogs().last().icon, DialogIcon::Critical);
    }

    // A port changed in the options is used from the next stamp: the old connection is let go
    // at once, not kept until it breaks.
    void portChangedBetweenStamps() {
        Bench b;
        PrinterEmulator second(PrinterEmulator::Model::Bematech);
        auto first = EmulatorLink::tcp(b.emulator);
        auto other = EmulatorLink::tcp(second);
        QVERIFY(first && other);
        b.service.makeTransport = nullptr;
        b.service.sleep = [](int ms) { QThread::msleep(ulong(ms)); };
        b.emulator.setDocument(true);
        second.setDocument(true);
        b.app.setOption(QStringLiteral("Print"), QStringLiteral("porta"), first->porta());
        b.service.abrirPorta();
        QVERIFY(b.service.ImprimeAutenticadora(PrinterOperation::Autenticar, PrinterModel::Bematech,
                                               QStringLiteral("DOC 1")));
        b.app.setOption(QStringLiteral("Print"), QStringLiteral("porta"), other->porta());
        QVERIFY(b.service.ImprimeAutenticadora(PrinterOperation::Autenticar, PrinterModel::Bematech,
                                               QStringLiteral("DOC 2")));
        QTRY_COMPARE(second.documents(), QStringList{QStringLiteral("DOC 2")});
        QCOMPARE(b.emulator.documents(), QStringList{QStringLiteral("DOC 1")});
        QVERIFY(b.app.dialogs().shown().isEmpty());
    }

    // A printer that fails is down for the rest of the customer: one message, one connection
    // attempt, its stamps left for the re-stamp and its tape lines kept. The next customer tries
    // again and, the printer back, gets the kept lines first.
    void downPrinterCostsOneMessagePerCustomer_data() {
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QString>("message");
        QTest::newRow("switched off") << "silent" << kSemResposta.arg(kDoc);
        QTest::newRow("off-line") << "offline" << kForaDeLinha.arg(kDoc);
        QTest::newRow("no paper") << "paper" << kSemPapel.arg(kDoc);
        QTest::newRow("unplugged") << "unplugged" << kRecusada.arg(QStringLiteral("LPT1"));
    }
    void downPrinterCostsOneMessagePerCustomer() {
        QFETCH(QString, fault);
        QFETCH(QString, message);
        Bench b;
        int connections = 0;
        b.service.makeTransport = [&]() -> std::unique_ptr<Transport> {
            ++connections;
            if (fault == QLatin1String("unplugged"))
                return nullptr;
            return std::make_unique<MemoryTransport>(b.emulator);
        };
        b.emulator.setDocument(true);
        b.emulator.setSilent(fault == QLatin1String("silent"));
        b.emulator.setOffline(fault == QLatin1String("offline"));
        b.emulator.setPaperOut(fault == QLatin1String("paper"));
        b.service.novoCliente();
        int stamped = 0;
        for (int i = 1; i <= 5; ++i) {
            stamped +=
                b.service.ImprimeAutenticadora(PrinterOperation::Autenticar, PrinterModel::Bematech,
                                               QStringLiteral("DOC %1").arg(i));
            b.service.ImprimeAutenticadora(PrinterOperation::Imprimir, PrinterModel::Bematech,
                                           QStringLiteral("FITA %1").arg(i));
        }
        QCOMPARE(stamped, 0);
        QCOMPARE(b.app.dialogs().texts(), QStringList{message});
        QCOMPARE(connections, 1);
        QCOMPARE(b.service.linhasPendentes(), 5);
        QVERIFY(b.emulator.documents().isEmpty());

        // The next customer: the printer is back.
        fault.clear();
        b.emulator.setSilent(false);
        b.emulator.setOffline(false);
        b.emulator.setPaperOut(false);
        b.service.novoCliente();
        QVERIFY(b.service.ImprimeAutenticadora(PrinterOperation::Autenticar, PrinterModel::Bematech,
                                               QStringLiteral("DOC 6")));
        QVERIFY(b.service.ImprimeAutenticadora(PrinterOperation::Imprimir, PrinterModel::Bematech,
                                               QStringLiteral("FITA 6")));
        QCOMPARE(b.emulator.documents(), QStringList{QStringLiteral("DOC 6")});
        QCOMPARE(b.emulator.tape().filter(QStringLiteral("FITA")),
                 (QStringList{QStringLiteral("FITA 1"), QStringLiteral("FITA 2"),
                              QStringLiteral("FITA 3"), QStringLiteral("FITA 4"),
                              QStringLiteral("FITA 5"), QStringLiteral("FITA 6")}));
        QCOMPARE(b.app.dialogs().shown().size(), 1);
        QCOMPARE(b.service.linhasPendentes(), 0);
    }

    // Lines still kept when the port closes are dropped with one record in Log.ini.
    void keptLinesDroppedWithOneLogLine() {
        Bench b;
        b.emulator.setSilent(true);
        b.service.novoCliente(nullptr, false);
        for (int i = 0; i < 3; ++i)
            b.service.ImprimeAutenticadora(PrinterOperation::Imprimir, PrinterModel::Bematech,
                                           QStringLiteral("FITA"));
        QCOMPARE(b.service.linhasPendentes(), 3);
        b.service.fecharPorta(true);
        QFile log(b.app.path(QStringLiteral("Log.ini")));
        QVERIFY(log.open(QIODevice::ReadOnly));
        const QString text = QString::fromLatin1(log.readAll());
        QCOMPARE(text.count(QStringLiteral("Erro interno")), 1);
        QVERIFY(text.contains(QStringLiteral("3 linha(s) da fita")));
        QCOMPARE(b.app.dialogs().texts(), QStringList{kSemResposta.arg(kTexto)});
    }

    // A TCP printer that hangs up in the middle of a stamp has not stamped it.
    void tcpHangUpMidStamp() {
        Bench b;
        auto link = EmulatorLink::tcp(b.emulator);
        QVERIFY(link);
        b.service.makeTransport = nullptr;
        b.app.setOption(QStringLiteral("Print"), QStringLiteral("porta"), link->porta());
        b.service.replyTimeoutMs = 500;
        b.emulator.setDocument(true);
        b.emulator.hangUpOnStamp(true);
        b.service.novoCliente();
        QVERIFY(!b.service.ImprimeAutenticadora(PrinterOperation::Autenticar,
                                                PrinterModel::Bematech, QStringLiteral("DOC")));
        QCOMPARE(b.app.dialogs().texts(), QStringList{kSemResposta.arg(kDoc)});
        QVERIFY(b.emulator.documents().isEmpty());
        QVERIFY(b.service.fora());

        // The next customer connects afresh and stamps.
        b.emulator.hangUpOnStamp(false);
        b.service.novoCliente();
        QVERIFY(b.service.ImprimeAutenticadora(PrinterOperation::Autenticar, PrinterModel::Bematech,
                                               QStringLiteral("DOC 2")));
        QTRY_COMPARE(b.emulator.documents(), QStringList{QStringLiteral("DOC 2")});
    }

    // A setting the printer cannot work with is named, never left to silence.
    void settingProblems_data() {
        QTest::addColumn<QString>("impressora");
        QTest::addColumn<QString>("modo");
        QTest::addColumn<QString>("porta");
        QTest::addColumn<QString>("names");
        auto row = [](const char* tag, const char* impressora, const char* modo, const char* porta,
                      const char* names) {
            QTest::newRow(tag) << impressora << modo << porta << names;
        };
        row("sound", "bematech", "1", "LPT1", "");
        row("tcp", "quattro", "1", "tcp:10.0.0.9:9100", "");
        row("device", "bematech", "1", "/dev/usb/lp0", "");
        row("txt needs no port", "txt", "1", "", "");
        row("switched off", "qualquer", "0", "", "");
        row("comment after the model", "bematech   ; bematech, quattro ou txt", "1", "LPT1",
            "impressora=");
        row("comment after the port", "bematech", "1", "LPT1            ; LPT1 LPT2", "porta=");
        row("comment after modo", "bematech", "1 ; liga", "LPT1", "modo=");
        row("tcp port not a number", "bematech", "1", "tcp:host:abc", "porta=");
        row("empty port", "bematech", "1", "", "porta=");
    }
    void settingProblems() {
        QFETCH(QString, impressora);
        QFETCH(QString, modo);
        QFETCH(QString, porta);
        QFETCH(QString, names);
        PrinterConfig c;
        c.impressora = impressora;
        c.modo = modo;
        c.porta = porta;
        const QString problem = PrinterService::problemaConfiguracao(c);
        if (names.isEmpty())
            QVERIFY2(problem.isEmpty(), qPrintable(problem));
        else
            QVERIFY2(problem.contains(QStringLiteral("[Print] ") + names), qPrintable(problem));
    }

    // On its own thread the printer never holds the caller: a stamp waiting for its document
    // says so, and the caller goes on until the document comes.
    void workerWaitsForTheDocumentOffTheCallersThread() {
        TestApp app;
        app.setOption(QStringLiteral("Print"), QStringLiteral("impressora"),
                      QStringLiteral("bematech"));
        app.setOption(QStringLiteral("Print"), QStringLiteral("modo"), QStringLiteral("1"));
        app.setOption(QStringLiteral("Print"), QStringLiteral("porta"), QStringLiteral("LPT1"));
        PrinterEmulator emulator(PrinterEmulator::Model::Bematech);
        PrinterWorker worker(app.ctx());
        worker.service().makeTransport = [&] {
            return std::make_unique<MemoryTransport>(emulator);
        };
        worker.service().documentTimeoutMs = 60000;
        QSignalSpy waiting(&worker, &PrinterWorker::aguardandoDocumento);
        QSignalSpy idle(&worker, &PrinterWorker::ociosa);
        worker.post([](PrinterService& p) {
            p.novoCliente();
            p.ImprimeAutenticadora(PrinterOperation::Autenticar, p.modelo(),
                                   QStringLiteral("PMX A 0001"));
        });
        QVERIFY(worker.ocupada());
        QTRY_COMPARE(waiting.count(), 1); // this thread kept running its events meanwhile
        QCOMPARE(waiting.at(0).at(0).toString(), QStringLiteral("PMX A 0001"));
        QVERIFY(worker.ocupada());
        emulator.setDocument(true);
        QTRY_COMPARE(idle.count(), 1);
        QCOMPARE(waiting.count(), 2);
        QVERIFY(waiting.at(1).at(0).toString().isEmpty());
        QCOMPARE(emulator.documents(), QStringList{QStringLiteral("PMX A 0001")});
        QVERIFY(app.dialogs().shown().isEmpty());
    }

    void cablePulledMidStamp() {
        Bench b;
        b.emulator.setDocument(true);
        b.service.abrirPorta();
        b.last->failWrites = true;
        b.service.ImprimeAutenticadora(PrinterOperation::Autenticar, PrinterModel::Bematech,
                                       QStringLiteral("X"));
        QCOMPARE(b.app.dialogs().last().text, kSemResposta.arg(kDoc));
    }
};

QTEST_GUILESS_MAIN(tst_printer)
#include "tst_printer.moc"
