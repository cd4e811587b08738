#include "PrinterWorker.h"

#include "AppContext.h"

PrinterWorker::PrinterWorker(AppContext& ctx, QObject* parent)
    : QObject(parent), m_ctx(ctx), m_service(ctx), m_runner(new QObject) {
    m_service.avisar = [this](const QString& title, const QString& text, DialogIcon icon) {
        emit aviso(title, text, int(icon));
    };
    m_service.aguardandoDocumento = [this](const QString& texto) {
        emit aguardandoDocumento(texto);
    };
    m_thread.setObjectName(QStringLiteral("autenticadora"));
    m_runner->moveToThread(&m_thread);
    m_thread.start();
}

PrinterWorker::~PrinterWorker() {
    // Queued after every job, so they all run (each is bounded by the printer's time-outs).
    QMetaObject::invokeMethod(
        m_runner, [this] { m_thread.quit(); }, Qt::QueuedConnection);
    m_thread.wait();
    delete m_runner;
}

void PrinterWorker::post(std::function<void(PrinterService&)> job) {
    const PrinterConfig config = PrinterConfig::from(m_ctx); // read here, never on the thread
    ++m_pending;
    QMetaObject::invokeMethod(
        m_runner,
        [this, config, job = std::move(job)] {
            m_service.fixarConfig(config);
            job(m_service);
            if (--m_pending == 0)
                emit ociosa();
        },
        Qt::QueuedConnection);
}

void PrinterWorker::postBack(std::function<void()> fn) {
    post([this, fn = std::move(fn)](PrinterService&) {
        QMetaObject::invokeMethod(this, fn, Qt::QueuedConnection);
    });
}
