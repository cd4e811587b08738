// When the database file is read whole and when the cheap checks are trusted: the record of
// the last whole-file check and of clean stops, the marks of running programs, the checks of
// the header, and the places that always read the file whole (a new day, a closing, the
// screen's start in the background).
#include "CheckRecord.h"
#include "DatabaseCheck.h"
#include "MovementNumbering.h"
#include "Startup.h"
#include "TestApp.h"
#include "Transaction.h"
#include "clsMovimento.h"
#include "clsRecebimentos.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

namespace {

const QDate kDay(2026, 11, 23);

QString dbPath(const QTemporaryDir& dir) {
    return dir.filePath(QStringLiteral("caixa.db"));
}

// A database of 300 receipts on an open day, closed cleanly: the whole database is in the file.
bool makeDatabase(const QTemporaryDir& dir) {
    FolderContext run(dir.path());
    if (!Startup::Abre_conexao(run.ctx, true))
        return false;
    clsMovimento mov(run.ctx.db);
    if (!MovementNumbering::succeeded(MovementNumbering::openOrResume(run.ctx.db, kDay, mov)))
        return false;
    Transaction tx(run.ctx.db);
    for (int i = 1; i <= 300; ++i) {
        clsRecebimentos r(run.ctx.db);
        r.IDMOVIMENTO = static_cast<qint16>(mov.ID);
        r.AUTENTICA = static_cast<qint16>(i);
        r.CODBARRA = QStringLiteral("8166%1").arg(i, 40, 10, QLatin1Char('0'));
        r.TIPO = 1;
        r.VALOR = Money::fromCents(1000);
        r.MOMENTO = QDateTime(kDay, QTime(10, 0));
        if (!r.SQLInsert())
            return false;
    }
    return tx.commit();
}

// A page the cheap checks never read: the root of an index of Recebimentos, filled with
// garbage where it lies in the file.
bool garbleIndexPage(const QString& file) {
    int page = 0, pageSize = 0;
    {
        QSqlDatabase db =
            QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("look"));
        db.setDatabaseName(file);
        QSqlQuery q(db);
        if (db.open() &&
            q.exec(QStringLiteral(
                "SELECT rootpage FROM sqlite_master WHERE name = 'idx_recebimentos_codbarra'")) &&
            q.next())
            page = q.value(0).toInt();
        if (q.exec(QStringLiteral("PRAGMA page_size")) && q.next())
            pageSize = q.value(0).toInt();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("look"));
    QFile f(file);
    if (page < 2 || pageSize == 0 || !f.open(QIODevice::ReadWrite) ||
        !f.seek(qint64(page - 1) * pageSize + 8))
        return false;
    return f.write(QByteArray(pageSize - 8, '\x5a')) == pageSize - 8;
}

// The mark a program leaves while it has the file open, left by one that is gone.
bool leaveMarkOfAGoneProgram(const QString& file) {
    QProcess gone;
    gone.start(QStringLiteral("true"));
    if (!gone.waitForStarted())
        return false;
    const qint64 pid = gone.processId();
    gone.waitForFinished();
    QFile mark(file + QStringLiteral("-sessao-%1").arg(pid));
    return mark.open(QIODevice::WriteOnly) &&
           mark.write(QByteArray::number(pid) + "\ntrue\n\n") > 0;
}

QStringList marks(const QTemporaryDir& dir) {
    return QDir(dir.path()).entryList({QStringLiteral("caixa.db-sessao-*")}, QDir::Files);
}

} // namespace

class tst_database_check : public QObject {
    Q_OBJECT
private slots:
    // The record after a clean stop, the mark while the program runs, none after it.
    void cleanStopLeavesTheRecord() {
        QTemporaryDir dir;
        QVERIFY(makeDatabase(dir));
        QVERIFY(marks(dir).isEmpty());
        QFile record(dbPath(dir) + QStringLiteral("-conferencia"));
        QVERIFY(record.open(QIODevice::ReadOnly));
        const QByteArray text = record.readAll();
        QVERIFY2(text.startsWith("conferido=2026-11-23T10:00:00\r\ntamanho="), text.constData());
        QVERIFY(CheckRecord(dbPath(dir)).fileAsLeft());
        {
            FolderContext run(dir.path());
            QVERIFY(Startup::Abre_conexao(run.ctx, false));
            QCOMPARE(
                marks(dir),
                QStringList{
                    QStringLiteral("caixa.db-sessao-%1").arg(QCoreApplication::applicationPid())});
        }
        QVERIFY(marks(dir).isEmpty());
        QVERIFY(CheckRecord(dbPath(dir)).fileAsLeft());
    }

    // A file damaged where the cheap checks do not look, with everything else varied: the
    // whole file is read (and the damage refused) exactly where the rule says.
    void wholeFileReadWhereTheRuleSays_data() {
        QTest::addColumn<QString>("situation");
        QTest::addColumn<bool>("opens");
        QTest::newRow("file as the record says: cheap checks only") << "as left" << true;
        QTest::newRow("no record") << "no record" << false;
        QTest::newRow("file written after the record") << "written after" << false;
        QTest::newRow("a program stopped uncleanly") << "unclean stop" << false;
        QTest::newRow("whole check asked (verificar)") << "asked" << false;
    }
    void wholeFileReadWhereTheRuleSays() {
        QFETCH(QString, situation);
        QFETCH(bool, opens);
        QTemporaryDir dir;
        QVERIFY(makeDatabase(dir));
        QVERIFY(garbleIndexPage(dbPath(dir)));
        // Damage the program did not see happen: the record follows the damaged file.
        CheckRecord(dbPath(dir)).wholeFileSound(QDateTime(kDay, QTime(11, 0)));
        if (situation == QLatin1String("no record"))
            QVERIFY(QFile::remove(CheckRecord::recordPath(dbPath(dir))));
        if (situation == QLatin1String("written after")) {
            // File times move with the kernel's coarse clock (up to 10 ms a tick).
            QTest::qWait(50);
            QFile f(dbPath(dir));
            QVERIFY(f.open(QIODevice::ReadWrite) && f.seek(f.size() - 1));
            const char last = f.peek(1).at(0);
            QVERIFY(f.write(&last, 1) == 1); // the same byte: only the times change
        }
        if (situation == QLatin1String("unclean stop"))
            QVERIFY(leaveMarkOfAGoneProgram(dbPath(dir)));
        FolderContext run(dir.path());
        QString detail;
        const bool opened =
            Startup::Abre_conexao(run.ctx, false, &detail,
                                  situation == QLatin1String("asked") ? Startup::Check::WholeFile
                                                                      : Startup::Check::Cheap);
        QCOMPARE(opened, opens);
        if (!opens) {
            QVERIFY2(detail.startsWith(QStringLiteral("O banco de dados ")) &&
                         detail.contains(QStringLiteral("está danificado")) &&
                         detail.contains(QStringLiteral("copias")),
                     qPrintable(detail));
            // The next program reads it whole too, and no mark is left behind.
            QVERIFY(!QFileInfo::exists(CheckRecord::recordPath(dbPath(dir))));
            QVERIFY(marks(dir).isEmpty());
        }
    }

    // With the cheap checks passed, the places that read the file whole still refuse it: a new
    // day, a closing, and the screen's first write while its background check finds damage.
    void wholeFileAtDayAndScreen_data() {
        QTest::addColumn<QString>("act");
        QTest::newRow("a new day is opened") << "new day";
        QTest::newRow("the day is closed") << "close";
        QTest::newRow("first write after the screen's start") << "screen";
    }
    void wholeFileAtDayAndScreen() {
        QFETCH(QString, act);
        QTemporaryDir dir;
        QVERIFY(makeDatabase(dir));
        QVERIFY(garbleIndexPage(dbPath(dir)));
        CheckRecord(dbPath(dir)).wholeFileSound(QDateTime(kDay, QTime(11, 0)));
        FolderContext run(dir.path());
        QString detail;
        QVERIFY2(Startup::Abre_conexao(run.ctx, false, &detail,
                                       act == QLatin1String("screen") ? Startup::Check::Background
                                                                      : Startup::Check::Cheap),
                 qPrintable(detail));
        clsMovimento mov(run.ctx.db);
        bool done = false;
        if (act == QLatin1String("new day")) {
            done = MovementNumbering::succeeded(
                MovementNumbering::openOrResume(run.ctx.db, kDay.addDays(1), mov));
        } else if (act == QLatin1String("close")) {
            QVERIFY(mov.SQLSelectByDate(kDay));
            mov.STATUS = QStringLiteral("FECHADO");
            Transaction tx(run.ctx.db);
            done = mov.SQLUpdateTotais() && tx.commit();
        } else {
            // Reading goes on meanwhile; the first write waits for the answer and is refused.
            QVERIFY(mov.SQLSelectByDate(kDay));
            Transaction tx(run.ctx.db);
            done = tx.ok();
        }
        QVERIFY(!done);
        QVERIFY2(run.ctx.db.lastError().contains(QStringLiteral("está danificado")),
                 qPrintable(run.ctx.db.lastError()));
        QCOMPARE(
            run.ctx.db.SQLSelect_ReadOnly(QStringLiteral("SELECT * FROM Movimento"))->recordCount(),
            1);
        run.ctx.db.close();
        QVERIFY(!QFileInfo::exists(CheckRecord::recordPath(dbPath(dir))));
    }

    // A sound file opened by the screen: the background check passes, writes go on, and the
    // record says when.
    void backgroundCheckOfASoundFile() {
        QTemporaryDir dir;
        QVERIFY(makeDatabase(dir));
        QVERIFY(QFile::remove(CheckRecord::recordPath(dbPath(dir))));
        FolderContext run(dir.path());
        run.clock.set(QDateTime(kDay.addDays(1), QTime(8, 30)));
        QVERIFY(Startup::Abre_conexao(run.ctx, false, nullptr, Startup::Check::Background));
        clsMovimento mov(run.ctx.db);
        QCOMPARE(MovementNumbering::openOrResume(run.ctx.db, kDay.addDays(1), mov),
                 MovementNumbering::Outcome::Opened);
        run.ctx.db.close();
        CheckRecord record(dbPath(dir));
        QVERIFY(record.fileAsLeft());
        QCOMPARE(record.lastWholeCheck(), QDateTime(kDay.addDays(1), QTime(8, 30)));
    }

    // The header and the size, before SQLite reads anything.
    void headerAndSize_data() {
        QTest::addColumn<int>("offset");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("cut");
        QTest::addColumn<QString>("expected");
        QTest::newRow("signature")
            << 0 << QByteArray("SQLite format 4") << 0 << "não começa com o cabeçalho";
        QTest::newRow("page size not a power of two")
            << 16 << QByteArray::fromHex("0c00") << 0 << "tamanho de página inválido";
        QTest::newRow("payload fractions")
            << 21 << QByteArray::fromHex("412020") << 0 << "valores inválidos";
        QTest::newRow("cut at a page") << 0 << QByteArray() << 4096 << "o cabeçalho conta";
        QTest::newRow("cut inside a page")
            << 0 << QByteArray() << 100 << "não é um número inteiro de páginas";
    }
    void headerAndSize() {
        QFETCH(int, offset);
        QFETCH(QByteArray, bytes);
        QFETCH(int, cut);
        QFETCH(QString, expected);
        QTemporaryDir dir;
        QVERIFY(makeDatabase(dir));
        QVERIFY(DatabaseCheck::header(dbPath(dir)).ok);
        QFile f(dbPath(dir));
        QVERIFY(f.open(QIODevice::ReadWrite));
        if (!bytes.isEmpty())
            QVERIFY(f.seek(offset) && f.write(bytes) == bytes.size());
        if (cut > 0)
            QVERIFY(f.resize(f.size() - cut));
        f.close();
        const DatabaseCheck::Result r = DatabaseCheck::header(dbPath(dir));
        QVERIFY(!r.ok);
        QVERIFY2(r.messages.value(0).contains(expected), qPrintable(r.messages.join('|')));
        FolderContext run(dir.path());
        QString detail;
        QVERIFY(!Startup::Abre_conexao(run.ctx, false, &detail));
        QVERIFY2(detail.contains(QStringLiteral("está danificado")), qPrintable(detail));
    }

    // A program that is still running is no unclean stop: its mark stays and the record holds.
    void markOfARunningProgramIsKept() {
        QTemporaryDir dir;
        QVERIFY(makeDatabase(dir));
        FolderContext first(dir.path());
        QVERIFY(Startup::Abre_conexao(first.ctx, false));
        CheckRecord second(dbPath(dir));
        QVERIFY(!second.uncleanStopFound());
        QCOMPARE(marks(dir).size(), 1);
        QVERIFY(QFileInfo::exists(CheckRecord::recordPath(dbPath(dir))));
    }
};

QTEST_GUILESS_MAIN(tst_database_check)
#include "tst_database_check.moc"
