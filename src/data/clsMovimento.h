#pragma once

#include "Money.h"

#include <QDate>
#include <QList>
#include <QString>
#include <optional>

class clsDataAccess;
class Recordset;

// The status of a cash day; the column holds "ABERTO" or "FECHADO".
enum class DayStatus { Open, Closed };

// One row of Movimento: a cash day.
class clsMovimento {
public:
    explicit clsMovimento(clsDataAccess& db) : m_db(&db) {}

    qint32 ID = 0;
    QDate MDATA;
    qint16 MOV = 0;
    QString STATUS; // the column's text; read and set through status()/setStatus()
    Money VALOR_ARRECADADO;
    Money ENTRADA;
    Money SAIDA;
    Money SUPRIMENTO;
    QString HASH_CADEIA; // the audit chain's last hash when the day was last closed

    DayStatus status() const;
    void setStatus(DayStatus s);
    bool aberto() const { return status() == DayStatus::Open; }

    bool SQLSelect(qint32 id);
    bool SQLSelectByDate(const QDate& day); // the day's movement, if any (newest first)
    bool inserirNovo();                     // the database assigns ID, read back
    bool inserirComId(qint32 id);           // an explicit key (copies, imports)
    bool SQLUpdate();                       // every column
    // Totals, status and chain hash: closing (after a whole-file check) and reopening.
    bool SQLUpdateTotais();
    bool SQLDelete();

    // The sums written into the movement at closing: the receipts of the movement and the cash
    // entries dated on its day.
    struct SomasDia {
        Money arrecadado;
        Money entrada;
        Money saida;
    };
    // How many cash days the database holds.
    static std::optional<int> contar(clsDataAccess& db);
    // How many days are open.
    static std::optional<int> abertos(clsDataAccess& db);
    // The closed days, oldest first.
    static std::optional<QList<clsMovimento>> encerrados(clsDataAccess& db);
    static std::optional<SomasDia> somarDia(clsDataAccess& db, qint32 idMovimento,
                                            const QDate& dia);

private:
    bool insert(qint32 id);
    bool load(const QString& where, const QVariant& key);
    void fill(const Recordset& rs);
    clsDataAccess* m_db; // a pointer so rows can be copied
};
