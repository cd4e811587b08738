// The rules of saving and deleting operators, and that a saved operator logs in.
#include "Login.h"
#include "PasswordHash.h"
#include "TestApp.h"
#include "UserAccounts.h"
#include "clsUsuarios.h"

#include <QFile>

namespace {
using O = UserAccounts::Outcome;
using F = UserAccounts::Field;

UserAccounts::Input op(const QString& nome, const QString& senha,
                       const QString& tipo = QStringLiteral("USER")) {
    return {std::nullopt, nome, senha, tipo, true};
}
} // namespace

class tst_user_accounts : public QObject {
    Q_OBJECT
private slots:
    void initTestCase_data() { addBackendRows(); }

    void newOperatorRefusals_data() {
        QTest::addColumn<QString>("nome");
        QTest::addColumn<QString>("senha");
        QTest::addColumn<QString>("tipo");
        QTest::addColumn<int>("outcome");
        QTest::addColumn<int>("field");
        auto row = [](const char* name, const char* nome, const char* senha, const char* tipo, O o,
                      F f) {
            QTest::newRow(name) << QString::fromUtf8(nome) << QString::fromUtf8(senha)
                                << QString::fromUtf8(tipo) << int(o) << int(f);
        };
        row("no name", "  ", "segredo", "USER", O::MissingField, F::NOME);
        row("no type", "ANA", "segredo", "", O::MissingField, F::TIPO);
        row("unknown type", "ANA", "segredo", "CHEFE", O::InvalidType, F::TIPO);
        row("no password", "ANA", "   ", "USER", O::MissingField, F::SENHA);
        row("five characters", "ANA", "abcde", "USER", O::ShortPassword, F::SENHA);
        row("five after trimming", "ANA", "  abcde  ", "USER", O::ShortPassword, F::SENHA);
        row("quote in name", "D'AVILA", "segredo", "USER", O::QuoteRefused, F::NOME);
        row("quote in password", "ANA", "seg'redo", "USER", O::QuoteRefused, F::SENHA);
        row("another's password", "ANA", "Existente1", "ADM", O::PasswordInUse, F::SENHA);
        row("another's in other case", "ANA", "EXISTENTE1", "USER", O::PasswordInUse, F::SENHA);
    }

    void newOperatorRefusals() {
        TEST_BACKEND();
        QFETCH(QString, nome);
        QFETCH(QString, senha);
        QFETCH(QString, tipo);
        QFETCH(int, outcome);
        QFETCH(int, field);
        app.addUser(QStringLiteral("BETO"), QStringLiteral("existente1"), QStringLiteral("USER"));
        const auto r = UserAccounts::gravar(app.ctx(), op(nome, senha, tipo));
        QCOMPARE(int(r.outcome), outcome);
        QCOMPARE(int(r.field), field);
        QCOMPARE(app.count(QStringLiteral("Usuarios")), 1);
    }

    void savedOperatorLogsInAndEditsKeepThePassword() {
        TEST_BACKEND();
        const auto r = UserAccounts::gravar(
            app.ctx(), op(QStringLiteral(" ANA "), QStringLiteral(" abc123 ")));
        QVERIFY(r.ok());
        clsUsuarios u(app.db());
        QVERIFY(u.SQLSelect(r.id));
        QCOMPARE(u.NOME, QStringLiteral("ANA"));
        QVERIFY(PasswordHash::looksHashed(u.SENHA));
        QVERIFY(Login::Valida_senha(app.ctx(), QStringLiteral("ABC123")));
        QCOMPARE(app.ctx().userName, QStringLiteral("ANA"));

        // An edit without a password keeps it; the operator's own password is not "another's".
        UserAccounts::Input edit{r.id, QStringLiteral("ANA MARIA"), QString(),
                                 QStringLiteral("ADM"), true};
        QVERIFY(UserAccounts::gravar(app.ctx(), edit).ok());
        QVERIFY(Login::Valida_senha(app.ctx(), QStringLiteral("abc123")));
        QCOMPARE(app.ctx().userType, UserType::Admin);
        edit.senha = QStringLiteral("abc123");
        QVERIFY(UserAccounts::gravar(app.ctx(), edit).ok());
        edit.senha = QStringLiteral("novas1");
        edit.ativo = false;
        QVERIFY(UserAccounts::gravar(app.ctx(), edit).ok());
        QVERIFY(!Login::Valida_senha(app.ctx(), QStringLiteral("novas1"))); // inactive
        QCOMPARE(Login::Tipo_usuario(app.ctx(), QStringLiteral("novas1")), UserType::Admin);

        edit.id = 9999;
        QCOMPARE(UserAccounts::gravar(app.ctx(), edit).outcome, O::NotFound);
    }

    void theLastAdministratorGoesOnlyAfterTheWarning() {
        TEST_BACKEND();
        const int adm =
            app.addUser(QStringLiteral("CHEFE"), QStringLiteral("chefe1"), QStringLiteral("ADM"));
        const int user =
            app.addUser(QStringLiteral("CAIXA"), QStringLiteral("caixa1"), QStringLiteral("USER"));
        const int adm2 =
            app.addUser(QStringLiteral("VICE"), QStringLiteral("vice12"), QStringLiteral("ADM"));
        QCOMPARE(UserAccounts::excluir(app.ctx(), user, false),
                 UserAccounts::DeleteOutcome::Deleted);
        QCOMPARE(UserAccounts::excluir(app.ctx(), adm2, false),
                 UserAccounts::DeleteOutcome::Deleted); // another administrator remains
        QCOMPARE(UserAccounts::excluir(app.ctx(), adm, false),
                 UserAccounts::DeleteOutcome::LastAdministrator);
        QCOMPARE(app.count(QStringLiteral("Usuarios")), 1);
        QCOMPARE(UserAccounts::excluir(app.ctx(), adm, true), UserAccounts::DeleteOutcome::Deleted);
        QCOMPARE(app.count(QStringLiteral("Usuarios")), 0);
        QCOMPARE(UserAccounts::excluir(app.ctx(), adm, true),
                 UserAccounts::DeleteOutcome::NotFound);
    }
};

QTEST_MAIN(tst_user_accounts)
#include "tst_user_accounts.moc"
