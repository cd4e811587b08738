#pragma once

#include <QFile>
#include <QString>
#include <QStringList>

// Where the program may create a file it was pointed at (an integration file, a copy of the
// database, a bank file, screen images, a printer's text port): only a new regular file, in an
// existing folder that accepts writing, never one of the counter's own files. Commands and
// screens ask the same rule; the writers then create the file exclusively, so a file that
// appears between the check and the write is still never replaced.
class OutputPath {
public:
    // What is never written, wherever the caller points.
    struct Guarded {
        QStringList files;   // exact paths: the database and its companions, Config.ini, Log.ini
        QStringList names;   // file names anywhere (wildcards): "Estorno_*.txt", "Receb_*.txt"
        QStringList folders; // folders whose files are never written: copias/
    };

    // Why a new file may not be created at `path`, or empty when it may.
    static QString problem(const QString& path, const Guarded& guarded = {});
    // Why an existing `path` may not be written again (a file the program keeps: a log, its
    // settings): anything but a regular file, a link included. Empty when missing or regular.
    static QString notRegular(const QString& path);
    // Whether `path` is one of `guarded`.
    static bool isGuarded(const QString& path, const Guarded& guarded);

    // Opens `f` on a file that must not exist yet (not even as a dangling link).
    static bool createNew(QFile& f);
    // Opens `f` to add to it: created when missing; an existing one must be a regular file
    // (never a link, a FIFO or a device, which would hang or write elsewhere).
    static bool openForAppend(QFile& f);
    // Gives the finished `temporary` its `final` name only if nothing holds that name; the
    // temporary is removed either way.
    static bool publish(const QString& temporary, const QString& final, QString* error);

    static QString existsMessage(const QString& path);
    static QString diskFullMessage(const QString& path);
};
