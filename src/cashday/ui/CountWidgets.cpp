#include "CountWidgets.h"

#include "CashCount.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QTreeWidget>

namespace CountWidgets {

QLineEdit* amountField(QWidget* parent, const char* name) {
    auto* f = new QLineEdit(parent);
    f->setObjectName(QLatin1String(name));
    f->setReadOnly(true);
    f->setAlignment(Qt::AlignRight);
    f->setMaximumWidth(170);
    return f;
}

QTreeWidget* linesList(QWidget* parent) {
    auto* l = new QTreeWidget(parent);
    l->setObjectName(QStringLiteral("List1"));
    l->setRootIsDecorated(false);
    l->setAlternatingRowColors(true);
    l->setHeaderLabels({QStringLiteral("Código"), QStringLiteral("Espécie"),
                        QStringLiteral("Número"), QStringLiteral("Valor")});
    l->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    l->setContextMenuPolicy(Qt::ActionsContextMenu);
    return l;
}

void fillEspecies(QComboBox* combo, AppContext& ctx) {
    combo->clear();
    for (const auto& [id, desc] : CashCount::especies(ctx))
        combo->addItem(desc, int(id));
    combo->setCurrentIndex(combo->count() > 0 ? 0 : -1);
}

QString key(qint32 id) {
    return QStringLiteral("%1").arg(id, 4, 10, QLatin1Char('0'));
}

} // namespace CountWidgets
