#include "clsRecebimentos1.h"

#include "clsDataAccess.h"

namespace {
QVariant nullableText(const QString& s) {
    return s.isEmpty() ? QVariant(QMetaType::fromType<QString>()) : QVariant(s);
}
} // namespace

std::optional<int> clsRecebimentos1::contarCodigo(clsDataAccess& db, const QString& codbarra) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT COUNT(*) AS N FROM RECEBIMENTOS1 WHERE CODBARRA = ?"), {codbarra});
    if (!clsDataAccess::CheckValidRecordset(rs))
        return std::nullopt;
    return int(rs->integer(QStringLiteral("N")));
}

std::optional<bool> clsRecebimentos1::retidoNaCentral(clsDataAccess& db, const QString& codbarra) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT COUNT(*) AS N FROM RECEBIMENTOS1 WHERE CODBARRA = ? AND "
                       "(RESERVA_ATE IS NULL OR RESERVA_ATE > now())"),
        {codbarra});
    if (!clsDataAccess::CheckValidRecordset(rs))
        return std::nullopt;
    return rs->integer(QStringLiteral("N")) > 0;
}

std::optional<int> clsRecebimentos1::reservar(clsDataAccess& db, const QStringList& codes,
                                              const QString& reserva, const QString& origem,
                                              const QString& guiche, const QString& momento,
                                              int validadeS) {
    // Sorted, so two counters claiming the same codes wait on them in the same order.
    QStringList sorted = codes;
    sorted.sort();
    sorted.removeDuplicates();
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral(
            "WITH ins AS (INSERT INTO RECEBIMENTOS1 AS r (CODBARRA, GUICHE, MOMENTO, ORIGEM, "
            "RESERVA, RESERVA_ATE) SELECT c, ?, ?, ?, ?, now() + make_interval(secs => ?) FROM "
            "unnest(string_to_array(?, ',')) AS c ORDER BY c ON CONFLICT (CODBARRA) DO UPDATE "
            "SET GUICHE = EXCLUDED.GUICHE, MOMENTO = EXCLUDED.MOMENTO, AUTENTICA = NULL, ORIGEM "
            "= EXCLUDED.ORIGEM, IDRECEBE = NULL, RESERVA = EXCLUDED.RESERVA, RESERVA_ATE = "
            "EXCLUDED.RESERVA_ATE, PUBLICADO = now() WHERE r.RESERVA IS NOT NULL AND (r.ORIGEM "
            "= EXCLUDED.ORIGEM OR r.RESERVA_ATE < now()) RETURNING 1) SELECT COUNT(*) AS N FROM "
            "ins"),
        {nullableText(guiche), momento, origem, reserva, validadeS, sorted.join(QLatin1Char(','))});
    if (!clsDataAccess::CheckValidRecordset(rs))
        return std::nullopt;
    return int(rs->integer(QStringLiteral("N")));
}

std::optional<bool> clsRecebimentos1::SQLSelectRetido(const QStringList& codes,
                                                      const QString& reserva) {
    const auto rs = m_db->SQLSelect_ReadOnly(
        QStringLiteral("SELECT CODBARRA, GUICHE, MOMENTO, ORIGEM FROM RECEBIMENTOS1 WHERE "
                       "CODBARRA = ANY (string_to_array(?, ',')) AND RESERVA IS DISTINCT FROM ? "
                       "ORDER BY CODBARRA LIMIT 1"),
        {codes.join(QLatin1Char(',')), reserva});
    if (!rs)
        return std::nullopt;
    if (!rs->atRow())
        return false;
    CODBARRA = rs->text(QStringLiteral("CODBARRA"));
    GUICHE = rs->text(QStringLiteral("GUICHE"));
    MOMENTO = rs->text(QStringLiteral("MOMENTO"));
    ORIGEM = rs->text(QStringLiteral("ORIGEM"));
    return true;
}

bool clsRecebimentos1::liberar(clsDataAccess& db, const QString& reserva) {
    return db.SQLExecute(QStringLiteral("DELETE FROM RECEBIMENTOS1 WHERE RESERVA = ? AND "
                                        "IDRECEBE IS NULL"),
                         {reserva});
}

std::optional<bool> clsRecebimentos1::SQLSelect(const QString& codbarra) {
    const auto rs = m_db->SQLSelect_ReadOnly(
        QStringLiteral("SELECT ID, CODBARRA, GUICHE, MOMENTO, AUTENTICA, ORIGEM, IDRECEBE FROM "
                       "RECEBIMENTOS1 WHERE CODBARRA = ?"),
        {codbarra});
    if (!rs)
        return std::nullopt;
    if (!rs->atRow())
        return false;
    ID = rs->integer(QStringLiteral("ID"));
    CODBARRA = rs->text(QStringLiteral("CODBARRA"));
    GUICHE = rs->text(QStringLiteral("GUICHE"));
    MOMENTO = rs->text(QStringLiteral("MOMENTO"));
    AUTENTICA = qint32(rs->integer(QStringLiteral("AUTENTICA")));
    ORIGEM = rs->text(QStringLiteral("ORIGEM"));
    IDRECEBE = rs->integer(QStringLiteral("IDRECEBE"));
    return true;
}

std::optional<bool> clsRecebimentos1::SQLInsert() {
    // The insert answers through a select: the unique index says whether the row went in. A
    // claim of this same database becomes the receipt; so does anyone's expired claim.
    const auto rs = m_db->SQLSelect_ReadOnly(
        QStringLiteral("WITH ins AS (INSERT INTO RECEBIMENTOS1 AS r (CODBARRA, GUICHE, MOMENTO, "
                       "AUTENTICA, ORIGEM, IDRECEBE) VALUES (?, ?, ?, ?, ?, ?) ON CONFLICT "
                       "(CODBARRA) DO UPDATE SET GUICHE = EXCLUDED.GUICHE, MOMENTO = "
                       "EXCLUDED.MOMENTO, AUTENTICA = EXCLUDED.AUTENTICA, ORIGEM = "
                       "EXCLUDED.ORIGEM, IDRECEBE = EXCLUDED.IDRECEBE, RESERVA = NULL, "
                       "RESERVA_ATE = NULL, PUBLICADO = now() WHERE r.RESERVA IS NOT NULL AND "
                       "(r.ORIGEM = EXCLUDED.ORIGEM OR r.RESERVA_ATE < now()) RETURNING ID) "
                       "SELECT ID FROM ins"),
        {CODBARRA, nullableText(GUICHE), nullableText(MOMENTO), AUTENTICA, ORIGEM, IDRECEBE});
    if (!rs)
        return std::nullopt;
    if (!rs->atRow())
        return false;
    ID = rs->integer(QStringLiteral("ID"));
    return true;
}

bool clsRecebimentos1::SQLDelete() {
    return m_db->SQLExecute(QStringLiteral("DELETE FROM RECEBIMENTOS1 WHERE CODBARRA = ? AND "
                                           "ORIGEM = ? AND IDRECEBE = ?"),
                            {CODBARRA, ORIGEM, IDRECEBE});
}

std::optional<qint64> clsRecebimentos1::importar(clsDataAccess& db, const QStringList& codes,
                                                 const QString& origem, const QString& guiche) {
    if (codes.isEmpty())
        return 0;
    // One text of comma-separated digits: one bound value whatever the size of the batch.
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("WITH ins AS (INSERT INTO RECEBIMENTOS1 (CODBARRA, ORIGEM, GUICHE) SELECT "
                       "c, ?, ? FROM unnest(string_to_array(?, ',')) AS c ON CONFLICT "
                       "(CODBARRA) DO NOTHING RETURNING 1) SELECT COUNT(*) AS N FROM ins"),
        {origem, nullableText(guiche), codes.join(QLatin1Char(','))});
    if (!clsDataAccess::CheckValidRecordset(rs))
        return std::nullopt;
    return rs->integer(QStringLiteral("N"));
}

std::optional<qint64> clsRecebimentos1::contar(clsDataAccess& db) {
    const auto rs =
        db.SQLSelect_ReadOnly(QStringLiteral("SELECT COUNT(*) AS N FROM RECEBIMENTOS1"));
    if (!clsDataAccess::CheckValidRecordset(rs))
        return std::nullopt;
    return rs->integer(QStringLiteral("N"));
}

std::optional<QList<clsRecebimentos1>> clsRecebimentos1::doDia(clsDataAccess& db,
                                                               const QDate& dia) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT ID, CODBARRA, GUICHE, MOMENTO, AUTENTICA, ORIGEM, IDRECEBE FROM "
                       "RECEBIMENTOS1 WHERE MOMENTO LIKE ? AND RESERVA IS NULL ORDER BY GUICHE, "
                       "MOMENTO"),
        {dia.toString(Qt::ISODate) + QLatin1Char('%')});
    if (!rs)
        return std::nullopt;
    QList<clsRecebimentos1> out;
    for (Recordset r = *rs; r.atRow(); r.moveNext()) {
        clsRecebimentos1 row(db);
        row.ID = r.integer(QStringLiteral("ID"));
        row.CODBARRA = r.text(QStringLiteral("CODBARRA"));
        row.GUICHE = r.text(QStringLiteral("GUICHE"));
        row.MOMENTO = r.text(QStringLiteral("MOMENTO"));
        row.AUTENTICA = qint32(r.integer(QStringLiteral("AUTENTICA")));
        row.ORIGEM = r.text(QStringLiteral("ORIGEM"));
        row.IDRECEBE = r.integer(QStringLiteral("IDRECEBE"));
        out.append(row);
    }
    return out;
}
