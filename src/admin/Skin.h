#pragma once

#include <QList>
#include <QPair>
#include <QString>
#include <optional>

class AppContext;

// The look of the windows: a skin is a Qt style sheet file, chosen in [Skin] nome (full path).
// Three ship with the program; a skin that is missing or broken gives way to the default one,
// with a line in Log.ini, so a window is never left without a look.
class Skin {
public:
    static constexpr qint64 kMaxBytes = 1024 * 1024;

    static QString defaultPath();
    // The skins that ship: name shown to the operator, path to store.
    static QList<QPair<QString, QString>> shipped();

    // The style sheet in the file, when it is one: text of at most kMaxBytes whose rules have a
    // selector and balanced braces. `problem` says what is wrong otherwise.
    static std::optional<QString> read(const QString& path, QString* problem = nullptr);

    struct Chosen {
        QString path;       // the skin in use
        QString styleSheet; // its text
        bool fellBack = false;
    };
    // The configured skin, or the default one (logged) when it cannot be used.
    static Chosen current(AppContext& ctx);
};
