#include "ScanBuffer.h"

#include "QtDialogPort.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QWidget>
#include <utility>

namespace {
constexpr int kFlushMs = 20;
// An Enter this soon after a kept digit ends the scanner's burst; later, it is the cashier's.
// Measured between the keys' own times (when they were typed), not when they are handled: the
// first box of a run may take longer than that to appear.
constexpr quint64 kBurstEnterMs = 100;
// In an input box, a run this long typed this fast is a scanner's: no one types a password or
// a number of 20 digits at a key every 50 ms.
constexpr int kScanMinDigits = 20;
constexpr quint64 kBurstGapMs = 50;

bool isCounterInput(const QWidget* w, const QWidget* counter) {
    if (!w || !w->property(kDialogPortInput).toBool())
        return false;
    const QWidget* parent = w->parentWidget();
    return !parent || parent->window() == counter;
}

bool soon(quint64 at, quint64 before, quint64 ms) {
    return at == 0 || before == 0 || at - before <= ms;
}
} // namespace

bool ScanBuffer::isDigitKey(const QKeyEvent* e) {
    return !(e->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) && e->text().size() == 1 &&
           e->text().at(0).isDigit();
}

ScanBuffer::ScanBuffer(QWidget* counter, std::function<void(int, const QString&)> deliver)
    : QObject(counter), m_counter(counter), m_deliver(std::move(deliver)) {
    m_timer.setInterval(kFlushMs);
    connect(&m_timer, &QTimer::timeout, this, &ScanBuffer::flush);
    qApp->installEventFilter(this);
}

ScanBuffer::~ScanBuffer() {
    qApp->removeEventFilter(this);
}

void ScanBuffer::hold(bool on) {
    m_held = on;
    if (!on && !m_keys.isEmpty())
        m_timer.start();
}

bool ScanBuffer::isCounterBox(const QWidget* w) const {
    if (!w || !w->property(kDialogPortBox).toBool())
        return false;
    // A box of a screen opened over the counter belongs to that screen.
    const QWidget* parent = w->parentWidget();
    return !parent || parent->window() == m_counter;
}

bool ScanBuffer::counterBoxOpen() const {
    return isCounterBox(QApplication::activeModalWidget());
}

bool ScanBuffer::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Show:
        if (watched->isWidgetType() && isCounterBox(static_cast<QWidget*>(watched)))
            ++m_boxesShown;
        return false;
    case QEvent::KeyPress:
        if (!m_held && isCounterInput(QApplication::activeModalWidget(), m_counter))
            return watchInput(watched, static_cast<QKeyEvent*>(event));
        if (!m_held && !counterBoxOpen())
            return false;
        return keep(static_cast<QKeyEvent*>(event));
    case QEvent::KeyRelease: {
        const int key = static_cast<QKeyEvent*>(event)->key();
        return m_keptPresses.removeOne(key);
    }
    default:
        return false;
    }
}

bool ScanBuffer::keep(QKeyEvent* e) {
    const bool enter = e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter;
    if (isDigitKey(e)) {
        m_keys.append({e->key(), e->text()});
        m_afterDigit = true;
        m_lastDigitAt = e->timestamp();
    } else if (enter && m_afterDigit &&
               (e->timestamp() == 0 || e->timestamp() - m_lastDigitAt <= kBurstEnterMs)) {
        m_keys.append({Qt::Key_Return, QStringLiteral("\r")});
        m_afterDigit = false;
    } else {
        m_afterDigit = false;
        return false; // the box's own key
    }
    if (!e->isAutoRepeat())
        m_keptPresses.append(e->key());
    m_timer.start();
    return true;
}

bool ScanBuffer::watchInput(QObject* watched, QKeyEvent* e) {
    auto* field = qobject_cast<QLineEdit*>(watched);
    if (!field)
        return false; // the same key seen on its way to the field
    const bool enter = e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter;
    if (isDigitKey(e)) {
        if (!m_inputRun.isEmpty() && !soon(e->timestamp(), m_inputRunAt, kBurstGapMs))
            m_inputRun.clear();
        m_inputRun += e->text();
        m_inputRunAt = e->timestamp();
        return false; // typed into the box; taken back only if the burst proves a scan
    }
    const QString run = std::exchange(m_inputRun, QString());
    if (!enter || run.size() < kScanMinDigits ||
        !soon(e->timestamp(), m_inputRunAt, kBurstEnterMs) || !field->text().endsWith(run))
        return false;
    field->setText(field->text().chopped(run.size()));
    for (QChar d : run)
        m_keys.append({Qt::Key_0 + d.digitValue(), QString(d)});
    m_keys.append({Qt::Key_Return, QStringLiteral("\r")});
    if (!e->isAutoRepeat())
        m_keptPresses.append(e->key());
    m_timer.start();
    return true;
}

void ScanBuffer::flush() {
    if (m_keys.isEmpty()) {
        m_timer.stop();
        return;
    }
    const auto busy = [this] {
        return m_held || QApplication::activeModalWidget() || (ready && !ready());
    };
    if (m_flushing || busy())
        return;
    m_flushing = true;
    // A kept code that opens a box of its own waits in that box's loop; the keys kept meanwhile
    // go after the ones still here.
    while (!m_keys.isEmpty() && !busy()) {
        const Key k = m_keys.takeFirst();
        m_deliver(k.key, k.text);
    }
    m_flushing = false;
}
