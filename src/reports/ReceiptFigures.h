#pragma once

#include "Money.h"
#include "clsRecebimentos.h"

#include <QList>
#include <QString>
#include <array>

// The receipts of a movement summed by kind of guide and by hour of the day. What was paid is
// split into the value the document carries and the charges the counter added; items without a
// document of their own (and codes whose value cannot be read) count whole as face value.
struct ReceiptFigures {
    struct Kind {
        int idcod = 0;
        QString descricao;
        qint64 quantidade = 0;
        Money valorFace;
        Money encargos;
        Money total;
        void add(const clsRecebimentos& r);
    };
    QList<Kind> porTipo; // by IDCOD
    Kind todos;
    std::array<Kind, 24> porHora; // by the hour of MOMENTO; receipts without one are left out
    qint64 semHora = 0;

    static ReceiptFigures of(const QList<clsRecebimentos::ComTipo>& receipts);
    // The document's value within what was paid.
    static Money valorFace(const clsRecebimentos& r);
};
