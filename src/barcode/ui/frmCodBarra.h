#pragma once

#include "KindRegistry.h"

#include <QDialog>

class AppContext;
class QComboBox;
class QLineEdit;
class QPushButton;
class QTabWidget;
class QTreeWidget;
class QWidget;

// The kinds of guide and item: the list ("000" codes), edit and new in the form tab, delete from
// the menu. The rules of a save are KindRegistry's; the screen words the refusals.
class frmCodBarra : public QDialog {
    Q_OBJECT
public:
    explicit frmCodBarra(AppContext& ctx, QWidget* parent = nullptr);

    void Lista_codigos();

private:
    QWidget* buildList();
    QWidget* buildForm();
    void editar();
    void novo();
    void gravar();
    void excluir();
    void limpar();
    QWidget* widgetFor(KindRegistry::Field field) const;

    AppContext& m_ctx;
    KindRegistry::Mode m_mode = KindRegistry::Mode::Insert;
    QTabWidget* m_tabs = nullptr;     // SSTab1
    QTreeWidget* m_list = nullptr;    // ListView1
    QLineEdit* m_ordem = nullptr;     // txtordem
    QLineEdit* m_tipo = nullptr;      // txtTipo
    QLineEdit* m_descricao = nullptr; // txtdescricao
    QComboBox* m_padrao = nullptr;    // cmbPadrao
    QComboBox* m_juros = nullptr;     // cmbJuros
    QComboBox* m_bloqueio = nullptr;  // cmbBloqueio
    QLineEdit* m_codbanco = nullptr;  // txtcodbanco
};
