#pragma once

#include "Acrescimos.h"

#include <QStringList>

class AppContext;

// The overdue handling of a guide being added, in two steps: `vencida` says whether the
// operator must consent (frmGuiavencida, asked by the caller), and `cobrar` computes the charges
// once consent is given, showing them on frmAcrescimos when the kind charges interest.
class OverdueHandler {
public:
    struct Charges {
        bool failed = false; // the charges could not be computed (logged)
        Encargos encargos;
    };

    // The due date after the weekend and holiday shift; true when it is before the working date.
    static bool vencida(AppContext& ctx, const QDate& vencimento, QDate* efetivo = nullptr);
    static Charges cobrar(AppContext& ctx, const QDate& vencimento, Money valor, bool comJuros,
                          const QString& routine);
    // The lines of frmAcrescimos, in order; the days line only beyond 90 days against `today`.
    static QStringList linhasAcrescimos(const Encargos& e, const QDate& today);

    static const QString kFormGuia;    // "frmGuiavencida"
    static const QString kCaptionGuia; // "Guia Vencida"
    static const QStringList kLinhasGuia;
    // frmGuiavencida's lines with the guide's due date and value before the question.
    static QStringList linhasGuia(const QDate& vencimento, Money valor);
};
