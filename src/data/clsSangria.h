#pragma once

#include "Money.h"

#include <QDate>
#include <QList>
#include <QString>
#include <optional>

class clsDataAccess;

// One row of Sangria: money put into or taken out of the till other than by a receipt.
// Every write of the table goes through this class.
class clsSangria {
public:
    explicit clsSangria(clsDataAccess& db) : m_db(&db) {}

    QString DESCRICAO;
    QString TIPO; // "ENTRADA", "SAIDA" or "SANGRIA"
    qint32 ID = 0;
    qint32 IDMOVIMENTO = 0;
    QDate SDATA;
    Money ENTRADA;
    Money SAIDA;

    // A new row; the database assigns ID, read back. A failed write leaves every property as
    // it was.
    bool inserirNovo();
    bool alterar();
    bool excluir(qint32 id); // the row `id`, which becomes ID
    bool excluirEste() { return excluir(ID); }
    bool SQLSelect(qint32 id);

    // The entries of a movement of one kind, newest first; with `pesquisa`, those whose
    // description contains it.
    static std::optional<QList<clsSangria>> listar(clsDataAccess& db, qint32 idMovimento,
                                                   const QString& tipo,
                                                   const QString& pesquisa = {});
    // Every entry of a movement, of every kind, oldest first.
    static std::optional<QList<clsSangria>> doMovimento(clsDataAccess& db, qint32 idMovimento);
    // Withdrawals and payments out of a movement, in the order they were made.
    static std::optional<QList<clsSangria>> debitos(clsDataAccess& db, qint32 idMovimento);

    // Entries of a movement with no amount and no items: left by a run that ended mid-entry.
    static std::optional<QList<clsSangria>> vazios(clsDataAccess& db, qint32 idMovimento);

    struct Somas {
        Money entrada;
        Money saida;
    };
    static std::optional<Somas> somarMovimento(clsDataAccess& db, qint32 idMovimento);

private:
    static std::optional<QList<clsSangria>> select(clsDataAccess& db, const QString& where,
                                                   const QVariantList& params);
    clsDataAccess* m_db; // a pointer so rows can be copied
};
