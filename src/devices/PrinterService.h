#pragma once

#include "BematechProtocol.h"

#include <QString>
#include <functional>
#include <memory>

class AppContext;

// The authenticating printer as the screens use it: the port kept open while a printing screen
// is shown (first model), and ImprimeAutenticadora for stamps and tape lines.
// Nothing is printed unless [Print] modo is 1. Every failure ends in the program's message.
// The authenticating printer models of [Print] impressora ("bematech", "quattro", "txt").
enum class PrinterModel { Bematech, Quattro, Txt, Desconhecido };
// What ImprimeAutenticadora does: nothing, stamp a document, or print a tape line.
enum class PrinterOperation { Nenhuma, Autenticar, Imprimir };

class PrinterService {
public:
    explicit PrinterService(AppContext& ctx);
    ~PrinterService();

    void abrirPorta();                    // on showing a printing screen
    void fecharPorta(bool counterScreen); // on closing it; the two screens word it differently
    // False when the printer reported a failure (the message was shown).
    bool ImprimeAutenticadora(PrinterOperation operacao, PrinterModel modelo, const QString& texto);
    // The configured model, for callers that pass it on.
    PrinterModel modelo() const;
    static PrinterModel modelFrom(const QString& setting);
    bool habilitada() const;
    PrinterStatus status();

    static int portaQuattro(const QString& porta); // LPT1 888, LPT2 632, COM1 1, COM2 2, else 0

    // Tests and the command line may replace how the transport is built and how time passes.
    std::function<std::unique_ptr<Transport>()> makeTransport;
    std::function<void(int)> sleep;
    int documentTimeoutMs = 6000; // how long a stamp waits for the document
    int replyTimeoutMs = 1000;

    static const QString kAbrirFalhou;
    static const QString kFecharFalhouCaixa;
    static const QString kFecharFalhouAutenticacao;
    static const QString kAutenticacaoFalhou;
    static const QString kTempoExcedido;
    static const QString kImpressaoFalhou;
    static const QString kSoParalela;

private:
    std::unique_ptr<Transport> transport() const;
    BematechProtocol& bematech();
    bool authenticateBematech(const QString& texto);
    bool authenticateQuattro(const QString& texto);
    bool printBematech(const QString& texto);
    bool printQuattro(const QString& texto);
    QString option(const char* key, const QString& fallback = {}) const;

    AppContext& m_ctx;
    std::unique_ptr<BematechProtocol> m_bema;
    bool m_portOpen = false;
};
