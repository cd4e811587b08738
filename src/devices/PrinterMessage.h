#pragma once

#include "DialogPort.h"

#include <QString>

// Why the authenticating printer could not do what it was asked.
enum class PrinterFault {
    Nenhuma,       // no cause known (the system's own texts)
    PortaRecusada, // the port could not be opened: refused, missing or busy
    SemResposta,   // the port opened, the printer never answered
    ForaDeLinha,   // it answers, off line
    SemPapel,      // it answers, out of paper
    SemDocumento   // it answers, the document never came
};

// What the printer has to tell the operator, with its title and icon.
struct PrinterMessage {
    QString title;
    QString text;
    DialogIcon icon = DialogIcon::Critical;
};
