#pragma once

#include <QObject>
#include <QPointer>
#include <functional>

class AuthCounterPrinter;
class CounterSession;
class PendingStampsDialog;
class PrinterWorker;
class QLabel;
class QWidget;

// The counter's side of the stamps: the printer's banner (the document it waits for, or the
// day's documents it never confirmed), the list of those documents beside the counter, and the
// re-stamps of the Caixa menu. `backToEntry` gives the keyboard back to the code field.
class CounterStamps : public QObject {
public:
    CounterStamps(CounterSession& session, bool consulta, QLabel* banner, QWidget* counter,
                  std::function<void()> backToEntry);
    ~CounterStamps() override;

    // The printer's own thread, for the document prompt, its messages and the stamps left out.
    void setPrinter(PrinterWorker* worker, AuthCounterPrinter* printer);
    // The banner of the day's documents without a stamp, read again.
    void refresh();
    int unstamped() const { return m_semAutenticacao; }
    // The list beside the counter; `activate` gives it the keyboard.
    void showList(bool activate);
    // The list's window while it is open, null otherwise.
    QWidget* list() const;
    void reautenticarUltimo();
    void reautenticarNumero();

private:
    void line(const QString& text, bool waiting);

    CounterSession& m_session;
    bool m_consulta;
    QLabel* m_banner; // lblImpressora
    QWidget* m_counter;
    std::function<void()> m_backToEntry;
    AuthCounterPrinter* m_authPrinter = nullptr;
    QPointer<PendingStampsDialog> m_pendentes; // the day's documents without a stamp
    int m_semAutenticacao = 0;
};
