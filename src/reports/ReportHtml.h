#pragma once

#include <QString>

struct DayBulletin;
struct PeriodReport;

// The reports as rich text (the subset of HTML Qt's text documents lay out), so the preview,
// the printer and the PDF show the same pages. Charts are referenced by the names in
// ReportHtml::kGrafico*; whoever renders the text supplies their pictures.
class ReportHtml {
public:
    static QString dia(const DayBulletin& b);
    static QString periodo(const PeriodReport& p);

    static const QString kGraficoDias;  // "grafico:dias"
    static const QString kGraficoTipos; // "grafico:tipos"
    static const QString kGraficoHoras; // "grafico:horas"

    static QString escape(const QString& text);
};
