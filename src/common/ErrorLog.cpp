#include "ErrorLog.h"

#include "Clock.h"
#include "DialogPort.h"
#include "OutputPath.h"
#include "SystemTexts.h"

#include <QDir>
#include <QFile>
#include <utility>

ErrorLog::ErrorLog(DialogPort& dialogs, const Clock& clock, QString appFolder)
    : m_dialogs(dialogs), m_clock(clock), m_folder(std::move(appFolder)) {}

QString ErrorLog::logPath() const {
    QString folder = QDir::fromNativeSeparators(m_folder);
    if (!folder.endsWith(QLatin1Char('/')))
        folder += QLatin1Char('/');
    return folder + QStringLiteral("Log.ini");
}

QString ErrorLog::messageText(const QString& location, const ErrorInfo& e) {
    return SystemTexts::text(SystemText::ErroInterno)
        .arg(QString::number(e.number), e.description, e.source, location);
}

QByteArray ErrorLog::record(const QString& location, const ErrorInfo& e, const QDateTime& when) {
    const QString lines =
        QStringLiteral("Erro interno n°: ") + QString::number(e.number) + QLatin1Char('\t') +
        QStringLiteral("Data/Hora: ") + when.toString(QStringLiteral("dd/MM/yyyy hh:mm:ss")) +
        QStringLiteral("\r\nDescrição: ") + e.description + QStringLiteral("\r\nOrigem: ") +
        e.source + QStringLiteral("\r\nLocal: ") + location + QStringLiteral("\r\n") +
        QString(100, QLatin1Char('=')) + QStringLiteral("\r\n");
    return lines.toLatin1();
}

Notice ErrorLog::notice(const QString& location, const ErrorInfo& error) {
    return SystemTexts::notice(SystemText::ErroInterno).with(messageText(location, error));
}

void ErrorLog::show(const QString& location, const ErrorInfo& error) {
    tell(m_dialogs, notice(location, error));
}

void ErrorLog::report(const QString& location, const ErrorInfo& error) {
    if (m_dialogs.transactionActive()) {
        reportDeferred(location, error);
        return;
    }
    show(location, error);
    append(location, error);
}

void ErrorLog::reportDeferred(const QString& location, const ErrorInfo& error) {
    append(location, error);
    m_deferred.append({location, error});
}

void ErrorLog::showDeferred() {
    const QList<Deferred> pending = std::exchange(m_deferred, {});
    for (const Deferred& d : pending)
        show(d.location, d.error);
}

QString ErrorLog::logProblem() const {
    return OutputPath::notRegular(logPath());
}

bool ErrorLog::append(const QString& location, const ErrorInfo& error) {
    // A FIFO or a device would hang every command that logs; a link would write elsewhere.
    QFile f(logPath());
    const QByteArray bytes = record(location, error, m_clock.now());
    return OutputPath::openForAppend(f) && f.write(bytes) == bytes.size() && f.flush();
}
