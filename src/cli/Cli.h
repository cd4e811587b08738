#pragma once

#include <QStringList>

// The headless entry point: `tolvane [--pasta DIR] COMMAND ...`. Exit 0 on success, 1 on a
// refusal (message on stderr), 2 on bad usage.
class Cli {
public:
    static bool wantsCli(const QStringList& args); // args without the program name
    // The command lays out pages (reports): main starts a widget application for it.
    static bool needsPages(const QStringList& args);
    static int run(const QStringList& args, const QString& exeFolder);
    static QString helpText();
};
