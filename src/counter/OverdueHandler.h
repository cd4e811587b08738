#pragma once

#include "Acrescimos.h"

#include <QStringList>

class AppContext;

// The overdue handling of a guide being added: the weekend and holiday shift, the operator's
// consent on frmGuiavencida, and the charges shown on frmAcrescimos when the kind charges them.
class OverdueHandler {
public:
    struct Outcome {
        bool refused = false; // the operator said no: nothing is added
        bool failed = false;  // the charges could not be computed (logged)
        Encargos encargos;
    };

    static Outcome handle(AppContext& ctx, const QDate& vencimento, Money valor, bool comJuros,
                          const QString& routine);
    // The lines of frmAcrescimos, in order; the days line only beyond 90 days against `today`.
    static QStringList linhasAcrescimos(const Encargos& e, const QDate& today);
    static Acrescimos::IsHoliday holidays(AppContext& ctx);

    static const QString kCaptionGuia;
    static const QStringList kLinhasGuia;
};
