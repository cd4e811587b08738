// Login and the administrator check, on both engines.
#include "AdminGuard.h"
#include "Login.h"
#include "PasswordHash.h"
#include "TestApp.h"

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
        QCOMPARE(Login::Tipo_usuario(ctx, QStringLiteral("parada")), QStringLiteral("ADM"));
        QCOMPARE(Login::Tipo_usuario(ctx, QStringLiteral("dupla")), QStringLiteral("USER"));
        QCOMPARE(Login::Tipo_usuario(ctx, QStringLiteral("minuscula")), QStringLiteral("adm"));
        QCOMPARE(Login::Tipo_usuario(ctx, QString()), QStringLiteral("USER"));
    }

    void quoteIsLoggedAndRefused() {
        TEST_BACKEND();
        app.addUser(QStringLiteral("ANA"), QStringLiteral("x"), QStringLiteral("ADM"));
        QVERIFY(!Login::Valida_senha(app.ctx(), QStringLiteral("x' OR '1'='1")));
        QCOMPARE(app.dialogs().shown().size(), 1);
        QVERIFY(app.dialogs().last().text.contains(
            QStringLiteral("Função sqlSelect_ReadyOnly em clsDataAccess")));
        QVERIFY(QFile::exists(app.path(QStringLiteral("Log.ini"))));
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
        QCOMPARE(AdminGuard::ask(app.ctx(), QStringLiteral("Sangria")), admitted);
        QCOMPARE(app.dialogs().shown().size(), 1); // the prompt, and no message after it
        QCOMPARE(app.dialogs().last().kind, QStringLiteral("input"));
        QCOMPARE(app.dialogs().last().title, QStringLiteral("Sangria"));
        QCOMPARE(app.dialogs().last().text, QStringLiteral("Entre com a senha do administrador!!"));
    }

    void hashNeverHoldsThePassword() {
        const QString h = PasswordHash::hash(QStringLiteral("Cafe2026"), 50);
        QVERIFY(!h.contains(QStringLiteral("Cafe2026"), Qt::CaseInsensitive));
        QVERIFY(PasswordHash::verify(QStringLiteral("CAFE2026"), h));
        QVERIFY(!PasswordHash::verify(QStringLiteral("Cafe2027"), h));
        QVERIFY(PasswordHash::hash(QStringLiteral("Cafe2026"), 50) != h); // salted
        QVERIFY(!PasswordHash::verify(QStringLiteral("Cafe2026"),
                                      QStringLiteral("Cafe2026"))); // clear text never matches
    }
};

QTEST_GUILESS_MAIN(tst_login)
#include "tst_login.moc"
