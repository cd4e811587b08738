#pragma once

#include "CashCount.h"
#include "CountPanel.h"

#include <QDate>
#include <QDialog>
#include <memory>

class AppContext;
class QDateEdit;
class QLabel;
class QLayout;
class QLineEdit;
class QProgressBar;
class QPushButton;

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
    QLayout* buildTop(const QDate& dia);
    QLayout* buildBottom();
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

    QLineEdit* m_id;   // txtid_tabela
    QDateEdit* m_data; // dtpData
    QLabel* m_mov;     // lblMov
    QLabel* m_lblDia;  // lblDia
    CountPanel* m_panel;
    QProgressBar* m_pbr;   // pbr
    QPushButton* m_gerar;  // Command1
    QPushButton* m_fechar; // cmdFechar
};
