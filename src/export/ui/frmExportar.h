#pragma once

#include "BankExport.h"
#include "ExportMarks.h"

#include <QDate>
#include <QDialog>

class AppContext;
class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QTreeWidget;

// The bank files of a movement: the kind of file and of guide, the receipts that go to the
// file (confirmed) and those kept out (rejected), each list storing its check marks, and the
// export itself.
class frmExportar : public QDialog {
    Q_OBJECT
public:
    frmExportar(AppContext& ctx, qint32 idMovimento, const QDate& movimento,
                QWidget* parent = nullptr);

protected:
    void reject() override; // not while a file is being written

private:
    void buildUi();
    QWidget* listPanel(QTreeWidget*& list, const char* name, const QString& heading,
                       QPushButton* button);
    QPushButton* button(const char* name, const QString& text, void (frmExportar::*slot)());
    BankExport::Arquivo arquivo() const;
    int tipo() const;

    void fillTypes();
    void typeChanged();
    void pesquisar();
    void rejeitados();
    void rejeita();
    void desfazRejeicao();
    void exportar();

    void fillList(QTreeWidget* list, ExportMarks::Lista lista);
    void storeMarks(QTreeWidget* list, ExportMarks::Lista lista, const QString& question);
    void setBusy(bool busy);
    void updateTotal();

    AppContext& m_ctx;
    qint32 m_idMovimento;
    QDate m_movimento;
    bool m_busy = false;
    QComboBox* m_sel = nullptr;
    QComboBox* m_tipo = nullptr;
    QLineEdit* m_codBanco = nullptr;
    QTreeWidget* m_confirmados = nullptr;
    QTreeWidget* m_rejeitados = nullptr;
    QProgressBar* m_pbr = nullptr;
    QLabel* m_total = nullptr;
};
