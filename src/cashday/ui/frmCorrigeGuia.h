#pragma once

#include "ReceiptCorrections.h"

#include <QDialog>

class AppContext;
class CounterPrinter;
class QComboBox;
class QLayout;
class QLineEdit;
class QTreeWidget;

// Corrections of the day's receipts: the list newest first, a search by authentication number,
// the selected receipt's fields, and the change and the reversal, each with its reason.
class frmCorrigeGuia : public QDialog {
    Q_OBJECT
public:
    frmCorrigeGuia(AppContext& ctx, CounterPrinter* printer, QWidget* parent = nullptr);

    // The administrator guard (an input box titled `title`), then the screen. True when a
    // receipt was changed or reversed.
    static bool abrir(AppContext& ctx, CounterPrinter* printer, const QString& title,
                      QWidget* parent);
    bool corrigiu() const { return m_corrigiu; }

private:
    QLayout* buildSearch();
    QLayout* buildForm();
    QLayout* buildButtons();
    void Lista_Movimento_dia(std::optional<qint32> autentica = {});
    void procurar();
    void selecionar();
    void alterar();
    void estornar();
    void limpar();

    AppContext& m_ctx;
    ReceiptCorrections m_corrections;
    std::optional<clsRecebimentos::Corrigivel> m_selecionado;
    bool m_corrigiu = false;

    QTreeWidget* m_lista;     // ListView1
    QLineEdit* m_pesquisa;    // txtpesquisa
    QLineEdit* m_ordem;       // txtordem
    QLineEdit* m_aut;         // txtaut
    QComboBox* m_orgao;       // cmbOrgao
    QLineEdit* m_barra;       // txtbarra
    QLineEdit* m_valor;       // mskvalor
    QLineEdit* m_valorAntigo; // txtvalorantigo
    QLineEdit* m_tipoAntigo;  // txttipoantigo
    QLineEdit* m_motivo;      // txtmotivo
};
