#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

class QProcess;

// What one run of the program (env TOLVANE_EXE) left: its exit status and both outputs. A run
// that did not start, crashed or did not end in time has code -1.
struct CliRun {
    static constexpr int kTimeoutMs = 60000;

    int code = -1;
    QString out;
    QString err;
    QByteArray outBytes;
    QByteArray errBytes;

    QJsonObject json() const;
    QJsonArray array() const;
    // The administrator's password as `iniciar --demo` prints it.
    QString demoPassword() const;
};

// "caixa receber --json" as the program's words (split on spaces).
QStringList words(const char* line);

// The program on `folder` (--pasta) with `args`; `input` is written to its standard input,
// which is then closed.
CliRun runTolvane(const QString& folder, const QStringList& args, const QByteArray& input = {},
                  int timeoutMs = CliRun::kTimeoutMs);

// The same in two steps, for programs that run side by side: the caller owns the process until
// finishTolvane, which waits for it (killing it after `timeoutMs`) and deletes it.
QProcess* startTolvane(const QString& folder, const QStringList& args,
                       const QByteArray& input = {});
CliRun finishTolvane(QProcess* p, int timeoutMs = CliRun::kTimeoutMs);
