// The program itself under load and faults, as a town hall's machine would run it: several
// programs receiving the same codes at once on one folder (SQLite and PostgreSQL), two counters
// pointed at one server database, a damaged or emptied database, a row changed with a database
// tool, settings files that are not files, a read-only folder, a full disk, file modes and a
// password that must never be written.
#include "CheckDigits.h"
#include "CliFolder.h"
#include "IniFile.h"
#include "Money.h"
#include "PgServer.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// A Febraban guide of the demo's IPTU kind, due far ahead, numbered by its free field.
QString guide(int n) {
    const QString rest = QStringLiteral("00000001000") + QStringLiteral("0425") +
                         QStringLiteral("20991231") +
                         QStringLiteral("%1").arg(n, 17, 10, QLatin1Char('0'));
    return QStringLiteral("816") + Modulo10_arrecadacao(QStringLiteral("816") + rest) + rest;
}

QString fileText(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? QString::fromLatin1(f.readAll()) : QString();
}

int mode(const QString& path) {
    struct stat st {};
    return ::stat(QFile::encodeName(path).constData(), &st) == 0 ? int(st.st_mode & 0777) : -1;
}

// An application folder made by `iniciar --demo`, on SQLite or on a fresh PostgreSQL database.
class Folder : public CliFolder {
public:
    // Made by `iniciar` alone (its template Config.ini), or with a Config.ini written first.
    enum class Ini { Template, Written };
    explicit Folder(bool postgres = false, const QString& at = QString(), Ini ini = Ini::Written)
        : CliFolder(at.isEmpty() ? QStringLiteral("caixa") : at) {
        if (ini == Ini::Written) {
            QDir().mkpath(path());
            set(QStringLiteral("Export"), QStringLiteral("guiche"), QStringLiteral("1"));
        }
        if (postgres) {
            const DbConfig c = PgServer::instance().freshDatabase();
            set(QStringLiteral("Banco"), QStringLiteral("tipo"), QStringLiteral("postgres"));
            set(QStringLiteral("Banco"), QStringLiteral("host"), c.host);
            set(QStringLiteral("Banco"), QStringLiteral("porta"), QString::number(c.port));
            set(QStringLiteral("Banco"), QStringLiteral("nome"), c.name);
            set(QStringLiteral("Banco"), QStringLiteral("usuario"), c.user);
            m_db = c;
        }
        makeDemo();
    }
    const DbConfig& server() const { return m_db; }

    // The receipts as they stand in the database: code -> authentication numbers.
    QList<QPair<QString, int>> receipts() const {
        QList<QPair<QString, int>> out;
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(m_db.backend == DbBackend::PostgreSQL
                                                            ? QStringLiteral("QPSQL")
                                                            : QStringLiteral("QSQLITE"),
                                                        QStringLiteral("look"));
            if (m_db.backend == DbBackend::PostgreSQL) {
                db.setHostName(m_db.host);
                db.setPort(m_db.port);
                db.setUserName(m_db.user);
                db.setDatabaseName(m_db.name);
            } else {
                db.setDatabaseName(path(QStringLiteral("caixa.db")));
            }
            if (db.open()) {
                QSqlQuery q(db);
                q.exec(QStringLiteral("SELECT CODBARRA, AUTENTICA FROM Recebimentos"));
                while (q.next())
                    out.append({q.value(0).toString(), q.value(1).toInt()});
            }
        }
        QSqlDatabase::removeDatabase(QStringLiteral("look"));
        return out;
    }

private:
    DbConfig m_db;
};

// A page no cheap check reads: the root of the index of Recebimentos(CODBARRA), garbled in
// place.
bool garbleIndexPage(const QString& file) {
    int page = 0, pageSize = 0;
    {
        QSqlDatabase db =
            QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("garble"));
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
    QSqlDatabase::removeDatabase(QStringLiteral("garble"));
    QFile f(file);
    if (page < 2 || pageSize == 0 || !f.open(QIODevice::ReadWrite) ||
        !f.seek(qint64(page - 1) * pageSize + 8))
        return false;
    return f.write(QByteArray(pageSize - 8, '\x5a')) == pageSize - 8;
}

// Whether this process may mount file systems (the tests then use real small disks).
bool canMount() {
    return geteuid() == 0;
}

} // namespace

class tst_reliability_cli : public QObject {
    Q_OBJECT
private slots:
    // Several programs at once on one folder, each receiving every code of a shared pool in its
    // own order: in the end every code is received once and the numbers run 1..n.
    void concurrentCountersRecordEachCodeOnce_data() {
        QTest::addColumn<bool>("postgres");
        QTest::newRow("sqlite") << false;
        QTest::newRow("postgres") << true;
    }
    void concurrentCountersRecordEachCodeOnce() {
        QFETCH(bool, postgres);
        Folder f(postgres);
        QVERIFY(f.ok());
        constexpr int kPrograms = 4;
        constexpr int kCodes = 30;
        // The day opened by all of them at once: one movement.
        QList<QProcess*> openings;
        for (int i = 0; i < kPrograms; ++i)
            openings << startTolvane(f.path(), words("caixa abrir"), f.password() + "\n");
        for (QProcess* p : openings)
            QCOMPARE(finishTolvane(p).code, 0);
        const CliRun day = f.asAdmin(words("caixa situacao --json"));
        QCOMPARE(day.json().value(u"mov"), QJsonValue(1));

        QList<QStringList> queues;
        for (int i = 0; i < kPrograms; ++i) {
            QStringList codes;
            for (int n = 1; n <= kCodes; ++n)
                codes << guide(n);
            std::shuffle(codes.begin(), codes.end(), *QRandomGenerator::global());
            queues << codes;
        }
        QList<QProcess*> running(kPrograms, nullptr);
        int recorded = 0, refused = 0, rounds = 0;
        QStringList unexpected;
        for (bool busy = true; busy;) {
            busy = false;
            for (int i = 0; i < kPrograms; ++i) {
                if (running[i] && running[i]->waitForFinished(5)) {
                    const CliRun r = finishTolvane(running[i]);
                    running[i] = nullptr;
                    ++rounds;
                    if (r.code == 0)
                        ++recorded;
                    else if (r.err.contains(QStringLiteral("Conta já Recebida!!!")))
                        ++refused;
                    else
                        unexpected << r.err;
                }
                if (!running[i] && !queues[i].isEmpty())
                    running[i] =
                        startTolvane(f.path(), words("caixa receber") << queues[i].takeFirst(),
                                     f.password() + "\n");
                busy = busy || running[i];
            }
        }
        qInfo("%s: %d rounds, %d recorded, %d refused as already received",
              postgres ? "postgres" : "sqlite", rounds, recorded, refused);
        QVERIFY2(unexpected.isEmpty(), qPrintable(unexpected.join(QLatin1Char('\n'))));
        QCOMPARE(recorded, kCodes);
        const auto rows = f.receipts();
        QCOMPARE(rows.size(), kCodes);
        QSet<QString> codes;
        QList<int> numbers;
        for (const auto& [code, number] : rows) {
            codes.insert(code);
            numbers << number;
        }
        QCOMPARE(codes.size(), kCodes);
        std::sort(numbers.begin(), numbers.end());
        for (int n = 1; n <= kCodes; ++n)
            QCOMPARE(numbers.at(n - 1), n);
        // Written by four programs at once, the chain still holds together.
        QCOMPARE(f.asAdmin(words("auditar")).code, 0);
    }

    // Ten deposits at once each count once in the safe and in the day's supplies; programs
    // killed at any point of theirs leave the two equal (one transaction), and the chain whole.
    void parallelSafeDepositsAndKills_data() {
        QTest::addColumn<bool>("postgres");
        QTest::newRow("sqlite") << false;
        QTest::newRow("postgres") << true;
    }
    void parallelSafeDepositsAndKills() {
        QFETCH(bool, postgres);
        Folder f(postgres);
        QVERIFY(f.ok());
        QCOMPARE(f.asAdmin(words("caixa abrir")).code, 0);
        const auto state = [&] {
            const QString saldo =
                f.asAdmin(words("cofre --json")).json().value(u"saldo").toString();
            const QString suprimento =
                f.asAdmin(words("caixa situacao --json")).json().value(u"suprimento").toString();
            return qMakePair(saldo, suprimento);
        };
        QList<QProcess*> running;
        for (int i = 0; i < 10; ++i)
            running << startTolvane(f.path(), words("cofre --entrada 1"), f.password() + "\n");
        for (QProcess* p : running) {
            const CliRun r = finishTolvane(p);
            QVERIFY2(r.code == 0, qPrintable(r.err));
        }
        QCOMPARE(state(), qMakePair(QStringLiteral("10,00"), QStringLiteral("10,00")));

        // Kills at spread moments: whatever each had done, balance and supplies agree.
        running.clear();
        for (int i = 0; i < 10; ++i)
            running << startTolvane(f.path(), words("cofre --entrada 1"), f.password() + "\n");
        for (int i = 0; i < running.size(); ++i) {
            QTest::qWait(15 * i);
            if (i % 2 == 0)
                running[i]->kill();
        }
        for (QProcess* p : running)
            finishTolvane(p);
        const auto after = state();
        QCOMPARE(after.first, after.second);
        const auto saldo = Money::parse(after.first);
        QVERIFY(saldo && *saldo >= Money::fromReais(15) && *saldo <= Money::fromReais(20));
        QCOMPARE(f.asAdmin(words("auditar")).code, 0);
    }

    void twoCountersCannotShareOneServerDatabase() {
        Folder first(true);
        QVERIFY(first.ok());
        QCOMPARE(first.asAdmin(words("caixa abrir")).code, 0);
        QTemporaryDir other;
        QVERIFY(QFile::copy(first.path(QStringLiteral("Config.ini")),
                            other.filePath(QStringLiteral("Config.ini"))));
        IniFile::write(QStringLiteral("Export"), QStringLiteral("guiche"), QStringLiteral("2"),
                       other.filePath(QStringLiteral("Config.ini")));
        const auto second = [&](const char* args, const QByteArray& senha) {
            return runTolvane(other.path(), words(args), CliFolder::passwords(senha, senha));
        };
        CliRun r = second("caixa abrir", first.password());
        QCOMPARE(r.code, 1);
        QVERIFY2(r.err.contains(QStringLiteral("pertence ao guichê 1")), qPrintable(r.err));
        // The counter's number really changed: an administrator hands the database over.
        QCOMPARE(second("guiche assumir", "x").code, 1);
        // Not with a day open: its stamps would change letter halfway.
        r = second("guiche assumir", first.password());
        QCOMPARE(r.code, 1);
        QVERIFY2(r.err.contains(QStringLiteral("Há um movimento aberto")), qPrintable(r.err));
        QCOMPARE(first.asAdmin(words("caixa encerrar --sem-cupom")).code, 0);
        QCOMPARE(second("guiche assumir", first.password()).code, 0);
        QCOMPARE(second("caixa abrir", first.password()).code, 0);
        QCOMPARE(first.asAdmin(words("caixa situacao")).code, 0);
        QCOMPARE(first.asAdmin(words("caixa abrir")).code, 1);
    }

    void damagedOrEmptiedDatabaseIsRefused_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("one byte") << QByteArray("S");
    }
    void damagedOrEmptiedDatabaseIsRefused() {
        QFETCH(QByteArray, content);
        static Folder f; // each row writes the whole database file
        QVERIFY(f.ok());
        QFile db(f.path(QStringLiteral("caixa.db")));
        QVERIFY(db.open(QIODevice::WriteOnly | QIODevice::Truncate));
        db.write(content);
        db.close();
        const CliRun r = f.asAdmin(words("caixa abrir"));
        QCOMPARE(r.code, 1);
        QVERIFY2(r.err.contains(QStringLiteral("copias")) ||
                     r.err.contains(QStringLiteral("Não foi possível abrir")),
                 qPrintable(r.err));
        QCOMPARE(QFileInfo(db.fileName()).size(), qint64(content.size())); // never rebuilt
    }

    // Damage after a clean stop, on a page no cheap check reads: the changed file is read whole
    // before the payment, and the payment is refused with nothing written. The same damage with
    // the file's record rewritten to match it (damage the program did not see happen) is still
    // found when a program stopped uncleanly, and when a day is closed.
    void damageAfterACleanStopIsRefusedBeforeAnyPayment() {
        Folder f;
        QVERIFY(f.ok());
        QCOMPARE(f.asAdmin(words("caixa abrir")).code, 0);
        QCOMPARE(f.asAdmin(words("caixa receber") << guide(1)).code, 0);
        const QString file = f.path(QStringLiteral("caixa.db"));
        const QByteArray record = fileText(file + QStringLiteral("-conferencia")).toLatin1();
        QVERIFY(record.startsWith("conferido="));
        QVERIFY(garbleIndexPage(file));
        CliRun r = f.asAdmin(words("caixa receber") << guide(2));
        QCOMPARE(r.code, 1);
        QVERIFY2(r.err.contains(QStringLiteral("está danificado")), qPrintable(r.err));
        QCOMPARE(f.receipts().size(), 1);

        // A mark left by a program that is gone, and a record that matches the damaged file.
        QProcess gone;
        gone.start(QStringLiteral("true"));
        QVERIFY(gone.waitForStarted());
        const qint64 pid = gone.processId();
        gone.waitForFinished();
        QFile mark(file + QStringLiteral("-sessao-%1").arg(pid));
        QVERIFY(mark.open(QIODevice::WriteOnly) &&
                mark.write(QByteArray::number(pid) + "\ntrue\n\n"));
        mark.close();
        const auto restamp = [&] {
            const QFileInfo info(file);
            QFile again(file + QStringLiteral("-conferencia"));
            return again.open(QIODevice::WriteOnly) &&
                   again.write(QStringLiteral("conferido=2026-11-23T10:00:00\r\ntamanho=%1\r\n"
                                              "modificado=%2\r\nalterado=%3\r\n")
                                   .arg(info.size())
                                   .arg(info.lastModified().toMSecsSinceEpoch())
                                   .arg(info.metadataChangeTime().toMSecsSinceEpoch())
                                   .toLatin1()) > 0;
        };
        QVERIFY(restamp());
        r = f.asAdmin(words("caixa receber") << guide(3));
        QCOMPARE(r.code, 1);
        QVERIFY2(r.err.contains(QStringLiteral("está danificado")), qPrintable(r.err));
        QVERIFY(!QFileInfo::exists(mark.fileName()));
        QVERIFY(restamp());
        r = f.asAdmin(words("caixa encerrar --sem-cupom"));
        QCOMPARE(r.code, 1);
        QVERIFY2(r.err.contains(QStringLiteral("está danificado")), qPrintable(r.err));
        // Found damaged, the file is read whole by the next command too, and refused.
        QCOMPARE(f.asAdmin(words("caixa situacao")).code, 1);
        QCOMPARE(f.receipts().size(), 1);
    }

    // A receipt changed with the sqlite3 tool after the day was closed.
    void auditNamesTheChangedReceipt() {
        Folder f;
        QVERIFY(f.ok());
        QCOMPARE(f.asAdmin(words("caixa abrir")).code, 0);
        QCOMPARE(f.asAdmin(words("caixa receber") << guide(1) << guide(2) << guide(3)).code, 0);
        QCOMPARE(f.asAdmin(words("caixa encerrar")).code, 0);
        const QStringList audit = words("auditar --data")
                                  << QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy"));
        QCOMPARE(f.asAdmin(audit).code, 0);
        const QString sql =
            QStringLiteral("UPDATE Recebimentos SET VALOR = 1 WHERE AUTENTICA = 2;");
        if (QProcess::execute(QStringLiteral("sqlite3"),
                              {f.path(QStringLiteral("caixa.db")), sql}) != 0) {
            QSqlDatabase db =
                QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("tool"));
            db.setDatabaseName(f.path(QStringLiteral("caixa.db")));
            QVERIFY(db.open() && QSqlQuery(db).exec(sql));
        }
        const CliRun r = f.asAdmin(audit);
        QCOMPARE(r.code, 1);
        QVERIFY2(r.out.contains(QStringLiteral("Primeira diferença: Recebimentos IDRECEBE=2 "
                                               "(movimento 1, autenticação 2) foi alterado")),
                 qPrintable(r.out));
    }

    void settingsThatAreNotFilesAreRefused_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("expected");
        QTest::newRow("fifo") << "fifo"
                              << "não é um arquivo comum";
        QTest::newRow("/dev/zero") << "zero"
                                   << "não é um arquivo comum";
        QTest::newRow("/dev/urandom") << "urandom"
                                      << "não é um arquivo comum";
        QTest::newRow("two megabytes") << "big"
                                       << "tem mais de 1024 KB";
    }
    void settingsThatAreNotFilesAreRefused() {
        QFETCH(QString, kind);
        QFETCH(QString, expected);
        static Folder f; // each row replaces what the row before left as Config.ini
        QVERIFY(f.ok());
        const QString ini = f.path(QStringLiteral("Config.ini"));
        QVERIFY(QFile::remove(ini));
        if (kind == QLatin1String("fifo"))
            QCOMPARE(::mkfifo(QFile::encodeName(ini).constData(), 0600), 0);
        else if (kind == QLatin1String("big")) {
            QFile big(ini);
            QVERIFY(big.open(QIODevice::WriteOnly));
            big.write(QByteArray(2 * 1024 * 1024, ';'));
        } else
            QVERIFY(QFile::link(QStringLiteral("/dev/") + kind, ini));
        const CliRun r = runTolvane(f.path(), words("caixa situacao"), f.password() + "\n", 15000);
        QVERIFY(r.code >= 0); // it ended, without hanging on the file
        QVERIFY2(r.err.contains(expected), qPrintable(r.err));
    }

    void readOnlyFolderAnswersConsultations() {
        Folder f;
        QVERIFY(f.ok());
        QCOMPARE(f.asAdmin(words("caixa abrir")).code, 0);
        QCOMPARE(f.asAdmin(words("caixa receber") << guide(7)).code, 0);
        QTemporaryDir mount;
        QString folder = f.path();
        if (canMount()) {
            folder = mount.path();
            QCOMPARE(QProcess::execute(QStringLiteral("mount"),
                                       {QStringLiteral("--bind"), f.path(), folder}),
                     0);
            QProcess::execute(QStringLiteral("mount"),
                              {QStringLiteral("-o"), QStringLiteral("remount,bind,ro"), folder});
        } else {
            QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));
        }
        const CliRun list =
            runTolvane(folder, words("caixa recebimentos --json"), f.password() + "\n");
        const CliRun pay =
            runTolvane(folder, words("caixa receber") << guide(8), f.password() + "\n");
        if (canMount())
            QProcess::execute(QStringLiteral("umount"), {folder});
        else
            QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QCOMPARE(list.code, 0);
        QCOMPARE(list.array().size(), 1);
        QCOMPARE(pay.code, 1);
    }

    // The disk of the control file fills while the counter works: the payment stands, the file
    // is named with "Disco cheio" in the answer and in Log.ini, and rebuilt once there is room.
    void fullDiskIsNamed() {
        if (!canMount())
            QSKIP("a small disk of its own needs permission to mount one");
        QTemporaryDir other;
        QList<QString> mounted;
        const auto cleanup = qScopeGuard([&] {
            for (const QString& m : mounted)
                QProcess::execute(QStringLiteral("umount"), {m});
        });
        const auto tmpfs = [&](const QTemporaryDir& dir, const char* size) {
            mounted << dir.path();
            return QProcess::execute(QStringLiteral("mount"),
                                     words("-t tmpfs -o") << QLatin1String(size)
                                                          << QStringLiteral("tmpfs") << dir.path());
        };
        const auto fill = [](const QTemporaryDir& dir) {
            QFile filler(dir.filePath(QStringLiteral("enchimento")));
            filler.open(QIODevice::WriteOnly);
            while (filler.write(QByteArray(1024, 'x')) == 1024 && filler.flush()) {
            }
        };
        Folder f;
        QVERIFY(f.ok());
        QCOMPARE(f.asAdmin(words("caixa abrir")).code, 0);

        QCOMPARE(tmpfs(other, "size=64k"), 0);
        f.set(QStringLiteral("Export"), QStringLiteral("Path3"), other.path());
        f.set(QStringLiteral("Print"), QStringLiteral("print_cupom"), QStringLiteral("1"));
        QCOMPARE(f.asAdmin(words("caixa receber") << guide(2)).code, 0);
        const QString controlFile =
            other.filePath(QDate::currentDate().toString(QStringLiteral("'Receb_'yyyyMMdd'.txt'")));
        QVERIFY(QFile::remove(controlFile)); // lost; its disk then fills up
        fill(other);
        const CliRun paid = f.asAdmin(words("caixa receber") << guide(3));
        QCOMPARE(paid.code, 0); // the payment is in the database
        QVERIFY2(paid.err.contains(QStringLiteral("Disco cheio: ") + controlFile),
                 qPrintable(paid.err));
        QVERIFY(fileText(f.path(QStringLiteral("Log.ini")))
                    .contains(QStringLiteral("Disco cheio: ") + controlFile));
        // Room again: the file is rebuilt from the database, the lost line included.
        QFile::remove(other.filePath(QStringLiteral("enchimento")));
        QCOMPARE(f.asAdmin(words("controle")).code, 0);
        const QString text = fileText(controlFile);
        QVERIFY(text.contains(guide(2)) && text.contains(guide(3)));
    }

    void filesArePrivateAndPasswordsNeverWritten() {
        Folder f(false, QString(), Folder::Ini::Template);
        QVERIFY(f.ok());
        QCOMPARE(mode(f.path()), 0700);
        QCOMPARE(mode(f.path(QStringLiteral("Config.ini"))), 0600);
        QCOMPARE(mode(f.path(QStringLiteral("caixa.db"))), 0600);
        f.set(QStringLiteral("Print"), QStringLiteral("print_cupom"), QStringLiteral("1"));
        QCOMPARE(f.asAdmin(words("caixa abrir")).code, 0);
        QCOMPARE(f.asAdmin(words("caixa receber") << guide(4)).code, 0);
        QCOMPARE(f.asAdmin(words("caixa encerrar")).code, 0);
        const QString control =
            QDir(f.path(QStringLiteral("Export"))).entryList(QDir::Files).value(0);
        QCOMPARE(mode(f.path(QStringLiteral("Export"))), 0700);
        QCOMPARE(mode(f.path(QStringLiteral("Export/")) + control), 0600);
        const QString copy = QDir(f.path(QStringLiteral("copias"))).entryList(QDir::Files).value(0);
        QVERIFY(copy.startsWith(QStringLiteral("caixa-")));
        QCOMPARE(mode(f.path(QStringLiteral("copias"))), 0700);
        QCOMPARE(mode(f.path(QStringLiteral("copias/")) + copy), 0600);

        const QByteArray secret = "p4ss'w0rd";
        const CliRun login = f.run(words("entrar"), secret + "\n");
        const CliRun save =
            f.asAdmin(words("usuario gravar --nome BIA --tipo USER"), secret + "\n");
        QCOMPARE(login.code, 1);
        QCOMPARE(save.code, 1);
        const QString log = fileText(f.path(QStringLiteral("Log.ini")));
        QVERIFY(log.contains(QStringLiteral("aspa simples")));
        for (const QString& seen : {log, login.err, login.out, save.err, save.out})
            QVERIFY2(!seen.contains(QStringLiteral("w0rd")) &&
                         !seen.contains(QStringLiteral("p4ss")),
                     qPrintable(seen));
        QCOMPARE(mode(f.path(QStringLiteral("Log.ini"))), 0600);
    }

    void chargesRefuseWhatCannotBeComputed_data() {
        QTest::addColumn<QString>("dueAndValue");
        QTest::addColumn<int>("exit");
        QTest::newRow("year one") << "01/01/0001 99.999.999,99" << 1;
        QTest::newRow("before 1997") << "31/12/1996 10,00" << 1;
        QTest::newRow("beyond the maximum") << "01/01/2026 99.999.999.999.999" << 2;
        QTest::newRow("largest amount overdue") << "01/01/1997 999.999.999,99" << 1;
        QTest::newRow("ordinary") << "01/01/1997 100,00" << 0;
    }
    void chargesRefuseWhatCannotBeComputed() {
        QFETCH(QString, dueAndValue);
        QFETCH(int, exit);
        static Folder f;
        const CliRun r =
            f.run(words("encargos --data 23/11/2026 --esquema 1 --json --vencimento")
                  << dueAndValue.section(QLatin1Char(' '), 0, 0) << QStringLiteral("--valor")
                  << dueAndValue.section(QLatin1Char(' '), 1));
        QCOMPARE(r.code, exit);
        if (exit == 0)
            QVERIFY(!r.json().value(u"total").toString().startsWith(QLatin1Char('-')));
    }
};

QTEST_GUILESS_MAIN(tst_reliability_cli)
#include "tst_reliability_cli.moc"
