#include "Cli.h"

#include "AppContext.h"
#include "AppFolder.h"
#include "CliArgs.h"
#include "CliCommand.h"
#include "CliDialogPort.h"
#include "CliSupport.h"
#include "Clock.h"
#include "DateUtil.h"
#include "IniFile.h"
#include "Permissions.h"
#include "Startup.h"
#include "SystemTexts.h"

#include <QDir>
#include <QFile>
#include <QTextStream>

namespace {

QList<CliCommand> allCommands() {
    QList<CliCommand> c;
    registerAppCommands(c);
    registerCounterCommands(c);
    registerCounterReceiveCommand(c);
    registerBarcodeCommands(c);
    registerPrinterCommands(c);
    registerChargesCommands(c);
    registerExportCommands(c);
    registerAdminCommands(c);
    registerCashDayCommands(c);
    registerMaintenanceCommands(c);
    registerCorrectionCommands(c);
    registerNetworkCommands(c);
    registerReportCommands(c);
    registerLooseStampCommands(c);
    return c;
}

// The longest command whose words start `words`.
const CliCommand* find(const QList<CliCommand>& commands, const QStringList& words) {
    const CliCommand* best = nullptr;
    for (const CliCommand& c : commands) {
        if (c.words.size() > words.size() || (best && best->words.size() >= c.words.size()))
            continue;
        if (words.mid(0, c.words.size()) == c.words)
            best = &c;
    }
    return best;
}

// Takes `--pasta DIR` out of `args` into `folder`; false (said on `err`) when it is misused.
bool takeFolder(QStringList& args, QString& folder, QTextStream& err) {
    const int p = args.indexOf(QStringLiteral("--pasta"));
    if (p < 0)
        return true;
    // An empty folder would silently be the user's data folder.
    if (p + 1 >= args.size() || args[p + 1].trimmed().isEmpty()) {
        err << "A opção --pasta precisa de uma pasta.\n";
        return false;
    }
    folder = args[p + 1];
    args.remove(p, 2);
    if (args.contains(QStringLiteral("--pasta"))) {
        err << "A opção --pasta foi dada mais de uma vez.\n";
        return false;
    }
    return true;
}

QString readLine() {
    QFile in;
    if (!in.open(stdin, QIODevice::ReadOnly))
        return {};
    QString line = QString::fromUtf8(in.readLine());
    while (line.endsWith(QLatin1Char('\n')) || line.endsWith(QLatin1Char('\r')))
        line.chop(1);
    return line;
}

bool openDatabase(AppContext& ctx, CliCommand::Db db, QTextStream& err) {
    using Db = CliCommand::Db;
    QString detail;
    bool opened = true;
    if (db == Db::Existing)
        opened = Startup::Abre_conexao(ctx, false, &detail);
    else if (db == Db::ReadOnly)
        opened = Startup::abrirConsulta(ctx, &detail);
    else if (db == Db::Unclaimed)
        opened = Startup::abrirSemGuiche(ctx, &detail);
    if (!opened)
        err << SystemTexts::text(SystemText::ErroConectarBanco) << "\n" << detail << "\n";
    return opened;
}

// The passwords the command's act needs, read from stdin before it runs: the operator's, then
// an administrator's. -1 to go on, else the exit code.
int authorize(AppContext& ctx, const CliCommand& cmd, const CliArgs& args, QTextStream& err) {
    const Act act = cmd.actFor ? cmd.actFor(args) : cmd.act;
    if (Permissions::who(act) == Authority::Aberto)
        return -1;
    // A command that opens no database still logs in against it.
    if (!ctx.db.isOpen() && !openDatabase(ctx, CliCommand::Db::ReadOnly, err))
        return ExitRefused;
    return CliSupport::authorize(ctx, act, err, readLine);
}

} // namespace

bool Cli::wantsCli(const QStringList& args) {
    for (int i = 0; i < args.size(); ++i) {
        if (args[i] == QLatin1String("--pasta")) {
            // A missing or empty folder is the command line's usage error, not the screens'.
            if (i + 1 >= args.size() || args[i + 1].trimmed().isEmpty())
                return true;
            ++i;
            continue;
        }
        return true;
    }
    return false;
}

bool Cli::needsPages(const QStringList& argsIn) {
    QStringList args = argsIn;
    if (const int p = args.indexOf(QStringLiteral("--pasta")); p >= 0)
        args.remove(p, std::min<qsizetype>(2, args.size() - p));
    const QList<CliCommand> commands = allCommands();
    const CliCommand* cmd = find(commands, args);
    return cmd && cmd->pages;
}

namespace {
// Which passwords a command reads, from the permission table, so help never disagrees with it
// (a command whose act depends on its options says so in its own summary).
QString passwordsNote(Act act) {
    switch (Permissions::who(act)) {
    case Authority::Aberto:
        return {};
    case Authority::Operador:
        return QStringLiteral(" [senha do operador]");
    case Authority::Administrador:
        return QStringLiteral(" [senhas do operador e do administrador]");
    case Authority::PrimeiroAdministrador:
        return QStringLiteral(" [senhas do operador e do administrador; nenhuma sem administrador "
                              "no banco]");
    }
    return {};
}
} // namespace

QString Cli::helpText() {
    QString t = QStringLiteral("Uso: tolvane [--pasta PASTA] [COMANDO ...]\n"
                               "Sem comando, abre o programa (tela de data e depois o caixa).\n\n"
                               "Comandos:\n");
    for (const CliCommand& c : allCommands())
        t += QStringLiteral("  tolvane [--pasta PASTA] %1\n      %2%3\n")
                 .arg(c.synopsis, c.summary, c.actFor ? QString() : passwordsNote(c.act));
    t += QStringLiteral("\nSenhas: a do operador na primeira linha da entrada padrão e, nos atos "
                        "de administrador, a do administrador na segunda (docs/CLI.md).\n"
                        "Saída: 0 sucesso, 1 recusa (mensagem em stderr), 2 uso incorreto.\n");
    return t;
}

int Cli::run(const QStringList& argsIn, const QString& exeFolder) {
    QTextStream out(stdout);
    QTextStream err(stderr);
    out.setEncoding(QStringConverter::Utf8);
    err.setEncoding(QStringConverter::Utf8);

    QStringList args = argsIn;
    QString folderArg;
    if (!takeFolder(args, folderArg, err))
        return ExitUsage;
    if (args.isEmpty() || args.first() == QLatin1String("--help") ||
        args.first() == QLatin1String("-h") || args.first() == QLatin1String("ajuda")) {
        out << helpText();
        return args.isEmpty() ? ExitUsage : ExitOk;
    }

    const QList<CliCommand> commands = allCommands();
    const CliCommand* cmd = find(commands, args);
    if (!cmd) {
        err << QStringLiteral("Comando desconhecido: %1\nUse tolvane --help.\n")
                   .arg(args.join(QLatin1Char(' ')));
        return ExitUsage;
    }
    QString parseError;
    QSet<QString> flags = cmd->flags;
    flags.insert(QStringLiteral("json"));
    const auto parsed =
        CliArgs::parse(args.mid(cmd->words.size()), flags, &parseError, cmd->repeatable);
    if (!parsed) {
        err << parseError << "\nUso: tolvane " << cmd->synopsis << "\n";
        return ExitUsage;
    }

    const QString folder = AppFolder::resolve(folderArg, exeFolder);
    CliDialogPort dialogs(err);
    SystemClock clock;
    AppContext ctx(folder, dialogs, clock);
    if (!ctx.reloadSettings())
        err << IniFile::readProblem(ctx.iniPath()) << "\n";
    if (const QString logProblem = ctx.errors.logProblem(); !logProblem.isEmpty())
        err << logProblem << "\n";
    if (!openDatabase(ctx, cmd->db, err))
        return ExitRefused;
    if (const int rc = authorize(ctx, *cmd, *parsed, err); rc >= 0)
        return rc;
    CliEnv env{ctx, *parsed, out, err, parsed->has(QStringLiteral("json")), readLine};
    return cmd->run(env);
}
