#pragma once

#include "DateScreenLogic.h"

#include <QDialog>

class AppContext;
class QDateEdit;
class QLineEdit;
class QPushButton;

// The date screen: the operator's password and the date of the cash day to consult or open.
class frmData : public QDialog {
    Q_OBJECT
public:
    explicit frmData(AppContext& ctx, QWidget* parent = nullptr);

signals:
    // The operator is logged in and ctx.workingDate is set.
    void prosseguir(DateScreenLogic::Action action);

private:
    void act(DateScreenLogic::Action action);

    AppContext& m_ctx;
    QLineEdit* m_senha;
    QDateEdit* m_data;
    QPushButton* m_consultar;
    QPushButton* m_abrir;
};
