// A scanner is fast typing followed by Enter. Driven into the real widgets against the real
// dialog port: every question and notice a read opens must still be on screen after the Enter
// that follows the code, and be answered only by the cashier.
#include "AppContext.h"
#include "CheckDigits.h"
#include "Clock.h"
#include "CounterSession.h"
#include "DemoData.h"
#include "DescriptionTexts.h"
#include "IniFile.h"
#include "PaymentRecorder.h"
#include "QtDialogPort.h"
#include "ScriptedDialogPort.h"
#include "Startup.h"
#include "TestCodes.h"
#include "frmFrente.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

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

struct Counter {
    QTemporaryDir dir;
    Port dialogs;
    FixedClock clock{QDateTime(QDate(2026, 11, 23), QTime(10, 0))};
    std::unique_ptr<AppContext> ctx;
    std::unique_ptr<CounterSession> session;
    std::unique_ptr<frmFrente> form;
    Counter() {
        ctx = std::make_unique<AppContext>(dir.path(), dialogs, clock);
        IniFile::write(QStringLiteral("Opcoes"), QStringLiteral("juros"), QStringLiteral("1"),
                       ctx->iniPath());
        QVERIFY(Startup::Abre_conexao(*ctx, true));
        QVERIFY(DemoData::seed(*ctx, nullptr, nullptr));
        ctx->reloadSettings();
        ctx->workingDate = clock.today();
        session = std::make_unique<CounterSession>(*ctx, nullptr);
        session->networkAlive = [] { return true; };
        QVERIFY(session->day().abrir());
        form = std::make_unique<frmFrente>(*session, false);
        form->setScannerEnterWindow(kWindow);
        form->show();
        QVERIFY(QTest::qWaitForWindowExposed(form.get()));
    }
    QLineEdit* entry() { return form->findChild<QLineEdit*>(QStringLiteral("txtValorCodBarra")); }
    int items() {
        return form->findChild<QTreeWidget*>(QStringLiteral("lstSoma"))->topLevelItemCount();
    }
    // The code and its Enter as one burst, then the cashier answers what is on screen.
    QList<Seen> burst(const QString& code, const QStringList& answers) {
        dialogs.quiet = false;
        Cashier cashier(form.get(), answers);
        QTest::keyClicks(entry(), code);
        QTest::keyClick(entry(), Qt::Key_Return); // the tail of the burst
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
        Counter c;
        if (setup == QLatin1String("list") || setup == QLatin1String("received")) {
            QVERIFY(c.session->ler(kOnTime).accepted);
            if (setup == QLatin1String("received"))
                QVERIFY(c.session->gravar());
            c.form->refreshAll();
            c.form->findChild<QAction*>(QStringLiteral("mnuLimpaIdent"))->trigger();
        } else if (setup == QLatin1String("closed")) {
            QVERIFY(c.session->day().encerrar());
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
        QCOMPARE(c.session->list().size(), items);
        QCOMPARE(c.session->lancados().size(), setup == QLatin1String("received") ? 1 : 0);
        QVERIFY(c.entry()->text().isEmpty());
    }
};

QTEST_MAIN(tst_scanner_burst)
#include "tst_scanner_burst.moc"
