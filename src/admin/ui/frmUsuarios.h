#pragma once

#include "RegistryScreen.h"
#include "UserAccounts.h"

class QCheckBox;
class QComboBox;
class QLineEdit;

// "Cadastro de Usuários": the operators in "Consulta", one operator in "Cadastro". A stored
// password is never shown; left empty on an edit it stays as it is.
class frmUsuarios : public RegistryScreen {
    Q_OBJECT
public:
    explicit frmUsuarios(AppContext& ctx, QWidget* parent = nullptr);

    void Lista_users();

    static const QString kAutNum; // "Aut.Num."

private:
    QWidget* buildForm();
    void editar() override;
    void novo() override;
    void gravar() override;
    void excluir() override;
    bool refused(const UserAccounts::Result& r);

    QLineEdit* m_ordem = nullptr; // txtordem
    QLineEdit* m_nome = nullptr;  // txtnome
    QLineEdit* m_senha = nullptr; // txtsenha
    QComboBox* m_tipo = nullptr;  // Combo
    QCheckBox* m_ativo = nullptr; // Check
};
