#pragma once

#include <QObject>
#include <functional>

class CounterLayout;
class QKeyEvent;
class QMainWindow;

// The counter's keys. The counter's window sees every key first, wherever the focus is inside
// it, and turns "+", "-", Enter and the function keys into the counter's acts; typing while
// the focus is on a list goes to the code field. A box of the counter open over the window
// gets the window's keys. The scanner's digits (and the Enter that ends them) typed while a
// window beside the counter has the focus (the list of documents without a stamp) still reach
// the code field; that window's other keys stay its own.
class CounterKeys : public QObject {
public:
    struct Acts {
        std::function<void()> kind;             // "+": a typed item's kind
        std::function<void()> tender;           // "-": the amount paid
        std::function<void()> enter;            // Enter in the code field: read or record
        std::function<void()> addTyped;         // Enter in the value: the typed item
        std::function<bool()> recording;        // a payment is being recorded: keys wait
        std::function<bool()> boxOpen;          // a box of the counter is open
        std::function<QWidget*()> besideWindow; // the window beside the counter, or null
    };
    // Installed on the application: filters installed later (the scan buffer) see keys first.
    CounterKeys(QMainWindow* window, CounterLayout& ui, Acts acts);
    ~CounterKeys() override;

    // The action a function key triggers ("mnuEncerrar" for F4); null when none.
    static const char* actionOf(int key);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool boxKeepsInput(QObject* watched, QEvent* event);
    bool besideKey(QWidget* w, QKeyEvent* event);
    bool handleKey(QKeyEvent* event);
    bool enterKey();
    void toEntry(QKeyEvent* event);

    QMainWindow* m_window;
    CounterLayout& m_ui;
    Acts m_acts;
    bool m_digitsToEntry = false; // the window beside sent its last key to the code field
};
