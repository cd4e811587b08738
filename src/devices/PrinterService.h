#pragma once

#include "BematechProtocol.h"
#include "DialogPort.h"
#include "PrinterMessage.h"

#include <QString>
#include <QStringList>
#include <atomic>
#include <functional>
#include <memory>
#include <optional>

class AppContext;

// The authenticating printer models of [Print] impressora ("bematech", "quattro", "txt").
enum class PrinterModel { Bematech, Quattro, Txt, Desconhecido };
// What ImprimeAutenticadora does: nothing, stamp a document, or print a tape line.
enum class PrinterOperation { Nenhuma, Autenticar, Imprimir };

// The printer's settings, read at one moment: a printing thread works on its own copy and never
// reads the settings while a screen reloads them.
struct PrinterConfig {
    QString impressora, modo, porta, serial, paginaCodigo;
    QString quattroEstado, quattroEspera, quattroFim;
    QString portaProblema; // why the port may not be used, when it may not
    static PrinterConfig from(const AppContext& ctx);
};

// The authenticating printer as the screens use it: the port kept open while a printing screen
// is shown (first model), and ImprimeAutenticadora for stamps and tape lines. Nothing is printed
// unless [Print] modo is 1.
//
// A printer that fails is marked down for the rest of the customer: one message, no more
// attempts (so an unreachable printer costs one connection time-out, not one per line), its tape
// lines kept and printed first when the next customer finds it back. Lines still kept when the
// port closes are dropped with one record in Log.ini.
class PrinterService {
public:
    explicit PrinterService(AppContext& ctx);
    ~PrinterService();

    void abrirPorta();                    // on showing a printing screen
    void fecharPorta(bool counterScreen); // on closing it; the two screens word it differently
    // True when the document was stamped (and the printer answered after it) or the line printed.
    bool ImprimeAutenticadora(PrinterOperation operacao, PrinterModel modelo, const QString& texto);
    // The configured model, for callers that pass it on.
    PrinterModel modelo() const;
    static PrinterModel modelFrom(const QString& setting);
    bool habilitada() const;
    PrinterStatus status();
    // What in the settings keeps the printer from working (an unknown model or port, a modo that
    // is neither 0 nor 1), in the operator's words; empty when nothing does.
    static QString problemaConfiguracao(const PrinterConfig& c);
    QString problemaConfiguracao() const { return problemaConfiguracao(config()); }

    // A new customer (or block of tape): the printer is asked first, so a printer that is off
    // costs the customer one message naming the cause; then the tape lines it missed are
    // printed. With `tomar`, that message is put there for the caller to show instead of told.
    // `documentos`: the block stamps documents (the message speaks of their authentication).
    void novoCliente(std::optional<PrinterMessage>* tomar = nullptr, bool documentos = true);
    // The operator's message for a fault: the system's own text first, then the cause.
    static PrinterMessage mensagem(PrinterFault f, bool documento, const QString& porta);
    static PrinterFault faultOf(const PrinterStatus& s);
    void avisarAgora(const PrinterMessage& m) { tell(m.title, m.text, m.icon); }
    bool fora() const { return m_down; }
    int linhasPendentes() const { return int(m_pending.size()); }
    // Pins the settings to a copy (the printing thread); unpinned, they are read at each call.
    void fixarConfig(const PrinterConfig& c) { m_pinned = c; }

    static int portaQuattro(const QString& porta); // LPT1 888, LPT2 632, COM1 1, COM2 2, else 0

    // Tests and the command line may replace how the transport is built and how time passes.
    std::function<std::unique_ptr<Transport>()> makeTransport;
    std::function<void(int)> sleep;
    // How failures reach the operator; the dialog port when not set.
    std::function<void(const QString& title, const QString& text, DialogIcon icon)> avisar;
    // A stamp waits for its document (the stamp's text), or stopped waiting (empty text).
    std::function<void(const QString& texto)> aguardandoDocumento;
    int documentTimeoutMs = 6000; // how long a stamp waits for the document
    // The second model's wait for the document: -1 reads [Print] quattro_espera, where empty or
    // 0 means until the document comes or the wait is cancelled.
    int quattroEsperaMs = -1;
    // Stops the document wait under way (the cashier gave up); safe from any thread.
    void cancelarEspera() { m_cancelWait = true; }
    int replyTimeoutMs = 1000;
    static constexpr int kMaxPendentes = 500; // tape lines kept while the printer is down

    static const QString kLabel; // "ImprimeAutenticadora"

private:
    PrinterConfig config() const;
    std::unique_ptr<Transport> transport() const;
    BematechProtocol& bematech();
    bool ensureBematechOpen();
    bool authenticateBematech(const QString& texto);
    bool authenticateQuattro(const QString& texto);
    bool print(PrinterModel modelo, const QString& texto);
    bool printBematech(const QString& texto);
    bool printQuattro(const QString& texto);
    void keep(const QString& texto);
    void dropPending();
    void fail(const QString& title, const QString& text, DialogIcon icon, bool down);
    void fail(PrinterFault f, bool documento, bool down);
    PrinterFault faultOfBematech(); // why the last operation of the first model failed
    PrinterFault sondar(PrinterModel m);
    void markDown();
    void tell(const QString& title, const QString& text, DialogIcon icon);

    AppContext& m_ctx;
    std::optional<PrinterConfig> m_pinned;
    std::unique_ptr<BematechProtocol> m_bema;
    QString m_openedOn;        // port, serial settings and code page of the open connection
    bool m_openFailed = false; // the last attempt to open the port failed
    bool m_portOpen = false;
    bool m_down = false; // failed for this customer: nothing more is tried
    bool m_told = false; // this customer's one message was shown
    bool m_closedAfterFailure = false;
    std::atomic<bool> m_cancelWait{false};
    QStringList m_pending;
    int m_dropped = 0;
};
