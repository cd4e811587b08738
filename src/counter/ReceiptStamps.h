#pragma once

#include "DialogPort.h"
#include "PaymentRecorder.h"
#include "SystemTexts.h"
#include "clsAutenticacoes.h"

#include <QList>
#include <QString>
#include <optional>

class AppContext;
class CounterPrinter;

// The stamps of the counter's receipts: the printer's confirmations kept per receipt, the day's
// documents still without one, and the question before a document already stamped is stamped
// again. Nothing here opens a box: each operation says what came of it and the caller shows it.
class ReceiptStamps {
public:
    // Whether documents already stamped go out again.
    enum class Repetir { Perguntar, Sim, Nao };
    enum class Result {
        Enviado,          // sent to the printer; its confirmations are kept as they come
        PrecisaConfirmar, // some were stamped already: ask `texto`, then call again
        Nenhum,           // nothing to stamp
        NaoEncontrado,
        SemImpressora,
        Falhou
    };
    struct Outcome {
        Result result = Result::Nenhum;
        QString titulo, texto; // what to show (empty: nothing)
        DialogIcon icon = DialogIcon::None;
        QList<RecordedReceipt> enviados;
        // Nothing to stamp: the document asked for is not there, with why.
        static Outcome naoEncontrado(const QString& texto) {
            return {
                Result::NaoEncontrado, SystemTexts::aviso(), texto, DialogIcon::Exclamation, {}};
        }
    };

    ReceiptStamps(AppContext& ctx, CounterPrinter* printer) : m_ctx(ctx), m_printer(printer) {}

    // Stamps the receipts in the order given; those the printer already confirmed go out only
    // with Repetir::Sim, and Perguntar asks first ("já autenticado N vez(es)").
    Outcome autenticar(const QList<RecordedReceipt>& rows, Repetir repetir);
    // The movement's documents without a stamp, in order.
    Outcome autenticarPendentes(qint32 idMovimento);

    // The stamps the printer confirmed (receipt ids), counted with the time and the operator.
    // False when they could not be written (logged).
    static bool confirmados(AppContext& ctx, const QList<qint32>& idrecebes);
    static std::optional<QList<clsAutenticacoes::Pendente>> pendentes(AppContext& ctx,
                                                                      qint32 idMovimento);
    static RecordedReceipt receipt(const clsAutenticacoes::Pendente& p);
    // Whether the settings name a printer that stamps (an enabled first or second model): only
    // then is the cashier reminded of documents without a stamp.
    static bool autenticadoraAtiva(const AppContext& ctx);

private:
    AppContext& m_ctx;
    CounterPrinter* m_printer;
};
