#pragma once

#include <QDialog>

class AppContext;
class QDateEdit;
class QTreeWidget;

// The holiday calendar: list, record one date, delete one or all.
class frmFeriados : public QDialog {
    Q_OBJECT
public:
    explicit frmFeriados(AppContext& ctx, QWidget* parent = nullptr);

private:
    void reload();
    void gravar();
    void excluir();
    void limpar();

    AppContext& m_ctx;
    QTreeWidget* m_list;
    QDateEdit* m_data;
};
