// Records of the cash day (Sangria, Itens, ConfCaixa, Suprimentos) on SQLite and PostgreSQL.
#include "TestApp.h"
#include "clsConfCaixa.h"
#include "clsItens.h"
#include "clsSangria.h"
#include "clsSuprimentos.h"

class tst_cash_records : public QObject {
    Q_OBJECT

    static clsSangria entry(clsDataAccess& db, const QString& tipo, const QString& descricao) {
        clsSangria s(db);
        s.IDMOVIMENTO = 3;
        s.TIPO = tipo;
        s.DESCRICAO = descricao;
        s.SDATA = QDate(2026, 11, 23);
        return s;
    }

private slots:
    void initTestCase_data() { addBackendRows(); }

    // Keys follow one another; mode 2 rewrites the row under its key, any other mode writes
    // nothing; delete with 0 removes the object's own row.
    void sangriaInsertUpdateDelete() {
        TEST_BACKEND();
        clsSangria s = entry(app.db(), QStringLiteral("SANGRIA"), QStringLiteral("RETIRADA"));
        s.SAIDA = *Money::parse(QStringLiteral("12,5"));
        QVERIFY(s.inserirNovo());
        clsSangria again = entry(app.db(), QStringLiteral("SAIDA"), QStringLiteral("OUTRA"));
        QVERIFY(again.inserirNovo());
        QCOMPARE(again.ID, s.ID + 1);

        clsSangria r(app.db());
        QVERIFY(r.SQLSelect(s.ID));
        QCOMPARE(r.SAIDA.format(), QStringLiteral("12,50"));
        QCOMPARE(r.SDATA, QDate(2026, 11, 23));
        r.SAIDA = Money::fromReais(150);
        QVERIFY(r.alterar());
        QCOMPARE(r.ID, s.ID);
        QVERIFY(s.SQLSelect(s.ID));
        QCOMPARE(s.SAIDA, Money::fromReais(150));
        QCOMPARE(app.count(QStringLiteral("Sangria")), 2);
        QVERIFY(r.excluirEste());
        QVERIFY(!clsSangria(app.db()).SQLSelect(s.ID));
        QCOMPARE(app.count(QStringLiteral("Sangria")), 1);
    }

    // A refused write reports false and leaves the object as it was: a quote in a text, or a
    // database that refuses the statement.
    void failedWritesKeepTheProperties() {
        TEST_BACKEND();
        clsSangria s = entry(app.db(), QStringLiteral("SAIDA"), QStringLiteral("D'AGUA"));
        s.ID = 77;
        QVERIFY(!s.inserirNovo());
        QCOMPARE(s.ID, 77);
        QCOMPARE(s.DESCRICAO, QStringLiteral("D'AGUA"));
        QCOMPARE(app.count(QStringLiteral("Sangria")), 0);
        QCOMPARE(app.dialogs().last().icon, DialogIcon::Exclamation); // the error report

        clsItens i(app.db());
        i.ID = 5;
        i.IDSANGRIA = 1;
        i.ESPECIE = 100;
        i.VALOR = Money::fromReais(1);
        app.db().faultHook = [](const QString& sql) {
            return sql.startsWith(QLatin1String("INSERT INTO Itens"));
        };
        QVERIFY(!i.inserirNovo());
        QCOMPARE(i.ID, 5);
        clsConfCaixa c(app.db());
        c.ID = 9;
        app.db().faultHook = [](const QString& sql) {
            return sql.startsWith(QLatin1String("INSERT INTO ConfCaixa"));
        };
        QVERIFY(!c.SQLInsert(0));
        QVERIFY(!c.SQLInsert(4));
        QCOMPARE(c.ID, 9);
        app.db().faultHook = nullptr;
        QCOMPARE(app.count(QStringLiteral("Itens")) + app.count(QStringLiteral("ConfCaixa")), 0);
    }

    void itemsListedWithTheirKind() {
        TEST_BACKEND();
        QVERIFY(app.db().SQLExecute(QStringLiteral(
            "INSERT INTO CodBarra (IDCOD, IDTIPO, DESCRICAO, PADRAO) VALUES (100, 'DIN', "
            "'DINHEIRO', 'S'), (101, 'CHQ', 'CHEQUE', 'S'), (1, '0425', 'IPTU', 'F')")));
        for (const auto& [especie, valor, numero] :
             {std::tuple{100, "100,00", ""}, std::tuple{101, "50,00", "123"},
              std::tuple{555, "1,00", "sem tipo"}}) {
            clsItens i(app.db());
            i.IDSANGRIA = 4;
            i.ESPECIE = static_cast<qint16>(especie);
            i.VALOR = *Money::parse(QLatin1String(valor));
            i.NUMERO = QLatin1String(numero);
            QVERIFY(i.inserirNovo());
            QVERIFY(i.ID > 0);
        }
        const auto items = clsItens::listar(app.db(), 4);
        QVERIFY(items);
        QCOMPARE(items->size(), 3);
        QCOMPARE(items->at(1).especieDescricao, QStringLiteral("CHEQUE"));
        QCOMPARE(items->at(1).NUMERO, QStringLiteral("123"));
        QCOMPARE(items->at(1).VALOR, Money::fromReais(50));
        QCOMPARE(items->at(2).especieDescricao, QString()); // kind gone, item still counted
        QVERIFY(clsItens::listar(app.db(), 5)->isEmpty());

        clsItens change = items->at(0);
        change.VALOR = Money::fromReais(90);
        QVERIFY(change.alterar());
        clsItens r(app.db());
        QVERIFY(r.SQLSelect(change.ID));
        QCOMPARE(r.VALOR, Money::fromReais(90));
        QVERIFY(r.excluirEste());
        QCOMPARE(clsItens::listar(app.db(), 4)->size(), 2);

        const auto kinds = clsItens::especies(app.db());
        QVERIFY(kinds);
        QCOMPARE(kinds->size(), 2);
        QCOMPARE(kinds->first(), (QPair<qint16, QString>(100, QStringLiteral("DINHEIRO"))));
    }

    void entryListingsAndSums() {
        TEST_BACKEND();
        const QList<std::tuple<const char*, const char*, qint64, qint64, qint32>> rows = {
            {"ENTRADA", "ABERTURA DE CAIXA", 20000, 0, 3},
            {"SANGRIA", "RETIRADAS DE CAIXA", 0, 15000, 3},
            {"SAIDA", "EMPENHO 12", 0, 3000, 3},
            {"SAIDA", "EMPENHO 13 ÁGUA", 0, 2000, 3},
            {"SAIDA", "EMPENHO 14", 0, 9900, 4}};
        for (const auto& [tipo, desc, in, out, mov] : rows) {
            clsSangria s = entry(app.db(), QLatin1String(tipo), QString::fromUtf8(desc));
            s.IDMOVIMENTO = mov;
            s.ENTRADA = Money::fromCents(in);
            s.SAIDA = Money::fromCents(out);
            QVERIFY(s.inserirNovo());
        }
        auto saidas = clsSangria::listar(app.db(), 3, QStringLiteral("SAIDA"));
        QVERIFY(saidas);
        QCOMPARE(saidas->size(), 2);
        QCOMPARE(saidas->first().DESCRICAO, QStringLiteral("EMPENHO 13 ÁGUA")); // newest first
        saidas = clsSangria::listar(app.db(), 3, QStringLiteral("SAIDA"), QStringLiteral("13"));
        QCOMPARE(saidas->size(), 1);
        saidas =
            clsSangria::listar(app.db(), 3, QStringLiteral("SAIDA"), QStringLiteral("empenho"));
        QCOMPARE(saidas->size(), 2); // the search ignores case
        const auto debits = clsSangria::debitos(app.db(), 3);
        QCOMPARE(debits->size(), 3);
        QCOMPARE(debits->first().TIPO, QStringLiteral("SANGRIA")); // oldest first, no ENTRADA
        QCOMPARE(clsSangria::doMovimento(app.db(), 3)->size(), 4);
        const auto sums = clsSangria::somarMovimento(app.db(), 3);
        QVERIFY(sums);
        QCOMPARE(sums->entrada, Money::fromCents(20000));
        QCOMPARE(sums->saida, Money::fromCents(20000));
        const auto none = clsSangria::somarMovimento(app.db(), 99);
        QVERIFY(none);
        QCOMPARE(none->saida, Money());
    }

    void confCaixaExplicitAndNumberedKeys() {
        TEST_BACKEND();
        clsConfCaixa c(app.db());
        c.ESPECIE = 100;
        c.IDMOVIMENTO = 3;
        c.NUMERO = QStringLiteral("A1");
        c.VALOR = *Money::parse(QStringLiteral("12,5"));
        QVERIFY(c.SQLInsert(7));
        QCOMPARE(c.ID, 7);
        clsConfCaixa r(app.db());
        QVERIFY(r.SQLSelect(7));
        QCOMPARE(r.VALOR.format(), QStringLiteral("12,50"));
        QCOMPARE(r.NUMERO, QStringLiteral("A1"));
        QVERIFY(!c.SQLInsert(7)); // the key exists

        clsConfCaixa n(app.db());
        n.ESPECIE = 101;
        n.IDMOVIMENTO = 3;
        n.VALOR = Money::fromReais(2);
        QVERIFY(n.SQLInsert(0));
        QVERIFY(n.ID > 7); // numbered past the explicit key

        n.VALOR = Money::fromReais(3);
        QVERIFY(n.SQLUpdate(0));
        QVERIFY(r.SQLSelect(n.ID));
        QCOMPARE(r.VALOR, Money::fromReais(3));
        const auto lines = clsConfCaixa::listar(app.db(), 3);
        QCOMPARE(lines->size(), 2);
        QCOMPARE(lines->first().ID, 7);
        QVERIFY(clsConfCaixa(app.db()).SQLDelete(7));
        QCOMPARE(clsConfCaixa::listar(app.db(), 3)->size(), 1);
    }

    void suprimentosKeepTheirQuirks() {
        TEST_BACKEND();
        clsSuprimentos s(app.db());
        s.TIPO = 1;
        s.DESCRICAO = QStringLiteral("TROCO");
        s.VALOR = Money::fromReais(50);
        QVERIFY(s.SQLInsert());
        QVERIFY(s.ID > 0);
        const qint32 id = s.ID;
        QVERIFY(s.SQLInsert()); // the key was set: a second row, ID not read back
        QCOMPARE(s.ID, id);
        QCOMPARE(app.count(QStringLiteral("Suprimentos")), 2);
        QVERIFY(!s.SQLUpdate());  // the update never succeeds
        QVERIFY(s.SQLDelete(id)); // addresses CODIGO, which no insert fills
        QCOMPARE(app.count(QStringLiteral("Suprimentos")), 2);
    }
};

QTEST_GUILESS_MAIN(tst_cash_records)
#include "tst_cash_records.moc"
