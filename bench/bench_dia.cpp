// The counter's commands on a day of 1 000 receipts and on a day of 100 000, as whole processes.
// Both databases hold 100 000 receipts (the small day's folder keeps 99 000 on the day before),
// so what differs is the size of the day, not of the database. Prints each command's median
// time on both days and the ratio; `caixa recebimentos --json` writes every receipt of the day,
// so for it the figure that matters is the memory, printed from the kernel's account of the
// largest process.
#include <QCoreApplication>
#include <QDate>
#include <QElapsedTimer>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTextStream>
#include <algorithm>
#include <sys/resource.h>

namespace {

QString g_exe;

struct Folder {
    QTemporaryDir dir;
    QByteArray password;
    QString path() const { return dir.path(); }
};

int run(const Folder& f, const QStringList& args, bool discardOutput = false) {
    QProcess p;
    if (discardOutput)
        p.setStandardOutputFile(QProcess::nullDevice());
    p.start(g_exe, QStringList{QStringLiteral("--pasta"), f.path()} + args);
    p.write(f.password + "\n");
    p.closeWriteChannel();
    p.waitForFinished(600000);
    return p.exitCode();
}

QString day(int offset) {
    return QDate::currentDate().addDays(offset).toString(QStringLiteral("dd/MM/yyyy"));
}

// Receipts written straight into the movement: the commands read them as any other.
bool fill(const Folder& f, int movement, int count, int firstCode) {
    const QString name = QStringLiteral("fill%1").arg(firstCode);
    bool ok = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        db.setDatabaseName(f.path() + QStringLiteral("/caixa.db"));
        ok = db.open() && db.transaction();
        QSqlQuery q(db);
        ok = ok && q.prepare(QStringLiteral("INSERT INTO Recebimentos (AUTENTICA, CODBARRA, "
                                            "IDMOVIMENTO, TIPO, VALOR) VALUES (?, ?, ?, 1, ?)"));
        for (int i = 1; ok && i <= count; ++i) {
            q.addBindValue(i);
            q.addBindValue(QStringLiteral("8") +
                           QString::number(firstCode + i).rightJustified(43, QLatin1Char('0')));
            q.addBindValue(movement);
            q.addBindValue(qint64(1000 + i % 977) * 100);
            ok = q.exec();
        }
        ok = ok && db.commit();
        db.close();
    }
    QSqlDatabase::removeDatabase(name);
    return ok;
}

bool prepare(Folder& f, int today, int before) {
    QProcess p;
    p.start(g_exe, {QStringLiteral("--pasta"), f.path(), QStringLiteral("iniciar"),
                    QStringLiteral("--demo")});
    p.waitForFinished(60000);
    const QString out = QString::fromUtf8(p.readAllStandardOutput());
    f.password = out.section(QStringLiteral("): "), 1).section(QLatin1Char('\n'), 0, 0).toUtf8();
    f.password = f.password.trimmed();
    if (f.password.isEmpty())
        return false;
    int movement = 1;
    if (before > 0) {
        if (run(f, {QStringLiteral("caixa"), QStringLiteral("abrir"), QStringLiteral("--data"),
                    day(-1)}) != 0 ||
            !fill(f, movement, before, 0))
            return false;
        ++movement;
    }
    return run(f, {QStringLiteral("caixa"), QStringLiteral("abrir")}) == 0 &&
           fill(f, movement, today, before);
}

double medianMs(const std::function<void()>& once, int rounds) {
    QList<double> t;
    for (int i = 0; i < rounds; ++i) {
        QElapsedTimer timer;
        timer.start();
        once();
        t << timer.nsecsElapsed() / 1e6;
    }
    std::sort(t.begin(), t.end());
    return t.at(t.size() / 2);
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    g_exe = QStringLiteral(TOLVANE_EXE);
    Folder small, big;
    out << "Preparando os dois dias (100 000 recebimentos em cada banco)...\n" << Qt::flush;
    if (!prepare(small, 1000, 99000) || !prepare(big, 100000, 0)) {
        out << "Falha ao preparar as pastas.\n";
        return 1;
    }
    struct Command {
        const char* name;
        QStringList args;
        bool discard;
    };
    int receipt = 0;
    const QList<Command> commands = {
        {"caixa abrir (retoma)", {QStringLiteral("caixa"), QStringLiteral("abrir")}, false},
        {"caixa situacao --json",
         {QStringLiteral("caixa"), QStringLiteral("situacao"), QStringLiteral("--json")},
         false},
        {"caixa receber (1 item)",
         {QStringLiteral("caixa"), QStringLiteral("receber"), QStringLiteral("--avulso"),
          QStringLiteral("8:1,00")},
         false},
        {"caixa encerrar + reabrir",
         {QStringLiteral("caixa"), QStringLiteral("encerrar"), QStringLiteral("--sem-cupom")},
         false},
    };
    const int rounds = 5;
    out << QStringLiteral("%1 %2 %3 %4\n")
               .arg(QStringLiteral("comando"), -28)
               .arg(QStringLiteral("1 000"), 10)
               .arg(QStringLiteral("100 000"), 10)
               .arg(QStringLiteral("razão"), 8);
    bool within = true;
    for (const Command& c : commands) {
        double ms[2];
        int i = 0;
        for (const Folder* f : {&small, &big}) {
            ms[i++] = medianMs(
                [&] {
                    run(*f, c.args, c.discard);
                    if (c.args.contains(QStringLiteral("encerrar")))
                        run(*f, {QStringLiteral("caixa"), QStringLiteral("reabrir"),
                                 QStringLiteral("--sem-cupom")});
                    ++receipt;
                },
                rounds);
        }
        const double ratio = ms[1] / ms[0];
        within = within && ratio <= 1.5;
        out << QStringLiteral("%1 %2 %3 %4\n")
                   .arg(QLatin1String(c.name), -28)
                   .arg(ms[0], 8, 'f', 1)
                   .arg(ms[1], 8, 'f', 1)
                   .arg(ratio, 8, 'f', 2)
            << Qt::flush;
    }
    // The listing writes the whole day: its time follows the day, its memory must not.
    rusage before{};
    getrusage(RUSAGE_CHILDREN, &before);
    const double listSmall = medianMs(
        [&] {
            run(small,
                {QStringLiteral("caixa"), QStringLiteral("recebimentos"), QStringLiteral("--json")},
                true);
        },
        1);
    const double listBig = medianMs(
        [&] {
            run(big,
                {QStringLiteral("caixa"), QStringLiteral("recebimentos"), QStringLiteral("--json")},
                true);
        },
        1);
    rusage after{};
    getrusage(RUSAGE_CHILDREN, &after);
    out << QStringLiteral("caixa recebimentos --json: %1 ms (1 000) e %2 ms (100 000); maior "
                          "processo até aqui: %3 MiB\n")
               .arg(listSmall, 0, 'f', 1)
               .arg(listBig, 0, 'f', 1)
               .arg(after.ru_maxrss / 1024.0, 0, 'f', 1);
    out << (within ? "Todos os comandos dentro de 1,5x.\n" : "Algum comando passou de 1,5x.\n");
    return 0;
}
