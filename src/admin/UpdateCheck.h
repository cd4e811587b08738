#pragma once

#include <QString>
#include <functional>

class AppContext;
class QIODevice;

// New versions are published in a folder ([Opcoes] Atualiza) as "VersaoAtual.txt", whose first
// line is the newest version. It is newer when it is greater, in plain text order, than the
// running version, so versions are written to sort as text. The file may sit on a share that
// is out of reach: the check never waits longer than it is told.
class UpdateCheck {
public:
    static constexpr qint64 kMaxLine = 256; // a version line is short; more is not a version file
    static const QString kFileName;         // "VersaoAtual.txt"

    enum class State { NoFolder, NoFile, Empty, Unreadable, NotNewer, Newer, TimedOut };
    struct Result {
        State state = State::NoFolder;
        QString published; // the trimmed first line, when it was readable
        bool newer() const { return state == State::Newer; }
    };

    static QString runningVersion(); // this build's version

    // Reads only the first kMaxLine bytes: empty with `readable` false when they hold binary
    // content or no line end in a longer file.
    static QString firstLine(QIODevice& file, bool* readable);
    static Result check(const QString& folder, const QString& running);
    // The same, on a thread of its own: TimedOut when it has not answered within `timeoutMs`.
    static Result checkWithin(const QString& folder, const QString& running, int timeoutMs,
                              std::function<Result(const QString&, const QString&)> probe = {});

    static QString
    folder(const AppContext& ctx); // [Opcoes] Atualiza, inside the program's folder when relative
    // [Opcoes] atualizador, else "atualizador" in the update folder; relative to the program's
    // folder.
    static QString updaterPath(const AppContext& ctx);
    // Why the updater may not run (empty when it may): it must be a regular file, not a link,
    // inside the update folder, owned by the program's user or root and writable by no one else.
    static QString updaterProblem(const AppContext& ctx);
    // Starts the updater (with the program's folder as its argument, never through a shell) and
    // answers whether it started; `error` says why not.
    static bool startUpdater(const AppContext& ctx, QString* error);
};
