#include "TitleRoom.h"

#include <QApplication>
#include <QEvent>
#include <QFontMetrics>
#include <QMessageBox>
#include <QPointer>
#include <QScreen>
#include <QTimer>
#include <QWidget>

namespace {
// The window manager's icon, three buttons and margins beside the title text.
constexpr int kDecoration = 170;
} // namespace

int TitleRoom::widthFor(const QWidget* window) {
    QFont f = QApplication::font();
    f.setBold(true);
    f.setPointSizeF(f.pointSizeF() * 1.15); // title bars use a larger, bold face
    int width = QFontMetrics(f).horizontalAdvance(window->windowTitle()) + kDecoration;
    if (const QScreen* s = window->screen())
        width = qMin(width, s->availableGeometry().width());
    return width;
}

void TitleRoom::widen(QWidget* window) {
    const int need = widthFor(window);
    if (window->width() >= need)
        return;
    if (window->minimumWidth() == window->maximumWidth())
        window->setFixedWidth(need); // a message box fixes its own size
    else
        window->resize(need, window->height());
    window->setMinimumWidth(need);
}

bool TitleRoom::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show && watched->isWidgetType()) {
        auto* w = static_cast<QWidget*>(watched);
        const Qt::WindowType type = w->windowType();
        if ((type == Qt::Window || type == Qt::Dialog) && !w->windowTitle().isEmpty()) {
            // After the window has laid itself out (a message box sizes itself when shown).
            QPointer<QWidget> p(w);
            QTimer::singleShot(0, w, [p] {
                if (p)
                    widen(p);
            });
        }
    }
    return QObject::eventFilter(watched, event);
}
