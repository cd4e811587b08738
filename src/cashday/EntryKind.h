#pragma once

#include "Permissions.h"

#include <QString>
#include <optional>

// The three kinds of cash entry (Sangria.TIPO): money put into the till, payments out and
// withdrawals to the safe.
enum class EntryKind { CashIn, PaymentOut, Withdrawal };

namespace EntryKinds {

QString tipo(EntryKind k);                              // "ENTRADA", "SAIDA", "SANGRIA"
std::optional<EntryKind> fromTipo(const QString& tipo); // case-insensitive
QString caption(EntryKind k);                           // the entry screen's title
// The fixed description of opening entries and withdrawals; empty for payments, whose
// description the operator types.
QString defaultDescription(EntryKind k);
bool descriptionEditable(EntryKind k);
// The act of the permission table an entry of this kind is: entries and withdrawals are one,
// payments out another.
Act act(EntryKind k);

} // namespace EntryKinds
