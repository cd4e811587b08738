#include "frmSangria.h"

#include "AppContext.h"
#include "CashAmount.h"
#include "DateUtil.h"
#include "DialogPort.h"
#include "FileText.h"
#include "clsMovimento.h"

#include <QAction>
#include <QComboBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
const QString kAutNum = QStringLiteral("Aut.Num.");
const char* kRequired = "obrigatorio";

QString key(qint32 id) {
    return QStringLiteral("%1").arg(id, 4, 10, QLatin1Char('0'));
}

QTreeWidget* list(QWidget* parent, const char* name, const QStringList& headers) {
    auto* l = new QTreeWidget(parent);
    l->setObjectName(QLatin1String(name));
    l->setRootIsDecorated(false);
    l->setAlternatingRowColors(true);
    l->setHeaderLabels(headers);
    l->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    return l;
}
} // namespace

std::optional<EntryKind> frmSangria::kindForMode(const QString& modo) {
    if (modo == QLatin1String("A"))
        return EntryKind::CashIn;
    if (modo == QLatin1String("P"))
        return EntryKind::PaymentOut;
    if (modo == QLatin1String("S"))
        return EntryKind::Withdrawal;
    return std::nullopt;
}

frmSangria::frmSangria(AppContext& ctx, qint32 idMovimento, EntryKind kind, QWidget* parent)
    : QDialog(parent), m_ctx(ctx), m_idMovimento(idMovimento), m_entry(ctx, idMovimento, kind) {
    setObjectName(QStringLiteral("frmSangria"));
    setWindowTitle(EntryKinds::caption(kind));
    m_tabs = new QTabWidget(this);
    m_tabs->setObjectName(QStringLiteral("SSTab1"));
    auto* entryTab = new QWidget(m_tabs);
    auto* listTab = new QWidget(m_tabs);
    buildEntryTab(entryTab);
    buildListTab(listTab);
    m_tabs->addTab(entryTab, QStringLiteral("Lançamento"));
    m_tabs->addTab(listTab, QStringLiteral("Lançamentos do dia"));
    auto* close = new QPushButton(QStringLiteral("&Fechar"), this);
    close->setObjectName(QStringLiteral("cmdFechar"));
    connect(close, &QPushButton::clicked, this, &frmSangria::reject);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch();
    bottom->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs);
    layout->addLayout(bottom);
    resize(720, 560);

    clsMovimento mov(ctx.db);
    if (mov.SQLSelect(idMovimento))
        m_data->setDate(mov.MDATA);
    CashEntry::descartarVazios(ctx, idMovimento);
    fillEspecies();
    resetEntry();
    Lista_Sangria();
    m_tabs->setCurrentIndex(0);
}

void frmSangria::buildEntryTab(QWidget* tab) {
    auto* header = buildEntryHeader(tab);
    buildItemFrame(tab);
    auto* finish = new QPushButton(QStringLiteral("&Concluir Lançamento"), tab);
    finish->setObjectName(QStringLiteral("Command1"));
    connect(finish, &QPushButton::clicked, this, &frmSangria::concluir);
    auto* finishRow = new QHBoxLayout;
    finishRow->addStretch();
    finishRow->addWidget(finish);
    auto* layout = new QVBoxLayout(tab);
    layout->addLayout(header);
    layout->addWidget(m_itemFrame, 1);
    layout->addLayout(finishRow);
}

QGridLayout* frmSangria::buildEntryHeader(QWidget* tab) {
    m_ordem = new QLineEdit(kAutNum, tab);
    m_ordem->setObjectName(QStringLiteral("txtordem"));
    m_ordem->setReadOnly(true);
    m_ordem->setMaximumWidth(110);
    m_data = new QDateEdit(tab);
    m_data->setObjectName(QStringLiteral("dtpData"));
    m_data->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    m_data->setEnabled(false); // an entry always carries its cash day's date
    m_tipo = new QComboBox(tab);
    m_tipo->setObjectName(QStringLiteral("cmbTipo"));
    for (EntryKind k : {EntryKind::CashIn, EntryKind::PaymentOut, EntryKind::Withdrawal})
        m_tipo->addItem(EntryKinds::tipo(k));
    m_tipo->setEnabled(false);
    m_tipo->setProperty(kRequired, true);
    m_descricao = new QLineEdit(tab);
    m_descricao->setObjectName(QStringLiteral("txtdescricao"));
    m_descricao->setMaxLength(150);
    m_descricao->setProperty(kRequired, true);
    m_valor = new QLineEdit(tab);
    m_valor->setObjectName(QStringLiteral("txtvalor"));
    m_valor->setReadOnly(true);
    m_valor->setAlignment(Qt::AlignRight);
    m_valor->setMaximumWidth(160);
    m_incluir = new QPushButton(QStringLiteral("&Incluir Itens"), tab);
    m_incluir->setObjectName(QStringLiteral("cmdIncluirItens"));
    connect(m_descricao, &QLineEdit::returnPressed, m_incluir, &QPushButton::click);
    connect(m_incluir, &QPushButton::clicked, this, &frmSangria::incluirItens);

    auto* header = new QGridLayout;
    header->addWidget(new QLabel(QStringLiteral("Código:"), tab), 0, 0);
    header->addWidget(m_ordem, 0, 1);
    header->addWidget(new QLabel(QStringLiteral("Data:"), tab), 0, 2);
    header->addWidget(m_data, 0, 3);
    header->addWidget(new QLabel(QStringLiteral("Tipo:"), tab), 0, 4);
    header->addWidget(m_tipo, 0, 5);
    header->addWidget(new QLabel(QStringLiteral("Descrição:"), tab), 1, 0);
    header->addWidget(m_descricao, 1, 1, 1, 5);
    header->addWidget(new QLabel(QStringLiteral("Valor:"), tab), 2, 0);
    header->addWidget(m_valor, 2, 1);
    header->addWidget(m_incluir, 2, 5);
    return header;
}

void frmSangria::buildItemFrame(QWidget* tab) {
    m_itemFrame = new QGroupBox(QStringLiteral("Itens"), tab);
    m_itemFrame->setObjectName(QStringLiteral("fraItens"));
    m_especie = new QComboBox(m_itemFrame);
    m_especie->setObjectName(QStringLiteral("cmbEspecie"));
    m_especie->setProperty(kRequired, true);
    m_numero = new QLineEdit(m_itemFrame);
    m_numero->setObjectName(QStringLiteral("txtnumero"));
    m_numero->setMaxLength(FileText::width(FileText::Field::NumeroDocumento));
    m_valorItem = new QLineEdit(m_itemFrame);
    m_valorItem->setObjectName(QStringLiteral("mskValorItem"));
    m_valorItem->setProperty(kRequired, true);
    auto button = [this](const char* name, const QString& text, void (frmSangria::*slot)()) {
        auto* b = new QPushButton(text, m_itemFrame);
        b->setObjectName(QLatin1String(name));
        connect(b, &QPushButton::clicked, this, slot);
        return b;
    };
    auto* add = button("cmdAdd", QStringLiteral("&Novo"), &frmSangria::novoItem);
    m_save = button("cmdSave", QStringLiteral("&Gravar"), &frmSangria::salvarItem);
    auto* del = button("cmdDel", QStringLiteral("E&xcluir"), &frmSangria::excluirItem);
    // The keyboard way: Enter on the value stores the item.
    connect(m_valorItem, &QLineEdit::returnPressed, m_save, &QPushButton::click);
    m_itens = list(m_itemFrame, "lstitens",
                   {QStringLiteral("Código"), QStringLiteral("Espécie"), QStringLiteral("Número"),
                    QStringLiteral("Valor")});
    auto* fields = new QHBoxLayout;
    fields->addWidget(new QLabel(QStringLiteral("Espécie:"), m_itemFrame));
    fields->addWidget(m_especie, 2);
    fields->addWidget(new QLabel(QStringLiteral("Número:"), m_itemFrame));
    fields->addWidget(m_numero, 2);
    fields->addWidget(new QLabel(QStringLiteral("Valor:"), m_itemFrame));
    fields->addWidget(m_valorItem, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(add);
    buttons->addWidget(m_save);
    buttons->addWidget(del);
    buttons->addStretch();
    auto* frame = new QVBoxLayout(m_itemFrame);
    frame->addLayout(fields);
    frame->addLayout(buttons);
    frame->addWidget(m_itens);
}

void frmSangria::buildListTab(QWidget* tab) {
    m_pesquisa = new QLineEdit(tab);
    m_pesquisa->setObjectName(QStringLiteral("txtpesquisa"));
    auto* search = new QPushButton(QStringLiteral("&Procurar"), tab);
    search->setObjectName(QStringLiteral("cmdProcura"));
    connect(search, &QPushButton::clicked, this, &frmSangria::Lista_Sangria);
    m_lista = list(tab, "ListView1",
                   {QStringLiteral("Código"), QStringLiteral("Data"), QStringLiteral("Tipo"),
                    QStringLiteral("Valor"), QStringLiteral("Descrição")});
    m_excluir = new QAction(QStringLiteral("&Excluir lançamento"), m_lista);
    m_excluir->setObjectName(QStringLiteral("mnuexcluir"));
    m_excluir->setShortcut(QKeySequence::Delete);
    m_excluir->setShortcutContext(Qt::WidgetShortcut);
    connect(m_excluir, &QAction::triggered, this, &frmSangria::excluirLancamento);
    m_lista->addAction(m_excluir);
    m_lista->setContextMenuPolicy(Qt::ActionsContextMenu);
    auto* remove = new QPushButton(QStringLiteral("&Excluir lançamento"), tab);
    remove->setObjectName(QStringLiteral("cmdExcluir"));
    connect(remove, &QPushButton::clicked, m_excluir, &QAction::trigger);
    m_soma = new QLabel(tab);
    m_soma->setObjectName(QStringLiteral("lblSoma"));
    QFont f = m_soma->font();
    f.setBold(true);
    m_soma->setFont(f);
    auto* top = new QHBoxLayout;
    top->addWidget(new QLabel(QStringLiteral("Descrição:"), tab));
    top->addWidget(m_pesquisa, 1);
    top->addWidget(search);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(remove);
    bottom->addStretch();
    bottom->addWidget(m_soma);
    auto* layout = new QVBoxLayout(tab);
    layout->addLayout(top);
    layout->addWidget(m_lista, 1);
    layout->addLayout(bottom);
}

void frmSangria::fillEspecies() {
    m_especie->clear();
    for (const auto& [id, desc] :
         clsItens::especies(m_ctx.db).value_or(QList<QPair<qint16, QString>>{}))
        m_especie->addItem(desc, int(id));
    m_especie->setCurrentIndex(m_especie->count() > 0 ? 0 : -1); // cash, usually
}

void frmSangria::Lista_Sangria() {
    const auto rows = CashEntry::listar(m_ctx, m_idMovimento, m_entry.kind(), m_pesquisa->text());
    m_lista->clear();
    if (!rows) {
        m_ctx.errors.report(QStringLiteral("Função Lista_Movimento"),
                            {0, m_ctx.db.lastError(), QStringLiteral("frmSangria")});
        return;
    }
    Money sum;
    for (const clsSangria& s : *rows) {
        const Money valor = s.ENTRADA.isZero() ? s.SAIDA : s.ENTRADA;
        sum += valor;
        auto* item = new QTreeWidgetItem(
            {key(s.ID), DateUtil::br(s.SDATA), s.TIPO, valor.format(), s.DESCRICAO});
        item->setData(0, Qt::UserRole, s.ID);
        item->setTextAlignment(3, Qt::AlignRight);
        m_lista->addTopLevelItem(item);
    }
    m_soma->setText(QStringLiteral("TOTAL: R$ ") + sum.format());
}

void frmSangria::showItems() {
    m_itens->clear();
    for (const clsItens& i : m_entry.itens()) {
        auto* item =
            new QTreeWidgetItem({key(i.ID), i.especieDescricao, i.NUMERO, i.VALOR.format()});
        item->setData(0, Qt::UserRole, i.ID);
        item->setTextAlignment(3, Qt::AlignRight);
        m_itens->addTopLevelItem(item);
    }
    m_valor->setText(m_entry.header().ENTRADA.isZero() ? m_entry.header().SAIDA.format()
                                                       : m_entry.header().ENTRADA.format());
}

void frmSangria::resetEntry() {
    const EntryKind k = m_entry.kind();
    m_ordem->setText(kAutNum);
    m_tipo->setCurrentIndex(m_tipo->findText(EntryKinds::tipo(k)));
    m_descricao->setText(EntryKinds::defaultDescription(k));
    m_descricao->setReadOnly(!EntryKinds::descriptionEditable(k));
    m_valor->setText(Money().format());
    m_itens->clear();
    m_numero->clear();
    m_valorItem->clear();
    m_especie->setCurrentIndex(-1);
    m_itemFrame->setEnabled(false);
    m_incluir->setEnabled(true);
    (EntryKinds::descriptionEditable(k) ? static_cast<QWidget*>(m_descricao)
                                        : static_cast<QWidget*>(m_incluir))
        ->setFocus();
}

void frmSangria::focusFirstEmptyRequired() {
    for (QWidget* w : {static_cast<QWidget*>(m_descricao), static_cast<QWidget*>(m_especie),
                       static_cast<QWidget*>(m_valorItem)}) {
        const bool empty = qobject_cast<QLineEdit*>(w)
                               ? qobject_cast<QLineEdit*>(w)->text().trimmed().isEmpty()
                               : qobject_cast<QComboBox*>(w)->currentIndex() < 0;
        if (w->property(kRequired).toBool() && w->isEnabled() && empty) {
            w->setFocus();
            return;
        }
    }
}

void frmSangria::incluirItens() {
    const Outcome done = m_entry.incluirItens(m_descricao->text());
    tell(m_ctx.dialogs, done.notice);
    if (!done) {
        focusFirstEmptyRequired();
        return;
    }
    m_ordem->setText(QString::number(m_entry.header().ID));
    m_descricao->setText(m_entry.header().DESCRICAO);
    m_descricao->setReadOnly(true);
    m_incluir->setEnabled(false);
    m_itemFrame->setEnabled(true);
    Lista_Sangria();
    novoItem();
}

void frmSangria::novoItem() {
    m_especie->setCurrentIndex(m_especie->count() > 0 ? 0 : -1); // the kinds are read once
    m_numero->clear();
    m_valorItem->clear();
    m_save->setEnabled(true);
    m_especie->setFocus();
}

void frmSangria::salvarItem() {
    Notice why;
    const auto valor = CashAmount::read(m_valorItem->text(), why);
    const Outcome done =
        valor ? m_entry.gravarItem(m_especie->currentData().toInt(), m_numero->text(), *valor)
              : Outcome::refused(why);
    tell(m_ctx.dialogs, done.notice);
    if (!done) {
        focusFirstEmptyRequired();
        return;
    }
    showItems();
    Lista_Sangria();
    novoItem();
}

void frmSangria::excluirItem() {
    QTreeWidgetItem* item = m_itens->currentItem();
    if (!item) {
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::InformeItem));
        return;
    }
    if (!askNotice(m_ctx.dialogs, SystemTexts::notice(SystemText::PerguntaExcluirItem)))
        return;
    const Outcome done = m_entry.excluirItem(item->data(0, Qt::UserRole).toInt());
    tell(m_ctx.dialogs, done.notice);
    if (done) {
        showItems();
        Lista_Sangria();
    }
}

void frmSangria::concluir() {
    const Outcome done = m_entry.concluir();
    tell(m_ctx.dialogs, done.notice);
    if (!done)
        return;
    resetEntry();
    Lista_Sangria();
}

void frmSangria::excluirLancamento() {
    QTreeWidgetItem* item = m_lista->currentItem();
    if (!item) {
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::InformeItem));
        return;
    }
    if (CashEntry::fechado(m_ctx, m_idMovimento).value_or(true)) {
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::NaoPodeExcluirFechado));
        return;
    }
    if (!askNotice(m_ctx.dialogs,
                   SystemTexts::notice(SystemText::PerguntaExcluirLancamento).arg(item->text(0))))
        return;
    const qint32 id = item->data(0, Qt::UserRole).toInt();
    const Outcome done = CashEntry::excluirLancamento(m_ctx, m_idMovimento, id);
    tell(m_ctx.dialogs, done.notice);
    if (!done)
        return;
    if (id == m_entry.header().ID) { // the entry on the first tab is gone
        m_entry.sair();
        resetEntry();
    }
    Lista_Sangria();
}

void frmSangria::reject() {
    m_entry.sair(); // a failure was already shown; the operator is not kept here by it
    QDialog::reject();
}
