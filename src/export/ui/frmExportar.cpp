#include "frmExportar.h"
#include "SystemTexts.h"

#include "AppContext.h"
#include "CnabExport.h"
#include "DateUtil.h"
#include "DialogPort.h"
#include "FebrabanExport.h"
#include "clsCodBarra.h"
#include "clsRecebimentos.h"

#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

frmExportar::frmExportar(AppContext& ctx, qint32 idMovimento, const QDate& movimento,
                         QWidget* parent)
    : QDialog(parent), m_ctx(ctx), m_idMovimento(idMovimento), m_movimento(movimento) {
    setObjectName(QStringLiteral("frmExportar"));
    setWindowTitle(QStringLiteral("Exportar Arquivos Bancários - Movimento de ") +
                   DateUtil::br(movimento));
    buildUi();
    fillTypes();
    resize(1200, 560);
}

QPushButton* frmExportar::button(const char* name, const QString& text,
                                 void (frmExportar::*slot)()) {
    auto* b = new QPushButton(text, this);
    b->setObjectName(QLatin1String(name));
    connect(b, &QPushButton::clicked, this, slot);
    return b;
}

QWidget* frmExportar::listPanel(QTreeWidget*& list, const char* name, const QString& heading,
                                QPushButton* store) {
    auto* panel = new QWidget(this);
    auto* title = new QLabel(heading, panel);
    title->setObjectName(QLatin1String(name) + QStringLiteral("Titulo"));
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    list = new QTreeWidget(panel);
    list->setObjectName(QLatin1String(name));
    list->setRootIsDecorated(false);
    list->setHeaderLabels({QStringLiteral("Código"), QStringLiteral("Autenticação"),
                           QStringLiteral("Valor"), QStringLiteral("Código de Barras")});
    list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(title);
    layout->addWidget(list, 1);
    layout->addWidget(store, 0, Qt::AlignLeft);
    return panel;
}

void frmExportar::buildUi() {
    m_sel = new QComboBox(this);
    m_sel->setObjectName(QStringLiteral("cmbSel"));
    m_sel->addItem(QStringLiteral("CNAB (Boletos bancários)"), int(BankExport::Arquivo::Cnab));
    m_sel->addItem(QStringLiteral("Febraban (Guias internas)"), int(BankExport::Arquivo::Febraban));
    connect(m_sel, &QComboBox::currentIndexChanged, this, &frmExportar::fillTypes);
    m_tipo = new QComboBox(this);
    m_tipo->setObjectName(QStringLiteral("cmbTipo"));
    m_tipo->setMinimumWidth(260);
    connect(m_tipo, &QComboBox::currentIndexChanged, this, &frmExportar::typeChanged);
    m_codBanco = new QLineEdit(this);
    m_codBanco->setObjectName(QStringLiteral("txtcodbanco"));
    m_codBanco->setMaximumWidth(60);
    auto* codLabel = new QLabel(QStringLiteral("Cod. Banco:"), this);
    codLabel->setObjectName(QStringLiteral("lblcodbanco"));
    auto* top = new QHBoxLayout;
    top->addWidget(m_sel);
    top->addWidget(m_tipo, 1);
    top->addWidget(codLabel);
    top->addWidget(m_codBanco);
    top->addWidget(button("cmdPesquisar", QStringLiteral("&Pesquisar"), &frmExportar::pesquisar));
    top->addWidget(
        button("cmdRejeitados", QStringLiteral("&Rejeitados"), &frmExportar::rejeitados));

    auto* lists = new QHBoxLayout;
    lists->addWidget(listPanel(m_confirmados, "lstRecebimentos",
                               QStringLiteral("Confirmados (Serão exportados)"),
                               button("cmdRejeita", QStringLiteral("Gravar re&jeição dos marcados"),
                                      &frmExportar::rejeita)),
                     1);
    lists->addWidget(
        listPanel(m_rejeitados, "lstRejeitado", QStringLiteral("Rejeitados (Não serão exportados)"),
                  button("cmdDesfazRejeicao", QStringLiteral("&Desfazer rejeição dos marcados"),
                         &frmExportar::desfazRejeicao)),
        1);

    m_pbr = new QProgressBar(this);
    m_pbr->setObjectName(QStringLiteral("pbr"));
    m_pbr->setValue(0);
    m_total = new QLabel(this);
    m_total->setObjectName(QStringLiteral("lblTotal"));
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_total);
    bottom->addWidget(m_pbr, 1);
    bottom->addWidget(button("cmdExportar", QStringLiteral("&Exportar"), &frmExportar::exportar));
    bottom->addWidget(button("cmdSair", QStringLiteral("&Sair"), &frmExportar::reject));

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(lists, 1);
    layout->addLayout(bottom);
    updateTotal();
}

BankExport::Arquivo frmExportar::arquivo() const {
    return BankExport::Arquivo(m_sel->currentData().toInt());
}

int frmExportar::tipo() const {
    return m_tipo->currentIndex() < 0 ? -1 : m_tipo->currentData().toInt();
}

void frmExportar::fillTypes() {
    m_tipo->clear();
    const auto kinds = clsCodBarra::listarPorPadrao(m_ctx.db, BankExport::padrao(arquivo()));
    for (const clsCodBarra& k : kinds.value_or(QList<clsCodBarra>()))
        m_tipo->addItem(k.DESCRICAO, int(k.IDCOD));
    typeChanged();
}

// The lists belong to one kind: a new kind starts them empty, and the kind's own bank code
// is offered when it is one.
void frmExportar::typeChanged() {
    m_confirmados->clear();
    m_rejeitados->clear();
    updateTotal();
    clsCodBarra k(m_ctx.db);
    if (tipo() >= 0 && k.SQLSelect(tipo()) && BankExport::codigoBancoValido(k.CODBANCO))
        m_codBanco->setText(k.CODBANCO);
}

void frmExportar::fillList(QTreeWidget* list, ExportMarks::Lista lista) {
    list->clear();
    const auto rows = clsRecebimentos::listarExportacao(m_ctx.db, m_idMovimento, tipo(),
                                                        ExportMarks::exportDaLista(lista));
    for (const clsRecebimentos& r : rows.value_or(QList<clsRecebimentos>())) {
        auto* item = new QTreeWidgetItem({QString::number(r.IDRECEBE), QString::number(r.AUTENTICA),
                                          r.VALOR.format(), r.CODBARRA});
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(0, r.EXPORT == 1 ? Qt::Checked : Qt::Unchecked);
        item->setData(0, Qt::UserRole, r.IDRECEBE);
        item->setData(2, Qt::UserRole, r.VALOR.units());
        item->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
        list->addTopLevelItem(item);
    }
    updateTotal();
}

void frmExportar::updateTotal() {
    Money total;
    for (int i = 0; i < m_confirmados->topLevelItemCount(); ++i)
        total +=
            Money::fromUnits(m_confirmados->topLevelItem(i)->data(2, Qt::UserRole).toLongLong());
    m_total->setText(QStringLiteral("%1 confirmados: %2")
                         .arg(m_confirmados->topLevelItemCount())
                         .arg(total.formatCurrency()));
}

void frmExportar::pesquisar() {
    fillList(m_confirmados, ExportMarks::Lista::Confirmados);
}

void frmExportar::rejeitados() {
    fillList(m_rejeitados, ExportMarks::Lista::Rejeitados);
}

void frmExportar::rejeita() {
    storeMarks(m_confirmados, ExportMarks::Lista::Confirmados,
               SystemTexts::text(SystemText::PerguntaRejeitaExportacao));
}

void frmExportar::desfazRejeicao() {
    storeMarks(m_rejeitados, ExportMarks::Lista::Rejeitados,
               SystemTexts::text(SystemText::PerguntaDesfazRejeicao));
}

void frmExportar::storeMarks(QTreeWidget* list, ExportMarks::Lista lista, const QString& question) {
    if (m_ctx.dialogs.message(SystemTexts::aviso(), question, DialogIcon::Question,
                              DialogButtons::YesNo) != DialogAnswer::Yes)
        return;
    tell(m_ctx.dialogs, SystemTexts::notice(SystemText::ProcessoDemorado));
    const int n = list->topLevelItemCount();
    m_pbr->setRange(0, qMax(n, 1));
    QList<ExportMarks::Linha> linhas;
    for (int i = 0; i < n; ++i) {
        const QTreeWidgetItem* item = list->topLevelItem(i);
        linhas.append({item->data(0, Qt::UserRole).toInt(), item->checkState(0) == Qt::Checked});
        m_pbr->setValue(i + 1);
    }
    const Outcome stored = ExportMarks::gravar(m_ctx, ExportMarks::marcas(lista, linhas));
    tell(m_ctx.dialogs,
         stored ? SystemTexts::notice(SystemText::GravacaoConcluida) : stored.notice);
    m_pbr->setValue(0);
    fillList(list, lista);
}

void frmExportar::setBusy(bool busy) {
    m_busy = busy;
    for (QPushButton* b : findChildren<QPushButton*>())
        b->setEnabled(!busy);
    m_sel->setEnabled(!busy);
    m_tipo->setEnabled(!busy);
}

void frmExportar::reject() {
    if (!m_busy)
        QDialog::reject();
}

void frmExportar::exportar() {
    if (const QString why = BankExport::recusaCodigoBanco(arquivo(), m_codBanco->text());
        !why.isEmpty()) {
        m_ctx.dialogs.critical(SystemTexts::aviso(), why);
        return;
    }
    if (m_confirmados->topLevelItemCount() == 0)
        return;
    if (arquivo() == BankExport::Arquivo::Cnab && !BankExport::cnabNaTela(m_ctx)) {
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::NaoExecutaFuncao));
        return;
    }
    BankExport::Request rq;
    rq.idMovimento = m_idMovimento;
    rq.movimento = m_movimento;
    rq.idcod = tipo();
    rq.codBanco = m_codBanco->text();
    rq.pausaMs = BankExport::pausaTela(m_ctx);
    rq.progresso = [this](int feitos, int total) {
        m_pbr->setRange(0, qMax(total, 1));
        m_pbr->setValue(feitos);
        QApplication::processEvents();
    };
    setBusy(true);
    const BankExport::Result r = arquivo() == BankExport::Arquivo::Cnab
                                     ? CnabExport::gerar(m_ctx, rq)
                                     : FebrabanExport::gerar(m_ctx, rq);
    setBusy(false);
    m_pbr->setValue(0);
    r.mostrar(m_ctx.dialogs);
    if (r.ok)
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::GeracaoSucesso));
    else
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::ErroGravarArquivo));
}
