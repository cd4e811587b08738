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

    // A question answers to its letters alone (S, N), in the system's own boxes and in the
    // standard ones alike; Enter takes the default, No.
    void questionsAnswerToTheirLetters_data() {
        QTest::addColumn<bool>("ownForm");
        QTest::addColumn<int>("key");
        QTest::addColumn<DialogAnswer>("answer");
        for (bool own : {true, false}) {
            const char* kind = own ? "form" : "message box";
            QTest::addRow("%s S", kind) << own << int(Qt::Key_S) << DialogAnswer::Yes;
            QTest::addRow("%s N", kind) << own << int(Qt::Key_N) << DialogAnswer::No;
            QTest::addRow("%s Enter", kind) << own << int(Qt::Key_Return) << DialogAnswer::No;
        }
    }
    void questionsAnswerToTheirLetters() {
        QFETCH(bool, ownForm);
        QFETCH(int, key);
        QFETCH(DialogAnswer, answer);
        QtDialogPort port;
        QTimer::singleShot(50, this, [key] {
            if (QWidget* box = QApplication::activeModalWidget())
                QTest::keyClick(box->focusWidget() ? box->focusWidget() : box, Qt::Key(key));
        });
        bool unanswered = false;
        QTimer::singleShot(3000, this, [&unanswered] {
            if (QWidget* box = QApplication::activeModalWidget()) {
                unanswered = true; // a key that answered nothing must not hang the test
                box->close();
            }
        });
        const DialogAnswer got =
            ownForm ? port.notice(QStringLiteral("frmGuiavencida"), QStringLiteral("Guia Vencida"),
                                  {QStringLiteral("Deseja Continuar?")}, DialogButtons::YesNo)
                    : port.message(QStringLiteral("Aviso"), QStringLiteral("Confirma?"),
                                   DialogIcon::Question, DialogButtons::YesNo);
        QVERIFY(!unanswered);
        QCOMPARE(got, answer);
    }
};

QTEST_MAIN(tst_dialog_port_lock)
#include "tst_dialog_port_lock.moc"
