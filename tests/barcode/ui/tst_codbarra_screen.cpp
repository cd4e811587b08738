// The kinds-of-guide screen driven through its controls and the scripted dialogs; a kind made
// here is then recognised by the reading routine.
#include "BarcodeReader.h"
#include "CheckDigits.h"
#include "DemoData.h"
#include "TestApp.h"
#include "clsCodBarra.h"
#include "frmCodBarra.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSqlError>
#include <QSqlQuery>
#include <QTabWidget>
#include <QTreeWidget>

namespace {
struct Screen {
    frmCodBarra form;
    QTreeWidget* list;
    QTabWidget* tabs;
    explicit Screen(AppContext& ctx)
        : form(ctx), list(form.findChild<QTreeWidget*>(QStringLiteral("ListView1"))),
          tabs(form.findChild<QTabWidget*>(QStringLiteral("SSTab1"))) {}
    template <class W> W* get(const char* name) { return form.findChild<W*>(QLatin1String(name)); }
    void click(const char* name) { get<QPushButton>(name)->click(); }
    void text(const char* name, const QString& t) { get<QLineEdit>(name)->setText(t); }
    void choose(const char* name, const QString& t) { get<QComboBox>(name)->setCurrentText(t); }
    QTreeWidgetItem* row(const QString& code) {
        const auto found = list->findItems(code, Qt::MatchExactly, 0);
        return found.isEmpty() ? nullptr : found.first();
    }
    void fill(const QString& code, const QString& tipo, const QString& descricao) {
        click("Command1_1");
        text("txtordem", code);
        text("txtTipo", tipo);
        text("txtdescricao", descricao);
        choose("cmbPadrao", QStringLiteral("F"));
        choose("cmbJuros", QStringLiteral("N"));
        choose("cmbBloqueio", QStringLiteral("N"));
    }
};

void expect(TestApp& app, const QString& text, DialogIcon icon) {
    QCOMPARE(app.dialogs().last().title, QStringLiteral("Aviso"));
    QCOMPARE(app.dialogs().last().text, text);
    QCOMPARE(app.dialogs().last().icon, icon);
}
} // namespace

class tst_codbarra_screen : public QObject {
    Q_OBJECT
private slots:
    void listShowsThreeDigitCodes() {
        TestApp app;
        QVERIFY(DemoData::seed(app.ctx(), nullptr, nullptr));
        Screen s(app.ctx());
        QVERIFY(s.row(QStringLiteral("001")));
        QVERIFY(s.row(QStringLiteral("100")));
        QCOMPARE(s.row(QStringLiteral("004"))->text(2), QStringLiteral("AGUA E ESGOTO"));
    }

    void aKindMadeHereIsRead() {
        TestApp app;
        Screen s(app.ctx());
        s.fill(QStringLiteral("45"), QStringLiteral(" 0999 "), QStringLiteral("TAXA DE LIXO"));
        s.click("Command2");
        QVERIFY(app.dialogs().shown().isEmpty());
        QCOMPARE(s.tabs->currentIndex(), 0);
        QVERIFY(s.get<QLineEdit>("txtordem")->text().isEmpty());
        QCOMPARE(s.row(QStringLiteral("045"))->text(1), QStringLiteral("0999"));

        QString code = QStringLiteral("816") + QStringLiteral("00000001500") +
                       QStringLiteral("0999") + QStringLiteral("20261215") +
                       QString(17, QLatin1Char('0'));
        code.insert(3, Modulo10_arrecadacao(code));
        const ReadingDecision d =
            BarcodeReader(app.ctx()).Leitura_codigo_barras(code, QDate(2026, 11, 23), {});
        QCOMPARE(d.outcome, ReadingDecision::Outcome::Aceito);
        QCOMPARE(d.idcod, 45);
        QCOMPARE(d.descricao, QStringLiteral("TAXA DE LIXO"));
    }

    void refusals_data() {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("tipo");
        QTest::addColumn<QString>("descricao");
        QTest::addColumn<QString>("message");
        QTest::addColumn<int>("icon");
        QTest::addColumn<QString>("focus");
        const char* required = "Todos os campos obrigatórios devem ser preenchidos!!";
        auto row = [](const char* tag, const char* code, const char* tipo, const char* descricao,
                      const char* message, DialogIcon icon, const char* focus) {
            QTest::newRow(tag) << code << tipo << descricao << message << int(icon) << focus;
        };
        row("no code", "", "0999", "TAXA", required, DialogIcon::Exclamation, "txtordem");
        row("no type", "45", "  ", "TAXA", required, DialogIcon::Exclamation, "txtTipo");
        row("no description", "45", "0999", "", required, DialogIcon::Exclamation, "txtdescricao");
        row("code 0", "0", "0999", "TAXA",
            "Use númeração de 1 a 99 para itens de entrada e 100 a 999 para itens de saída",
            DialogIcon::Critical, "txtordem");
        row("code in use", "2", "0999", "TAXA", "O código 002 já está cadastrado!!",
            DialogIcon::Critical, "txtordem");
    }

    void refusals() {
        QFETCH(QString, code);
        QFETCH(QString, tipo);
        QFETCH(QString, descricao);
        QFETCH(QString, message);
        QFETCH(int, icon);
        QFETCH(QString, focus);
        TestApp app;
        QVERIFY(DemoData::seed(app.ctx(), nullptr, nullptr));
        const int before = app.count(QStringLiteral("CodBarra"));
        Screen s(app.ctx());
        s.form.show();
        s.fill(code, tipo, descricao);
        s.click("Command2");
        expect(app, message, DialogIcon(icon));
        QCOMPARE(s.tabs->currentIndex(), 1);
        QVERIFY(s.form.focusWidget());
        QCOMPARE(s.form.focusWidget()->objectName(), focus);
        QCOMPARE(app.count(QStringLiteral("CodBarra")), before);
    }

    void editAndDelete() {
        TestApp app;
        QVERIFY(DemoData::seed(app.ctx(), nullptr, nullptr));
        Screen s(app.ctx());
        auto* excluir = s.form.findChild<QAction*>(QStringLiteral("mnuexcluir"));
        s.click("Command1_0");
        expect(app, QStringLiteral("Informe um item !!!"), DialogIcon::Critical);
        excluir->trigger();
        expect(app, QStringLiteral("Informe um item !!!"), DialogIcon::Critical);

        s.list->setCurrentItem(s.row(QStringLiteral("004")));
        s.click("Command1_0");
        QCOMPARE(s.tabs->currentIndex(), 1);
        QCOMPARE(s.get<QLineEdit>("txtTipo")->text(), QStringLiteral("12345"));
        QCOMPARE(s.get<QComboBox>("cmbPadrao")->currentText(), QStringLiteral("C"));
        QVERIFY(s.get<QLineEdit>("txtordem")->isReadOnly());
        s.text("txtdescricao", QStringLiteral("AGUA"));
        s.choose("cmbBloqueio", QStringLiteral("S"));
        s.click("Command2");
        clsCodBarra k(app.db());
        QVERIFY(k.SQLSelect(4));
        QCOMPARE(k.DESCRICAO, QStringLiteral("AGUA"));
        QCOMPARE(k.BLOQUEIO, QStringLiteral("S"));

        const int before = app.count(QStringLiteral("CodBarra"));
        s.list->setCurrentItem(s.row(QStringLiteral("100")));
        app.dialogs().pushAnswer(DialogAnswer::No);
        excluir->trigger();
        QCOMPARE(app.dialogs().last().text, QStringLiteral("100 - Confirma exclusão deste item?"));
        QCOMPARE(app.dialogs().last().icon, DialogIcon::Question);
        QCOMPARE(app.count(QStringLiteral("CodBarra")), before);
        app.dialogs().pushAnswer(DialogAnswer::Yes);
        excluir->trigger();
        QCOMPARE(app.count(QStringLiteral("CodBarra")), before - 1);
        QVERIFY(!s.row(QStringLiteral("100")));
    }

    // Its receipts would leave every list and file that joins the kinds.
    void aKindWithReceiptsIsKept() {
        TestApp app;
        QVERIFY(DemoData::seed(app.ctx(), nullptr, nullptr));
        QSqlQuery q(app.db().database());
        QVERIFY2(q.exec(QStringLiteral("INSERT INTO Recebimentos (AUTENTICA, CODBARRA, "
                                       "IDMOVIMENTO, TIPO, VALOR) VALUES (27, '%1', 1, 6, "
                                       "250000)")
                            .arg(QString(44, QLatin1Char('9')))),
                 qPrintable(q.lastError().text()));
        Screen s(app.ctx());
        const int before = app.count(QStringLiteral("CodBarra"));
        s.list->setCurrentItem(s.row(QStringLiteral("006")));
        app.dialogs().pushAnswer(DialogAnswer::Yes);
        s.form.findChild<QAction*>(QStringLiteral("mnuexcluir"))->trigger();
        expect(app,
               QStringLiteral("O código 006 tem recebimentos gravados e não pode ser excluído: o "
                              "dinheiro recebido nele sairia das listas e dos arquivos."),
               DialogIcon::Exclamation);
        QCOMPARE(app.count(QStringLiteral("CodBarra")), before);
        QVERIFY(s.row(QStringLiteral("006")));
    }
};

QTEST_MAIN(tst_codbarra_screen)
#include "tst_codbarra_screen.moc"
