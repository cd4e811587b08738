#include "CustomerList.h"

#include "DateUtil.h"
#include "SystemTexts.h"
#include "clsRecebimentos.h"

QString CustomerItem::kindColumn() const {
    return QStringLiteral("%1-%2").arg(tipo, 2, 10, QLatin1Char('0')).arg(descricao);
}

void CustomerList::append(CustomerItem item) {
    if (item.codbarra.isEmpty())
        item.codbarra = clsRecebimentos::kSemCodigo;
    m_items.append(std::move(item));
}

bool CustomerList::removeLast() {
    if (m_items.isEmpty())
        return false;
    m_items.removeLast();
    return true;
}

CustomerList::RemoveResult CustomerList::removeByNumber(const QString& answer) {
    const QString t = answer.trimmed();
    if (t.isEmpty())
        return RemoveResult::Empty;
    bool ok = false;
    const int n = t.toInt(&ok);
    if (!ok)
        return RemoveResult::NotANumber;
    if (n < 1 || n > m_items.size())
        return RemoveResult::NoSuchItem;
    m_items.removeAt(n - 1);
    return RemoveResult::Removed;
}

QString CustomerList::removeMessage(RemoveResult r) {
    switch (r) {
    case RemoveResult::Empty:
        return SystemTexts::text(SystemText::NenhumValorInformado);
    case RemoveResult::NotANumber:
        return SystemTexts::text(SystemText::ValorNaoNumero);
    case RemoveResult::NoSuchItem:
        return SystemTexts::text(SystemText::ValorNaoCorresponde);
    case RemoveResult::Removed:
        break;
    }
    return {};
}

Money CustomerList::runningTotal(int row) const {
    Money sum;
    for (int i = 0; i <= row && i < m_items.size(); ++i)
        sum += m_items[i].valor;
    return sum;
}

Money CustomerList::total() const {
    return runningTotal(size() - 1);
}

QString CustomerList::acimaDoLimite() const {
    // The sum saturates instead of wrapping, so a total beyond the ceiling stays beyond it.
    if (total().withinLimit())
        return {};
    return QStringLiteral("O total do cliente (%1) passa de %2. Nada foi gravado: divida o "
                          "pagamento em dois.")
        .arg(total().formatCurrency(), Money::maximum().formatCurrency());
}

QString CustomerList::text(int row, Column c) const {
    const CustomerItem& it = m_items.at(row);
    switch (c) {
    case Column::Numero:
        return QStringLiteral("%1").arg(row + 1, 2, 10, QLatin1Char('0'));
    case Column::Tipo:
        return it.kindColumn();
    case Column::Valor:
        return it.valor.format();
    case Column::Acumulado:
        return runningTotal(row).format();
    case Column::CodBarra:
        return it.codbarra;
    case Column::Vencimento:
        return it.vencimento.isValid() ? DateUtil::br(it.vencimento) : QString();
    case Column::Parcela:
        return it.parcela;
    case Column::Obs:
        return it.obs;
    }
    return {};
}

bool CustomerList::hasBarcodeStartingWith(const QString& code) const {
    for (const CustomerItem& it : m_items)
        if (it.codbarra.startsWith(code))
            return true;
    return false;
}

QStringList CustomerList::barcodes() const {
    QStringList out;
    for (const CustomerItem& it : m_items)
        out << it.codbarra;
    return out;
}

QStringList CustomerList::toLines() const {
    QStringList lines;
    for (int r = 0; r < size(); ++r) {
        QStringList cols;
        for (int c = 0; c < kColumns; ++c)
            cols << text(r, Column(c));
        lines << cols.join(QLatin1Char(';'));
    }
    return lines;
}

bool CustomerList::fromLines(const QStringList& lines, CustomerList& out) {
    CustomerList list;
    for (const QString& line : lines) {
        if (line.trimmed().isEmpty())
            continue;
        const QStringList cols = line.split(QLatin1Char(';'));
        if (cols.size() < kColumns)
            return false;
        CustomerItem it;
        bool ok = false;
        it.tipo = cols[1].left(2).toInt(&ok);
        const auto valor = Money::parse(cols[2]);
        if (!ok || !valor)
            return false;
        it.descricao = cols[1].mid(3);
        it.valor = *valor;
        it.codbarra = cols[4];
        if (!cols[5].isEmpty()) {
            const auto due = DateUtil::parseBr(cols[5]);
            if (!due)
                return false;
            it.vencimento = *due;
        }
        it.parcela = cols[6];
        it.obs = cols.mid(7).join(QLatin1Char(';'));
        list.append(it);
    }
    out = list;
    return true;
}

ChangeResult computeChange(Money paid, const CustomerList& list) {
    ChangeResult r;
    if (paid.isNegative()) {
        r.state = ChangeResult::State::AmountInvalid;
        return r;
    }
    if (list.isEmpty()) {
        r.label = QStringLiteral("Não tem ...");
        return r;
    }
    const Money total = list.total();
    if (paid > total) {
        r.state = ChangeResult::State::Change;
        r.difference = paid - total;
        r.label = QStringLiteral("Troco: ") + r.difference.formatCurrency();
    } else if (paid < total) {
        r.state = ChangeResult::State::Owes;
        r.difference = total - paid;
        r.label = QStringLiteral("Deve: ") + r.difference.formatCurrency();
    } else {
        // Exact amount: no change to give, said plainly.
        r.state = ChangeResult::State::Exact;
        r.label = QStringLiteral("Troco: ") + Money().formatCurrency();
    }
    return r;
}
