#pragma once

#include "OneOffItem.h"

#include <QDialog>

class AppContext;
class QComboBox;
class QDateEdit;
class QLineEdit;

// A one-off item without barcode: kind, value, due date, instalment and note.
class frmAvulso : public QDialog {
    Q_OBJECT
public:
    explicit frmAvulso(AppContext& ctx, QWidget* parent = nullptr);
    OneOffItem item() const { return m_item; }

private:
    void ok();

    AppContext& m_ctx;
    QComboBox* m_tipo;
    QLineEdit* m_valor;
    QDateEdit* m_vencimento;
    QLineEdit* m_parcela;
    QLineEdit* m_obs;
    OneOffItem m_item;
};
