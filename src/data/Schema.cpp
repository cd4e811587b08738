#include "Schema.h"

#include "AuditChain.h"
#include "Transaction.h"
#include "clsCofre.h"
#include "clsDataAccess.h"

#include <QDateTime>

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

// The bank files' sequence numbers, one row per bank.
QStringList migrationSequenciaArquivo(DbBackend b) {
    return {QStringLiteral("CREATE TABLE SequenciaArquivo (BANCO %1 PRIMARY KEY, NSA INTEGER NOT "
                           "NULL DEFAULT 0)")
                .arg(typesFor(b).text)};
}

// Receipts that cannot repeat, the counter that owns the database and the chain of changes.
// Rows already repeated are kept and marked in DUPLICADO (their own IDRECEBE) instead of
// failing the update; the unique indexes cover the unmarked rows, so from here on a code (other
// than the 44 zeros and codes starting "000") is received once and an authentication number is
// given once per movement. Rows already there join the chain right after these statements.
QStringList migrationReceiptsOnceAndChain(DbBackend b) {
    const Types t = typesFor(b);
    const QString plain = QStringLiteral("TEXT");
    return {
        QStringLiteral("ALTER TABLE Recebimentos ADD COLUMN DUPLICADO BIGINT NOT NULL DEFAULT 0"),
        QStringLiteral("ALTER TABLE Recebimentos ADD COLUMN MOMENTO %1").arg(t.text),
        QStringLiteral("UPDATE Recebimentos SET DUPLICADO = IDRECEBE WHERE "
                       "substr(CODBARRA, 1, 3) <> '000' AND CODBARRA <> '' AND EXISTS (SELECT 1 "
                       "FROM Recebimentos r WHERE r.CODBARRA = Recebimentos.CODBARRA AND "
                       "r.IDRECEBE < Recebimentos.IDRECEBE)"),
        QStringLiteral("UPDATE Recebimentos SET DUPLICADO = IDRECEBE WHERE EXISTS (SELECT 1 FROM "
                       "Recebimentos r WHERE r.IDMOVIMENTO = Recebimentos.IDMOVIMENTO AND "
                       "r.AUTENTICA = Recebimentos.AUTENTICA AND r.IDRECEBE < "
                       "Recebimentos.IDRECEBE)"),
        QStringLiteral("CREATE UNIQUE INDEX idx_recebimentos_codigo_unico ON "
                       "Recebimentos(CODBARRA) WHERE DUPLICADO = 0 AND substr(CODBARRA, 1, 3) <> "
                       "'000' AND CODBARRA <> ''"),
        QStringLiteral("CREATE UNIQUE INDEX idx_recebimentos_autentica_unica ON "
                       "Recebimentos(IDMOVIMENTO, AUTENTICA) WHERE DUPLICADO = 0"),
        QStringLiteral("ALTER TABLE Movimento ADD COLUMN HASH_CADEIA %1").arg(plain),
        QStringLiteral("CREATE TABLE Guiche (ID INTEGER PRIMARY KEY CHECK (ID = 1), GUICHE %1 NOT "
                       "NULL, DESDE %2)")
            .arg(t.text, plain),
        QStringLiteral("CREATE TABLE Cadeia (SEQ BIGINT NOT NULL PRIMARY KEY, TABELA %1 NOT NULL, "
                       "CAMPO %1 NOT NULL, CHAVE BIGINT NOT NULL, OPERACAO %1 NOT NULL, CONTEUDO "
                       "%1, MOMENTO %1, HASH %1 NOT NULL)")
            .arg(plain),
        QStringLiteral("CREATE INDEX idx_cadeia_chave ON Cadeia(TABELA, CHAVE)")};
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

// The central database of several counters: the outbox of codes to publish or withdraw (written
// in the transaction of the receipts), the codes the central refused after they were received
// here, and the random name under which this database publishes (with the moment until which
// commands do not wait for a central that did not answer).
QStringList migrationRede(DbBackend b) {
    const Types t = typesFor(b);
    const QString plain = QStringLiteral("TEXT");
    const QString random = b == DbBackend::PostgreSQL
                               ? QStringLiteral("md5(random()::text || clock_timestamp()::text)")
                               : QStringLiteral("lower(hex(randomblob(16)))");
    return {
        QStringLiteral("CREATE TABLE PublicacaoRede (ID %1, OPERACAO %2 NOT NULL, CODBARRA %2 NOT "
                       "NULL, IDRECEBE BIGINT NOT NULL, AUTENTICA INTEGER, IDMOVIMENTO INTEGER, "
                       "GUICHE %2, MOMENTO %2 NOT NULL, PENDENTE INTEGER NOT NULL DEFAULT 1, "
                       "ENVIADO %2, RESULTADO %2)")
            .arg(t.id, plain),
        QStringLiteral("CREATE INDEX idx_publicacaorede_pendente ON PublicacaoRede(PENDENTE, ID)"),
        QStringLiteral("CREATE TABLE ConflitoRede (ID %1, IDPUBLICACAO BIGINT NOT NULL UNIQUE, "
                       "CODBARRA %2 NOT NULL, IDRECEBE BIGINT, AUTENTICA INTEGER, IDMOVIMENTO "
                       "INTEGER, VALOR BIGINT NOT NULL DEFAULT 0, MOMENTO %2, GUICHE_CENTRAL %2, "
                       "MOMENTO_CENTRAL %2, DETECTADO %2 NOT NULL)")
            .arg(t.id, plain),
        QStringLiteral("CREATE TABLE OrigemRede (ID INTEGER PRIMARY KEY CHECK (ID = 1), ORIGEM %1 "
                       "NOT NULL, PAUSA_ATE %1, PAUSA_MOTIVO %1)")
            .arg(plain),
        QStringLiteral("INSERT INTO OrigemRede (ID, ORIGEM) VALUES (1, %1)").arg(random)};
}

// The next authentication number reads the movement's highest: with this index that read costs
// the same on a day of a thousand receipts and on a day of a hundred thousand.
QStringList migrationAutenticaIndex(DbBackend) {
    return {QStringLiteral("CREATE INDEX idx_recebimentos_movimento_autentica ON "
                           "Recebimentos(IDMOVIMENTO, AUTENTICA)")};
}

// The safe's balance moves into the database (it was Config.ini's [Reserva] cofre): one row
// with the balance, and one row per move with the movement, who and the balance after it. The
// balance the settings held becomes the first move, right after these statements.
QStringList migrationCofre(DbBackend b) {
    const Types t = typesFor(b);
    const QString plain = QStringLiteral("TEXT");
    return {QStringLiteral("CREATE TABLE Cofre (ID INTEGER PRIMARY KEY CHECK (ID = 1), SALDO "
                           "BIGINT NOT NULL DEFAULT 0)"),
            QStringLiteral("INSERT INTO Cofre (ID, SALDO) VALUES (1, 0)"),
            QStringLiteral("CREATE TABLE CofreMovimentos (ID %1, IDMOVIMENTO INTEGER, OPERACAO %2 "
                           "NOT NULL, VALOR BIGINT NOT NULL, SALDO BIGINT NOT NULL, USUARIO %2, "
                           "MOMENTO %3)")
                .arg(t.id, t.text, plain)};
}

// The bank files written and the receipts each carried: a receipt reversed or changed after it
// went to the bank is told as such.
QStringList migrationArquivosBanco(DbBackend b) {
    const Types t = typesFor(b);
    const QString plain = QStringLiteral("TEXT");
    return {
        QStringLiteral("CREATE TABLE ArquivosBanco (ID %1, ARQUIVO %2 NOT NULL, PADRAO %2 NOT "
                       "NULL, BANCO %2, NSA INTEGER NOT NULL DEFAULT 0, IDMOVIMENTO INTEGER, "
                       "IDCOD INTEGER, MOMENTO %3, USUARIO %2, REGISTROS INTEGER NOT NULL "
                       "DEFAULT 0, TOTAL BIGINT NOT NULL DEFAULT 0)")
            .arg(t.id, t.text, plain),
        QStringLiteral("CREATE UNIQUE INDEX idx_arquivosbanco_arquivo ON ArquivosBanco(ARQUIVO)"),
        QStringLiteral("CREATE TABLE ArquivoRecebimentos (ID %1, IDARQUIVO BIGINT NOT NULL, "
                       "IDRECEBE BIGINT NOT NULL)")
            .arg(t.id),
        QStringLiteral("CREATE INDEX idx_arquivorecebimentos_idrecebe ON "
                       "ArquivoRecebimentos(IDRECEBE)"),
        QStringLiteral("CREATE INDEX idx_arquivorecebimentos_idarquivo ON "
                       "ArquivoRecebimentos(IDARQUIVO)")};
}

// Loose documents stamped at the counter: each one recorded before it is printed, with who
// stamped it and who allowed it, and marked when the printer confirmed it.
QStringList migrationAutenticacoesAvulsas(DbBackend b) {
    const Types t = typesFor(b);
    return {QStringLiteral("CREATE TABLE AutenticacoesAvulsas (ID %1, MOMENTO TEXT NOT NULL, DIA "
                           "%2, VALOR BIGINT NOT NULL, TEXTO %3 NOT NULL, GUICHE %3, OPERADOR %3, "
                           "ADMINISTRADOR %3, CONFIRMADA INTEGER NOT NULL DEFAULT 0)")
                .arg(t.id, t.date, t.text),
            QStringLiteral("CREATE INDEX idx_autenticacoesavulsas_dia ON "
                           "AutenticacoesAvulsas(DIA)")};
}

// Per receipt, how many times the printer confirmed its stamp, the first and the last time and
// who was at the counter: a row is written with each payment (no stamp yet) and counts up with
// each confirmation, so a stop between the payment and its stamps leaves the documents listed.
QStringList migrationAutenticacoes(DbBackend) {
    const QString plain = QStringLiteral("TEXT");
    return {QStringLiteral("CREATE TABLE Autenticacoes (IDRECEBE BIGINT NOT NULL PRIMARY KEY, "
                           "IDMOVIMENTO INTEGER NOT NULL, AUTENTICA INTEGER NOT NULL, VEZES "
                           "INTEGER NOT NULL DEFAULT 0, PRIMEIRA %1, ULTIMA %1, USUARIO %1)")
                .arg(plain),
            QStringLiteral("CREATE INDEX idx_autenticacoes_movimento ON "
                           "Autenticacoes(IDMOVIMENTO, VEZES)")};
}

// Who did each act and who allowed it, chained: the operator at the counter and the
// administrator, for the row the act wrote. Operator names are unique whatever their case.
QStringList migrationAtos(DbBackend b) {
    const Types t = typesFor(b);
    const QString plain = QStringLiteral("TEXT");
    return {QStringLiteral("CREATE TABLE Atos (ID %1, MOMENTO %2 NOT NULL, ATO %2 NOT NULL, "
                           "TABELA %2, CHAVE BIGINT, OPERADOR %3, AUTORIZADO_POR %3)")
                .arg(t.id, plain, t.text),
            QStringLiteral("CREATE INDEX idx_atos_registro ON Atos(TABELA, CHAVE)")};
}

// The day's row, the operators, the counter's letter and the outbox join the chain: no
// statement, their existing rows are adopted as they are (see afterStatements).
QStringList migrationChainedPeople(DbBackend) {
    return {};
}

using Migration = QStringList (*)(DbBackend);
const Migration kMigrations[] = {migration1,
                                 migrationSequenciaArquivo,
                                 migrationReceiptsOnceAndChain,
                                 migrationEstornos,
                                 migrationAutenticaIndex,
                                 migrationRede,
                                 migrationCofre,
                                 migrationArquivosBanco,
                                 migrationAutenticacoesAvulsas,
                                 migrationAutenticacoes,
                                 migrationAtos,
                                 migrationChainedPeople};

bool exec(QSqlDatabase db, const QString& sql, QString* err) {
    QSqlQuery q(db);
    if (q.exec(sql))
        return true;
    if (err)
        *err = q.lastError().text() + QStringLiteral(" [") + sql + QLatin1Char(']');
    return false;
}

} // namespace

// The safe's balance from the settings, once: it must be money within the ceiling. The safe's
// row joins the chain with its first move; each move is a chained row of its own.
static bool adoptSafeBalance(clsDataAccess& db, const QString& text, QString* err) {
    const QString t = text.trimmed();
    const auto v = t.isEmpty() ? std::optional<Money>(Money()) : Money::parse(t);
    if (!v || v->isNegative() || !v->withinLimit()) {
        *err = QStringLiteral("o saldo do cofre em Config.ini ([Reserva] cofre) não é um valor "
                              "entre 0,00 e %1: %2. Corrija-o e abra o programa de novo.")
                   .arg(Money::maximum().format(), t);
        return false;
    }
    if (v->isZero())
        return true;
    clsCofre::Lancamento l;
    l.operacao = clsCofre::kSaldoInicial;
    l.valor = *v;
    l.saldo = *v;
    l.usuario = QStringLiteral("Config.ini");
    l.momento = QDateTime::currentDateTime();
    if (!clsCofre::gravar(db, l)) {
        *err = db.lastError();
        return false;
    }
    return true;
}

// What a migration does besides its statements, in the same transaction.
static bool afterStatements(Migration m, clsDataAccess& db, QStringList* notes,
                            const Schema::Legacy& legacy, QString* err) {
    if (m == migrationCofre)
        return adoptSafeBalance(db, legacy.cofre, err);
    if (m == migrationChainedPeople && !AuditChain::adoptExisting(db)) {
        *err = db.lastError();
        return false;
    }
    if (m != migrationReceiptsOnceAndChain)
        return true;
    if (notes)
        *notes << Schema::markedDuplicates(db);
    if (!AuditChain::adoptExisting(db)) {
        *err = db.lastError();
        return false;
    }
    return true;
}

// The version read inside a transaction: a savepoint keeps PostgreSQL's transaction usable when
// the version table is not there yet.
static int versionInside(clsDataAccess& db) {
    Transaction probe(db, Transaction::Mode::Read);
    const int v = Schema::versionOf(db);
    probe.rollback();
    return v;
}

// An SQLite file of `version` is copied beside itself before it is migrated.
static bool copyAside(clsDataAccess& db, int version, QString* message) {
    const QString copy = db.config().sqlitePath + QStringLiteral(".v%1.bak").arg(version);
    QFile::remove(copy);
    QString e;
    QSqlDatabase sql = db.database();
    if (exec(sql,
             QStringLiteral("VACUUM INTO '%1'")
                 .arg(QString(copy).replace(QLatin1Char('\''), QStringLiteral("''"))),
             &e))
        return true;
    if (message)
        *message = QStringLiteral("Não foi possível copiar o banco antes de atualizá-lo: ") + e;
    return false;
}

// Migration `version` with its version bump, in one transaction; `version` moves on to where the
// database now is.
static bool migrateOneStep(clsDataAccess& db, int& version, QStringList* notes,
                           const Schema::Legacy& legacy, QString* message) {
    QSqlDatabase sql = db.database();
    QString err;
    // The write lock first: two programs opening an old database migrate it once.
    Transaction tx(db);
    bool ok = tx.ok();
    if (!ok)
        err = db.lastError();
    const int now = ok ? versionInside(db) : version;
    if (ok && now > version) {
        version = now; // another program did this step meanwhile
        tx.commit();
        return true;
    }
    if (ok && version == 0)
        ok =
            exec(sql, QStringLiteral("CREATE TABLE VersaoBanco (VERSAO INTEGER NOT NULL)"), &err) &&
            exec(sql, QStringLiteral("INSERT INTO VersaoBanco (VERSAO) VALUES (0)"), &err);
    for (const QString& stmt : kMigrations[version](db.backend()))
        ok = ok && exec(sql, stmt, &err);
    ok = ok && afterStatements(kMigrations[version], db, notes, legacy, &err);
    ok = ok &&
         exec(sql, QStringLiteral("UPDATE VersaoBanco SET VERSAO = %1").arg(version + 1), &err);
    if (!ok || !tx.commit()) {
        if (message)
            *message = QStringLiteral("Erro ao atualizar o banco de dados para a versão %1: %2")
                           .arg(version + 1)
                           .arg(err.isEmpty() ? db.lastError() : err);
        return false;
    }
    ++version;
    return true;
}

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
        QStringLiteral("Feriados"),      QStringLiteral("SequenciaArquivo")};
    return names;
}

int Schema::versionOf(clsDataAccess& db) {
    QSqlQuery q(db.database());
    if (!q.exec(QStringLiteral("SELECT VERSAO FROM VersaoBanco")) || !q.next())
        return 0;
    return q.value(0).toInt();
}

Schema::Result Schema::migrate(clsDataAccess& db, QString* message, QStringList* notes, int upTo,
                               const Legacy& legacy) {
    const int target = upTo < 0 ? currentVersion() : qMin(upTo, currentVersion());
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
    if (version >= target)
        return Result::Ok;
    if (db.readOnly()) {
        if (message)
            *message = QStringLiteral("O banco de dados é da versão %1 e precisa ser atualizado "
                                      "para a versão %2; abra-o uma vez numa pasta com permissão "
                                      "de gravação (tolvane iniciar atualiza o banco).")
                           .arg(version)
                           .arg(currentVersion());
        return Result::Failed;
    }
    if (version > 0 && db.backend() == DbBackend::SQLite && !copyAside(db, version, message))
        return Result::Failed;
    while (version < target)
        if (!migrateOneStep(db, version, notes, legacy, message))
            return Result::Failed;
    return Result::Ok;
}

QStringList Schema::markedDuplicates(clsDataAccess& db) {
    QStringList out;
    QSqlQuery q(db.database());
    q.setForwardOnly(true);
    if (!q.exec(QStringLiteral("SELECT IDRECEBE, IDMOVIMENTO, AUTENTICA, CODBARRA FROM "
                               "Recebimentos WHERE DUPLICADO <> 0 ORDER BY IDRECEBE")))
        return out;
    while (q.next())
        out << QStringLiteral("Recebimento %1 (movimento %2, autenticação %3, código %4) repete "
                              "um recebimento anterior")
                   .arg(q.value(0).toLongLong())
                   .arg(q.value(1).toLongLong())
                   .arg(q.value(2).toLongLong())
                   .arg(q.value(3).toString());
    return out;
}
