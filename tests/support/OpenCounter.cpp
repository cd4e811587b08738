#include "OpenCounter.h"

#include "DemoData.h"

#include <QtGlobal>

namespace {
AppContext& prepare(TestApp& app) {
    if (!app.ok() || !DemoData::seed(app.ctx(), nullptr, nullptr))
        qWarning("the counter's database could not be prepared");
    app.setOption(QStringLiteral("Export"), QStringLiteral("guiche"), QStringLiteral("3"));
    app.ctx().workingDate = QDate(2026, 11, 23);
    app.ctx().userName = QStringLiteral("ANA");
    return app.ctx();
}
} // namespace

OpenCounter::OpenCounter(TestApp::Backend backend, Printer model)
    : app(backend),
      service(model == Printer::None ? nullptr : std::make_unique<PrinterService>(prepare(app))),
      printer(service ? std::make_unique<AuthCounterPrinter>(app.ctx(), *service) : nullptr),
      session(service ? app.ctx() : prepare(app), printer.get()) {
    if (!printer)
        return;
    app.setOption(QStringLiteral("Print"), QStringLiteral("impressora"),
                  QStringLiteral("bematech"));
    app.setOption(QStringLiteral("Print"), QStringLiteral("modo"), QStringLiteral("1"));
    app.setOption(QStringLiteral("Mensagem"), QStringLiteral("cabecalho"), QStringLiteral("PMX"));
    emulator.setDocument(true);
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
