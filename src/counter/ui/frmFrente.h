#pragma once

#include "CounterLayout.h"
#include "CounterSession.h"

#include <QMainWindow>

class AppContext;
class AuthCounterPrinter;
class CounterKeys;
class CounterStamps;
class EntryReader;
class PrinterWorker;
class QLayout;
class QTimer;
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
    void setScannerEnterWindow(int ms);
    // The longest pause between a scanner's characters (50 ms). A code whose characters came
    // further apart was typed by hand: it is read on Enter, not at its 44th character.
    void setScannerKeyGap(int ms);
    // The printer's own thread, for the document prompt, its messages and the stamps left out.
    void setPrinter(PrinterWorker* worker, AuthCounterPrinter* printer);

    // The ribbon's strip, under the counter.
    void placeRibbon(QLayout* strip);
    // After another screen closed: kinds, settings and figures may have changed.
    void afterScreen();
    // After a screen that changed nothing of the counter: the keyboard back to the code field.
    void backToEntry();
    bool consulta() const { return m_consulta; }
    CounterSession& session() { return m_session; }

signals:
    void logoff(); // back to the date screen

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    friend class CounterCommands; // the menus' entries run the counter's acts
    void startTimers();
    void startKeys();
    void refreshList();
    void refreshLancados();
    void refreshStatus();
    void refreshNetwork(); // lblStatusRede and the central's messages
    void refreshDayTotals();
    void forgetChange(); // the last customer's change leaves the screen
    void statusLine(const QString& text);

    void showRead(const CounterSession::ReadResult& r, bool typedLine);
    void replayKey(int key, const QString& text); // a key the scan buffer kept
    void kindKey();                               // "+": the kind of a typed item
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
    void typedLine();
    void avulso();
    void calculadora();
    bool fillKinds();
    void showKinds(const GuideKinds& kinds, bool selectFirst);

    CounterSession& m_session;
    AppContext& m_ctx;
    bool m_consulta;
    CounterLayout m_ui;
    CounterKeys* m_keys = nullptr;
    CounterStamps* m_stamps = nullptr;
    EntryReader* m_reader = nullptr;
    bool m_recording = false; // a payment is being recorded: keys wait
    ScanBuffer* m_scans = nullptr;
    bool m_kindsAreEntry = true;
    QString m_lastChange;        // the last customer's change, shown until the next customer begins
    bool m_redeAtrasada = false; // the outbox holds codes the central should have by now
    QTimer* m_statusTimer = nullptr;
};
