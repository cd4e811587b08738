#include "TextFile.h"

#include "OutputPath.h"
#include "SystemTexts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringDecoder>
#include <QTemporaryFile>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <unistd.h>
#endif

namespace {
QString describe(const QString& path, const QFileDevice& f) {
    if (f.error() == QFileDevice::ResourceError)
        return OutputPath::diskFullMessage(path);
    return QStringLiteral("Não foi possível gravar %1: %2").arg(path, f.errorString());
}
} // namespace

QByteArray TextFile::encode(const QStringList& lines) {
    QByteArray out;
    for (const QString& l : lines)
        out += l.toLatin1() + "\r\n";
    return out;
}

bool TextFile::writeAll(const QString& path, const QStringList& lines, QString* error) {
    // A link would be followed and its target replaced; a FIFO or a folder is no file of ours.
    if (const QString odd = OutputPath::notRegular(path); !odd.isEmpty()) {
        if (error)
            *error = odd;
        return false;
    }
    QSaveFile f(path);
    const QByteArray bytes = encode(lines);
    // flush() first: a write refused by a full disk only shows there, and commit() alone would
    // still put an empty file under the final name.
    if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size() || !f.flush() ||
        !f.commit()) {
        if (error)
            *error = describe(path, f);
        return false;
    }
    return true;
}

bool TextFile::create(const QString& path, const QStringList& lines, QString* error) {
    QTemporaryFile f(path + QStringLiteral(".XXXXXX.parcial"));
    const QByteArray bytes = encode(lines);
    if (!f.open() || f.write(bytes) != bytes.size() || !f.flush()) {
        if (error)
            *error = describe(path, f);
        return false;
    }
#ifdef Q_OS_UNIX
    // On the disk before it takes its name: a power cut never leaves an empty file there.
    if (::fsync(f.handle()) != 0) {
        if (error)
            *error = errno == ENOSPC
                         ? OutputPath::diskFullMessage(path)
                         : SystemTexts::text(SystemText::NaoFoiPossivelGravar).arg(path);
        return false;
    }
#endif
    f.close();
    return OutputPath::publish(f.fileName(), path, error);
}

bool TextFile::append(const QString& path, const QStringList& lines, QString* error) {
    if (const QString odd = OutputPath::notRegular(path); !odd.isEmpty()) {
        if (error)
            *error = odd;
        return false;
    }
    QFile f(path);
    const QByteArray bytes = encode(lines);
    if (!OutputPath::openForAppend(f) || f.write(bytes) != bytes.size() || !f.flush()) {
        if (error)
            *error = describe(path, f);
        return false;
    }
    return true;
}

QString TextFile::readProblem(const QString& path, qint64 maxBytes) {
    const QFileInfo info(path);
    if (!info.exists())
        return {};
    if (!info.isFile())
        return SystemTexts::text(SystemText::ArquivoNaoLido).arg(QDir::toNativeSeparators(path));
    if (info.size() > maxBytes)
        return SystemTexts::text(SystemText::ArquivoGrandeDemais)
            .arg(QDir::toNativeSeparators(path), QString::number(maxBytes / 1024));
    return {};
}

QStringList TextFile::readLines(const QString& path, qint64 maxBytes) {
    if (!readProblem(path, maxBytes).isEmpty())
        return {};
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    // Bounded even if the file grows or is swapped between the check and the read.
    const QByteArray bytes = f.read(maxBytes);
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8.decode(bytes);
    if (utf8.hasError())
        text = QString::fromLatin1(bytes);
    if (text.startsWith(QChar(0xFEFF)))
        text.remove(0, 1);
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    QStringList lines = text.split(QLatin1Char('\n'));
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}
