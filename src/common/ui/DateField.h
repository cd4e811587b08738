#pragma once

#include <QDateEdit>

// A date field typed the way an operator types a date: entering it starts at the day, and the
// digits fill day, month and year in order. A separator typed right after a section filled
// itself is taken as already done, so "05/03/2026" and "05032026" give the same date.
class DateField : public QDateEdit {
    Q_OBJECT
public:
    explicit DateField(const QDate& date, QWidget* parent = nullptr);

protected:
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    bool m_advanced = false; // the last digit filled a section and moved to the next
    bool m_typed = false;    // a key arrived since the field took the focus
};
