#pragma once

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QLockFile>
#include <QString>

// Writes a bank file so that its final name only ever holds whole runs. The run works in a
// temporary file beside the final one (final name + ".tmp"); on commit the final file's
// earlier contents (a run of the same minute) and the new records go into the temporary file,
// which is flushed to disk and then renamed over the final name. A run that dies leaves only
// its temporary file, which the next run of the same file kind removes. One run at a time per
// program folder (a lock file there), so a run never removes another's temporary file.
class BankFileWriter {
public:
    // `stalePattern` names the temporary files of earlier runs ("Cnab*.RET.tmp").
    BankFileWriter(QString finalPath, const QString& lockPath, QString stalePattern);
    ~BankFileWriter(); // without a commit the temporary file is removed
    BankFileWriter(const BankFileWriter&) = delete;
    BankFileWriter& operator=(const BankFileWriter&) = delete;

    bool begin(QString* error);
    bool commit(const QList<QByteArray>& chunks, QString* error);

    static QString temporaryPath(const QString& finalPath);
    const QString& finalPath() const { return m_final; }

private:
    bool copyFinal(QString* error);
    bool fail(QString* error, const QString& why);
    QString lockProblem() const;

    QString m_final;
    QString m_lockPath;
    QLockFile m_lock;
    QString m_stalePattern;
    QFile m_temp;
    bool m_committed = false;
};
