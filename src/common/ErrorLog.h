#pragma once

#include "Notice.h"

#include <QDateTime>
#include <QList>
#include <QString>

class Clock;
class DialogPort;

// The error that a routine caught: number, description and source, as the program reports them.
struct ErrorInfo {
    qint32 number = 0;
    QString description;
    QString source;
};

// The one error report: a message box first (so the operator always sees it, even when the log
// cannot be written), then a record appended to Log.ini in the application folder. While a
// transaction is active the record is written at once and the box waits for the scope's end
// (showDeferred), so no box holds the database's write lock.
class ErrorLog {
public:
    ErrorLog(DialogPort& dialogs, const Clock& clock, QString appFolder);

    void report(const QString& location, const ErrorInfo& error);
    // The record now, the box once the transaction has ended.
    void reportDeferred(const QString& location, const ErrorInfo& error);
    // The boxes of the reports made inside the transaction that has just ended.
    void showDeferred();
    // Only the Log.ini record, for what the operator was already told another way. False when
    // the log could not be written.
    bool append(const QString& location, const ErrorInfo& error);

    QString logPath() const;
    // Why Log.ini will not be written (not a regular file), or empty.
    QString logProblem() const;
    static QString messageText(const QString& location, const ErrorInfo& error);
    // The report's box as a notice, for an operation that tells after it is over (with
    // `append` for the record).
    static Notice notice(const QString& location, const ErrorInfo& error);
    static QByteArray record(const QString& location, const ErrorInfo& error,
                             const QDateTime& when);

private:
    struct Deferred {
        QString location;
        ErrorInfo error;
    };
    void show(const QString& location, const ErrorInfo& error);

    QList<Deferred> m_deferred;
    DialogPort& m_dialogs;
    const Clock& m_clock;
    QString m_folder;
};
