#include "BankFileWriter.h"

#include "OutputPath.h"

#include <QDir>
#include <QFileInfo>
#include <QStorageInfo>
#include <filesystem>
#include <system_error>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace {

// The bytes reach the disk before the file counts as written.
bool syncToDisk(QFile& f) {
    if (!f.flush())
        return false;
#ifdef Q_OS_WIN
    return _commit(f.handle()) == 0;
#else
    return ::fsync(f.handle()) == 0;
#endif
}

// The rename itself reaches the disk (POSIX keeps it in the folder's entry).
void syncFolder([[maybe_unused]] const QString& folder) {
#ifndef Q_OS_WIN
    const int fd = ::open(QFile::encodeName(folder).constData(), O_RDONLY);
    if (fd >= 0) {
        ::fsync(fd);
        ::close(fd);
    }
#endif
}

QString describe(const QString& path, const QFileDevice& f) {
    if (f.error() == QFileDevice::ResourceError)
        return OutputPath::diskFullMessage(path);
    return QStringLiteral("Não foi possível gravar %1: %2")
        .arg(QDir::toNativeSeparators(path), f.errorString());
}

} // namespace

BankFileWriter::BankFileWriter(QString finalPath, const QString& lockPath, QString stalePattern)
    : m_final(std::move(finalPath)), m_lockPath(lockPath), m_lock(lockPath),
      m_stalePattern(std::move(stalePattern)), m_temp(temporaryPath(m_final)) {
    m_lock.setStaleLockTime(0); // a live run may take minutes; only a dead one's lock is stale
}

BankFileWriter::~BankFileWriter() {
    if (m_committed || !m_temp.isOpen())
        return;
    m_temp.close();
    m_temp.remove();
}

QString BankFileWriter::temporaryPath(const QString& finalPath) {
    return finalPath + QStringLiteral(".tmp");
}

QString BankFileWriter::lockProblem() const {
    if (m_lock.error() == QLockFile::LockFailedError)
        return QStringLiteral("Outra geração de arquivo está em andamento. Aguarde o fim dela e "
                              "tente de novo.");
    // The lock file could not even be written: a full disk says so.
    const QString folder = QFileInfo(m_lockPath).absolutePath();
    const QStorageInfo disk(folder);
    if (disk.isValid() && disk.bytesAvailable() < 64 * 1024)
        return OutputPath::diskFullMessage(m_lockPath);
    return QStringLiteral("Não foi possível gravar %1.").arg(QDir::toNativeSeparators(m_lockPath));
}

bool BankFileWriter::fail(QString* error, const QString& why) {
    if (error)
        *error = why;
    return false;
}

bool BankFileWriter::begin(QString* error) {
    if (!m_lock.tryLock(2000))
        return fail(error, lockProblem());
    // The final name is a file of its own or nothing: never a link, a FIFO or a folder.
    if (const QString odd = OutputPath::notRegular(m_final); !odd.isEmpty())
        return fail(error, odd);
    const QDir folder = QFileInfo(m_final).absoluteDir();
    for (const QString& stale : folder.entryList({m_stalePattern}, QDir::Files | QDir::Hidden))
        QFile::remove(folder.filePath(stale));
    if (const QString odd = OutputPath::notRegular(m_temp.fileName()); !odd.isEmpty())
        return fail(error, odd);
    if (!m_temp.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return fail(error, describe(m_temp.fileName(), m_temp));
    return true;
}

bool BankFileWriter::copyFinal(QString* error) {
    QFile existing(m_final);
    if (!existing.exists())
        return true;
    if (!existing.open(QIODevice::ReadOnly))
        return fail(error, QStringLiteral("Não foi possível ler %1: %2")
                               .arg(QDir::toNativeSeparators(m_final), existing.errorString()));
    while (!existing.atEnd()) {
        const QByteArray block = existing.read(1 << 20);
        if (block.isEmpty() || m_temp.write(block) != block.size())
            return fail(error, describe(m_temp.fileName(), m_temp));
    }
    return true;
}

bool BankFileWriter::commit(const QList<QByteArray>& chunks, QString* error) {
    if (!m_temp.isOpen())
        return fail(error, describe(m_temp.fileName(), m_temp));
    if (!copyFinal(error))
        return false;
    for (const QByteArray& c : chunks)
        if (m_temp.write(c) != c.size())
            return fail(error, describe(m_temp.fileName(), m_temp));
    if (!syncToDisk(m_temp))
        return fail(error, describe(m_temp.fileName(), m_temp));
    m_temp.close();
    std::error_code ec;
    std::filesystem::rename(QFile(m_temp.fileName()).filesystemFileName(),
                            QFile(m_final).filesystemFileName(), ec);
    if (ec) {
        m_temp.remove();
        return fail(error, QStringLiteral("Não foi possível gravar %1: %2")
                               .arg(QDir::toNativeSeparators(m_final),
                                    QString::fromLocal8Bit(ec.message())));
    }
    m_committed = true;
    syncFolder(QFileInfo(m_final).absolutePath());
    return true;
}
