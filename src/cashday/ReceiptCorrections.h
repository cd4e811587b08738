#pragma once

#include "CorrectionLog.h"
#include "CounterPrinter.h"
#include "clsEstornos.h"
#include "clsMovimento.h"
#include "clsRecebimentos.h"

#include <QStringList>
#include <optional>

class AppContext;
class clsAutenticadora;

// Corrections of the working day's receipts: a change (type, authentication number, barcode,
// amount), a reversal (the receipt leaves Recebimentos) and the undoing of a reversal. Each
// writes the database first, in one transaction with the Estornos row that keeps the receipt as
// it was; then the yearly log; then the tape. A failed database write leaves log and tape
// untouched; a printer that fails does not undo what was recorded. The screen and the commands
// call these operations; questions are theirs to ask.
class ReceiptCorrections {
public:
    ReceiptCorrections(AppContext& ctx, CounterPrinter* printer);

    // A change as typed: a field left out (nullopt) keeps the receipt's value.
    struct Pedido {
        qint32 idrecebe = 0;
        std::optional<QString> tipo;
        std::optional<QString> autentica;
        std::optional<QString> codbarra;
        std::optional<QString> valor;
        QString motivo;
    };
    // What a receipt becomes.
    struct Valores {
        qint16 tipo = 0;
        qint32 autentica = 0;
        QString codbarra;
        Money valor;
    };
    struct Resultado {
        bool feito = false;
        std::optional<clsRecebimentos> antes;  // the receipt as it was
        std::optional<clsRecebimentos> depois; // as it is now (change, undo)
        QStringList linhasFita;
        CounterPrinter::Fita fita = CounterPrinter::Fita::SemImpressora;
        QString arquivoBanco;    // the bank files that had already carried the receipt
        bool registrado = false; // the log entry was appended
        QString arquivo;         // the log file
    };

    // The working day's movement; nullopt when the day has none.
    std::optional<clsMovimento> movimento();
    // The movement's receipts with their kinds, newest first; with `autentica`, that one only.
    // nullopt when the read failed (reported under "Função Lista_Movimento_dia").
    std::optional<QList<clsRecebimentos::Corrigivel>> listar(std::optional<qint32> autentica = {});
    // The movement's reversals that can still be undone, newest first.
    std::optional<QList<clsEstornos>> estornosRevertiveis();
    // The description of a kind, or its number when it has none.
    QString descricaoTipo(qint16 idcod);

    // "Confirma exclusão deste item? - 005", and the bank files that already carried it.
    static QString perguntaEstorno(qint32 autentica, const QString& arquivos = {});
    // The bank files that carried the receipt ("CnabAGUA202611231030.RET (NSA 3)"), or empty.
    QString arquivosBanco(qint32 idrecebe);
    static QString avisoArquivoBanco(qint32 autentica, const QString& arquivos);
    static QString perguntaReversao(qint32 autentica);

    // What can be refused before the question is asked (message shown).
    bool podeEstornar(qint32 idrecebe, const QString& motivo);
    Resultado estornar(qint32 idrecebe, const QString& motivo);

    Resultado alterar(const Pedido& p);
    Resultado alterar(qint32 idrecebe, const Valores& novo, const QString& motivo);

    // The database is the truth: every reversal, change and undoing kept in Estornos has its
    // entry in the yearly log of its year. Entries missing (a crash between the commit and the
    // log) are appended, each once. Run before each correction, by `estornos` and when a day
    // is opened. Answers how many were added; nullopt (reported in Log.ini) on a failure.
    std::optional<int> completarRegistro();

    bool podeReverter(qint32 idrecebe);
    Resultado reverter(qint32 idrecebe);

    static const QString kMotivoObrigatorio; // "Um motivo deve ser especificado!!"
    static const QString kExcluido;          // "Exclusão efetuada com sucesso!!"
    static const QString kAlterado;          // "Operação efetuada com sucesso!!"
    static const QString kErroGravar;        // "Erro ao gravar"
    static const QString kRevertido;         // "Revertido com sucesso!!"
    static const QString kErroReverter;      // "Erro ao reverter arquivo! "
    static const QString kValorInvalido;
    static const QString kAutenticaInvalida;
    static const QString kAutenticaAcimaDoLimite; // beyond what the files carry
    static const QString kCodigoInvalido;
    static const QString kTipoInvalido;
    static const QString kPadraoDiferente; // %1 the new kind's code, %2 the standard
    static const QString kNadaAlterado;
    static const QString kAutenticaEmUso; // %1: the number
    static const QString kContaRecebida;  // "Conta já Recebida!!!"
    static const QString kEncerrado;
    static const QString kSemMovimento;
    static const QString kNaoEncontrado;
    static const QString kSemEstorno;
    static const QString kRegistroBloqueado; // %1: the log file
    static const QString kRegistroFalhou;    // %1: why
    static const QString kFitaFalhou;
    static const QString kLinhaImpressao; // "Erro na geração da linha de impressão!!!"

private:
    bool motivoDado(const QString& motivo);
    QString recusaRecebimento(qint32 idrecebe, clsRecebimentos& r, clsMovimento& mov);
    // A number or code (those given) that another receipt than `idrecebe` already carries.
    QString recusaNumeroECodigo(qint32 idrecebe, std::optional<qint32> autentica,
                                const std::optional<QString>& codbarra, qint32 idMovimento);
    QString recusaEstorno(qint32 idrecebe, clsEstornos& e, clsMovimento& mov);
    QString recusaRegistro();
    std::optional<Valores> lerPedido(const Pedido& p, const clsRecebimentos& atual);
    void refuse(const QString& text);
    void registrar(const CorrectionLog::Entry& e, Resultado& res);
    // After a reversal or change of a receipt a bank file already carried: the operator is told.
    void avisarArquivo(const clsRecebimentos& r, Resultado& res);
    CorrectionLog::Entry entrada(CorrectionLog::Kind kind, const clsMovimento& mov,
                                 const clsRecebimentos& r, const QString& motivo);
    // The lines go to the tape, or "Erro na geração..." when one could not be composed.
    void imprimir(const QStringList& linhas, bool composta, Resultado& res);
    clsEstornos registroDe(const clsRecebimentos& r, clsEstornos::Operacao op,
                           const QString& motivo);
    // False, with its message shown, when the transaction refused or failed.
    bool concluido(const QString& recusa, bool gravou, const QString& erro);
    // After a reversal or its undoing: the log entry, the success and the one tape line.
    void concluirItem(CorrectionLog::Kind kind, const clsMovimento& mov, const clsRecebimentos& r,
                      const QString& motivo, const QString& aviso,
                      bool (clsAutenticadora::*linha)(), Resultado& res);
    static QString numero(int n);
    // The administrator who allowed the correction (the operator when none was named).
    QString autorizou() const;
    // The people of a correction, chained with its Estornos row.
    bool registrarAto(const QString& ato, qint32 idEstorno);
    QString operadorDoAto(const QString& ato, qint32 idEstorno);
    // "OPER: ANA AUT: CHEFE": the tape line naming them, printed when an administrator allowed
    // the correction.
    QString linhaPessoas() const;
    static inline const QString kAtoEstorno = QStringLiteral("Estorno");
    static inline const QString kAtoAlteracao = QStringLiteral("Alteração");
    static inline const QString kAtoReversao = QStringLiteral("Reversão");

    AppContext& m_ctx;
    CounterPrinter* m_printer;
    CorrectionLog m_log;
};
