#pragma once

#include "Acrescimos.h"
#include "CashDay.h"
#include "CustomerList.h"
#include "OneOffItem.h"
#include "PaymentRecorder.h"

#include <QDate>
#include <QString>
#include <functional>

class AppContext;
class CounterPrinter;

// One run of the counter: the cash day, the current customer's list and the operations the
// counter screen and the command line share. Nothing of the rules lives in the screen.
class CounterSession {
public:
    CounterSession(AppContext& ctx, CounterPrinter* printer);

    AppContext& ctx() { return m_ctx; }
    CashDay& day() { return m_day; }
    CustomerList& list() { return m_list; }
    const CustomerList& list() const { return m_list; }

    // A 44-character entry: the reading routine, then the item-adding operation it chose.
    struct ReadResult {
        bool accepted = false;
        bool clearField = false;
        bool clearKind = false;
        bool showNetworkLabel = false;
        bool networkChecked = false;      // the network label is touched only when true
        QString resultado;                // the outcome's word ("aceito", "recebida" ...)
        QStringList mensagens;            // what the operator was shown
        std::optional<Encargos> encargos; // the overdue decision of a guide with a due date
    };
    ReadResult ler(const QString& code);
    // A typed 47/48-digit line: converted and then read exactly like a scanned code. A wrong
    // check digit names the field.
    ReadResult lerLinha(const QString& line);

    // Kinds offered by the counter's kind list: IDCOD and DESCRICAO.
    QList<QPair<int, QString>> kinds();
    // An item typed by kind and value (no barcode).
    bool adicionarDigitado(int idcod, const QString& descricao, const QString& valor);

    // The one-off sum: a kind and a typed value, charged like a guide when the kind charges
    // interest. Errors show the typed entry followed by " - Erro na Soma Avulso!!".
    ReadResult somaAvulso(const OneOffItem& item);

    // The common append of every item-adding operation; false (message shown) when the item
    // cannot be added.
    bool append(const CustomerItem& item);

    // "-": the amount tendered. Remembers it for the coupon.
    ChangeResult tender(const QString& text);
    QString paymentLabel() const { return m_paymentLabel; }
    // Whether Enter may record in the payment label's current state.
    bool mayRecord() const;

    // Enter: records the list, stamps the documents, prints the coupon when configured, appends
    // the control file and clears the list. nullopt when nothing was recorded.
    std::optional<QList<RecordedReceipt>> gravar();

    // Sum files (F11 / F12).
    bool salvarSoma();
    bool carregarSoma();

    // Receipts of the movement, newest first: IDRECEBE, AUTENTICA, DESCRICAO, VALOR.
    struct Lancado {
        qint32 idrecebe;
        qint16 autentica;
        QString descricao;
        Money valor;
    };
    QList<Lancado> lancados();
    QString lancadosHeading() const; // "Caixa dia: dd - MM - yyyy"

    void resetPayment();

    // The network check of the shared duplicate refusal; the system's by default.
    std::function<bool()> networkAlive;

    // The item-adding operations the reading routine hands a code to.
    bool Pagto_febraban(CustomerItem item, const QString& vencimento, const QString& valor,
                        const QString& juros, ReadResult& r);
    bool Pagto_cnab(CustomerItem item, const QDate& vencimento, const QString& valor,
                    const QString& juros, ReadResult& r);
    bool Pagto_diversos(CustomerItem item, const QDate& vencimento, const QString& valor);

private:
    bool addWithCharges(CustomerItem item, const QDate& vencimento, const QString& valor,
                        const QString& juros, ReadResult& r, const QString& routine);
    QString sumFilePath() const;

    AppContext& m_ctx;
    CounterPrinter* m_printer;
    CashDay m_day;
    CustomerList m_list;
    QString m_paymentLabel;
    ChangeResult m_change;
    QString m_tendered;
};
