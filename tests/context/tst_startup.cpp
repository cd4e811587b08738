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

    // No database file where the settings say (or no folder at all): the start stops with its
    // message; a file that is there but unusable is told and the start goes on.
    void missingDatabaseStopsTheStart_data() {
        QTest::addColumn<bool>("folderExists");
        QTest::newRow("file missing") << true;
        QTest::newRow("folder missing") << false;
    }
    void missingDatabaseStopsTheStart() {
        QFETCH(bool, folderExists);
        QTemporaryDir dir;
        const QString folder =
            folderExists ? dir.path() : dir.filePath(QStringLiteral("nao/existe"));
        ScriptedDialogPort dialogs;
        FixedClock clock(QDateTime::currentDateTime());
        AppContext ctx(folder, dialogs, clock);
        QVERIFY(!Startup::run(ctx));
        QCOMPARE(dialogs.shown().first().title, QStringLiteral("Aviso"));
        QCOMPARE(dialogs.shown().first().text, QStringLiteral("Erro na abertura do sistema!!"));
        QCOMPARE(dialogs.shown().first().icon, DialogIcon::Critical);
        QVERIFY(!QFile::exists(QDir(folder).filePath(QStringLiteral("caixa.db"))));
        QVERIFY(!ctx.db.isOpen());
    }

    void unusableDatabaseIsReportedAndStartGoesOn() {
        // A folder whose name looks like a placeholder must still be named as it is.
        QTemporaryDir tmp;
        const QString folder = tmp.filePath(QStringLiteral("caixa %2 %3"));
        QVERIFY(QDir().mkpath(folder));
        QDir dir(folder);
        QFile cut(dir.filePath(QStringLiteral("caixa.db")));
        QVERIFY(cut.open(QIODevice::WriteOnly));
        cut.write("SQLite format 3"); // far too short to be a database
        cut.close();
        ScriptedDialogPort dialogs;
        FixedClock clock(QDateTime::currentDateTime());
        AppContext ctx(folder, dialogs, clock);
        QVERIFY(Startup::run(ctx));
        QCOMPARE(dialogs.shown().first().text,
                 QStringLiteral("Erro ao conectar banco de dados!!!"));
        QVERIFY(dialogs.texts().filter(QStringLiteral("abertura do sistema")).isEmpty());
        // The reason names the cut file and ends with what to do with it.
        const QStringList reason = dialogs.texts().filter(QStringLiteral("15 bytes"));
        QCOMPARE(reason.size(), 1);
        QVERIFY2(reason.first().contains(QStringLiteral("caixa %2 %3") + QDir::separator() +
                                         QStringLiteral("caixa.db tem 15 bytes")),
                 qPrintable(reason.first()));
        QVERIFY2(reason.first().endsWith(QStringLiteral(
                     "está vazio ou cortado e não é um banco de dados. Não grave nada nele: "
                     "guarde o arquivo para análise, restaure a cópia mais recente da pasta "
                     "copias (renomeando-a para caixa.db) e confira com tolvane verificar.")),
                 qPrintable(reason.first()));
        // Later data operations fail one by one and are logged.
        QVERIFY(!Login::Valida_senha(ctx, QStringLiteral("x")));
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("Log.ini"))));
    }
};

QTEST_MAIN(tst_startup)
#include "tst_startup.moc"
