#pragma once

#include <QDialog>

class AppContext;
class QDateEdit;
class QFormLayout;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QRadioButton;
class QVBoxLayout;

// "Calcular Juros": charges of any instalment between two dates, by the counter's rules.
class frmJuros : public QDialog {
    Q_OBJECT
public:
    explicit frmJuros(AppContext& ctx, QWidget* parent = nullptr);

private:
    void createInputs();
    QVBoxLayout* buildOptions(); // the three ways of charging, each with its rate
    void createResults();
    QFormLayout* buildForm(QVBoxLayout* options);
    QHBoxLayout* buildButtons();
    void calcular();

    AppContext& m_ctx;
    QDateEdit* m_hoje;
    QDateEdit* m_vencimento;
    QLineEdit* m_prestacao;
    QLineEdit* m_taxa;
    QRadioButton* m_opcoes[3];
    QLabel* m_dias;
    QLabel* m_meses;
    QLabel* m_multa;
    QLabel* m_juros;
    QLabel* m_total;
};
