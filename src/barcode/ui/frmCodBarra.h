#pragma once

#include "KindRegistry.h"
#include "RegistryScreen.h"

class QComboBox;
class QLineEdit;

// The kinds of guide and item: the list ("000" codes), edit and new in the form tab, delete from
// the menu. The rules of a save are KindRegistry's; the screen words the refusals.
class frmCodBarra : public RegistryScreen {
    Q_OBJECT
public:
    explicit frmCodBarra(AppContext& ctx, QWidget* parent = nullptr);

    void Lista_codigos();

private:
    QWidget* buildForm();
    void createFields(QWidget* frame);
    void editar() override;
    void novo() override;
    void gravar() override;
    void excluir() override;
    void cancelar() override;
    void limpar();
    QWidget* widgetFor(KindRegistry::Field field) const;

    KindRegistry::Mode m_mode = KindRegistry::Mode::Insert;
    QLineEdit* m_ordem = nullptr;     // txtordem
    QLineEdit* m_tipo = nullptr;      // txtTipo
    QLineEdit* m_descricao = nullptr; // txtdescricao
    QComboBox* m_padrao = nullptr;    // cmbPadrao
    QComboBox* m_juros = nullptr;     // cmbJuros
    QComboBox* m_bloqueio = nullptr;  // cmbBloqueio
    QLineEdit* m_codbanco = nullptr;  // txtcodbanco
};
