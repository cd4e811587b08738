#pragma once

#include "Calculator.h"

#include <QDialog>

class QLabel;

// The calculator of F9, driven by the keyboard; Enter sends the result to the counter.
class CalculatorDialog : public QDialog {
    Q_OBJECT
public:
    explicit CalculatorDialog(QWidget* parent = nullptr);

signals:
    void resultado(const QString& valor);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    Calculator m_calc;
    QLabel* m_display;
};
