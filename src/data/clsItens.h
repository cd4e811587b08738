#pragma once

#include "Money.h"

#include <QList>
#include <QPair>
#include <QString>
#include <optional>

class clsDataAccess;

// One row of Itens: a kind of money within one cash entry (Sangria). Every write of the table
// goes through this class.
class clsItens {
public:
    explicit clsItens(clsDataAccess& db) : m_db(&db) {}

    qint16 ESPECIE = 0; // IDCOD of a CodBarra row with PADRAO "S"
    qint32 ID = 0;
    qint32 IDSANGRIA = 0;
    QString NUMERO;
    Money VALOR;

    // Read with the listing, not a column: the kind's description.
    QString especieDescricao;

    // A new row; the database assigns ID, read back. A failed write leaves every property as
    // it was.
    bool inserirNovo();
    bool alterar();          // rewrites the row ID
    bool excluir(qint32 id); // the row `id`, which becomes ID
    bool excluirEste() { return excluir(ID); }
    bool SQLSelect(qint32 id);

    // The items of one entry, in the order they were stored, with their kind's description.
    static std::optional<QList<clsItens>> listar(clsDataAccess& db, qint32 idSangria);
    // The kinds of money (CodBarra rows with PADRAO "S"): IDCOD and DESCRICAO, by IDCOD.
    static std::optional<QList<QPair<qint16, QString>>> especies(clsDataAccess& db);

private:
    clsDataAccess* m_db; // a pointer so rows can be copied
};
