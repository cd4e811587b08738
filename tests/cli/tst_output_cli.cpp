// What the program writes, pointed by a careless or a dishonest operator: output paths aimed at
// the counter's own files, a FIFO or a link; text with line breaks, characters ISO-8859-1 lacks
// or too long for its field; fractions of a centavo; repeated options; odd files in the folder.
#include "CliFolder.h"
#include "TestCodes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QString kDia = QStringLiteral("23/11/2026");

QByteArray bytesOf(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

int mode(const QString& path) {
    struct stat st {};
    return ::stat(QFile::encodeName(path).constData(), &st) == 0 ? int(st.st_mode & 0777) : -1;
}

bool isFifo(const QString& path) {
    struct stat st {};
    return ::lstat(QFile::encodeName(path).constData(), &st) == 0 && S_ISFIFO(st.st_mode);
}

// A command of the day the tests use.
CliRun day(const CliFolder& f, const QStringList& args) {
    return f.onDay(kDia, args);
}
// A day open with one receipt of 10,00.
bool withReceipt(const CliFolder& f) {
    return day(f, words("caixa abrir")).code == 0 &&
           day(f, words("caixa receber --avulso 8:10,00")).code == 0;
}
int receipts(const CliFolder& f) {
    return day(f, words("caixa recebimentos --json")).array().size();
}

// `lancamento gravar --tipo saida` with one item of 5,00 and `descricao`.
QStringList paymentOut(const QString& descricao, const QString& numero = QStringLiteral("1")) {
    return words("lancamento gravar --tipo saida --json --descricao")
           << descricao << QStringLiteral("--item") << QStringLiteral("102:5,00:") + numero;
}

} // namespace

class tst_output_cli : public QObject {
    Q_OBJECT
private slots:
    // Every command that writes where it is pointed refuses the counter's own files and
    // anything that is not a new regular file; the target is left exactly as it was.
    void outputPathsRefuseOwnFilesAndOddFiles_data() {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("target");
        for (const char* command : {"integracao", "copia"}) {
            for (const char* target :
                 {"caixa.db", "caixa.db-wal", "caixa.db-journal", "Config.ini", "Log.ini",
                  "Estorno_1_2026.txt", "Export/Receb_20261123.txt", "copias/caixa-antiga.db",
                  "copias/nova.txt", "fifo", "link", "dangling link"})
                QTest::newRow(qPrintable(QStringLiteral("%1 %2").arg(command, target)))
                    << command << target;
        }
        QTest::newRow("integracao folder") << "integracao"
                                           << "folder";
    }
    void outputPathsRefuseOwnFilesAndOddFiles() {
        QFETCH(QString, command);
        QFETCH(QString, target);
        static CliFolder f;
        static const bool ready = f.ok() && withReceipt(f);
        QVERIFY(ready);
        QDir().mkpath(f.path(QStringLiteral("copias")));
        QString path = f.path(target);
        QString watched = path; // the file whose bytes must not change
        if (target == QLatin1String("fifo")) {
            QFile::remove(path);
            QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        } else if (target.endsWith(QLatin1String("link"))) {
            watched = f.path(QStringLiteral("alvo.txt"));
            QFile::remove(path);
            QFile::remove(watched);
            if (!target.startsWith(QLatin1String("dangling"))) {
                QFile w(watched);
                QVERIFY(w.open(QIODevice::WriteOnly));
                w.write("conteúdo do alvo\r\n");
            }
            QVERIFY(QFile::link(watched, path));
        } else if (target == QLatin1String("folder")) {
            QDir().mkpath(path);
        } else if (target == QLatin1String("copias/caixa-antiga.db") ||
                   target.startsWith(QLatin1String("Estorno"))) {
            QFile w(path);
            QVERIFY(w.open(QIODevice::WriteOnly | QIODevice::Truncate));
            w.write("já estava aqui\r\n");
        }
        // The database's journal and the error log are the program's own to change.
        const bool ownChanges =
            target == QLatin1String("caixa.db-wal") || target == QLatin1String("Log.ini");
        const bool existed = QFileInfo::exists(watched);
        const QByteArray before = isFifo(path) ? QByteArray() : bytesOf(watched);

        const CliRun r = command == QLatin1String("copia")
                             ? f.asAdmin(words("copia") << path)
                             : day(f, words("integracao --saida") << path);
        QVERIFY2(r.code == 1, qPrintable(QString::number(r.code) + r.err));
        QVERIFY(!r.err.isEmpty());
        if (ownChanges) {
            const QByteArray after = bytesOf(watched);
            QVERIFY(!after.startsWith("A005001") && !after.startsWith("SQLite format 3"));
        } else if (target == QLatin1String("fifo")) {
            QVERIFY(isFifo(path));
        } else if (target == QLatin1String("folder")) {
            QVERIFY(QFileInfo(path).isDir());
        } else {
            QCOMPARE(QFileInfo::exists(watched), existed);
            QCOMPARE(bytesOf(watched), before);
        }
        if (target.endsWith(QLatin1String("link")))
            QVERIFY(QFileInfo(path).isSymLink());
        // The counter still works on its database.
        QCOMPARE(receipts(f), 1);
    }

    // A new file is written; the same path a second time is refused and keeps the first.
    void outputIsANewFileOnly() {
        CliFolder f;
        QVERIFY(f.ok() && withReceipt(f));
        const QString out = f.path(QStringLiteral("saida.INT"));
        QCOMPARE(day(f, words("integracao --saida") << out).code, 0);
        const QByteArray first = bytesOf(out);
        QVERIFY(first.startsWith('A'));
        QCOMPARE(day(f, words("caixa receber --avulso 8:20,00")).code, 0);
        const CliRun again = day(f, words("integracao --saida") << out);
        QCOMPARE(again.code, 1);
        QVERIFY2(again.err.contains(QStringLiteral("já existe e não será substituído")),
                 qPrintable(again.err));
        QCOMPARE(bytesOf(out), first);
        QVERIFY(QDir(f.path()).entryList({QStringLiteral("*.parcial")}).isEmpty());

        const QString copy = f.path(QStringLiteral("copia.db"));
        QCOMPARE(f.asAdmin(words("copia") << copy).code, 0);
        QCOMPARE(f.asAdmin(words("copia") << copy).code, 1);
    }

    // Text that reaches the integration file is checked when typed: a line break, a tab, a
    // character ISO-8859-1 lacks and a description longer than the debit record are refused,
    // nothing is written, and the file then holds only well-formed records.
    void forgedTextIsRefusedAtEntry_data() {
        QTest::addColumn<QString>("descricao");
        QTest::addColumn<QString>("numero");
        QTest::addColumn<QString>("expected");
        QTest::newRow("forged record")
            << QStringLiteral("PAGTO\r\nR26112026 00099108 000999999000000000000000000 "
                              "81600000099999904272099123100000000000000001")
            << "1"
            << "quebra de linha";
        QTest::newRow("line feed") << QStringLiteral("PAGTO\nOUTRO") << "1"
                                   << "quebra de linha";
        QTest::newRow("tab") << QStringLiteral("PAGTO\tOUTRO") << "1"
                             << "tabulação";
        QTest::newRow("delete") << QStringLiteral("PAGTO\x7f") << "1"
                                << "caractere de controle";
        QTest::newRow("en dash") << QStringLiteral("PAGTO – LUZ") << "1"
                                 << "\"–\"";
        QTest::newRow("euro") << QStringLiteral("PAGTO 10€") << "1"
                              << "\"€\"";
        QTest::newRow("175 characters") << QString(175, QLatin1Char('X')) << "1"
                                        << "cabem no máximo 170";
        QTest::newRow("171 characters") << QString(171, QLatin1Char('X')) << "1"
                                        << "cabem no máximo 170";
        QTest::newRow("document number of 30")
            << QStringLiteral("PAGTO") << QString(30, QLatin1Char('9')) << "cabem no máximo 29";
        QTest::newRow("document number with a line break")
            << QStringLiteral("PAGTO") << QStringLiteral("12\r\n34") << "quebra de linha";
    }
    void forgedTextIsRefusedAtEntry() {
        QFETCH(QString, descricao);
        QFETCH(QString, numero);
        QFETCH(QString, expected);
        static CliFolder f;
        static const bool ready = f.ok() && withReceipt(f);
        QVERIFY(ready);
        const CliRun r = day(f, paymentOut(descricao, numero));
        QCOMPARE(r.code, 1);
        QVERIFY2(r.err.contains(expected), qPrintable(r.err));
        QCOMPARE(day(f, words("lancamento listar --tipo saida --json"))
                     .json()
                     .value(u"lancamentos")
                     .toArray()
                     .size(),
                 0);
    }

    void integrationFileHoldsWellFormedRecordsOnly() {
        CliFolder f;
        QVERIFY(f.ok() && withReceipt(f));
        const QString longest(170, QChar(0xC7)); // Ç: one byte in the file
        QCOMPARE(day(f, paymentOut(QStringLiteral("PAGTO\r\nR26112026 00099"))).code, 1);
        QCOMPARE(day(f, paymentOut(QString(175, QLatin1Char('X')))).code, 1);
        QCOMPARE(day(f, paymentOut(longest, QString(29, QLatin1Char('7')))).code, 0);
        QCOMPARE(day(f, paymentOut(QStringLiteral("ÁGUA E LUZ"))).code, 0);
        const QString out = f.path(QStringLiteral("dia.INT"));
        const CliRun r = day(f, words("integracao --json --saida") << out);
        QCOMPARE(r.code, 0);
        QCOMPARE(r.json().value(u"erros").toArray().size(), 0);
        const QList<QByteArray> lines = bytesOf(out).split('\n');
        QCOMPARE(lines.last(), QByteArray());
        QStringList kinds;
        for (const QByteArray& l : lines.mid(0, lines.size() - 1)) {
            QVERIFY(l.endsWith('\r'));
            QCOMPARE(l.size(), 201); // 200 characters and the CR
            kinds << QString(QLatin1Char(l.at(0)));
        }
        QCOMPARE(kinds.join(QString()), QStringLiteral("ARSDSDZ"));
        QVERIFY(QString::fromLatin1(lines[2]).contains(longest));
    }

    // One rule for money a person types: at most two decimals, on every path.
    void fractionsOfACentavoAreRefused_data() {
        QTest::addColumn<QString>("args");
        QTest::addColumn<int>("exit");
        QTest::newRow("two one-off items of 10,005")
            << "caixa receber --pago 20,01 --avulso 8:10,005 --avulso 8:10,005" << 2;
        QTest::newRow("one-off item") << "caixa receber --avulso 8:0,001" << 2;
        QTest::newRow("paid amount") << "caixa receber --pago 10,005 --avulso 8:10,00" << 2;
        QTest::newRow("three zero decimals") << "caixa receber --avulso 8:10,000" << 2;
        QTest::newRow("cash entry item") << "lancamento gravar --tipo saida --descricao PAGTO "
                                            "--item 102:1,005"
                                         << 1;
        QTest::newRow("safe") << "cofre --entrada 1,005" << 1;
        QTest::newRow("count") << "conferencia --item 100:1,005" << 1;
        QTest::newRow("correction")
            << "recebimento alterar --id 1 --valor 10,005 --motivo ERRO" << 1;
    }
    void fractionsOfACentavoAreRefused() {
        QFETCH(QString, args);
        QFETCH(int, exit);
        static CliFolder f;
        static const bool ready = f.ok() && withReceipt(f);
        QVERIFY(ready);
        const QByteArray before =
            day(f, words("caixa recebimentos --json")).outBytes + day(f, words("cofre")).outBytes;
        const CliRun r = day(f, args.split(QLatin1Char(' ')));
        QVERIFY2(r.code == exit, qPrintable(QString::number(r.code) + r.err));
        if (args.startsWith(QLatin1String("caixa receber")))
            QVERIFY2(r.err.contains(QStringLiteral("mais de duas casas decimais")),
                     qPrintable(r.err));
        QCOMPARE(day(f, words("caixa recebimentos --json")).outBytes +
                     day(f, words("cofre")).outBytes,
                 before);
        QCOMPARE(day(f, words("lancamento listar --tipo saida --json"))
                     .json()
                     .value(u"lancamentos")
                     .toArray()
                     .size(),
                 0);
    }

    // Other text that reaches files: reasons, operators' names, kinds' names, one-off notes.
    void otherTextIsCheckedAtEntry_data() {
        QTest::addColumn<QStringList>("args");
        QTest::newRow("reason with a line break")
            << (words("recebimento estornar --id 1 --motivo") << QStringLiteral("ERRO\r\nFALSO"));
        QTest::newRow("reason with a euro")
            << (words("recebimento estornar --id 1 --motivo") << QStringLiteral("10€"));
        QTest::newRow("operator's name")
            << (words("usuario gravar --tipo USER --nome") << QStringLiteral("ANA\tADM"));
        QTest::newRow("kind's name") << (words("tipo gravar --idcod 77 --idtipo 7777 --padrao F "
                                               "--juros N --bloqueio N --descricao")
                                         << QStringLiteral("IPTU\r\nX"));
        QTest::newRow("one-off note")
            << (words("caixa receber --avulso") << QStringLiteral("8:5,00:01/12/2026:1:OBS\nX"));
    }
    void otherTextIsCheckedAtEntry() {
        QFETCH(QStringList, args);
        static CliFolder f;
        static const bool ready = f.ok() && withReceipt(f);
        QVERIFY(ready);
        const QByteArray before = day(f, words("caixa recebimentos --json")).outBytes +
                                  f.run(words("usuario listar --json")).outBytes +
                                  f.run(words("tipo listar --json")).outBytes;
        const CliRun r = args.first() == QLatin1String("usuario")
                             ? f.asAdmin(args, "senha-nova-123\n")
                             : day(f, args);
        QVERIFY2(r.code == 1 || r.code == 2, qPrintable(QString::number(r.code) + r.err));
        QVERIFY2(r.err.contains(QStringLiteral("caractere")) ||
                     r.err.contains(QStringLiteral("quebra de linha")),
                 qPrintable(r.err));
        QCOMPARE(day(f, words("caixa recebimentos --json")).outBytes +
                     f.run(words("usuario listar --json")).outBytes +
                     f.run(words("tipo listar --json")).outBytes,
                 before);
    }

    // A single-valued option given twice is a usage error, never "the last one wins".
    void repeatedOptionsAreRefused_data() {
        QTest::addColumn<QString>("args");
        QTest::newRow("entry deleted twice") << "lancamento excluir --id 9 --id 8";
        QTest::newRow("two kinds") << "exportar febraban --tipo 1 --tipo 3";
        QTest::newRow("two amounts paid")
            << "caixa receber --pago 1,00 --pago 2,00 --avulso 8:1,00";
        QTest::newRow("inline and separate") << "integracao --saida=a.INT --saida b.INT";
    }
    void repeatedOptionsAreRefused() {
        QFETCH(QString, args);
        static CliFolder f;
        static const bool ready = f.ok() && withReceipt(f);
        QVERIFY(ready);
        const CliRun r = day(f, args.split(QLatin1Char(' ')));
        QCOMPARE(r.code, 2);
        QVERIFY2(r.err.contains(QStringLiteral("foi dada mais de uma vez")), qPrintable(r.err));
        QCOMPARE(receipts(f), 1);
    }

    void emptyFolderOptionIsRefused() {
        QProcess p;
        p.start(qEnvironmentVariable("TOLVANE_EXE"),
                {QStringLiteral("--pasta"), QString(), QStringLiteral("caixa"),
                 QStringLiteral("situacao")});
        p.closeWriteChannel();
        QVERIFY(p.waitForFinished(30000));
        QCOMPARE(p.exitCode(), 2);
        QVERIFY(p.readAllStandardError().contains("--pasta precisa de uma pasta"));
        CliFolder f;
        QVERIFY(f.ok());
        QCOMPARE(f.run(words("caixa situacao --pasta") << f.path()).code, 2);
    }

    // A Log.ini that is a FIFO would hang every command that logs: it is named and left alone.
    void fifoLogIsRefused() {
        CliFolder f;
        QVERIFY(f.ok() && withReceipt(f));
        const QString log = f.path(QStringLiteral("Log.ini"));
        QFile::remove(log);
        QCOMPARE(::mkfifo(QFile::encodeName(log).constData(), 0600), 0);
        // A quote in a name is refused and logged: the log is the FIFO.
        const CliRun r =
            runTolvane(f.path(), words("usuario gravar --nome D'AVILA --tipo USER"),
                       CliFolder::passwords(f.password(), f.password(), "senha-123456\n"), 20000);
        QCOMPARE(r.code, 1);
        QVERIFY2(r.err.contains(QStringLiteral("Log.ini não é um arquivo comum")),
                 qPrintable(r.err));
        QVERIFY(isFifo(log));
    }

    // Opening a folder closes again what was left open, and removes copies cut short.
    void openingClosesFilesAndRemovesLeftovers() {
        CliFolder f;
        QVERIFY(f.ok() && withReceipt(f));
        QCOMPARE(day(f, words("controle")).code, 0);
        QCOMPARE(f.asAdmin(words("copia") << f.path(QStringLiteral("copia-manual.db"))).code, 0);
        const QString copias = f.path(QStringLiteral("copias"));
        QVERIFY(QDir().mkpath(copias));
        const QString copy = copias + QStringLiteral("/caixa-20261120-101010.db");
        QVERIFY(QFile::copy(f.path(QStringLiteral("copia-manual.db")), copy));
        const QString receb = f.path(QStringLiteral("Export/Receb_20261123.txt"));
        QVERIFY(QFileInfo::exists(receb));
        QVERIFY(QFile::setPermissions(
            copias, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadGroup |
                        QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther));
        for (const QString& p : {copy, receb})
            QVERIFY(QFile::setPermissions(p, QFile::ReadOwner | QFile::WriteOwner |
                                                 QFile::ReadGroup | QFile::ReadOther));
        // Left by kills: old ones go, one still being written (new) stays.
        const QStringList old = {QStringLiteral("caixa-20261120-101011.db.parcial"),
                                 QStringLiteral("caixa-20261120-101011.db.parcial-journal"),
                                 QStringLiteral("x.db.parcial")};
        for (const QString& name : old + QStringList{QStringLiteral("agora.db.parcial")}) {
            QFile p(copias + QLatin1Char('/') + name);
            QVERIFY(p.open(QIODevice::WriteOnly));
            p.write("parte");
            p.flush();
            if (!name.startsWith(QLatin1String("agora")))
                QVERIFY(p.setFileTime(QDateTime::currentDateTime().addSecs(-3600),
                                      QFileDevice::FileModificationTime));
        }
        QCOMPARE(day(f, words("caixa abrir")).code, 0);
        QCOMPARE(mode(copias), 0700);
        QCOMPARE(mode(copy), 0600);
        QCOMPARE(mode(receb), 0600);
        for (const QString& name : old)
            QVERIFY2(!QFileInfo::exists(copias + QLatin1Char('/') + name), qPrintable(name));
        QVERIFY(QFileInfo::exists(copias + QStringLiteral("/agora.db.parcial")));
    }

    // A full disk says "Disco cheio" and the path on every writer, the bank file included.
    void fullDiskIsNamedByEveryWriter() {
        if (geteuid() != 0)
            QSKIP("a small disk of its own needs permission to mount one");
        QTemporaryDir disk, other;
        QStringList mounted;
        const auto unmount = qScopeGuard([&] {
            for (const QString& m : mounted)
                QProcess::execute(QStringLiteral("umount"), {m});
        });
        const auto fullDisk = [&](const QTemporaryDir& dir, const char* size) {
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
        QCOMPARE(fullDisk(disk, "size=3m"), 0);
        QCOMPARE(fullDisk(other, "size=256k"), 0);
        CliFolder f(CliFolder::At{disk.filePath(QStringLiteral("caixa"))});
        QVERIFY(f.ok());
        f.set(QStringLiteral("Export"), QStringLiteral("cod_banco_cnab"), QStringLiteral("104"));
        f.set(QStringLiteral("Export"), QStringLiteral("Path3"), f.path(QStringLiteral("Export")));
        QDir().mkpath(f.path(QStringLiteral("Export")));
        QVERIFY(withReceipt(f));
        const QString slip =
            TestCodes::slip(1651, 8915, QStringLiteral("12345"), QStringLiteral("111333555555555"),
                            QStringLiteral("24"));
        QCOMPARE(day(f, words("caixa receber") << slip).code, 0);

        // The files on another disk, full.
        fill(other);
        const QString integ = other.filePath(QStringLiteral("cheio.INT"));
        const CliRun r = day(f, words("integracao --saida") << integ);
        QCOMPARE(r.code, 1);
        QVERIFY2(r.err.contains(QStringLiteral("Disco cheio: ") + integ), qPrintable(r.err));
        QVERIFY(!QFileInfo::exists(integ));
        const QString copy = other.filePath(QStringLiteral("cheia.db"));
        const CliRun c = f.asAdmin(words("copia") << copy);
        QCOMPARE(c.code, 1);
        QVERIFY2(c.err.contains(QStringLiteral("Disco cheio: ") + copy), qPrintable(c.err));
        QVERIFY(!QFileInfo::exists(copy));

        // The program's own disk full: the bank run cannot even take its lock.
        fill(disk);
        const CliRun cnab = day(f, words("exportar cnab --tipo 4"));
        QCOMPARE(cnab.code, 1);
        QVERIFY2(cnab.err.contains(QStringLiteral("Disco cheio: ") + f.path()),
                 qPrintable(cnab.err));
        QVERIFY(!cnab.err.contains(QStringLiteral("em andamento")));
        QVERIFY(!cnab.err.contains(QStringLiteral("Erro ao conectar")));
    }

    // A printer port "file:NAME" is a file of the program's folder, whatever the current one.
    void relativePrinterFileIsInTheProgramFolder() {
        CliFolder f;
        QVERIFY(f.ok());
        const QString name =
            QStringLiteral("fita-%1.txt").arg(QRandomGenerator::global()->generate());
        f.set(QStringLiteral("Print"), QStringLiteral("modo"), QStringLiteral("1"));
        f.set(QStringLiteral("Print"), QStringLiteral("impressora"), QStringLiteral("bematech"));
        f.set(QStringLiteral("Print"), QStringLiteral("porta"), QStringLiteral("file:") + name);
        QTemporaryDir elsewhere;
        QProcess p;
        p.setWorkingDirectory(elsewhere.path());
        p.start(qEnvironmentVariable("TOLVANE_EXE"),
                QStringList{QStringLiteral("--pasta"), f.path()} + words("caixa abrir --data") +
                    QStringList{kDia});
        p.write(f.password() + "\n");
        p.closeWriteChannel();
        QVERIFY(p.waitForFinished(60000));
        QCOMPARE(p.exitCode(), 0);
        QVERIFY(QFileInfo(f.path(name)).size() > 0);
        QVERIFY(!QFileInfo::exists(QDir(elsewhere.path()).filePath(name)));

        // Pointed at the database, nothing is printed there.
        f.set(QStringLiteral("Print"), QStringLiteral("porta"), QStringLiteral("file:caixa.db"));
        const QByteArray db = bytesOf(f.path(QStringLiteral("caixa.db")));
        const CliRun r = f.asAdmin(words("impressora fita TESTE"));
        QCOMPARE(r.code, 1);
        QVERIFY2(r.err.contains(QStringLiteral("arquivo do próprio caixa")), qPrintable(r.err));
        QCOMPARE(bytesOf(f.path(QStringLiteral("caixa.db"))), db);
    }
};

QTEST_GUILESS_MAIN(tst_output_cli)
#include "tst_output_cli.moc"
