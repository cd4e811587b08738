#pragma once

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

class clsDataAccess;

// RECEBIMENTOS1: the codes received at every counter, consulted by the duplicate refusal. With a
// central database ([Rede] in Config.ini) the table lives there, one row per code (a unique
// index), with the counter, the moment and the authentication; without one, the counter's own
// table is read.
class clsRecebimentos1 {
public:
    explicit clsRecebimentos1(clsDataAccess& db) : m_db(&db) {}

    qint64 ID = 0;
    QString CODBARRA;
    QString GUICHE;
    QString MOMENTO; // ISO text, as the counter recorded it
    qint32 AUTENTICA = 0;
    QString ORIGEM; // the database that published it (OrigemRede), or the import it came from
    qint64 IDRECEBE = 0;

    // How many rows carry this barcode.
    static std::optional<int> contarCodigo(clsDataAccess& db, const QString& codbarra);
    // At the central: whether a receipt or a live claim holds the code (an expired claim does not).
    static std::optional<bool> retidoNaCentral(clsDataAccess& db, const QString& codbarra);

    // Claims, at the central, every code of one payment under `reserva` for `validadeS` seconds of
    // the central's clock. A code is taken only when nobody holds it, or it is held by a claim of
    // this same database (one whose payment failed) or one that has expired; the caller's
    // transaction decides whether the claims stand. Answers how many codes were taken.
    static std::optional<int> reservar(clsDataAccess& db, const QStringList& codes,
                                       const QString& reserva, const QString& origem,
                                       const QString& guiche, const QString& momento,
                                       int validadeS);
    // One of `codes` held by anyone but `reserva`: true with this object filled.
    std::optional<bool> SQLSelectRetido(const QStringList& codes, const QString& reserva);
    // Lets the codes of a claim go; a code already received under it stays.
    static bool liberar(clsDataAccess& db, const QString& reserva);

    // The row of this code: true when found, false when there is none, nullopt on failure.
    std::optional<bool> SQLSelect(const QString& codbarra);
    // True when inserted (or when it turned this database's claim, or an expired one, into the
    // receipt), false when the code was already there (the unique index decides), nullopt on
    // failure.
    std::optional<bool> SQLInsert();
    // Withdraws the row this database published for this receipt; another's row of the same
    // code stays. No row is not a failure.
    bool SQLDelete();

    // Codes of an earlier database, all in one statement; a code already there is left as it is.
    // Answers how many were inserted.
    static std::optional<qint64> importar(clsDataAccess& db, const QStringList& codes,
                                          const QString& origem, const QString& guiche);
    static std::optional<qint64> contar(clsDataAccess& db);
    // The codes received on `dia` (by the counters' own MOMENTO), by counter and moment; a live
    // claim is not a receipt yet and is left out.
    static std::optional<QList<clsRecebimentos1>> doDia(clsDataAccess& db, const QDate& dia);

private:
    clsDataAccess* m_db; // a pointer so rows can be copied
};
