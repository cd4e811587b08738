// Start-up: single instance, folder resolution and the database messages.
#include "AppFolder.h"
#include "Login.h"
#include "Startup.h"
#include "TestApp.h"

class tst_startup : public QObject {
    Q_OBJECT
private slots:
    void secondCopyOnTheSameFolderIsRefused() {
        QTemporaryDir a, b;
        SingleInstance first(a.path());
        QVERIFY(first.acquired());
        QVERIFY(!SingleInstance(a.path()).acquired());
        QVERIFY(SingleInstance(b.path()).acquired());
    }

    void folderResolution() {
        QTemporaryDir exe;
        qunsetenv("TOLVANE_PASTA");
        QCOMPARE(AppFolder::resolve(QStringLiteral("/x/y"), exe.path()), QStringLiteral("/x/y"));
        QVERIFY(AppFolder::resolve(QString(), exe.path()) != exe.path()); // no Config.ini there
        QFile ini(exe.filePath(QStringLiteral("Config.ini")));
        QVERIFY(ini.open(QIODevice::WriteOnly));
        ini.close();
        QCOMPARE(AppFolder::resolve(QString(), exe.path()), exe.path());
        qputenv("TOLVANE_PASTA", "/de/ambiente");
        QCOMPARE(AppFolder::resolve(QString(), exe.path()), QStringLiteral("/de/ambiente"));
        qunsetenv("TOLVANE_PASTA");
    }

    void missingDatabaseIsReportedAndStartGoesOn() {
        QTemporaryDir dir;
        ScriptedDialogPort dialogs;
        FixedClock clock(QDateTime::currentDateTime());
        AppContext ctx(dir.path(), dialogs, clock);
        Startup::run(ctx);
        QCOMPARE(dialogs.shown().first().text,
                 QStringLiteral("Erro ao conectar banco de dados!!!"));
        QVERIFY(!QFile::exists(dir.filePath(QStringLiteral("caixa.db"))));
        // Later data operations fail one by one and are logged.
        QVERIFY(!Login::Valida_senha(ctx, QStringLiteral("x")));
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("Log.ini"))));
    }
};

QTEST_MAIN(tst_startup)
#include "tst_startup.moc"
