#include "frmAutenticar.h"
#include "SystemTexts.h"

#include "AdminGuard.h"
#include "AppContext.h"
#include "Clock.h"
#include "DateUtil.h"
#include "DialogPort.h"
#include "DocumentStamp.h"
#include "LooseStamp.h"
#include "Money.h"
#include "PrinterService.h"
#include "PrinterWorker.h"

#include <QCoreApplication>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

void frmAutenticar::abrir(AppContext& ctx, QWidget* parent) {
    const auto administrador =
        AdminGuard::askAdministrador(ctx, QStringLiteral("Autenticar Documento"));
    if (!administrador)
        return; // a wrong password opens nothing, silently
    frmAutenticar(ctx, *administrador, parent).exec();
}

frmAutenticar::frmAutenticar(AppContext& ctx, const QString& administrador, QWidget* parent)
    : QDialog(parent), m_ctx(ctx), m_administrador(administrador) {
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
    const LooseStamp::Resultado r =
        LooseStamp::registrar(m_ctx, Money::parseTyped(m_valor->text()), m_administrador);
    switch (r.outcome) {
    case LooseStamp::Outcome::Registrada:
        break;
    case LooseStamp::Outcome::ValorInvalido:
        tell(m_ctx.dialogs, r.notice());
        m_valor->selectAll();
        m_valor->setFocus();
        return;
    case LooseStamp::Outcome::AutenticadoraDesligada:
    case LooseStamp::Outcome::FalhaGravacao:
        tell(m_ctx.dialogs, r.notice());
        return;
    }
    AppContext* ctx = &m_ctx;
    const QPointer<QLabel> ultima = m_ultima;
    post([ctx, id = r.id, text = r.texto, ultima](PrinterService& p) {
        p.novoCliente(); // each document is a block of its own: a printer down is tried again
        const bool stamped = p.ImprimeAutenticadora(PrinterOperation::Autenticar, p.modelo(), text);
        // The row is confirmed on the screens' thread, whose database connection it is, even
        // when this screen was closed meanwhile.
        QMetaObject::invokeMethod(qApp, [ctx, id, text, ultima, stamped] {
            if (stamped && LooseStamp::confirmar(*ctx, id) && ultima)
                ultima->setText(text);
        });
    });
    m_valor->clear();
    m_valor->setFocus();
}

void frmAutenticar::post(std::function<void(PrinterService&)> job) {
    if (m_own)
        m_own->post(std::move(job));
    else
        m_ctx.printerJobs(std::move(job));
}
