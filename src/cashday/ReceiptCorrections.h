#pragma once

#include "CorrectionJournal.h"
#include "CorrectionRecord.h"
#include "CorrectionRequest.h"
#include "CorrectionResult.h"
#include "CorrectionTape.h"
#include "SystemTexts.h"
#include "clsEstornos.h"
#include "clsMovimento.h"
#include "clsRecebimentos.h"

#include <optional>

class AppContext;

// Corrections of the working day's receipts: a change (type, authentication number, barcode,
// amount), a reversal (the receipt leaves Recebimentos) and the undoing of a reversal. Each is
// recorded first (CorrectionRecord, one transaction); then the central is fed, the yearly log
// written (CorrectionJournal) and the tape printed (CorrectionTape). A refused or failed record
// leaves log and tape untouched; a printer that fails does not undo what was recorded. Nothing
// is told here: the result carries what to tell, and the screen or the command tells it.
class ReceiptCorrections {
public:
    using Pedido = CorrectionRequest;
    using Valores = CorrectionValues;
    using Resultado = CorrectionResult;

    ReceiptCorrections(AppContext& ctx, CounterPrinter* printer);
    ReceiptCorrections(const ReceiptCorrections&) = delete; // the record keeps the journal's log
    ReceiptCorrections& operator=(const ReceiptCorrections&) = delete;

    // The working day's movement; nullopt when the day has none.
    std::optional<clsMovimento> movimento();
    // The movement's receipts with their kinds, newest first; with `autentica`, that one only.
    // nullopt when the read failed (reported under "Função Lista_Movimento_dia").
    std::optional<QList<clsRecebimentos::Corrigivel>> listar(std::optional<qint32> autentica = {});
    // The movement's reversals that can still be undone, newest first.
    std::optional<QList<clsEstornos>> estornosRevertiveis();
    QString descricaoTipo(qint16 idcod) { return m_journal.descricaoTipo(idcod); }
    QString arquivosBanco(qint32 idrecebe) { return m_journal.arquivosBanco(idrecebe); }

    // "Confirma exclusão deste item? - 005", and the bank files that already carried it.
    static Notice perguntaEstorno(qint32 autentica, const QString& arquivos = {});
    static Notice avisoArquivoBanco(qint32 autentica, const QString& arquivos);
    static Notice perguntaReversao(qint32 autentica);

    // What refuses a reversal before the question is asked; empty when nothing does.
    Notice recusaEstorno(qint32 idrecebe, const QString& motivo);
    Resultado estornar(qint32 idrecebe, const QString& motivo);

    Resultado alterar(const Pedido& p);
    Resultado alterar(qint32 idrecebe, const Valores& novo, const QString& motivo);

    // The database is the truth: every reversal, change and undoing kept in Estornos has its
    // entry in the yearly log of its year. Run before each correction, by `estornos` and when
    // a day is opened. Answers how many were added; nullopt (reported in Log.ini) on a failure.
    std::optional<int> completarRegistro() { return m_journal.completar(); }

    // What refuses the undoing of a reversal; empty when nothing does.
    Notice recusaReversao(qint32 idrecebe);
    Resultado reverter(qint32 idrecebe);

private:
    // After the record: the central fed (when told to), the log entry and the success.
    Resultado concluir(bool enviar, const CorrectionLog::Entry& e, SystemText sucesso);
    // After a reversal or change of a receipt a bank file already carried: the operator is told.
    void avisarArquivo(const clsRecebimentos& r, Resultado& res);

    AppContext& m_ctx;
    CorrectionJournal m_journal;
    CorrectionRecord m_record;
    CorrectionTape m_tape;
};
