#include "frmLancaTemp.h"

#include "AppContext.h"
#include "CountWidgets.h"
#include "DialogPort.h"

#include <QAction>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
const QString kAviso = QStringLiteral("Aviso");
}

frmLancaTemp::frmLancaTemp(AppContext& ctx, const clsMovimento& mov, QWidget* parent)
    : QDialog(parent), m_ctx(ctx), m_mov(mov) {
    setObjectName(QStringLiteral("frmLancaTemp"));
    setWindowTitle(QStringLiteral("Conferência Temporária de Caixa"));
    auto* notice = new QLabel(CashCount::kAvisoTemporario, this);
    notice->setObjectName(QStringLiteral("lblAviso"));
    notice->setWordWrap(true);
    notice->setStyleSheet(QStringLiteral("color: #b00000; font-weight: bold"));
    auto* dia = new QLabel(
        QStringLiteral("Caixa dia: ") + mov.MDATA.toString(QStringLiteral("dd - MM - yyyy")), this);
    dia->setObjectName(QStringLiteral("lblDia"));
    m_arrecadacao = CountWidgets::amountField(this, "txtarrecadacao");
    m_sangria = CountWidgets::amountField(this, "txtsangria");
    m_suprimento = CountWidgets::amountField(this, "txtsuprimento");
    m_total = CountWidgets::amountField(this, "txttotal");
    m_saldo = CountWidgets::amountField(this, "txtsaldo");
    m_lista = CountWidgets::linesList(this);
    auto* del = new QAction(QStringLiteral("&Excluir item"), m_lista);
    del->setObjectName(QStringLiteral("mnudel"));
    m_lista->addAction(del);
    connect(del, &QAction::triggered, this, &frmLancaTemp::excluir);
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("lblStatus"));
    m_especie = new QComboBox(this);
    m_especie->setObjectName(QStringLiteral("Combo1"));
    CountWidgets::fillEspecies(m_especie, ctx);
    m_numero = new QLineEdit(this);
    m_numero->setObjectName(QStringLiteral("txtnumero"));
    m_numero->setPlaceholderText(QStringLiteral("Número"));
    m_numero->setMinimumWidth(100);
    m_valor = new QLineEdit(this);
    m_valor->setObjectName(QStringLiteral("mskvalor"));
    m_valor->setPlaceholderText(QStringLiteral("0,00"));
    m_valor->setMinimumWidth(100);
    m_valor->setAlignment(Qt::AlignRight);
    auto* add = new QPushButton(QStringLiteral("&Incluir"), this);
    add->setObjectName(QStringLiteral("Command5"));
    add->setDefault(true);
    connect(add, &QPushButton::clicked, this, &frmLancaTemp::adicionar);
    auto* remove = new QPushButton(QStringLiteral("E&xcluir item"), this);
    remove->setObjectName(QStringLiteral("cmdExcluir"));
    connect(remove, &QPushButton::clicked, del, &QAction::trigger);
    auto* close = new QPushButton(QStringLiteral("&Fechar"), this);
    close->setObjectName(QStringLiteral("cmdFechar"));
    connect(close, &QPushButton::clicked, this, &QDialog::reject);

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
    line->addWidget(add);
    auto* countBox = new QVBoxLayout;
    countBox->addLayout(line);
    countBox->addWidget(m_lista, 1);
    countBox->addWidget(m_status);
    auto* body = new QHBoxLayout;
    body->addLayout(figures);
    body->addSpacing(16);
    body->addLayout(countBox, 1);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(remove);
    bottom->addStretch();
    bottom->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(dia);
    layout->addWidget(notice);
    layout->addLayout(body, 1);
    layout->addLayout(bottom);
    resize(860, 440);
    recalcular();
    m_valor->setFocus();
}

void frmLancaTemp::recalcular() {
    clsMovimento fresh = m_mov;
    fresh.SQLSelect(m_mov.ID); // the supplies as they are now
    QList<Money> values;
    m_lista->clear();
    for (int i = 0; i < m_lines.size(); ++i) {
        values << m_lines[i].valor;
        auto* item = new QTreeWidgetItem({CountWidgets::key(i + 1), m_lines[i].especie,
                                          m_lines[i].numero, m_lines[i].valor.format()});
        item->setTextAlignment(3, Qt::AlignRight);
        m_lista->addTopLevelItem(item);
    }
    const auto c = CashCount::provisoria(m_ctx, fresh, values);
    if (!c) {
        m_ctx.errors.report(QStringLiteral("Função Lista_Movimento"),
                            {0, m_ctx.db.lastError(), QStringLiteral("frmLancaTemp")});
        return;
    }
    m_arrecadacao->setText(c->arrecadacao.formatCurrency());
    m_sangria->setText(c->lancamentos.formatCurrency());
    m_suprimento->setText(c->suprimento.formatCurrency());
    m_total->setText(c->contado.formatCurrency());
    m_saldo->setText(c->diferenca().formatCurrency());
    m_status->setText(QStringLiteral("Total de itens contabilizados: ") +
                      QString::number(c->linhas));
}

void frmLancaTemp::adicionar() {
    const auto v = CashCount::validar(m_ctx, m_especie->currentData().toInt(), m_valor->text());
    if (!v) {
        m_valor->setFocus();
        m_valor->selectAll();
        return;
    }
    m_lines.append({m_especie->currentText(), m_numero->text().trimmed(), *v});
    m_numero->clear();
    m_valor->clear();
    recalcular();
    m_valor->setFocus();
}

void frmLancaTemp::excluir() {
    const int row = m_lista->indexOfTopLevelItem(m_lista->currentItem());
    if (row < 0) {
        m_ctx.dialogs.critical(kAviso, CashCount::kCliqueNoItem);
        return;
    }
    if (!m_ctx.dialogs.ask(kAviso, CashCount::kPerguntaExcluir + m_lista->currentItem()->text(0)))
        return;
    m_lines.removeAt(row);
    recalcular();
}
