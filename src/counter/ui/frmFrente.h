#pragma once

#include "CounterSession.h"

#include <QElapsedTimer>
#include <QMainWindow>
#include <functional>
#include <memory>

class AppContext;
class QComboBox;
class QDialog;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;

// The counter screen: the cashier's whole day. A thin view over CounterSession: it reads keys,
// hands entries to the session and redraws.
class frmFrente : public QMainWindow {
    Q_OBJECT
public:
    frmFrente(CounterSession& session, bool consulta, QWidget* parent = nullptr);

    void refreshAll();
    // How long after a code an Enter is taken as the scanner's own (150 ms).
    void setScannerEnterWindow(int ms) { m_scannerEnterMs = ms; }

signals:
    void logoff();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void buildUi();
    void buildMenus();
    QWidget* buildKeyBar();
    void refreshList();
    void refreshLancados();
    void refreshStatus();
    void tick();

    bool handleKey(int key);
    void onEntryChanged(const QString& text);
    void Leitura_codigo_barras();
    CounterSession::ReadResult settle(CounterSession::ReadResult r);
    void showRead(const CounterSession::ReadResult& r);
    void enter();
    void tender();
    void addTypedItem();
    void removeLast();
    void removeByNumber();
    void limparSoma();
    void limparIdentificacao();
    void encerrar();
    void reabrir();
    void typedLine();
    void avulso();
    void juros();
    void calculadora();
    void feriados();
    // An administration screen; with a guard title, only after the administrator's password.
    void openAdmin(const QString& guardTitle,
                   const std::function<std::unique_ptr<QDialog>()>& make);
    bool fillKinds();

    CounterSession& m_session;
    AppContext& m_ctx;
    bool m_consulta;
    QElapsedTimer m_lastScan;
    int m_scannerEnterMs = 150;

    QLineEdit* m_entry = nullptr;     // txtValorCodBarra
    QComboBox* m_kinds = nullptr;     // cmbTipoGuia
    QLineEdit* m_valor = nullptr;     // mskvalor
    QTreeWidget* m_soma = nullptr;    // lstSoma
    QTreeWidget* m_lancado = nullptr; // lstLancado
    QLabel* m_lancadoTitle = nullptr;
    QLabel* m_total = nullptr;  // lbltotalConta
    QLabel* m_troco = nullptr;  // lblTroco
    QLabel* m_status = nullptr; // lblStatus
    QLabel* m_rede = nullptr;   // lblStatusRede
    QLabel* m_user = nullptr;   // lbluser
    QLabel* m_dia = nullptr;    // lblDia
    QLabel* m_hora = nullptr;   // lblHora
};
