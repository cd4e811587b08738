#pragma once

#include "clsRecebimentos.h"

#include <QAbstractTableModel>
#include <functional>

// The day's receipts for lstLancado, newest first, read a page at a time as the list scrolls.
// A payment adds its own rows at the top, so the cost of a payment does not grow with the day.
class LancadosModel : public QAbstractTableModel {
    Q_OBJECT
public:
    // One page below a receipt id (0: from the newest).
    using Loader = std::function<QList<clsRecebimentos::Lancado>(qint32 antesDe, int limite)>;
    explicit LancadosModel(Loader loader, QObject* parent = nullptr);

    void reload(); // the first page again
    // Rows just recorded, in the order they were recorded.
    void addRecorded(const QList<clsRecebimentos::Lancado>& rows);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation o, int role) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;

    static constexpr int kPage = 200;

private:
    Loader m_loader;
    QList<clsRecebimentos::Lancado> m_rows; // newest first
    bool m_more = false;
};
