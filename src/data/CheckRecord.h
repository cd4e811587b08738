#pragma once

#include "DatabaseCheck.h"

#include <QDateTime>
#include <QString>
#include <functional>
#include <future>
#include <memory>

class QLockFile;

// What lets a command trust an SQLite file without reading all of it. Beside caixa.db the
// program keeps caixa.db-conferencia: when the whole file was last found sound, and the file
// (size, modification and change times) as the program left it at its last clean stop. Each
// program that has the file open for writing keeps a mark, caixa.db-sessao-<pid>, a lock file
// it removes when it stops cleanly; a mark whose program is gone (killed, crashed, the machine
// lost power) is an unclean stop.
//
// The rule (DatabaseCheck does the reading): the whole file is checked when the record is
// missing, when the file is not as the record says, after an unclean stop, and wherever a
// caller asks for it; otherwise the cheap checks suffice.
class CheckRecord {
public:
    struct Stamp {
        qint64 size = -1;
        qint64 modified = 0; // ms since the epoch
        qint64 changed = 0;  // metadata change time, which no program can set back
        bool operator==(const Stamp&) const = default;
    };
    static Stamp stampOf(const QString& path);
    static QString recordPath(const QString& databasePath);

    explicit CheckRecord(QString databasePath);
    ~CheckRecord();
    CheckRecord(const CheckRecord&) = delete;
    CheckRecord& operator=(const CheckRecord&) = delete;

    // True when the record says the whole file was found sound and the file is exactly as the
    // program left it. Read before the file is opened.
    bool fileAsLeft();
    QDateTime lastWholeCheck() const { return m_lastWholeCheck; }

    // True when a program that had the file open for writing ended without closing it; its mark
    // is removed and the record forgotten, so the next program checks the whole file too.
    bool uncleanStopFound();
    // This program's own mark, until stopped().
    bool beginSession();

    // The outcomes: the whole file was just found sound; the cheap checks passed on a file as
    // left; the file is damaged (`text` says so, writes are refused, the record is forgotten).
    void wholeFileSound(const QDateTime& when);
    void trusted() { m_trusted = true; }
    void damaged(const QString& text);
    // The whole-file check runs in the background; `describe` words a damaged outcome.
    void pending(std::shared_future<DatabaseCheck::Result> check, const QDateTime& started,
                 std::function<QString(const DatabaseCheck::Result&)> describe);
    // A whole-file check passed in this program (a running one not counted).
    bool wholeFileChecked() const { return m_wholeChecked; }

    // Asked before every write: waits for a check still running; false, with the reason, when
    // the file is damaged.
    bool writable(QString* why);
    // The clean stop, once the connection is closed: the record takes the file as it is left,
    // and the mark goes.
    void stopped();

private:
    bool writeRecord(const Stamp& stamp);
    void forget();

    QString m_path;
    QDateTime m_lastWholeCheck;
    bool m_trusted = false;
    bool m_wholeChecked = false;
    QString m_damaged;
    std::shared_future<DatabaseCheck::Result> m_pending;
    QDateTime m_pendingStarted;
    std::function<QString(const DatabaseCheck::Result&)> m_describe;
    std::unique_ptr<QLockFile> m_session;
};
