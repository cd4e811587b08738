#include "CalculatorDialog.h"

#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>

CalculatorDialog::CalculatorDialog(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("CalculatorDialog"));
    setWindowTitle(QStringLiteral("Calculadora"));
    m_display = new QLabel(m_calc.display(), this);
    m_display->setObjectName(QStringLiteral("lblVisor"));
    m_display->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    QFont f = m_display->font();
    f.setPointSize(20);
    m_display->setFont(f);
    m_display->setMinimumWidth(280);
    auto* help =
        new QLabel(QStringLiteral("+ - * /   = calcula   Enter envia   Del limpa   Esc sai"), this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_display);
    layout->addWidget(help);
}

void CalculatorDialog::keyPressEvent(QKeyEvent* event) {
    const int k = event->key();
    if (k == Qt::Key_Escape) {
        reject();
        return;
    }
    if (k == Qt::Key_Return || k == Qt::Key_Enter) {
        m_calc.key(QLatin1Char('='));
        if (!m_calc.error()) {
            emit resultado(m_calc.result());
            accept();
        }
        m_display->setText(m_calc.display());
        return;
    }
    if (k == Qt::Key_Backspace)
        m_calc.key(QLatin1Char('\b'));
    else if (k == Qt::Key_Delete)
        m_calc.key(QLatin1Char('C'));
    else if (k == Qt::Key_Period || k == Qt::Key_Comma)
        m_calc.key(QLatin1Char(','));
    else if (!event->text().isEmpty())
        m_calc.key(event->text().at(0));
    m_display->setText(m_calc.display());
}
