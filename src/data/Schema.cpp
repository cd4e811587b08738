#include "Schema.h"

#include "clsDataAccess.h"

#include <QFile>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>

namespace {

struct Types {
    QString text, id, date;
};

Types typesFor(DbBackend b) {
    if (b == DbBackend::PostgreSQL)
        return {QStringLiteral("CITEXT"), QStringLiteral("SERIAL PRIMARY KEY"),
                QStringLiteral("DATE")};
    return {QStringLiteral("TEXT COLLATE NOCASE"),
            QStringLiteral("INTEGER PRIMARY KEY AUTOINCREMENT"), QStringLiteral("TEXT")};
}

// Version 1: the eleven tables of the program and the indexes it searches by.
QStringList migration1(DbBackend b) {
    const Types t = typesFor(b);
    const QString money = QStringLiteral("BIGINT NOT NULL DEFAULT 0");
    QStringList s;
    if (b == DbBackend::PostgreSQL)
        s << QStringLiteral("CREATE EXTENSION IF NOT EXISTS citext");
    s << QStringLiteral("CREATE TABLE Usuarios (ID %1, NOME %2, SENHA %2, TIPO %2, ATIVO INTEGER "
                        "NOT NULL DEFAULT 1)")
             .arg(t.id, t.text)
      << QStringLiteral("CREATE TABLE Movimento (ID %1, MDATA %2, MOV INTEGER, STATUS %3, "
                        "VALOR_ARRECADADO %4, ENTRADA %4, SAIDA %4, SUPRIMENTO %4)")
             .arg(t.id, t.date, t.text, money)
      << QStringLiteral(
             "CREATE TABLE Contador (ANO INTEGER PRIMARY KEY, CONTADOR INTEGER NOT NULL DEFAULT 0)")
      << QStringLiteral(
             "CREATE TABLE Recebimentos (IDRECEBE %1, AUTENTICA INTEGER, CODBARRA %2, "
             "IDMOVIMENTO INTEGER, TIPO INTEGER, INTEGRA INTEGER NOT NULL DEFAULT 0, "
             "EXPORT INTEGER NOT NULL DEFAULT 0, VALOR %3, VENCIMENTO %2, PARCELA %2, OBS %2)")
             .arg(t.id, t.text, money)
      << QStringLiteral("CREATE TABLE RECEBIMENTOS1 (ID %1, CODBARRA %2)").arg(t.id, t.text)
      << QStringLiteral(
             "CREATE TABLE CodBarra (IDCOD INTEGER PRIMARY KEY, IDTIPO %1, DESCRICAO %1, "
             "PADRAO %1, JUROS %1, BLOQUEIO %1, CODBANCO %1)")
             .arg(t.text)
      << QStringLiteral("CREATE TABLE Sangria (ID %1, IDMOVIMENTO INTEGER, DESCRICAO %2, TIPO %2, "
                        "SDATA %3, ENTRADA %4, SAIDA %4)")
             .arg(t.id, t.text, t.date, money)
      << QStringLiteral(
             "CREATE TABLE Itens (ID %1, IDSANGRIA INTEGER, ESPECIE INTEGER, NUMERO %2, VALOR %3)")
             .arg(t.id, t.text, money)
      << QStringLiteral("CREATE TABLE ConfCaixa (ID %1, ESPECIE INTEGER, IDMOVIMENTO INTEGER, "
                        "NUMERO %2, VALOR %3)")
             .arg(t.id, t.text, money)
      << QStringLiteral("CREATE TABLE Suprimentos (ID %1, CODIGO INTEGER, TIPO INTEGER, DESCRICAO "
                        "%2, VALOR %3)")
             .arg(t.id, t.text, money)
      << QStringLiteral("CREATE TABLE Feriados (ID %1, FERIADO %2)").arg(t.id, t.date)
      << QStringLiteral("CREATE INDEX idx_recebimentos_codbarra ON Recebimentos(CODBARRA)")
      << QStringLiteral("CREATE INDEX idx_recebimentos_idmovimento ON Recebimentos(IDMOVIMENTO)")
      << QStringLiteral("CREATE INDEX idx_recebimentos1_codbarra ON RECEBIMENTOS1(CODBARRA)")
      << QStringLiteral("CREATE INDEX idx_movimento_mdata ON Movimento(MDATA)")
      << QStringLiteral("CREATE INDEX idx_sangria_idmovimento ON Sangria(IDMOVIMENTO)")
      << QStringLiteral("CREATE INDEX idx_feriados_feriado ON Feriados(FERIADO)")
      << QStringLiteral("CREATE INDEX idx_codbarra_idtipo ON CodBarra(IDTIPO)");
    return s;
}

// Estornos: every reversed or changed receipt as it was, with who, when and why; a change also
// keeps what the receipt became.
QStringList migrationEstornos(DbBackend b) {
    const Types t = typesFor(b);
    return {QStringLiteral(
                "CREATE TABLE Estornos (ID %1, OPERACAO %2 NOT NULL, MOMENTO %2 NOT NULL, "
                "USUARIO %2, MOTIVO %2, IDRECEBE INTEGER NOT NULL, AUTENTICA INTEGER, CODBARRA "
                "%2, IDMOVIMENTO INTEGER, TIPO INTEGER, INTEGRA INTEGER NOT NULL DEFAULT 0, "
                "EXPORT INTEGER NOT NULL DEFAULT 0, VALOR BIGINT NOT NULL DEFAULT 0, VENCIMENTO "
                "%2, PARCELA %2, OBS %2, NOVO_AUTENTICA INTEGER, NOVO_CODBARRA %2, NOVO_TIPO "
                "INTEGER, NOVO_VALOR BIGINT, REVERTIDO_EM %2, REVERTIDO_POR %2)")
                .arg(t.id, t.text),
            QStringLiteral("CREATE INDEX idx_estornos_idrecebe ON Estornos(IDRECEBE)"),
            QStringLiteral("CREATE INDEX idx_estornos_idmovimento ON Estornos(IDMOVIMENTO)")};
}

using Migration = QStringList (*)(DbBackend);
const Migration kMigrations[] = {migration1, migrationEstornos};

bool exec(QSqlDatabase db, const QString& sql, QString* err) {
    QSqlQuery q(db);
    if (q.exec(sql))
        return true;
    if (err)
        *err = q.lastError().text() + QStringLiteral(" [") + sql + QLatin1Char(']');
    return false;
}

} // namespace

int Schema::currentVersion() {
    return int(std::size(kMigrations));
}

const QStringList& Schema::tableNames() {
    static const QStringList names = {
        QStringLiteral("Usuarios"),      QStringLiteral("Movimento"),
        QStringLiteral("Contador"),      QStringLiteral("Recebimentos"),
        QStringLiteral("RECEBIMENTOS1"), QStringLiteral("CodBarra"),
        QStringLiteral("Sangria"),       QStringLiteral("Itens"),
        QStringLiteral("ConfCaixa"),     QStringLiteral("Suprimentos"),
        QStringLiteral("Feriados")};
    return names;
}

int Schema::versionOf(clsDataAccess& db) {
    QSqlQuery q(db.database());
    if (!q.exec(QStringLiteral("SELECT VERSAO FROM VersaoBanco")) || !q.next())
        return 0;
    return q.value(0).toInt();
}

Schema::Result Schema::migrate(clsDataAccess& db, QString* message) {
    QSqlDatabase sql = db.database();
    int version = versionOf(db);
    if (version > currentVersion()) {
        if (message)
            *message =
                QStringLiteral("O banco de dados é da versão %1, mais nova que a deste programa "
                               "(versão %2). Atualize o Tolvane antes de usá-lo.")
                    .arg(version)
                    .arg(currentVersion());
        return Result::Newer;
    }
    if (version == currentVersion())
        return Result::Ok;
    if (version > 0 && db.backend() == DbBackend::SQLite) {
        const QString copy = db.config().sqlitePath + QStringLiteral(".v%1.bak").arg(version);
        QFile::remove(copy);
        QString e;
        if (!exec(sql,
                  QStringLiteral("VACUUM INTO '%1'")
                      .arg(QString(copy).replace(QLatin1Char('\''), QStringLiteral("''"))),
                  &e)) {
            if (message)
                *message =
                    QStringLiteral("Não foi possível copiar o banco antes de atualizá-lo: ") + e;
            return Result::Failed;
        }
    }
    for (; version < currentVersion(); ++version) {
        QString err;
        bool ok = sql.transaction();
        if (ok && version == 0)
            ok = exec(sql, QStringLiteral("CREATE TABLE VersaoBanco (VERSAO INTEGER NOT NULL)"),
                      &err) &&
                 exec(sql, QStringLiteral("INSERT INTO VersaoBanco (VERSAO) VALUES (0)"), &err);
        for (const QString& stmt : kMigrations[version](db.backend()))
            ok = ok && exec(sql, stmt, &err);
        ok = ok &&
             exec(sql, QStringLiteral("UPDATE VersaoBanco SET VERSAO = %1").arg(version + 1), &err);
        if (!ok || !sql.commit()) {
            sql.rollback();
            if (message)
                *message = QStringLiteral("Erro ao atualizar o banco de dados para a versão %1: %2")
                               .arg(version + 1)
                               .arg(err.isEmpty() ? sql.lastError().text() : err);
            return Result::Failed;
        }
    }
    return Result::Ok;
}
