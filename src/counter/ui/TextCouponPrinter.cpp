#include "TextCouponPrinter.h"

#include "AppContext.h"
#include "Clock.h"

#include <QDir>
#include <QFont>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>

bool TextCouponPrinter::imprimir(AppContext& ctx, const QStringList& lines) {
    QPrinterInfo info = ctx.settings.impressora_padrao.trimmed().isEmpty()
                            ? QPrinterInfo::defaultPrinter()
                            : QPrinterInfo::printerInfo(ctx.settings.impressora_padrao.trimmed());
    QPrinter printer(QPrinter::HighResolution);
    if (!info.isNull()) {
        printer.setPrinterName(info.printerName());
    } else {
        const QString dir = ctx.filePath(QStringLiteral("Cupons"));
        QDir().mkpath(dir);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(QDir(dir).filePath(
            QStringLiteral("cupom_%1.pdf")
                .arg(ctx.clock.now().toString(QStringLiteral("yyyyMMdd_hhmmss_zzz")))));
    }
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
