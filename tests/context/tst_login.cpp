// Login and the administrator check, on both engines.
#include "AdminGuard.h"
#include "Login.h"
#include "PasswordHash.h"
#include "TestApp.h"
#include "clsUsuarios.h"

namespace {
// A stored hash of 2 500 rounds for "Cafe2026", made with Qt's PBKDF2.
const QString kOldHash = QStringLiteral(
    "pbkdf2-sha256$2500$zHt7bd++kFj1T6rKCrlgWA==$UfMQKZvg2ruv986rVsDWZl7VCcNvhG+wniQ0EOCS4N4=");

int addStored(TestApp& app, const QString& nome, const QString& stored, int ativo = 1) {
    clsUsuarios u(app.db());
    u.NOME = nome;
    u.SENHA = stored;
    u.TIPO = QStringLiteral("USER");
    u.ATIVO = static_cast<qint16>(ativo);
    return u.inserirNovo() ? u.ID : -1;
}

QString storedHash(TestApp& app, int id) {
    clsUsuarios u(app.db());
    return u.SQLSelect(id) ? u.SENHA : QString();
}
} // namespace

class tst_login : public QObject {
    Q_OBJECT
private slots:
    void initTestCase_data() { addBackendRows(); }

    void rules() {
        TEST_BACKEND();
        app.addUser(QStringLiteral("ANA"), QStringLiteral("Segredo1"), QStringLiteral("USER"));
        app.addUser(QStringLiteral("BIA"), QStringLiteral("dupla"), QStringLiteral("USER"));
        app.addUser(QStringLiteral("CAIO"), QStringLiteral("dupla"), QStringLiteral("ADM"));
        app.addUser(QStringLiteral("DINA"), QStringLiteral("parada"), QStringLiteral("ADM"), 0);
        app.addUser(QStringLiteral("EVA"), QStringLiteral("minuscula"), QStringLiteral("adm"));
        AppContext& ctx = app.ctx();

        QVERIFY(Login::Valida_senha(ctx, QStringLiteral("Segredo1")));
        QCOMPARE(ctx.userName, QStringLiteral("ANA"));
        QVERIFY(Login::Valida_senha(ctx, QStringLiteral("sEGREDO1")));   // case-insensitive
        QVERIFY(!Login::Valida_senha(ctx, QStringLiteral("Segredo1 "))); // as typed, not trimmed
        QVERIFY(!Login::Valida_senha(ctx, QStringLiteral("dupla")));     // two users share it
        QVERIFY(!Login::Valida_senha(ctx, QString()));
        QVERIFY(!Login::Valida_senha(ctx, QStringLiteral("   ")));
        QVERIFY(app.dialogs().shown().isEmpty()); // blank passwords never reach the database

        // An inactive operator cannot log in, yet name and type are set, and the
        // administrator check does not look at activity.
        QVERIFY(!Login::Valida_senha(ctx, QStringLiteral("parada")));
        QCOMPARE(ctx.userName, QStringLiteral("DINA"));
        QCOMPARE(Login::Tipo_usuario(ctx, QStringLiteral("parada")), UserType::Admin);
        QCOMPARE(Login::Tipo_usuario(ctx, QStringLiteral("dupla")), UserType::User);
        QCOMPARE(Login::Tipo_usuario(ctx, QStringLiteral("minuscula")),
                 UserType::User); // only exactly "ADM" administers
        QCOMPARE(Login::Tipo_usuario(ctx, QString()), UserType::User);
    }

    void administratorPrompt_data() {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<bool>("cancel");
        QTest::addColumn<bool>("admitted");
        QTest::newRow("administrator") << "chefe" << false << true;
        QTest::newRow("operator") << "caixa" << false << false;
        QTest::newRow("lower-case adm") << "baixo" << false << false;
        QTest::newRow("blank") << "  " << false << false;
        QTest::newRow("cancelled") << "" << true << false;
    }
    void administratorPrompt() {
        QFETCH(QString, answer);
        QFETCH(bool, cancel);
        QFETCH(bool, admitted);
        TEST_BACKEND();
        app.addUser(QStringLiteral("CHEFE"), QStringLiteral("chefe"), QStringLiteral("ADM"));
        app.addUser(QStringLiteral("CAIXA"), QStringLiteral("caixa"), QStringLiteral("USER"));
        app.addUser(QStringLiteral("BAIXO"), QStringLiteral("baixo"), QStringLiteral("adm"));
        app.dialogs().pushInput(cancel ? std::nullopt : std::optional<QString>(answer));
        QCOMPARE(AdminGuard::ask(app.ctx(), Act::EntradaSangria, QStringLiteral("Sangria")),
                 admitted);
        // The one who allowed it is named; nobody when refused.
        QCOMPARE(app.ctx().autorizadoPor.isEmpty(), !admitted);
        QCOMPARE(app.dialogs().shown().size(), 1); // the prompt, and no message after it
        QCOMPARE(app.dialogs().last().kind, QStringLiteral("input"));
        QCOMPARE(app.dialogs().last().title, QStringLiteral("Sangria"));
        QCOMPARE(app.dialogs().last().text, QStringLiteral("Entre com a senha do administrador!!"));
    }

    // A hash of fewer rounds still opens the counter, and is made again with the current rounds
    // by that login; a wrong password or an inactive operator changes nothing.
    void oldHashesAreRehashedAtLogin() {
        TEST_BACKEND();
        const int antigo = addStored(app, QStringLiteral("ANTIGO"), kOldHash);
        const int parado = addStored(app, QStringLiteral("PARADO"),
                                     PasswordHash::hash(QStringLiteral("parado"), 2500), 0);
        const QString paradoHash = storedHash(app, parado);
        AppContext& ctx = app.ctx();

        QVERIFY(!Login::Valida_senha(ctx, QStringLiteral("Cafe2027")));
        QCOMPARE(storedHash(app, antigo), kOldHash);
        QVERIFY(!Login::Valida_senha(ctx, QStringLiteral("parado")));
        QCOMPARE(storedHash(app, parado), paradoHash);
        QCOMPARE(Login::Tipo_usuario(ctx, QStringLiteral("CAFE2026")), UserType::User);
        QCOMPARE(storedHash(app, antigo), kOldHash); // the guard is not a login

        QVERIFY(Login::Valida_senha(ctx, QStringLiteral("cafe2026")));
        QCOMPARE(ctx.userName, QStringLiteral("ANTIGO"));
        const QString rehashed = storedHash(app, antigo);
        QVERIFY(rehashed != kOldHash);
        QCOMPARE(PasswordHash::iterations(rehashed), PasswordHash::kIterations);
        QVERIFY(!PasswordHash::needsRehash(rehashed));
        QVERIFY(Login::Valida_senha(ctx, QStringLiteral("Cafe2026")));
        QCOMPARE(storedHash(app, antigo), rehashed); // current rounds: left alone
        QVERIFY(!Login::Valida_senha(ctx, QStringLiteral("Cafe2027")));
    }

    // A hash replaced meanwhile (the users screen) is not overwritten by a login's rehash.
    void rehashKeepsAChangedPassword() {
        TEST_BACKEND();
        const int id = addStored(app, QStringLiteral("ANA"), kOldHash);
        const QString changed = PasswordHash::hash(QStringLiteral("nova"), 10);
        QVERIFY(clsUsuarios::replaceHash(app.db(), id, kOldHash, changed));
        QVERIFY(clsUsuarios::replaceHash(app.db(), id, kOldHash, QStringLiteral("x")));
        QCOMPARE(storedHash(app, id), changed);
    }

    // More operators than cores, the shared password at both ends: all are checked.
    void exactlyOneAmongMany_data() {
        QTest::addColumn<QString>("senha");
        QTest::addColumn<bool>("admitted");
        QTest::addColumn<QString>("nome");
        QTest::newRow("shared by first and last") << "dupla" << false << "";
        QTest::newRow("shared in the middle") << "meio" << false << "";
        QTest::newRow("one holder") << "s7" << true << "OP7";
    }
    void exactlyOneAmongMany() {
        QFETCH(QString, senha);
        QFETCH(bool, admitted);
        QFETCH(QString, nome);
        TEST_BACKEND();
        app.addUser(QStringLiteral("AAA"), QStringLiteral("dupla"), QStringLiteral("USER"));
        for (int i = 0; i < 12; ++i)
            app.addUser(QStringLiteral("OP%1").arg(i),
                        i == 4 || i == 5 ? QStringLiteral("meio") : QStringLiteral("s%1").arg(i),
                        QStringLiteral("USER"));
        app.addUser(QStringLiteral("ZZZ"), QStringLiteral("dupla"), QStringLiteral("USER"));
        app.ctx().userName.clear();
        QCOMPARE(Login::Valida_senha(app.ctx(), senha), admitted);
        QCOMPARE(app.ctx().userName, nome);
    }

    void verifyAllAnswersInOrder() {
        const QStringList stored = {PasswordHash::hash(QStringLiteral("a"), 10),
                                    QStringLiteral("a"),
                                    kOldHash,
                                    PasswordHash::hash(QStringLiteral("A"), 20),
                                    QStringLiteral("pbkdf2-sha256$0$x$y"),
                                    PasswordHash::hash(QStringLiteral("b"), 10)};
        QCOMPARE(PasswordHash::verifyAll(QStringLiteral("a"), stored),
                 (QList<bool>{true, false, false, true, false, false}));
        QCOMPARE(PasswordHash::verifyAll(QStringLiteral("CAFE2026"), stored),
                 (QList<bool>{false, false, true, false, false, false}));
        QVERIFY(PasswordHash::verifyAll(QStringLiteral("a"), {}).isEmpty());
        // Salted, and the password is nowhere in the hash.
        QVERIFY(stored[0] != PasswordHash::hash(QStringLiteral("a"), 10));
        QVERIFY(!PasswordHash::hash(QStringLiteral("Cafe2026"), 10)
                     .contains(QStringLiteral("cafe2026"), Qt::CaseInsensitive));
    }

    // The published PBKDF2-HMAC-SHA256 values ("password", "salt", 32 bytes).
    void standardVectors_data() {
        QTest::addColumn<QString>("stored");
        QTest::newRow("1 round")
            << "pbkdf2-sha256$1$c2FsdA==$Eg+2z/z4syxD5yJSVsT4N6hlSMkszDVICAWYfLcL4Xs=";
        QTest::newRow("4096 rounds")
            << "pbkdf2-sha256$4096$c2FsdA==$xeR41ZKIyEGqUw22hFxMjZYok6ABzk4RpJY4c6qYE0o=";
    }
    void standardVectors() {
        QFETCH(QString, stored);
        QVERIFY(PasswordHash::verify(QStringLiteral("password"), stored));
        QVERIFY(!PasswordHash::verify(QStringLiteral("passwordx"), stored));
        QVERIFY(PasswordHash::needsRehash(stored));
    }
};

QTEST_GUILESS_MAIN(tst_login)
#include "tst_login.moc"
