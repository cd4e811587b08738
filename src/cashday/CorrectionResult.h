#pragma once

#include "CounterPrinter.h"
#include "Notice.h"
#include "clsRecebimentos.h"

#include <QList>
#include <QStringList>
#include <optional>

// What a change, a reversal or its undoing did, and what the operator is to be told, in order,
// once it is over.
struct CorrectionResult {
    bool feito = false;
    std::optional<clsRecebimentos> antes;  // the receipt as it was
    std::optional<clsRecebimentos> depois; // as it is now (change, undo)
    QStringList linhasFita;
    CounterPrinter::Fita fita = CounterPrinter::Fita::SemImpressora;
    QString arquivoBanco;    // the bank files that had already carried the receipt
    bool registrado = false; // the log entry was appended
    QString arquivo;         // the log file
    QList<Notice> avisos;

    static CorrectionResult refused(const Notice& n) {
        CorrectionResult r;
        r.avisos << n;
        return r;
    }
    void mostrar(DialogPort& dialogs) const {
        for (const Notice& n : avisos)
            tell(dialogs, n);
    }
};
