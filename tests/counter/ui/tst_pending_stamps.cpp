// The counter after a stop between a payment and its stamps: the documents the printer never
// confirmed are named in the banner and listed beside the counter, stamped in order from there,
// and a document already stamped is stamped again only after a question.
#include "AppShell.h"
#include "CounterSession.h"
#include "OpenCounter.h"
#include "clsAutenticacoes.h"
#include "frmFrente.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>

namespace {
const QString kBanner = QStringLiteral("Documentos sem autenticação: 0001, 0002. Quando a "
                                       "autenticadora voltar: Caixa > Documentos sem "
                                       "Autenticação.");

void setPrinter(TestApp& app) {
    for (const auto& [key, value] :
         {std::pair{"impressora", "bematech"}, {"modo", "1"}, {"porta", "LPT1"}})
        app.setOption(QStringLiteral("Print"), QLatin1String(key), QLatin1String(value));
}

// A payment recorded and the program gone before any stamp (as after a kill while "Registro
// Gravado!!!" was on the screen): receipts 0001 and 0002, nothing confirmed.
void paymentWithoutStamps(TestApp& app) {
    CounterSession before(app.ctx(), nullptr);
    QVERIFY(before.day().abrir());
    QVERIFY(before.adicionarDigitado(7, QStringLiteral("TAXA DE EXPEDIENTE"), Money::fromReais(5)));
    QVERIFY(before.adicionarDigitado(7, QStringLiteral("TAXA DE EXPEDIENTE"), Money::fromReais(6)));
    QVERIFY(before.gravar());
}

// The counter's window started again on the open counter's database, its printer on a thread.
struct RestartedCounter : OpenCounter {
    std::unique_ptr<frmFrente> form;
    RestartedCounter() : OpenCounter(TestApp::Backend::SQLite, Printer::Worker) {}
    void start() {
        QVERIFY(session.day().abrir());
        form = AppShell::counter(session, false);
        form->setPrinter(worker.get(), printer.get());
        form->show();
    }
    QLabel* banner() const { return form->findChild<QLabel*>(QStringLiteral("lblImpressora")); }
    QDialog* list() const { return form->findChild<QDialog*>(QStringLiteral("frmPendentes")); }
    int count(qint32 idrecebe) {
        return clsAutenticacoes::estado(app.db(), idrecebe).value().vezes;
    }
};
} // namespace

class tst_pending_stamps : public QObject {
    Q_OBJECT
private slots:
    void restartListsThemAndStampsInOrder() {
        RestartedCounter c;
        TestApp& app = c.app;
        setPrinter(app);
        paymentWithoutStamps(app);
        c.start();
        QCOMPARE(c.banner()->text(), kBanner);
        QTRY_VERIFY(c.list() && c.list()->isVisible());
        auto* rows = c.list()->findChild<QTreeWidget*>(QStringLiteral("lstPendentes"));
        QCOMPARE(rows->topLevelItemCount(), 2);
        QCOMPARE(rows->topLevelItem(0)->text(0), QStringLiteral("0001"));
        QCOMPARE(rows->topLevelItem(1)->text(2), QStringLiteral("6,00"));
        c.list()->findChild<QPushButton*>(QStringLiteral("cmdAutenticar"))->click();
        QTRY_COMPARE(c.emulator.documents().size(), 2);
        QVERIFY(c.emulator.documents().at(0).contains(QStringLiteral(" 0001 ")));
        QVERIFY(c.emulator.documents().at(1).contains(QStringLiteral(" 0002 ")));
        QTRY_VERIFY(c.banner()->isHidden());
        QTRY_COMPARE(c.count(1), 1);
        QCOMPARE(c.count(2), 1);
        QVERIFY(c.session.pendentes().value().isEmpty());
    }

    // "Reautenticar por Número" of a stamped document asks; "Não" stamps nothing, "Sim" stamps
    // and counts it.
    void restampAsksFirst() {
        RestartedCounter c;
        TestApp& app = c.app;
        setPrinter(app);
        paymentWithoutStamps(app);
        c.start();
        QTRY_VERIFY(c.list() && c.list()->isVisible());
        c.list()->findChild<QPushButton*>(QStringLiteral("cmdAutenticar"))->click();
        QTRY_COMPARE(c.count(2), 1);
        app.dialogs().clear();
        app.dialogs().pushInput(QStringLiteral("1"));
        app.dialogs().pushAnswer(DialogAnswer::No);
        c.form->findChild<QAction*>(QStringLiteral("mnuReautNumero"))->trigger();
        QCOMPARE(app.dialogs().last().text,
                 QStringLiteral("0001 já autenticado 1 vez(es), a última em 23/11/2026 10:00.\n"
                                "Autenticar novamente?"));
        QCOMPARE(app.dialogs().last().title, QStringLiteral("Reautenticar"));
        QTest::qWait(100);
        QCOMPARE(c.emulator.documents().size(), 2);
        app.dialogs().pushInput(QStringLiteral("1"));
        app.dialogs().pushAnswer(DialogAnswer::Yes);
        c.form->findChild<QAction*>(QStringLiteral("mnuReautNumero"))->trigger();
        QTRY_COMPARE(c.emulator.documents().size(), 3);
        QTRY_COMPARE(c.count(1), 2);
        QCOMPARE(c.count(2), 1);
    }

    // The list beside the counter clicked into: the scanner's code (its digits and its Enter) is
    // still the counter's, read as a scan; the list's own keys stay its own.
    void keysAfterAClickOnTheList_data() {
        QTest::addColumn<QString>("keys"); // digits, "v" for the down arrow, "\r" for Enter
        QTest::addColumn<int>("items");    // on the customer's list afterwards
        QTest::addColumn<int>("row");      // the list's current row afterwards
        QTest::addColumn<int>("stamped");  // documents the printer received
        const QString code = QStringLiteral("81660000003124004262026113058888888888888888");
        QTest::newRow("a scan") << code + QLatin1Char('\r') << 1 << 0 << 0;
        QTest::newRow("the down arrow") << QStringLiteral("v") << 0 << 1 << 0;
        QTest::newRow("Enter: the list's own button") << QStringLiteral("\r") << 0 << 0 << 2;
        QTest::newRow("down, then a scan")
            << QLatin1Char('v') + code + QLatin1Char('\r') << 1 << 1 << 0;
    }

    void keysAfterAClickOnTheList() {
        QFETCH(QString, keys);
        QFETCH(int, items);
        QFETCH(int, row);
        QFETCH(int, stamped);
        RestartedCounter c;
        TestApp& app = c.app;
        setPrinter(app);
        paymentWithoutStamps(app);
        c.session.networkAlive = [] { return true; };
        c.start();
        QTRY_VERIFY(c.list() && c.list()->isVisible());
        auto* rows = c.list()->findChild<QTreeWidget*>(QStringLiteral("lstPendentes"));
        c.list()->activateWindow();
        QTest::mouseClick(rows->viewport(), Qt::LeftButton, {},
                          rows->visualItemRect(rows->topLevelItem(0)).center());
        QTRY_COMPARE(QApplication::focusWidget(), rows);
        // The window system may go on sending keys to the list until the counter is active.
        for (QChar k : keys) {
            if (k == QLatin1Char('v'))
                QTest::keyClick(rows, Qt::Key_Down);
            else if (k == QLatin1Char('\r'))
                QTest::keyClick(rows, Qt::Key_Return);
            else
                QTest::keyClick(rows, k.toLatin1());
        }
        if (stamped)
            QTRY_COMPARE(c.emulator.documents().size(), stamped);
        QTest::qWait(200); // a stamp sent by mistake would have reached the printer by now
        QCOMPARE(c.emulator.documents().size(), stamped);
        QCOMPARE(int(c.session.list().size()), items);
        QCOMPARE(c.form->findChild<QLineEdit*>(QStringLiteral("txtValorCodBarra"))->text(),
                 QString());
        if (!stamped)
            QCOMPARE(rows->indexOfTopLevelItem(rows->currentItem()), row);
    }

    // With the printer off in the settings, nothing reminds the cashier of stamps.
    void noPrinterNoReminder() {
        RestartedCounter c;
        TestApp& app = c.app;
        setPrinter(app);
        app.setOption(QStringLiteral("Print"), QStringLiteral("modo"), QStringLiteral("0"));
        paymentWithoutStamps(app);
        c.start();
        QTest::qWait(50);
        QVERIFY(c.banner()->isHidden());
        QVERIFY(!c.list());
        QCOMPARE(c.session.pendentes().value().size(), 2); // the record still knows
    }
};

QTEST_MAIN(tst_pending_stamps)
#include "tst_pending_stamps.moc"
