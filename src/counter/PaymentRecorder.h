#pragma once

#include "CustomerList.h"

#include <QDateTime>
#include <QList>
#include <optional>

class AppContext;
class clsMovimento;

struct RecordedReceipt {
    qint32 idrecebe = 0;
    qint32 autentica = 0;
    CustomerItem item;
    QDateTime momento; // when it was recorded
};

// Records one customer's items as receipts: consecutive authentication numbers after the
// movement's highest, one row per item in list order, all in one transaction so a failure
// records nothing and the operator can simply try again.
//
// Whatever screen or command asks, a code is never written twice: inside the transaction, which
// holds the database's write lock, every code that may be received once (not the 44 zeros nor
// codes starting "000") is looked up again among all the receipts and within the list itself,
// and the whole payment is refused when one is found. The unique index of Recebimentos stands
// behind this check. With a central database that answers, the codes are first claimed there,
// all or none, so no other counter can record them meanwhile; a code another counter holds
// refuses the whole payment, and a claim whose payment is then not recorded is let go. Each
// code also goes into the outbox in the same transaction, and is sent after the commit. Every
// message is shown once the transaction has ended.
class PaymentRecorder {
public:
    // nullopt when nothing was recorded (message shown, except for an empty list). "Registro
    // Gravado!!!" is the caller's to show, once it knows what the printer said.
    static std::optional<QList<RecordedReceipt>> record(AppContext& ctx, const clsMovimento& mov,
                                                        const CustomerList& list);

private:
    // Claims at the central, then records; `why` is what to tell when nothing was recorded.
    static std::optional<QList<RecordedReceipt>> claimAndRecord(AppContext& ctx,
                                                                const clsMovimento& mov,
                                                                const CustomerList& list,
                                                                QString& why);
    static std::optional<QList<RecordedReceipt>>
    recordLocally(AppContext& ctx, const clsMovimento& mov, const CustomerList& list, QString& why);
    // Why the list cannot be recorded as it stands (a code already received or listed twice, an
    // amount out of range), or empty. Asked under the write lock.
    static QString refusal(AppContext& ctx, const CustomerList& list);
};
