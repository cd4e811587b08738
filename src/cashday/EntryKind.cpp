#include "EntryKind.h"

namespace EntryKinds {

QString tipo(EntryKind k) {
    switch (k) {
    case EntryKind::CashIn:
        return QStringLiteral("ENTRADA");
    case EntryKind::PaymentOut:
        return QStringLiteral("SAIDA");
    case EntryKind::Withdrawal:
        break;
    }
    return QStringLiteral("SANGRIA");
}

std::optional<EntryKind> fromTipo(const QString& t) {
    for (EntryKind k : {EntryKind::CashIn, EntryKind::PaymentOut, EntryKind::Withdrawal})
        if (t.trimmed().compare(tipo(k), Qt::CaseInsensitive) == 0)
            return k;
    return std::nullopt;
}

QString caption(EntryKind k) {
    switch (k) {
    case EntryKind::CashIn:
        return QStringLiteral("Abertura e Lançamentos de Caixa");
    case EntryKind::PaymentOut:
        return QStringLiteral("Pagamentos de Empenhos (Saídas)");
    case EntryKind::Withdrawal:
        break;
    }
    return QStringLiteral("Retiradas de Caixa (Sangria)");
}

QString defaultDescription(EntryKind k) {
    switch (k) {
    case EntryKind::CashIn:
        return QStringLiteral("ABERTURA DE CAIXA");
    case EntryKind::PaymentOut:
        return {};
    case EntryKind::Withdrawal:
        break;
    }
    return QStringLiteral("RETIRADAS DE CAIXA");
}

bool descriptionEditable(EntryKind k) {
    return k == EntryKind::PaymentOut;
}

Act act(EntryKind k) {
    return k == EntryKind::PaymentOut ? Act::Pagamento : Act::EntradaSangria;
}

} // namespace EntryKinds
