// The data layer under faults: writers waiting for each other, codes and authentication numbers
// that cannot repeat, older databases brought up to date, the audit chain against changes made
// behind the program's back, a full disk, a failed commit and a password that must never be
// written anywhere. On both engines where the engine matters.
#include "AuditChain.h"
#include "IniFile.h"
#include "Login.h"
#include "MovementNumbering.h"
#include "PgServer.h"
#include "Schema.h"
#include "Startup.h"
#include "TestApp.h"
#include "Transaction.h"
#include "clsCofre.h"
#include "clsMovimento.h"
#include "clsRecebimentos.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <unistd.h>

namespace {

qint64 addReceipt(clsDataAccess& db, qint32 mov, int autentica, const QString& code,
                  const char* valor = "10,00") {
    clsRecebimentos r(db);
    r.IDMOVIMENTO = static_cast<qint16>(mov);
    r.AUTENTICA = static_cast<qint16>(autentica);
    r.CODBARRA = code;
    r.TIPO = 1;
    r.VALOR = *Money::parse(QString::fromLatin1(valor));
    r.MOMENTO = QDateTime(QDate(2026, 11, 23), QTime(10, 0));
    return r.SQLInsert() ? r.IDRECEBE : -1;
}

TestApp::Backend backendOf(const QString& name) {
    return name == QLatin1String("postgres") ? TestApp::Backend::PostgreSQL
                                             : TestApp::Backend::SQLite;
}

QString code(int n) {
    return QStringLiteral("8166%1").arg(n, 40, 10, QLatin1Char('0'));
}

// The backend of the test's own data row.
#define APP_ON_BACKEND()                                                                           \
    QFETCH(QString, backend);                                                                      \
    TestApp app(backendOf(backend));                                                               \
    QVERIFY2(app.ok(), "test database could not be opened")

void addTamperRows(const QString& backend) {
    const QByteArray b = backend.toLatin1();
    QTest::addRow("%s: amount changed", b.constData())
        << backend << "UPDATE Recebimentos SET VALOR = 99990000 WHERE AUTENTICA = 2"
        << "IDRECEBE=%2 (movimento 1, autenticação 2) foi alterado fora do programa: VALOR era "
           "\"100000\", agora \"99990000\"";
    QTest::addRow("%s: row deleted", b.constData())
        << backend << "DELETE FROM Recebimentos WHERE AUTENTICA = 2"
        << "IDRECEBE=%2 (movimento 1, autenticação 2) foi apagado "
           "fora do programa";
    QTest::addRow("%s: row added", b.constData())
        << backend
        << "INSERT INTO Recebimentos (AUTENTICA, CODBARRA, IDMOVIMENTO, "
           "TIPO, VALOR) VALUES (9, '1', 1, 1, 5)"
        << "(movimento 1, autenticação 9) não está na cadeia";
    QTest::addRow("%s: entry rewritten", b.constData())
        << backend << "UPDATE Cadeia SET CONTEUDO = REPLACE(CONTEUDO, '100000', '1') WHERE SEQ = 2"
        << "Cadeia: a entrada 2 (Recebimentos IDRECEBE=%2 (movimento 1, autenticação 2)) não "
           "confere";
    QTest::addRow("%s: entry removed", b.constData())
        << backend << "DELETE FROM Cadeia WHERE SEQ = 2"
        << "Cadeia: faltam as entradas 2 a 2.";
}

// SQLite's own verdict, on a connection of its own.
bool sqliteSaysSound(const QString& file) {
    bool sound = false;
    {
        QSqlDatabase probe =
            QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("probe"));
        probe.setDatabaseName(file);
        probe.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        if (probe.open()) {
            QSqlQuery q(probe);
            sound = q.exec(QStringLiteral("PRAGMA integrity_check")) && q.next() &&
                    q.value(0).toString() == QLatin1String("ok") && !q.next();
        }
    }
    QSqlDatabase::removeDatabase(QStringLiteral("probe"));
    return sound;
}

// A folder with a database that is then seen read-only: through a read-only bind mount when
// the tests run as root (who writes anywhere), else with its write permission taken away.
class ReadOnlyCopy {
public:
    QString writable() const { return m_dir.filePath(QStringLiteral("data")); }
    QString readOnly() const { return m_view.isEmpty() ? writable() : m_view; }
    ReadOnlyCopy() { QDir().mkpath(writable()); }
    ~ReadOnlyCopy() {
        if (!m_view.isEmpty())
            QProcess::execute(QStringLiteral("umount"), {m_view});
        QFile::setPermissions(writable(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    bool makeReadOnly() {
        if (geteuid() != 0)
            return QFile::setPermissions(writable(), QFile::ReadOwner | QFile::ExeOwner);
        const QString view = m_dir.filePath(QStringLiteral("view"));
        QDir().mkpath(view);
        if (QProcess::execute(QStringLiteral("mount"),
                              {QStringLiteral("--bind"), QStringLiteral("-o"), QStringLiteral("ro"),
                               writable(), view}) != 0)
            return false;
        m_view = view;
        // Older mount versions ignore "ro" on the first bind.
        QProcess::execute(QStringLiteral("mount"),
                          {QStringLiteral("-o"), QStringLiteral("remount,bind,ro"), view});
        return !QFileInfo(view).isWritable() ||
               !QFile(view + QStringLiteral("/x")).open(QIODevice::WriteOnly);
    }

private:
    QTemporaryDir m_dir;
    QString m_view;
};

} // namespace

class tst_reliability : public QObject {
    Q_OBJECT
private slots:
    void writerWaitsAndRetries_data() { addBackendRows(); }
    void writerWaitsAndRetries() {
        APP_ON_BACKEND();
        FolderContext other(app.folder()); // a second program on the same database
        QVERIFY(Startup::Abre_conexao(other.ctx, false));
        other.ctx.db.setLockWait(100, 3);
        QStringList told;
        {
            Transaction hold(app.db());
            QVERIFY(hold.ok());
            other.ctx.db.onLockWait = [&](const QString& text) {
                told << text;
                hold.commit(); // the first writer finishes while the second waits
            };
            QVERIFY(other.ctx.db.SQLExecute(
                QStringLiteral("INSERT INTO Feriados (FERIADO) VALUES (?)"), {QDate(2026, 1, 1)}));
        }
        QCOMPARE(told, QStringList{QStringLiteral("Aguardando o banco de dados...")});

        // A lock that is never released: told once, then refused after the last attempt.
        told.clear();
        Transaction hold(app.db());
        QVERIFY(hold.ok());
        other.ctx.db.onLockWait = [&](const QString& text) { told << text; };
        QVERIFY(!other.ctx.db.SQLExecute(
            QStringLiteral("INSERT INTO Feriados (FERIADO) VALUES (?)"), {QDate(2026, 1, 2)}));
        QCOMPARE(told, QStringList{QStringLiteral("Aguardando o banco de dados...")});
        QVERIFY(other.dialogs.last().text.contains(QStringLiteral("ocupado por outro programa")));
        hold.rollback();
        QCOMPARE(app.count(QStringLiteral("Feriados")), 1);
    }

    void codesAndNumbersCannotRepeat_data() { addBackendRows(); }
    void codesAndNumbersCannotRepeat() {
        APP_ON_BACKEND();
        const QString zeros = clsRecebimentos::kSemCodigo;
        const QString noDocument = QStringLiteral("000") + QString(41, QLatin1Char('7'));
        QVERIFY(addReceipt(app.db(), 1, 1, code(1)) > 0);
        QVERIFY(addReceipt(app.db(), 1, 2, code(1)) < 0); // the same code again
        QVERIFY(addReceipt(app.db(), 2, 1, code(1)) < 0); // on another day too
        QVERIFY(addReceipt(app.db(), 1, 1, code(2)) < 0); // the same number in the movement
        QVERIFY(addReceipt(app.db(), 2, 1, code(2)) > 0); // numbers restart per movement
        QVERIFY(addReceipt(app.db(), 1, 3, zeros) > 0);   // items without a document repeat
        QVERIFY(addReceipt(app.db(), 1, 4, zeros) > 0);
        QVERIFY(addReceipt(app.db(), 1, 5, noDocument) > 0);
        QVERIFY(addReceipt(app.db(), 1, 6, noDocument) > 0);
        QCOMPARE(app.count(QStringLiteral("Recebimentos")), 6);
        QCOMPARE(app.count(QStringLiteral("Cadeia")), 6); // refused rows left no entry
        QVERIFY(AuditChain::audit(app.db()).ok);
    }

    void olderDatabaseKeepsAndMarksItsRepetitions_data() { addBackendRows(); }
    void olderDatabaseKeepsAndMarksItsRepetitions() {
        QFETCH(QString, backend);
        QTemporaryDir dir;
        FolderContext run(dir.path());
        clsDataAccess& db = run.ctx.db;
        const bool pg = backend == QLatin1String("postgres");
        QVERIFY(db.open(pg ? PgServer::instance().freshDatabase()
                           : DbConfig::sqlite(dir.filePath(QStringLiteral("caixa.db"))),
                        clsDataAccess::OpenMode::Create));
        QCOMPARE(Schema::migrate(db, nullptr, nullptr, 1), Schema::Result::Ok);
        QCOMPARE(Schema::versionOf(db), 1);
        // What concurrent writers left in a database of the first version.
        for (const auto& row : {std::tuple{1, code(5)}, {2, code(5)}, {2, code(6)}, {3, code(5)}})
            QVERIFY(db.SQLExecute(QStringLiteral("INSERT INTO Recebimentos (AUTENTICA, CODBARRA, "
                                                 "IDMOVIMENTO, TIPO, VALOR) VALUES (?, ?, 1, 1, "
                                                 "100000)"),
                                  {std::get<0>(row), std::get<1>(row)}));
        QString message;
        QStringList notes;
        QCOMPARE(Schema::migrate(db, &message, &notes), Schema::Result::Ok);
        QCOMPARE(notes.size(), 3); // code 5 twice more, number 2 once more
        QCOMPARE(Schema::markedDuplicates(db), notes);
        QVERIFY(notes.first().startsWith(QStringLiteral("Recebimento 2 ")));
        const auto kept =
            db.SQLSelect_ReadOnly(QStringLiteral("SELECT COUNT(*) AS N FROM Recebimentos"));
        QCOMPARE(kept->integer(QStringLiteral("N")), qint64(4));
        QVERIFY(addReceipt(db, 1, 9, code(5)) < 0); // from here on the rule holds
        QVERIFY(addReceipt(db, 1, 1, code(7)) < 0);
        QVERIFY(addReceipt(db, 1, 9, code(7)) > 0);
        const AuditChain::Report r = AuditChain::audit(db);
        QVERIFY2(r.ok, qPrintable(r.problems.join(QLatin1Char('\n'))));
        QCOMPARE(r.entries, qint64(5)); // the four adopted rows and the new one
    }

    // A database from before the day's row, the operators, the counter's letter and the outbox
    // were chained: its rows join the chain as they are, and a later change made by hand is seen.
    void olderDatabaseChainsItsPeopleDayAndOutbox_data() { addBackendRows(); }
    void olderDatabaseChainsItsPeopleDayAndOutbox() {
        QFETCH(QString, backend);
        QTemporaryDir dir;
        FolderContext run(dir.path());
        clsDataAccess& db = run.ctx.db;
        const bool pg = backend == QLatin1String("postgres");
        QVERIFY(db.open(pg ? PgServer::instance().freshDatabase()
                           : DbConfig::sqlite(dir.filePath(QStringLiteral("caixa.db"))),
                        clsDataAccess::OpenMode::Create));
        QCOMPARE(Schema::migrate(db, nullptr, nullptr, Schema::currentVersion() - 1),
                 Schema::Result::Ok);
        const qint64 before = AuditChain::audit(db).entries;
        for (const char* sql :
             {"INSERT INTO Usuarios (NOME, SENHA, TIPO, ATIVO) VALUES ('ANA', 'x', 'USER', 1)",
              "INSERT INTO Movimento (MDATA, MOV, STATUS, SAIDA, SUPRIMENTO, VALOR_ARRECADADO, "
              "ENTRADA) VALUES ('2026-11-23', 1, 'FECHADO', 0, 0, 0, 0)",
              "INSERT INTO Guiche (ID, GUICHE, DESDE) VALUES (1, 'A', '2026-11-23')",
              "INSERT INTO PublicacaoRede (OPERACAO, CODBARRA, IDRECEBE, MOMENTO) VALUES "
              "('PUBLICAR', '1', 1, '2026-11-23T10:00:00.000')"})
            QVERIFY2(db.SQLExecute(QString::fromLatin1(sql)), sql);
        QCOMPARE(Schema::migrate(db), Schema::Result::Ok);
        AuditChain::Report r = AuditChain::audit(db);
        QVERIFY2(r.ok, qPrintable(r.problems.join(QLatin1Char('\n'))));
        QCOMPARE(r.entries, before + 4);
        QVERIFY(db.SQLExecute(QStringLiteral("UPDATE Movimento SET STATUS = 'ABERTO'")));
        r = AuditChain::audit(db);
        QVERIFY(!r.ok);
        QVERIFY2(r.problems.first().startsWith(QStringLiteral("Movimento ID=")),
                 qPrintable(r.problems.first()));
    }

    // The safe's balance that Config.ini held becomes the database's, once, by the update that
    // creates the safe's tables; a setting that is not money stops the update with its text.
    void safeBalanceComesFromTheSettingsOnce_data() {
        QTest::addColumn<QString>("backend");
        QTest::addColumn<QString>("setting");
        QTest::addColumn<QString>("saldo"); // empty: the update is refused
        for (const char* b : {"sqlite", "postgres"}) {
            const QString backend = QString::fromLatin1(b);
            QTest::addRow("%s, a balance", b) << backend << "1.234,56"
                                              << "1.234,56";
            QTest::addRow("%s, no balance", b) << backend << ""
                                               << "0,00";
            QTest::addRow("%s, not money", b) << backend << "9.00"
                                              << "";
            QTest::addRow("%s, above the ceiling", b) << backend << "1.999.999.999,98"
                                                      << "";
        }
    }
    void safeBalanceComesFromTheSettingsOnce() {
        QFETCH(QString, backend);
        QFETCH(QString, setting);
        QFETCH(QString, saldo);
        QTemporaryDir dir;
        FolderContext run(dir.path());
        clsDataAccess& db = run.ctx.db;
        const bool pg = backend == QLatin1String("postgres");
        QVERIFY(db.open(pg ? PgServer::instance().freshDatabase()
                           : DbConfig::sqlite(dir.filePath(QStringLiteral("caixa.db"))),
                        clsDataAccess::OpenMode::Create));
        const int before = 6; // the last version whose safe was in Config.ini
        QCOMPARE(Schema::migrate(db, nullptr, nullptr, before), Schema::Result::Ok);
        QString message;
        const auto result = Schema::migrate(db, &message, nullptr, -1, {setting});
        if (saldo.isEmpty()) {
            QCOMPARE(result, Schema::Result::Failed);
            QVERIFY2(message.contains(QStringLiteral("[Reserva] cofre")), qPrintable(message));
            QVERIFY2(message.contains(setting), qPrintable(message));
            QCOMPARE(Schema::versionOf(db), before);
            return;
        }
        QCOMPARE(result, Schema::Result::Ok);
        QCOMPARE(clsCofre::saldo(db)->format(), saldo);
        const auto moves = clsCofre::lancamentos(db);
        QCOMPARE(moves->size(), setting.isEmpty() ? 0 : 1);
        // Read once: a later value in the settings changes nothing.
        QCOMPARE(Schema::migrate(db, &message, nullptr, -1, {QStringLiteral("5,00")}),
                 Schema::Result::Ok);
        QCOMPARE(clsCofre::saldo(db)->format(), saldo);
        const AuditChain::Report r = AuditChain::audit(db);
        QVERIFY2(r.ok, qPrintable(r.problems.join(QLatin1Char('\n'))));
    }

    void auditNamesTheFirstRowThatDiffers_data() {
        QTest::addColumn<QString>("backend");
        QTest::addColumn<QString>("tamper");
        QTest::addColumn<QString>("expected");
        for (const char* backend : {"sqlite", "postgres"})
            addTamperRows(QString::fromLatin1(backend));
    }
    void auditNamesTheFirstRowThatDiffers() {
        APP_ON_BACKEND();
        QFETCH(QString, tamper);
        QFETCH(QString, expected);
        QList<qint64> ids;
        for (int i = 1; i <= 4; ++i)
            ids << addReceipt(app.db(), 1, i, code(i));
        clsRecebimentos third(app.db());
        QVERIFY(third.SQLSelect(qint32(ids.at(2))));
        third.OBS = QStringLiteral("CORRIGIDO");
        QVERIFY(third.SQLUpdate()); // changes through the program stay in the chain
        AuditChain::Report r = AuditChain::audit(app.db());
        QVERIFY2(r.ok, qPrintable(r.problems.join(QLatin1Char('\n'))));
        QCOMPARE(r.entries, qint64(5));

        QSqlQuery q(app.db().database()); // as any database tool would
        QVERIFY(q.exec(tamper));
        r = AuditChain::audit(app.db());
        QVERIFY(!r.ok);
        if (expected.contains(QLatin1String("%2")))
            expected = expected.arg(ids.at(1));
        QVERIFY2(r.problems.first().contains(expected), qPrintable(r.problems.first()));
    }

    void rewrittenChainMissesTheClosingHash_data() { addBackendRows(); }
    void rewrittenChainMissesTheClosingHash() {
        APP_ON_BACKEND();
        for (int i = 1; i <= 3; ++i)
            addReceipt(app.db(), 1, i, code(i));
        const QString closing = *AuditChain::lastHash(app.db());
        // Someone changes a receipt and recomputes every entry after it, consistently.
        QSqlQuery q(app.db().database());
        QVERIFY(q.exec(QStringLiteral("UPDATE Recebimentos SET VALOR = 1 WHERE AUTENTICA = 3")));
        QVERIFY(q.exec(QStringLiteral("SELECT SEQ, TABELA, CAMPO, CHAVE, OPERACAO, MOMENTO, "
                                      "CONTEUDO FROM Cadeia ORDER BY SEQ")));
        QString previous = AuditChain::kGenesis;
        QList<QVariantList> rewritten;
        while (q.next()) {
            QString content = q.value(6).toString();
            if (q.value(0).toLongLong() == 3)
                content.replace(QStringLiteral("\"VALOR\":\"100000\""),
                                QStringLiteral("\"VALOR\":\"1\""));
            previous = AuditChain::entryHash(
                previous, q.value(0).toLongLong(), q.value(1).toString(), q.value(2).toString(),
                q.value(3).toLongLong(), q.value(4).toString(), q.value(5).toString(), content);
            rewritten << QVariantList{content, previous, q.value(0)};
        }
        for (const QVariantList& row : rewritten) {
            QSqlQuery u(app.db().database());
            u.prepare(QStringLiteral("UPDATE Cadeia SET CONTEUDO = ?, HASH = ? WHERE SEQ = ?"));
            for (const QVariant& v : row)
                u.addBindValue(v);
            QVERIFY(u.exec());
        }
        QVERIFY(AuditChain::audit(app.db()).ok); // consistent in itself...
        const AuditChain::Report r = AuditChain::audit(app.db(), 1, closing);
        QVERIFY(!r.ok); // ...but the hash printed at the closing is gone
        QVERIFY(!r.anchorFound);
    }

    void quotedPasswordIsNeverWritten_data() { addBackendRows(); }
    void quotedPasswordIsNeverWritten() {
        APP_ON_BACKEND();
        const QString secret = QStringLiteral("s3gr'edo");
        QVERIFY(!Login::Valida_senha(app.ctx(), secret));
        QVERIFY(!app.db().SQLExecute(QStringLiteral("UPDATE Usuarios SET SENHA = ?"), {secret}));
        QVERIFY(app.log().contains(QStringLiteral("aspa simples")));
        QVERIFY(!app.log().contains(QStringLiteral("gr'edo")));
        QVERIFY(!app.log().contains(QStringLiteral("s3gr")));
        for (const QString& shown : app.dialogs().texts())
            QVERIFY2(!shown.contains(QStringLiteral("s3gr")), qPrintable(shown));
    }

    void fullDiskNamesThePath() {
        TestApp app; // SQLite: a size limit on the file stands for the full disk
        QSqlQuery q(app.db().database());
        QVERIFY(q.exec(QStringLiteral("PRAGMA page_count")) && q.next());
        QVERIFY(q.exec(QStringLiteral("PRAGMA max_page_count = %1").arg(q.value(0).toInt())));
        bool failed = false;
        for (int i = 1; i < 100 && !failed; ++i)
            failed = !app.db().SQLExecute(
                QStringLiteral("INSERT INTO Recebimentos (CODBARRA, AUTENTICA, IDMOVIMENTO, OBS) "
                               "VALUES (?, ?, 9, ?)"),
                {clsRecebimentos::kSemCodigo, i, QString(3000, QLatin1Char('x'))});
        QVERIFY(failed);
        const QString expected = QStringLiteral("Disco cheio: ") +
                                 QDir::toNativeSeparators(app.path(QStringLiteral("caixa.db")));
        QVERIFY2(app.dialogs().last().text.contains(expected),
                 qPrintable(app.dialogs().last().text));
        QVERIFY(app.log().contains(expected));
    }

    void failedCommitIsLogged_data() { addBackendRows(); }
    void failedCommitIsLogged() {
        APP_ON_BACKEND();
        app.db().faultHook = [](const QString& sql) { return sql == QLatin1String("COMMIT"); };
        {
            Transaction tx(app.db());
            QVERIFY(app.db().SQLExecute(QStringLiteral("INSERT INTO Feriados (FERIADO) VALUES (?)"),
                                        {QDate(2026, 5, 1)}));
            QVERIFY(!tx.commit());
        }
        app.db().faultHook = nullptr;
        QCOMPARE(app.count(QStringLiteral("Feriados")), 0);
        QVERIFY(app.log().contains(QStringLiteral("Função CommitTrans em clsDataAccess")));
    }

    // A database belongs to the counter that used it first: renumbering the counter follows it
    // while no cash day exists; after the first day another counter is refused.
    void databaseBelongsToOneCounter_data() { addBackendRows(); }
    void databaseBelongsToOneCounter() {
        APP_ON_BACKEND();
        app.setOption(QStringLiteral("Export"), QStringLiteral("guiche"), QStringLiteral("1"));
        QVERIFY(Startup::Abre_conexao(app.ctx(), false));
        app.setOption(QStringLiteral("Export"), QStringLiteral("guiche"), QStringLiteral("B"));
        QString detail;
        QVERIFY2(Startup::Abre_conexao(app.ctx(), false, &detail), qPrintable(detail));
        clsMovimento day(app.db());
        QCOMPARE(MovementNumbering::openNew(app.db(), QDate(2026, 11, 23), day),
                 MovementNumbering::Outcome::Opened);

        // Another counter pointed at the same database: on PostgreSQL another folder with the
        // same [Banco]; on SQLite the folder's settings changed to another counter.
        QTemporaryDir otherFolder;
        QString folder = app.folder();
        if (backend == QLatin1String("postgres")) {
            folder = otherFolder.path();
            QVERIFY(QFile::copy(app.path(QStringLiteral("Config.ini")),
                                otherFolder.filePath(QStringLiteral("Config.ini"))));
        }
        IniFile::write(QStringLiteral("Export"), QStringLiteral("guiche"), QStringLiteral("2"),
                       QDir(folder).filePath(QStringLiteral("Config.ini")));
        FolderContext other(folder);
        QVERIFY(!Startup::Abre_conexao(other.ctx, false, &detail));
        QVERIFY2(detail.contains(QStringLiteral("pertence ao guichê B")), qPrintable(detail));
        QVERIFY(detail.contains(QStringLiteral("guichê 2")));
        QVERIFY(Startup::abrirConsulta(other.ctx, &detail)); // reading it stays possible
    }

    void shortOrMissingFilesAreNeverRebuilt_data() {
        QTest::addColumn<int>("size");
        QTest::addColumn<QString>("expected");
        QTest::newRow("missing") << -1 << "não existe";
        QTest::newRow("empty") << 0 << "tem 0 bytes";
        QTest::newRow("one byte") << 1 << "tem 1 bytes";
        QTest::newRow("header only") << 100 << "tem 100 bytes";
        QTest::newRow("no tables") << -2 << "não tem as tabelas do Tolvane";
    }
    void shortOrMissingFilesAreNeverRebuilt() {
        QFETCH(int, size);
        QFETCH(QString, expected);
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("caixa.db"));
        if (size >= 0) {
            QFile f(file);
            QVERIFY(f.open(QIODevice::WriteOnly) && f.write(QByteArray(size, 'S')) == size);
        } else if (size == -2) {
            QSqlDatabase empty =
                QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("empty"));
            empty.setDatabaseName(file);
            QVERIFY(empty.open());
            QVERIFY(QSqlQuery(empty).exec(QStringLiteral("CREATE TABLE Outra (A INTEGER)")));
            empty.close();
            empty = QSqlDatabase();
            QSqlDatabase::removeDatabase(QStringLiteral("empty"));
        }
        const qint64 before = QFileInfo(file).size();
        FolderContext run(dir.path());
        QString detail;
        QVERIFY(!Startup::Abre_conexao(run.ctx, false, &detail));
        QVERIFY2(detail.contains(expected), qPrintable(detail));
        QCOMPARE(QFileInfo(file).size(), before); // untouched, and not created when missing
        QCOMPARE(QFileInfo::exists(file), size != -1);
        if (size >= 0 && size < 512) {
            QVERIFY(detail.contains(QStringLiteral("copias")));      // what to do
            QVERIFY(!Startup::Abre_conexao(run.ctx, true, &detail)); // not even by iniciar
        }
    }

    // A database damaged in many ways: whenever SQLite's own full check finds it damaged, the
    // program refuses to open it (and so to record anything in it).
    void damagedDatabasesAreRefused() {
        QTemporaryDir source;
        {
            FolderContext run(source.path());
            QVERIFY(Startup::Abre_conexao(run.ctx, true));
            for (int i = 1; i <= 300; ++i)
                QVERIFY(addReceipt(run.ctx.db, 1 + i / 100, i, code(i)) > 0);
        } // closed: the whole database is in caixa.db, and its record says so
        QFile recordIn(source.filePath(QStringLiteral("caixa.db-conferencia")));
        QVERIFY(recordIn.open(QIODevice::ReadOnly));
        const QByteArray record = recordIn.readAll();
        QFile in(source.filePath(QStringLiteral("caixa.db")));
        QVERIFY(in.open(QIODevice::ReadOnly));
        const QByteArray pristine = in.readAll();
        const int pageSize = 4096;
        const int pages = int(pristine.size() / pageSize);
        QVERIFY(pages > 10);
        int damaged = 0, refused = 0;
        QRandomGenerator rng(20261123);
        for (int round = 0; round < 150; ++round) {
            QByteArray bytes = pristine;
            const int page = 1 + int(rng.bounded(pages - 1));
            switch (round % 5) {
            case 0: // a few bytes flipped anywhere past the file header
                for (int k = 0; k < 1 + round % 7; ++k)
                    bytes[100 + int(rng.bounded(bytes.size() - 100))] ^= char(1 + rng.bounded(255));
                break;
            case 1: // one page zeroed
                bytes.replace(page * pageSize, pageSize, QByteArray(pageSize, '\0'));
                break;
            case 2: // one page of garbage
                for (int k = 0; k < pageSize; ++k)
                    bytes[page * pageSize + k] = char(rng.bounded(256));
                break;
            case 3: // cut short
                bytes.truncate(512 + int(rng.bounded(bytes.size() - 512)));
                break;
            default: // two pages swapped
                const int other = 1 + int(rng.bounded(pages - 1));
                const QByteArray a = bytes.mid(page * pageSize, pageSize);
                bytes.replace(page * pageSize, pageSize, bytes.mid(other * pageSize, pageSize));
                bytes.replace(other * pageSize, pageSize, a);
                break;
            }
            // Beside the record the program left for the sound file: the damaged one is not
            // the file it left, so it is read whole.
            QTemporaryDir dir;
            QFile keep(dir.filePath(QStringLiteral("caixa.db-conferencia")));
            QVERIFY(keep.open(QIODevice::WriteOnly) && keep.write(record) == record.size());
            keep.close();
            QFile out(dir.filePath(QStringLiteral("caixa.db")));
            QVERIFY(out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size());
            out.close();
            const bool isDamaged = !sqliteSaysSound(out.fileName());
            FolderContext run(dir.path());
            QString detail;
            const bool opened = Startup::Abre_conexao(run.ctx, false, &detail);
            damaged += isDamaged;
            if (isDamaged && !opened) {
                ++refused;
                QVERIFY2(detail.contains(QStringLiteral("danificado")) ||
                             detail.contains(QStringLiteral("Não foi possível abrir")),
                         qPrintable(detail));
            }
        }
        qInfo("damaged databases: %d of 150 variants damaged, %d refused", damaged, refused);
        QVERIFY(damaged > 50);
        QCOMPARE(refused, damaged);
    }

    void readOnlyFolderStillAnswers() {
        ReadOnlyCopy folder;
        {
            FolderContext run(folder.writable());
            QVERIFY(Startup::Abre_conexao(run.ctx, true));
            QVERIFY(addReceipt(run.ctx.db, 1, 1, code(1)) > 0);
        }
        if (!folder.makeReadOnly())
            QSKIP("no read-only folder can be made here");
        FolderContext run(folder.readOnly());
        QString detail;
        QVERIFY2(Startup::abrirConsulta(run.ctx, &detail), qPrintable(detail));
        QCOMPARE(int(run.ctx.db.SQLSelect_ReadOnly(QStringLiteral("SELECT * FROM Recebimentos"))
                         ->recordCount()),
                 1);
        QVERIFY(!run.ctx.db.SQLExecute(QStringLiteral("DELETE FROM Recebimentos")));
        QVERIFY(!QFileInfo::exists(folder.readOnly() + QStringLiteral("/caixa.db-shm")));
    }
};

QTEST_GUILESS_MAIN(tst_reliability)
#include "tst_reliability.moc"
