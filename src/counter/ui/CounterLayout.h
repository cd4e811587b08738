#pragma once

#include "GuideKind.h"
#include "LancadosModel.h"

class CustomerList;
class Money;
class QComboBox;
class QDate;
class QDateTime;
class QLabel;
class QLayout;
class QLineEdit;
class QMainWindow;
class QPushButton;
class QStackedWidget;
class QTreeView;
class QTreeWidget;
class QVBoxLayout;
class QWidget;

// The counter's widgets, built into its window with the system's names, and how they show the
// customer's list, the day and the clock. The counter decides; this only draws.
class CounterLayout {
public:
    CounterLayout(QMainWindow* window, LancadosModel::Loader lancados);

    // The customer's items and total, or what to do while there are none; `troco` under them.
    void showList(const CustomerList& list, const QString& troco);
    void showDayTotals(qint64 count, const Money& total);
    void showClock(const QDateTime& now, const QDate& workingDate);
    // The kinds in cmbTipoGuia, `current` selected (-1: none).
    void showKinds(const GuideKinds& kinds, int current);
    // The ribbon's strip, under everything else.
    void placeRibbon(QLayout* strip);

    QLineEdit* entry = nullptr; // txtValorCodBarra
    QComboBox* kinds = nullptr; // cmbTipoGuia
    QLineEdit* valor = nullptr; // mskvalor
    QPushButton* ldg = nullptr; // cmdLdg
    QPushButton* avulso = nullptr;
    QStackedWidget* somaStack = nullptr;
    QTreeWidget* soma = nullptr;  // lstSoma
    QTreeView* lancado = nullptr; // lstLancado
    LancadosModel* lancadoModel = nullptr;
    QLabel* lancadoTitle = nullptr;
    QLabel* dayTotals = nullptr;  // lblTotalDia
    QLabel* total = nullptr;      // lbltotalConta
    QLabel* troco = nullptr;      // lblTroco
    QLabel* status = nullptr;     // lblStatus
    QLabel* rede = nullptr;       // lblStatusRede
    QLabel* user = nullptr;       // lbluser
    QLabel* dia = nullptr;        // lblDia
    QLabel* hora = nullptr;       // lblHora
    QLabel* dataCaixa = nullptr;  // lblDataCaixa
    QLabel* impressora = nullptr; // lblImpressora

private:
    void buildBanner(QWidget* central);
    QLayout* buildEntryRows(QWidget* central);
    QWidget* buildSoma(QWidget* central);
    QLayout* buildTotals(QWidget* central);
    QWidget* buildLancados(QWidget* parent, LancadosModel::Loader lancados);
    QWidget* buildTopBar(QWidget* parent);

    QVBoxLayout* m_layout = nullptr;
};
