#pragma once

#include <QDialog>
#include <QString>
#include <memory>

class AppContext;
class QPrinter;
class QPrintPreviewWidget;
class QTextDocument;

// A report's pages on the screen before they go anywhere: "Imprimir" sends them to the ordinary
// printer (or, without one, to a PDF in the reports' folder) and the operator is told where.
class ReportPreview : public QDialog {
    Q_OBJECT
public:
    ReportPreview(AppContext& ctx, std::unique_ptr<QTextDocument> doc, const QString& title,
                  const QString& fileStem, QWidget* parent = nullptr);
    ~ReportPreview() override;

    QTextDocument& document() { return *m_doc; }
    void imprimir();

private:
    AppContext& m_ctx;
    std::unique_ptr<QTextDocument> m_doc;
    std::unique_ptr<QPrinter> m_layout; // A4, only for the preview's pages
    QString m_stem;
    QPrintPreviewWidget* m_preview = nullptr;
};
