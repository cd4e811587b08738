#pragma once

#include <QObject>

class QWidget;

// Keeps every window of the program wide enough for its whole title: a window manager cuts a
// title that does not fit ("Gra... tro"), and a small box or screen must not lose its name.
// Installed once on the application; windows are widened as they are shown.
class TitleRoom : public QObject {
    Q_OBJECT
public:
    explicit TitleRoom(QObject* parent = nullptr) : QObject(parent) {}

    // The width the title of `window` needs, with the manager's icon and buttons beside it.
    static int widthFor(const QWidget* window);
    static void widen(QWidget* window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
