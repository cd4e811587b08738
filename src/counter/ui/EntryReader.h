#pragma once

#include "CounterSession.h"

#include <QElapsedTimer>
#include <QObject>
#include <functional>

class CounterLayout;
class QTimer;

// When the code field is read. A scanner types 44 digits fast: they are read at the 44th, or a
// moment later when they may be the start of a typed line keyed in quickly (a 45th digit makes
// it a line). A code typed by hand and a typed line are read on Enter; the scanner's own Enter
// right after a read records nothing. `shown` draws a read's result while the keys that follow
// the code are still kept from whatever the read opened.
class EntryReader : public QObject {
public:
    struct Hooks {
        std::function<void(const CounterSession::ReadResult&, bool typedLine)> shown;
        std::function<void()> begins;    // the field was empty: the next customer begins
        std::function<int()> boxesShown; // how many boxes of the counter have been shown
    };
    EntryReader(CounterSession& session, bool consulta, CounterLayout& ui, Hooks hooks,
                QObject* parent);

    void setEnterWindow(int ms) { m_enterMs = ms; }
    void setKeyGap(int ms) { m_keyGapMs = ms; }
    int enterWindow() const { return m_enterMs; }
    bool reading() const { return m_reading; }

    // The code field changed: a scanner's code is read now (or after the line's moment).
    void changed(const QString& text);
    // The code in the field, read as scanned.
    void Leitura_codigo_barras();
    void read(const QString& text, bool typedLine);
    // Reads `text` when it is 44 digits or a typed line; false when it is neither.
    bool readTyped(const QString& text);
    // The overdue consent asked until the read is settled.
    CounterSession::ReadResult settle(CounterSession::ReadResult r);
    // An Enter this soon after a read is the scanner's own.
    bool scannersEnter() const;

private:
    CounterSession& m_session;
    bool m_consulta;
    CounterLayout& m_ui;
    Hooks m_hooks;
    QElapsedTimer m_lastScan;
    int m_enterMs = 150;
    int m_keyGapMs = 50;
    QElapsedTimer m_keyClock;
    qint64 m_lastChangeAt = -1;
    bool m_handTyped = false;
    bool m_reading = false;
    QTimer* m_lineWait = nullptr; // 44 quick digits that may be the start of a typed line
};
