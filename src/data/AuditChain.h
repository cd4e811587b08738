#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <optional>

class clsDataAccess;

// Tamper evidence for the counter's money rows. Every insert, update and delete of a chained
// table adds one entry to the append-only table Cadeia: the row's whole content as written, and
// a SHA-256 hash of that content together with the previous entry's hash. The entries form one
// chain per database (a database belongs to one counter). Changing a row with any SQLite or
// PostgreSQL tool leaves it different from its last entry; rewriting the entries breaks the
// hashes after them; rewriting the whole chain changes its last hash, which the closing of each
// day prints on the tape and keeps in Movimento.HASH_CADEIA.
//
// Joining the chain is one call in the record class, inside the transaction that wrote the row
// and after the write (the entry must be written or the whole change rolls back):
//
//     Transaction tx(*m_db);
//     if (!m_db->SQLExecute("UPDATE Sangria SET ... WHERE ID = ?", {...}) ||
//         !AuditChain::track(*m_db, QStringLiteral("Sangria"), QStringLiteral("ID"), ID,
//                            AuditChain::Op::Update))
//         return false;
//     return tx.commit();
//
// A statement that changes many rows uses trackWhere with the same condition. The content is
// every column of the row (SELECT *); a column added later is covered from the row's next
// change on. Add the table to kTables in AuditChain.cpp as well, so that `auditar` also finds
// rows inserted behind the program's back before the table's first entry.
class AuditChain {
public:
    enum class Op { Insert, Update, Delete };

    static bool track(clsDataAccess& db, const QString& table, const QString& keyColumn, qint64 key,
                      Op op);
    // One statement and its entry in a transaction of their own (a savepoint inside the
    // caller's): both are written or neither. insert() runs an identity insert and gives its key.
    static bool insert(clsDataAccess& db, const QString& table, const QString& keyColumn,
                       const QString& sql, const QVariantList& params, qint64& newKey);
    static bool execute(clsDataAccess& db, const QString& table, const QString& keyColumn,
                        qint64 key, Op op, const QString& sql, const QVariantList& params);
    // One entry per row matching `where` (a condition over the table's columns), in key order.
    static bool trackWhere(clsDataAccess& db, const QString& table, const QString& keyColumn,
                           const QString& where, const QVariantList& params);

    // The chain's last hash; the genesis (64 zeros) while it is empty; nullopt on failure.
    static std::optional<QString> lastHash(clsDataAccess& db);
    static const QString kGenesis;

    // Rows of the chained tables that have no entry yet (a database from before the chain)
    // join it as they are. Run by the schema update that creates the chain.
    static bool adoptExisting(clsDataAccess& db);

    struct Report {
        bool ok = true;
        qint64 entries = 0;       // chain entries checked
        qint64 rows = 0;          // table rows compared with their last entry
        QString lastHash;         // of the whole chain
        QStringList problems;     // in chain order; the first is the first row that differs
        bool anchorFound = true;  // the movement's closing hash is in the chain
        QStringList sealsMissing; // days (as `seals` names them) whose seal is not in the chain
    };
    // Recomputes the chain and compares every row with its last entry. With `idMovimento`, only
    // that movement's rows are compared (the chain itself is always checked whole) and
    // `anchor`, the hash kept at its closing, must be one of the chain's hashes.
    static Report audit(clsDataAccess& db, std::optional<qint64> idMovimento = std::nullopt,
                        const QString& anchor = QString());
    // The whole chain, and every closed day's seal (hash -> the day's name, "23/11/2026") must
    // be one of its hashes: a chain rebuilt after a day was closed no longer holds that day's
    // seal.
    static Report audit(clsDataAccess& db, const QMap<QString, QString>& seals);

    // The hash of one entry, from the previous entry's hash and the entry's fields.
    static QString entryHash(const QString& previous, qint64 seq, const QString& table,
                             const QString& keyColumn, qint64 key, const QString& op,
                             const QString& momento, const QString& content);

private:
    static Report scan(clsDataAccess& db, std::optional<qint64> idMovimento,
                       const QMap<QString, QString>& seals);
};
