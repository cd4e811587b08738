#pragma once

#include "ReceiptCorrections.h"

#include <QDialog>

class AppContext;
class CounterPrinter;
class QTreeWidget;

// The open day's reversals not undone yet; the one selected comes back as the receipt it was.
class ReversalUndoDialog : public QDialog {
    Q_OBJECT
public:
    ReversalUndoDialog(AppContext& ctx, CounterPrinter* printer, QWidget* parent = nullptr);

    // The administrator guard (titled `title`), then the list. True when a reversal was undone.
    static bool abrir(AppContext& ctx, CounterPrinter* printer, const QString& title,
                      QWidget* parent);
    bool reverteu() const { return m_reverteu; }

private:
    void carregar();
    void reverter();

    AppContext& m_ctx;
    ReceiptCorrections m_corrections;
    QTreeWidget* m_lista;
    bool m_reverteu = false;
};
