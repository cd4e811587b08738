#pragma once

#include "Permissions.h"

#include <QDate>
#include <QSet>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

class AppContext;
class CliArgs;
class QTextStream;

// What a command sees: the run's context, its parsed words and the output streams.
struct CliEnv {
    AppContext& ctx;
    const CliArgs& args;
    QTextStream& out;
    QTextStream& err;
    bool json = false;
    // First line of standard input (operator passwords never come in arguments).
    std::function<QString()> readStdinLine;
};

enum CliExit { ExitOk = 0, ExitRefused = 1, ExitUsage = 2 };

struct CliCommand {
    QStringList words; // "usuario", "gravar"
    QString synopsis;  // shown by --help
    QString summary;
    QSet<QString> flags; // options without value
    // ReadOnly: consultation, opened so that a folder on read-only media still answers.
    // Unclaimed: read-write without the counter's claim (the path that re-assigns the database).
    enum class Db { None, Create, Existing, ReadOnly, Unclaimed } db = Db::Existing;
    std::function<int(CliEnv&)> run;
    // Options that may be given more than once (--item); any other given twice is refused.
    QSet<QString> repeatable = {};
    // Lays out pages or draws charts: runs under a widget application (offscreen when no
    // display is named).
    bool pages = false;
    // The act of the permission table the command is: the dispatcher asks for the passwords it
    // needs before the command runs. Left out, the strictest.
    Act act = Act::NaoClassificado;
    // When the act depends on the options given (lancamento --tipo saida).
    std::function<Act(const CliArgs&)> actFor = {};
};

// Each subsystem adds its commands here (see Cli.cpp).
void registerAppCommands(QList<CliCommand>& commands);
void registerCounterCommands(QList<CliCommand>& commands);
void registerCounterReceiveCommand(QList<CliCommand>& commands);
void registerBarcodeCommands(QList<CliCommand>& commands);
void registerPrinterCommands(QList<CliCommand>& commands);
void registerChargesCommands(QList<CliCommand>& commands);
void registerExportCommands(QList<CliCommand>& commands);
void registerAdminCommands(QList<CliCommand>& commands);
void registerCashDayCommands(QList<CliCommand>& commands);
void registerMaintenanceCommands(QList<CliCommand>& commands);
void registerCorrectionCommands(QList<CliCommand>& commands);
void registerNetworkCommands(QList<CliCommand>& commands);
void registerReportCommands(QList<CliCommand>& commands);
void registerLooseStampCommands(QList<CliCommand>& commands);
