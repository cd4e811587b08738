#pragma once

#include "ReceiptStamps.h"

#include <QDialog>
#include <functional>

class CounterSession;
class DialogPort;
class QTreeWidget;

// The day's documents that the printer never confirmed as stamped (the printer was off, or the
// program stopped before the stamps), listed in order and stamped in that order when the
// printer is back. Reached from Caixa and shown at the start when there are any.
class PendingStampsDialog : public QDialog {
    Q_OBJECT
public:
    PendingStampsDialog(CounterSession& session, QWidget* parent = nullptr);
    // Reads the list again; false when there is none left.
    bool refresh();
    int count() const;

    // A re-stamp as the counter runs it: the outcome shown once decided, and when a document
    // was stamped already, the question first (the safe answer, "Não", sends only the others).
    static void conduzir(DialogPort& dialogs,
                         const std::function<ReceiptStamps::Outcome(ReceiptStamps::Repetir)>& act);

private:
    void autenticar();

    CounterSession& m_session;
    QTreeWidget* m_list = nullptr; // lstPendentes
};
