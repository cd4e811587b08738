#include "OrdinaryPrinter.h"

#include "AppContext.h"
#include "Clock.h"
#include "SystemTexts.h"

#include <QDir>
#include <QFileInfo>
#include <QPageLayout>
#include <QPageSize>
#include <QPrinter>
#include <QPrinterInfo>
#include <QTextDocument>

QString OrdinaryPrinter::pasta(const AppContext& ctx, Pasta p) {
    return ctx.filePath(p == Pasta::Cupons ? QStringLiteral("Cupons")
                                           : QStringLiteral("Relatorios"));
}

QString OrdinaryPrinter::impressora(const AppContext& ctx) {
    const QString chosen = ctx.settings.impressora_padrao.trimmed();
    const QPrinterInfo info =
        chosen.isEmpty() ? QPrinterInfo::defaultPrinter() : QPrinterInfo::printerInfo(chosen);
    return info.isNull() ? QString() : info.printerName();
}

OrdinaryPrinter::Destino OrdinaryPrinter::preparar(AppContext& ctx, QPrinter& printer, Pasta p,
                                                   const QString& nome) {
    Destino d;
    d.impressora = impressora(ctx);
    if (!d.impressora.isEmpty()) {
        printer.setPrinterName(d.impressora);
        return d;
    }
    const QString dir = pasta(ctx, p);
    QDir().mkpath(dir);
    // The moment to the millisecond, and a number after it if that is taken: never a file over
    // another.
    const QString stem = QStringLiteral("%1_%2").arg(
        nome, ctx.clock.now().toString(QStringLiteral("yyyyMMdd_hhmmss_zzz")));
    d.pdf = QDir(dir).filePath(stem + QStringLiteral(".pdf"));
    for (int n = 2; QFileInfo::exists(d.pdf); ++n)
        d.pdf = QDir(dir).filePath(QStringLiteral("%1_%2.pdf").arg(stem).arg(n));
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(d.pdf);
    return d;
}

OrdinaryPrinter::Resultado OrdinaryPrinter::imprimir(AppContext& ctx, QTextDocument& doc,
                                                     const QString& nome) {
    QPrinter printer(QPrinter::HighResolution);
    Resultado r;
    r.destino = preparar(ctx, printer, Pasta::Relatorios, nome);
    printer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                                      QMarginsF(5, 5, 5, 5), QPageLayout::Millimeter));
    printer.setDocName(nome);
    doc.print(&printer);
    r.ok = printer.printerState() != QPrinter::Error &&
           (r.destino.pdf.isEmpty() || QFileInfo(r.destino.pdf).size() > 0);
    if (!r.ok)
        r.problema = r.destino.pdf.isEmpty()
                         ? QStringLiteral("Erro ao imprimir em %1.").arg(r.destino.impressora)
                         : QStringLiteral("O arquivo %1 não pôde ser gravado.").arg(r.destino.pdf);
    return r;
}

QString OrdinaryPrinter::aviso(const Resultado& r) {
    if (!r.ok)
        return r.problema;
    if (!r.destino.pdf.isEmpty())
        return SystemTexts::text(SystemText::RelatorioEmPdf)
            .arg(QDir::toNativeSeparators(r.destino.pdf));
    return SystemTexts::text(SystemText::RelatorioEnviado).arg(r.destino.impressora);
}
