#include "CliDialogPort.h"

#include <QTextStream>

DialogAnswer CliDialogPort::message(const QString& title, const QString& text, DialogIcon icon,
                                    DialogButtons buttons) {
    if (echo && !transactionActive())
        m_err << QString(text).replace(QLatin1String("\r\n"), QLatin1String("\n")) << Qt::endl;
    return ScriptedDialogPort::message(title, text, icon, buttons);
}

DialogAnswer CliDialogPort::notice(const QString& form, const QString& caption,
                                   const QStringList& lines, DialogButtons buttons) {
    if (echo && !transactionActive())
        m_err << lines.join(QLatin1Char(' ')) << Qt::endl;
    return ScriptedDialogPort::notice(form, caption, lines, buttons);
}
