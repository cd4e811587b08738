#include "AppFolder.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QStandardPaths>

QString AppFolder::resolve(const QString& fromArgument, const QString& exeFolder) {
    if (!fromArgument.isEmpty())
        return QDir(fromArgument).absolutePath();
    const QString env = qEnvironmentVariable("TOLVANE_PASTA");
    if (!env.isEmpty())
        return QDir(env).absolutePath();
    if (!exeFolder.isEmpty() &&
        QFileInfo::exists(QDir(exeFolder).filePath(QStringLiteral("Config.ini"))))
        return QDir(exeFolder).absolutePath();
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return QDir(data).filePath(QStringLiteral("Tolvane"));
}

SingleInstance::SingleInstance(const QString& folder) {
    const QByteArray key =
        QCryptographicHash::hash(QDir(folder).absolutePath().toUtf8(), QCryptographicHash::Sha1)
            .toHex()
            .left(16);
    m_lock = new QLockFile(
        QDir::temp().filePath(QStringLiteral("tolvane-%1.lock").arg(QString::fromLatin1(key))));
    m_lock->setStaleLockTime(0);
    m_acquired = m_lock->tryLock(0);
}

SingleInstance::~SingleInstance() {
    if (m_acquired)
        m_lock->unlock();
    delete m_lock;
}
