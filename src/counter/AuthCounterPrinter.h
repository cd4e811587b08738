#pragma once

#include "CounterPrinter.h"
#include "PrinterService.h"

#include <QList>
#include <QStringList>
#include <functional>
#include <memory>
#include <utility>

class AppContext;
class PrinterWorker;

// The counter's printing on the authenticating printer: lines composed by clsAutenticadora to
// 40 columns, stamps and tape lines through ImprimeAutenticadora. Each operation is one block
// for the printer (a customer's documents and coupon, an opening, a closing): a printer found
// down is tried again at the start of the next block. The lines are composed here, on the
// caller's thread; the printing runs there too, or on the printer's own thread when one is given.
class AuthCounterPrinter : public CounterPrinter {
public:
    AuthCounterPrinter(AppContext& ctx, PrinterService& printer);
    AuthCounterPrinter(AppContext& ctx, PrinterWorker& worker);

    bool aberturaMovimento(const clsMovimento& mov) override;
    bool encerramento(const clsMovimento& mov) override;
    bool reabertura(const clsMovimento& mov) override;
    bool documentos(const QList<RecordedReceipt>& rows,
                    std::optional<PrinterMessage>* problem = nullptr) override;
    // How long a payment waits for the printer to say whether it can stamp (its thread may
    // still be busy with the previous customer); after that, the printer tells by itself.
    int esperaInicioMs = 5000;
    bool cupom(const QList<RecordedReceipt>& rows, const QString& totalPago,
               const QString& troco) override;
    Fita linhaFita(const QString& linha) override;

    // The "txt" model has no authenticating printer: its coupon goes to the ordinary printer
    // (the screens set this) or, without one, to a text file in Cupons/.
    std::function<bool(const QStringList& lines)> textCoupon;
    // After each block of documents, once the confirmed stamps are kept in the database: the
    // authentication numbers stamped and those left without a stamp. Called on the caller's
    // thread.
    std::function<void(const QList<int>& autenticados, const QList<int>& semAutenticacao)>
        autenticados;

private:
    struct Step {
        PrinterOperation op = PrinterOperation::Nenhuma;
        QString text;
        int documento = 0;   // the authentication number a stamp belongs to
        qint32 idrecebe = 0; // and its receipt
    };
    // Stamps confirmed and missed: (authentication number, receipt id).
    struct Stamps {
        QList<std::pair<int, qint32>> stamped, missed;
    };
    struct BlockStart;
    void run(QList<Step> steps, bool newBlock, std::optional<PrinterMessage>* problem = nullptr);
    std::optional<PrinterMessage> awaitStart(const std::shared_ptr<BlockStart>& start) const;
    void reportStamps(const Stamps& o);
    static QList<Step> tape(const QString& lines);
    bool couponFile(const QStringList& lines);
    QString guiche() const;
    QString mensagem() const;

    AppContext& m_ctx;
    PrinterService* m_printer = nullptr;
    PrinterWorker* m_worker = nullptr;
};
