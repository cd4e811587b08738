#pragma once

#include "CashCount.h"
#include "CountPanel.h"

#include <QDialog>

class AppContext;

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

    CountPanel* m_panel;
};
