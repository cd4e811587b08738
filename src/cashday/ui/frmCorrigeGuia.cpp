#include "frmCorrigeGuia.h"

#include "AdminGuard.h"
#include "AppContext.h"
#include "CashEntry.h"
#include "DialogPort.h"
#include "FileText.h"
#include "SystemTexts.h"
#include "clsCodBarra.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
QLineEdit* field(QWidget* parent, const char* name, bool readOnly = false) {
    auto* e = new QLineEdit(parent);
    e->setObjectName(QLatin1String(name));
    e->setReadOnly(readOnly);
    return e;
}

QString zeros(int n, int width) {
    return QStringLiteral("%1").arg(n, width, 10, QLatin1Char('0'));
}
} // namespace

frmCorrigeGuia::frmCorrigeGuia(AppContext& ctx, CounterPrinter* printer, QWidget* parent)
    : QDialog(parent), m_ctx(ctx), m_corrections(ctx, printer) {
    setObjectName(QStringLiteral("frmCorrigeGuia"));
    setWindowTitle(QStringLiteral("Correção e Estorno de Recebimentos"));
    m_lista = new QTreeWidget(this);
    m_lista->setObjectName(QStringLiteral("ListView1"));
    m_lista->setRootIsDecorated(false);
    m_lista->setHeaderLabels({QStringLiteral("Ordem"), QStringLiteral("Autent."),
                              QStringLiteral("Tipo"), QStringLiteral("Descrição"),
                              QStringLiteral("Valor"), QStringLiteral("Código de Barras")});
    m_lista->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    connect(m_lista, &QTreeWidget::itemDoubleClicked, this, &frmCorrigeGuia::selecionar);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(buildSearch());
    layout->addWidget(m_lista, 1);
    layout->addLayout(buildForm());
    layout->addLayout(buildButtons());
    resize(760, 620);
    Lista_Movimento_dia();
}

QLayout* frmCorrigeGuia::buildSearch() {
    m_pesquisa = field(this, "txtpesquisa");
    m_pesquisa->setPlaceholderText(QStringLiteral("autenticação"));
    auto* procura = new QPushButton(QStringLiteral("&Procurar"), this);
    procura->setObjectName(QStringLiteral("cmdProcura"));
    connect(procura, &QPushButton::clicked, this, &frmCorrigeGuia::procurar);
    connect(m_pesquisa, &QLineEdit::returnPressed, this, &frmCorrigeGuia::procurar);
    auto* search = new QHBoxLayout;
    search->addWidget(new QLabel(QStringLiteral("Pesquisar autenticação:"), this));
    search->addWidget(m_pesquisa);
    search->addWidget(procura);
    return search;
}

QLayout* frmCorrigeGuia::buildForm() {
    m_ordem = field(this, "txtordem", true);
    m_aut = field(this, "txtaut");
    m_orgao = new QComboBox(this);
    m_orgao->setObjectName(QStringLiteral("cmbOrgao"));
    for (const GuideKind& k :
         clsCodBarra::listar(m_ctx.db, clsCodBarra::Lista::Entrada).value_or(GuideKinds{}))
        m_orgao->addItem(k.descricao, k.idcod);
    m_orgao->setCurrentIndex(-1);
    m_barra = field(this, "txtbarra");
    m_barra->setMaxLength(44);
    m_valor = field(this, "mskvalor");
    m_valorAntigo = field(this, "txtvalorantigo", true);
    m_tipoAntigo = field(this, "txttipoantigo", true);
    m_motivo = field(this, "txtmotivo");
    m_motivo->setMaxLength(FileText::width(FileText::Field::Motivo));
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Ordem:"), m_ordem);
    form->addRow(QStringLiteral("Autenticação:"), m_aut);
    form->addRow(QStringLiteral("Tipo:"), m_orgao);
    form->addRow(QStringLiteral("Código de barras:"), m_barra);
    form->addRow(QStringLiteral("Valor:"), m_valor);
    form->addRow(QStringLiteral("Valor anterior:"), m_valorAntigo);
    form->addRow(QStringLiteral("Tipo anterior:"), m_tipoAntigo);
    form->addRow(QStringLiteral("Motivo:"), m_motivo);
    return form;
}

QLayout* frmCorrigeGuia::buildButtons() {
    auto button = [this](const char* name, const QString& text, auto slot) {
        auto* b = new QPushButton(text, this);
        b->setObjectName(QLatin1String(name));
        b->setAutoDefault(false);
        connect(b, &QPushButton::clicked, this, slot);
        return b;
    };
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(
        button("cmdSelecionar", QStringLiteral("&Selecionar"), &frmCorrigeGuia::selecionar));
    buttons->addWidget(button("cmdAlterar", QStringLiteral("&Alterar"), &frmCorrigeGuia::alterar));
    buttons->addWidget(
        button("cmdEstornar", QStringLiteral("&Estornar"), &frmCorrigeGuia::estornar));
    buttons->addStretch();
    buttons->addWidget(button("cmdFechar", QStringLiteral("&Fechar"), &QDialog::accept));
    return buttons;
}

bool frmCorrigeGuia::abrir(AppContext& ctx, CounterPrinter* printer, const QString& title,
                           QWidget* parent) {
    if (!AdminGuard::ask(ctx, Act::Correcoes, title))
        return false;
    const AuthorizedScope allowed(ctx);
    frmCorrigeGuia form(ctx, printer, parent);
    form.exec();
    return form.corrigiu();
}

void frmCorrigeGuia::Lista_Movimento_dia(std::optional<qint32> autentica) {
    m_lista->clear();
    for (const auto& r :
         m_corrections.listar(autentica).value_or(QList<clsRecebimentos::Corrigivel>{})) {
        auto* item =
            new QTreeWidgetItem({zeros(r.idrecebe, 4), zeros(r.autentica, 3), zeros(r.idcod, 2),
                                 r.descricao, r.valor.format(), r.codbarra});
        item->setTextAlignment(4, Qt::AlignRight);
        item->setData(0, Qt::UserRole, r.idrecebe);
        m_lista->addTopLevelItem(item);
    }
}

void frmCorrigeGuia::procurar() {
    const QString text = m_pesquisa->text().trimmed();
    if (text.isEmpty()) {
        Lista_Movimento_dia();
        return;
    }
    bool ok = false;
    const int n = text.toInt(&ok);
    if (!ok || n < 1) {
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::AutenticaInvalida));
        return;
    }
    Lista_Movimento_dia(n);
}

void frmCorrigeGuia::selecionar() {
    QTreeWidgetItem* item = m_lista->currentItem();
    if (!item) {
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::InformeItem));
        return;
    }
    const qint32 id = item->data(0, Qt::UserRole).toInt();
    m_selecionado.reset();
    for (const auto& r : m_corrections.listar().value_or(QList<clsRecebimentos::Corrigivel>{}))
        if (r.idrecebe == id)
            m_selecionado = r;
    if (!m_selecionado) {
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::RecebimentoNaoEncontrado));
        Lista_Movimento_dia();
        return;
    }
    m_ordem->setText(zeros(m_selecionado->idrecebe, 4));
    m_aut->setText(QString::number(m_selecionado->autentica));
    m_orgao->setCurrentIndex(m_orgao->findData(int(m_selecionado->idcod)));
    m_barra->setText(m_selecionado->codbarra);
    m_valor->setText(m_selecionado->valor.format());
    m_valorAntigo->setText(m_selecionado->valor.format());
    m_tipoAntigo->setText(m_selecionado->descricao);
    m_motivo->setFocus();
}

void frmCorrigeGuia::alterar() {
    CorrectionRequest::AsTyped typed;
    typed.idrecebe = m_selecionado ? m_selecionado->idrecebe : 0;
    typed.tipo = m_orgao->currentIndex() < 0 ? QString() : m_orgao->currentData().toString();
    typed.autentica = m_aut->text();
    typed.codbarra = m_barra->text();
    typed.valor = m_valor->text();
    typed.motivo = m_motivo->text();
    const CorrectionRequest::Read read = CorrectionRequest::read(typed);
    const ReceiptCorrections::Resultado res =
        read.request ? m_corrections.alterar(*read.request)
                     : ReceiptCorrections::Resultado::refused(read.refusal);
    res.mostrar(m_ctx.dialogs);
    if (!res.feito) {
        if (m_motivo->text().trimmed().isEmpty())
            m_motivo->setFocus();
        return;
    }
    m_corrigiu = true;
    limpar();
}

void frmCorrigeGuia::estornar() {
    if (!m_selecionado) {
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::InformeItem));
        return;
    }
    if (const Notice n = m_corrections.recusaEstorno(m_selecionado->idrecebe, m_motivo->text());
        !n.empty()) {
        tell(m_ctx.dialogs, n);
        if (m_motivo->text().trimmed().isEmpty())
            m_motivo->setFocus();
        return;
    }
    if (!askNotice(m_ctx.dialogs, ReceiptCorrections::perguntaEstorno(
                                      m_selecionado->autentica,
                                      m_corrections.arquivosBanco(m_selecionado->idrecebe))))
        return;
    const ReceiptCorrections::Resultado res =
        m_corrections.estornar(m_selecionado->idrecebe, m_motivo->text());
    res.mostrar(m_ctx.dialogs);
    if (!res.feito)
        return;
    m_corrigiu = true;
    limpar();
}

void frmCorrigeGuia::limpar() {
    m_selecionado.reset();
    for (QLineEdit* e : {m_ordem, m_aut, m_barra, m_valor, m_valorAntigo, m_tipoAntigo, m_motivo})
        e->clear();
    m_orgao->setCurrentIndex(-1);
    m_pesquisa->clear();
    Lista_Movimento_dia();
}
