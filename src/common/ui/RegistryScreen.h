#pragma once

#include <QDialog>

class AppContext;
class QTabWidget;
class QTreeWidget;
class QTreeWidgetItem;

// A registry screen: the records in "Consulta" (ListView1, with Alterar, Novo and Excluir under
// it), one record in "Cadastro", and Excluir again in the menu. The subclass builds the form's
// fields and says what editing, saving and deleting do.
class RegistryScreen : public QDialog {
    Q_OBJECT
protected:
    RegistryScreen(AppContext& ctx, QWidget* parent);

    struct Layout {
        QString menu;        // the menu that holds Excluir
        QStringList columns; // of the list
        const char* editar;  // objectName of the Alterar button
        const char* novo;    // objectName of the Novo button
        QString gravar;      // caption of the save button (Command2)
    };
    // Builds the tabs around `fields` (the form's own widgets), the list and the buttons.
    void build(const Layout& layout, QWidget* fields);

    virtual void editar() = 0;
    virtual void novo() = 0;
    virtual void gravar() = 0;
    virtual void excluir() = 0;
    virtual void cancelar(); // back to the list

    // The list's current row, else "Informe um item !!!" and null.
    QTreeWidgetItem* selecionado();
    // "<first column> - Confirma exclusão deste item?"
    bool confirmaExclusao(const QTreeWidgetItem* item);

    AppContext& m_ctx;
    QTabWidget* m_tabs = nullptr;  // SSTab1
    QTreeWidget* m_list = nullptr; // ListView1
};
