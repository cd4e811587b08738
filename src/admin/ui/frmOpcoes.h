#pragma once

#include <QDialog>
#include <QHash>
#include <functional>

class AppContext;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QRadioButton;
class QTabWidget;

// The options: every setting of Config.ini the town hall sets, in tabs. "Gravar" saves them all
// through Options (its checks, one replacement of the file, the settings loaded again).
class frmOpcoes : public QDialog {
    Q_OBJECT
public:
    explicit frmOpcoes(AppContext& ctx, QWidget* parent = nullptr);

    // The installed printers offered by the two "Fixa" buttons (the system's list by default).
    void setInstalledPrinters(const QStringList& names);
    // How folders and files are chosen ("Procura destino..."); replaced by the tests.
    std::function<QString(QWidget* parent, const QString& title, const QString& start)>
        chooseFolder;
    std::function<QString(QWidget* parent, const QString& title, const QString& start)> chooseFile;

private:
    QWidget* buildDiretorios();
    QWidget* buildParametros();
    QWidget* buildMensagem();
    QWidget* buildContabil();
    QWidget* buildImpressao();
    QGroupBox* buildModelos();                            // the authenticating printer's model
    int addSwitches(QGridLayout* grid, int row);          // answers the next free row
    int addInstalledPrinters(QGridLayout* grid, int row); // the two "Fixa" choices; next row
    void addPrintingHelp(QGridLayout* grid, int row);
    QLineEdit* pathRow(QGridLayout* grid, int row, const char* name, const QString& caption,
                       const char* button, bool folder);
    QLineEdit* edit(const char* name, const QString& section, const QString& key);
    QCheckBox* check(const char* name, const QString& caption, const QString& section,
                     const QString& key);
    void load();
    void gravar();
    void reveal(QWidget* w);

    AppContext& m_ctx;
    QString m_headerSwitch;              // [Print] cabecalho as it was read
    QHash<QString, QWidget*> m_controls; // "section/key" (lower case) -> its control
    QTabWidget* m_tabs = nullptr;
    QRadioButton* m_optDesc = nullptr;
    QRadioButton* m_optMulta = nullptr;
    QRadioButton* m_models[3] = {};
    QComboBox* m_porta = nullptr;
    QComboBox* m_impressoras = nullptr;
    QLabel* m_impressora = nullptr;
    QLabel* m_autenticadora = nullptr;
};
