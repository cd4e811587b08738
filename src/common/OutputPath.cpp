#include "OutputPath.h"

#include "SystemTexts.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

QString native(const QString& path) {
    return QDir::toNativeSeparators(path);
}

// The path as the file system resolves its folder (a link to a folder leads to the folder).
QString resolved(const QString& path) {
    const QFileInfo info(path);
    const QString folder = QFileInfo(info.absolutePath()).canonicalFilePath();
    return folder.isEmpty() ? info.absoluteFilePath() : QDir(folder).filePath(info.fileName());
}

bool samePath(const QString& a, const QString& b) {
    return QString::compare(resolved(a), resolved(b), Qt::CaseInsensitive) == 0;
}

bool present(const QFileInfo& info) {
    return info.exists() || info.isSymLink();
}

} // namespace

QString OutputPath::existsMessage(const QString& path) {
    return SystemTexts::text(SystemText::ArquivoJaExiste).arg(native(path));
}

QString OutputPath::diskFullMessage(const QString& path) {
    return SystemTexts::text(SystemText::DiscoCheio).arg(native(path));
}

bool OutputPath::isGuarded(const QString& path, const Guarded& g) {
    const QString name = QFileInfo(path).fileName();
    for (const QString& f : g.files)
        if (!f.isEmpty() && samePath(path, f))
            return true;
    for (const QString& pattern : g.names) {
        const auto re = QRegularExpression::fromWildcard(pattern, Qt::CaseInsensitive);
        if (re.match(name).hasMatch())
            return true;
    }
    const QString mine = resolved(path);
    for (const QString& folder : g.folders) {
        if (folder.isEmpty())
            continue;
        QString root = QFileInfo(folder).canonicalFilePath();
        if (root.isEmpty())
            root = QFileInfo(folder).absoluteFilePath();
        if (mine.startsWith(root + QLatin1Char('/'), Qt::CaseInsensitive))
            return true;
    }
    return false;
}

QString OutputPath::notRegular(const QString& path) {
    const QFileInfo info(path);
    if (!present(info) || (info.isFile() && !info.isSymLink()))
        return {};
    return SystemTexts::text(SystemText::NaoArquivoComum).arg(native(path));
}

QString OutputPath::problem(const QString& path, const Guarded& guarded) {
    if (path.trimmed().isEmpty())
        return SystemTexts::text(SystemText::InformeArquivo);
    if (isGuarded(path, guarded))
        return SystemTexts::text(SystemText::ArquivoDoCaixa).arg(native(path));
    const QFileInfo info(path);
    if (const QString odd = notRegular(path); !odd.isEmpty())
        return odd;
    if (present(info))
        return existsMessage(path);
    const QFileInfo folder(info.absolutePath());
    if (!folder.isDir())
        return SystemTexts::text(SystemText::PastaNaoExiste).arg(native(folder.filePath()));
    if (!folder.isWritable())
        return SystemTexts::text(SystemText::PastaNaoAceitaGravacao).arg(native(folder.filePath()));
    return {};
}

bool OutputPath::createNew(QFile& f) {
    // O_CREAT|O_EXCL: the system refuses anything already at the name, a link included.
    return f.open(QIODevice::WriteOnly | QIODevice::NewOnly);
}

bool OutputPath::openForAppend(QFile& f) {
#ifdef Q_OS_UNIX
    // Non-blocking and without following a link, then checked on the open file itself, so a
    // FIFO swapped in after any check cannot hang the program.
    const int fd =
        ::open(QFile::encodeName(f.fileName()).constData(),
               O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600);
    if (fd < 0)
        return false;
    struct stat st {};
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
        ::close(fd);
        return false;
    }
    ::fcntl(fd, F_SETFL, O_WRONLY | O_APPEND);
    if (!f.open(fd, QIODevice::WriteOnly | QIODevice::Append, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        return false;
    }
    return true;
#else
    if (!notRegular(f.fileName()).isEmpty())
        return false;
    return f.open(QIODevice::WriteOnly | QIODevice::Append);
#endif
}

bool OutputPath::publish(const QString& temporary, const QString& final, QString* error) {
    bool ok = false;
    bool taken = false;
#ifdef Q_OS_UNIX
    // link() never replaces what holds the name, a dangling link included.
    ok =
        ::link(QFile::encodeName(temporary).constData(), QFile::encodeName(final).constData()) == 0;
    taken = !ok && errno == EEXIST;
    if (!ok && !taken && (errno == EPERM || errno == EOPNOTSUPP || errno == ENOSYS)) {
        // A file system without hard links (a FAT share): Qt's rename refuses a taken name.
        ok = QFile::rename(temporary, final);
        taken = !ok && present(QFileInfo(final));
    }
    QFile::remove(temporary);
#else
    ok = QFile::rename(temporary, final);
    taken = !ok && present(QFileInfo(final));
    if (!ok)
        QFile::remove(temporary);
#endif
    if (!ok && error)
        *error = taken ? existsMessage(final)
                       : SystemTexts::text(SystemText::NaoFoiPossivelGravar).arg(native(final));
    return ok;
}
