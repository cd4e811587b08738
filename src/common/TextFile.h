#pragma once

#include <QString>
#include <QStringList>

// The text files the program writes: ISO-8859-1 with CRLF line ends. A file written whole
// appears under its final name only when complete (written under a temporary name, flushed to
// disk, then renamed), so a crash or a full disk never leaves half a file there. Logs are
// appended. Every failure says why in `error` (a full disk names the path).
class TextFile {
public:
    static bool writeAll(const QString& path, const QStringList& lines, QString* error = nullptr);
    // A new file, whole: refused when anything already holds the name.
    static bool create(const QString& path, const QStringList& lines, QString* error = nullptr);
    static bool append(const QString& path, const QStringList& lines, QString* error = nullptr);
    // What is read: only regular files (a FIFO or a device would hang the program or never
    // end) and at most `maxBytes`.
    static constexpr qint64 kMaxReadBytes = 16 * 1024 * 1024;
    // Why `path` will not be read, or empty when it can be (a missing file is not a problem:
    // it reads as empty).
    static QString readProblem(const QString& path, qint64 maxBytes = kMaxReadBytes);
    // Decoded lines without their ends; a file saved as UTF-8 is still read right. Empty when
    // the file is missing, unreadable or refused by readProblem.
    static QStringList readLines(const QString& path, qint64 maxBytes = kMaxReadBytes);
    static QByteArray encode(const QStringList& lines);
};
