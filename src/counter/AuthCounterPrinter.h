#pragma once

#include "CounterPrinter.h"

class AppContext;
class PrinterService;

// The counter's printing on the authenticating printer: lines composed by clsAutenticadora to
// 40 columns, stamps ("1") and tape lines ("2") through ImprimeAutenticadora.
class AuthCounterPrinter : public CounterPrinter {
public:
    AuthCounterPrinter(AppContext& ctx, PrinterService& printer) : m_ctx(ctx), m_printer(printer) {}

    bool aberturaMovimento(const clsMovimento& mov) override;
    bool encerramento(const clsMovimento& mov) override;
    bool reabertura(const clsMovimento& mov) override;
    bool documentos(const QList<RecordedReceipt>& rows) override;
    bool cupom(const QList<RecordedReceipt>& rows, const QString& totalPago, const QString& troco) override;

private:
    void tape(const QString& lines);
    QString guiche() const;
    QString mensagem() const;

    AppContext& m_ctx;
    PrinterService& m_printer;
};
