#include "CheckRecord.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>

namespace {

const QString kSessionInfix = QStringLiteral("-sessao-");

QString sessionPrefix(const QString& databasePath) {
    return QFileInfo(databasePath).fileName() + kSessionInfix;
}

} // namespace

CheckRecord::Stamp CheckRecord::stampOf(const QString& path) {
    const QFileInfo f(path);
    if (!f.exists())
        return {};
    return {f.size(), f.lastModified().toMSecsSinceEpoch(),
            f.metadataChangeTime().toMSecsSinceEpoch()};
}

QString CheckRecord::recordPath(const QString& databasePath) {
    return databasePath + QStringLiteral("-conferencia");
}

CheckRecord::CheckRecord(QString databasePath) : m_path(std::move(databasePath)) {}

CheckRecord::~CheckRecord() {
    if (m_pending.valid())
        m_pending.wait(); // its connection must not outlive the program's
}

bool CheckRecord::fileAsLeft() {
    QFile f(recordPath(m_path));
    if (!f.open(QIODevice::ReadOnly))
        return false;
    Stamp recorded;
    QDateTime checked;
    while (!f.atEnd()) {
        const QString line = QString::fromLatin1(f.readLine(200)).trimmed();
        const QString key = line.section(QLatin1Char('='), 0, 0);
        const QString value = line.section(QLatin1Char('='), 1);
        if (key == QLatin1String("conferido"))
            checked = QDateTime::fromString(value, Qt::ISODate);
        else if (key == QLatin1String("tamanho"))
            recorded.size = value.toLongLong();
        else if (key == QLatin1String("modificado"))
            recorded.modified = value.toLongLong();
        else if (key == QLatin1String("alterado"))
            recorded.changed = value.toLongLong();
    }
    if (!checked.isValid())
        return false;
    m_lastWholeCheck = checked;
    return recorded.size >= 0 && recorded == stampOf(m_path);
}

bool CheckRecord::uncleanStopFound() {
    const QFileInfo db(m_path);
    const QString own = m_session ? QFileInfo(m_session->fileName()).fileName() : QString();
    bool found = false;
    const QStringList marks =
        db.dir().entryList({sessionPrefix(m_path) + QLatin1Char('*')}, QDir::Files | QDir::Hidden);
    for (const QString& name : marks) {
        if (name == own || name.endsWith(QLatin1String(".rmlock")))
            continue;
        // Taken only when its program is gone: the mark is then ours until the record is
        // forgotten, so a stop in between still leaves a mark behind.
        QLockFile mark(db.dir().filePath(name));
        mark.setStaleLockTime(0);
        if (!mark.tryLock(0))
            continue;
        forget();
        found = true;
        mark.unlock();
    }
    return found;
}

bool CheckRecord::beginSession() {
    const QString name =
        sessionPrefix(m_path) + QString::number(QCoreApplication::applicationPid());
    m_session = std::make_unique<QLockFile>(QFileInfo(m_path).dir().filePath(name));
    m_session->setStaleLockTime(0);
    if (m_session->tryLock(0))
        return true;
    m_session.reset();
    return false;
}

void CheckRecord::wholeFileSound(const QDateTime& when) {
    m_lastWholeCheck = when;
    m_trusted = true;
    m_wholeChecked = true;
    m_damaged.clear();
    writeRecord(stampOf(m_path));
}

void CheckRecord::damaged(const QString& text) {
    m_trusted = false;
    m_damaged = text;
    forget();
}

void CheckRecord::pending(std::shared_future<DatabaseCheck::Result> check, const QDateTime& started,
                          std::function<QString(const DatabaseCheck::Result&)> describe) {
    m_pending = std::move(check);
    m_pendingStarted = started;
    m_describe = std::move(describe);
    m_trusted = false;
}

bool CheckRecord::writable(QString* why) {
    if (m_pending.valid()) {
        const DatabaseCheck::Result r = m_pending.get();
        m_pending = {};
        if (r.ok)
            wholeFileSound(m_pendingStarted);
        else
            damaged(m_describe ? m_describe(r) : r.messages.value(0));
    }
    if (m_damaged.isEmpty())
        return true;
    if (why)
        *why = m_damaged;
    return false;
}

void CheckRecord::stopped() {
    writable(nullptr);
    if (m_trusted && m_session)
        writeRecord(stampOf(m_path));
    if (m_session)
        m_session->unlock();
    m_session.reset();
}

bool CheckRecord::writeRecord(const Stamp& stamp) {
    QSaveFile f(recordPath(m_path));
    if (!f.open(QIODevice::WriteOnly))
        return false;
    const QString text = QStringLiteral("conferido=%1\r\ntamanho=%2\r\nmodificado=%3\r\n"
                                        "alterado=%4\r\n")
                             .arg(m_lastWholeCheck.toString(Qt::ISODate))
                             .arg(stamp.size)
                             .arg(stamp.modified)
                             .arg(stamp.changed);
    f.write(text.toLatin1());
    return f.commit();
}

void CheckRecord::forget() {
    QFile::remove(recordPath(m_path));
}
