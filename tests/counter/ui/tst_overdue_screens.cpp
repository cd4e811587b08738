// The overdue screens: the charges notice that leaves only by OK, the interest calculator, and
// the keyboard calculator.
#include "Calculator.h"
#include "ScriptedDialogPort.h"
#include "TestApp.h"
#include "frmAcrescimos.h"
#include "frmJuros.h"

#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

class tst_overdue_screens : public QObject {
    Q_OBJECT
private slots:
    void chargesNoticeLeavesOnlyByOk() {
        ScriptedDialogPort dialogs;
        frmAcrescimos form(dialogs, QStringLiteral("Acréscimos"),
                           {QStringLiteral("Vencimento: 10/01/2026"), QStringLiteral("a"),
                            QStringLiteral("b"), QStringLiteral("c")});
        form.show();
        QTest::keyClick(&form, Qt::Key_Escape);
        QVERIFY(form.isVisible());
        form.close();
        QVERIFY(form.isVisible());
        QCOMPARE(dialogs.texts(),
                 (QStringList{QStringLiteral("Você deve sair ultilizando o botão OK."),
                              QStringLiteral("Você deve sair ultilizando o botão OK.")}));
        QCOMPARE(dialogs.last().icon, DialogIcon::Information);
        QCOMPARE(form.findChild<QLabel*>(QStringLiteral("lblvencimento"))->text(),
                 QStringLiteral("Vencimento: 10/01/2026"));
        QVERIFY(!form.findChild<QLabel*>(QStringLiteral("lbldif")));
        form.findChild<QPushButton*>(QStringLiteral("cmdOk"))->click();
        QVERIFY(!form.isVisible());
    }
    void interestScreen() {
        TestApp app;
        app.ctx().workingDate = QDate(2026, 4, 10);
        frmJuros form(app.ctx());
        auto* calc = form.findChild<QPushButton*>(QStringLiteral("Command2"));
        calc->click();
        QCOMPARE(app.dialogs().last().text, QStringLiteral("Uma opção deve ser selecionada!!!"));
        form.findChild<QRadioButton*>(QStringLiteral("Option2"))->setChecked(true);
        QCOMPARE(form.findChild<QLineEdit*>(QStringLiteral("txtjuros"))->text(),
                 QStringLiteral("0,33"));
        form.findChild<QDateEdit*>(QStringLiteral("dtpVencimento"))->setDate(QDate(2026, 3, 10));
        form.findChild<QLineEdit*>(QStringLiteral("mskprestacao"))
            ->setText(QStringLiteral("100,00"));
        calc->click();
        QCOMPARE(form.findChild<QLabel*>(QStringLiteral("lbldias"))->text(), QStringLiteral("31"));
        QCOMPARE(form.findChild<QLabel*>(QStringLiteral("lblmes"))->text(), QStringLiteral("1"));
        QCOMPARE(form.findChild<QLabel*>(QStringLiteral("lbltotal"))->text(),
                 QStringLiteral("111,00"));
        QCOMPARE(app.dialogs().shown().size(), 1);
    }
    void keyboardCalculator_data() {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("result");
        QTest::addColumn<bool>("error");
        QTest::newRow("sum with commas") << "12,5+7,5="
                                         << "20,00" << false;
        QTest::newRow("chain") << "10*3-4/2="
                               << "13,00" << false;
        QTest::newRow("second comma ignored") << "1,2,3="
                                              << "1,23" << false;
        QTest::newRow("backspace") << "125\b="
                                   << "12,00" << false;
        QTest::newRow("division by zero") << "10/0="
                                          << "" << true;
        QTest::newRow("clear after error") << "10/0=C7="
                                           << "7,00" << false;
    }
    void keyboardCalculator() {
        QFETCH(QString, keys);
        QFETCH(QString, result);
        QFETCH(bool, error);
        Calculator calc;
        for (QChar k : keys)
            calc.key(k);
        QCOMPARE(calc.error(), error);
        if (!error)
            QCOMPARE(calc.result(), result);
    }
};

QTEST_MAIN(tst_overdue_screens)
#include "tst_overdue_screens.moc"
