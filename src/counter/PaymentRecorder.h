#pragma once

#include "CustomerList.h"

#include <QList>
#include <optional>

class AppContext;
class clsMovimento;

struct RecordedReceipt {
    qint32 idrecebe = 0;
    qint16 autentica = 0;
    CustomerItem item;
};

// Records one customer's items as receipts: consecutive authentication numbers after the
// movement's highest, one row per item in list order, all in one transaction so a failure
// records nothing and the operator can simply try again.
class PaymentRecorder {
public:
    static const QString kGravado;   // "Registro Gravado!!!"
    static const QString kEncerrado; // refusal on a closed day
    static const QString kFalhou;    // nothing was recorded

    // nullopt when nothing was recorded (message shown, except for an empty list).
    static std::optional<QList<RecordedReceipt>> record(AppContext& ctx, const clsMovimento& mov,
                                                        const CustomerList& list);
};
