#include "TextFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringDecoder>

namespace {
QString describe(const QString& path, const QFileDevice& f) {
    if (f.error() == QFileDevice::ResourceError)
        return QStringLiteral("Disco cheio: %1").arg(path);
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
    QSaveFile f(path);
    const QByteArray bytes = encode(lines);
    if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size() || !f.commit()) {
        if (error)
            *error = describe(path, f);
        return false;
    }
    return true;
}

bool TextFile::append(const QString& path, const QStringList& lines, QString* error) {
    QFile f(path);
    const QByteArray bytes = encode(lines);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Append) || f.write(bytes) != bytes.size() ||
        !f.flush()) {
        if (error)
            *error = describe(path, f);
        return false;
    }
    return true;
}

QStringList TextFile::readLines(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = f.readAll();
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
