#include "PrinterService.h"

#include "AppContext.h"
#include "DialogPort.h"
#include "PrinterBytes.h"
#include "QuattroProtocol.h"

#include <QDeadlineTimer>
#include <QThread>

const QString PrinterService::kAbrirFalhou =
    QStringLiteral("Problemas ao Abrir a Porta de Comunicação.");
const QString PrinterService::kFecharFalhouCaixa =
    QStringLiteral("Problemas ao Fechar a Porta de Comunicação.");
const QString PrinterService::kFecharFalhouAutenticacao =
    QStringLiteral("Problemas ao fechar a porta de comunicação!!");
const QString PrinterService::kAutenticacaoFalhou = QStringLiteral(
    "Problemas na autenticação do documento.\nPossíveis causas: Documento não inserido, impressora "
    "desligada, off-line ou sem papel");
const QString PrinterService::kTempoExcedido = QStringLiteral("Tempo maior que o permitido.");
const QString PrinterService::kImpressaoFalhou =
    QStringLiteral("Problemas na impressão do texto.\nPossíveis causas: Impressora desligada, "
                   "off-line ou sem papel");
const QString PrinterService::kSoParalela =
    QStringLiteral("Essa função só funciona com as portas paralelas LPT1, LPT2 OU LPT3");

namespace {
const QString kAviso = QStringLiteral("Aviso");
}

PrinterService::PrinterService(AppContext& ctx) : m_ctx(ctx) {
    bool ok = false;
    const int wait = option("espera_documento").toInt(&ok);
    if (ok && wait > 0)
        documentTimeoutMs = wait;
    const int reply = option("tempo_resposta").toInt(&ok);
    if (ok && reply > 0)
        replyTimeoutMs = reply;
}

PrinterService::~PrinterService() = default;

QString PrinterService::option(const char* key, const QString& fallback) const {
    const QString v = m_ctx.option(QStringLiteral("Print"), QLatin1String(key)).trimmed();
    return v.isEmpty() ? fallback : v;
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
    return modelFrom(m_ctx.settings.impressora);
}

bool PrinterService::habilitada() const {
    return m_ctx.settings.modo.trimmed() == QLatin1String("1");
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
    return TransportFactory::create(m_ctx.settings.porta,
                                    TransportFactory::optionsFrom(option("serial")));
}

BematechProtocol& PrinterService::bematech() {
    if (!m_bema) {
        m_bema =
            std::make_unique<BematechProtocol>(option("pagina_codigo", QStringLiteral("cp850")));
        m_bema->replyTimeoutMs = replyTimeoutMs;
        m_bema->sleep = sleep;
    }
    return *m_bema;
}

void PrinterService::abrirPorta() {
    if (!habilitada() || modelo() != PrinterModel::Bematech)
        return; // "txt" prints nothing here; the second model opens per call
    BematechProtocol& b = bematech();
    if (b.IniciaPorta(transport()) > 0) {
        b.ConfiguraModeloImpressora(1);
        m_portOpen = true;
    } else {
        m_ctx.dialogs.critical(kAviso, kAbrirFalhou);
    }
}

void PrinterService::fecharPorta(bool counterScreen) {
    if (!habilitada() || modelo() != PrinterModel::Bematech)
        return;
    m_portOpen = false;
    if (bematech().FechaPorta() <= 0)
        m_ctx.dialogs.critical(kAviso,
                               counterScreen ? kFecharFalhouCaixa : kFecharFalhouAutenticacao);
}

PrinterStatus PrinterService::status() {
    if (modelo() == PrinterModel::Quattro) {
        QuattroProtocol q(
            transport(),
            PrinterBytes::fromHex(option("quattro_estado"), PrinterBytes::kQuattroStatusDefault),
            option("pagina_codigo", QStringLiteral("cp850")));
        q.replyTimeoutMs = replyTimeoutMs;
        PrinterStatus s;
        const int e = q.open() ? q.Estado() : -1;
        s.answered = e >= 0;
        s.online = s.answered;
        s.document = e >= 0 && (e & PrinterBytes::kQuattroDocument);
        s.raw = e;
        return s;
    }
    BematechProtocol& b = bematech();
    if (!b.isOpen() && b.IniciaPorta(transport()) > 0)
        b.ConfiguraModeloImpressora(1);
    return b.Status();
}

bool PrinterService::ImprimeAutenticadora(PrinterOperation operacao, PrinterModel modelo,
                                          const QString& texto) {
    if (operacao == PrinterOperation::Nenhuma || !habilitada())
        return true;
    const bool quattro = modelo == PrinterModel::Quattro;
    // Every model but the second stamps through the first model's protocol.
    if (operacao == PrinterOperation::Autenticar)
        return quattro ? authenticateQuattro(texto) : authenticateBematech(texto);
    if (quattro)
        return printQuattro(texto);
    if (modelo == PrinterModel::Bematech)
        return printBematech(texto);
    return true;
}

bool PrinterService::authenticateBematech(const QString& texto) {
    BematechProtocol& b = bematech();
    if (!b.isOpen() && b.IniciaPorta(transport()) > 0)
        b.ConfiguraModeloImpressora(1);
    const int r = b.AutenticaDoc(texto, documentTimeoutMs);
    if (r == 0)
        m_ctx.dialogs.critical(kAviso, kAutenticacaoFalhou);
    else if (r == -1)
        m_ctx.dialogs.critical(QStringLiteral("Autenticação de Documentos"), kTempoExcedido);
    b.ComandoTX(PrinterBytes::kAfterStamp);
    return r > 0;
}

bool PrinterService::printBematech(const QString& texto) {
    BematechProtocol& b = bematech();
    if (!b.isOpen() && b.IniciaPorta(transport()) > 0)
        b.ConfiguraModeloImpressora(1);
    if (b.FormataTX(texto + QLatin1Char('\n'), 3, 0, 0, 0, 0) != 0)
        return true;
    m_ctx.dialogs.info(kAviso, kImpressaoFalhou);
    return false;
}

bool PrinterService::authenticateQuattro(const QString& texto) {
    const int port = portaQuattro(m_ctx.settings.porta);
    if (port == 1 || port == 2) { // a serial port
        m_ctx.dialogs.info(kAviso, kSoParalela);
        return false;
    }
    QuattroProtocol q(
        transport(),
        PrinterBytes::fromHex(option("quattro_estado"), PrinterBytes::kQuattroStatusDefault),
        option("pagina_codigo", QStringLiteral("cp850")));
    q.replyTimeoutMs = replyTimeoutMs;
    if (!q.open() || !q.TXI(PrinterBytes::kQuattroAuthOn)) {
        m_ctx.dialogs.critical(kAviso, kAutenticacaoFalhou);
        return false;
    }
    auto pause = [this](int ms) { sleep ? sleep(ms) : QThread::msleep(ulong(ms)); };
    pause(1);
    // The printer is asked until the document is in place, but never for ever.
    bool ok = true;
    const int waitMs = option("quattro_espera", QStringLiteral("60000")).toInt();
    QDeadlineTimer deadline(waitMs > 0 ? waitMs : 60000);
    int e = q.Estado();
    while (ok && (e < 0 || !(e & PrinterBytes::kQuattroDocument))) {
        if (deadline.hasExpired() || e < 0) {
            ok = false;
            break;
        }
        pause(100);
        e = q.Estado();
    }
    if (ok)
        ok = q.TXI(PrinterBytes::kQuattroStamp + q.encode(texto) +
                   PrinterBytes::fromHex(option("quattro_fim"), PrinterBytes::kQuattroEndDefault));
    q.TXI(PrinterBytes::kQuattroAuthOff); // always leave authentication mode
    if (!ok)
        m_ctx.dialogs.critical(e < 0 ? kAviso : QStringLiteral("Autenticação de Documentos"),
                               e < 0 ? kAutenticacaoFalhou : kTempoExcedido);
    return ok;
}

bool PrinterService::printQuattro(const QString& texto) {
    QuattroProtocol q(
        transport(),
        PrinterBytes::fromHex(option("quattro_estado"), PrinterBytes::kQuattroStatusDefault),
        option("pagina_codigo", QStringLiteral("cp850")));
    q.replyTimeoutMs = replyTimeoutMs;
    if (q.open() && q.TX(texto + QLatin1Char('\n')))
        return true;
    m_ctx.dialogs.info(kAviso, kImpressaoFalhou);
    return false;
}
