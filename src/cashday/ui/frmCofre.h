#pragma once

#include <QDialog>

class AppContext;
class QLineEdit;
class QRadioButton;

// The safe: its balance, and money put in or taken out.
class frmCofre : public QDialog {
    Q_OBJECT
public:
    frmCofre(AppContext& ctx, qint32 idMovimento, QWidget* parent = nullptr);

private:
    void aplicar(); // Command1

    AppContext& m_ctx;
    qint32 m_idMovimento;
    QLineEdit* m_saldo;      // txtsaldo
    QRadioButton* m_entrada; // optEntrada
    QRadioButton* m_saida;   // optSaida
    QLineEdit* m_valor;      // mskvalor
};
