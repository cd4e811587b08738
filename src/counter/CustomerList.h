#pragma once

#include "Acrescimos.h"
#include "Money.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

// One item of the customer's running list (a row of lstSoma).
struct CustomerItem {
    int tipo = 0;      // CodBarra.IDCOD, 1 to 99
    QString descricao; // the kind's description
    Money valor;
    QString codbarra; // as read, or the 44 zeros
    QDate vencimento; // invalid when the item has none
    QString parcela;
    QString obs;
    // Charges shown to the operator when the item was added (zero when none).
    Money valorOriginal;
    Money juros;
    Money multa;
    std::optional<Encargos> encargos; // the overdue decision, for guides that had one

    QString kindColumn() const; // "04-IPTU": the receipt's TIPO is its first two characters
};

// The customer's items, in the order they were added, with the running total. The counter
// screen shows it; recording a payment reads it.
class CustomerList {
public:
    enum class Column { Numero, Tipo, Valor, Acumulado, CodBarra, Vencimento, Parcela, Obs };
    static constexpr int kColumns = 8;

    enum class RemoveResult { Removed, Empty, NotANumber, NoSuchItem };

    void append(CustomerItem item);
    bool removeLast();
    // The operator's answer to "Informe o número do item a excluir?".
    RemoveResult removeByNumber(const QString& answer);
    static QString removeMessage(RemoveResult r);
    void clear() { m_items.clear(); }

    int size() const { return int(m_items.size()); }
    bool isEmpty() const { return m_items.isEmpty(); }
    const CustomerItem& at(int i) const { return m_items.at(i); }
    const QList<CustomerItem>& items() const { return m_items; }
    Money total() const;
    // The customer's total passes R$ 999.999.999,99: the refusal to show; empty when it does not.
    QString acimaDoLimite() const;
    Money runningTotal(int row) const;
    QString text(int row, Column c) const;

    // The list search of the reading routine: an item whose barcode begins with `code`.
    bool hasBarcodeStartingWith(const QString& code) const;
    QStringList barcodes() const;

    // Sum file: one line per row, columns joined by ";", amounts "#,##0.00".
    QStringList toLines() const;
    static bool fromLines(const QStringList& lines, CustomerList& out);

private:
    QList<CustomerItem> m_items;
};

// The "-" key: the amount tendered against the customer's total.
struct ChangeResult {
    enum class State { AmountInvalid, NoItems, Change, Owes, Exact };
    State state = State::NoItems;
    Money difference;
    QString label; // what lblTroco shows
};
ChangeResult computeChange(Money tendered, const CustomerList& list);
