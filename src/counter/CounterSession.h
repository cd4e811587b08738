#pragma once

#include "Acrescimos.h"
#include "BarcodeReader.h"
#include "CashDay.h"
#include "CustomerList.h"
#include "GuideKind.h"
#include "OneOffItem.h"
#include "PaymentRecorder.h"
#include "ReceiptStamps.h"
#include "clsRecebimentos.h"

#include <QDate>
#include <QString>
#include <functional>
#include <optional>

class AppContext;
class CounterPrinter;

// One run of the counter: the cash day, the current customer's list and the operations the
// counter screen and the command line share. Nothing of the rules lives in the screen.
class CounterSession {
public:
    CounterSession(AppContext& ctx, CounterPrinter* printer);

    AppContext& ctx() { return m_ctx; }
    CounterPrinter* printer() const { return m_printer; }
    CashDay& day() { return m_day; }
    CustomerList& list() { return m_list; }
    const CustomerList& list() const { return m_list; }

    using Outcome = ReadingDecision::Outcome;

    // What came of an entry: the reading's decision and the item-adding operation it chose.
    struct ReadResult {
        Outcome resultado = Outcome::Ignorada;
        bool accepted = false;
        bool clearField = false;
        bool clearKind = false;
        bool showNetworkLabel = false;
        bool networkChecked = false;      // the network label is touched only when true
        QStringList mensagens;            // what the operator was shown
        std::optional<Encargos> encargos; // the overdue decision of a guide with a due date
        // An overdue guide waits for the operator's consent (frmGuiavencida): the caller asks
        // and answers with continuar(). Nothing is added until then.
        bool precisaConsentimento = false;
        QDate vencimento; // the guide waiting for consent: its due date and value
        Money valor;
    };

    // A 44-character entry: the reading routine, then the item-adding operation it chose.
    ReadResult ler(const QString& code);
    // A typed 47/48-digit line: converted and then read exactly like a scanned code. A wrong
    // check digit names the field.
    ReadResult lerLinha(const QString& line);
    // Whether the text is a typed line (47 or 48 digits once dots, spaces and dashes go).
    static bool pareceLinhaDigitavel(const QString& text);
    // Whether the text is the start of a typed line (11 digits or more, only digits, dots, spaces
    // and dashes): a "-" then belongs to the line, not to the amount tendered.
    static bool pareceInicioDeLinha(const QString& text);
    // The one-off sum: a kind and a value, charged like a guide when the kind charges interest.
    ReadResult somaAvulso(const OneOffItem& item);
    // The operator's answer to frmGuiavencida for the item waiting on it.
    ReadResult continuar(bool consentimento);
    bool aguardandoConsentimento() const { return m_pending.has_value(); }

    // Kinds offered by the counter's kind list.
    GuideKinds kinds();
    // An item typed by kind and value (no barcode).
    bool adicionarDigitado(int idcod, const QString& descricao, std::optional<Money> valor);

    // The common append of every item-adding operation; false (message shown) when the item
    // cannot be added.
    bool append(const CustomerItem& item);

    // "-": the amount tendered. Remembers it for the coupon.
    ChangeResult tender(Money paid);
    QString paymentLabel() const { return m_paymentLabel; }
    // Whether Enter may record in the payment label's current state.
    bool mayRecord() const;

    // Enter: records the list, stamps the documents, prints the coupon when configured, appends
    // the control file and clears the list. nullopt when nothing was recorded.
    std::optional<QList<RecordedReceipt>> gravar();

    // Items taken off the sum (F2, by number, F3). They are kept for the removed-items file.
    bool removerUltimo();
    CustomerList::RemoveResult removerNumero(const QString& answer);
    void limparSoma();
    const CustomerList& removidos() const { return m_removidos; }

    // Sum files (F11 / F12), with the removed-items file beside them. A loaded code goes
    // through the same duplicate refusals as a scan; a sum file whose items were all recorded is
    // emptied, so it cannot bring them back.
    bool salvarSoma();
    bool carregarSoma();

    // The documents of the last payment, or of one receipt of the movement by its
    // authentication number, stamped again. A document the printer already confirmed needs
    // Repetir::Sim (the outcome asks first); with Repetir::Nao only the others go.
    ReceiptStamps::Outcome
    reautenticarUltimo(ReceiptStamps::Repetir repetir = ReceiptStamps::Repetir::Perguntar);
    ReceiptStamps::Outcome
    reautenticar(int autentica, ReceiptStamps::Repetir repetir = ReceiptStamps::Repetir::Perguntar);
    // The movement's documents without a confirmed stamp: listed, and stamped in order.
    std::optional<QList<clsAutenticacoes::Pendente>> pendentes();
    ReceiptStamps::Outcome autenticarPendentes();
    const QList<RecordedReceipt>& ultimoPagamento() const { return m_ultimo; }

    // Receipts of the movement, newest first: everything, or a page below a receipt id.
    QList<clsRecebimentos::Lancado> lancados();
    QList<clsRecebimentos::Lancado> lancados(qint32 antesDe, int limite);
    // How many receipts the movement has, and their sum, counted by the database.
    std::optional<clsRecebimentos::Resumo> resumoLancados();
    QString lancadosHeading() const; // "Caixa dia: dd - MM - yyyy"

    void resetPayment();

    // The network check of the shared duplicate refusal; the system's by default.
    std::function<bool()> networkAlive;
    // The kind list as the reading fills it (empty for an unknown code) and selects its first
    // entry, before its notices.
    std::function<void(const GuideKinds&, bool selectFirst)> kindsFilled;

    // The item-adding operations the reading routine hands a code to.
    bool Pagto_febraban(CustomerItem item, const QDate& vencimento, Money valor, bool juros,
                        ReadResult& r);
    bool Pagto_cnab(CustomerItem item, const QDate& vencimento, Money valor, bool juros,
                    ReadResult& r);
    bool Pagto_diversos(CustomerItem item, const QDate& vencimento, Money valor);

private:
    struct Pending {
        CustomerItem item;
        QDate vencimento;
        Money valor;
        bool juros = false;
        QString routine;
    };
    bool addWithCharges(CustomerItem item, const QDate& vencimento, Money valor, bool juros,
                        ReadResult& r, const QString& routine);
    bool addCharged(const Pending& p, ReadResult& r);
    QString sumFilePath() const;
    QString removedFilePath() const;
    QString exportPath(const QString& key, const QString& fallback) const;
    void forgetSumFileIfRecorded(const QList<RecordedReceipt>& rows);

    AppContext& m_ctx;
    CounterPrinter* m_printer;
    CashDay m_day;
    CustomerList m_list;
    QString m_paymentLabel;
    ChangeResult m_change;
    std::optional<Money> m_tendered;
    std::optional<Pending> m_pending;
    CustomerList m_removidos;
    QList<CustomerItem> m_sumFile; // what the sum file holds, as saved or loaded here
    QList<RecordedReceipt> m_ultimo;
};
