#include "frmAutenticar.h"
#include "SystemTexts.h"

#include "AppContext.h"
#include "Clock.h"
#include "DateUtil.h"
#include "DialogPort.h"
#include "DocumentStamp.h"
#include "Money.h"
#include "PrinterService.h"
#include "PrinterWorker.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

frmAutenticar::frmAutenticar(AppContext& ctx, QWidget* parent) : QDialog(parent), m_ctx(ctx) {
    setObjectName(QStringLiteral("frmAutenticar"));
    setWindowTitle(QStringLiteral("Autenticação de Documentos"));
    // With the counter up, its printer thread stamps; otherwise a printer thread of this screen
    // does. Either way the screen never waits for the document or the printer's answer.
    if (!ctx.printerJobs) {
        m_own = std::make_unique<PrinterWorker>(ctx);
        connect(m_own.get(), &PrinterWorker::aviso, this,
                [this](const QString& title, const QString& text, int icon) {
                    m_ctx.dialogs.message(title, text, DialogIcon(icon), DialogButtons::Ok);
                });
    }
    const QDate day = ctx.workingDate.isValid() ? ctx.workingDate : ctx.clock.today();
    auto info = [this](const char* name, const QString& text) {
        auto* l = new QLabel(text, this);
        l->setObjectName(QLatin1String(name));
        return l;
    };
    const QString header = DocumentStamp::header(
        ctx.option(QStringLiteral("Print"), QStringLiteral("cabecalho")), ctx.settings.cabecalho);
    m_valor = new QLineEdit(this);
    m_valor->setObjectName(QStringLiteral("mskvalor"));
    m_valor->setPlaceholderText(QStringLiteral("0,00"));
    m_valor->setMaximumWidth(160);
    QFont big = m_valor->font();
    big.setPointSize(14);
    m_valor->setFont(big);
    m_ultima = info("lblUltima", QString());
    m_ultima->setFont(QFont(QStringLiteral("Monospace")));

    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Cabeçalho:"),
                 info("lblCabecalho", header.isEmpty() ? QStringLiteral("(nenhum)") : header));
    form->addRow(QStringLiteral("Guichê:"), info("lblGuiche", ctx.settings.guiche.trimmed()));
    form->addRow(QStringLiteral("Data:"), info("lblData", DateUtil::br(day)));
    form->addRow(QStringLiteral("Valor do documento:"), m_valor);
    form->addRow(QStringLiteral("Última autenticação:"), m_ultima);
    auto* go = new QPushButton(QStringLiteral("&Autenticar"), this);
    go->setObjectName(QStringLiteral("cmdAutenticar"));
    go->setDefault(true);
    connect(go, &QPushButton::clicked, this, &frmAutenticar::autenticar);
    auto* fechar = new QPushButton(QStringLiteral("&Fechar"), this);
    fechar->setObjectName(QStringLiteral("cmdFechar"));
    connect(fechar, &QPushButton::clicked, this, &QDialog::accept);
    auto* row = new QHBoxLayout;
    row->addWidget(new QLabel(QStringLiteral("Insira o documento na autenticadora."), this));
    row->addStretch();
    row->addWidget(go);
    row->addWidget(fechar);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(row);
    m_valor->setFocus();
}

frmAutenticar::~frmAutenticar() = default;

void frmAutenticar::showEvent(QShowEvent* event) {
    // The counter keeps its own printer open; only a printer of this screen is opened here.
    if (m_own && !m_portOpen) {
        m_own->post([](PrinterService& p) { p.abrirPorta(); });
        m_portOpen = true;
    }
    QDialog::showEvent(event);
}

void frmAutenticar::done(int result) {
    if (m_own && m_portOpen) {
        m_own->post([](PrinterService& p) { p.fecharPorta(false); });
        m_portOpen = false;
    }
    QDialog::done(result);
}

void frmAutenticar::autenticar() {
    QString sent;
    const auto valor = Money::parseTyped(m_valor->text());
    switch (DocumentStamp::preparar(m_ctx, valor, &sent)) {
    case DocumentStamp::Outcome::InvalidValue:
        m_ctx.dialogs.warn(SystemTexts::aviso(), QStringLiteral("Informe o valor do documento!!"));
        m_valor->selectAll();
        m_valor->setFocus();
        return;
    case DocumentStamp::Outcome::PrinterOff:
        m_ctx.dialogs.warn(SystemTexts::aviso(),
                           QStringLiteral("A autenticadora não está habilitada (Opções, "
                                          "Impressão: \"Habilitar a autenticadora?\")."));
        return;
    case DocumentStamp::Outcome::Sent:
        post([sent](PrinterService& p) {
            p.ImprimeAutenticadora(PrinterOperation::Autenticar, p.modelo(), sent);
        });
        break;
    }
    m_ultima->setText(sent);
    m_valor->clear();
    m_valor->setFocus();
}

void frmAutenticar::post(std::function<void(PrinterService&)> job) {
    if (m_own)
        m_own->post(std::move(job));
    else
        m_ctx.printerJobs(std::move(job));
}
