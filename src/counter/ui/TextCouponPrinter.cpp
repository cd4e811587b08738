#include "TextCouponPrinter.h"

#include "AppContext.h"
#include "OrdinaryPrinter.h"

#include <QFont>
#include <QPainter>
#include <QPrinter>

bool TextCouponPrinter::imprimir(AppContext& ctx, const QStringList& lines) {
    QPrinter printer(QPrinter::HighResolution);
    OrdinaryPrinter::preparar(ctx, printer, OrdinaryPrinter::Pasta::Cupons,
                              QStringLiteral("cupom"));
    printer.setPageSize(QPageSize(QSizeF(80, 200), QPageSize::Millimeter));
    printer.setPageMargins(QMarginsF(4, 4, 4, 4), QPageLayout::Millimeter);
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    QFont font(QStringLiteral("Monospace"), 8);
    font.setStyleHint(QFont::TypeWriter);
    painter.setFont(font);
    const int step = painter.fontMetrics().lineSpacing();
    int y = step;
    for (const QString& l : lines) {
        painter.drawText(0, y, l);
        y += step;
    }
    return painter.end();
}
