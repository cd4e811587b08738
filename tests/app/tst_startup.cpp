// Start-up: single instance, the database messages, and the date screen's rules.
#include "AbreBD.h"
#include "AppFolder.h"
#include "DateScreenLogic.h"
#include "TestApp.h"
#include "clsMovimento.h"
#include "frmData.h"

#include <QDateEdit>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>

class tst_startup : public QObject {
    Q_OBJECT
private slots:
    void secondCopyOnTheSameFolderIsRefused()
    {
        QTemporaryDir a, b;
        SingleInstance first(a.path());
        QVERIFY(first.acquired());
        QVERIFY(!SingleInstance(a.path()).acquired());
        QVERIFY(SingleInstance(b.path()).acquired());
    }

    void folderResolution()
    {
        QTemporaryDir exe;
        qunsetenv("TOLVANE_PASTA");
        QCOMPARE(AppFolder::resolve(QStringLiteral("/x/y"), exe.path()), QStringLiteral("/x/y"));
        QVERIFY(AppFolder::resolve(QString(), exe.path()) != exe.path());  // no Config.ini there
        QFile ini(exe.filePath(QStringLiteral("Config.ini")));
        QVERIFY(ini.open(QIODevice::WriteOnly));
        ini.close();
        QCOMPARE(AppFolder::resolve(QString(), exe.path()), exe.path());
        qputenv("TOLVANE_PASTA", "/de/ambiente");
        QCOMPARE(AppFolder::resolve(QString(), exe.path()), QStringLiteral("/de/ambiente"));
        qunsetenv("TOLVANE_PASTA");
    }

    void missingDatabaseIsReportedAndStartGoesOn()
    {
        QTemporaryDir dir;
        ScriptedDialogPort dialogs;
        FixedClock clock(QDateTime::currentDateTime());
        AppContext ctx(dir.path(), dialogs, clock);
        AbreBD::startup(ctx);
        QCOMPARE(dialogs.shown().first().text, QStringLiteral("Erro ao conectar banco de dados!!!"));
        QVERIFY(!QFile::exists(dir.filePath(QStringLiteral("caixa.db"))));
        // Later data operations fail one by one and are logged.
        QVERIFY(!AbreBD::Valida_senha(ctx, QStringLiteral("x")));
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("Log.ini"))));
    }

    void dateRules_data()
    {
        QTest::addColumn<QString>("senha");
        QTest::addColumn<QDate>("date");
        QTest::addColumn<bool>("consultar");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<QStringList>("messages");
        const QDate today(2026, 11, 23);
        QTest::newRow("wrong password") << "nao" << today << false << false << QStringList{QStringLiteral("Senha Inválida!!")};
        QTest::newRow("future date") << "ana" << today.addDays(1) << false << false
                                     << QStringList{QStringLiteral("A data atual não pode ser menor que esta selecionada!!")};
        QTest::newRow("open today") << "ana" << today << false << true << QStringList{};
        QTest::newRow("open another day") << "ana" << today.addDays(-3) << false << true
                                          << QStringList{QStringLiteral("Data do Computador diferente da data de abertura do caixa!! Verifique."),
                                                         QStringLiteral("O caixa será aberto com a data selecionada.")};
        QTest::newRow("consult day without movement") << "ana" << today.addDays(-1) << true << false
                                                      << QStringList{QStringLiteral("Não foi encontrado nenhum movimento com essa data!!")};
        QTest::newRow("consult day with movement") << "ana" << today.addDays(-2) << true << true << QStringList{};
    }
    void dateRules()
    {
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
        QVERIFY(m.SQLInsert(0));

        frmData screen(app.ctx());
        QSignalSpy spy(&screen, &frmData::prosseguir);
        screen.findChild<QLineEdit*>(QStringLiteral("txtsenha"))->setText(senha);
        screen.findChild<QDateEdit*>(QStringLiteral("dtpData"))->setDate(date);
        screen.findChild<QPushButton*>(consultar ? QStringLiteral("cmdConsultar") : QStringLiteral("cmdAbrirCaixa"))->click();
        QCOMPARE(app.dialogs().texts(), messages);
        QCOMPARE(spy.count(), ok ? 1 : 0);
        if (ok)
            QCOMPARE(app.ctx().workingDate, date);
        if (!messages.isEmpty() && !ok)
            QCOMPARE(app.dialogs().last().icon, senha == QLatin1String("nao") || date > QDate(2026, 11, 23)
                                                    ? DialogIcon::Critical : DialogIcon::Exclamation);
    }
};

QTEST_MAIN(tst_startup)
#include "tst_startup.moc"
