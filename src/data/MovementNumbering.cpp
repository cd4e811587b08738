#include "MovementNumbering.h"

#include "Transaction.h"
#include "clsContador.h"
#include "clsDataAccess.h"
#include "clsMovimento.h"

std::optional<qint16> MovementNumbering::nextNumber(clsDataAccess& db, int year, Outcome& why) {
    clsContador counter(db);
    if (!counter.SQLSelect(year)) {
        counter.ANO = static_cast<qint16>(year);
        counter.CONTADOR = 1;
        if (!counter.SQLInsert()) {
            why = Outcome::CounterNotWritten;
            return std::nullopt;
        }
        return counter.CONTADOR;
    }
    counter.ANO = static_cast<qint16>(year);
    counter.CONTADOR = static_cast<qint16>(counter.CONTADOR + 1);
    if (!counter.SQLUpdate()) {
        why = Outcome::CounterNotUpdated;
        return std::nullopt;
    }
    return counter.CONTADOR;
}

MovementNumbering::Outcome MovementNumbering::openNew(clsDataAccess& db, const QDate& day,
                                                      clsMovimento& out) {
    Transaction tx(db);
    if (!tx.ok())
        return Outcome::Failed;
    Outcome why = Outcome::Failed;
    const auto number = nextNumber(db, day.year(), why);
    if (!number)
        return why;
    out.MDATA = day;
    out.MOV = *number;
    out.setStatus(DayStatus::Open);
    out.VALOR_ARRECADADO = out.ENTRADA = out.SAIDA = out.SUPRIMENTO = Money();
    return out.inserirNovo() && tx.commit() ? Outcome::Opened : Outcome::Failed;
}

MovementNumbering::Outcome MovementNumbering::openOrResume(clsDataAccess& db, const QDate& day,
                                                           clsMovimento& out) {
    // A day already open is resumed by a read: no write lock, so no wait for a whole-file check
    // still running at the screen's start.
    if (out.SQLSelectByDate(day))
        return Outcome::Resumed;
    // A new day starts on a file checked whole.
    if (!db.wholeFileSound(false))
        return Outcome::Failed;
    Transaction tx(db);
    if (!tx.ok())
        return Outcome::Failed;
    Outcome result = Outcome::Resumed;
    if (!out.SQLSelectByDate(day))
        result = openNew(db, day, out);
    if (!succeeded(result))
        return result;
    return tx.commit() ? result : Outcome::Failed;
}
