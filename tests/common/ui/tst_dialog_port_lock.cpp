// The screen's dialog port under a transaction: nothing opens while the lock is held; a box that
// only informs opens from the event loop afterwards, a question gets the safe answer.
#include "QtDialogPort.h"

#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

class tst_dialog_port_lock : public QObject {
    Q_OBJECT
private slots:
    void refusesThenDefers() {
        QtDialogPort port;
        bool active = true;
        port.setTransactionProbe(this, [&] { return active; });
        QStringList refused;
        port.onLockedBox = [&](const QString& kind, const QString&, const QString& text) {
            refused << kind + QLatin1Char(':') + text;
        };
        // Neither call may block: no box is open while the transaction is active.
        port.info(QStringLiteral("Aviso"), QStringLiteral("Gravado"));
        QCOMPARE(port.message(QStringLiteral("Aviso"), QStringLiteral("Confirma?"),
                              DialogIcon::Question, DialogButtons::YesNo),
                 DialogAnswer::No);
        QVERIFY(!port.input(QStringLiteral("Senha"), QStringLiteral("Senha:"), true, {}));
        QVERIFY(!QApplication::activeModalWidget());
        QCOMPARE(refused, QStringList({QStringLiteral("message:Gravado"),
                                       QStringLiteral("message:Confirma?"),
                                       QStringLiteral("input:Senha:")}));

        // The scope has ended: the informing box opens from the event loop, once.
        active = false;
        QStringList shown;
        QTimer closer;
        connect(&closer, &QTimer::timeout, this, [&] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                shown << box->text();
                box->accept();
            }
        });
        closer.start(20);
        QTRY_COMPARE(shown, QStringList{QStringLiteral("Gravado")});
        QTest::qWait(100);
        QCOMPARE(shown.size(), 1);
        port.clearTransactionProbe(this);
        QVERIFY(!port.transactionActive());
    }
};

QTEST_MAIN(tst_dialog_port_lock)
#include "tst_dialog_port_lock.moc"
