#pragma once

#include "PrinterService.h"

#include <QObject>
#include <QThread>
#include <atomic>
#include <functional>

class AppContext;

// The authenticating printer on a thread of its own, so a document wait or a printer that does
// not answer never stops the screen. Jobs run one after the other in the order posted, each with
// the settings as they were when it was posted; only that thread touches the printer. What the
// printer has to tell the operator comes back as signals on the thread that owns this object.
class PrinterWorker : public QObject {
    Q_OBJECT
public:
    explicit PrinterWorker(AppContext& ctx, QObject* parent = nullptr);
    ~PrinterWorker() override; // runs what was posted, then stops

    // Set up before the first job (tests give it the emulator's transport).
    PrinterService& service() { return m_service; }
    void post(std::function<void(PrinterService&)> job);
    // Runs `fn` on this object's thread (the screen's) once the jobs posted before it are done.
    void postBack(std::function<void()> fn);
    bool ocupada() const { return m_pending.load() > 0; }
    // The cashier gave up waiting for a document: the stamp under way stops (from the screen's
    // thread, while the printer's is busy).
    void cancelarEspera() { m_service.cancelarEspera(); }

signals:
    // A stamp waits for its document (its text), or stopped waiting (empty text).
    void aguardandoDocumento(const QString& texto);
    void aviso(const QString& title, const QString& text, int icon);
    void ociosa(); // every posted job has run

private:
    AppContext& m_ctx;
    PrinterService m_service;
    QThread m_thread;
    QObject* m_runner; // lives on m_thread
    std::atomic<int> m_pending{0};
};
