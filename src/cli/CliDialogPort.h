#pragma once

#include "ScriptedDialogPort.h"

class QTextStream;

// The command line's dialog port: records every dialog like the scripted port (so commands can
// put the texts in their JSON) and echoes messages to standard error as they happen.
class CliDialogPort : public ScriptedDialogPort {
public:
    // A command states its answers in its options; a question that still reaches it is
    // answered with the safe No.
    explicit CliDialogPort(QTextStream& err) : m_err(err) { defaultAnswer = DialogAnswer::No; }
    bool echo = true;

    DialogAnswer message(const QString& title, const QString& text, DialogIcon icon,
                         DialogButtons buttons) override;
    DialogAnswer notice(const QString& form, const QString& caption, const QStringList& lines,
                        DialogButtons buttons) override;

private:
    QTextStream& m_err;
};
