// Skins (style sheets, the fallback to the default one) and the published-version check.
#include "Skin.h"
#include "TestApp.h"
#include "UpdateCheck.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <future>
#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace {
void write(const QString& path, const QByteArray& data) {
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(data);
}

QString logText(TestApp& app) {
    QFile f(app.path(QStringLiteral("Log.ini")));
    return f.open(QIODevice::ReadOnly) ? QString::fromLatin1(f.readAll()) : QString();
}
} // namespace

class tst_skin_update : public QObject {
    Q_OBJECT
private slots:
    void styleSheets_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("ok");
        QTest::newRow("one rule") << QByteArray("QWidget { color: red; }") << true;
        QTest::newRow("comments and nesting")
            << QByteArray("/* cores */\nQPushButton:hover, QLabel#a { color: #fff; }\n"
                          "QTabBar::tab { padding: 2px; }\n")
            << true;
        QTest::newRow("utf-8 comment") << QByteArray("/* aparência */ QLabel { }") << true;
        QTest::newRow("empty") << QByteArray() << false;
        QTest::newRow("plain text") << QByteArray("isto não é estilo") << false;
        QTest::newRow("brace left open") << QByteArray("QLabel { color: red;") << false;
        QTest::newRow("brace never opened") << QByteArray("QLabel color: red; }") << false;
        QTest::newRow("rule without selector") << QByteArray("{ color: red; }") << false;
        QTest::newRow("comment left open") << QByteArray("QLabel { } /* fim") << false;
        QTest::newRow("text after the rules") << QByteArray("QLabel { } sobra") << false;
        QTest::newRow("binary") << QByteArray("\x89PNG\r\n\x1a\n\0\0QLabel { }", 18) << false;
        QTest::newRow("latin-1 bytes") << QByteArray("QLabel { } /* \xe9 */") << false;
        QTest::newRow("too big") << QByteArray("QLabel { }") + QByteArray(Skin::kMaxBytes, ' ')
                                 << false;
    }

    void styleSheets() {
        QFETCH(QByteArray, content);
        QFETCH(bool, ok);
        TestApp app;
        const QString path = app.path(QStringLiteral("aparencia.qss"));
        write(path, content);
        QString problem;
        QCOMPARE(Skin::read(path, &problem).has_value(), ok);
        QCOMPARE(problem.isEmpty(), ok);
    }

    void theShippedSkinsAreStyleSheets() {
        QCOMPARE(Skin::shipped().size(), 3);
        for (const auto& [name, path] : Skin::shipped()) {
            QString problem;
            QVERIFY2(Skin::read(path, &problem), qPrintable(name + QLatin1Char(' ') + problem));
        }
    }

    void aSkinThatCannotBeUsedGivesWayToTheDefault_data() {
        QTest::addColumn<QString>("configured");
        QTest::addColumn<bool>("fellBack");
        QTest::newRow("none") << QString() << false;
        QTest::newRow("shipped") << QStringLiteral(":/skins/alto-contraste.qss") << false;
        QTest::newRow("own file") << QStringLiteral("minha.qss") << false;
        QTest::newRow("missing") << QStringLiteral("/nao/existe.qss") << true;
        QTest::newRow("broken") << QStringLiteral("quebrada.qss") << true;
    }

    void aSkinThatCannotBeUsedGivesWayToTheDefault() {
        QFETCH(QString, configured);
        QFETCH(bool, fellBack);
        TestApp app;
        write(app.path(QStringLiteral("minha.qss")), "QLabel { color: navy; }");
        write(app.path(QStringLiteral("quebrada.qss")), "QLabel { color: navy;");
        app.setOption(QStringLiteral("Skin"), QStringLiteral("nome"), configured);
        const Skin::Chosen c = Skin::current(app.ctx());
        QCOMPARE(c.fellBack, fellBack);
        QVERIFY(!c.styleSheet.isEmpty()); // never a window without a look
        QCOMPARE(c.path == Skin::defaultPath(),
                 fellBack || configured.isEmpty() || configured == Skin::defaultPath());
        QCOMPARE(logText(app).contains(QStringLiteral("Carrega_skin")), fellBack);
        QVERIFY(app.dialogs().shown().isEmpty()); // the start is never held by a box
    }

    void versionFile_data() {
        QTest::addColumn<QByteArray>("content"); // "-" for no file
        QTest::addColumn<QString>("running");
        QTest::addColumn<int>("state");
        QTest::addColumn<QString>("published");
        using S = UpdateCheck::State;
        auto row = [](const char* name, const QByteArray& c, const char* running, S s,
                      const char* published) {
            QTest::newRow(name) << c << QString::fromLatin1(running) << int(s)
                                << QString::fromLatin1(published);
        };
        row("absent", "-", "0.1.0", S::NoFile, "");
        row("empty", "", "0.1.0", S::Empty, "");
        row("blank first line", "   \r\n0.9.0\r\n", "0.1.0", S::Empty, "");
        row("older", "0.0.9\r\n", "0.1.0", S::NotNewer, "0.0.9");
        row("the same", "0.1.0", "0.1.0", S::NotNewer, "0.1.0");
        row("newer", "  0.2.0  \r\nnotas da versão\r\n", "0.1.0", S::Newer, "0.2.0");
        row("text order, not numbers", "0.10.0\n", "0.9.0", S::NotNewer, "0.10.0");
        row("binary",
            QByteArray("\x7f"
                       "ELF\x02\x01\x01\0\0\0",
                       10),
            "0.1.0", S::Unreadable, "");
        row("nul in the line", QByteArray("0.2\0.0\n", 7), "0.1.0", S::Unreadable, "");
        row("a line too long", QByteArray(300, '9'), "0.1.0", S::Unreadable, "");
        row("a long line that ends", QByteArray(200, '9') + "\n", "0.1.0", S::Newer, "");
    }

    void versionFile() {
        QFETCH(QByteArray, content);
        QFETCH(QString, running);
        QFETCH(int, state);
        QFETCH(QString, published);
        TestApp app;
        const QString folder = app.path(QStringLiteral("versoes"));
        QDir().mkpath(folder);
        if (content != "-")
            write(QDir(folder).filePath(UpdateCheck::kFileName), content);
        const UpdateCheck::Result r = UpdateCheck::check(folder, running);
        QCOMPARE(int(r.state), state);
        if (!published.isEmpty())
            QCOMPARE(r.published, published);
        QCOMPARE(UpdateCheck::check(QString(), running).state, UpdateCheck::State::NoFolder);
    }

    void aHugeFirstLineIsNotReadWhole() {
        TestApp app;
        const QString path = app.path(UpdateCheck::kFileName);
        write(path, QByteArray(10 * 1024 * 1024, '7'));
        QFile f(path);
        QVERIFY(f.open(QIODevice::ReadOnly));
        bool readable = true;
        QVERIFY(UpdateCheck::firstLine(f, &readable).isEmpty());
        QVERIFY(!readable);
        QCOMPARE(f.pos(), UpdateCheck::kMaxLine + 1);
    }

    void aFolderThatDoesNotAnswerIsLeftBehind() {
        std::promise<void> release;
        std::shared_future<void> released = release.get_future().share();
        const auto r = UpdateCheck::checkWithin(
            QStringLiteral("/rede/fora"), QStringLiteral("0.1.0"), 50,
            [released](const QString&, const QString&) {
                released.wait(); // a share that hangs
                return UpdateCheck::Result{UpdateCheck::State::Newer, QStringLiteral("9")};
            });
        QCOMPARE(r.state, UpdateCheck::State::TimedOut);
        release.set_value();
        const auto answered = UpdateCheck::checkWithin(
            QStringLiteral("/rede/fora"), QStringLiteral("0.1.0"), 60000,
            [](const QString&, const QString&) {
                return UpdateCheck::Result{UpdateCheck::State::Newer, QStringLiteral("9")};
            });
        QCOMPARE(answered.state, UpdateCheck::State::Newer);
    }

    void theUpdaterIsAFileOrAMessage() {
        TestApp app;
        app.setOption(QStringLiteral("Opcoes"), QStringLiteral("Atualiza"),
                      QStringLiteral("versoes/"));
        QCOMPARE(UpdateCheck::updaterPath(app.ctx()),
                 QDir(app.folder()).filePath(QStringLiteral("versoes/atualizador")));
        QString error;
        QVERIFY(!UpdateCheck::startUpdater(app.ctx(), &error));
        QVERIFY(error.startsWith(QStringLiteral("Atualizador não encontrado: ")));

        QDir(app.folder()).mkpath(QStringLiteral("versoes"));
        const QString marker = app.path(QStringLiteral("rodou.txt"));
        const QString script = app.path(QStringLiteral("versoes/atualiza.sh"));
        write(script, "#!/bin/sh\necho \"$1\" > \"" + marker.toUtf8() + "\"\n");
        QFile::setPermissions(script, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        app.setOption(QStringLiteral("Opcoes"), QStringLiteral("atualizador"), script);
        QVERIFY2(UpdateCheck::startUpdater(app.ctx(), &error), qPrintable(error));
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(marker), 10000);
    }

    // Only a file of the update folder that no one else may change is run.
    void anUpdaterOthersCouldChangeIsNotRun_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("why");
        QTest::newRow("group-writable") << "group"
                                        << "pode ser alterado por outros usuários";
        QTest::newRow("writable by all") << "other"
                                         << "pode ser alterado por outros usuários";
        QTest::newRow("symbolic link") << "link"
                                       << "não é um arquivo comum";
        QTest::newRow("outside the folder") << "outside"
                                            << "não está na pasta de atualização";
        QTest::newRow("a folder") << "folder"
                                  << "não é um arquivo comum";
        QTest::newRow("another user's") << "owner"
                                        << "pertence a outro usuário";
    }

    void anUpdaterOthersCouldChangeIsNotRun() {
        QFETCH(QString, kind);
        QFETCH(QString, why);
        TestApp app;
        app.setOption(QStringLiteral("Opcoes"), QStringLiteral("Atualiza"),
                      QStringLiteral("versoes"));
        QDir(app.folder()).mkpath(QStringLiteral("versoes"));
        const QString marker = app.path(QStringLiteral("rodou.txt"));
        const QString real =
            app.path(kind == QLatin1String("outside") ? QStringLiteral("atualizador")
                                                      : QStringLiteral("versoes/real"));
        write(real, "#!/bin/sh\ntouch \"" + marker.toUtf8() + "\"\n");
        QFile::Permissions mode = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
        if (kind == QLatin1String("group"))
            mode |= QFile::WriteGroup | QFile::ReadGroup | QFile::ExeGroup;
        if (kind == QLatin1String("other"))
            mode |= QFile::WriteOther | QFile::ReadOther | QFile::ExeOther;
        QFile::setPermissions(real, mode);
        QString updater = app.path(QStringLiteral("versoes/atualizador"));
        if (kind == QLatin1String("link"))
            QVERIFY(QFile::link(real, updater));
        else if (kind == QLatin1String("folder"))
            QVERIFY(QDir(app.folder()).mkpath(QStringLiteral("versoes/atualizador")));
        else
            updater = real;
        if (kind == QLatin1String("owner")) {
#ifdef Q_OS_UNIX
            if (::chown(real.toLocal8Bit().constData(), 54321, 54321) != 0)
                QSKIP("Only root can give the updater to another user here.");
#else
            QSKIP("Files have no owner on this system.");
#endif
        }
        app.setOption(QStringLiteral("Opcoes"), QStringLiteral("atualizador"), updater);
        QString error;
        QVERIFY(!UpdateCheck::startUpdater(app.ctx(), &error));
        QVERIFY2(error.contains(why), qPrintable(error));
    }
};

QTEST_MAIN(tst_skin_update)
#include "tst_skin_update.moc"
