#pragma once

#include <QString>

// The small keyboard calculator: digits, the comma, + - * /, =, backspace and clear. Values
// are decimal (comma separator) and shown as the counter shows money.
class Calculator {
public:
    void key(QChar c); // '0'-'9', ',', '+', '-', '*', '/', '=', '\b' (backspace), 'C' (clear)
    QString display() const;
    QString result() const; // "1.234,56" of the current value
    bool error() const { return m_error; }

private:
    void apply();
    double current() const;

    QString m_entry;
    double m_acc = 0;
    QChar m_op;
    bool m_fresh = true;
    bool m_error = false;
};
