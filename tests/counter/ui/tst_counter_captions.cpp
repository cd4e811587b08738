// The counter's function keys as the screen names them, in its menu and its ribbon.
#include "AppShell.h"
#include "CounterSession.h"
#include "TestApp.h"
#include "frmFrente.h"

#include <QAction>
#include <QToolButton>

class tst_counter_captions : public QObject {
    Q_OBJECT
private slots:
    void closingAndReopeningKeys_data() {
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("ribbon");
        QTest::newRow("F4") << "mnuEncerrar"
                            << "Encerrar Mov. (F4)"
                            << "Mov.";
        QTest::newRow("F5") << "mnuReabrir"
                            << "Reabrir Cupom (F5)"
                            << "Cupom";
    }
    void closingAndReopeningKeys() {
        QFETCH(QString, action);
        QFETCH(QString, caption);
        QFETCH(QString, ribbon);
        TestApp app;
        app.ctx().workingDate = QDate(2026, 11, 23);
        CounterSession session(app.ctx(), nullptr);
        QVERIFY(session.day().abrir());
        const auto window = AppShell::counter(session, false);
        frmFrente& form = *window;
        QCOMPARE(form.findChild<QAction*>(action)->text(), caption);
        QToolButton* b = form.findChild<QToolButton*>(QStringLiteral("rib") + action);
        QVERIFY(b);
        QVERIFY2(b->text().contains(ribbon), qPrintable(b->text()));
        QVERIFY(b->text().endsWith(caption.mid(caption.size() - 3, 2)));
    }
};

QTEST_MAIN(tst_counter_captions)
#include "tst_counter_captions.moc"
