// The date screen: password, date and the two actions, through the scripted dialog port.
#include "TestApp.h"
#include "clsMovimento.h"
#include "frmData.h"

#include <QApplication>
#include <QDateEdit>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>

class tst_date_screen : public QObject {
    Q_OBJECT
private slots:
    void dateRules_data() {
        QTest::addColumn<QString>("senha");
        QTest::addColumn<QDate>("date");
        QTest::addColumn<bool>("consultar");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<QStringList>("messages");
        const QDate today(2026, 11, 23);
        QTest::newRow("wrong password")
            << "nao" << today << false << false << QStringList{QStringLiteral("Senha Inválida!!")};
        QTest::newRow("future date")
            << "ana" << today.addDays(1) << false << false
            << QStringList{
                   QStringLiteral("A data atual não pode ser menor que esta selecionada!!")};
        QTest::newRow("open today") << "ana" << today << false << true << QStringList{};
        QTest::newRow("open another day")
            << "ana" << today.addDays(-3) << false << true
            << QStringList{
                   QStringLiteral(
                       "Data do Computador diferente da data de abertura do caixa!! Verifique."),
                   QStringLiteral("O caixa será aberto com a data selecionada.")};
        QTest::newRow("consult day without movement")
            << "ana" << today.addDays(-1) << true << false
            << QStringList{QStringLiteral("Não foi encontrado nenhum movimento com essa data!!")};
        QTest::newRow("consult day with movement")
            << "ana" << today.addDays(-2) << true << true << QStringList{};
    }
    void dateRules() {
        QFETCH(QString, senha);
        QFETCH(QDate, date);
        QFETCH(bool, consultar);
        QFETCH(bool, ok);
        QFETCH(QStringList, messages);
        TestApp app;
        app.addUser(QStringLiteral("ANA"), QStringLiteral("ana"), QStringLiteral("USER"));
        clsMovimento m(app.db());
        m.MDATA = QDate(2026, 11, 21);
        m.STATUS = QStringLiteral("FECHADO");
        QVERIFY(m.inserirNovo());

        frmData screen(app.ctx());
        QSignalSpy spy(&screen, &frmData::prosseguir);
        screen.findChild<QLineEdit*>(QStringLiteral("txtsenha"))->setText(senha);
        screen.findChild<QDateEdit*>(QStringLiteral("dtpData"))->setDate(date);
        screen
            .findChild<QPushButton*>(consultar ? QStringLiteral("cmdConsultar")
                                               : QStringLiteral("cmdAbrirCaixa"))
            ->click();
        QCOMPARE(app.dialogs().texts(), messages);
        QCOMPARE(spy.count(), ok ? 1 : 0);
        if (ok)
            QCOMPARE(app.ctx().workingDate, date);
        if (!messages.isEmpty() && !ok)
            QCOMPARE(app.dialogs().last().icon,
                     senha == QLatin1String("nao") || date > QDate(2026, 11, 23)
                         ? DialogIcon::Critical
                         : DialogIcon::Exclamation);
    }

    // A date keyed digit by digit fills day, month and year in order, wherever the field was
    // entered, as an operator types it without a mouse.
    void typedDateFillsInOrder_data() {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QDate>("date");
        QTest::addColumn<bool>("byClick");
        QTest::newRow("eight digits") << "20112026" << QDate(2026, 11, 20) << false;
        QTest::newRow("with slashes") << "05/03/2026" << QDate(2026, 3, 5) << false;
        QTest::newRow("day and month only") << "0109" << QDate(2026, 9, 1) << false;
        QTest::newRow("clicked on the year") << "20112026" << QDate(2026, 11, 20) << true;
    }
    void typedDateFillsInOrder() {
        QFETCH(QString, keys);
        QFETCH(QDate, date);
        QFETCH(bool, byClick);
        TestApp app;
        frmData screen(app.ctx());
        screen.show();
        QVERIFY(QTest::qWaitForWindowExposed(&screen));
        auto* field = screen.findChild<QDateEdit*>(QStringLiteral("dtpData"));
        if (byClick) {
            auto* edit = field->findChild<QLineEdit*>();
            QTest::mouseClick(edit, Qt::LeftButton, {}, QPoint(edit->width() - 30, 5));
        } else {
            QTest::keyClick(screen.findChild<QLineEdit*>(QStringLiteral("txtsenha")), Qt::Key_Tab);
        }
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(field));
        QCoreApplication::processEvents();
        QTest::keyClicks(field, keys);
        QCOMPARE(field->date(), date);
    }
};

QTEST_MAIN(tst_date_screen)
#include "tst_date_screen.moc"
