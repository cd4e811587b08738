#pragma once

#include "clsRecebimentos.h"

#include <QAbstractTableModel>
#include <functional>

class QAbstractItemView;

// The day's receipts for lstLancado, newest first, read a page at a time as the list is scrolled
// to its end. A payment adds its own rows at the top, so the cost of a payment does not grow with
// the day. Pages are read only when the view asks for them (see attach): a view's own guesses
// while rows are being inserted would otherwise read the whole day.
class LancadosModel : public QAbstractTableModel {
    Q_OBJECT
public:
    // One page below a receipt id (0: from the newest).
    using Loader = std::function<QList<clsRecebimentos::Lancado>(qint32 antesDe, int limite)>;
    explicit LancadosModel(Loader loader, QObject* parent = nullptr);

    void reload(); // the first page again
    // Reads the next page whenever `view` is scrolled to its last rows.
    void attach(QAbstractItemView* view);
    bool loadMore();
    // Rows just recorded, in the order they were recorded.
    void addRecorded(const QList<clsRecebimentos::Lancado>& rows);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation o, int role) const override;

    static constexpr int kPage = 200;

private:
    Loader m_loader;
    QList<clsRecebimentos::Lancado> m_rows; // newest first
    bool m_more = false;
};
