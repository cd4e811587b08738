#include "BankFileWriter.h"

#include "OutputPath.h"
#include "SystemTexts.h"

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

BankFileWriter::BankFileWriter(QString finalPath, const QString& lockPath, QString stalePattern,
                               Recorded recorded)
    : m_recorded(std::move(recorded)), m_final(std::move(finalPath)), m_lockPath(lockPath),
      m_lock(lockPath), m_stalePattern(std::move(stalePattern)) {
    m_lock.setStaleLockTime(0); // a live run may take minutes; only a dead one's lock is stale
}

BankFileWriter::~BankFileWriter() {
    if (m_committed || (!m_temp.isOpen() && !m_written))
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
    return SystemTexts::text(SystemText::NaoFoiPossivelGravar)
        .arg(QDir::toNativeSeparators(m_lockPath));
}

bool BankFileWriter::fail(QString* error, const QString& why) {
    if (error)
        *error = why;
    return false;
}

// A name is taken by a file, by a temporary file, or by a run the database recorded.
bool BankFileWriter::taken(const QString& path) const {
    return QFileInfo::exists(path) || QFileInfo::exists(temporaryPath(path)) ||
           QFileInfo(path).isSymLink() || (m_recorded && m_recorded(QFileInfo(path).fileName()));
}

// Temporary files of runs that died: the recorded one is whole (it was flushed before the
// commit) and gets its name; the others are removed.
void BankFileWriter::settleStale() {
    const QDir folder = QFileInfo(m_final).absoluteDir();
    for (const QString& stale : folder.entryList({m_stalePattern}, QDir::Files | QDir::Hidden)) {
        const QString temp = folder.filePath(stale);
        const QString final = temp.chopped(4);
        std::error_code ec;
        if (m_recorded && m_recorded(QFileInfo(final).fileName()) && !QFileInfo::exists(final))
            std::filesystem::create_hard_link(QFile(temp).filesystemFileName(),
                                              QFile(final).filesystemFileName(), ec);
        QFile::remove(temp);
    }
}

bool BankFileWriter::begin(QString* error) {
    if (!m_lock.tryLock(2000))
        return fail(error, lockProblem());
    settleStale();
    const QString base = m_final;
    const qsizetype dot = base.lastIndexOf(QLatin1Char('.'));
    for (int n = 2; taken(m_final); ++n) {
        if (n > 999)
            return fail(
                error,
                SystemTexts::text(SystemText::SemNomeLivre).arg(QDir::toNativeSeparators(base)));
        m_final = dot > 0 ? base.left(dot) + QStringLiteral("_%1").arg(n) + base.mid(dot)
                          : base + QStringLiteral("_%1").arg(n);
    }
    m_temp.setFileName(temporaryPath(m_final));
    if (!m_temp.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return fail(error, describe(m_temp.fileName(), m_temp));
    return true;
}

bool BankFileWriter::write(const QList<QByteArray>& chunks, QString* error) {
    if (!m_temp.isOpen())
        return fail(error, describe(m_temp.fileName(), m_temp));
    for (const QByteArray& c : chunks)
        if (m_temp.write(c) != c.size())
            return fail(error, describe(m_temp.fileName(), m_temp));
    if (!syncToDisk(m_temp))
        return fail(error, describe(m_temp.fileName(), m_temp));
    m_temp.close();
    m_written = true;
    return true;
}

bool BankFileWriter::publish(QString* error) {
    if (!m_written)
        return fail(error, describe(m_temp.fileName(), m_temp));
    // A link never replaces a file: the final name appears whole or not at all.
    std::error_code ec;
    std::filesystem::create_hard_link(QFile(m_temp.fileName()).filesystemFileName(),
                                      QFile(m_final).filesystemFileName(), ec);
    if (ec && ec != std::errc::file_exists && !QFileInfo::exists(m_final)) {
        // A folder that keeps no links: the name is still free under the run's lock.
        ec.clear();
        std::filesystem::rename(QFile(m_temp.fileName()).filesystemFileName(),
                                QFile(m_final).filesystemFileName(), ec);
    }
    if (ec) {
        m_temp.remove();
        return fail(error, QStringLiteral("Não foi possível gravar %1: %2")
                               .arg(QDir::toNativeSeparators(m_final),
                                    QString::fromLocal8Bit(ec.message())));
    }
    QFile::remove(m_temp.fileName());
    m_committed = true;
    syncFolder(QFileInfo(m_final).absolutePath());
    return true;
}
