#include "CounterKeys.h"

#include "CounterLayout.h"
#include "CounterSession.h"
#include "ScanBuffer.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <utility>

CounterKeys::CounterKeys(QMainWindow* window, CounterLayout& ui, Acts acts)
    : QObject(window), m_window(window), m_ui(ui), m_acts(std::move(acts)) {
    qApp->installEventFilter(this);
}

CounterKeys::~CounterKeys() {
    qApp->removeEventFilter(this);
}

const char* CounterKeys::actionOf(int key) {
    switch (key) {
    case Qt::Key_F2:
        return "mnuExcluiUltimo";
    case Qt::Key_F3:
        return "mnuLimpar";
    case Qt::Key_F4:
        return "mnuEncerrar";
    case Qt::Key_F5:
        return "mnuReabrir";
    case Qt::Key_F6:
        return "mnuJuros";
    case Qt::Key_F7:
        return "mnuRecebidas";
    case Qt::Key_F8:
        return "mnuLimpaIdent";
    case Qt::Key_F9:
        return "mnuCalculadora";
    case Qt::Key_F11:
        return "mnuGravar";
    case Qt::Key_F12:
        return "mnuCarregar";
    case Qt::Key_Escape:
        return "mnuSair";
    default:
        return nullptr;
    }
}

bool CounterKeys::eventFilter(QObject* watched, QEvent* event) {
    if (m_acts.boxOpen() && boxKeepsInput(watched, event))
        return true;
    if (event->type() != QEvent::KeyPress)
        return false;
    auto* w = qobject_cast<QWidget*>(watched);
    if (!w)
        return false;
    auto* ke = static_cast<QKeyEvent*>(event);
    // Dialogs and popups keep their own keys; every key inside this window comes here first.
    if (w->window() != m_window)
        return besideKey(w, ke);
    m_digitsToEntry = false;
    if (m_acts.recording())
        return true; // nothing acts until the payment is recorded; a scan waits in the buffer
    if (handleKey(ke))
        return true;
    // Typing while the focus is on a list goes to the entry, so a scan is never lost there.
    const bool onInput =
        w == m_ui.entry || w == m_ui.valor || w == m_ui.kinds || m_ui.kinds->isAncestorOf(w);
    if (!onInput && !ke->text().isEmpty() && ke->text().at(0).isPrint() &&
        m_ui.entry->isEnabled()) {
        toEntry(ke);
        return true;
    }
    return false;
}

bool CounterKeys::boxKeepsInput(QObject* watched, QEvent* event) {
    // A box of the counter does not block this window: while it is open, the window's own
    // keys go to the box (the scan buffer already took the digits) and its clicks go nowhere.
    auto* w = qobject_cast<QWidget*>(watched);
    if (!w || w->window() != m_window)
        return false;
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease: {
        QWidget* box = QApplication::activeModalWidget();
        auto* ke = static_cast<QKeyEvent*>(event);
        QKeyEvent copy(ke->type(), ke->key(), ke->modifiers(), ke->text());
        QApplication::sendEvent(box->focusWidget() ? box->focusWidget() : box, &copy);
        return true;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ShortcutOverride:
        return true;
    default:
        return false;
    }
}

bool CounterKeys::besideKey(QWidget* w, QKeyEvent* event) {
    // A click into the window beside took the keyboard; the scanner's code is still the
    // counter's, and the counter's window is given the keyboard back with it.
    QWidget* beside = m_acts.besideWindow ? m_acts.besideWindow() : nullptr;
    if (!beside || w->window() != beside)
        return false;
    if (ScanBuffer::isDigitKey(event) && m_ui.entry->isEnabled()) {
        if (!m_window->isActiveWindow())
            m_window->activateWindow();
        toEntry(event); // seen here again, as a key of the counter's own
        m_digitsToEntry = true;
        return true;
    }
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && std::exchange(m_digitsToEntry, false)) {
        if (!m_acts.recording())
            m_acts.enter();
        return true;
    }
    m_digitsToEntry = false;
    return false; // the window's own key: its list's arrows, its buttons
}

bool CounterKeys::handleKey(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Plus:
        m_acts.kind();
        return true;
    case Qt::Key_Minus:
        // The dashes of a typed line are part of the line, not the amount key.
        if (QApplication::focusWidget() == m_ui.entry &&
            CounterSession::pareceInicioDeLinha(m_ui.entry->text()))
            return false;
        m_acts.tender();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return enterKey();
    default:
        break;
    }
    const char* name = actionOf(event->key());
    if (!name)
        return false;
    if (auto* a = m_window->findChild<QAction*>(QLatin1String(name)))
        a->trigger(); // does nothing while the action is disabled
    return true;
}

bool CounterKeys::enterKey() {
    QWidget* focus = QApplication::focusWidget();
    if (focus == m_ui.kinds) {
        m_ui.valor->setFocus();
        m_ui.valor->selectAll();
    } else if (focus == m_ui.valor) {
        m_acts.addTyped();
    } else {
        m_acts.enter();
    }
    return true;
}

void CounterKeys::toEntry(QKeyEvent* event) {
    m_ui.entry->setFocus();
    QKeyEvent copy(event->type(), event->key(), event->modifiers(), event->text());
    QApplication::sendEvent(m_ui.entry, &copy);
}
