#pragma once

#include <QString>
#include <QStringList>

class AppContext;

// The coupon of the "txt" model on the ordinary printer (OrdinaryPrinter), or as a PDF in
// Cupons/ when the workstation has no printer.
class TextCouponPrinter {
public:
    static bool imprimir(AppContext& ctx, const QStringList& lines);
};
