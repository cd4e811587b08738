#pragma once

#include "CashEntry.h"

#include <QDialog>
#include <optional>

class AppContext;
class QAction;
class QComboBox;
class QDateEdit;
class QGridLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTabWidget;
class QTreeWidget;

// Cash entries of the movement in one of three modes: "A" money put into the till (opening
// float and other entries), "P" payments out, "S" withdrawals to the safe. An entry is stored
// as soon as its items begin; each item rewrites its amount.
class frmSangria : public QDialog {
    Q_OBJECT
public:
    frmSangria(AppContext& ctx, qint32 idMovimento, EntryKind kind, QWidget* parent = nullptr);

    // The mode letters the counter opens the screen with.
    static std::optional<EntryKind> kindForMode(const QString& modo);

    void reject() override; // leaving: an entry still at zero is deleted

private:
    void buildEntryTab(QWidget* tab);
    QGridLayout* buildEntryHeader(QWidget* tab); // code, date, kind, description, value
    void buildItemFrame(QWidget* tab);           // the entry's items: fields, buttons, list
    void buildListTab(QWidget* tab);
    void Lista_Sangria();
    void fillEspecies();
    void showItems();
    void resetEntry();
    void focusFirstEmptyRequired();

    void incluirItens();      // cmdIncluirItens
    void novoItem();          // cmdAdd
    void salvarItem();        // cmdSave
    void excluirItem();       // cmdDel
    void concluir();          // Command1
    void excluirLancamento(); // mnuexcluir

    AppContext& m_ctx;
    qint32 m_idMovimento;
    CashEntry m_entry;

    QTabWidget* m_tabs = nullptr;     // SSTab1
    QLineEdit* m_ordem = nullptr;     // txtordem
    QDateEdit* m_data = nullptr;      // dtpData
    QComboBox* m_tipo = nullptr;      // cmbTipo
    QLineEdit* m_descricao = nullptr; // txtdescricao
    QLineEdit* m_valor = nullptr;     // txtvalor
    QPushButton* m_incluir = nullptr; // cmdIncluirItens
    QGroupBox* m_itemFrame = nullptr; // fraItens
    QComboBox* m_especie = nullptr;   // cmbEspecie
    QLineEdit* m_numero = nullptr;    // txtnumero
    QLineEdit* m_valorItem = nullptr; // mskValorItem
    QPushButton* m_save = nullptr;    // cmdSave
    QTreeWidget* m_itens = nullptr;   // lstitens
    QLineEdit* m_pesquisa = nullptr;  // txtpesquisa
    QTreeWidget* m_lista = nullptr;   // ListView1
    QLabel* m_soma = nullptr;         // lblSoma
    QAction* m_excluir = nullptr;     // mnuexcluir
};
