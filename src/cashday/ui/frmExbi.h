#pragma once

#include <QDialog>

class AppContext;
class QLineEdit;
class QPlainTextEdit;

// The reversal and change log read back: every year's file of this counter, newest year first,
// with a search that goes from one occurrence to the next.
class frmExbi : public QDialog {
    Q_OBJECT
public:
    explicit frmExbi(AppContext& ctx, QWidget* parent = nullptr);

    static const QString kCaption; // "Visualizando Estornos e Alterações"

private:
    void carregar();
    void procurar();

    AppContext& m_ctx;
    QPlainTextEdit* m_texto;
    QLineEdit* m_pesquisa;
};
