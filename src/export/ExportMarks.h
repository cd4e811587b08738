#pragma once

#include "Notice.h"

#include <QList>
#include <QPair>
#include <QString>

class AppContext;

// The receipts' EXPORT marks: 0 confirmed (goes to the bank file), 1 rejected (stays out).
// The screen stores the check marks of one of its two lists; the commands name receipts.
class ExportMarks {
public:
    enum class Lista { Confirmados, Rejeitados };
    struct Linha {
        qint32 idrecebe = 0;
        bool marcada = false;
    };

    // The EXPORT mark a list shows: 0 on the confirmed list, 1 on the rejected one.
    static int exportDaLista(Lista lista) { return lista == Lista::Confirmados ? 0 : 1; }
    // What each row's check mark means. On the confirmed list a checked row is rejected and an
    // unchecked one confirmed; on the rejected list a checked row returns to the export and an
    // unchecked one stays rejected.
    static QList<QPair<qint32, int>> marcas(Lista lista, const QList<Linha>& linhas);

    // Stores the marks, all or none; a failure's message is in the outcome.
    static Outcome gravar(AppContext& ctx, const QList<QPair<qint32, int>>& marcas);
    // The commands: the named receipts of the movement get `flag`. A receipt that is not in the
    // movement refuses the whole request (message in the outcome) and nothing is stored.
    static Outcome gravarIds(AppContext& ctx, qint32 idMovimento, const QList<qint32>& ids,
                             int flag);
};
