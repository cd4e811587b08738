#include "GuiStart.h"

#include "AppContext.h"
#include "AppFolder.h"
#include "AppShell.h"
#include "AuthCounterPrinter.h"
#include "BackgroundCentral.h"
#include "BrazilianLocale.h"
#include "Clock.h"
#include "CounterSession.h"
#include "FirstRunDialog.h"
#include "FolderSetup.h"
#include "PrinterService.h"
#include "PrinterWorker.h"
#include "QtDialogPort.h"
#include "SkinLook.h"
#include "Startup.h"
#include "SystemTexts.h"
#include "TextCouponPrinter.h"
#include "TitleRoom.h"
#include "UpdateOffer.h"
#include "frmAcrescimos.h"
#include "frmData.h"
#include "frmFrente.h"

#include <QApplication>
#include <QDir>
#include <QScreen>
#include <memory>

namespace {

// Date screen, then the counter screen; logging off goes back to the date screen.
class GuiRun : public QObject {
public:
    explicit GuiRun(AppContext& ctx) : m_ctx(ctx), m_worker(ctx), m_printer(ctx, m_worker) {
        ctx.printerJobs = [this](std::function<void(PrinterService&)> job) {
            m_worker.post(std::move(job));
        };
        m_printer.textCoupon = [&ctx](const QStringList& lines) {
            return TextCouponPrinter::imprimir(ctx, lines);
        };
        // Until a counter screen shows them, the printer's messages go to the dialog port.
        QObject::connect(&m_worker, &PrinterWorker::aviso, this,
                         [this](const QString& title, const QString& text, int icon) {
                             if (!m_front)
                                 m_ctx.dialogs.message(title, text, DialogIcon(icon),
                                                       DialogButtons::Ok);
                         });
    }
    ~GuiRun() override {
        m_ctx.printerJobs = nullptr;
        m_front.reset();
        if (m_portOpen)
            m_worker.post([](PrinterService& p) { p.fecharPorta(true); });
    }

    void showDate() {
        m_date = std::make_unique<frmData>(m_ctx);
        QObject::connect(m_date.get(), &frmData::prosseguir, this,
                         [this](DateScreenLogic::Action a) { open(a); });
        m_date->show();
    }

private:
    void open(DateScreenLogic::Action action) {
        const bool consulta = action == DateScreenLogic::Action::Consultar;
        if (!consulta && !m_portOpen) {
            // Kept open while the counter screen is up; opened on the printer's own thread.
            m_worker.post([](PrinterService& p) { p.abrirPorta(); });
            m_portOpen = true;
        }
        auto session = std::make_unique<CounterSession>(m_ctx, consulta ? nullptr : &m_printer);
        if (!(consulta ? session->day().consultar() : session->day().abrir()))
            return; // the date screen stays for another try
        m_date->hide();
        m_front.reset();
        m_session = std::move(session);
        m_front = AppShell::counter(*m_session, consulta);
        m_front->setPrinter(&m_worker, &m_printer);
        QObject::connect(m_front.get(), &frmFrente::logoff, this, [this] {
            m_front->hide();
            m_date->show();
        });
        // The whole screen even where no window manager maximises it (a kiosk session).
        if (const QScreen* screen = QGuiApplication::primaryScreen())
            m_front->setGeometry(screen->availableGeometry());
        m_front->showMaximized();
        m_front->raise();
        m_front->activateWindow(); // the cashier types at once, without reaching for the mouse
    }

    AppContext& m_ctx;
    PrinterWorker m_worker;
    AuthCounterPrinter m_printer;
    bool m_portOpen = false;
    std::unique_ptr<frmData> m_date;
    std::unique_ptr<CounterSession> m_session;
    std::unique_ptr<frmFrente> m_front;
};

QDialog* newCharges(DialogPort& dialogs, const QString& caption, const QStringList& lines,
                    QWidget* parent) {
    return new frmAcrescimos(dialogs, caption, lines, parent);
}
} // namespace

int runGui(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tolvane"));
    BrazilianLocale::apply();
    TitleRoom titles;
    app.installEventFilter(&titles);
    const QStringList args = QApplication::arguments();
    const int p = args.indexOf(QStringLiteral("--pasta"));
    const QString folder =
        AppFolder::resolve(p >= 0 && p + 1 < args.size() ? args[p + 1] : QString(),
                           QApplication::applicationDirPath());
    SingleInstance instance(folder);
    if (!instance.acquired())
        return 0; // another copy is running on this folder: end silently

    QtDialogPort dialogs;
    dialogs.registerForm(QStringLiteral("frmAcrescimos"), newCharges);
    SystemClock clock;
    AppContext ctx(folder, dialogs, clock);
    QString firstRun;
    if (FolderSetup::isNew(folder) && !FirstRunDialog::offer(ctx, &firstRun))
        return 0;
    if (!Startup::run(ctx))
        return 1; // no database where the settings say: nothing to work on
    // The central's link works on its own thread; the screens never wait on the network.
    if (ctx.db.isOpen())
        ctx.rede = std::make_shared<BackgroundCentral>(ctx);
    // A printer setting that cannot work is said once, at start-up, never left to silence.
    const QString problem = PrinterService::problemaConfiguracao(PrinterConfig::from(ctx));
    if (!problem.isEmpty())
        tell(dialogs, SystemTexts::notice(SystemText::AvisoAutenticadora).arg(problem));
    SkinLook::apply(ctx);
    if (UpdateOffer::run(ctx))
        return 0; // the updater replaces the program; it starts again afterwards

    GuiRun run(ctx);
    run.showDate();
    if (!firstRun.isEmpty())
        tell(dialogs, SystemTexts::notice(SystemText::PastaCriada).arg(firstRun));
    return app.exec();
}
