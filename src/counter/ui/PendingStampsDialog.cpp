#include "PendingStampsDialog.h"

#include "AppContext.h"
#include "CounterSession.h"
#include "DialogPort.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

PendingStampsDialog::PendingStampsDialog(CounterSession& session, QWidget* parent)
    : QDialog(parent), m_session(session) {
    setObjectName(QStringLiteral("frmPendentes"));
    setWindowTitle(QStringLiteral("Documentos sem autenticação"));
    m_list = new QTreeWidget(this);
    m_list->setObjectName(QStringLiteral("lstPendentes"));
    m_list->setRootIsDecorated(false);
    m_list->setHeaderLabels({QStringLiteral("Autenticação"), QStringLiteral("Tipo"),
                             QStringLiteral("Valor"), QStringLiteral("Gravado em"),
                             QStringLiteral("Código de barras")});
    m_list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    auto* stamp = new QPushButton(QStringLiteral("&Autenticar em ordem"), this);
    stamp->setObjectName(QStringLiteral("cmdAutenticar"));
    stamp->setDefault(true);
    auto* close = new QPushButton(QStringLiteral("&Fechar"), this);
    close->setObjectName(QStringLiteral("cmdFechar"));
    connect(stamp, &QPushButton::clicked, this, &PendingStampsDialog::autenticar);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(stamp);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(
        QStringLiteral("Estes documentos foram gravados e a autenticadora não confirmou o "
                       "carimbo. Com a autenticadora pronta, autentique-os na ordem da lista."),
        this));
    layout->addWidget(m_list, 1);
    layout->addLayout(buttons);
    resize(760, 420);
    refresh();
}

bool PendingStampsDialog::refresh() {
    m_list->clear();
    const auto rows = m_session.pendentes();
    for (const clsAutenticacoes::Pendente& p : rows.value_or(QList<clsAutenticacoes::Pendente>{})) {
        auto* item = new QTreeWidgetItem(m_list);
        item->setText(0, QStringLiteral("%1").arg(p.autentica, 4, 10, QLatin1Char('0')));
        item->setText(1, p.descricao);
        item->setText(2, p.valor.format());
        item->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
        item->setText(3, p.momento.toString(QStringLiteral("dd/MM/yyyy hh:mm:ss")));
        item->setText(4, p.codbarra);
    }
    return m_list->topLevelItemCount() > 0;
}

int PendingStampsDialog::count() const {
    return m_list->topLevelItemCount();
}

void PendingStampsDialog::autenticar() {
    const ReceiptStamps::Outcome o = m_session.autenticarPendentes();
    if (!o.texto.isEmpty())
        m_session.ctx().dialogs.message(o.titulo, o.texto, o.icon, DialogButtons::Ok);
    if (o.result == ReceiptStamps::Result::Enviado || o.result == ReceiptStamps::Result::Nenhum)
        accept(); // the printer's line and the banner follow the stamps from here
}

void PendingStampsDialog::conduzir(
    DialogPort& dialogs, const std::function<ReceiptStamps::Outcome(ReceiptStamps::Repetir)>& act) {
    ReceiptStamps::Outcome o = act(ReceiptStamps::Repetir::Perguntar);
    if (o.result == ReceiptStamps::Result::PrecisaConfirmar)
        o = act(dialogs.ask(o.titulo, o.texto) ? ReceiptStamps::Repetir::Sim
                                               : ReceiptStamps::Repetir::Nao);
    if (!o.texto.isEmpty() && o.result != ReceiptStamps::Result::PrecisaConfirmar)
        dialogs.message(o.titulo, o.texto, o.icon, DialogButtons::Ok);
}
