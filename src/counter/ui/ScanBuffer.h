#pragma once

#include <QList>
#include <QObject>
#include <QTimer>
#include <functional>

class QKeyEvent;
class QWidget;

// Keeps the scanner's keys for the code field while the counter cannot take them: a box of the
// counter is open (a message or a notice of the dialog port), or the counter is busy recording.
// A box is answered by one key (S, N, Enter, Esc); a scanner is a burst of digits ending in
// Enter. So every digit, and the Enter that ends a run of digits, is kept here and handed to the
// code field, in order, once no box is open and the counter is ready again; every other key
// still answers the box.
class ScanBuffer : public QObject {
public:
    // `deliver` types one kept key into the code field (Qt::Key_Return for the Enter).
    ScanBuffer(QWidget* counter, std::function<void(int key, const QString& text)> deliver);
    ~ScanBuffer() override;

    // While held, digits and their Enter are kept even with no box open.
    void hold(bool on);
    // Whether the counter may take keys now; kept keys wait until it may.
    std::function<bool()> ready;
    // How many boxes of the counter have been shown so far.
    int boxesShown() const { return m_boxesShown; }
    int kept() const { return int(m_keys.size()); }
    bool counterBoxOpen() const;
    // A digit as a scanner types it (no Ctrl or Alt).
    static bool isDigitKey(const QKeyEvent* e);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Key {
        int key;
        QString text;
    };
    bool isCounterBox(const QWidget* w) const;
    bool keep(QKeyEvent* e);
    // An input box of the counter (a password, a number): a person types into it; a scanner's
    // burst that ends in Enter is taken back out of it and kept for the code field.
    bool watchInput(QObject* watched, QKeyEvent* e);
    void flush();

    QWidget* m_counter;
    std::function<void(int, const QString&)> m_deliver;
    QList<Key> m_keys;
    QList<int> m_keptPresses; // keys whose release is swallowed with them
    QTimer m_timer;
    bool m_held = false;
    quint64 m_lastDigitAt = 0; // the time the last kept digit was typed
    bool m_afterDigit = false; // the last key kept was a digit: an Enter now ends the burst
    bool m_flushing = false;
    QString m_inputRun;       // the digits just typed into an input box, in one burst
    quint64 m_inputRunAt = 0; // when the last of them was typed
    int m_boxesShown = 0;
};
