// Record classes of Movimento, Contador, Recebimentos and Usuarios, and the data access rules
// under them, on both SQLite and PostgreSQL.
#include "AuditChain.h"
#include "MovementNumbering.h"
#include "PasswordHash.h"
#include "Schema.h"
#include "TestApp.h"
#include "Transaction.h"
#include "clsAutenticacaoAvulsa.h"
#include "clsContador.h"
#include "clsMovimento.h"
#include "clsRecebimentos.h"
#include "clsUsuarios.h"

namespace {
qint32 addReceipt(clsDataAccess& db, int autentica, const QString& code) {
    clsRecebimentos r(db);
    r.AUTENTICA = static_cast<qint16>(autentica);
    r.IDMOVIMENTO = 3;
    r.CODBARRA = code;
    r.TIPO = 4;
    r.VALOR = Money::fromCents(100 * autentica);
    return r.SQLInsert() ? r.IDRECEBE : 0;
}
} // namespace

class tst_records : public QObject {
    Q_OBJECT
private slots:
    void initTestCase_data() { addBackendRows(); }

    void schemaHasEveryTable() {
        TEST_BACKEND();
        for (const QString& t : Schema::tableNames())
            QVERIFY2(app.count(t) == 0, qPrintable(t));
        QCOMPARE(Schema::versionOf(app.db()), Schema::currentVersion());
        // Migrating again is a no-op that keeps the data.
        app.addUser(QStringLiteral("ANA"), QStringLiteral("x"), QStringLiteral("USER"));
        QCOMPARE(Schema::migrate(app.db()), Schema::Result::Ok);
        QCOMPARE(app.count(QStringLiteral("Usuarios")), 1);
    }

    // An explicit key is kept and the numbering moves past it.
    void movementRoundTrip() {
        TEST_BACKEND();
        clsMovimento m(app.db());
        m.MDATA = QDate(2026, 1, 2);
        m.STATUS = QStringLiteral("ABERTO");
        QVERIFY(m.inserirComId(40));
        QCOMPARE(m.ID, 40);
        m.MDATA = QDate(2026, 3, 9);
        m.MOV = 7;
        m.VALOR_ARRECADADO = *Money::parse(QStringLiteral("1.234,56"));
        m.ENTRADA = Money::fromCents(10);
        QVERIFY(m.inserirNovo());
        QVERIFY(m.ID > 40);
        const qint32 id = m.ID;

        clsMovimento r(app.db());
        QVERIFY(r.SQLSelect(id));
        QCOMPARE(r.MDATA, QDate(2026, 3, 9));
        QCOMPARE(r.MOV, qint16(7));
        QCOMPARE(r.VALOR_ARRECADADO.format(), QStringLiteral("1.234,56"));
        QCOMPARE(r.ENTRADA.units(), qint64(1000));

        r.STATUS = QStringLiteral("FECHADO");
        r.SAIDA = Money::fromReais(3);
        r.MOV = 99; // the totals update leaves MOV alone
        QVERIFY(r.SQLUpdateTotais());
        clsMovimento after(app.db());
        QVERIFY(after.SQLSelectByDate(QDate(2026, 3, 9)));
        QCOMPARE(after.ID, id);
        QCOMPARE(after.STATUS, QStringLiteral("FECHADO"));
        QCOMPARE(after.SAIDA, Money::fromReais(3));
        QCOMPARE(after.MOV, qint16(7));

        QVERIFY(after.SQLDelete());
        QVERIFY(!clsMovimento(app.db()).SQLSelect(id));
    }

    void yearlyNumbering() {
        TEST_BACKEND();
        clsMovimento a(app.db()), b(app.db()), c(app.db());
        QCOMPARE(MovementNumbering::openNew(app.db(), QDate(2026, 12, 30), a),
                 MovementNumbering::Outcome::Opened);
        QCOMPARE(MovementNumbering::openNew(app.db(), QDate(2026, 12, 31), b),
                 MovementNumbering::Outcome::Opened);
        QCOMPARE(MovementNumbering::openNew(app.db(), QDate(2027, 1, 2), c),
                 MovementNumbering::Outcome::Opened);
        QCOMPARE(a.MOV, qint16(1));
        QCOMPARE(b.MOV, qint16(2));
        QCOMPARE(c.MOV, qint16(1));
        QCOMPARE(c.STATUS, QStringLiteral("ABERTO"));
        QVERIFY(c.aberto());
        clsContador k(app.db());
        QVERIFY(k.SQLSelect(2026));
        QCOMPARE(k.CONTADOR, qint16(2));
        QVERIFY(app.dialogs().shown().isEmpty());
    }

    void counterFailureIsAnOutcomeAndSpendsNothing() {
        TEST_BACKEND();
        clsContador k(app.db());
        k.ANO = 2026;
        k.CONTADOR = 4;
        QVERIFY(k.SQLInsert());
        app.db().faultHook = [](const QString& sql) {
            return sql.startsWith(QLatin1String("UPDATE Contador"));
        };
        clsMovimento m(app.db());
        QCOMPARE(MovementNumbering::openNew(app.db(), QDate(2026, 5, 5), m),
                 MovementNumbering::Outcome::CounterNotUpdated);
        // Only the database's own report, shown once the transaction had ended.
        QCOMPARE(app.dialogs().shown().size(), 1);
        QVERIFY(app.dialogs().last().text.startsWith(QStringLiteral("Houve um erro interno:")));
        app.db().faultHook = [](const QString& sql) {
            return sql.startsWith(QLatin1String("INSERT INTO Movimento"));
        };
        QCOMPARE(MovementNumbering::openNew(app.db(), QDate(2026, 5, 5), m),
                 MovementNumbering::Outcome::Failed);
        app.db().faultHook = nullptr;
        QVERIFY(k.SQLSelect(2026));
        QCOMPARE(k.CONTADOR, qint16(4)); // nothing spent by the failed openings
        QCOMPARE(app.count(QStringLiteral("Movimento")), 0);
    }

    // The largest number of a movement, the zero code marked exported at once, and a rewrite
    // that keeps the export and integration flags.
    void receipts() {
        TEST_BACKEND();
        clsRecebimentos r(app.db());
        r.AUTENTICA = 55;
        QVERIFY(!r.SQLSelectMax(3)); // no receipts: null maximum, value kept
        QCOMPARE(r.AUTENTICA, qint16(55));
        const qint32 id = addReceipt(app.db(), 1, QString(44, QLatin1Char('8')));
        QVERIFY(id > 0);
        QVERIFY(addReceipt(app.db(), 2, clsRecebimentos::kSemCodigo));
        QVERIFY(addReceipt(app.db(), 5, QString(44, QLatin1Char('9'))));
        QVERIFY(r.SQLSelectMax(3));
        QCOMPARE(r.AUTENTICA, qint16(5));
        QCOMPARE(app.count(QStringLiteral("Recebimentos"), QStringLiteral("EXPORT = 1")), 1);
        QCOMPARE(app.count(QStringLiteral("Recebimentos"),
                           QStringLiteral("AUTENTICA = 2 AND EXPORT = 1")),
                 1);

        QVERIFY(r.SQLSelect(id));
        QVERIFY(r.SQLUpdateExport(id, 1));
        QVERIFY(r.SQLUpdateIntegra(3, 1));
        r.INTEGRA = 0;
        r.EXPORT = 0;
        r.OBS = QStringLiteral("corrigido");
        r.VALOR = Money::fromCents(995);
        QVERIFY(r.SQLUpdate());
        clsRecebimentos back(app.db());
        QVERIFY(back.SQLSelect(id));
        QCOMPARE(back.INTEGRA, qint16(1));
        QCOMPARE(back.EXPORT, qint16(1));
        QCOMPARE(back.OBS, QStringLiteral("corrigido"));
        QCOMPARE(back.VALOR.format(), QStringLiteral("9,95"));
        // The integration flag covers receipts added after an earlier setting too.
        QVERIFY(addReceipt(app.db(), 6, QString(44, QLatin1Char('2'))));
        QVERIFY(r.SQLUpdateIntegra(3, 1));
        QCOMPARE(app.count(QStringLiteral("Recebimentos"), QStringLiteral("INTEGRA = 1")), 4);
        QVERIFY(back.SQLDelete());
        QCOMPARE(app.count(QStringLiteral("Recebimentos")), 3);
    }

    // A failing statement inside a payment rolls back only itself: the outer transaction stays
    // open, so what the payment does next is still undone by the payment's own rollback.
    void nestedScopeNeverEndsTheOuter_data() {
        QTest::addColumn<bool>("commitOuter");
        QTest::newRow("outer rolled back") << false;
        QTest::newRow("outer committed") << true;
    }
    void nestedScopeNeverEndsTheOuter() {
        QFETCH(bool, commitOuter);
        TEST_BACKEND();
        int autentica = 0;
        auto insert = [&](const char* code) {
            clsRecebimentos r(app.db());
            r.AUTENTICA = static_cast<qint16>(++autentica);
            r.IDMOVIMENTO = 1;
            r.TIPO = 1;
            r.CODBARRA = QString::fromLatin1(code);
            return r.SQLInsert();
        };
        {
            Transaction outer(app.db());
            QVERIFY(outer.ok());
            QVERIFY(insert("A"));
            app.db().faultHook = [](const QString& sql) {
                return sql.startsWith(QLatin1String("INSERT INTO Recebimentos"));
            };
            QVERIFY(!insert("FALHA"));
            app.db().faultHook = nullptr;
            {
                Transaction inner(app.db());
                QVERIFY(insert("DESFEITO"));
            } // rolled back by its destructor
            QVERIFY(insert("B"));
            if (commitOuter)
                QVERIFY(outer.commit());
        }
        QCOMPARE(app.count(QStringLiteral("Recebimentos")), commitOuter ? 2 : 0);
        QCOMPARE(app.count(QStringLiteral("Recebimentos"),
                           QStringLiteral("CODBARRA IN ('FALHA', 'DESFEITO')")),
                 0);
    }

    void quoteIsRefusedLoggedAndWrittenNowhere() {
        TEST_BACKEND();
        clsRecebimentos r(app.db());
        r.CODBARRA = QString(44, QLatin1Char('3'));
        r.OBS = QStringLiteral("d'agua");
        QVERIFY(!r.SQLInsert());
        QCOMPARE(r.IDRECEBE, 0);
        QCOMPARE(app.count(QStringLiteral("Recebimentos")), 0);
        QVERIFY(app.log().contains(QStringLiteral("Local: Função SQLExecute em clsDataAccess")));
        QVERIFY(app.dialogs().last().text.startsWith(QStringLiteral("Houve um erro interno:")));
    }

    void usersInsertUpdateDelete() {
        TEST_BACKEND();
        clsUsuarios u(app.db());
        u.NOME = QStringLiteral("MARIA");
        u.SENHA = PasswordHash::hash(QStringLiteral("abc"), 10);
        u.TIPO = QStringLiteral("USER");
        QVERIFY(u.inserirNovo());
        QVERIFY(u.ID > 0);
        const QString stored = u.SENHA;
        u.SENHA.clear(); // an empty password on change keeps the stored one
        u.TIPO = QStringLiteral("ADM");
        QVERIFY(u.alterar());
        clsUsuarios back(app.db());
        QVERIFY(back.SQLSelect(u.ID));
        QCOMPARE(back.SENHA, stored);
        QCOMPARE(back.TIPO, QStringLiteral("ADM"));
        QVERIFY(back.SQLDelete());
        QCOMPARE(app.count(QStringLiteral("Usuarios")), 0);
    }

    void selectsAnswerAsDefined() {
        TEST_BACKEND();
        auto none = app.db().SQLSelect_ReadOnly(
            QStringLiteral("SELECT ID FROM Usuarios WHERE ID = ?"), {1});
        QVERIFY(none.has_value());
        QCOMPARE(none->recordCount(), 0);
        QVERIFY(!clsDataAccess::CheckValidRecordset(none));
        QVERIFY(app.db().SQLSelectAllArray(QStringLiteral("SELECT ID FROM Usuarios")).isEmpty());
        app.addUser(QStringLiteral("B"), QStringLiteral("1"), QStringLiteral("USER"));
        app.addUser(QStringLiteral("A"), QStringLiteral("2"), QStringLiteral("ADM"));
        const auto arr = app.db().SQLSelectAllArray(
            QStringLiteral("SELECT NOME, TIPO FROM Usuarios ORDER BY NOME"));
        QCOMPARE(arr.size(), 2);    // fields
        QCOMPARE(arr[0].size(), 2); // rows
        QCOMPARE(arr[0][0].toString(), QStringLiteral("A"));
        QCOMPARE(arr[1][1].toString(), QStringLiteral("USER"));
        // Text comparisons ignore case on both engines.
        QCOMPARE(app.count(QStringLiteral("Usuarios"), QStringLiteral("NOME = 'a'")), 1);
        // A broken statement gives no recordset and is logged under its label.
        QVERIFY(
            !app.db().SQLSelect_ReadOnly(QStringLiteral("SELECT nada FROM naoexiste")).has_value());
        QVERIFY(app.dialogs().last().text.contains(
            QStringLiteral("Função sqlSelect_ReadyOnly em clsDataAccess")));
    }

    // A loose stamp keeps who stamped it, who allowed it and whether the printer confirmed it,
    // and is in the chain on both engines.
    void looseStampsAreChainedAndListedByDay() {
        TEST_BACKEND();
        const qint64 before = AuditChain::audit(app.db()).entries;
        clsAutenticacaoAvulsa a(app.db());
        a.MOMENTO = QDateTime(QDate(2026, 11, 23), QTime(10, 5, 7));
        a.DIA = QDate(2026, 11, 23);
        a.VALOR = *Money::parse(QStringLiteral("150,00"));
        a.TEXTO = QStringLiteral("PMX A 23/11/2026        150,00R");
        a.GUICHE = QStringLiteral("A");
        a.OPERADOR = QStringLiteral("ANA");
        a.ADMINISTRADOR = QStringLiteral("CHEFE");
        QVERIFY(a.SQLInsert());
        clsAutenticacaoAvulsa next = a;
        next.DIA = QDate(2026, 11, 24);
        QVERIFY(next.SQLInsert());
        QVERIFY(next.ID > a.ID);
        QVERIFY(a.SQLConfirmar());

        const auto day = clsAutenticacaoAvulsa::listar(app.db(), QDate(2026, 11, 23));
        QVERIFY(day && day->size() == 1);
        QVERIFY(day->first().CONFIRMADA);
        QCOMPARE(day->first().MOMENTO, a.MOMENTO);
        QCOMPARE(day->first().VALOR, a.VALOR);
        QCOMPARE(day->first().TEXTO, a.TEXTO);
        QCOMPARE(day->first().OPERADOR, QStringLiteral("ANA"));
        QCOMPARE(day->first().ADMINISTRADOR, QStringLiteral("CHEFE"));
        const auto all = clsAutenticacaoAvulsa::listar(app.db(), std::nullopt);
        QVERIFY(all && all->size() == 2);
        QVERIFY(!all->last().CONFIRMADA);
        const AuditChain::Report r = AuditChain::audit(app.db());
        QVERIFY2(r.ok, qPrintable(r.problems.join(QLatin1Char('\n'))));
        QCOMPARE(r.entries, before + 3); // two inserts and the confirmation
    }
};

QTEST_GUILESS_MAIN(tst_records)
#include "tst_records.moc"
