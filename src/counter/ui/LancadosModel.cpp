#include "LancadosModel.h"

#include <QAbstractItemView>
#include <QScrollBar>

LancadosModel::LancadosModel(Loader loader, QObject* parent)
    : QAbstractTableModel(parent), m_loader(std::move(loader)) {}

void LancadosModel::reload() {
    beginResetModel();
    m_rows = m_loader(0, kPage);
    m_more = m_rows.size() == kPage;
    endResetModel();
}

void LancadosModel::addRecorded(const QList<clsRecebimentos::Lancado>& rows) {
    if (rows.isEmpty())
        return;
    beginInsertRows({}, 0, int(rows.size()) - 1);
    for (const auto& r : rows)
        m_rows.prepend(r); // the last recorded ends on top
    endInsertRows();
}

int LancadosModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_rows.size());
}

int LancadosModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : 3;
}

QVariant LancadosModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= m_rows.size())
        return {};
    const auto& r = m_rows.at(index.row());
    if (role == Qt::DisplayRole) {
        switch (index.column()) {
        case 0:
            return QStringLiteral("%1").arg(r.autentica, 4, 10, QLatin1Char('0'));
        case 1:
            return r.descricao;
        case 2:
            return r.valor.format();
        }
    }
    if (role == Qt::TextAlignmentRole && index.column() == 2)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::UserRole)
        return r.idrecebe;
    return {};
}

QVariant LancadosModel::headerData(int section, Qt::Orientation o, int role) const {
    if (o != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole && section == 2)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return {};
    switch (section) {
    case 0:
        return QStringLiteral("Aut.");
    case 1:
        return QStringLiteral("Descrição");
    case 2:
        return QStringLiteral("Valor");
    }
    return {};
}

void LancadosModel::attach(QAbstractItemView* view) {
    QScrollBar* bar = view->verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this, [this, bar](int value) {
        if (m_more && bar->maximum() > 0 && value >= bar->maximum() - bar->pageStep() / 2)
            loadMore();
    });
}

bool LancadosModel::loadMore() {
    if (!m_more || m_rows.isEmpty())
        return false;
    const auto page = m_loader(m_rows.last().idrecebe, kPage);
    m_more = page.size() == kPage;
    if (page.isEmpty())
        return false;
    beginInsertRows({}, int(m_rows.size()), int(m_rows.size() + page.size()) - 1);
    m_rows += page;
    endInsertRows();
    return true;
}
