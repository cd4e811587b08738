// The users screen driven through its controls and the scripted dialogs: an operator made here
// logs in; a stored password is never shown.
#include "Login.h"
#include "TestApp.h"
#include "frmUsuarios.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeWidget>

namespace {
struct Screen {
    frmUsuarios form;
    QTreeWidget* list;
    QTabWidget* tabs;
    explicit Screen(AppContext& ctx)
        : form(ctx), list(form.findChild<QTreeWidget*>(QStringLiteral("ListView1"))),
          tabs(form.findChild<QTabWidget*>(QStringLiteral("SSTab1"))) {}
    template <class W> W* get(const char* name) { return form.findChild<W*>(QLatin1String(name)); }
    void click(const char* name) { get<QPushButton>(name)->click(); }
    void text(const char* name, const QString& t) { get<QLineEdit>(name)->setText(t); }
    void select(const QString& nome) {
        list->setCurrentItem(list->findItems(nome, Qt::MatchExactly, 0).value(0));
    }
    void novo(const QString& nome, const QString& senha, const QString& tipo) {
        click("cmdNovo");
        text("txtnome", nome);
        text("txtsenha", senha);
        get<QComboBox>("Combo")->setCurrentText(tipo);
    }
};

void expect(TestApp& app, const QString& text, DialogIcon icon) {
    QCOMPARE(app.dialogs().last().title, QStringLiteral("Aviso"));
    QCOMPARE(app.dialogs().last().text, text);
    QCOMPARE(app.dialogs().last().icon, icon);
}
} // namespace

class tst_usuarios_screen : public QObject {
    Q_OBJECT
private slots:
    void anOperatorMadeHereLogsIn() {
        TestApp app;
        Screen s(app.ctx());
        s.novo(QStringLiteral(" LUCIA "), QStringLiteral("lucia26 "), QStringLiteral("USER"));
        QCOMPARE(s.get<QLineEdit>("txtordem")->text(), QStringLiteral("Aut.Num."));

        app.dialogs().pushInput(QStringLiteral("lucia27"));
        s.click("Command2");
        expect(app, QStringLiteral("Senha não confere!!"), DialogIcon::Exclamation);
        QCOMPARE(app.count(QStringLiteral("Usuarios")), 0);
        app.dialogs().pushInput(QString());
        s.click("Command2"); // an empty confirmation cancels without a word
        QCOMPARE(app.dialogs().last().kind, QStringLiteral("input"));
        QCOMPARE(app.dialogs().last().text, QStringLiteral("Confirme a senha!!"));
        QCOMPARE(app.count(QStringLiteral("Usuarios")), 0);

        app.dialogs().pushInput(QStringLiteral("  lucia26"));
        s.click("Command2");
        QCOMPARE(app.dialogs().last().kind, QStringLiteral("input"));
        QCOMPARE(app.count(QStringLiteral("Usuarios")), 1);
        QCOMPARE(s.tabs->currentIndex(), 0);
        QCOMPARE(s.list->topLevelItem(0)->text(0), QStringLiteral("LUCIA"));
        QVERIFY(Login::Valida_senha(app.ctx(), QStringLiteral("lucia26")));
        QCOMPARE(app.ctx().userName, QStringLiteral("LUCIA"));
    }

    void refusals_data() {
        QTest::addColumn<QString>("nome");
        QTest::addColumn<QString>("senha");
        QTest::addColumn<QString>("message");
        const char* required = "Todos os campos obrigatórios devem ser preenchidos!!";
        auto row = [](const char* tag, const char* nome, const char* senha, const char* message) {
            QTest::newRow(tag) << nome << senha << message;
        };
        row("no name", "", "segredo1", required);
        row("no password", "NOVO", "", required);
        row("short", "NOVO", "abc12", "A senha deve ter pelo menos 6 caracteres!!");
        row("used by another", "NOVO", "CHEFE1", "Senha já usada por outro operador");
    }

    void refusals() {
        QFETCH(QString, nome);
        QFETCH(QString, senha);
        QFETCH(QString, message);
        TestApp app;
        app.addUser(QStringLiteral("CHEFE"), QStringLiteral("chefe1"), QStringLiteral("ADM"));
        Screen s(app.ctx());
        s.novo(nome, senha, QStringLiteral("USER"));
        s.click("Command2");
        expect(app, message, DialogIcon::Exclamation);
        QCOMPARE(app.dialogs().shown().size(), 1); // refused before the confirmation
        QCOMPARE(app.count(QStringLiteral("Usuarios")), 1);
    }

    void anEditNeverShowsOrLosesThePassword() {
        TestApp app;
        const int id =
            app.addUser(QStringLiteral("ANA"), QStringLiteral("ana123"), QStringLiteral("USER"));
        Screen s(app.ctx());
        s.click("cmdEditar");
        expect(app, QStringLiteral("Informe um item !!!"), DialogIcon::Critical);
        s.select(QStringLiteral("ANA"));
        s.click("cmdEditar");
        QCOMPARE(s.get<QLineEdit>("txtordem")->text(), QString::number(id));
        QVERIFY(s.get<QLineEdit>("txtsenha")->text().isEmpty());
        QCOMPARE(s.get<QLineEdit>("txtsenha")->echoMode(), QLineEdit::Password);
        s.text("txtnome", QStringLiteral("ANA PAULA"));
        s.get<QComboBox>("Combo")->setCurrentText(QStringLiteral("ADM"));
        const int shown = app.dialogs().shown().size();
        s.click("Command2"); // no password typed: nothing to confirm
        QCOMPARE(app.dialogs().shown().size(), shown);
        QVERIFY(Login::Valida_senha(app.ctx(), QStringLiteral("ana123")));
        QCOMPARE(app.ctx().userName, QStringLiteral("ANA PAULA"));
        QCOMPARE(app.ctx().userType, UserType::Admin);
    }

    void deletingTheLastAdministratorIsWarned() {
        TestApp app;
        app.addUser(QStringLiteral("CHEFE"), QStringLiteral("chefe1"), QStringLiteral("ADM"));
        app.addUser(QStringLiteral("CAIXA"), QStringLiteral("caixa1"), QStringLiteral("USER"));
        Screen s(app.ctx());
        auto* excluir = s.form.findChild<QAction*>(QStringLiteral("mnuexcluir"));
        s.select(QStringLiteral("CHEFE"));
        app.dialogs().pushAnswer(DialogAnswer::Yes);
        app.dialogs().pushAnswer(DialogAnswer::No);
        excluir->trigger();
        const auto shown = app.dialogs().shown();
        QCOMPARE(shown.at(shown.size() - 2).text,
                 QStringLiteral("CHEFE - Confirma exclusão deste item?"));
        expect(app,
               QStringLiteral("Este é o único administrador: sem ele nenhuma entrada de "
                              "administrador poderá ser aberta. Deseja excluir assim mesmo?"),
               DialogIcon::Exclamation);
        QCOMPARE(app.count(QStringLiteral("Usuarios")), 2);

        app.dialogs().pushAnswer(DialogAnswer::Yes);
        app.dialogs().pushAnswer(DialogAnswer::Yes);
        excluir->trigger();
        QCOMPARE(app.count(QStringLiteral("Usuarios")), 1);
        QCOMPARE(s.list->topLevelItemCount(), 1);

        s.select(QStringLiteral("CAIXA"));
        app.dialogs().pushAnswer(DialogAnswer::Yes);
        const int before = app.dialogs().shown().size();
        excluir->trigger(); // not an administrator: only the confirmation
        QCOMPARE(app.dialogs().shown().size(), before + 1);
        QCOMPARE(app.count(QStringLiteral("Usuarios")), 0);
    }
};

QTEST_MAIN(tst_usuarios_screen)
#include "tst_usuarios_screen.moc"
