#pragma once

#include "CashCount.h"

#include <QWidget>

class AppContext;
class QAction;
class QComboBox;
class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;
class QTreeWidget;

// The part both cash-count screens share: the day's figures, the line being typed, the counted
// lines and their number. The screen decides what a line is and where it is kept.
class CountPanel : public QWidget {
public:
    CountPanel(AppContext& ctx, QWidget* parent);

    static QString key(qint32 id); // "0000"
    void fillEspecies();
    // The figures as "1.234,56", or as "R$ 1.234,56" with `currency`.
    void showFigures(const CashConference& c, bool currency);
    void clearAll();
    // `id` is shown as the line's code and kept as its data.
    void addLine(qint32 id, const QString& especie, const QString& numero, const Money& valor);
    // After a line was taken: the next one is typed from the amount.
    void lineTaken();
    void valueRefused();

    QComboBox* especie; // Combo1
    QLineEdit* numero;  // txtnumero
    QLineEdit* valor;   // mskvalor
    QPushButton* add;   // Command5
    QTreeWidget* lista; // List1
    QAction* del;       // mnudel
    QLabel* status;     // lblStatus

private:
    QLayout* buildFigures();
    void buildList();
    QLayout* buildLine();

    AppContext& m_ctx;
    QLineEdit* m_arrecadacao; // txtarrecadacao
    QLineEdit* m_sangria;     // txtsangria
    QLineEdit* m_suprimento;  // txtsuprimento
    QLineEdit* m_total;       // txttotal
    QLineEdit* m_saldo;       // txtsaldo
};
