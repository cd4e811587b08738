#pragma once

#include "Money.h"

#include <QString>

class clsDataAccess;

// One row of Suprimentos, a catalogue of supply kinds that no screen of the cash day writes:
// the supplies of a day are kept in its movement.
class clsSuprimentos {
public:
    explicit clsSuprimentos(clsDataAccess& db) : m_db(&db) {}

    qint32 ID = 0;
    QString DESCRICAO;
    qint16 TIPO = 0;
    Money VALOR;

    // A new row; ID is read back only when it was not set before.
    bool SQLInsert();
    // Never succeeds: its statement keeps a comma before WHERE, which the database rejects.
    bool SQLUpdate();
    // A non-zero id first becomes ID; the rows matched are those whose CODIGO equals it.
    bool SQLDelete(qint32 id);

private:
    clsDataAccess* m_db;
};
