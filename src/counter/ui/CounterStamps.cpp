#include "CounterStamps.h"

#include "AppContext.h"
#include "AuthCounterPrinter.h"
#include "CounterSession.h"
#include "DialogPort.h"
#include "PendingStampsDialog.h"
#include "PrinterWorker.h"
#include "SystemTexts.h"
#include "Tone.h"

#include <QLabel>
#include <utility>

CounterStamps::CounterStamps(CounterSession& session, bool consulta, QLabel* banner,
                             QWidget* counter, std::function<void()> backToEntry)
    : QObject(counter), m_session(session), m_consulta(consulta), m_banner(banner),
      m_counter(counter), m_backToEntry(std::move(backToEntry)) {}

CounterStamps::~CounterStamps() {
    if (m_authPrinter)
        m_authPrinter->autenticados = nullptr;
}

void CounterStamps::setPrinter(PrinterWorker* worker, AuthCounterPrinter* printer) {
    m_authPrinter = printer;
    if (printer)
        printer->autenticados = [this](const QList<int>&, const QList<int>&) {
            refresh();
            if (m_pendentes)
                m_pendentes->refresh();
        };
    if (!worker)
        return;
    connect(worker, &PrinterWorker::aguardandoDocumento, this, [this](const QString& texto) {
        // The wait is the cashier's to end: the document stays among those without a stamp.
        line(texto.isEmpty() ? QString()
                             : QStringLiteral("Insira o documento: ") + texto.toHtmlEscaped() +
                                   QStringLiteral(" &nbsp; <a href=\"cancelar\">Cancelar "
                                                  "a espera</a>"),
             true);
    });
    connect(m_banner, &QLabel::linkActivated, worker, [worker] { worker->cancelarEspera(); });
    connect(worker, &PrinterWorker::aviso, this,
            [this](const QString& title, const QString& text, int icon) {
                m_session.ctx().dialogs.message(title, text, DialogIcon(icon), DialogButtons::Ok);
            });
}

void CounterStamps::line(const QString& text, bool waiting) {
    m_banner->setText(text);
    Tone::set(m_banner, waiting ? "espera" : "falta");
    m_banner->setVisible(!text.isEmpty());
}

void CounterStamps::refresh() {
    // From the database, so a restart (even a killed program) still names every document the
    // printer never confirmed. Only a counter with a printer that stamps is reminded.
    m_semAutenticacao = 0;
    if (m_consulta || !ReceiptStamps::autenticadoraAtiva(m_session.ctx())) {
        line(QString(), false);
        return;
    }
    const auto rows = m_session.pendentes();
    m_semAutenticacao = rows ? int(rows->size()) : 0;
    if (!rows || rows->isEmpty()) {
        line(QString(), false);
        return;
    }
    constexpr int kNamed = 8; // beyond these the banner counts, so it keeps to one line
    QStringList n;
    for (int i = 0; i < rows->size() && i < kNamed; ++i)
        n << QStringLiteral("%1").arg(rows->at(i).autentica, 4, 10, QLatin1Char('0'));
    if (rows->size() > kNamed)
        n << QStringLiteral("e mais %1").arg(rows->size() - kNamed);
    line(QStringLiteral("Documentos sem autenticação: %1. Quando a autenticadora voltar: "
                        "Caixa > Documentos sem Autenticação.")
             .arg(n.join(QStringLiteral(", "))),
         false);
}

void CounterStamps::showList(bool activate) {
    if (m_consulta)
        return;
    if (!m_pendentes) {
        m_pendentes = new PendingStampsDialog(m_session, m_counter);
        m_pendentes->setAttribute(Qt::WA_DeleteOnClose);
        connect(m_pendentes, &QDialog::finished, this, [this] {
            refresh();
            m_backToEntry();
        });
    }
    m_pendentes->refresh();
    m_pendentes->setAttribute(Qt::WA_ShowWithoutActivating, !activate);
    m_pendentes->show();
    if (activate) {
        m_pendentes->raise();
        m_pendentes->activateWindow();
    }
}

QWidget* CounterStamps::list() const {
    return m_pendentes.data();
}

void CounterStamps::reautenticarUltimo() {
    PendingStampsDialog::conduzir(m_session.ctx().dialogs, [this](ReceiptStamps::Repetir r) {
        return m_session.reautenticarUltimo(r);
    });
    m_backToEntry();
}

void CounterStamps::reautenticarNumero() {
    DialogPort& dialogs = m_session.ctx().dialogs;
    const Notice ask = SystemTexts::notice(SystemText::PedidoReautenticacao);
    const auto answer = dialogs.input(ask.title, ask.text, false, QString());
    if (!answer || answer->trimmed().isEmpty())
        return;
    bool ok = false;
    const int n = answer->trimmed().toInt(&ok);
    if (!ok || n <= 0) {
        tell(dialogs, SystemTexts::notice(SystemText::ValorNaoNumero));
        return;
    }
    PendingStampsDialog::conduzir(
        dialogs, [this, n](ReceiptStamps::Repetir r) { return m_session.reautenticar(n, r); });
    m_backToEntry();
}
