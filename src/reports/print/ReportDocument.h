#pragma once

#include <QString>
#include <memory>

class QTextDocument;
struct DayBulletin;
struct PeriodReport;

// A report laid out as an A4 document by Qt's text engine: the same pages in the preview, on
// the printer and in the PDF.
class ReportDocument {
public:
    static std::unique_ptr<QTextDocument> dia(const DayBulletin& b);
    static std::unique_ptr<QTextDocument> periodo(const PeriodReport& p);
    // Writes an A4 PDF at `path`, which must not exist (see ReportFile).
    static bool gravarPdf(QTextDocument& doc, const QString& path, const QString& title,
                          QString* why);
};
