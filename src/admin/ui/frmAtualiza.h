#pragma once

#include <QDialog>
#include <functional>

class AppContext;
class QLineEdit;

// The folder where new versions are published ([Opcoes] Atualiza, kept with a trailing
// separator).
class frmAtualiza : public QDialog {
    Q_OBJECT
public:
    explicit frmAtualiza(AppContext& ctx, QWidget* parent = nullptr);

    // How the folder is chosen ("Procura destino..."); replaced by the tests.
    std::function<QString(QWidget* parent, const QString& title, const QString& start)>
        chooseFolder;

private:
    void gravar();

    AppContext& m_ctx;
    QLineEdit* m_caminho; // txtCaminho
};
