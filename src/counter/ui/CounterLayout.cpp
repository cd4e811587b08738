#include "CounterLayout.h"

#include "CustomerList.h"
#include "DateUtil.h"
#include "Money.h"
#include "Tone.h"

#include <QComboBox>
#include <QDateTime>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QStackedWidget>
#include <QTreeView>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
QLabel* label(const QString& name, const QString& text, QWidget* parent, int pointSize = 0,
              bool bold = false) {
    auto* l = new QLabel(text, parent);
    l->setObjectName(name);
    if (pointSize || bold) {
        QFont f = l->font();
        if (pointSize)
            f.setPointSize(pointSize);
        f.setBold(bold);
        l->setFont(f);
    }
    return l;
}
} // namespace

// Built in the order the keyboard's focus chain follows.
CounterLayout::CounterLayout(QMainWindow* window, LancadosModel::Loader lancados) {
    auto* central = new QWidget(window);
    window->setCentralWidget(central);
    buildBanner(central);
    QLayout* entryRows = buildEntryRows(central);
    buildSoma(central);
    QLayout* totals = buildTotals(central);

    auto* left = new QVBoxLayout;
    left->addLayout(entryRows);
    left->addWidget(somaStack, 1);
    left->addLayout(totals);
    left->addWidget(troco);
    auto* body = new QHBoxLayout;
    body->addLayout(left, 1);
    body->addWidget(buildLancados(central, std::move(lancados)));

    m_layout = new QVBoxLayout(central);
    m_layout->addWidget(buildTopBar(central));
    m_layout->addWidget(impressora);
    m_layout->addLayout(body, 1);
}

void CounterLayout::buildBanner(QWidget* central) {
    // The printer's banner keeps the room of two lines, shown or not, so the code field never
    // moves under the cashier's eyes.
    impressora = label(QStringLiteral("lblImpressora"), QString(), central, 12, true);
    impressora->setContentsMargins(10, 2, 10, 2);
    impressora->setWordWrap(true);
    impressora->setFixedHeight(2 * impressora->fontMetrics().lineSpacing() + 8);
    QSizePolicy bannerPolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    bannerPolicy.setRetainSizeWhenHidden(true);
    impressora->setSizePolicy(bannerPolicy);
    impressora->hide();
}

QLayout* CounterLayout::buildEntryRows(QWidget* central) {
    entry = new QLineEdit(central);
    entry->setObjectName(QStringLiteral("txtValorCodBarra"));
    entry->setMaxLength(60);
    QFont big = entry->font();
    big.setPointSize(18);
    entry->setFont(big);
    kinds = new QComboBox(central);
    kinds->setObjectName(QStringLiteral("cmbTipoGuia"));
    kinds->setMinimumWidth(220);
    QFont mid = kinds->font();
    mid.setPointSize(12);
    kinds->setFont(mid);
    valor = new QLineEdit(central);
    valor->setObjectName(QStringLiteral("mskvalor"));
    valor->setAlignment(Qt::AlignRight);
    valor->setFont(mid);
    valor->setMaximumWidth(160);
    ldg = new QPushButton(QStringLiteral("Linha &Digitável"), central);
    ldg->setObjectName(QStringLiteral("cmdLdg"));
    ldg->setFocusPolicy(Qt::NoFocus);
    avulso = new QPushButton(QStringLiteral("A&vulso"), central);
    avulso->setObjectName(QStringLiteral("cmdAvulso"));
    avulso->setFocusPolicy(Qt::NoFocus);
    auto* entryRow = new QHBoxLayout;
    entryRow->addWidget(label(QStringLiteral("lblCodigo"), QStringLiteral("Código:"), central, 13));
    entryRow->addWidget(entry, 1);
    entryRow->addWidget(ldg);
    entryRow->addWidget(avulso);
    auto* kindRow = new QHBoxLayout;
    kindRow->addWidget(
        label(QStringLiteral("lblTipo"), QStringLiteral("Tipo de guia:"), central, 12));
    kindRow->addWidget(kinds, 1);
    kindRow->addWidget(label(QStringLiteral("lblValor"), QStringLiteral("Valor:"), central, 12));
    kindRow->addWidget(valor);
    auto* rows = new QVBoxLayout;
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addLayout(entryRow);
    rows->addLayout(kindRow);
    return rows;
}

QWidget* CounterLayout::buildSoma(QWidget* central) {
    soma = new QTreeWidget(central);
    soma->setObjectName(QStringLiteral("lstSoma"));
    soma->setRootIsDecorated(false);
    soma->setAlternatingRowColors(true);
    soma->setFocusPolicy(Qt::NoFocus);
    QFont rows = soma->font();
    rows.setPointSize(11);
    soma->setFont(rows);
    soma->setHeaderLabels({QStringLiteral("Item"), QStringLiteral("Tipo"), QStringLiteral("Valor"),
                           QStringLiteral("Total"), QStringLiteral("Código de barras"),
                           QStringLiteral("Vencimento"), QStringLiteral("Parcela"),
                           QStringLiteral("Obs")});
    // Every column in sight: the kind's name gives way (elided), the code never does.
    soma->header()->setStretchLastSection(false);
    soma->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    soma->header()->setSectionResizeMode(1, QHeaderView::Stretch);
    soma->headerItem()->setTextAlignment(2, Qt::AlignRight);
    soma->headerItem()->setTextAlignment(3, Qt::AlignRight);
    // An empty sum says what the counter expects instead of showing a blank list.
    auto* empty = label(QStringLiteral("lblSomaVazia"),
                        QStringLiteral("Passe o leitor no código de barras\nou digite a linha "
                                       "digitável e tecle Enter\n\n"
                                       "+  item sem código      -  valor pago      "
                                       "Enter  grava o pagamento"),
                        central, 15);
    empty->setAlignment(Qt::AlignCenter);
    empty->setWordWrap(true); // a narrow screen wraps it rather than widening the window
    Tone::set(empty, "dica");
    somaStack = new QStackedWidget(central);
    somaStack->addWidget(empty);
    somaStack->addWidget(soma);
    return somaStack;
}

QLayout* CounterLayout::buildTotals(QWidget* central) {
    auto* totalCaption =
        label(QStringLiteral("lblTotalCaption"), QStringLiteral("Total do cliente"), central, 13);
    total = label(QStringLiteral("lbltotalConta"), QStringLiteral("Calcular"), central, 28, true);
    total->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    troco = label(QStringLiteral("lblTroco"), QStringLiteral("A Pagar"), central, 20, true);
    troco->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* totals = new QHBoxLayout;
    totals->addWidget(totalCaption);
    totals->addStretch();
    totals->addWidget(total);
    return totals;
}

QWidget* CounterLayout::buildLancados(QWidget* parent, LancadosModel::Loader lancados) {
    auto* box = new QWidget(parent);
    lancadoTitle = label(QStringLiteral("lblLancado"), QString(), box, 13, true);
    lancado = new QTreeView(box);
    lancado->setObjectName(QStringLiteral("lstLancado"));
    lancado->setRootIsDecorated(false);
    lancado->setUniformRowHeights(true);
    lancado->setAlternatingRowColors(true);
    lancadoModel = new LancadosModel(std::move(lancados), parent->window());
    lancado->setModel(lancadoModel);
    lancadoModel->attach(lancado);
    QFont f = lancado->font();
    f.setPointSize(12);
    lancado->setFont(f);
    QHeaderView* h = lancado->header();
    h->setStretchLastSection(false);
    h->setSectionResizeMode(0, QHeaderView::Fixed);
    h->setSectionResizeMode(1, QHeaderView::Stretch);
    h->setSectionResizeMode(2, QHeaderView::Fixed);
    // Whole amounts: the value column is as wide as the largest amount a day can hold.
    const QFontMetrics fm(f);
    h->resizeSection(0, fm.horizontalAdvance(QStringLiteral("00000")) + 16);
    h->resizeSection(2, fm.horizontalAdvance(QStringLiteral("99.999.999,99")) + 20);
    box->setFixedWidth(380); // the rest of the width goes to the customer's list
    dayTotals = label(QStringLiteral("lblTotalDia"), QString(), box, 13, true);
    dayTotals->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    dayTotals->setWordWrap(true); // a big day's total takes a second line, never cut
    auto* v = new QVBoxLayout(box);
    v->setContentsMargins(0, 0, 0, 0);
    v->addWidget(lancadoTitle);
    v->addWidget(lancado, 1);
    v->addWidget(dayTotals);
    return box;
}

QWidget* CounterLayout::buildTopBar(QWidget* parent) {
    auto* bar = new QWidget(parent);
    status = label(QStringLiteral("lblStatus"), QString(), bar, 16, true);
    rede = label(QStringLiteral("lblStatusRede"), QStringLiteral("REDE INATIVA"), bar, 0, true);
    Tone::set(rede, "alerta");
    // Its room is kept while hidden: the central going away never reflows or widens the bar.
    QSizePolicy redePolicy = rede->sizePolicy();
    redePolicy.setRetainSizeWhenHidden(true);
    rede->setSizePolicy(redePolicy);
    rede->hide();
    user = label(QStringLiteral("lbluser"), QString(), bar, 12);
    dataCaixa = label(QStringLiteral("lblDataCaixa"), QString(), bar, 16, true);
    dataCaixa->setContentsMargins(8, 2, 8, 2);
    dia = label(QStringLiteral("lblDia"), QString(), bar, 12);
    hora = label(QStringLiteral("lblHora"), QString(), bar, 16, true);
    // A long status line wraps inside the room left; it never widens the window.
    status->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    status->setMinimumWidth(150);
    status->setWordWrap(true);
    auto* top = new QHBoxLayout(bar);
    top->setContentsMargins(0, 0, 0, 0);
    top->addWidget(status, 1);
    top->addWidget(rede);
    // The operator above the computer's date: the bar fits a 1024 wide screen.
    auto* who = new QVBoxLayout;
    who->setSpacing(0);
    who->addWidget(user, 0, Qt::AlignRight);
    who->addWidget(dia, 0, Qt::AlignRight);
    top->addLayout(who);
    top->addSpacing(16);
    top->addWidget(dataCaixa);
    top->addSpacing(12);
    top->addWidget(hora);
    return bar;
}

void CounterLayout::showList(const CustomerList& list, const QString& trocoText) {
    soma->clear();
    for (int r = 0; r < list.size(); ++r) {
        QStringList cols;
        for (int c = 0; c < CustomerList::kColumns; ++c)
            cols << list.text(r, CustomerList::Column(c));
        auto* item = new QTreeWidgetItem(cols);
        item->setTextAlignment(2, Qt::AlignRight);
        item->setTextAlignment(3, Qt::AlignRight);
        soma->addTopLevelItem(item);
        soma->scrollToItem(item);
    }
    somaStack->setCurrentIndex(list.isEmpty() ? 0 : 1);
    total->setText(list.isEmpty() ? QStringLiteral("Calcular") : list.total().formatCurrency());
    Tone::set(total, list.isEmpty() ? "apagado" : "");
    troco->setText(trocoText);
}

void CounterLayout::showDayTotals(qint64 count, const Money& sum) {
    // Each half keeps its words together: a narrow box breaks the line between the count and
    // the total, never inside "R$ 237,50".
    const auto together = [](QString s) { return s.replace(QLatin1Char(' '), QChar(0x00A0)); };
    dayTotals->setText(
        together(QStringLiteral("%1 %2").arg(count).arg(
            count == 1 ? QStringLiteral("recebimento") : QStringLiteral("recebimentos"))) +
        QStringLiteral("    ") +
        together(QStringLiteral("Total do dia: %1").arg(sum.formatCurrency())));
}

void CounterLayout::showClock(const QDateTime& now, const QDate& workingDate) {
    dia->setText(now.toString(QStringLiteral("dd/MM/yyyy")));
    hora->setText(QStringLiteral("Agora: ") + now.toString(QStringLiteral("hh:mm:ss AP")));
    // A working date that is not today must not be missed.
    const bool past = workingDate.isValid() && workingDate != now.date();
    dataCaixa->setText(QStringLiteral("Caixa de ") + DateUtil::br(workingDate) +
                       (past ? QStringLiteral(" (não é hoje)") : QString()));
    Tone::set(dataCaixa, past ? "passado" : "data");
}

void CounterLayout::showKinds(const GuideKinds& list, int current) {
    kinds->clear();
    for (const GuideKind& k : list)
        kinds->addItem(k.descricao, k.idcod);
    kinds->setCurrentIndex(current);
}

void CounterLayout::placeRibbon(QLayout* strip) {
    m_layout->addLayout(strip);
}
