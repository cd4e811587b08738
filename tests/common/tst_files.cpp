// The files the program reads and writes: settings files that are not files (a FIFO, a device,
// something huge) are refused at once instead of hanging the program, a full disk is named, and
// the counter's files are made private.
#include "IniFile.h"
#include "PrivateFiles.h"
#include "Settings.h"
#include "TextFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <sys/stat.h>

class tst_files : public QObject {
    Q_OBJECT
private slots:
    void settingsThatAreNotFiles_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("problem");
        const QString notAFile = QStringLiteral("não é um arquivo comum");
        QTest::newRow("fifo") << "fifo" << notAFile;
        QTest::newRow("/dev/zero") << "zero" << notAFile;
        QTest::newRow("folder") << "folder" << notAFile;
        QTest::newRow("over 1 MB") << "big" << QStringLiteral("tem mais de 1024 KB");
        QTest::newRow("missing") << "missing" << QString();
    }
    void settingsThatAreNotFiles() {
        QFETCH(QString, kind);
        QFETCH(QString, problem);
        QTemporaryDir dir;
        const QString ini = dir.filePath(QStringLiteral("Config.ini"));
        if (kind == QLatin1String("fifo"))
            QCOMPARE(::mkfifo(QFile::encodeName(ini).constData(), 0600), 0);
        else if (kind == QLatin1String("zero"))
            QVERIFY(QFile::link(QStringLiteral("/dev/zero"), ini));
        else if (kind == QLatin1String("folder"))
            QVERIFY(QDir().mkdir(ini));
        else if (kind == QLatin1String("big")) {
            QFile f(ini);
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write("[Export]\r\nguiche=7\r\n" + QByteArray(1024 * 1024, ';'));
        }
        QVERIFY(IniFile::readProblem(ini).contains(problem));
        QCOMPARE(IniFile::read(QStringLiteral("Export"), QStringLiteral("guiche"), ini), QString());
        Settings s;
        QCOMPARE(Carrega_config(ini, s), problem.isEmpty());
        if (!problem.isEmpty()) // a file that was not read is never replaced
            QVERIFY(!IniFile::write(QStringLiteral("Export"), QStringLiteral("guiche"),
                                    QStringLiteral("1"), ini));
    }

    // A device is no file of the program's, not even one that answers "disk full" (a full disk
    // itself is met in the command-line tests, on a small disk of their own).
    void devicesAreNotWritten() {
        QString error;
        QVERIFY(!TextFile::append(QStringLiteral("/dev/full"), {QStringLiteral("linha")}, &error));
        QCOMPARE(error, QStringLiteral("/dev/full não é um arquivo comum (é uma pasta, um atalho, "
                                       "um pipe ou um dispositivo) e não será usado."));
    }

    void privateModes() {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("caixa.db"));
        QFile f(file);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.close();
        QVERIFY(QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner |
                                                QFile::ReadGroup | QFile::ReadOther));
        QVERIFY(PrivateFiles::secureFile(file));
        QVERIFY(PrivateFiles::secureFolder(dir.path()));
        struct stat st {};
        QCOMPARE(::stat(QFile::encodeName(file).constData(), &st), 0);
        QCOMPARE(int(st.st_mode & 0777), 0600);
        QCOMPARE(::stat(QFile::encodeName(dir.path()).constData(), &st), 0);
        QCOMPARE(int(st.st_mode & 0777), 0700);
    }
};

QTEST_GUILESS_MAIN(tst_files)
#include "tst_files.moc"
