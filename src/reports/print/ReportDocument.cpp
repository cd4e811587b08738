#include "ReportDocument.h"

#include "DayBulletin.h"
#include "PeriodReport.h"
#include "ReportCharts.h"
#include "ReportFile.h"
#include "ReportHtml.h"

#include <QFile>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QTextDocument>
#include <QUrl>

namespace {

std::unique_ptr<QTextDocument> fromHtml(const QString& html) {
    auto doc = std::make_unique<QTextDocument>();
    QFont font(QStringLiteral("DejaVu Sans"), 9);
    doc->setDefaultFont(font);
    doc->setHtml(html);
    return doc;
}

} // namespace

std::unique_ptr<QTextDocument> ReportDocument::dia(const DayBulletin& b) {
    return fromHtml(ReportHtml::dia(b));
}

std::unique_ptr<QTextDocument> ReportDocument::periodo(const PeriodReport& p) {
    auto doc = std::make_unique<QTextDocument>();
    doc->setDefaultFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    // The pictures go in before the text that names them.
    doc->addResource(QTextDocument::ImageResource, QUrl(ReportHtml::kGraficoDias),
                     ReportCharts::dias(p, QSize(640, 260)));
    doc->addResource(QTextDocument::ImageResource, QUrl(ReportHtml::kGraficoTipos),
                     ReportCharts::tipos(p, QSize(640, 300)));
    doc->addResource(QTextDocument::ImageResource, QUrl(ReportHtml::kGraficoHoras),
                     ReportCharts::horas(p, QSize(640, 260)));
    doc->setHtml(ReportHtml::periodo(p));
    return doc;
}

bool ReportDocument::gravarPdf(QTextDocument& doc, const QString& path, const QString& title,
                               QString* why) {
    if (const QString refused = ReportFile::recusa(path); !refused.isEmpty()) {
        if (why)
            *why = refused;
        return false;
    }
    const QString temp = ReportFile::temporario(path);
    {
        QPdfWriter pdf(temp);
        pdf.setTitle(title);
        pdf.setCreator(QStringLiteral("Tolvane"));
        pdf.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                                      QMarginsF(5, 5, 5, 5), QPageLayout::Millimeter));
        doc.print(&pdf);
    }
    if (QFile(temp).size() <= 0) {
        QFile::remove(temp);
        if (why)
            *why = QStringLiteral("O arquivo %1 não pôde ser gravado.").arg(path);
        return false;
    }
    return ReportFile::publicar(temp, path, why);
}
