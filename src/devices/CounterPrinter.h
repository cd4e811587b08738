#pragma once

#include "PrinterMessage.h"

#include <QList>
#include <QString>
#include <optional>

class clsMovimento;
struct RecordedReceipt;

// What the counter prints on the authenticating printer. The screens and the command line use
// the real printer; tests use a recorder. Each answers false when its lines could not be
// composed (the caller shows "Erro na geração da linha de impressão!!!").
class CounterPrinter {
public:
    // What came of one tape line: printed, no authenticating printer to print it on, or the
    // printer reported a failure.
    enum class Fita { Impressa, SemImpressora, Falhou };

    virtual ~CounterPrinter() = default;
    virtual bool aberturaMovimento(const clsMovimento& mov) = 0;
    virtual bool encerramento(const clsMovimento& mov) = 0;
    virtual bool reabertura(const clsMovimento& mov) = 0;
    // Stamp each document, then its tape line. With `problem`, a printer found unable to work
    // at the start of the block is not told but put there, for the caller's one message.
    virtual bool documentos(const QList<RecordedReceipt>& rows,
                            std::optional<PrinterMessage>* problem = nullptr) = 0;
    virtual bool cupom(const QList<RecordedReceipt>& rows, const QString& totalPago,
                       const QString& troco) = 0;
    // One line on the tape (corrections and reversals).
    virtual Fita linhaFita(const QString&) { return Fita::SemImpressora; }
};
