#pragma once

#include "CashCount.h"

#include <QDialog>

class AppContext;
class QComboBox;
class QLabel;
class QLineEdit;
class QTreeWidget;

// The same comparison as the cash count for the open day, at any moment. What is counted here
// stays on the screen: nothing is stored.
class frmLancaTemp : public QDialog {
    Q_OBJECT
public:
    frmLancaTemp(AppContext& ctx, const clsMovimento& mov, QWidget* parent = nullptr);

private:
    void recalcular();
    void adicionar(); // Command5
    void excluir();   // mnudel

    struct Line {
        QString especie;
        QString numero;
        Money valor;
    };

    AppContext& m_ctx;
    clsMovimento m_mov;
    QList<Line> m_lines;

    QLineEdit* m_arrecadacao; // txtarrecadacao
    QLineEdit* m_sangria;     // txtsangria
    QLineEdit* m_suprimento;  // txtsuprimento
    QLineEdit* m_total;       // txttotal
    QLineEdit* m_saldo;       // txtsaldo
    QTreeWidget* m_lista;     // List1
    QLabel* m_status;         // lblStatus
    QComboBox* m_especie;     // Combo1
    QLineEdit* m_numero;      // txtnumero
    QLineEdit* m_valor;       // mskvalor
};
