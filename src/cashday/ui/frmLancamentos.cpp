#include "frmLancamentos.h"

#include "AppContext.h"
#include "CountWidgets.h"
#include "DialogPort.h"
#include "IntegrationFile.h"

#include <QAction>
#include <QCalendarWidget>
#include <QComboBox>
#include <QCoreApplication>
#include <QDateEdit>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
const QString kAviso = QStringLiteral("Aviso");
}

frmLancamentos::frmLancamentos(AppContext& ctx, const QDate& dia, QWidget* parent)
    : QDialog(parent), m_ctx(ctx), m_pausa(IntegrationFile::pausaConfigurada(ctx)) {
    setObjectName(QStringLiteral("frmLancamentos"));
    setWindowTitle(QStringLiteral("Conferência de Caixa"));
    m_id = new QLineEdit(this);
    m_id->setObjectName(QStringLiteral("txtid_tabela"));
    m_id->setReadOnly(true);
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
    m_arrecadacao = CountWidgets::amountField(this, "txtarrecadacao");
    m_sangria = CountWidgets::amountField(this, "txtsangria");
    m_suprimento = CountWidgets::amountField(this, "txtsuprimento");
    m_total = CountWidgets::amountField(this, "txttotal");
    m_saldo = CountWidgets::amountField(this, "txtsaldo");
    m_saldo->setFont(bold);
    m_lista = CountWidgets::linesList(this);
    m_excluir = new QAction(QStringLiteral("&Excluir item"), m_lista);
    m_excluir->setObjectName(QStringLiteral("mnudel"));
    m_lista->addAction(m_excluir);
    connect(m_excluir, &QAction::triggered, this, &frmLancamentos::excluir);
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("lblStatus"));
    m_especie = new QComboBox(this);
    m_especie->setObjectName(QStringLiteral("Combo1"));
    m_numero = new QLineEdit(this);
    m_numero->setObjectName(QStringLiteral("txtnumero"));
    m_numero->setPlaceholderText(QStringLiteral("Número"));
    m_numero->setMinimumWidth(100);
    m_numero->setMaxLength(40);
    m_valor = new QLineEdit(this);
    m_valor->setObjectName(QStringLiteral("mskvalor"));
    m_valor->setPlaceholderText(QStringLiteral("0,00"));
    m_valor->setMinimumWidth(100);
    m_valor->setAlignment(Qt::AlignRight);
    m_incluir = new QPushButton(QStringLiteral("&Incluir"), this);
    m_incluir->setObjectName(QStringLiteral("Command5"));
    m_incluir->setDefault(true);
    connect(m_incluir, &QPushButton::clicked, this, &frmLancamentos::adicionar);
    auto* remove = new QPushButton(QStringLiteral("E&xcluir item"), this);
    remove->setObjectName(QStringLiteral("cmdExcluir"));
    connect(remove, &QPushButton::clicked, m_excluir, &QAction::trigger);
    m_pbr = new QProgressBar(this);
    m_pbr->setObjectName(QStringLiteral("pbr"));
    m_pbr->setValue(0);
    m_gerar = new QPushButton(QStringLiteral("&Gerar Arquivo Remessa"), this);
    m_gerar->setObjectName(QStringLiteral("Command1"));
    connect(m_gerar, &QPushButton::clicked, this, &frmLancamentos::gerar);
    auto* close = new QPushButton(QStringLiteral("&Fechar"), this);
    close->setObjectName(QStringLiteral("cmdFechar"));
    connect(close, &QPushButton::clicked, this, &QDialog::reject);

    auto* top = new QHBoxLayout;
    top->addWidget(m_lblDia);
    top->addStretch();
    top->addWidget(new QLabel(QStringLiteral("Movimento:"), this));
    top->addWidget(m_id);
    top->addWidget(new QLabel(QStringLiteral("Nº:"), this));
    top->addWidget(m_mov);
    top->addWidget(new QLabel(QStringLiteral("Data:"), this));
    top->addWidget(m_data);
    auto* figures = new QGridLayout;
    const QList<QPair<QString, QLineEdit*>> rows = {
        {QStringLiteral("Arrecadação:"), m_arrecadacao},
        {QStringLiteral("Lançamentos (entradas - saídas):"), m_sangria},
        {QStringLiteral("Suprimento:"), m_suprimento},
        {QStringLiteral("Total contado:"), m_total},
        {QStringLiteral("Diferença:"), m_saldo}};
    for (int i = 0; i < rows.size(); ++i) {
        figures->addWidget(new QLabel(rows[i].first, this), i, 0);
        figures->addWidget(rows[i].second, i, 1);
    }
    figures->setRowStretch(int(rows.size()), 1);
    auto* line = new QHBoxLayout;
    line->addWidget(m_especie, 2);
    line->addWidget(m_numero, 2);
    line->addWidget(m_valor, 1);
    line->addWidget(m_incluir);
    auto* countBox = new QVBoxLayout;
    countBox->addLayout(line);
    countBox->addWidget(m_lista, 1);
    auto* statusRow = new QHBoxLayout;
    statusRow->addWidget(m_status);
    statusRow->addStretch();
    statusRow->addWidget(remove);
    countBox->addLayout(statusRow);
    auto* body = new QHBoxLayout;
    body->addLayout(figures);
    body->addSpacing(16);
    body->addLayout(countBox, 1);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_pbr, 1);
    bottom->addWidget(m_gerar);
    bottom->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(body, 1);
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
}

void frmLancamentos::abrir(const QDate& dia) {
    m_dia = dia;
    clsMovimento mov(m_ctx.db);
    const bool found = mov.SQLSelectByDate(dia);
    m_count = found ? std::make_unique<CashCount>(m_ctx, mov) : nullptr;
    for (QWidget* w : {static_cast<QWidget*>(m_incluir), static_cast<QWidget*>(m_gerar),
                       static_cast<QWidget*>(m_especie)})
        w->setEnabled(found);
    m_id->setText(found ? QString::number(mov.ID) : QString());
    m_mov->setText(found ? CountWidgets::key(mov.MOV) : QString());
    m_lblDia->setText(QStringLiteral("Caixa dia: ") +
                      dia.toString(QStringLiteral("dd - MM - yyyy")));
    CountWidgets::fillEspecies(m_especie, m_ctx);
    if (!found) {
        m_lista->clear();
        for (QLineEdit* f : {m_arrecadacao, m_sangria, m_suprimento, m_total, m_saldo})
            f->clear();
        m_status->clear();
        m_ctx.dialogs.warn(kAviso,
                           QStringLiteral("Não foi encontrado nenhum movimento com essa data!!"));
        return;
    }
    Lista_conf_caixa();
}

void frmLancamentos::Lista_conf_caixa() {
    const auto rows = m_count->linhas();
    const auto conf = m_count->conferir();
    m_lista->clear();
    if (!rows || !conf) {
        m_ctx.errors.report(QStringLiteral("Função Lista_Movimento"),
                            {0, m_ctx.db.lastError(), QStringLiteral("frmLancamentos")});
        return;
    }
    for (const clsConfCaixa& l : *rows) {
        auto* item = new QTreeWidgetItem(
            {CountWidgets::key(l.ID), l.especieDescricao, l.NUMERO, l.VALOR.format()});
        item->setData(0, Qt::UserRole, l.ID);
        item->setTextAlignment(3, Qt::AlignRight);
        m_lista->addTopLevelItem(item);
    }
    m_conf = *conf;
    m_arrecadacao->setText(m_conf.arrecadacao.format());
    m_sangria->setText(m_conf.lancamentos.format());
    m_suprimento->setText(m_conf.suprimento.format());
    m_total->setText(m_conf.contado.format());
    m_saldo->setText(m_conf.diferenca().format());
    m_status->setText(QStringLiteral("Total de itens contabilizados: ") +
                      QString::number(m_conf.linhas));
}

void frmLancamentos::adicionar() {
    if (!m_count)
        return;
    if (!m_count->adicionar(m_especie->currentData().toInt(), m_numero->text(), m_valor->text())) {
        m_valor->setFocus();
        m_valor->selectAll();
        return;
    }
    m_numero->clear();
    m_valor->clear();
    Lista_conf_caixa();
    m_valor->setFocus();
}

void frmLancamentos::excluir() {
    QTreeWidgetItem* item = m_lista->currentItem();
    if (!m_count || !item) {
        m_ctx.dialogs.critical(kAviso, CashCount::kCliqueNoItem);
        return;
    }
    if (!m_ctx.dialogs.ask(kAviso, CashCount::kPerguntaExcluir + item->text(0)))
        return;
    if (m_count->excluir(item->data(0, Qt::UserRole).toInt()))
        Lista_conf_caixa();
}

void frmLancamentos::gerar() {
    if (!m_count || !m_ctx.dialogs.ask(kAviso, IntegrationFile::kPergunta))
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
    file.gerar(m_count->movimento(), m_conf.confCaixa());
    setEnabled(true);
    m_busy = false;
}

void frmLancamentos::reject() {
    if (!m_busy)
        QDialog::reject();
}
