#include "frmLancamentos.h"
#include "DayMovement.h"
#include "SystemTexts.h"

#include "AppContext.h"
#include "DialogPort.h"
#include "IntegrationFile.h"

#include <QAction>
#include <QCalendarWidget>
#include <QComboBox>
#include <QCoreApplication>
#include <QDateEdit>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

frmLancamentos::frmLancamentos(AppContext& ctx, const QDate& dia, QWidget* parent)
    : QDialog(parent), m_ctx(ctx), m_pausa(IntegrationFile::pausaConfigurada(ctx)) {
    setObjectName(QStringLiteral("frmLancamentos"));
    setWindowTitle(QStringLiteral("Conferência de Caixa"));
    QLayout* top = buildTop(dia);
    m_panel = new CountPanel(ctx, this);
    connect(m_panel->del, &QAction::triggered, this, &frmLancamentos::excluir);
    connect(m_panel->add, &QPushButton::clicked, this, &frmLancamentos::adicionar);
    QLayout* bottom = buildBottom();
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_panel, 1);
    layout->addLayout(bottom);
    resize(900, 480);

    // Another day is opened once its date is complete, not at every digit typed.
    auto other = [this] {
        if (m_data->date() != m_dia)
            abrir(m_data->date());
    };
    connect(m_data, &QDateEdit::editingFinished, this, other);
    connect(m_data->calendarWidget(), &QCalendarWidget::clicked, this, other);
    abrir(dia);
    // The work starts at the count; the other day's date comes last in the Tab order.
    setTabOrder(m_gerar, m_fechar);
    setTabOrder(m_fechar, m_data);
    m_panel->especie->setFocus();
}

QLayout* frmLancamentos::buildTop(const QDate& dia) {
    m_id = new QLineEdit(this);
    m_id->setObjectName(QStringLiteral("txtid_tabela"));
    m_id->setReadOnly(true);
    m_id->setFocusPolicy(Qt::ClickFocus);
    m_id->setMaximumWidth(80);
    m_data = new QDateEdit(dia, this);
    m_data->setObjectName(QStringLiteral("dtpData"));
    m_data->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    m_data->setCalendarPopup(true);
    m_mov = new QLabel(this);
    m_mov->setObjectName(QStringLiteral("lblMov"));
    m_lblDia = new QLabel(this);
    m_lblDia->setObjectName(QStringLiteral("lblDia"));
    QFont bold = m_lblDia->font();
    bold.setBold(true);
    m_lblDia->setFont(bold);
    auto* top = new QHBoxLayout;
    top->addWidget(m_lblDia);
    top->addStretch();
    top->addWidget(new QLabel(QStringLiteral("Movimento:"), this));
    top->addWidget(m_id);
    top->addWidget(new QLabel(QStringLiteral("Nº:"), this));
    top->addWidget(m_mov);
    top->addWidget(new QLabel(QStringLiteral("Data:"), this));
    top->addWidget(m_data);
    return top;
}

QLayout* frmLancamentos::buildBottom() {
    m_pbr = new QProgressBar(this);
    m_pbr->setObjectName(QStringLiteral("pbr"));
    m_pbr->setValue(0);
    m_gerar = new QPushButton(QStringLiteral("&Gerar Arquivo Remessa"), this);
    m_gerar->setObjectName(QStringLiteral("Command1"));
    connect(m_gerar, &QPushButton::clicked, this, &frmLancamentos::gerar);
    m_fechar = new QPushButton(QStringLiteral("&Fechar"), this);
    m_fechar->setObjectName(QStringLiteral("cmdFechar"));
    connect(m_fechar, &QPushButton::clicked, this, &QDialog::reject);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_pbr, 1);
    bottom->addWidget(m_gerar);
    bottom->addWidget(m_fechar);
    return bottom;
}

void frmLancamentos::abrir(const QDate& dia) {
    m_dia = dia;
    const auto day = DayMovement::of(m_ctx.db, dia);
    const bool found = day.has_value();
    const clsMovimento mov = day.value_or(clsMovimento(m_ctx.db));
    m_count = found ? std::make_unique<CashCount>(m_ctx, mov) : nullptr;
    for (QWidget* w : {static_cast<QWidget*>(m_panel->add), static_cast<QWidget*>(m_gerar),
                       static_cast<QWidget*>(m_panel->especie)})
        w->setEnabled(found);
    m_id->setText(found ? QString::number(mov.ID) : QString());
    m_mov->setText(found ? CountPanel::key(mov.MOV) : QString());
    m_lblDia->setText(QStringLiteral("Caixa dia: ") +
                      dia.toString(QStringLiteral("dd - MM - yyyy")));
    if (!found) {
        m_panel->clearAll();
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::NenhumMovimentoNaData));
        return;
    }
    Lista_conf_caixa();
}

void frmLancamentos::Lista_conf_caixa() {
    const auto rows = m_count->linhas();
    const auto conf = m_count->conferir();
    m_panel->lista->clear();
    if (!rows || !conf) {
        m_ctx.errors.report(QStringLiteral("Função Lista_Movimento"),
                            {0, m_ctx.db.lastError(), QStringLiteral("frmLancamentos")});
        return;
    }
    for (const clsConfCaixa& l : *rows)
        m_panel->addLine(l.ID, l.especieDescricao, l.NUMERO, l.VALOR);
    m_conf = *conf;
    m_panel->showFigures(m_conf, false);
}

void frmLancamentos::adicionar() {
    if (!m_count)
        return;
    const int especie = m_panel->especie->currentData().toInt();
    const auto valor = CashCount::validar(m_ctx, especie, m_panel->valor->text());
    const Outcome done =
        valor ? m_count->adicionar(especie, m_panel->numero->text(), *valor) : Outcome::refused({});
    tell(m_ctx.dialogs, done.notice);
    if (!done) {
        m_panel->valueRefused();
        return;
    }
    Lista_conf_caixa();
    m_panel->lineTaken();
}

void frmLancamentos::excluir() {
    QTreeWidgetItem* item = m_panel->lista->currentItem();
    if (!m_count || !item) {
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::CliqueNoItem));
        return;
    }
    if (!askNotice(m_ctx.dialogs,
                   SystemTexts::notice(SystemText::PerguntaExcluirItemContagem).arg(item->text(0))))
        return;
    const Outcome done = m_count->excluir(item->data(0, Qt::UserRole).toInt());
    tell(m_ctx.dialogs, done.notice);
    if (done)
        Lista_conf_caixa();
}

void frmLancamentos::gerar() {
    if (!m_count ||
        !askNotice(m_ctx.dialogs, SystemTexts::notice(SystemText::PerguntaArquivoRemessa)))
        return;
    IntegrationFile file(m_ctx);
    file.pausaMs = m_pausa;
    file.progress = [this](int done, int total) {
        m_pbr->setMaximum(total);
        m_pbr->setValue(done);
        if (m_pausa == 0 && done % 500 == 0)
            QCoreApplication::processEvents(); // at full speed the bar still moves
    };
    m_busy = true;
    setEnabled(false);
    const auto r = file.gerar(m_count->movimento(), m_conf.confCaixa());
    setEnabled(true);
    m_busy = false;
    r.mostrar(m_ctx.dialogs);
}

void frmLancamentos::reject() {
    if (!m_busy)
        QDialog::reject();
}
