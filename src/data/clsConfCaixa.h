#pragma once

#include "Money.h"

#include <QList>
#include <QString>
#include <optional>

class clsDataAccess;

// One line of the cash count of a movement (ConfCaixa). Every write of the table goes through
// this class.
class clsConfCaixa {
public:
    explicit clsConfCaixa(clsDataAccess& db) : m_db(&db) {}

    qint16 ESPECIE = 0; // IDCOD of a kind of money
    qint32 ID = 0;
    qint32 IDMOVIMENTO = 0;
    QString NUMERO;
    Money VALOR;

    // Read with the listing, not a column: the kind's description.
    QString especieDescricao;

    // A non-zero id becomes ID and is written as the key; with 0 the database numbers the row
    // and ID is read back. A failed write leaves every property as it was.
    bool SQLInsert(qint32 id);
    bool SQLUpdate(qint32 id); // a non-zero id first becomes ID
    bool SQLDelete(qint32 id); // a non-zero id first becomes ID
    bool SQLSelect(qint32 id);

    // The count of a movement, in the order it was typed, with each kind's description.
    static std::optional<QList<clsConfCaixa>> listar(clsDataAccess& db, qint32 idMovimento);

private:
    clsDataAccess* m_db; // a pointer so rows can be copied
};
