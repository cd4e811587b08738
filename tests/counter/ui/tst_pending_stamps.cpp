// The counter after a stop between a payment and its stamps: the documents the printer never
// confirmed are named in the banner and listed beside the counter, stamped in order from there,
// and a document already stamped is stamped again only after a question.
#include "AppShell.h"
#include "CounterSession.h"
#include "OpenCounter.h"
#include "clsAutenticacoes.h"
#include "frmFrente.h"

#include <QAction>
#include <QDialog>
#include <QLabel>
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
