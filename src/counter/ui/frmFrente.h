#pragma once

#include "CounterSession.h"
#include "Permissions.h"

#include <QElapsedTimer>
#include <QMainWindow>
#include <QPointer>
#include <QSet>

class AppContext;
class AuthCounterPrinter;
class CommandRegistry;
class LancadosModel;
class PendingStampsDialog;
class PrinterWorker;
class QAction;
class QComboBox;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QLayout;
class QPushButton;
class QStackedWidget;
class QTimer;
class QTreeView;
class QTreeWidget;
class ScanBuffer;

// The counter screen: the cashier's whole day. A thin view over CounterSession: it reads keys,
// hands entries to the session and redraws.
class frmFrente : public QMainWindow {
    Q_OBJECT
public:
    frmFrente(CounterSession& session, bool consulta, QWidget* parent = nullptr);
    ~frmFrente() override;

    // Every receipt and total read again (after cash entries and corrections).
    void refreshAll();
    // How long after a read the keys that follow are taken as the scanner's own (150 ms): an
    // Enter then neither records nor answers a question the read opened.
    void setScannerEnterWindow(int ms) { m_scannerEnterMs = ms; }
    // The longest pause between a scanner's characters (50 ms). A code whose characters came
    // further apart was typed by hand: it is read on Enter, not at its 44th character.
    void setScannerKeyGap(int ms) { m_scannerKeyGapMs = ms; }
    // The printer's own thread, for the document prompt, its messages and the stamps left out.
    void setPrinter(PrinterWorker* worker, AuthCounterPrinter* printer);

    // The counter's own commands (Caixa, Soma and its tools) for the application's menus.
    void registerCommands(CommandRegistry& registry);
    // The ribbon's strip, under the counter.
    void placeRibbon(QLayout* strip);
    // After another screen closed: kinds, settings and figures may have changed.
    void afterScreen();
    bool consulta() const { return m_consulta; }
    CounterSession& session() { return m_session; }

signals:
    void logoff(); // back to the date screen

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void buildUi();
    QWidget* buildTopBar(QWidget* parent);
    QWidget* buildLancados(QWidget* parent);
    QWidget* buildSoma(QWidget* parent); // the customer's list, or what to do while empty
    QAction* action(const char* name) const;
    void refreshList();
    void refreshLancados();
    void refreshStatus();
    void refreshNetwork(); // lblStatusRede and the central's messages
    void refreshDayTotals();
    void forgetChange(); // the last customer's change leaves the screen
    void tick();
    void statusLine(const QString& text);
    void printerLine(const QString& text, bool waiting);

    bool handleKey(QKeyEvent* event);
    bool boxKeepsInput(QObject* watched, QEvent* event);
    void onEntryChanged(const QString& text);
    void Leitura_codigo_barras();
    void read(const QString& text, bool typedLine);
    CounterSession::ReadResult settle(CounterSession::ReadResult r);
    void showRead(const CounterSession::ReadResult& r, bool typedLine);
    void replayKey(int key, const QString& text); // a key the scan buffer kept
    void enter();
    bool tender();
    void record();
    void addTypedItem();
    void removeLast();
    void removeByNumber();
    void limparSoma();
    void limparIdentificacao();
    void carregarSoma();
    void encerrar();
    void reabrir();
    void recebidas();
    void reautenticarUltimo();
    void reautenticarNumero();
    void refreshUnstamped(); // the banner of the day's documents without a stamp
    void pendentes();
    void showPendentes(bool activate);
    void typedLine();
    void avulso();
    void juros();
    void calculadora();
    void feriados();
    bool fillKinds();
    void showKinds(const GuideKinds& kinds, bool selectFirst);

    CounterSession& m_session;
    AppContext& m_ctx;
    bool m_consulta;
    QElapsedTimer m_lastScan;
    int m_scannerEnterMs = 150;
    int m_scannerKeyGapMs = 50;
    QElapsedTimer m_keyClock;
    qint64 m_lastChangeAt = -1;
    bool m_handTyped = false;
    bool m_reading = false;
    bool m_recording = false; // a payment is being recorded: keys wait
    ScanBuffer* m_scans = nullptr;
    bool m_kindsAreEntry = true;
    QString m_lastChange; // the last customer's change, shown until the next customer begins
    AuthCounterPrinter* m_authPrinter = nullptr;
    QPointer<PendingStampsDialog> m_pendentes; // the day's documents without a stamp
    int m_semAutenticacao = 0;

    QLineEdit* m_entry = nullptr; // txtValorCodBarra
    QComboBox* m_kinds = nullptr; // cmbTipoGuia
    QLineEdit* m_valor = nullptr; // mskvalor
    QStackedWidget* m_somaStack = nullptr;
    QTreeWidget* m_soma = nullptr;  // lstSoma
    QTreeView* m_lancado = nullptr; // lstLancado
    LancadosModel* m_lancadoModel = nullptr;
    QLabel* m_lancadoTitle = nullptr;
    QLabel* m_dayTotals = nullptr;  // lblTotalDia
    QLabel* m_total = nullptr;      // lbltotalConta
    QLabel* m_troco = nullptr;      // lblTroco
    QLabel* m_status = nullptr;     // lblStatus
    QLabel* m_rede = nullptr;       // lblStatusRede
    bool m_redeAtrasada = false;    // the outbox holds codes the central should have by now
    QLabel* m_user = nullptr;       // lbluser
    QLabel* m_dia = nullptr;        // lblDia
    QLabel* m_hora = nullptr;       // lblHora
    QLabel* m_dataCaixa = nullptr;  // lblDataCaixa
    QLabel* m_impressora = nullptr; // lblImpressora
    QTimer* m_statusTimer = nullptr;
    QTimer* m_lineWait = nullptr; // 44 quick digits that may be the start of a typed line
};
