#include "CountPanel.h"

#include "AppContext.h"

#include <QAction>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
QLineEdit* amountField(QWidget* parent, const char* name) {
    auto* f = new QLineEdit(parent);
    f->setObjectName(QLatin1String(name));
    f->setReadOnly(true);
    f->setFocusPolicy(Qt::ClickFocus); // figures are read, not typed: Tab goes to the count
    f->setAlignment(Qt::AlignRight);
    f->setMaximumWidth(170);
    return f;
}
} // namespace

CountPanel::CountPanel(AppContext& ctx, QWidget* parent) : QWidget(parent), m_ctx(ctx) {
    QLayout* figures = buildFigures();
    buildList();
    QLayout* line = buildLine();
    auto* remove = new QPushButton(QStringLiteral("E&xcluir item"), this);
    remove->setObjectName(QStringLiteral("cmdExcluir"));
    connect(remove, &QPushButton::clicked, del, &QAction::trigger);

    // Tab follows the count: kind, number, amount, include, then the list.
    setTabOrder(especie, numero);
    setTabOrder(numero, valor);
    setTabOrder(valor, add);
    setTabOrder(add, lista);
    setTabOrder(lista, remove);

    auto* statusRow = new QHBoxLayout;
    statusRow->addWidget(status);
    statusRow->addStretch();
    statusRow->addWidget(remove);
    auto* countBox = new QVBoxLayout;
    countBox->addLayout(line);
    countBox->addWidget(lista, 1);
    countBox->addLayout(statusRow);
    auto* body = new QHBoxLayout(this);
    body->setContentsMargins(0, 0, 0, 0);
    body->addLayout(figures);
    body->addSpacing(16);
    body->addLayout(countBox, 1);
    fillEspecies();
}

QLayout* CountPanel::buildFigures() {
    m_arrecadacao = amountField(this, "txtarrecadacao");
    m_sangria = amountField(this, "txtsangria");
    m_suprimento = amountField(this, "txtsuprimento");
    m_total = amountField(this, "txttotal");
    m_saldo = amountField(this, "txtsaldo");
    QFont bold = m_saldo->font();
    bold.setBold(true);
    m_saldo->setFont(bold);
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
    return figures;
}

void CountPanel::buildList() {
    lista = new QTreeWidget(this);
    lista->setObjectName(QStringLiteral("List1"));
    lista->setRootIsDecorated(false);
    lista->setAlternatingRowColors(true);
    lista->setHeaderLabels({QStringLiteral("Código"), QStringLiteral("Espécie"),
                            QStringLiteral("Número"), QStringLiteral("Valor")});
    lista->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    lista->setContextMenuPolicy(Qt::ActionsContextMenu);
    del = new QAction(QStringLiteral("&Excluir item"), lista);
    del->setObjectName(QStringLiteral("mnudel"));
    lista->addAction(del);
    status = new QLabel(this);
    status->setObjectName(QStringLiteral("lblStatus"));
}

QLayout* CountPanel::buildLine() {
    especie = new QComboBox(this);
    especie->setObjectName(QStringLiteral("Combo1"));
    numero = new QLineEdit(this);
    numero->setObjectName(QStringLiteral("txtnumero"));
    numero->setMinimumWidth(100);
    numero->setMaxLength(40);
    valor = new QLineEdit(this);
    valor->setObjectName(QStringLiteral("mskvalor"));
    valor->setMinimumWidth(100);
    valor->setAlignment(Qt::AlignRight);
    add = new QPushButton(QStringLiteral("&Incluir"), this);
    add->setObjectName(QStringLiteral("Command5"));
    add->setDefault(true);
    // Captions above the fields: a faint hint inside them would not read on a light skin.
    auto* line = new QGridLayout;
    line->setVerticalSpacing(2);
    line->addWidget(new QLabel(QStringLiteral("Espécie"), this), 0, 0);
    line->addWidget(new QLabel(QStringLiteral("Número"), this), 0, 1);
    line->addWidget(new QLabel(QStringLiteral("Valor"), this), 0, 2);
    line->addWidget(especie, 1, 0);
    line->addWidget(numero, 1, 1);
    line->addWidget(valor, 1, 2);
    line->addWidget(add, 1, 3);
    line->setColumnStretch(0, 2);
    line->setColumnStretch(1, 2);
    line->setColumnStretch(2, 1);
    return line;
}

QString CountPanel::key(qint32 id) {
    return QStringLiteral("%1").arg(id, 4, 10, QLatin1Char('0'));
}

void CountPanel::fillEspecies() {
    especie->clear();
    for (const auto& [id, desc] : CashCount::especies(m_ctx))
        especie->addItem(desc, int(id));
    especie->setCurrentIndex(especie->count() > 0 ? 0 : -1);
}

void CountPanel::showFigures(const CashConference& c, bool currency) {
    const auto text = [currency](const Money& m) {
        return currency ? m.formatCurrency() : m.format();
    };
    m_arrecadacao->setText(text(c.arrecadacao));
    m_sangria->setText(text(c.lancamentos));
    m_suprimento->setText(text(c.suprimento));
    m_total->setText(text(c.contado));
    m_saldo->setText(text(c.diferenca()));
    status->setText(QStringLiteral("Total de itens contabilizados: ") + QString::number(c.linhas));
}

void CountPanel::clearAll() {
    lista->clear();
    for (QLineEdit* f : {m_arrecadacao, m_sangria, m_suprimento, m_total, m_saldo})
        f->clear();
    status->clear();
}

void CountPanel::addLine(qint32 id, const QString& especieText, const QString& numeroText,
                         const Money& v) {
    auto* item = new QTreeWidgetItem({key(id), especieText, numeroText, v.format()});
    item->setData(0, Qt::UserRole, id);
    item->setTextAlignment(3, Qt::AlignRight);
    lista->addTopLevelItem(item);
}

void CountPanel::lineTaken() {
    numero->clear();
    valor->clear();
    valor->setFocus();
}

void CountPanel::valueRefused() {
    valor->setFocus();
    valor->selectAll();
}
