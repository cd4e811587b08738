#include "ReversalUndoDialog.h"

#include "AdminGuard.h"
#include "AppContext.h"
#include "CashEntry.h"
#include "DialogPort.h"
#include "SystemTexts.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

ReversalUndoDialog::ReversalUndoDialog(AppContext& ctx, CounterPrinter* printer, QWidget* parent)
    : QDialog(parent), m_ctx(ctx), m_corrections(ctx, printer) {
    setObjectName(QStringLiteral("ReversalUndoDialog"));
    setWindowTitle(QStringLiteral("Reverter Estorno"));
    m_lista = new QTreeWidget(this);
    m_lista->setObjectName(QStringLiteral("lstEstornos"));
    m_lista->setRootIsDecorated(false);
    m_lista->setHeaderLabels({QStringLiteral("Autent."), QStringLiteral("Tipo"),
                              QStringLiteral("Valor"), QStringLiteral("Hora"),
                              QStringLiteral("Usuário"), QStringLiteral("Motivo")});
    m_lista->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    auto* revert = new QPushButton(QStringLiteral("&Reverter"), this);
    revert->setObjectName(QStringLiteral("cmdReverter"));
    connect(revert, &QPushButton::clicked, this, &ReversalUndoDialog::reverter);
    auto* close = new QPushButton(QStringLiteral("&Fechar"), this);
    close->setObjectName(QStringLiteral("cmdFechar"));
    close->setAutoDefault(false);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(revert);
    row->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_lista, 1);
    layout->addLayout(row);
    resize(640, 360);
    carregar();
}

bool ReversalUndoDialog::abrir(AppContext& ctx, CounterPrinter* printer, const QString& title,
                               QWidget* parent) {
    if (!AdminGuard::ask(ctx, Act::Correcoes, title))
        return false;
    const AuthorizedScope allowed(ctx);
    ReversalUndoDialog dialog(ctx, printer, parent);
    dialog.exec();
    return dialog.reverteu();
}

void ReversalUndoDialog::carregar() {
    m_lista->clear();
    for (const clsEstornos& e :
         m_corrections.estornosRevertiveis().value_or(QList<clsEstornos>{})) {
        auto* item = new QTreeWidgetItem(
            {QStringLiteral("%1").arg(e.AUTENTICA, 3, 10, QLatin1Char('0')),
             m_corrections.descricaoTipo(e.TIPO), e.VALOR.format(),
             e.MOMENTO.toString(QStringLiteral("hh:mm:ss")), e.USUARIO, e.MOTIVO});
        item->setTextAlignment(2, Qt::AlignRight);
        item->setData(0, Qt::UserRole, e.IDRECEBE);
        item->setData(1, Qt::UserRole, int(e.AUTENTICA));
        m_lista->addTopLevelItem(item);
    }
}

void ReversalUndoDialog::reverter() {
    QTreeWidgetItem* item = m_lista->currentItem();
    if (!item) {
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::InformeItem));
        return;
    }
    const qint32 id = item->data(0, Qt::UserRole).toInt();
    const auto aut = static_cast<qint16>(item->data(1, Qt::UserRole).toInt());
    if (const Notice n = m_corrections.recusaReversao(id); !n.empty()) {
        tell(m_ctx.dialogs, n);
        return;
    }
    if (!askNotice(m_ctx.dialogs, ReceiptCorrections::perguntaReversao(aut)))
        return;
    const ReceiptCorrections::Resultado res = m_corrections.reverter(id);
    res.mostrar(m_ctx.dialogs);
    if (res.feito)
        m_reverteu = true;
    carregar();
}
