#include "DateField.h"

#include <QKeyEvent>
#include <QTimer>

DateField::DateField(const QDate& date, QWidget* parent) : QDateEdit(date, parent) {
    setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
}

void DateField::focusInEvent(QFocusEvent* event) {
    QDateEdit::focusInEvent(event);
    m_advanced = false;
    m_typed = false;
    // Typing always starts at the day: at once, for digits that arrive with the Tab, and again
    // once a click has placed the cursor, unless the operator has already typed.
    setSelectedSection(QDateTimeEdit::DaySection);
    QTimer::singleShot(0, this, [this] {
        if (hasFocus() && !m_typed)
            setSelectedSection(QDateTimeEdit::DaySection);
    });
}

void DateField::keyPressEvent(QKeyEvent* event) {
    const QString t = event->text();
    const bool separator = t == QLatin1String("/") || t == QLatin1String(".") ||
                           t == QLatin1String("-") || t == QLatin1String(" ");
    if (separator && m_advanced) {
        m_advanced = false; // the section already moved on by itself
        return;
    }
    m_typed = true;
    const int before = currentSectionIndex();
    QDateEdit::keyPressEvent(event);
    m_advanced = !t.isEmpty() && t.at(0).isDigit() && currentSectionIndex() != before;
}
