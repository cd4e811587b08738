// The entry screen in its three modes and the counter's menu entries that open the cash-day
// screens, driven through their widgets and the scripted dialogs.
#include "AppShell.h"
#include "CounterSession.h"
#include "TestApp.h"
#include "clsMovimento.h"
#include "frmFrente.h"
#include "frmSangria.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>

namespace {

struct Setup {
    TestApp app;
    qint32 mov = 0;
    Setup() {
        QVERIFY(app.db().SQLExecute(QStringLiteral(
            "INSERT INTO CodBarra (IDCOD, IDTIPO, DESCRICAO, PADRAO) VALUES (100, 'DIN', "
            "'DINHEIRO', 'S'), (101, 'CHQ', 'CHEQUE', 'S'), (7, 'AV1', 'TAXA', 'A')")));
        app.addUser(QStringLiteral("CHEFE"), QStringLiteral("chefe123"), QStringLiteral("ADM"));
        app.addUser(QStringLiteral("ANA"), QStringLiteral("ana123"), QStringLiteral("USER"));
        app.ctx().workingDate = QDate(2026, 11, 23);
        app.ctx().userName = QStringLiteral("ANA");
        clsMovimento m(app.db());
        m.MDATA = app.ctx().workingDate;
        m.MOV = 1;
        m.STATUS = QStringLiteral("ABERTO");
        QVERIFY(m.inserirNovo());
        mov = m.ID;
        app.dialogs().clear();
    }
    void close() {
        clsMovimento m(app.db());
        QVERIFY(m.SQLSelect(mov));
        m.STATUS = QStringLiteral("FECHADO");
        QVERIFY(m.SQLUpdateTotais());
    }
    Money saida(qint32 id) {
        clsSangria s(app.db());
        s.SQLSelect(id);
        return s.SAIDA;
    }
};

template <class T> T* w(QWidget* form, const char* name) {
    T* found = form->findChild<T*>(QLatin1String(name));
    if (!found)
        qWarning("no widget %s", name);
    return found;
}

void click(QWidget* form, const char* name) {
    w<QPushButton>(form, name)->click();
}

void item(QWidget* form, int row, const QString& numero, const QString& valor) {
    w<QComboBox>(form, "cmbEspecie")->setCurrentIndex(row);
    w<QLineEdit>(form, "txtnumero")->setText(numero);
    w<QLineEdit>(form, "mskValorItem")->setText(valor);
    click(form, "cmdSave");
}

// Runs `trigger`, and closes (and names) whatever modal window it opened.
QString openedBy(const std::function<void()>& trigger) {
    QString title;
    QTimer timer; // ends with this call, fired or not
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, [&title] {
        if (QWidget* m = QApplication::activeModalWidget()) {
            title = m->windowTitle();
            m->close();
        }
    });
    timer.start(0);
    trigger();
    return title;
}

} // namespace

class tst_sangria_screen : public QObject {
    Q_OBJECT
private slots:
    void withdrawalOfTwoItems() {
        Setup s;
        frmSangria f(s.app.ctx(), s.mov, EntryKind::Withdrawal);
        QCOMPARE(f.windowTitle(), QStringLiteral("Retiradas de Caixa (Sangria)"));
        QCOMPARE(w<QComboBox>(&f, "cmbTipo")->currentText(), QStringLiteral("SANGRIA"));
        QCOMPARE(w<QLineEdit>(&f, "txtdescricao")->text(), QStringLiteral("RETIRADAS DE CAIXA"));
        QVERIFY(w<QLineEdit>(&f, "txtdescricao")->isReadOnly());
        QVERIFY(!w<QGroupBox>(&f, "fraItens")->isEnabled());
        QCOMPARE(w<QComboBox>(&f, "cmbEspecie")->count(), 2); // kinds of money only

        click(&f, "cmdIncluirItens");
        const qint32 id = w<QLineEdit>(&f, "txtordem")->text().toInt();
        QVERIFY(id > 0);
        QVERIFY(w<QGroupBox>(&f, "fraItens")->isEnabled());
        item(&f, 0, QString(), QStringLiteral("100,00"));
        item(&f, 1, QStringLiteral("123"), QStringLiteral("50,00"));
        auto* itens = w<QTreeWidget>(&f, "lstitens");
        QCOMPARE(itens->topLevelItemCount(), 2);
        QCOMPARE(itens->topLevelItem(1)->text(1), QStringLiteral("CHEQUE"));
        QCOMPARE(itens->topLevelItem(1)->text(3), QStringLiteral("50,00"));
        QCOMPARE(w<QLineEdit>(&f, "txtvalor")->text(), QStringLiteral("150,00"));
        QCOMPARE(s.saida(id), Money::fromReais(150));
        auto* lista = w<QTreeWidget>(&f, "ListView1");
        QCOMPARE(lista->topLevelItemCount(), 1);
        QCOMPARE(lista->topLevelItem(0)->text(1), QStringLiteral("23/11/2026"));
        QCOMPARE(w<QLabel>(&f, "lblSoma")->text(), QStringLiteral("TOTAL: R$ 150,00"));
        QVERIFY(s.app.dialogs().shown().isEmpty());

        click(&f, "cmdDel"); // nothing selected
        QCOMPARE(s.app.dialogs().texts(), QStringList{QStringLiteral("Informe um item !!!")});
        QCOMPARE(s.app.dialogs().last().icon, DialogIcon::Critical);
        itens->setCurrentItem(itens->topLevelItem(0));
        s.app.dialogs().clear();
        s.app.dialogs().pushAnswer(DialogAnswer::No);
        click(&f, "cmdDel");
        QCOMPARE(s.app.dialogs().texts(),
                 QStringList{QStringLiteral("Confirma exclusão do item selecionado?")});
        QCOMPARE(itens->topLevelItemCount(), 2);
        s.app.dialogs().pushAnswer(DialogAnswer::Yes);
        click(&f, "cmdDel");
        QCOMPARE(itens->topLevelItemCount(), 1);
        QCOMPARE(w<QLineEdit>(&f, "txtvalor")->text(), QStringLiteral("50,00"));
        QCOMPARE(s.saida(id), Money::fromReais(50));
        QCOMPARE(w<QLabel>(&f, "lblSoma")->text(), QStringLiteral("TOTAL: R$ 50,00"));

        click(&f, "Command1"); // finished: ready for the next one
        QCOMPARE(w<QLineEdit>(&f, "txtordem")->text(), QStringLiteral("Aut.Num."));
        QCOMPARE(itens->topLevelItemCount(), 0);
        QVERIFY(!w<QGroupBox>(&f, "fraItens")->isEnabled());
    }

    void emptyEntriesAndRequiredFields() {
        Setup s;
        frmSangria f(s.app.ctx(), s.mov, EntryKind::PaymentOut);
        f.show();
        QVERIFY(QTest::qWaitForWindowExposed(&f));
        QVERIFY(!w<QLineEdit>(&f, "txtdescricao")->isReadOnly());
        click(&f, "cmdIncluirItens");
        QCOMPARE(
            s.app.dialogs().texts(),
            QStringList{QStringLiteral("Todos os campos obrigatórios devem ser preenchidos!!")});
        QCOMPARE(QApplication::focusWidget(), w<QLineEdit>(&f, "txtdescricao"));
        QCOMPARE(s.app.count(QStringLiteral("Sangria")), 0);

        w<QLineEdit>(&f, "txtdescricao")->setText(QStringLiteral("EMPENHO 9"));
        click(&f, "cmdIncluirItens");
        QVERIFY(w<QLineEdit>(&f, "txtdescricao")->isReadOnly()); // locked once stored
        s.app.dialogs().clear();
        click(&f, "cmdSave"); // nothing typed
        QCOMPARE(
            s.app.dialogs().texts(),
            QStringList{QStringLiteral("Todos os campos obrigatórios devem ser preenchidos!!")});
        QCOMPARE(QApplication::focusWidget(), w<QLineEdit>(&f, "mskValorItem"));
        s.app.dialogs().clear();
        click(&f, "Command1"); // stored without items
        QCOMPARE(s.app.dialogs().texts(), QStringList{QStringLiteral("Informe um item !!!")});
        QCOMPARE(s.app.count(QStringLiteral("Sangria")), 1);
        f.reject(); // leaving it: the empty entry goes
        QCOMPARE(s.app.count(QStringLiteral("Sangria")), 0);

        CashEntry(s.app.ctx(), s.mov, EntryKind::PaymentOut).incluirItens(QStringLiteral("X"));
        QCOMPARE(s.app.count(QStringLiteral("Sangria")), 1); // as if the program had stopped
        frmSangria next(s.app.ctx(), s.mov, EntryKind::PaymentOut);
        QCOMPARE(s.app.count(QStringLiteral("Sangria")), 0);
        QCOMPARE(w<QTreeWidget>(&next, "ListView1")->topLevelItemCount(), 0);
    }

    // A payment typed from the keyboard: Enter on the description stores the entry, Enter on
    // the value stores the item.
    void keyboardOnly() {
        Setup s;
        frmSangria f(s.app.ctx(), s.mov, EntryKind::PaymentOut);
        f.show();
        QVERIFY(QTest::qWaitForWindowExposed(&f));
        QTest::keyClicks(w<QLineEdit>(&f, "txtdescricao"), QStringLiteral("EMPENHO 5"));
        QTest::keyClick(w<QLineEdit>(&f, "txtdescricao"), Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), w<QComboBox>(&f, "cmbEspecie"));
        w<QComboBox>(&f, "cmbEspecie")->setCurrentIndex(0);
        QTest::keyClicks(w<QLineEdit>(&f, "mskValorItem"), QStringLiteral("12,34"));
        QTest::keyClick(w<QLineEdit>(&f, "mskValorItem"), Qt::Key_Return);
        QCOMPARE(w<QLineEdit>(&f, "txtvalor")->text(), QStringLiteral("12,34"));
        QCOMPARE(s.app.count(QStringLiteral("Itens")), 1);
        QVERIFY(f.isVisible());
        QVERIFY(s.app.dialogs().shown().isEmpty());
    }

    void searchAndDeleteEntries() {
        Setup s;
        for (const char* d : {"EMPENHO 1", "MATERIAL DE LIMPEZA"}) {
            CashEntry e(s.app.ctx(), s.mov, EntryKind::PaymentOut);
            QVERIFY(e.incluirItens(QLatin1String(d)));
            QVERIFY(e.gravarItem(100, QString(), Money::fromReais(10)));
        }
        frmSangria f(s.app.ctx(), s.mov, EntryKind::PaymentOut);
        auto* lista = w<QTreeWidget>(&f, "ListView1");
        QCOMPARE(lista->topLevelItemCount(), 2);
        QCOMPARE(w<QLabel>(&f, "lblSoma")->text(), QStringLiteral("TOTAL: R$ 20,00"));
        w<QLineEdit>(&f, "txtpesquisa")->setText(QStringLiteral("limp"));
        click(&f, "cmdProcura");
        QCOMPARE(lista->topLevelItemCount(), 1);
        QCOMPARE(lista->topLevelItem(0)->text(4), QStringLiteral("MATERIAL DE LIMPEZA"));

        auto* excluir = f.findChild<QAction*>(QStringLiteral("mnuexcluir"));
        lista->setCurrentItem(nullptr);
        excluir->trigger();
        QCOMPARE(s.app.dialogs().texts(), QStringList{QStringLiteral("Informe um item !!!")});
        lista->setCurrentItem(lista->topLevelItem(0));
        s.app.dialogs().clear();
        s.app.dialogs().pushAnswer(DialogAnswer::No);
        excluir->trigger();
        QCOMPARE(s.app.dialogs().texts(),
                 QStringList{QStringLiteral("Confirma exclusão deste item? - ") +
                             lista->topLevelItem(0)->text(0)});
        QCOMPARE(s.app.count(QStringLiteral("Sangria")), 2);
        s.app.dialogs().pushAnswer(DialogAnswer::Yes);
        excluir->trigger();
        QCOMPARE(s.app.count(QStringLiteral("Sangria")), 1);
        QCOMPARE(lista->topLevelItemCount(), 0);

        s.close();
        w<QLineEdit>(&f, "txtpesquisa")->clear();
        click(&f, "cmdProcura");
        lista->setCurrentItem(lista->topLevelItem(0));
        s.app.dialogs().clear();
        excluir->trigger(); // no question on a closed day
        QCOMPARE(s.app.dialogs().texts(),
                 QStringList{QStringLiteral(
                     "Você não pode excluir!! O movimento desta data já foi fechado")});
        QCOMPARE(s.app.count(QStringLiteral("Sangria")), 1);
    }

    void closedMovementIsListedButNotChanged() {
        Setup s;
        CashEntry e(s.app.ctx(), s.mov, EntryKind::CashIn);
        QVERIFY(e.incluirItens(QString()));
        QVERIFY(e.gravarItem(100, QString(), Money::fromReais(200)));
        s.close();
        frmSangria f(s.app.ctx(), s.mov, EntryKind::CashIn);
        QCOMPARE(w<QTreeWidget>(&f, "ListView1")->topLevelItemCount(), 1);
        QCOMPARE(w<QLabel>(&f, "lblSoma")->text(), QStringLiteral("TOTAL: R$ 200,00"));
        click(&f, "cmdIncluirItens");
        QCOMPARE(s.app.dialogs().texts(),
                 QStringList{QStringLiteral("Você não pode efetuar nenhuma inclusão ou alteração "
                                            "de registro com o movimento fechado")});
        QCOMPARE(s.app.dialogs().last().title, QStringLiteral("Aviso"));
        QCOMPARE(w<QLineEdit>(&f, "txtordem")->text(), QStringLiteral("Aut.Num."));
        QCOMPARE(s.app.count(QStringLiteral("Sangria")), 1);
    }

    // The counter's entries: an administrator's password for entries and withdrawals (a wrong
    // one opens nothing and says nothing), none for payments, and the safe refused on a
    // closed day.
    void counterMenuEntries() {
        Setup s;
        CounterSession session(s.app.ctx(), nullptr);
        QVERIFY(session.day().consultar());
        const auto counterWindow = AppShell::counter(session, false);
        frmFrente& counter = *counterWindow;
        auto action = [&](const char* name) {
            return counter.findChild<QAction*>(QLatin1String(name));
        };
        s.app.dialogs().pushInput(QStringLiteral("ana123"));
        QCOMPARE(openedBy([&] { action("mnuSangria")->trigger(); }), QString());
        QCOMPARE(s.app.dialogs().shown().size(), 1);
        QCOMPARE(s.app.dialogs().last().kind, QStringLiteral("input"));
        QCOMPARE(s.app.dialogs().last().title, QStringLiteral("Retiradas de Caixa (Sangria)"));
        QCOMPARE(s.app.dialogs().last().text,
                 QStringLiteral("Entre com a senha do administrador!!"));
        s.app.dialogs().pushInput(QStringLiteral("CHEFE123"));
        QCOMPARE(openedBy([&] { action("mnuSangria")->trigger(); }),
                 QStringLiteral("Retiradas de Caixa (Sangria)"));
        s.app.dialogs().pushInput(QStringLiteral("chefe123"));
        QCOMPARE(openedBy([&] { action("mnuLanca")->trigger(); }),
                 QStringLiteral("Abertura e Lançamentos de Caixa"));
        s.app.dialogs().clear();
        QCOMPARE(openedBy([&] { action("mnuPagtos")->trigger(); }),
                 QStringLiteral("Pagamentos de Empenhos (Saídas)"));
        QVERIFY(s.app.dialogs().shown().isEmpty()); // no password for payments
        QCOMPARE(openedBy([&] { action("mnuSuprimentos")->trigger(); }), QStringLiteral("Cofre"));
        QCOMPARE(openedBy([&] { action("mnuConferir")->trigger(); }),
                 QStringLiteral("Conferência de Caixa"));
        QCOMPARE(openedBy([&] { action("mnuConftemp")->trigger(); }),
                 QStringLiteral("Conferência Temporária de Caixa"));

        s.close();
        QCOMPARE(openedBy([&] { action("mnuSuprimentos")->trigger(); }), QString());
        QCOMPARE(s.app.dialogs().texts(),
                 QStringList{QStringLiteral(
                     "Você não pode movimentar o cofre, com o caixa já encerrado!!")});
        QCOMPARE(s.app.dialogs().last().icon, DialogIcon::Critical);
    }
};

QTEST_MAIN(tst_sangria_screen)
#include "tst_sangria_screen.moc"
