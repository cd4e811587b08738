#pragma once

#include "CashCount.h"

#include <QDate>
#include <QDialog>
#include <memory>

class AppContext;
class QAction;
class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QTreeWidget;

// The cash count of a day: the day's figures, the count by kind of money, the difference, and
// the integration file.
class frmLancamentos : public QDialog {
    Q_OBJECT
public:
    frmLancamentos(AppContext& ctx, const QDate& dia, QWidget* parent = nullptr);

    bool loaded() const { return m_count != nullptr; }
    // The pause between records of the integration file ([Export] pausa_integracao).
    void setPausa(int ms) { m_pausa = ms; }

    void reject() override; // not while the file is being written

private:
    void abrir(const QDate& dia);
    void Lista_conf_caixa();
    void adicionar(); // Command5
    void excluir();   // mnudel
    void gerar();     // Command1

    AppContext& m_ctx;
    std::unique_ptr<CashCount> m_count;
    QDate m_dia; // the day on screen
    CashConference m_conf;
    int m_pausa;
    bool m_busy = false;

    QLineEdit* m_id;          // txtid_tabela
    QDateEdit* m_data;        // dtpData
    QLabel* m_mov;            // lblMov
    QLabel* m_lblDia;         // lblDia
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
    QPushButton* m_incluir;   // Command5
    QAction* m_excluir;       // mnudel
    QProgressBar* m_pbr;      // pbr
    QPushButton* m_gerar;     // Command1
};
