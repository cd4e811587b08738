// The counter screen driven by keys, as a cashier would, on the offscreen platform.
#include "AppShell.h"
#include "AuthCounterPrinter.h"
#include "CentralNetwork.h"
#include "CommandRibbon.h"
#include "CounterPrinter.h"
#include "CounterSession.h"
#include "DemoData.h"
#include "DescriptionTexts.h"
#include "LancadosModel.h"
#include "OverdueHandler.h"
#include "PaymentRecorder.h"
#include "PrinterEmulator.h"
#include "PrinterService.h"
#include "PrinterWorker.h"
#include "TestApp.h"
#include "TestCodes.h"
#include "Transaction.h"
#include "TypedLine.h"
#include "clsRecebimentos.h"
#include "frmFrente.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>
#include <QTreeWidget>

constexpr int kScannerPause = 200; // longer than the scanner's own Enter

namespace {
const QString kOnTime = QStringLiteral("81660000003124004262026113058888888888888888");
const QString kOverdue = QStringLiteral("81830000012345604272026011000000000000000000");
const QString kFree = QString(17, QLatin1Char('8'));

// Records the documents the counter asked to stamp.
class StampRecorder : public CounterPrinter {
public:
    QStringList stamped;
    bool aberturaMovimento(const clsMovimento&) override { return true; }
    bool encerramento(const clsMovimento&) override { return true; }
    bool reabertura(const clsMovimento&) override { return true; }
    bool documentos(const QList<RecordedReceipt>& rows, std::optional<PrinterMessage>*) override {
        for (const auto& r : rows)
            stamped << QStringLiteral("%1 %2").arg(r.autentica).arg(r.item.valor.format());
        return true;
    }
    bool cupom(const QList<RecordedReceipt>&, const QString&, const QString&) override {
        return true;
    }
};

// The collection line of a 48-digit code as printed: four blocks, each with its check digit
// after a dash.
QString printedLine(const QString& code) {
    QString digits = TypedLine::fromBarcode(code);
    digits.remove(QRegularExpression(QStringLiteral("[^0-9]")));
    QStringList blocks;
    for (int i = 0; i < 4; ++i)
        blocks << digits.mid(i * 12, 11) + QLatin1Char('-') + digits.mid(i * 12 + 11, 1);
    return blocks.join(QLatin1Char(' '));
}
} // namespace

// A central that the test switches on and off, with messages for the operator.
class FakeCentral : public CentralNetwork {
public:
    bool up = false;
    QStringList pending;
    bool configurada() override { return true; }
    bool ativa() override { return up; }
    std::optional<bool> recebida(const QString&) override {
        return up ? std::optional<bool>(false) : std::nullopt;
    }
    void publicar() override {}
    QStringList novidades() override { return std::exchange(pending, {}); }
};

class tst_frente : public QObject {
    Q_OBJECT

    struct Screen {
        TestApp app;
        StampRecorder printer;
        CounterSession session{app.ctx(), &printer};
        std::unique_ptr<frmFrente> form;
        explicit Screen(bool demo = false) {
            if (demo) {
                QVERIFY(DemoData::seed(app.ctx(), nullptr, nullptr));
                app.setOption(QStringLiteral("Opcoes"), QStringLiteral("juros"),
                              QStringLiteral("1"));
            } else {
                QVERIFY(app.db().SQLExecute(QStringLiteral(
                    "INSERT INTO CodBarra (IDCOD, IDTIPO, DESCRICAO, PADRAO, JUROS, BLOQUEIO) "
                    "VALUES (7, 'AV1', 'TAXA DE EXPEDIENTE', 'A', 'N', 'N'), "
                    "(8, 'AV2', 'CERTIDAO', 'A', 'N', 'N'), (100, 'DIN', 'DINHEIRO', 'S', 'N', "
                    "'N')")));
            }
            app.ctx().workingDate = QDate(2026, 11, 23);
            app.ctx().userName = QStringLiteral("ANA");
            session.networkAlive = [] { return true; };
            QVERIFY(session.day().abrir());
            app.dialogs().clear();
            form = AppShell::counter(session, false);
            form->show();
            QVERIFY(QTest::qWaitForWindowExposed(form.get()));
        }
        template <class T> T* w(const char* name) {
            return form->findChild<T*>(QLatin1String(name));
        }
        QLineEdit* entry() { return w<QLineEdit>("txtValorCodBarra"); }
        QTreeWidget* soma() { return w<QTreeWidget>("lstSoma"); }
        QAbstractItemModel* lancados() { return w<QTreeView>("lstLancado")->model(); }
        QString text(const char* label) { return w<QLabel>(label)->text(); }
        void key(int k) { QTest::keyClick(QApplication::focusWidget(), Qt::Key(k)); }
        void typeItem(int kindRow, const QString& valor) {
            key(Qt::Key_Plus);
            auto* kinds = w<QComboBox>("cmbTipoGuia");
            kinds->hidePopup();
            kinds->setCurrentIndex(kindRow);
            key(Qt::Key_Return);
            QTest::keyClicks(w<QLineEdit>("mskvalor"), valor);
            key(Qt::Key_Return);
        }
        // A scan: the code as one burst; the scanner's own Enter is left out.
        void scan(const QString& code) {
            form->setScannerEnterWindow(0);
            QTest::keyClicks(entry(), code);
        }
    };

private slots:
    // An overdue guide: the screen asks frmGuiavencida, showing its due date and value; No adds
    // nothing, Yes adds it charged. The question is asked with the scanner's keys held off.
    void overdueGuideAsksBeforeAdding() {
        Screen s(true);
        s.app.dialogs().pushAnswer(DialogAnswer::No);
        s.entry()->setText(kOverdue);
        const auto consent = s.app.dialogs().shown().first();
        QCOMPARE(consent.form, OverdueHandler::kFormGuia);
        QCOMPARE(consent.title, QStringLiteral("Guia Vencida"));
        QCOMPARE(consent.text, QStringLiteral("Guia com a data de vencimento vencida.\n"
                                              "Vencimento: 10/01/2026\nValor: R$ 1.234,56\n"
                                              "Deseja Continuar?"));
        QVERIFY(consent.guarded);
        QCOMPARE(s.soma()->topLevelItemCount(), 0);
        QVERIFY(s.entry()->text().isEmpty());
        QCOMPARE(s.w<QComboBox>("cmbTipoGuia")->currentIndex(), -1);

        s.app.dialogs().clear();
        s.app.dialogs().pushAnswer(DialogAnswer::Yes);
        s.entry()->setText(kOverdue);
        QCOMPARE(s.app.dialogs().shown().size(), 2);
        QCOMPARE(s.app.dialogs().last().form, QStringLiteral("frmAcrescimos"));
        QVERIFY(s.app.dialogs().last().guarded);
        QCOMPARE(s.soma()->topLevelItemCount(), 1);
        QCOMPARE(s.text("lbltotalConta"), QStringLiteral("R$ 1.493,82"));
    }

    // F4 and F5: the screen asks, the day closes and reopens, and each answer is respected.
    void closingAndReopeningAskFirst() {
        Screen s;
        s.app.dialogs().pushAnswer(DialogAnswer::No);
        s.key(Qt::Key_F4);
        QCOMPARE(s.app.dialogs().texts(), (QStringList{Desc::kPerguntaEncerrar, Desc::kCancelado}));
        QCOMPARE(s.text("lblStatus"), QStringLiteral("CAIXA PRONTO"));

        s.app.dialogs().clear();
        s.app.dialogs().pushAnswer(DialogAnswer::Yes);
        s.app.dialogs().pushAnswer(DialogAnswer::No);
        s.key(Qt::Key_F4);
        QCOMPARE(s.app.dialogs().texts(),
                 (QStringList{Desc::kPerguntaEncerrar, Desc::kPerguntaCupomEncerramento,
                              Desc::kEncerrado}));
        QCOMPARE(s.app.dialogs().last().icon, DialogIcon::Information);
        QCOMPARE(s.text("lblStatus"), QStringLiteral("CAIXA ENCERRADO"));

        s.app.dialogs().clear();
        s.key(Qt::Key_F4);
        QCOMPARE(s.app.dialogs().texts(),
                 QStringList{QStringLiteral("O movimento já está encerrado.")});
        s.typeItem(0, QStringLiteral("1,00"));
        QCOMPARE(s.soma()->topLevelItemCount(), 0); // nothing added after closing

        s.app.dialogs().clear();
        s.app.dialogs().pushAnswer(DialogAnswer::Yes);
        s.app.dialogs().pushAnswer(DialogAnswer::No);
        s.key(Qt::Key_F5);
        QCOMPARE(s.app.dialogs().texts(),
                 (QStringList{Desc::kPerguntaReabrir, Desc::kPerguntaCupomReabertura}));
        QCOMPARE(s.text("lblStatus"), QStringLiteral("CAIXA PRONTO"));
    }

    // Two typed items, the change, and Enter: the day's list gains the new receipts at the top
    // without being read again, with the day's count and total under it.
    void typedItemsChangeAndEnter() {
        Screen s;
        auto* kinds = s.w<QComboBox>("cmbTipoGuia"); // entry kinds only, none chosen
        QCOMPARE(kinds->count(), 2);
        QCOMPARE(kinds->currentIndex(), -1);
        s.typeItem(1, QStringLiteral("12,50"));
        s.typeItem(0, QStringLiteral("7,50"));
        QCOMPARE(s.soma()->topLevelItemCount(), 2);
        QCOMPARE(s.soma()->topLevelItem(1)->text(1), QStringLiteral("08-CERTIDAO"));
        QCOMPARE(s.soma()->topLevelItem(1)->text(3), QStringLiteral("20,00"));
        QCOMPARE(s.text("lbltotalConta"), QStringLiteral("R$ 20,00"));
        QCOMPARE(QApplication::focusWidget(), s.entry());

        QTest::keyClicks(s.entry(), QStringLiteral("15"));
        s.key(Qt::Key_Minus);
        QCOMPARE(s.text("lblTroco"), QStringLiteral("Deve: R$ 5,00"));
        s.key(Qt::Key_Return); // still owes: nothing recorded
        QCOMPARE(s.app.count(QStringLiteral("Recebimentos")), 0);

        QSignalSpy reset(s.lancados(), &QAbstractItemModel::modelReset);
        QSignalSpy inserted(s.lancados(), &QAbstractItemModel::rowsInserted);
        QTest::keyClicks(s.entry(), QStringLiteral("50,00"));
        s.key(Qt::Key_Minus);
        QCOMPARE(s.text("lblTroco"), QStringLiteral("Troco: R$ 30,00"));
        s.app.dialogs().clear();
        s.key(Qt::Key_Return);
        QCOMPARE(s.app.count(QStringLiteral("Recebimentos")), 2);
        QCOMPARE(s.app.dialogs().texts(), QStringList{QStringLiteral("Registro Gravado!!!")});
        QCOMPARE(s.soma()->topLevelItemCount(), 0);
        QCOMPARE(s.text("lbltotalConta"), QStringLiteral("Calcular"));
        QCOMPARE(s.text("lblTroco"), QStringLiteral("Troco: R$ 30,00")); // until the next item
        QCOMPARE(reset.count(), 0);
        QCOMPARE(inserted.count(), 1);
        QCOMPARE(s.lancados()->rowCount(), 2);
        QCOMPARE(s.lancados()->index(0, 0).data().toString(), QStringLiteral("0002"));
        QCOMPARE(s.lancados()->index(0, 2).data().toString(), QStringLiteral("7,50"));
        // Read as shown; the spaces inside each half do not break.
        QCOMPARE(s.text("lblTotalDia").replace(QChar(0x00A0), QLatin1Char(' ')),
                 QStringLiteral("2 recebimentos    Total do dia: R$ 20,00"));
        QCOMPARE(s.text("lblTotalDia").split(QStringLiteral("    ")),
                 (QStringList{QStringLiteral("2\u00A0recebimentos"),
                              QStringLiteral("Total\u00A0do\u00A0dia:\u00A0R$\u00A020,00")}));
        QCOMPARE(s.text("lblLancado"), QStringLiteral("Caixa dia: 23 - 11 - 2026"));
        s.typeItem(0, QStringLiteral("1,00"));
        QCOMPARE(s.text("lblTroco"), QStringLiteral("A Pagar"));
    }

    // A long day is read a page at a time as its list is scrolled; the count and total come from
    // the database, not from the rows read.
    void dayListReadsPagesAsItScrolls() {
        Screen s;
        {
            Transaction tx(s.app.db());
            for (int i = 1; i <= 450; ++i) {
                clsRecebimentos r(s.app.db());
                r.AUTENTICA = static_cast<qint16>(i);
                r.IDMOVIMENTO = static_cast<qint16>(s.session.day().movimento().ID);
                r.TIPO = 7;
                r.VALOR = Money::fromReais(2);
                r.CODBARRA = QStringLiteral("9%1").arg(i, 43, 10, QLatin1Char('0'));
                QVERIFY(r.SQLInsert());
            }
            QVERIFY(tx.commit());
        }
        s.form->refreshAll();
        auto* view = s.w<QTreeView>("lstLancado");
        QCOMPARE(s.lancados()->rowCount(), LancadosModel::kPage);
        QCOMPARE(s.lancados()->index(0, 0).data().toString(), QStringLiteral("0450"));
        QCOMPARE(s.text("lblTotalDia").replace(QChar(0x00A0), QLatin1Char(' ')),
                 QStringLiteral("450 recebimentos    Total do dia: R$ 900,00"));
        for (int i = 0; i < 3; ++i) {
            view->scrollToBottom();
            QCoreApplication::processEvents();
        }
        QCOMPARE(s.lancados()->rowCount(), 450);
        QCOMPARE(s.lancados()->index(449, 0).data().toString(), QStringLiteral("0001"));
    }

    // Enter with an amount typed takes it as the amount paid first, and records only when it
    // covers the total; the change stays on screen.
    void enterTakesTheTypedAmountFirst() {
        Screen s(true);
        s.scan(kOnTime);
        QCOMPARE(s.soma()->topLevelItemCount(), 1);
        QTest::keyClicks(s.entry(), QStringLiteral("100"));
        s.key(Qt::Key_Return);
        QCOMPARE(s.app.count(QStringLiteral("Recebimentos")), 0);
        QCOMPARE(s.text("lblTroco"), QStringLiteral("Deve: R$ 212,40"));
        QTest::keyClicks(s.entry(), QStringLiteral("400,00"));
        s.key(Qt::Key_Return);
        QCOMPARE(s.app.count(QStringLiteral("Recebimentos")), 1);
        QCOMPARE(s.text("lblTroco"), QStringLiteral("Troco: R$ 87,60"));
        QVERIFY(s.entry()->text().isEmpty());
    }

    void emptyValueAndTwoCommasAreRefused() {
        Screen s;
        s.typeItem(0, QString());
        QCOMPARE(s.app.dialogs().last().text, QStringLiteral("Um valor deve ser informado!!"));
        s.typeItem(0, QStringLiteral("1,0,0"));
        QCOMPARE(s.soma()->topLevelItemCount(), 0);
        s.entry()->setFocus();
        QTest::keyClicks(s.entry(), QStringLiteral("1,0,0"));
        s.key(Qt::Key_Minus);
        QCOMPARE(s.app.dialogs().last().text,
                 QStringLiteral("O valor informado não é um número!!"));
    }

    // Esc asks even with an empty sum, and offers the date screen; the safe answer stays.
    void escapeAsksAndOffersTheDateScreen() {
        Screen s;
        QSignalSpy logoff(s.form.get(), &frmFrente::logoff);
        s.app.dialogs().pushAnswer(DialogAnswer::Cancel);
        s.key(Qt::Key_Escape);
        QVERIFY(s.form->isVisible());
        QCOMPARE(s.app.dialogs().last().title, QStringLiteral("Sair"));
        QCOMPARE(s.app.dialogs().last().icon, DialogIcon::Question);
        QVERIFY(s.app.dialogs().last().text.startsWith(QStringLiteral("Deseja sair do Tolvane?")));
        QCOMPARE(logoff.count(), 0);
        s.app.dialogs().pushAnswer(DialogAnswer::No);
        s.key(Qt::Key_Escape);
        QCOMPARE(logoff.count(), 1);
        QVERIFY(s.form->isVisible());
        s.app.dialogs().pushAnswer(DialogAnswer::Yes);
        s.key(Qt::Key_Escape);
        QVERIFY(!s.form->isVisible());
    }

    void removeKeysAndRefusals() {
        Screen s;
        for (const char* v : {"1,00", "2,00", "3,00"})
            s.typeItem(0, QString::fromLatin1(v));
        s.key(Qt::Key_F2);
        QCOMPARE(s.soma()->topLevelItemCount(), 2);

        s.app.dialogs().clear();
        for (const char* answer : {"", "dois", "9"}) {
            s.app.dialogs().pushInput(QString::fromLatin1(answer));
            s.form->findChild<QAction*>(QStringLiteral("mnuRemove"))->trigger();
        }
        QCOMPARE(s.app.dialogs().texts(),
                 (QStringList{QStringLiteral("Informe o número do item a excluir?"),
                              QStringLiteral("Nenhum valor informado!!!"),
                              QStringLiteral("Informe o número do item a excluir?"),
                              QStringLiteral("O valor informado não é um número!!"),
                              QStringLiteral("Informe o número do item a excluir?"),
                              QStringLiteral("O Valor informado não corresponde!!!")}));
        s.app.dialogs().pushInput(QStringLiteral("1"));
        s.form->findChild<QAction*>(QStringLiteral("mnuRemove"))->trigger();
        QCOMPARE(s.soma()->topLevelItem(0)->text(2), QStringLiteral("2,00"));
        QCOMPARE(s.session.removidos().size(), 2);

        s.app.dialogs().pushAnswer(DialogAnswer::No);
        s.key(Qt::Key_F3);
        QCOMPARE(s.app.dialogs().last().text, QStringLiteral("Deseja realmente limpar a soma?"));
        QCOMPARE(s.soma()->topLevelItemCount(), 1);
        s.app.dialogs().pushAnswer(DialogAnswer::No);
        s.key(Qt::Key_Escape); // items not recorded: asks, and stays
        QVERIFY(s.form->isVisible());
        s.app.dialogs().pushAnswer(DialogAnswer::Yes);
        s.key(Qt::Key_F3);
        QCOMPARE(s.soma()->topLevelItemCount(), 0);
    }

    // A scan that adds nothing without a notice of its own still gets a word in lblStatus.
    void statusLineSaysWhyAScanAddedNothing_data() {
        QTest::addColumn<QString>("code");
        QTest::addColumn<bool>("closed");
        QTest::addColumn<QString>("status");
        QTest::addColumn<int>("kinds");
        QTest::newRow("closed day")
            << kOnTime << true << "Movimento encerrado: reabra com F5 para receber" << -1;
        QTest::newRow("unknown kind") << "81610000001000099992026113000000000000000000" << false
                                      << "Tipo de guia não cadastrado" << 0;
        QTest::newRow("wrong check digit") << "81650000003124004262026113058888888888888888"
                                           << false << "Dígito verificador não confere" << 1;
    }
    void statusLineSaysWhyAScanAddedNothing() {
        QFETCH(QString, code);
        QFETCH(bool, closed);
        QFETCH(QString, status);
        QFETCH(int, kinds);
        Screen s(true);
        if (closed) {
            s.app.dialogs().defaultAnswer = DialogAnswer::No;
            s.app.dialogs().pushAnswer(DialogAnswer::Yes);
            s.key(Qt::Key_F4);
        }
        s.scan(code);
        QCOMPARE(s.text("lblStatus"), status);
        QCOMPARE(s.soma()->topLevelItemCount(), 0);
        if (kinds >= 0) { // the kind list as the reading left it: emptied for an unknown code
            QCOMPARE(s.w<QComboBox>("cmbTipoGuia")->count(), kinds);
            QCOMPARE(s.w<QComboBox>("cmbTipoGuia")->currentIndex(), -1);
        }
        s.scan(closed ? QString() : kOnTime);
        if (!closed)
            QCOMPARE(s.text("lblStatus"), QStringLiteral("CAIXA PRONTO"));
    }

    // After F7 the keys still belong to the screen: a scan, "-" and Enter work on the list.
    void dayListNeverTrapsTheKeyboard() {
        Screen s(true);
        s.scan(kOnTime);
        s.key(Qt::Key_F7);
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(s.w<QTreeView>("lstLancado")));
        QTest::keyClicks(
            QApplication::focusWidget(),
            TestCodes::guide(QStringLiteral("0426"), 1000, QStringLiteral("20261130"), kFree));
        QCOMPARE(s.soma()->topLevelItemCount(), 2);
        s.key(Qt::Key_F7);
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("500"));
        s.key(Qt::Key_Minus);
        QCOMPARE(s.text("lblTroco"), QStringLiteral("Troco: R$ 177,60"));
        s.key(Qt::Key_F7);
        s.key(Qt::Key_Return);
        QCOMPARE(s.app.count(QStringLiteral("Recebimentos")), 2);
    }

    // Keyed by hand, a code or a typed line waits for Enter; its dashes are not the amount key.
    void handTypedEntriesWaitForEnter_data() {
        QTest::addColumn<QString>("keys");
        QTest::newRow("collection line with dashes") << printedLine(kOnTime);
        QTest::newRow("bank-slip line") << "00191.23454 00000.000000 00000.000000 3 16510000008915";
        QTest::newRow("44 digits") << kOnTime;
    }
    void handTypedEntriesWaitForEnter() {
        QFETCH(QString, keys);
        Screen s(true);
        s.form->setScannerKeyGap(-1); // every pause counts as a hand's
        s.form->setScannerEnterWindow(0);
        QTest::keyClicks(s.entry(), keys);
        QCOMPARE(s.soma()->topLevelItemCount(), 0);
        QCOMPARE(s.entry()->text(), keys);
        QCOMPARE(s.text("lblTroco"), QStringLiteral("A Pagar"));
        QVERIFY(s.app.dialogs().shown().isEmpty());
        s.key(Qt::Key_Return);
        QCOMPARE(s.soma()->topLevelItemCount(), 1);
        QVERIFY(s.entry()->text().isEmpty());
    }

    // The working date is as large as the clock and stands out when it is not today.
    void pastWorkingDateStandsOut() {
        Screen s;
        QCOMPARE(s.text("lblDataCaixa"), QStringLiteral("Caixa de 23/11/2026"));
        QCOMPARE(s.w<QLabel>("lblDataCaixa")->font().pointSize(),
                 s.w<QLabel>("lblHora")->font().pointSize());
        QCOMPARE(s.w<QLabel>("lblDataCaixa")->property("tom").toString(), QStringLiteral("data"));
        s.app.ctx().workingDate = QDate(2026, 11, 20);
        const auto pastWindow = AppShell::counter(s.session, false);
        frmFrente& past = *pastWindow;
        QCOMPARE(past.findChild<QLabel*>(QStringLiteral("lblDataCaixa"))->text(),
                 QStringLiteral("Caixa de 20/11/2026 (não é hoje)"));
        // The skin paints the past day's tone on a background of its own.
        QCOMPARE(
            past.findChild<QLabel*>(QStringLiteral("lblDataCaixa"))->property("tom").toString(),
            QStringLiteral("passado"));
    }

    // The printer on its own thread: the document prompt shows while the screen keeps running,
    // a printer that fails names the documents left without a stamp, and a re-stamp clears them.
    void printerPromptsAndLeftOutStamps() {
        TestApp app;
        for (const char* kv : {"impressora=bematech", "modo=1", "porta=LPT1"})
            app.setOption(QStringLiteral("Print"), QString::fromLatin1(kv).section('=', 0, 0),
                          QString::fromLatin1(kv).section('=', 1));
        QVERIFY(app.db().SQLExecute(
            QStringLiteral("INSERT INTO CodBarra (IDCOD, IDTIPO, DESCRICAO, PADRAO, JUROS, "
                           "BLOQUEIO) VALUES (7, 'AV1', 'TAXA DE EXPEDIENTE', 'A', 'N', 'N')")));
        app.ctx().workingDate = QDate(2026, 11, 23);
        PrinterEmulator emulator(PrinterEmulator::Model::Bematech);
        PrinterWorker worker(app.ctx());
        worker.service().makeTransport = [&] {
            return std::make_unique<MemoryTransport>(emulator);
        };
        worker.service().documentTimeoutMs = 60000;
        AuthCounterPrinter printer(app.ctx(), worker);
        CounterSession session(app.ctx(), &printer);
        QVERIFY(session.day().abrir());
        const auto formWindow = AppShell::counter(session, false);
        frmFrente& form = *formWindow;
        form.setPrinter(&worker, &printer);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        form.activateWindow();
        QTRY_VERIFY(form.isActiveWindow());
        auto* banner = form.findChild<QLabel*>(QStringLiteral("lblImpressora"));
        auto* valor = form.findChild<QLineEdit*>(QStringLiteral("mskvalor"));
        const auto pay = [&](const char* amount) {
            form.findChild<QComboBox*>(QStringLiteral("cmbTipoGuia"))->setCurrentIndex(0);
            valor->setFocus();
            QTest::keyClicks(valor, QString::fromLatin1(amount));
            QTest::keyClick(valor, Qt::Key_Return);
            QTest::keyClick(form.findChild<QLineEdit*>(QStringLiteral("txtValorCodBarra")),
                            Qt::Key_Return);
        };
        pay("5,00");
        QCOMPARE(app.count(QStringLiteral("Recebimentos")), 1);
        QTRY_VERIFY(banner->isVisible());
        QVERIFY(banner->text().startsWith(QStringLiteral("Insira o documento: ")));
        emulator.setDocument(true);
        QTRY_VERIFY(!banner->isVisible());
        QCOMPARE(emulator.documents().size(), 1);

        emulator.setSilent(true);
        app.dialogs().clear();
        pay("6,00");
        QTRY_COMPARE(banner->text(),
                     QStringLiteral("Documentos sem autenticação: 0002. Quando a autenticadora "
                                    "voltar: Caixa > Documentos sem Autenticação."));
        // One box for the customer: the record and why its document was not stamped.
        QCOMPARE(app.dialogs().texts(),
                 QStringList{QStringLiteral("Registro Gravado!!!\n\nProblemas na autenticação do "
                                            "documento.\nA autenticadora não responde: verifique "
                                            "se está ligada e se o cabo está conectado.")});
        QCOMPARE(app.dialogs().last().icon, DialogIcon::Critical);
        emulator.setSilent(false);
        form.findChild<QAction*>(QStringLiteral("mnuReautenticar"))->trigger();
        QTRY_VERIFY(!banner->isVisible());
        QCOMPARE(emulator.documents().size(), 2);
    }

    // The re-stamp entries: the last payment's documents, or one receipt by its number.
    void restampEntries() {
        Screen s;
        s.app.dialogs().clear();
        s.form->findChild<QAction*>(QStringLiteral("mnuReautenticar"))->trigger();
        QCOMPARE(s.app.dialogs().texts(),
                 QStringList{QStringLiteral("Nenhum pagamento foi gravado nesta sessão.")});
        s.typeItem(0, QStringLiteral("7,00"));
        s.typeItem(1, QStringLiteral("8,00"));
        s.key(Qt::Key_Return);
        s.printer.stamped.clear();
        s.form->findChild<QAction*>(QStringLiteral("mnuReautenticar"))->trigger();
        QCOMPARE(s.printer.stamped,
                 (QStringList{QStringLiteral("1 7,00"), QStringLiteral("2 8,00")}));
        s.printer.stamped.clear();
        s.app.dialogs().pushInput(QStringLiteral("2"));
        s.form->findChild<QAction*>(QStringLiteral("mnuReautNumero"))->trigger();
        QCOMPARE(s.printer.stamped, QStringList{QStringLiteral("2 8,00")});
    }

    // F11, record, F12: nothing comes back to be recorded twice.
    void sumFileAfterRecording() {
        Screen s(true);
        s.scan(kOnTime);
        s.key(Qt::Key_F11);
        QCOMPARE(s.app.dialogs().last().text, QStringLiteral("Arquivo salvo com sucesso!!"));
        QTest::qWait(kScannerPause);
        s.form->setScannerEnterWindow(0);
        s.key(Qt::Key_Return);
        QCOMPARE(s.app.count(QStringLiteral("Recebimentos")), 1);
        s.key(Qt::Key_F12);
        QCOMPARE(s.app.dialogs().last().text, QStringLiteral("Não há dados!!"));
        QCOMPARE(s.soma()->topLevelItemCount(), 0);
        s.key(Qt::Key_Return);
        QCOMPARE(s.app.count(QStringLiteral("Recebimentos")), 1);
    }

    // The ribbon: one button per menu action, with its key, following the action's state; a
    // name with no action adds nothing.
    void ribbonRunsTheMenuActions() {
        QWidget owner;
        auto* on = new QAction(QStringLiteral("&Encerrar Movimento (F4)"), &owner);
        on->setObjectName(QStringLiteral("mnuEncerrar"));
        auto* later = new QAction(QStringLiteral("Sangria..."), &owner);
        later->setObjectName(QStringLiteral("mnuSangria"));
        CommandRibbon ribbon(&owner);
        const int dia = ribbon.addGroup(QStringLiteral("Dia"));
        QToolButton* b = ribbon.addCommand(dia, QStringLiteral("mnuEncerrar"));
        QVERIFY(b);
        QCOMPARE(b->text(), QStringLiteral("Encerrar\nMovimento\nF4"));
        QCOMPARE(ribbon.addCommand(dia, QStringLiteral("mnuSangria"))->text(),
                 QStringLiteral("Sangria"));
        QVERIFY(!ribbon.addCommand(dia, QStringLiteral("mnuNenhum")));
        QSignalSpy fired(on, &QAction::triggered);
        b->click();
        QCOMPARE(fired.count(), 1);
        on->setEnabled(false);
        QVERIFY(!b->isEnabled());

        Screen s;
        s.app.dialogs().pushAnswer(DialogAnswer::No);
        s.w<QToolButton>("ribmnuEncerrar")->click();
        QCOMPARE(s.app.dialogs().shown().first().text, Desc::kPerguntaEncerrar);
        QCOMPARE(QApplication::focusWidget(), s.entry());
    }

    // Looking at a past day: what cannot act looks disabled, and keys do nothing there.
    void consultationIsReadOnly() {
        TestApp app;
        app.ctx().workingDate = QDate(2026, 11, 20);
        CounterSession session(app.ctx(), nullptr);
        QVERIFY(session.day().abrir());
        app.dialogs().clear();
        const auto formWindow = AppShell::counter(session, true);
        frmFrente& form = *formWindow;
        form.show();
        QVERIFY(!form.findChild<QLineEdit*>(QStringLiteral("txtValorCodBarra"))->isEnabled());
        for (const char* name : {"cmdLdg", "cmdAvulso"})
            QVERIFY(!form.findChild<QPushButton*>(QLatin1String(name))->isEnabled());
        for (const char* name : {"ribmnuEncerrar", "ribmnuReabrir", "ribmnuGravar",
                                 "ribmnuCarregar", "ribmnuLimpar", "ribmnuReautenticar"})
            QVERIFY2(!form.findChild<QToolButton*>(QLatin1String(name))->isEnabled(), name);
        QVERIFY(form.findChild<QToolButton*>(QStringLiteral("ribmnuRecebidas"))->isEnabled());
        QTest::keyClick(&form, Qt::Key_F4);
        QVERIFY(app.dialogs().shown().isEmpty());
        QVERIFY(session.day().aberto());
        QVERIFY(form.findChild<QLabel*>(QStringLiteral("lblStatus"))
                    ->text()
                    .startsWith(QStringLiteral("CONSULTA")));
    }
    // The central away: lblStatusRede shows without widening the window, and its message is
    // told once, between customers, never over a customer's list.
    void networkLabelAndMessagesBetweenCustomers() {
        Screen s(true);
        auto central = std::make_shared<FakeCentral>();
        central->pending << QStringLiteral("A central da rede não responde.");
        s.app.ctx().settings.rede = 1;
        s.app.ctx().rede = central;
        auto* label = s.w<QLabel>("lblStatusRede");
        const int least = s.form->minimumSizeHint().width();
        QVERIFY(least <= s.form->width());
        s.scan(kOnTime);
        QCOMPARE(s.soma()->topLevelItemCount(), 1);
        QVERIFY(label->isVisible());
        QCOMPARE(label->text(), QStringLiteral("REDE INATIVA"));
        QCOMPARE(s.form->minimumSizeHint().width(), least);
        s.w<QTimer>("tmrRede")->start(10);
        QTest::qWait(50);
        QVERIFY(s.app.dialogs().shown().isEmpty()); // a list on screen: not now
        s.app.dialogs().pushAnswer(DialogAnswer::Yes);
        s.key(Qt::Key_F3);
        QCOMPARE(s.soma()->topLevelItemCount(), 0);
        QTRY_COMPARE(s.app.dialogs().shown().size(), 2);
        const auto told = s.app.dialogs().shown().last();
        QCOMPARE(told.title, QStringLiteral("Rede"));
        QCOMPARE(told.text, QStringLiteral("A central da rede não responde."));
        QCOMPARE(told.icon, DialogIcon::Exclamation);
        central->up = true;
        QTRY_VERIFY(!label->isVisible());
        QTest::qWait(50);
        QCOMPARE(s.app.dialogs().shown().size(), 2); // each message once
        s.app.ctx().rede.reset();
    }
};

QTEST_MAIN(tst_frente)
#include "tst_frente.moc"
