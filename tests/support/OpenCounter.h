#pragma once

#include "AuthCounterPrinter.h"
#include "CounterSession.h"
#include "PrinterEmulator.h"
#include "PrinterService.h"
#include "PrinterWorker.h"
#include "TestApp.h"

#include <memory>

// The counter the tests start from: the demo kinds, 23/11/2026, operator ANA at guiche 3, and its
// session; open() opens the day. With Printer::Bematech the first model is emulated with a
// document in place, "PMX" as the header, and the stamps of each block are kept; with
// Printer::Worker the same printer is driven from its own thread, as the counter's window does.
// `shown` as in TestApp.
class OpenCounter {
public:
    enum class Printer { None, Bematech, Worker };
    explicit OpenCounter(TestApp::Backend backend = TestApp::Backend::SQLite,
                         Printer printer = Printer::None, DialogPort* shown = nullptr);

    // Opens the working date's movement (the printer's port first) and forgets what was shown.
    bool open();
    // The counter's read with the operator's answer to an overdue guide.
    CounterSession::ReadResult read(const QString& code, bool consent = true);
    // One customer: each code read (overdue ones consented to), then the payment recorded.
    std::optional<QList<RecordedReceipt>> receive(const QStringList& codes);

    TestApp app;
    const bool seeded; // the demo kinds are in and the day and operator set
    PrinterEmulator emulator{PrinterEmulator::Model::Bematech};
    std::unique_ptr<PrinterService> service;
    std::unique_ptr<PrinterWorker> worker;
    std::unique_ptr<AuthCounterPrinter> printer;
    CounterSession session;
    bool asked = false;                // the last read asked for the overdue consent
    QList<QList<int>> stamped, missed; // per block of documents
};
