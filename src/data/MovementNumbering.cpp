#include "MovementNumbering.h"

#include "DialogPort.h"
#include "Transaction.h"
#include "clsContador.h"
#include "clsDataAccess.h"
#include "clsMovimento.h"

std::optional<qint16> MovementNumbering::nextNumber(clsDataAccess& db, DialogPort& dialogs,
                                                    int year) {
    clsContador counter(db);
    if (!counter.SQLSelect(year)) {
        counter.ANO = static_cast<qint16>(year);
        counter.CONTADOR = 1;
        if (!counter.SQLInsert()) {
            dialogs.critical(QStringLiteral("Erro"),
                             QStringLiteral("Erro de gravação do contador!!!"));
            return std::nullopt;
        }
        return counter.CONTADOR;
    }
    counter.ANO = static_cast<qint16>(year);
    counter.CONTADOR = static_cast<qint16>(counter.CONTADOR + 1);
    if (!counter.SQLUpdate()) {
        dialogs.critical(QStringLiteral("Erro"),
                         QStringLiteral("Erro de alteração do contador!!!"));
        return std::nullopt;
    }
    return counter.CONTADOR;
}

bool MovementNumbering::openNew(clsDataAccess& db, DialogPort& dialogs, const QDate& day,
                                clsMovimento& out) {
    Transaction tx(db);
    if (!tx.ok())
        return false;
    const auto number = nextNumber(db, dialogs, day.year());
    if (!number)
        return false;
    out.MDATA = day;
    out.MOV = *number;
    out.STATUS = QStringLiteral("ABERTO");
    out.VALOR_ARRECADADO = out.ENTRADA = out.SAIDA = out.SUPRIMENTO = Money();
    return out.SQLInsert(0) && tx.commit();
}

bool MovementNumbering::openOrResume(clsDataAccess& db, DialogPort& dialogs, const QDate& day,
                                     clsMovimento& out, bool& opened) {
    // A day already open is resumed by a read: no write lock, so no wait for a whole-file check
    // still running at the screen's start.
    opened = false;
    if (out.SQLSelectByDate(day))
        return true;
    // A new day starts on a file checked whole.
    if (!db.wholeFileSound(false))
        return false;
    Transaction tx(db);
    if (!tx.ok())
        return false;
    opened = !out.SQLSelectByDate(day);
    if (opened && !openNew(db, dialogs, day, out))
        return false;
    return tx.commit();
}
