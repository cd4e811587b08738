#pragma once

#include <QByteArray>
#include <QString>

// Files of reports written at a path the operator gives: an existing file is never replaced,
// and the file appears under its name only when complete.
class ReportFile {
public:
    // Why `path` cannot take a new report (already there, folder missing), or empty.
    static QString recusa(const QString& path);
    // A temporary name next to `path` to write into before publicar().
    static QString temporario(const QString& path);
    // Gives the finished temporary file its name; refuses (and removes it) if the name was
    // taken meanwhile.
    static bool publicar(const QString& temp, const QString& path, QString* why);
    static bool gravar(const QString& path, const QByteArray& bytes, QString* why);
};
