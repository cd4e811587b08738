// The counter screen driven by keys, as a cashier would, on the offscreen platform.
#include "CounterSession.h"
#include "DemoData.h"
#include "OverdueHandler.h"
#include "TestApp.h"
#include "frmFrente.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTreeWidget>

constexpr int kScannerPause = 200; // longer than the scanner's own Enter

class tst_frente : public QObject {
    Q_OBJECT

    struct Screen {
        TestApp app;
        CounterSession session{app.ctx(), nullptr};
        std::unique_ptr<frmFrente> form;
        Screen() {
            QVERIFY(app.db().SQLExecute(QStringLiteral(
                "INSERT INTO CodBarra (IDCOD, IDTIPO, DESCRICAO, PADRAO, JUROS, BLOQUEIO) "
                "VALUES (7, 'AV1', 'TAXA DE EXPEDIENTE', 'A', 'N', 'N'), "
                "(8, 'AV2', 'CERTIDAO', 'A', 'N', 'N'), (100, 'DIN', 'DINHEIRO', 'S', 'N', 'N')")));
            app.ctx().workingDate = QDate(2026, 11, 23);
            app.ctx().userName = QStringLiteral("ANA");
            QVERIFY(session.day().abrir());
            app.dialogs().clear();
            form = std::make_unique<frmFrente>(session, false);
            form->show();
            QVERIFY(QTest::qWaitForWindowExposed(form.get()));
        }
        template <class T> T* w(const char* name) {
            return form->findChild<T*>(QLatin1String(name));
        }
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
    };

private slots:
    // An overdue guide: the screen asks frmGuiavencida; No adds nothing, Yes adds it charged.
    void overdueGuideAsksBeforeAdding() {
        Screen s;
        QVERIFY(s.app.db().SQLExecute(
            QStringLiteral("INSERT INTO CodBarra (IDCOD, IDTIPO, DESCRICAO, PADRAO, JUROS, "
                           "BLOQUEIO) VALUES (3, '0427', 'ISSQN', 'F', 'S', 'N')")));
        s.app.setOption(QStringLiteral("Opcoes"), QStringLiteral("juros"), QStringLiteral("1"));
        s.app.ctx().reloadSettings();
        const QString overdue = QStringLiteral("81830000012345604272026011000000000000000000");
        auto* entry = s.w<QLineEdit>("txtValorCodBarra");
        s.app.dialogs().pushAnswer(DialogAnswer::No);
        entry->setText(overdue);
        const auto asked = s.app.dialogs().shown().first();
        QCOMPARE(asked.form, OverdueHandler::kFormGuia);
        QCOMPARE(asked.title, QStringLiteral("Guia Vencida"));
        QCOMPARE(asked.text,
                 QStringLiteral("Guia com a data de vencimento vencida.\nDeseja Continuar?"));
        QCOMPARE(s.w<QTreeWidget>("lstSoma")->topLevelItemCount(), 0);
        QVERIFY(entry->text().isEmpty());

        s.app.dialogs().clear();
        s.app.dialogs().pushAnswer(DialogAnswer::Yes);
        entry->setText(overdue);
        QCOMPARE(s.app.dialogs().shown().size(), 2);
        QCOMPARE(s.app.dialogs().last().form, QStringLiteral("frmAcrescimos"));
        QCOMPARE(s.w<QTreeWidget>("lstSoma")->topLevelItemCount(), 1);
        QCOMPARE(s.w<QLabel>("lbltotalConta")->text(), QStringLiteral("R$ 1.493,82"));
    }

    // F4 and F5: the screen asks, the day closes and reopens, and each answer is respected.
    void closingAndReopeningAskFirst() {
        Screen s;
        s.app.dialogs().pushAnswer(DialogAnswer::No);
        s.key(Qt::Key_F4);
        QCOMPARE(s.app.dialogs().texts(),
                 (QStringList{CashDay::kPerguntaEncerrar, CashDay::kCancelado}));
        QCOMPARE(s.w<QLabel>("lblStatus")->text(), QStringLiteral("CAIXA PRONTO"));

        s.app.dialogs().clear();
        s.app.dialogs().pushAnswer(DialogAnswer::Yes);
        s.app.dialogs().pushAnswer(DialogAnswer::No);
        s.key(Qt::Key_F4);
        QCOMPARE(s.app.dialogs().texts(),
                 (QStringList{CashDay::kPerguntaEncerrar, CashDay::kPerguntaCupomEncerramento,
                              CashDay::kEncerrado}));
        QCOMPARE(s.app.dialogs().last().icon, DialogIcon::Information);
        QCOMPARE(s.w<QLabel>("lblStatus")->text(), QStringLiteral("CAIXA ENCERRADO"));

        s.app.dialogs().clear();
        s.key(Qt::Key_F4);
        QCOMPARE(s.app.dialogs().texts(),
                 QStringList{QStringLiteral("O movimento já está encerrado.")});

        s.app.dialogs().clear();
        s.app.dialogs().pushAnswer(DialogAnswer::Yes);
        s.app.dialogs().pushAnswer(DialogAnswer::No);
        s.key(Qt::Key_F5);
        QCOMPARE(s.app.dialogs().texts(),
                 (QStringList{CashDay::kPerguntaReabrir, CashDay::kPerguntaCupomReabertura}));
        QCOMPARE(s.w<QLabel>("lblStatus")->text(), QStringLiteral("CAIXA PRONTO"));
    }

    void kindListOffersEntryKindsOnly() {
        Screen s;
        auto* kinds = s.w<QComboBox>("cmbTipoGuia");
        QCOMPARE(kinds->count(), 2);
        QCOMPARE(kinds->itemText(0), QStringLiteral("CERTIDAO"));
        QCOMPARE(kinds->currentIndex(), -1);
        QCOMPARE(s.w<QLabel>("lblStatus")->text(), QStringLiteral("CAIXA PRONTO"));
        QCOMPARE(s.w<QLabel>("lbltotalConta")->text(), QStringLiteral("Calcular"));
        QVERIFY(s.w<QLabel>("lblHora")->text().startsWith(QStringLiteral("Agora: 10:00:00")));
    }

    void typedItemsChangeAndEnter() {
        Screen s;
        s.typeItem(1, QStringLiteral("12,50"));
        s.typeItem(0, QStringLiteral("7,50"));
        auto* soma = s.w<QTreeWidget>("lstSoma");
        QCOMPARE(soma->topLevelItemCount(), 2);
        QCOMPARE(soma->topLevelItem(1)->text(1), QStringLiteral("08-CERTIDAO"));
        QCOMPARE(soma->topLevelItem(1)->text(3), QStringLiteral("20,00"));
        QCOMPARE(s.w<QLabel>("lbltotalConta")->text(), QStringLiteral("R$ 20,00"));
        QCOMPARE(QApplication::focusWidget(), s.w<QLineEdit>("txtValorCodBarra"));

        QTest::keyClicks(s.w<QLineEdit>("txtValorCodBarra"), QStringLiteral("15"));
        s.key(Qt::Key_Minus);
        QCOMPARE(s.w<QLabel>("lblTroco")->text(), QStringLiteral("Deve: R$ 5,00"));
        s.key(Qt::Key_Return); // still owes: nothing recorded
        QCOMPARE(s.app.count(QStringLiteral("Recebimentos")), 0);

        QTest::keyClicks(s.w<QLineEdit>("txtValorCodBarra"), QStringLiteral("50,00"));
        s.key(Qt::Key_Minus);
        QCOMPARE(s.w<QLabel>("lblTroco")->text(), QStringLiteral("Troco: R$ 30,00"));
        s.app.dialogs().clear();
        s.key(Qt::Key_Return);
        QCOMPARE(s.app.count(QStringLiteral("Recebimentos")), 2);
        QCOMPARE(s.app.dialogs().texts(), QStringList{QStringLiteral("Registro Gravado!!!")});
        QCOMPARE(soma->topLevelItemCount(), 0);
        QCOMPARE(s.w<QLabel>("lbltotalConta")->text(), QStringLiteral("Calcular"));
        QCOMPARE(s.w<QLabel>("lblTroco")->text(), QStringLiteral("A Pagar"));
        auto* lancado = s.w<QTreeWidget>("lstLancado");
        QCOMPARE(lancado->topLevelItemCount(), 2);
        QCOMPARE(lancado->topLevelItem(0)->text(0), QStringLiteral("0002"));
        QCOMPARE(s.w<QLabel>("lblLancado")->text(), QStringLiteral("Caixa dia: 23 - 11 - 2026"));
    }

    void emptyValueAndTwoCommasAreRefused() {
        Screen s;
        s.typeItem(0, QString());
        QCOMPARE(s.app.dialogs().last().text, QStringLiteral("Um valor deve ser informado!!"));
        s.typeItem(0, QStringLiteral("1,0,0"));
        QCOMPARE(s.w<QTreeWidget>("lstSoma")->topLevelItemCount(), 0);
        s.w<QLineEdit>("txtValorCodBarra")->setFocus();
        QTest::keyClicks(s.w<QLineEdit>("txtValorCodBarra"), QStringLiteral("1,0,0"));
        s.key(Qt::Key_Minus);
        QCOMPARE(s.app.dialogs().last().text,
                 QStringLiteral("O valor informado não é um número!!"));
        s.key(Qt::Key_Escape); // an empty list leaves without asking
        QVERIFY(!s.form->isVisible());
    }

    void removeKeysAndRefusals() {
        Screen s;
        for (const char* v : {"1,00", "2,00", "3,00"})
            s.typeItem(0, QString::fromLatin1(v));
        s.key(Qt::Key_F2);
        QCOMPARE(s.w<QTreeWidget>("lstSoma")->topLevelItemCount(), 2);

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
        QCOMPARE(s.w<QTreeWidget>("lstSoma")->topLevelItem(0)->text(2), QStringLiteral("2,00"));

        s.app.dialogs().pushAnswer(DialogAnswer::No);
        s.key(Qt::Key_F3);
        QCOMPARE(s.app.dialogs().last().text, QStringLiteral("Deseja realmente limpar a soma?"));
        QCOMPARE(s.w<QTreeWidget>("lstSoma")->topLevelItemCount(), 1);
        s.app.dialogs().pushAnswer(DialogAnswer::No);
        s.key(Qt::Key_Escape); // items not recorded: asks, and stays
        QVERIFY(s.form->isVisible());
        s.app.dialogs().pushAnswer(DialogAnswer::Yes);
        s.key(Qt::Key_F3);
        QCOMPARE(s.w<QTreeWidget>("lstSoma")->topLevelItemCount(), 0);
    }

    void closeAndReopenByKeys() {
        Screen s;
        s.app.dialogs().defaultAnswer = DialogAnswer::Yes;
        s.key(Qt::Key_F4);
        QCOMPARE(s.w<QLabel>("lblStatus")->text(), QStringLiteral("CAIXA ENCERRADO"));
        s.typeItem(0, QStringLiteral("1,00"));
        QCOMPARE(s.w<QTreeWidget>("lstSoma")->topLevelItemCount(),
                 0); // nothing added after closing
        s.key(Qt::Key_F5);
        QCOMPARE(s.w<QLabel>("lblStatus")->text(), QStringLiteral("CAIXA PRONTO"));
    }

    void scanningAtTheCounter() {
        Screen s;
        QVERIFY(DemoData::seed(s.app.ctx(), nullptr, nullptr));
        s.app.setOption(QStringLiteral("Opcoes"), QStringLiteral("juros"), QStringLiteral("1"));
        auto* entry = s.w<QLineEdit>("txtValorCodBarra");
        auto* soma = s.w<QTreeWidget>("lstSoma");
        const QString onTime = QStringLiteral("81660000003124004262026113058888888888888888");
        const QString overdue = QStringLiteral("81830000012345604272026011000000000000000000");
        s.form->setScannerEnterWindow(60000); // however slow this machine is
        QTest::keyClicks(entry, onTime);
        QCOMPARE(soma->topLevelItemCount(), 1);
        QVERIFY(entry->text().isEmpty());
        s.key(Qt::Key_Return); // the scanner's own Enter right after the code
        QCOMPARE(s.app.count(QStringLiteral("Recebimentos")), 0);
        s.form->setScannerEnterWindow(kScannerPause / 2);

        QTest::keyClicks(entry, onTime);
        QCOMPARE(s.app.dialogs().last().text, QStringLiteral("Conta já Lançada!!!"));
        QCOMPARE(soma->topLevelItemCount(), 1);

        s.app.dialogs().pushAnswer(DialogAnswer::No);
        QTest::keyClicks(entry, overdue);
        QCOMPARE(s.app.dialogs().last().form, QStringLiteral("frmGuiavencida"));
        QCOMPARE(soma->topLevelItemCount(), 1);
        QVERIFY(entry->text().isEmpty());
        QCOMPARE(s.w<QComboBox>("cmbTipoGuia")->currentIndex(), -1);

        s.app.dialogs().pushAnswer(DialogAnswer::Yes);
        QTest::keyClicks(entry, overdue);
        QCOMPARE(soma->topLevelItemCount(), 2);
        QCOMPARE(soma->topLevelItem(1)->text(2), QStringLiteral("1.493,82"));
        QCOMPARE(s.w<QLabel>("lbltotalConta")->text(), QStringLiteral("R$ 1.806,22"));

        // A bank-slip line pasted into the same field, then Enter.
        entry->setText(QStringLiteral("00191.23454 00000.000000 00000.000000 3 16510000008915"));
        QTest::qWait(kScannerPause);
        s.key(Qt::Key_Return);
        QCOMPARE(soma->topLevelItemCount(), 3);
        QTest::qWait(kScannerPause);
        s.key(Qt::Key_Return);
        QCOMPARE(s.app.count(QStringLiteral("Recebimentos")), 3);
    }

    void consultationIsReadOnly() {
        TestApp app;
        app.ctx().workingDate = QDate(2026, 11, 20);
        CounterSession session(app.ctx(), nullptr);
        QVERIFY(session.day().abrir());
        app.dialogs().clear();
        frmFrente form(session, true);
        form.show();
        QVERIFY(!form.findChild<QLineEdit*>(QStringLiteral("txtValorCodBarra"))->isEnabled());
        QTest::keyClick(&form, Qt::Key_F4);
        QVERIFY(app.dialogs().shown().isEmpty());
        QVERIFY(session.day().aberto());
        QVERIFY(form.findChild<QLabel*>(QStringLiteral("lblStatus"))
                    ->text()
                    .startsWith(QStringLiteral("CONSULTA")));
    }
};

QTEST_MAIN(tst_frente)
#include "tst_frente.moc"
