#include "CentralSchema.h"

#include "Transaction.h"
#include "clsDataAccess.h"

#include <QSqlError>
#include <QSqlQuery>

const QStringList& CentralSchema::statements() {
    static const QStringList s = {
        QStringLiteral("CREATE TABLE IF NOT EXISTS RECEBIMENTOS1 (ID BIGSERIAL PRIMARY KEY, "
                       "CODBARRA TEXT NOT NULL, GUICHE TEXT, MOMENTO TEXT, AUTENTICA INTEGER, "
                       "ORIGEM TEXT NOT NULL, IDRECEBE BIGINT, PUBLICADO TIMESTAMPTZ NOT NULL "
                       "DEFAULT now())"),
        QStringLiteral("CREATE UNIQUE INDEX IF NOT EXISTS recebimentos1_codbarra_unico ON "
                       "RECEBIMENTOS1 (CODBARRA)"),
        QStringLiteral("CREATE TABLE IF NOT EXISTS ImportacaoRede (CHAVE TEXT PRIMARY KEY, "
                       "ARQUIVO TEXT, POSICAO BIGINT NOT NULL DEFAULT 0, LIDOS BIGINT NOT NULL "
                       "DEFAULT 0, IMPORTADOS BIGINT NOT NULL DEFAULT 0, JA_EXISTENTES BIGINT NOT "
                       "NULL DEFAULT 0, INVALIDOS BIGINT NOT NULL DEFAULT 0, IGNORADOS BIGINT NOT "
                       "NULL DEFAULT 0, CONCLUIDA INTEGER NOT NULL DEFAULT 0, ATUALIZADA "
                       "TIMESTAMPTZ NOT NULL DEFAULT now())"),
        // A claim: a row that holds the code for a counter between its claim and its receipt.
        QStringLiteral("ALTER TABLE RECEBIMENTOS1 ADD COLUMN IF NOT EXISTS RESERVA TEXT"),
        QStringLiteral(
            "ALTER TABLE RECEBIMENTOS1 ADD COLUMN IF NOT EXISTS RESERVA_ATE TIMESTAMPTZ"),
        QStringLiteral("CREATE TABLE IF NOT EXISTS SelosRede (GUICHE TEXT NOT NULL, DIA DATE NOT "
                       "NULL, HASH TEXT NOT NULL, ORIGEM TEXT NOT NULL, IDMOVIMENTO INTEGER, "
                       "ENCERRADO TEXT, RECEBIDO TIMESTAMPTZ NOT NULL DEFAULT now(), PRIMARY KEY "
                       "(GUICHE, DIA, HASH))")};
    return s;
}

namespace {
std::optional<bool> ready(clsDataAccess& db) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT (to_regclass('recebimentos1') IS NOT NULL AND "
                       "to_regclass('recebimentos1_codbarra_unico') IS NOT NULL AND "
                       "to_regclass('importacaorede') IS NOT NULL AND to_regclass('selosrede') IS "
                       "NOT NULL AND EXISTS (SELECT 1 FROM information_schema.columns WHERE "
                       "table_name = 'recebimentos1' AND column_name = 'reserva_ate')) AS PRONTA"));
    if (!clsDataAccess::CheckValidRecordset(rs))
        return std::nullopt;
    return rs->value(QStringLiteral("PRONTA")).toBool();
}
} // namespace

bool CentralSchema::preparar(clsDataAccess& db, QString* why) {
    const auto there = ready(db);
    if (there && *there)
        return true;
    if (there) {
        // Two counters starting together: the write lock makes one of them create the tables.
        Transaction tx(db);
        bool ok = tx.ok();
        QString err = db.lastError();
        for (const QString& sql : statements()) {
            // Definitions are not prepared statements: they run as they are.
            QSqlQuery q(db.database());
            ok = ok && q.exec(sql);
            if (!ok && err.isEmpty())
                err = q.lastError().text();
        }
        if (ok && tx.commit())
            return true;
        if (err.isEmpty())
            err = db.lastError();
        if (why)
            *why = QStringLiteral("A central não tem as tabelas do Tolvane e elas não puderam ser "
                                  "criadas (%1). Crie-as com os comandos de docs/REDE.md.")
                       .arg(err.trimmed());
        return false;
    }
    if (why)
        *why = QStringLiteral("Não foi possível ler as tabelas da central: %1")
                   .arg(db.lastError().trimmed());
    return false;
}

bool CentralSchema::responde(clsDataAccess& db) {
    return db.SQLSelect_ReadOnly(QStringLiteral("SELECT 1 AS UM")).has_value();
}
