#pragma once

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QLockFile>
#include <QString>

#include <functional>

// Writes a bank file so that each run has a file of its own, whole or absent. The run works in
// a temporary file beside the final one (final name + ".tmp"): write() puts every record there
// and flushes it to disk; publish() gives it its final name, which never replaces a file. A
// name already taken (a run of the same minute) gets "_2", "_3"... before ".RET". A run that
// dies leaves only its temporary file: the next run of the same file kind removes it, or
// publishes it when the database recorded it (the run died between its commit and its
// publication). One run at a time per program folder (a lock file there).
class BankFileWriter {
public:
    // Whether the database recorded a file of this name (without its folder).
    using Recorded = std::function<bool(const QString& name)>;

    // `stalePattern` names the temporary files of earlier runs ("Cnab*.RET.tmp").
    BankFileWriter(QString finalPath, const QString& lockPath, QString stalePattern,
                   Recorded recorded = {});
    ~BankFileWriter(); // without publish() the temporary file is removed
    BankFileWriter(const BankFileWriter&) = delete;
    BankFileWriter& operator=(const BankFileWriter&) = delete;

    bool begin(QString* error);
    QString finalPath() const { return m_final; } // known after begin()
    bool write(const QList<QByteArray>& chunks, QString* error);
    bool publish(QString* error);
    bool commit(const QList<QByteArray>& chunks, QString* error) {
        return write(chunks, error) && publish(error);
    }

    static QString temporaryPath(const QString& finalPath);

private:
    bool fail(QString* error, const QString& why);
    bool taken(const QString& path) const;
    void settleStale();
    QString lockProblem() const;

    Recorded m_recorded;
    QString m_final;
    QString m_lockPath;
    QLockFile m_lock;
    QString m_stalePattern;
    QFile m_temp;
    bool m_written = false;
    bool m_committed = false;
};
