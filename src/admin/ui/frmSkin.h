#pragma once

#include <QDialog>
#include <functional>

class AppContext;
class QComboBox;
class QLineEdit;

// The look of the program: one of the skins that ship or a style sheet file of the town hall's
// own, stored in [Skin] nome and applied at once.
class frmSkin : public QDialog {
    Q_OBJECT
public:
    explicit frmSkin(AppContext& ctx, QWidget* parent = nullptr);

    // How the file is chosen; replaced by the tests.
    std::function<QString(QWidget* parent, const QString& start)> chooseFile;

private:
    void gravar();

    AppContext& m_ctx;
    QLineEdit* m_path;    // Text1
    QComboBox* m_shipped; // cmbSkins
};
