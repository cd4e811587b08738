#include "ReportPreview.h"
#include "SystemTexts.h"

#include "AppContext.h"
#include "DialogPort.h"
#include "OrdinaryPrinter.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPageLayout>
#include <QPageSize>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPushButton>
#include <QScreen>
#include <QTextDocument>
#include <QVBoxLayout>

ReportPreview::ReportPreview(AppContext& ctx, std::unique_ptr<QTextDocument> doc,
                             const QString& title, const QString& fileStem, QWidget* parent)
    : QDialog(parent), m_ctx(ctx), m_doc(std::move(doc)),
      m_layout(std::make_unique<QPrinter>(QPrinter::HighResolution)), m_stem(fileStem) {
    setObjectName(QStringLiteral("ReportPreview"));
    setWindowTitle(title);
    m_layout->setOutputFormat(QPrinter::PdfFormat); // lays out pages, never prints
    m_layout->setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                                        QMarginsF(5, 5, 5, 5), QPageLayout::Millimeter));
    m_preview = new QPrintPreviewWidget(m_layout.get(), this);
    m_preview->setObjectName(QStringLiteral("preview"));
    connect(m_preview, &QPrintPreviewWidget::paintRequested, this,
            [this](QPrinter* p) { m_doc->print(p); });

    auto* destino = new QLabel(this);
    destino->setObjectName(QStringLiteral("lblDestino"));
    const QString printer = OrdinaryPrinter::impressora(ctx);
    destino->setText(printer.isEmpty()
                         ? QStringLiteral("Sem impressora: o relatório será gravado em PDF em %1")
                               .arg(OrdinaryPrinter::pasta(ctx, OrdinaryPrinter::Pasta::Relatorios))
                         : QStringLiteral("Impressora: %1").arg(printer));
    auto* imprimirButton = new QPushButton(QStringLiteral("&Imprimir"), this);
    imprimirButton->setObjectName(QStringLiteral("cmdImprimir"));
    connect(imprimirButton, &QPushButton::clicked, this, &ReportPreview::imprimir);
    auto* fechar = new QPushButton(QStringLiteral("&Fechar"), this);
    fechar->setObjectName(QStringLiteral("cmdFechar"));
    connect(fechar, &QPushButton::clicked, this, &QDialog::reject);
    auto* zoomIn = new QPushButton(QStringLiteral("+"), this);
    connect(zoomIn, &QPushButton::clicked, m_preview, [this] { m_preview->zoomIn(); });
    auto* zoomOut = new QPushButton(QStringLiteral("-"), this);
    connect(zoomOut, &QPushButton::clicked, m_preview, [this] { m_preview->zoomOut(); });

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(zoomOut);
    buttons->addWidget(zoomIn);
    buttons->addWidget(destino, 1);
    buttons->addWidget(imprimirButton);
    buttons->addWidget(fechar);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_preview, 1);
    layout->addLayout(buttons);
    // Tall enough for a page, never taller than the screen: the buttons stay in reach.
    const QRect room = screen() ? screen()->availableGeometry() : QRect(0, 0, 900, 1000);
    resize(qMin(900, room.width()), qMin(1000, room.height() - 40));
    m_preview->fitToWidth();
}

ReportPreview::~ReportPreview() = default;

void ReportPreview::imprimir() {
    const OrdinaryPrinter::Resultado r = OrdinaryPrinter::imprimir(m_ctx, *m_doc, m_stem);
    if (r.ok)
        m_ctx.dialogs.info(SystemTexts::aviso(), OrdinaryPrinter::aviso(r));
    else
        m_ctx.dialogs.critical(SystemTexts::aviso(), OrdinaryPrinter::aviso(r));
}
