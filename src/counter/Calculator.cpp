#include "Calculator.h"

#include "Money.h"

#include <cmath>

double Calculator::current() const {
    if (m_entry.isEmpty())
        return m_acc;
    QString t = m_entry;
    return t.replace(QLatin1Char(','), QLatin1Char('.')).toDouble();
}

void Calculator::apply() {
    const double v = current();
    if (m_op.isNull())
        m_acc = v;
    else if (m_op == QLatin1Char('+'))
        m_acc += v;
    else if (m_op == QLatin1Char('-'))
        m_acc -= v;
    else if (m_op == QLatin1Char('*'))
        m_acc *= v;
    else if (m_op == QLatin1Char('/')) {
        if (v == 0) {
            m_error = true;
            return;
        }
        m_acc /= v;
    }
    m_entry.clear();
}

void Calculator::key(QChar c) {
    if (c == QLatin1Char('C')) {
        *this = Calculator();
        return;
    }
    if (m_error)
        return;
    if (c.isDigit()) {
        if (m_entry.size() < 15)
            m_entry += c;
    } else if (c == QLatin1Char(',')) {
        if (!m_entry.contains(QLatin1Char(',')))
            m_entry += m_entry.isEmpty() ? QStringLiteral("0,") : QStringLiteral(",");
    } else if (c == QLatin1Char('\b')) {
        m_entry.chop(1);
    } else if (QStringLiteral("+-*/").contains(c)) {
        if (!m_entry.isEmpty() || m_op.isNull())
            apply();
        m_op = c;
    } else if (c == QLatin1Char('=')) {
        apply();
        m_op = QChar();
    }
}

QString Calculator::display() const {
    if (m_error)
        return QStringLiteral("Erro: divisão por zero");
    return m_entry.isEmpty() ? result() : m_entry;
}

QString Calculator::result() const {
    return Money::fromDoubleRounded(m_acc).format();
}
