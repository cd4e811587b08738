// No box opens while a transaction holds the database's write lock: the dialog ports refuse it
// (the safe answer, a Log.ini line), the database's own reports wait for the scope's end, and the
// operations that decide inside a transaction tell after it. Every TestApp fails its test on a
// box asked under the lock, so the other tests prove the same for every path they take.
#include "CashDay.h"
#include "DescriptionTexts.h"
#include "Startup.h"
#include "TestApp.h"
#include "Transaction.h"
#include "clsContador.h"

namespace {
const QString kInsertFeriado = QStringLiteral("INSERT INTO Feriados (FERIADO) VALUES (?)");
}

class tst_no_box_under_lock : public QObject {
    Q_OBJECT
private slots:
    void initTestCase_data() { addBackendRows(); }

    // Under an open scope (and a savepoint in it) nothing is shown and every question gets the
    // safe answer; once the scope has ended the same question is asked.
    void portsRefuseUnderTheLock() {
        TEST_BACKEND();
        QStringList refused;
        app.dialogs().onLockedBox = [&](const QString& kind, const QString&, const QString& text) {
            refused << kind + QLatin1Char(':') + text;
        };
        ScriptedDialogPort& d = app.dialogs();
        {
            Transaction tx(app.db());
            QVERIFY(tx.ok());
            QVERIFY(d.transactionActive());
            QCOMPARE(d.message(Desc::kAviso, QStringLiteral("Confirma?"), DialogIcon::Question,
                               DialogButtons::YesNo),
                     DialogAnswer::No);
            d.pushInput(QStringLiteral("1234"));
            QVERIFY(!d.input(QStringLiteral("Senha"), QStringLiteral("Senha:"), true, {}));
            QCOMPARE(d.notice(QStringLiteral("frmGuiavencida"), QStringLiteral("Guia Vencida"),
                              {QStringLiteral("Deseja Continuar?")}, DialogButtons::YesNo),
                     DialogAnswer::No);
            {
                Transaction inner(app.db());
                d.info(Desc::kAviso, QStringLiteral("Pronto"));
            }
            QVERIFY(d.shown().isEmpty());
        }
        QCOMPARE(refused,
                 QStringList({QStringLiteral("message:Confirma?"), QStringLiteral("input:Senha:"),
                              QStringLiteral("notice:Deseja Continuar?"),
                              QStringLiteral("message:Pronto")}));
        QVERIFY(!d.transactionActive());
        QCOMPARE(d.message(Desc::kAviso, QStringLiteral("Confirma?"), DialogIcon::Question,
                           DialogButtons::YesNo),
                 DialogAnswer::Yes);
        QCOMPARE(d.shown().size(), 1);
    }

    // The program's own wiring (no test guard) writes the refused box into Log.ini.
    void refusalIsLogged() {
        TEST_BACKEND();
        ScriptedDialogPort port;
        FixedClock clock(QDateTime(QDate(2026, 11, 23), QTime(10, 0)));
        AppContext ctx(app.folder(), port, clock);
        QVERIFY(Startup::Abre_conexao(ctx, false));
        {
            Transaction tx(ctx.db);
            port.warn(Desc::kAviso, QStringLiteral("Caixa pedida sob a trava"));
        }
        QVERIFY(port.shown().isEmpty());
        QVERIFY2(app.log().contains(QStringLiteral("Caixa pedida sob a trava")),
                 qPrintable(app.log()));
    }

    // A statement refused inside a scope: the Log.ini record at once, the box after the scope.
    void failureInsideWaitsForTheScope() {
        TEST_BACKEND();
        app.db().faultHook = [](const QString& sql) {
            return sql.startsWith(QLatin1String("INSERT INTO Feriados"));
        };
        {
            Transaction tx(app.db());
            QVERIFY(!app.db().SQLExecute(kInsertFeriado, {QDate(2026, 5, 1)}));
            QVERIFY(app.dialogs().shown().isEmpty());
            QVERIFY(app.log().contains(QStringLiteral("falha simulada")));
        }
        app.db().faultHook = nullptr;
        QCOMPARE(app.dialogs().shown().size(), 1);
        QVERIFY(app.dialogs().last().text.startsWith(Desc::kErroInterno));
        QCOMPARE(app.dialogs().last().title, QStringLiteral("Tolvane"));
    }

    // A real error of the engine in a nested scope: the savepoint undoes its own statement only,
    // the outer scope goes on (PostgreSQL would refuse every statement until the savepoint is
    // rolled back) and commits, and the report waits for the outer scope's end.
    void realErrorInANestedScope() {
        TEST_BACKEND();
        {
            Transaction outer(app.db());
            QVERIFY(app.db().SQLExecute(kInsertFeriado, {QDate(2026, 5, 1)}));
            {
                Transaction inner(app.db());
                QVERIFY(inner.ok());
                QVERIFY(app.db().SQLExecute(kInsertFeriado, {QDate(2026, 6, 4)}));
                QVERIFY(!app.db().SQLExecute(
                    QStringLiteral("INSERT INTO TabelaInexistente (X) VALUES (?)"), {1}));
            }
            QVERIFY(app.dialogs().shown().isEmpty());
            QVERIFY(app.db().SQLExecute(kInsertFeriado, {QDate(2026, 9, 7)}));
            QVERIFY(outer.commit());
        }
        QCOMPARE(app.count(QStringLiteral("Feriados")), 2);
        QCOMPARE(app.count(QStringLiteral("Feriados"), QStringLiteral("FERIADO = '2026-06-04'")),
                 0);
        QCOMPARE(app.dialogs().shown().size(), 1);
        QVERIFY(app.dialogs().last().text.startsWith(Desc::kErroInterno));
        QVERIFY(app.log().contains(QStringLiteral("tabelainexistente"), Qt::CaseInsensitive));
    }

    // The day's opening decides in its transaction and tells after it, in the system's words.
    void openingToldAfterTheScope() {
        TEST_BACKEND();
        clsContador k(app.db());
        k.ANO = 2026;
        k.CONTADOR = 4;
        QVERIFY(k.SQLInsert());
        app.db().faultHook = [](const QString& sql) {
            return sql.startsWith(QLatin1String("UPDATE Contador"));
        };
        app.ctx().workingDate = QDate(2026, 11, 23);
        CashDay day(app.ctx(), nullptr);
        QVERIFY(!day.abrir());
        app.db().faultHook = nullptr;
        const QStringList texts = app.dialogs().texts();
        QCOMPARE(texts.size(), 3);
        QVERIFY(texts[0].startsWith(Desc::kErroInterno));
        QCOMPARE(texts.mid(1),
                 QStringList({Desc::kErroAlteracaoContador, Desc::kErroAberturaMovimento}));
        QCOMPARE(app.count(QStringLiteral("Movimento")), 0);
        QVERIFY(k.SQLSelect(2026));
        QCOMPARE(k.CONTADOR, qint16(4));
    }
};

QTEST_GUILESS_MAIN(tst_no_box_under_lock)
#include "tst_no_box_under_lock.moc"
