#include "PrinterService.h"

#include "AppContext.h"
#include "OutputPath.h"
#include "PrinterBytes.h"
#include "QuattroProtocol.h"
#include "Settings.h"
#include "SystemTexts.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QThread>

const QString PrinterService::kLabel = QStringLiteral("ImprimeAutenticadora");

namespace {
PrinterMessage message(SystemText t) {
    const Notice n = SystemTexts::notice(t);
    return {n.title, n.text, n.icon};
}

QString withDefault(const QString& v, const QString& fallback) {
    return v.trimmed().isEmpty() ? fallback : v.trimmed();
}
} // namespace

PrinterConfig PrinterConfig::from(const AppContext& ctx) {
    const auto opt = [&ctx](const char* key) {
        return ctx.option(QStringLiteral("Print"), QLatin1String(key)).trimmed();
    };
    PrinterConfig c;
    c.impressora = ctx.settings.impressora;
    c.modo = ctx.settings.modo;
    c.porta = ctx.settings.porta;
    // A spool file named without a folder lives in the program's folder, never in the current
    // one, and is never one of the counter's own files.
    if (c.porta.trimmed().startsWith(QLatin1String("file:"), Qt::CaseInsensitive)) {
        const QString file = QDir::fromNativeSeparators(c.porta.trimmed().mid(5));
        const QString path = QDir::isRelativePath(file) ? ctx.filePath(file) : file;
        c.porta = QStringLiteral("file:") + path;
        if (OutputPath::isGuarded(path, ctx.ownFiles()))
            c.portaProblema = QStringLiteral("A porta da autenticadora aponta para um arquivo do "
                                             "próprio caixa: [Print] porta=\"%1\". Nada será "
                                             "impresso nele.")
                                  .arg(ctx.settings.porta.trimmed());
    }
    c.serial = opt("serial");
    c.paginaCodigo = withDefault(opt("pagina_codigo"), QStringLiteral("cp850"));
    c.quattroEstado = opt("quattro_estado");
    c.quattroEspera = opt("quattro_espera");
    c.quattroFim = opt("quattro_fim");
    return c;
}

PrinterService::PrinterService(AppContext& ctx) : m_ctx(ctx) {
    bool ok = false;
    const int wait =
        ctx.option(QStringLiteral("Print"), QStringLiteral("espera_documento")).toInt(&ok);
    if (ok && wait > 0)
        documentTimeoutMs = wait;
    const int reply =
        ctx.option(QStringLiteral("Print"), QStringLiteral("tempo_resposta")).toInt(&ok);
    if (ok && reply > 0)
        replyTimeoutMs = reply;
}

PrinterService::~PrinterService() {
    dropPending();
}

PrinterConfig PrinterService::config() const {
    return m_pinned ? *m_pinned : PrinterConfig::from(m_ctx);
}

PrinterModel PrinterService::modelFrom(const QString& setting) {
    const QString m = setting.trimmed().toLower();
    if (m == QLatin1String("bematech"))
        return PrinterModel::Bematech;
    if (m == QLatin1String("quattro"))
        return PrinterModel::Quattro;
    if (m == QLatin1String("txt"))
        return PrinterModel::Txt;
    return PrinterModel::Desconhecido;
}

PrinterModel PrinterService::modelo() const {
    return modelFrom(config().impressora);
}

bool PrinterService::habilitada() const {
    return Settings::modoAutenticadora(config().modo);
}

QString PrinterService::problemaConfiguracao(const PrinterConfig& c) {
    if (!c.portaProblema.isEmpty() && Settings::modoAutenticadora(c.modo))
        return c.portaProblema;
    const QString modo = c.modo.trimmed();
    if (!modo.isEmpty() && modo != QLatin1String("0") && modo != QLatin1String("1"))
        return SystemTexts::text(SystemText::ModoAutenticadoraInvalido).arg(c.modo);
    if (modo != QLatin1String("1"))
        return {};
    const PrinterModel m = modelFrom(c.impressora);
    if (m == PrinterModel::Desconhecido)
        return SystemTexts::text(SystemText::ModeloAutenticadoraDesconhecido).arg(c.impressora);
    if (m != PrinterModel::Txt && !TransportFactory::recognised(c.porta))
        return SystemTexts::text(SystemText::PortaAutenticadoraDesconhecida).arg(c.porta);
    return {};
}

int PrinterService::portaQuattro(const QString& porta) {
    const QString p = porta.trimmed().toUpper();
    if (p == QLatin1String("LPT1"))
        return 0x378;
    if (p == QLatin1String("LPT2"))
        return 0x278;
    if (p == QLatin1String("COM1"))
        return 1;
    if (p == QLatin1String("COM2"))
        return 2;
    return 0;
}

std::unique_ptr<Transport> PrinterService::transport() const {
    if (makeTransport)
        return makeTransport();
    const PrinterConfig c = config();
    return TransportFactory::create(c.porta, TransportFactory::optionsFrom(c.serial));
}

BematechProtocol& PrinterService::bematech() {
    if (!m_bema) {
        m_bema = std::make_unique<BematechProtocol>(config().paginaCodigo);
        m_bema->replyTimeoutMs = replyTimeoutMs;
        m_bema->sleep = sleep;
    }
    return *m_bema;
}

bool PrinterService::ensureBematechOpen() {
    const PrinterConfig c = config();
    const QString where = c.porta + QLatin1Char('|') + c.serial + QLatin1Char('|') + c.paginaCodigo;
    if (m_bema && m_bema->isOpen() && where != m_openedOn) {
        // The port was changed in the options: the next operation uses the new one.
        m_bema->FechaPorta();
        m_bema.reset();
    }
    BematechProtocol& b = bematech();
    if (b.isOpen())
        return true;
    m_openFailed = b.IniciaPorta(transport()) <= 0;
    if (m_openFailed)
        return false;
    m_openedOn = where;
    m_closedAfterFailure = false;
    b.ConfiguraModeloImpressora(1);
    return true;
}

void PrinterService::markDown() {
    m_down = true;
    if (m_bema && m_bema->FechaPorta() > 0)
        m_closedAfterFailure = true; // the next customer connects afresh
}

void PrinterService::fail(const QString& title, const QString& text, DialogIcon icon, bool down) {
    if (down)
        markDown();
    if (m_told)
        return; // one message per customer
    m_told = true;
    tell(title, text, icon);
}

void PrinterService::fail(PrinterFault f, bool documento, bool down) {
    const PrinterMessage m = mensagem(f, documento, config().porta.trimmed());
    fail(m.title, m.text, m.icon, down);
}

PrinterFault PrinterService::faultOf(const PrinterStatus& s) {
    if (!s.answered)
        return PrinterFault::SemResposta;
    if (s.paperOut)
        return PrinterFault::SemPapel;
    if (!s.online)
        return PrinterFault::ForaDeLinha;
    return PrinterFault::Nenhuma;
}

PrinterFault PrinterService::faultOfBematech() {
    if (m_openFailed || !m_bema)
        return PrinterFault::PortaRecusada;
    return faultOf(m_bema->lastStatus()); // a link lost meanwhile is a printer not answering
}

PrinterMessage PrinterService::mensagem(PrinterFault f, bool documento, const QString& porta) {
    const QString head = documento ? SystemTexts::text(SystemText::ProblemaAutenticacaoDocumento)
                                   : SystemTexts::text(SystemText::ProblemaImpressaoTexto);
    const auto with = [](SystemText t, const QString& a) {
        const Notice n = SystemTexts::notice(t).arg(a);
        return PrinterMessage{n.title, n.text, n.icon};
    };
    switch (f) {
    case PrinterFault::PortaRecusada:
        return with(SystemText::PortaRecusada, porta);
    case PrinterFault::SemResposta:
        return with(SystemText::AutenticadoraSemResposta, head);
    case PrinterFault::ForaDeLinha:
        return with(SystemText::AutenticadoraForaDeLinha, head);
    case PrinterFault::SemPapel:
        return with(SystemText::AutenticadoraSemPapel, head);
    case PrinterFault::SemDocumento:
        return message(SystemText::TempoExcedido);
    case PrinterFault::Nenhuma:
        break;
    }
    return message(documento ? SystemText::AutenticacaoFalhou : SystemText::ImpressaoFalhou);
}

void PrinterService::tell(const QString& title, const QString& text, DialogIcon icon) {
    if (avisar)
        avisar(title, text, icon);
    else
        m_ctx.dialogs.message(title, text, icon, DialogButtons::Ok);
}

PrinterFault PrinterService::sondar(PrinterModel m) {
    if (m == PrinterModel::Bematech)
        return ensureBematechOpen() ? faultOf(bematech().Status()) : PrinterFault::PortaRecusada;
    const PrinterConfig c = config();
    const int port = portaQuattro(c.porta);
    if (port == 1 || port == 2)
        return PrinterFault::Nenhuma; // the stamp itself names the parallel ports
    QuattroProtocol q(transport(),
                      PrinterBytes::fromHex(c.quattroEstado, PrinterBytes::kQuattroStatusDefault),
                      c.paginaCodigo);
    q.replyTimeoutMs = replyTimeoutMs;
    if (!q.open())
        return PrinterFault::PortaRecusada;
    return q.Estado() < 0 ? PrinterFault::SemResposta : PrinterFault::Nenhuma;
}

void PrinterService::novoCliente(std::optional<PrinterMessage>* tomar, bool documentos) {
    m_down = false;
    m_told = false;
    const PrinterModel m = modelo();
    if (!habilitada() || (m != PrinterModel::Bematech && m != PrinterModel::Quattro))
        return;
    const PrinterFault f = sondar(m);
    if (f != PrinterFault::Nenhuma) {
        markDown();
        const PrinterMessage msg = mensagem(f, documentos, config().porta.trimmed());
        m_told = true; // the customer's one message
        if (tomar)
            *tomar = msg;
        else
            tell(msg.title, msg.text, msg.icon);
        return;
    }
    if (m_pending.isEmpty())
        return;
    QStringList lines;
    lines.swap(m_pending);
    for (int i = 0; i < lines.size(); ++i) {
        if (!print(m, lines[i])) { // the failed line is kept again
            m_pending += lines.mid(i + 1);
            return;
        }
    }
}

void PrinterService::keep(const QString& texto) {
    if (m_pending.size() >= kMaxPendentes) {
        m_pending.removeFirst();
        ++m_dropped;
    }
    m_pending.append(texto);
}

void PrinterService::dropPending() {
    const int n = int(m_pending.size()) + m_dropped;
    m_pending.clear();
    m_dropped = 0;
    if (n > 0)
        m_ctx.errors.append(
            kLabel, {0,
                     QStringLiteral("%1 linha(s) da fita não impressa(s) e descartada(s): a "
                                    "autenticadora ficou fora de linha.")
                         .arg(n),
                     QStringLiteral("Tolvane")});
}

void PrinterService::abrirPorta() {
    if (!habilitada() || modelo() != PrinterModel::Bematech)
        return; // "txt" prints nothing here; the second model opens per call
    if (ensureBematechOpen())
        m_portOpen = true;
    else
        fail(PrinterFault::PortaRecusada, true, true);
}

void PrinterService::fecharPorta(bool counterScreen) {
    dropPending();
    if (!habilitada() || modelo() != PrinterModel::Bematech)
        return;
    m_portOpen = false;
    if (bematech().FechaPorta() <= 0 && !m_closedAfterFailure)
        avisarAgora(message(counterScreen ? SystemText::PortaFecharFalhouCaixa
                                          : SystemText::PortaFecharFalhouAutenticacao));
}

PrinterStatus PrinterService::status() {
    const PrinterConfig c = config();
    if (modelFrom(c.impressora) == PrinterModel::Quattro) {
        QuattroProtocol q(
            transport(),
            PrinterBytes::fromHex(c.quattroEstado, PrinterBytes::kQuattroStatusDefault),
            c.paginaCodigo);
        q.replyTimeoutMs = replyTimeoutMs;
        PrinterStatus s;
        const int e = q.open() ? q.Estado() : -1;
        s.answered = e >= 0;
        s.online = s.answered;
        s.document = e >= 0 && (e & PrinterBytes::kQuattroDocument);
        s.raw = e;
        return s;
    }
    ensureBematechOpen();
    return bematech().Status();
}

bool PrinterService::ImprimeAutenticadora(PrinterOperation operacao, PrinterModel modelo,
                                          const QString& texto) {
    if (operacao == PrinterOperation::Nenhuma || !habilitada())
        return false;
    if (operacao == PrinterOperation::Autenticar) {
        if (m_down)
            return false; // left for the re-stamp
        // Every model but the second stamps through the first model's protocol.
        return modelo == PrinterModel::Quattro ? authenticateQuattro(texto)
                                               : authenticateBematech(texto);
    }
    if (modelo != PrinterModel::Quattro && modelo != PrinterModel::Bematech)
        return false;
    if (m_down) {
        keep(texto);
        return false;
    }
    return print(modelo, texto);
}

bool PrinterService::print(PrinterModel modelo, const QString& texto) {
    const bool ok = modelo == PrinterModel::Quattro ? printQuattro(texto) : printBematech(texto);
    if (!ok)
        keep(texto);
    return ok;
}

bool PrinterService::authenticateBematech(const QString& texto) {
    ensureBematechOpen(); // first: a changed port replaces the connection
    BematechProtocol& b = bematech();
    b.onWaiting = [this, texto](bool waiting) {
        if (aguardandoDocumento)
            aguardandoDocumento(waiting ? texto : QString());
    };
    const int r = b.AutenticaDoc(texto, documentTimeoutMs);
    b.onWaiting = nullptr;
    b.ComandoTX(PrinterBytes::kAfterStamp); // in every case
    if (r == 0)
        fail(faultOfBematech(), true, true);
    else if (r == -1) // the printer is there, the document was not: the next one is tried
        fail(PrinterFault::SemDocumento, true, false);
    return r == 1;
}

bool PrinterService::printBematech(const QString& texto) {
    ensureBematechOpen(); // first: a changed port replaces the connection
    BematechProtocol& b = bematech();
    if (b.FormataTX(texto + QLatin1Char('\n'), 3, 0, 0, 0, 0) != 0)
        return true;
    fail(faultOfBematech(), false, true);
    return false;
}

bool PrinterService::authenticateQuattro(const QString& texto) {
    const PrinterConfig c = config();
    const int port = portaQuattro(c.porta);
    if (port == 1 || port == 2) { // a serial port
        const PrinterMessage m = message(SystemText::SoPortaParalela);
        fail(m.title, m.text, m.icon, false);
        return false;
    }
    QuattroProtocol q(transport(),
                      PrinterBytes::fromHex(c.quattroEstado, PrinterBytes::kQuattroStatusDefault),
                      c.paginaCodigo);
    q.replyTimeoutMs = replyTimeoutMs;
    if (!q.open() || !q.TXI(PrinterBytes::kQuattroAuthOn)) {
        fail(q.isOpen() ? PrinterFault::SemResposta : PrinterFault::PortaRecusada, true, true);
        return false;
    }
    auto pause = [this](int ms) { sleep ? sleep(ms) : QThread::msleep(ulong(ms)); };
    pause(1);
    // The printer is asked until the document is in place. The wait has no end of its own
    // unless [Print] quattro_espera (or the command line) sets one; the cashier may cancel it.
    const int limit = quattroEsperaMs >= 0 ? quattroEsperaMs : c.quattroEspera.trimmed().toInt();
    QDeadlineTimer deadline(limit > 0 ? QDeadlineTimer(limit)
                                      : QDeadlineTimer(QDeadlineTimer::Forever));
    m_cancelWait = false;
    bool ok = true, waiting = false, cancelled = false;
    int e = q.Estado();
    while (e < 0 || !(e & PrinterBytes::kQuattroDocument)) {
        cancelled = m_cancelWait.exchange(false);
        if (deadline.hasExpired() || e < 0 || cancelled) {
            ok = false;
            break;
        }
        if (!waiting && aguardandoDocumento)
            aguardandoDocumento(texto);
        waiting = true;
        pause(100);
        e = q.Estado();
    }
    if (waiting && aguardandoDocumento)
        aguardandoDocumento(QString());
    if (ok)
        ok = q.TXI(PrinterBytes::kQuattroStamp + q.encode(texto) +
                   PrinterBytes::fromHex(c.quattroFim, PrinterBytes::kQuattroEndDefault));
    q.TXI(PrinterBytes::kQuattroAuthOff); // always leave authentication mode
    if (ok && q.Estado() < 0) {           // hung up after the stamp's bytes: not stamped
        ok = false;
        e = -1;
    }
    if (!ok && e < 0)
        fail(PrinterFault::SemResposta, true, true);
    else if (!ok && !cancelled) // the cashier who cancelled needs no message
        fail(PrinterFault::SemDocumento, true, false);
    return ok;
}

bool PrinterService::printQuattro(const QString& texto) {
    const PrinterConfig c = config();
    QuattroProtocol q(transport(),
                      PrinterBytes::fromHex(c.quattroEstado, PrinterBytes::kQuattroStatusDefault),
                      c.paginaCodigo);
    q.replyTimeoutMs = replyTimeoutMs;
    if (q.open() && q.TX(texto + QLatin1Char('\n')))
        return true;
    fail(q.isOpen() ? PrinterFault::SemResposta : PrinterFault::PortaRecusada, false, true);
    return false;
}
