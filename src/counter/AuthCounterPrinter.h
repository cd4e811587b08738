#pragma once

#include "CounterPrinter.h"

#include <QStringList>
#include <functional>

class AppContext;
class PrinterService;

// The counter's printing on the authenticating printer: lines composed by clsAutenticadora to
// 40 columns, stamps and tape lines through ImprimeAutenticadora.
class AuthCounterPrinter : public CounterPrinter {
public:
    AuthCounterPrinter(AppContext& ctx, PrinterService& printer) : m_ctx(ctx), m_printer(printer) {}

    bool aberturaMovimento(const clsMovimento& mov) override;
    bool encerramento(const clsMovimento& mov) override;
    bool reabertura(const clsMovimento& mov) override;
    bool documentos(const QList<RecordedReceipt>& rows) override;
    bool cupom(const QList<RecordedReceipt>& rows, const QString& totalPago,
               const QString& troco) override;
    Fita linhaFita(const QString& linha) override;

    // The "txt" model has no authenticating printer: its coupon goes to the ordinary printer
    // (the screens set this) or, without one, to a text file in Cupons/.
    std::function<bool(const QStringList& lines)> textCoupon;

private:
    void tape(const QString& lines);
    bool couponFile(const QStringList& lines);
    QString guiche() const;
    QString mensagem() const;

    AppContext& m_ctx;
    PrinterService& m_printer;
};
