#include "OpenCounter.h"

#include "DemoData.h"

#include <QtGlobal>

namespace {
bool prepare(TestApp& app) {
    const bool ok = app.ok() && DemoData::seed(app.ctx(), nullptr, nullptr);
    if (!ok)
        qWarning("the counter's database could not be prepared");
    app.setOption(QStringLiteral("Export"), QStringLiteral("guiche"), QStringLiteral("3"));
    app.ctx().workingDate = QDate(2026, 11, 23);
    app.ctx().userName = QStringLiteral("ANA");
    return ok;
}

std::unique_ptr<AuthCounterPrinter> counterPrinter(AppContext& ctx, PrinterService* service,
                                                   PrinterWorker* worker) {
    if (service)
        return std::make_unique<AuthCounterPrinter>(ctx, *service);
    if (worker)
        return std::make_unique<AuthCounterPrinter>(ctx, *worker);
    return nullptr;
}
} // namespace

OpenCounter::OpenCounter(TestApp::Backend backend, Printer model, DialogPort* shown)
    : app(backend, QDateTime(QDate(2026, 11, 23), QTime(10, 0)), shown), seeded(prepare(app)),
      service(model == Printer::Bematech ? std::make_unique<PrinterService>(app.ctx()) : nullptr),
      worker(model == Printer::Worker ? std::make_unique<PrinterWorker>(app.ctx()) : nullptr),
      printer(counterPrinter(app.ctx(), service.get(), worker.get())),
      session(app.ctx(), printer.get()) {
    if (!printer)
        return;
    app.setOption(QStringLiteral("Print"), QStringLiteral("impressora"),
                  QStringLiteral("bematech"));
    app.setOption(QStringLiteral("Print"), QStringLiteral("modo"), QStringLiteral("1"));
    app.setOption(QStringLiteral("Mensagem"), QStringLiteral("cabecalho"), QStringLiteral("PMX"));
    emulator.setDocument(true);
    if (worker) {
        worker->service().makeTransport = [this] {
            return std::make_unique<MemoryTransport>(emulator);
        };
        worker->service().documentTimeoutMs = 3000;
        return;
    }
    service->makeTransport = [this] { return std::make_unique<MemoryTransport>(emulator); };
    service->sleep = [](int) {};
    printer->autenticados = [this](const QList<int>& done, const QList<int>& none) {
        stamped << done;
        missed << none;
    };
}

bool OpenCounter::open() {
    if (service && app.ctx().settings.impressora == QLatin1String("bematech"))
        service->abrirPorta();
    const bool opened = session.day().abrir();
    app.dialogs().clear();
    return opened;
}

CounterSession::ReadResult OpenCounter::read(const QString& code, bool consent) {
    auto r = session.ler(code);
    asked = r.precisaConsentimento;
    while (r.precisaConsentimento)
        r = session.continuar(consent);
    return r;
}

std::optional<QList<RecordedReceipt>> OpenCounter::receive(const QStringList& codes) {
    for (const QString& c : codes)
        if (!read(c).accepted)
            return std::nullopt;
    return session.gravar();
}
