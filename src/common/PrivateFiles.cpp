#include "PrivateFiles.h"

#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

void PrivateFiles::restrictNewFiles() {
#ifdef Q_OS_UNIX
    ::umask(077);
#endif
}

bool PrivateFiles::secureFile(const QString& path) {
#ifdef Q_OS_UNIX
    const QFileInfo info(path);
    if (!info.exists() || !info.isFile())
        return true;
    const auto wanted = QFile::ReadOwner | QFile::WriteOwner;
    const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther |
                        QFile::WriteOther | QFile::ExeOther;
    if (!(info.permissions() & others))
        return true;
    return QFile::setPermissions(path, wanted);
#else
    Q_UNUSED(path);
    return true;
#endif
}

bool PrivateFiles::secureFolder(const QString& path) {
#ifdef Q_OS_UNIX
    const QFileInfo info(path);
    if (!info.isDir())
        return false;
    return QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
#else
    Q_UNUSED(path);
    return true;
#endif
}
