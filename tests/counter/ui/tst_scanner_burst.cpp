// A scanner is fast typing followed by Enter. Driven into the real widgets against the real
// dialog port: every question and notice a read opens must still be on screen after the Enter
// that follows the code, and be answered only by the cashier.
#include "AppContext.h"
#include "AppShell.h"
#include "CheckDigits.h"
#include "CounterSession.h"
#include "DescriptionTexts.h"
#include "OpenCounter.h"
#include "PaymentRecorder.h"
#include "PrinterWorker.h"
#include "QtDialogPort.h"
#include "ScriptedDialogPort.h"
#include "TestCodes.h"
#include "TypedLine.h"
#include "frmAcrescimos.h"
#include "frmFrente.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <QWindow>

namespace {
constexpr int kWindow = 300; // the scanner window of these tests
constexpr int kLook = 450;   // when the cashier looks and answers, after the window

const QString kOnTime = QStringLiteral("81660000003124004262026113058888888888888888");
const QString kOverdue = QStringLiteral("81830000012345604272026011000000000000000000");
const QString kFree = QString(17, QLatin1Char('8'));

// A bank slip of kind 12345 (positions 20-24) whose general check digit is wrong.
QString slipWithWrongDigit() {
    const QString rest = QStringLiteral("8000") + QStringLiteral("0000001000") +
                         QStringLiteral("12345") + QString(20, QLatin1Char('0'));
    const QString body = QStringLiteral("0019") + rest;
    const int digit = Modulo11_boleto(body);
    return body.left(4) + QString::number(digit == 9 ? 1 : digit + 1) + rest;
}

// The real dialog port, quiet while a test sets its counter up.
class Port : public QtDialogPort {
public:
    Port() {
        registerForm(QStringLiteral("frmAcrescimos"),
                     [](DialogPort& d, const QString& c, const QStringList& l, QWidget* p) {
                         return static_cast<QDialog*>(new frmAcrescimos(d, c, l, p));
                     });
    }
    bool quiet = true;
    ScriptedDialogPort scripted;
    DialogAnswer message(const QString& t, const QString& x, DialogIcon i,
                         DialogButtons b) override {
        return quiet ? scripted.message(t, x, i, b) : QtDialogPort::message(t, x, i, b);
    }
    DialogAnswer notice(const QString& f, const QString& c, const QStringList& l,
                        DialogButtons b) override {
        return quiet ? scripted.notice(f, c, l, b) : QtDialogPort::notice(f, c, l, b);
    }
};

// What was on screen, and whether it outlived the scanner's Enter.
struct Seen {
    QString name; // the notice's form, or "QMessageBox"
    QString title;
    QString text;
    QString kind; // cmbTipoGuia while it was shown
    bool survived = false;
};

// Watches for modal dialogs: the moment one shows, the scanner's Enter reaches it; later the
// cashier answers it with the next scripted button.
class Cashier : public QObject {
public:
    Cashier(QWidget* counter, QStringList answers) : m_counter(counter), m_answers(answers) {
        connect(&m_timer, &QTimer::timeout, this, [this] { tick(); });
        m_timer.start(5);
    }
    QList<Seen> seen;

private:
    void tick() {
        QWidget* d = QApplication::activeModalWidget();
        if (d != m_current && m_current)
            seen.last().survived = false; // gone before the cashier looked
        if (!d) {
            m_current = nullptr;
            return;
        }
        if (d != m_current) {
            m_current = d;
            m_since.start();
            seen.append(describe(d));
            QWidget* f = d->focusWidget() ? d->focusWidget() : d;
            QTest::keyClick(f, Qt::Key_Return); // the scanner's Enter, a few ms after the code
            return;
        }
        if (m_since.elapsed() < kLook)
            return;
        seen.last().survived = true;
        m_current = nullptr;
        const QString answer = m_answers.isEmpty() ? QStringLiteral("OK") : m_answers.takeFirst();
        if (answer == QLatin1String("Enter")) { // the cashier's own Enter: the default answer
            QTest::keyClick(d->focusWidget() ? d->focusWidget() : d, Qt::Key_Return);
            return;
        }
        for (auto* b : d->findChildren<QAbstractButton*>())
            if (b->objectName() == answer || b->text().remove(QLatin1Char('&')) == answer) {
                b->click();
                return;
            }
    }
    Seen describe(QWidget* d) const {
        Seen s;
        s.kind = m_counter->findChild<QComboBox*>(QStringLiteral("cmbTipoGuia"))->currentText();
        s.title = d->windowTitle();
        if (auto* box = qobject_cast<QMessageBox*>(d)) {
            s.name = QStringLiteral("QMessageBox");
            s.text = box->text();
            return s;
        }
        s.name = d->objectName();
        QStringList lines;
        for (auto* l : d->findChildren<QLabel*>())
            lines << l->text();
        s.text = lines.join(QLatin1Char('\n'));
        return s;
    }

    QWidget* m_counter;
    QStringList m_answers;
    QTimer m_timer;
    QWidget* m_current = nullptr;
    QElapsedTimer m_since;
};

// An on-time guide of kind 0426 (TAXAS DIVERSAS), told apart by its free digits.
QString guide(int n) {
    return TestCodes::guide(QStringLiteral("0426"), 1000 + n, QStringLiteral("20261130"),
                            QStringLiteral("%1").arg(n, 17, 10, QLatin1Char('0')));
}

// At each box, in turn: the scanner's Enter that ended the code which opened it (when the box
// came from a scan), then a burst of codes typed into the box, each with its Enter, then the
// cashier's answer (a button's name or text, or "Enter"). Notes each box and whether it was
// still open when the burst was over.
class BoxHand : public QObject {
public:
    struct Turn {
        bool tail = false;
        QStringList burst;
        QString answer = QStringLiteral("OK");
    };
    explicit BoxHand(QList<Turn> turns, QWindow* behind = nullptr)
        : m_turns(std::move(turns)), m_behind(behind) {
        connect(&m_timer, &QTimer::timeout, this, [this] { tick(); });
        m_timer.start(5);
    }
    QStringList seen; // title|text
    bool allSurvived = true;

private:
    void tick() {
        QWidget* d = QApplication::activeModalWidget();
        if (!d || d == m_current)
            return;
        m_current = d;
        auto* box = qobject_cast<QMessageBox*>(d);
        const auto labels = d->findChildren<QLabel*>();
        seen << d->windowTitle() + QLatin1Char('|') +
                    (box                ? box->text()
                     : labels.isEmpty() ? QString()
                                        : labels.first()->text());
        const Turn t = m_turns.isEmpty() ? Turn{} : m_turns.takeFirst();
        QWidget* f = d->focusWidget() ? d->focusWidget() : d;
        if (t.tail)
            QTest::keyClick(f, Qt::Key_Return);
        for (const QString& code : t.burst) {
            if (m_behind) { // the window system still sends the keys to the counter's window
                for (QChar ch : code)
                    QTest::keyClick(m_behind, ch.toLatin1());
                QTest::keyClick(m_behind, Qt::Key_Return);
                continue;
            }
            QTest::keyClicks(f, code);
            QTest::keyClick(f, Qt::Key_Return);
        }
        allSurvived = allSurvived && d->isVisible();
        m_current = nullptr; // the next box may be built at the same address
        if (t.answer == QLatin1String("Enter")) {
            QTest::keyClick(f, Qt::Key_Return);
            return;
        }
        for (auto* b : d->findChildren<QAbstractButton*>())
            if (b->objectName() == t.answer || b->text().remove(QLatin1Char('&')) == t.answer) {
                b->click();
                return;
            }
    }

    QList<Turn> m_turns;
    QWindow* m_behind;
    QTimer m_timer;
    QWidget* m_current = nullptr;
};

// The real dialog port, made before the counter that shows its boxes on it.
struct RealBoxes {
    Port dialogs;
};

// The open counter's window on the real boxes, interest charged, the scanner window short.
struct BurstCounter : RealBoxes, OpenCounter {
    std::unique_ptr<frmFrente> form;
    BurstCounter() : OpenCounter(TestApp::Backend::SQLite, Printer::None, &dialogs) {
        app.setOption(QStringLiteral("Opcoes"), QStringLiteral("juros"), QStringLiteral("1"));
        session.networkAlive = [] { return true; };
        QVERIFY(open());
        form = AppShell::counter(session, false);
        form->setScannerEnterWindow(kWindow);
        form->show();
        QVERIFY(QTest::qWaitForWindowExposed(form.get()));
    }
    QLineEdit* entry() { return form->findChild<QLineEdit*>(QStringLiteral("txtValorCodBarra")); }
    int items() {
        return form->findChild<QTreeWidget*>(QStringLiteral("lstSoma"))->topLevelItemCount();
    }
    QStringList codes() const {
        QStringList out;
        for (int i = 0; i < session.list().size(); ++i)
            out << session.list().at(i).codbarra;
        return out;
    }
    // The code and its Enter as one burst, then the cashier answers what is on screen.
    QList<Seen> burst(const QString& code, const QStringList& answers) {
        dialogs.quiet = false;
        Cashier cashier(form.get(), answers);
        QTest::keyClicks(entry(), code);
        // The tail of the burst: when the code opened a box, the cashier's watch has already
        // sent it to that box, the moment it showed.
        if (cashier.seen.isEmpty())
            QTest::keyClick(entry(), Qt::Key_Return);
        QTest::qWait(20);
        dialogs.quiet = true;
        return cashier.seen;
    }
};
} // namespace

class tst_scanner_burst : public QObject {
    Q_OBJECT
private slots:
    void everyNoticeOutlivesTheScannersEnter_data() {
        QTest::addColumn<QString>("setup");
        QTest::addColumn<QString>("code");
        QTest::addColumn<QStringList>("answers");
        QTest::addColumn<QStringList>("shown"); // name|title|text of each dialog, in order
        QTest::addColumn<QString>("kind");      // the kind list while the first one was shown
        QTest::addColumn<int>("items");
        const QString consent =
            QStringLiteral("frmGuiavencida|Guia Vencida|Guia com a data de vencimento vencida.\n"
                           "Vencimento: 10/01/2026\nValor: R$ 1.234,56\nDeseja Continuar?");
        // Without a notice, the burst's Enter records nothing: the customer is still being read.
        QTest::newRow("good code") << "" << kOnTime << QStringList{} << QStringList{} << "" << 1;
        QTest::newRow("overdue, refused")
            << "" << kOverdue << QStringList{"Command2"} << QStringList{consent} << "ISSQN" << 0;
        QTest::newRow("overdue, the default answer is No")
            << "" << kOverdue << QStringList{"Enter"} << QStringList{consent} << "ISSQN" << 0;
        QTest::newRow("overdue, accepted with charges")
            << "" << kOverdue << QStringList{"Command1", "cmdOk"}
            << QStringList{consent, QStringLiteral("frmAcrescimos|Acréscimos|")} << "ISSQN" << 1;
        QTest::newRow("already on the list")
            << "list" << kOnTime << QStringList{}
            << QStringList{QStringLiteral("frmContaLancada|Aviso|Conta já Lançada!!!")} << "" << 1;
        QTest::newRow("already received")
            << "received" << kOnTime << QStringList{}
            << QStringList{QStringLiteral("frmContaLancada|Aviso|Conta já Recebida!!!")} << "" << 0;
        QTest::newRow("earlier year, blocked")
            << ""
            << TestCodes::guide(QStringLiteral("0426"), 5000, QStringLiteral("20251201"), kFree)
            << QStringList{}
            << QStringList{QStringLiteral(
                   "frmBloqueia|Bloqueia Conta|Não pode ser recebida!!!\nConta de um ano "
                   "anterior.")}
            << "TAXAS DIVERSAS" << 0;
        QTest::newRow("earlier year, overdue refused")
            << ""
            << TestCodes::guide(QStringLiteral("0425"), 5000, QStringLiteral("20251201"), kFree)
            << QStringList{"OK", "Command2"}
            << QStringList{QStringLiteral("frmContavencida|Conta vencida.|Conta de um ano "
                                          "anterior.\nVerifique os dados antes de\nreceber "
                                          "este boleto."),
                           QStringLiteral("frmGuiavencida|Guia Vencida|Guia com a data de "
                                          "vencimento vencida.\nVencimento: 01/12/2025\nValor: "
                                          "R$ 50,00\nDeseja Continuar?")}
            << "IPTU" << 0;
        QTest::newRow("bank slip, wrong check digit")
            << "" << slipWithWrongDigit() << QStringList{}
            << QStringList{QStringLiteral("QMessageBox|Aviso|ERRO NA LEITURA DO CÓDIGO DE "
                                          "BARRAS!!!")}
            << "" << 0; // listed, not selected: the check digit failed
        QTest::newRow("closed day")
            << "closed" << kOnTime << QStringList{}
            << QStringList{QStringLiteral("QMessageBox|Aviso|") + Desc::kPagamentoEncerrado} << ""
            << 0;
    }
    void everyNoticeOutlivesTheScannersEnter() {
        QFETCH(QString, setup);
        QFETCH(QString, code);
        QFETCH(QStringList, answers);
        QFETCH(QStringList, shown);
        QFETCH(QString, kind);
        QFETCH(int, items);
        BurstCounter c;
        if (setup == QLatin1String("list") || setup == QLatin1String("received")) {
            QVERIFY(c.session.ler(kOnTime).accepted);
            if (setup == QLatin1String("received"))
                QVERIFY(c.session.gravar());
            c.form->refreshAll();
            c.form->findChild<QAction*>(QStringLiteral("mnuLimpaIdent"))->trigger();
        } else if (setup == QLatin1String("closed")) {
            QVERIFY(c.session.day().encerrar());
            c.form->refreshAll();
        }
        const QList<Seen> seen = c.burst(code, answers);
        QCOMPARE(seen.size(), shown.size());
        for (int i = 0; i < seen.size(); ++i) {
            const QStringList want = shown[i].split(QLatin1Char('|'));
            QCOMPARE(seen[i].name, want[0]);
            QCOMPARE(seen[i].title, want[1]);
            if (!want[2].isEmpty())
                QCOMPARE(seen[i].text, want[2]);
            QVERIFY2(seen[i].survived,
                     qPrintable(seen[i].name + QStringLiteral(" took the Enter")));
        }
        if (!seen.isEmpty())
            QCOMPARE(seen.first().kind, kind);
        QCOMPARE(c.items(), items);
        QCOMPARE(c.session.list().size(), items);
        QCOMPARE(c.session.lancados().size(), setup == QLatin1String("received") ? 1 : 0);
        QVERIFY(c.entry()->text().isEmpty());
    }

    // Whatever box is open at the counter, a scanner's burst never answers it and every code of
    // it reaches the list, in order, once the box is gone.
    void burstDuringEachBoxLandsInOrder_data() {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QStringList>("shown"); // title|text of each box
        QTest::addColumn<QStringList>("list");  // the codes on the list at the end
        const QString gravado = QStringLiteral("Gravar Registro|Registro Gravado!!!");
        QTest::newRow("Registro Gravado!!!, then the cashier's Enter")
            << "record" << QStringList{gravado} << QStringList{guide(2), guide(3)};
        QTest::newRow("Registro Gravado!!!, the keys still sent to the counter's window")
            << "record, behind" << QStringList{gravado} << QStringList{guide(2), guide(3)};
        QTest::newRow("the printer's late message")
            << "printer"
            << QStringList{QStringLiteral("Autenticação de Documentos|Tempo maior que o "
                                          "permitido.")}
            << QStringList{guide(1), guide(2), guide(3)};
        QTest::newRow("F12, two boxes in a row")
            << "sum"
            << QStringList{QStringLiteral("Aviso|Itens da soma não carregados:\n"),
                           QStringLiteral("Aviso|Arquivo carregado com sucesso!!")}
            << QStringList{guide(4), guide(2), guide(3)};
        QTest::newRow("Guia Vencida, answered Sim")
            << "overdue"
            << QStringList{QStringLiteral("Guia Vencida|Guia com a data de vencimento vencida."),
                           QStringLiteral("Acréscimos|")}
            << QStringList{kOverdue, guide(2), guide(3)};
    }
    void burstDuringEachBoxLandsInOrder() {
        QFETCH(QString, box);
        QFETCH(QStringList, shown);
        QFETCH(QStringList, list);
        BurstCounter c;
        PrinterWorker worker(c.app.ctx());
        c.form->setPrinter(&worker, nullptr);
        const QStringList burst{guide(2), guide(3)};
        QList<BoxHand::Turn> turns{{false, burst, QStringLiteral("OK")}};
        const bool behind = box == QLatin1String("record, behind");
        if (behind)
            box = QStringLiteral("record");
        if (box == QLatin1String("record") || box == QLatin1String("printer")) {
            QVERIFY(c.session.ler(guide(1)).accepted);
            c.form->refreshAll();
        } else if (box == QLatin1String("sum")) {
            // guide 1 is received meanwhile: the load refuses it, then confirms the rest.
            QVERIFY(c.session.ler(guide(1)).accepted);
            QVERIFY(c.session.ler(guide(4)).accepted);
            QVERIFY(c.session.salvarSoma());
            c.session.limparSoma();
            QVERIFY(c.session.ler(guide(1)).accepted);
            QVERIFY(c.session.gravar());
            c.form->refreshAll();
            turns = {{false, {guide(2)}, QStringLiteral("OK")},
                     {false, {guide(3)}, QStringLiteral("Enter")}};
        } else {
            turns = {{true, burst, QStringLiteral("Command1")},
                     {false, {}, QStringLiteral("cmdOk")}};
        }
        c.dialogs.quiet = false;
        BoxHand hand(turns, behind ? c.form->windowHandle() : nullptr);
        if (box == QLatin1String("record"))
            QTest::keyClick(c.entry(), Qt::Key_Return);
        else if (box == QLatin1String("printer"))
            emit worker.aviso(QStringLiteral("Autenticação de Documentos"),
                              QStringLiteral("Tempo maior que o permitido."),
                              int(DialogIcon::Critical));
        else if (box == QLatin1String("sum"))
            QTest::keyClick(c.entry(), Qt::Key_F12);
        else
            QTest::keyClicks(c.entry(), kOverdue);
        QTRY_COMPARE(c.codes(), list);
        c.dialogs.quiet = true;
        QCOMPARE(hand.seen.size(), shown.size());
        for (int i = 0; i < shown.size(); ++i)
            QVERIFY2(hand.seen[i].startsWith(shown[i]), qPrintable(hand.seen[i]));
        QVERIFY(hand.allSurvived);
        QVERIFY(c.entry()->text().isEmpty());
        QCOMPARE(c.session.lancados().size(),
                 box == QLatin1String("record") || box == QLatin1String("sum") ? 1 : 0);
    }

    // A password box asked over the counter: the person's own digits are its answer; a scan
    // that arrives meanwhile is not, and lands in the code field once the box is gone.
    void scanDuringAPasswordBoxIsNotItsAnswer() {
        BurstCounter c;
        c.dialogs.quiet = false;
        QString typed;
        bool stillOpen = false;
        // Keys with the times they were typed: a person's every 200 ms, the scanner's every 5.
        quint64 at = 1000;
        const auto type = [&at](QWidget* w, const QString& keys, quint64 gap) {
            for (QChar k : keys) {
                at += gap;
                const int key =
                    k == QLatin1Char('\r') ? int(Qt::Key_Return) : Qt::Key_0 + k.digitValue();
                for (QEvent::Type t : {QEvent::KeyPress, QEvent::KeyRelease}) {
                    QKeyEvent e(t, key, Qt::NoModifier,
                                k == QLatin1Char('\r') ? QString() : QString(k));
                    e.setTimestamp(at);
                    QApplication::sendEvent(w, &e);
                }
            }
        };
        QTimer::singleShot(50, this, [&] {
            auto* field = QApplication::activeModalWidget()->findChild<QLineEdit*>();
            type(field, QStringLiteral("12"), 200);
            at += 300;
            type(field, guide(2) + QLatin1Char('\r'), 5);
            stillOpen = QApplication::activeModalWidget() != nullptr;
            typed = field->text();
            type(field, QStringLiteral("34\r"), 200);
        });
        const auto answer = c.dialogs.input(QStringLiteral("Corrigir ou Estornar Recebimento"),
                                            QStringLiteral("Entre com a senha do administrador!!"),
                                            true, QString());
        QVERIFY(stillOpen);
        QCOMPARE(typed, QStringLiteral("12"));
        QCOMPARE(answer, std::optional<QString>(QStringLiteral("1234")));
        QTRY_COMPARE(c.codes(), QStringList{guide(2)});
        QVERIFY(c.entry()->text().isEmpty());
    }

    // A code that is refused or not recognised leaves the field empty: the next scan is read on
    // its own, not appended to it.
    void refusedCodeLeavesTheFieldForTheNextScan_data() {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("status");
        QTest::newRow("kind not registered") << "81610000001000099992026113000000000000000000"
                                             << "Tipo de guia não cadastrado";
        QTest::newRow("wrong check digit") << "81650000003124004262026113058888888888888888"
                                           << "Dígito verificador não confere";
        QTest::newRow("bank slip, wrong check digit") << slipWithWrongDigit() << "";
    }
    void refusedCodeLeavesTheFieldForTheNextScan() {
        QFETCH(QString, code);
        QFETCH(QString, status);
        BurstCounter c;
        c.form->setScannerEnterWindow(0);
        QTest::keyClicks(c.entry(), code);
        QVERIFY(c.entry()->text().isEmpty());
        if (!status.isEmpty())
            QCOMPARE(c.form->findChild<QLabel*>(QStringLiteral("lblStatus"))->text(), status);
        QTest::keyClicks(c.entry(), guide(1));
        QCOMPARE(c.codes(), QStringList{guide(1)});
        QVERIFY(c.entry()->text().isEmpty());
    }

    // The Enter the cashier presses after answering the overdue question records the payment.
    void enterAfterAnsweringRecords() {
        BurstCounter c;
        c.dialogs.quiet = false;
        {
            BoxHand hand(
                {{true, {}, QStringLiteral("Command1")}, {false, {}, QStringLiteral("cmdOk")}});
            QTest::keyClicks(c.entry(), kOverdue);
        }
        QCOMPARE(c.codes(), QStringList{kOverdue});
        BoxHand confirm({});
        QTest::keyClick(c.entry(), Qt::Key_Return);
        c.dialogs.quiet = true;
        QCOMPARE(c.session.lancados().size(), 1);
        QCOMPARE(confirm.seen, QStringList{QStringLiteral("Gravar Registro|Registro Gravado!!!")});
    }

    // A typed line keyed in quickly is not taken for a code at its 44th character.
    void typedLineKeyedQuickly() {
        BurstCounter c;
        const QString line = TypedLine::fromBarcode(guide(5));
        QTest::keyClicks(c.entry(), line);
        QCOMPARE(c.entry()->text(), line);
        QVERIFY(c.codes().isEmpty());
        QTest::qWait(kWindow);
        QTest::keyClick(c.entry(), Qt::Key_Return);
        QCOMPARE(c.codes(), QStringList{guide(5)});
    }
};

QTEST_MAIN(tst_scanner_burst)
#include "tst_scanner_burst.moc"
