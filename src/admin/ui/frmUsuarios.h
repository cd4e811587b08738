#pragma once

#include "UserAccounts.h"

#include <QDialog>

class AppContext;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QTabWidget;
class QTreeWidget;

// "Cadastro de Usuários": the operators in "Consulta", one operator in "Cadastro". A stored
// password is never shown; left empty on an edit it stays as it is.
class frmUsuarios : public QDialog {
    Q_OBJECT
public:
    explicit frmUsuarios(AppContext& ctx, QWidget* parent = nullptr);

    void Lista_users();

    static const QString kAutNum;              // "Aut.Num."
    static const QString kUltimoAdministrador; // the warning before deleting the last one

private:
    QWidget* buildList();
    QWidget* buildForm();
    void editar();
    void novo();
    void gravar();
    void excluir();
    bool refused(const UserAccounts::Result& r);

    AppContext& m_ctx;
    QTabWidget* m_tabs = nullptr;  // SSTab1
    QTreeWidget* m_list = nullptr; // ListView1
    QLineEdit* m_ordem = nullptr;  // txtordem
    QLineEdit* m_nome = nullptr;   // txtnome
    QLineEdit* m_senha = nullptr;  // txtsenha
    QComboBox* m_tipo = nullptr;   // Combo
    QCheckBox* m_ativo = nullptr;  // Check
};
