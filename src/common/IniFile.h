#pragma once

#include <QString>
#include <QStringList>

// Reader and writer with the semantics of the Windows profile functions: section and key
// matched case-insensitively, a missing file or key reads as empty text, values cut at 254
// characters, writes edit the file in place keeping every other line. Files are ISO-8859-1
// with CRLF line ends, and a write replaces the whole file at once (TextFile::writeAll).
class IniFile {
public:
    static constexpr int kMaxValue = 254;
    // A settings file larger than this is not read: no Config.ini comes near it.
    static constexpr qint64 kMaxFileBytes = 1024 * 1024;

    // Why the file will not be read (not a regular file, larger than kMaxFileBytes), or empty.
    static QString readProblem(const QString& path);

    static QString read(const QString& section, const QString& key, const QString& path);
    // The same lookup in lines already read (TextFile::readLines), for a caller that wants many
    // keys of one file.
    static QString valueIn(const QString& section, const QString& key, const QStringList& lines);
    // False when the file cannot be written (the profile functions report nothing, but the
    // options screen wants to know).
    static bool write(const QString& section, const QString& key, const QString& value,
                      const QString& path);

    // Several keys in one replacement of the file: all of them are written or none.
    struct Entry {
        QString section;
        QString key;
        QString value;
    };
    static bool write(const QList<Entry>& entries, const QString& path);
};
