// The safe (its balance in the database and the day's supplies) and the cash count: the
// difference, the supplies switch, the kinds offered, a closed day, and the provisional count.
#include "AuditChain.h"
#include "CashAmount.h"
#include "CashCount.h"
#include "CashEntry.h"
#include "CashSafe.h"
#include "DescriptionTexts.h"
#include "IniFile.h"
#include "TestApp.h"
#include "clsCofre.h"
#include "clsConfCaixa.h"
#include "clsMovimento.h"
#include "clsRecebimentos.h"
#include "clsSangria.h"

#include <QDir>

namespace {

qint32 prepare(TestApp& app, const char* status = "ABERTO") {
    if (!app.db().SQLExecute(QStringLiteral(
            "INSERT INTO CodBarra (IDCOD, IDTIPO, DESCRICAO, PADRAO) VALUES (100, 'DIN', "
            "'DINHEIRO', 'S'), (101, 'CHQ', 'CHEQUE', 'S'), (7, 'AV1', 'TAXA', 'A')")))
        return 0;
    clsMovimento m(app.db());
    m.MDATA = QDate(2026, 11, 23);
    m.MOV = 1;
    m.STATUS = QLatin1String(status);
    app.dialogs().clear();
    return m.inserirNovo() ? m.ID : 0;
}

// The balance as a database left by an earlier move holds it.
void setSafe(TestApp& app, const QString& text) {
    const auto v = text.isEmpty() ? std::optional<Money>(Money()) : Money::parse(text);
    QVERIFY(v);
    QVERIFY(app.db().SQLExecute(QStringLiteral("UPDATE Cofre SET SALDO = ? WHERE ID = 1"),
                                {v->units()}));
}

QString safe(TestApp& app) {
    const auto v = clsCofre::saldo(app.db());
    return v ? v->format() : QStringLiteral("?");
}

clsMovimento movement(TestApp& app, qint32 id) {
    clsMovimento m(app.db());
    m.SQLSelect(id);
    return m;
}

// The count screen's way with a typed line: read at the edge, then recorded, the outcome told.
bool contar(TestApp& app, CashCount& count, int especie, const QString& numero,
            const QString& valor) {
    const auto v = CashCount::validar(app.ctx(), especie, valor);
    if (!v)
        return false;
    const Outcome done = count.adicionar(especie, numero, *v);
    tell(app.dialogs(), done.notice);
    return done.done;
}

bool told(TestApp& app, const Outcome& o) {
    tell(app.dialogs(), o.notice);
    return o.done;
}

} // namespace

class tst_safe_count : public QObject {
    Q_OBJECT
private slots:
    void initTestCase_data() { addBackendRows(); }

    void safeMoves_data() {
        QTest::addColumn<QString>("inicial");
        QTest::addColumn<bool>("saida");
        QTest::addColumn<QString>("valor");
        QTest::addColumn<int>("outcome");
        QTest::addColumn<QString>("saldo");
        QTest::addColumn<QString>("suprimento");
        QTest::addColumn<QString>("message");
        using O = CashSafe::Outcome;
        const QString ok = Desc::kCofreGravado;
        QTest::newRow("in, empty balance") << "" << false << "150,00" << int(O::Done) << "150,00"
                                           << "150,00" << ok + "150,00";
        QTest::newRow("in") << "1.000,00" << false << "0,50" << int(O::Done) << "1.000,50"
                            << "0,50" << ok + "1.000,50";
        QTest::newRow("out, the whole balance")
            << "150,00" << true << "150,00" << int(O::Done) << "0,00"
            << "-150,00" << ok + "0,00";
        QTest::newRow("out, one cent more")
            << "150,00" << true << "150,01" << int(O::AboveBalance) << "150,00"
            << "0,00" << QStringLiteral("Valor não pode ser maior que o saldo disponível.");
        QTest::newRow("empty value") << "10,00" << false << "" << int(O::InvalidValue) << "10,00"
                                     << "0,00" << Desc::kValorInvalido;
        QTest::newRow("two commas") << "10,00" << true << "1,0,0" << int(O::InvalidValue) << "10,00"
                                    << "0,00" << Desc::kValorInvalido;
    }
    void safeMoves() {
        QFETCH(QString, inicial);
        QFETCH(bool, saida);
        QFETCH(QString, valor);
        QFETCH(int, outcome);
        QFETCH(QString, saldo);
        QFETCH(QString, suprimento);
        QFETCH(QString, message);
        TEST_BACKEND();
        const qint32 mov = prepare(app);
        setSafe(app, inicial);
        const auto r = CashSafe::movimentar(
            app.ctx(), mov, saida ? CashSafe::Direction::Out : CashSafe::Direction::In, valor);
        QCOMPARE(int(r.outcome), outcome);
        QCOMPARE(r.saldo.format(), saldo);
        QCOMPARE(safe(app), saldo);
        QCOMPARE(movement(app, mov).SUPRIMENTO.format(), suprimento);
        QCOMPARE(app.dialogs().texts(), QStringList{message});
        QCOMPARE(app.dialogs().last().title, QStringLiteral("Aviso"));
        const DialogIcon icon = outcome == int(CashSafe::Outcome::Done) ? DialogIcon::Information
                                : outcome == int(CashSafe::Outcome::AboveBalance)
                                    ? DialogIcon::Critical
                                    : DialogIcon::Exclamation;
        QCOMPARE(app.dialogs().last().icon, icon);
        // The settings file is no longer written.
        QCOMPARE(
            IniFile::read(QStringLiteral("Reserva"), QStringLiteral("cofre"), app.ctx().iniPath()),
            QString());
    }

    void safeOnAClosedDay() {
        TEST_BACKEND();
        const qint32 mov = prepare(app, "FECHADO");
        setSafe(app, QStringLiteral("9,00"));
        QVERIFY(!CashSafe::podeMovimentar(app.ctx(), mov));
        QCOMPARE(app.dialogs().texts(), QStringList{Desc::kCofreCaixaEncerrado});
        QCOMPARE(app.dialogs().last().icon, DialogIcon::Critical);
        app.dialogs().clear();
        QCOMPARE(int(CashSafe::movimentar(app.ctx(), mov, CashSafe::Direction::In,
                                          QStringLiteral("1,00"))
                         .outcome),
                 int(CashSafe::Outcome::Closed));
        QCOMPARE(app.dialogs().texts(), QStringList{Desc::kCofreCaixaEncerrado});
        QCOMPARE(*CashSafe::saldo(app.ctx()), Money::fromReais(9));
    }

    // The balance and the day's supplies never pass R$ 999.999.999,99: two deposits of the
    // maximum leave the first one and the second is refused, and the safe still moves after.
    void safeCeiling() {
        TEST_BACKEND();
        const qint32 mov = prepare(app);
        const QString max = QStringLiteral("999.999.999,99");
        QCOMPARE(int(CashSafe::movimentar(app.ctx(), mov, CashSafe::Direction::In, max).outcome),
                 int(CashSafe::Outcome::Done));
        app.dialogs().clear();
        QCOMPARE(int(CashSafe::movimentar(app.ctx(), mov, CashSafe::Direction::In, max).outcome),
                 int(CashSafe::Outcome::AboveCeiling));
        QCOMPARE(app.dialogs().texts(),
                 QStringList{QStringLiteral("O saldo do cofre e o suprimento do dia não podem "
                                            "passar de R$ 999.999.999,99. Nada foi gravado.")});
        QCOMPARE(app.dialogs().last().icon, DialogIcon::Critical);
        QCOMPARE(safe(app), max);
        QCOMPARE(movement(app, mov).SUPRIMENTO.format(), max);
        QCOMPARE(int(CashSafe::movimentar(app.ctx(), mov, CashSafe::Direction::In,
                                          QStringLiteral("0,01"))
                         .outcome),
                 int(CashSafe::Outcome::AboveCeiling));
        QCOMPARE(int(CashSafe::movimentar(app.ctx(), mov, CashSafe::Direction::Out,
                                          QStringLiteral("0,99"))
                         .outcome),
                 int(CashSafe::Outcome::Done));
        QCOMPARE(safe(app), QStringLiteral("999.999.999,00"));
    }

    // A move whose database write fails changes neither the balance nor the day's supplies,
    // and leaves no move row: the three are one transaction.
    void safeWriteFailureChangesNothing() {
        TEST_BACKEND();
        const qint32 mov = prepare(app);
        setSafe(app, QStringLiteral("3,00"));
        app.db().faultHook = [](const QString& sql) {
            return sql.startsWith(QLatin1String("INSERT INTO CofreMovimentos"));
        };
        const auto r =
            CashSafe::movimentar(app.ctx(), mov, CashSafe::Direction::In, QStringLiteral("5,00"));
        app.db().faultHook = nullptr;
        QCOMPARE(int(r.outcome), int(CashSafe::Outcome::Failed));
        QCOMPARE(movement(app, mov).SUPRIMENTO, Money());
        QCOMPARE(safe(app), QStringLiteral("3,00"));
        QCOMPARE(app.count(QStringLiteral("CofreMovimentos")), 0);
        QCOMPARE(app.dialogs().last().icon, DialogIcon::Critical);
    }

    // Each move is a row with its movement, operator and the balance after it, in the chain.
    void safeMovesAreKeptAndChained() {
        TEST_BACKEND();
        const qint32 mov = prepare(app);
        app.ctx().userName = QStringLiteral("ANA");
        CashSafe::movimentar(app.ctx(), mov, CashSafe::Direction::In, QStringLiteral("10,00"));
        CashSafe::movimentar(app.ctx(), mov, CashSafe::Direction::Out, QStringLiteral("4,00"));
        const auto l = clsCofre::lancamentos(app.db());
        QVERIFY(l);
        QCOMPARE(l->size(), 2);
        QCOMPARE(l->at(1).operacao, QStringLiteral("SAIDA"));
        QCOMPARE(l->at(1).valor.format(), QStringLiteral("4,00"));
        QCOMPARE(l->at(1).saldo.format(), QStringLiteral("6,00"));
        QCOMPARE(l->at(1).usuario, QStringLiteral("ANA"));
        QCOMPARE(l->at(1).idMovimento, mov);
        QVERIFY(AuditChain::audit(app.db()).ok);
        // A balance changed behind the program's back is found by the audit.
        QVERIFY(app.db().SQLExecute(QStringLiteral("UPDATE Cofre SET SALDO = 0")));
        const auto report = AuditChain::audit(app.db());
        QVERIFY(!report.ok);
        QVERIFY2(report.problems.join(' ').contains(QStringLiteral("Cofre ID=1")),
                 qPrintable(report.problems.join(' ')));
    }

    // 1.000,00 received, 200,00 in and 100,00 withdrawn, nothing supplied: a count of
    // 1.100,00 balances; without count lines the difference is everything the day should hold.
    void differenceOfADay() {
        TEST_BACKEND();
        const qint32 mov = prepare(app, "FECHADO");
        clsMovimento m = movement(app, mov);
        m.VALOR_ARRECADADO = Money::fromReais(1000);
        m.ENTRADA = Money::fromReais(200);
        m.SAIDA = Money::fromReais(100);
        m.SUPRIMENTO = Money::fromReais(40);
        QVERIFY(m.SQLUpdateTotais());
        CashCount count(app.ctx(), m);
        auto c = count.conferir();
        QCOMPARE(c->contado, Money());
        QCOMPARE(c->linhas, 0);
        QCOMPARE(c->lancamentos, Money::fromReais(100));
        QCOMPARE(c->suprimento, Money()); // supplies are added only with [Reserva] soma=1
        QCOMPARE(c->diferenca().format(), QStringLiteral("-1.100,00"));

        // The till is counted after closing: lines go in and out of a closed day.
        QVERIFY(contar(app, count, 100, QString(), QStringLiteral("1.000,00")));
        QVERIFY(contar(app, count, 101, QStringLiteral("000123"), QStringLiteral("100,00")));
        c = count.conferir();
        QCOMPARE(c->diferenca().format(), QStringLiteral("0,00"));
        QCOMPARE(c->contado.format(), QStringLiteral("1.100,00"));
        QCOMPARE(c->linhas, 2);
        QCOMPARE(c->confCaixa().format(), QStringLiteral("1.100,00"));

        app.setOption(QStringLiteral("Reserva"), QStringLiteral("soma"), QStringLiteral("1"));
        c = count.conferir();
        QCOMPARE(c->suprimento, Money::fromReais(40));
        QCOMPARE(c->diferenca().format(), QStringLiteral("40,00"));
        QCOMPARE(c->confCaixa().format(), QStringLiteral("1.140,00"));

        const auto lines = count.linhas();
        QCOMPARE(lines->at(1).especieDescricao, QStringLiteral("CHEQUE"));
        QVERIFY(told(app, count.excluir(lines->at(1).ID)));
        QCOMPARE(count.conferir()->contado, Money::fromReais(1000));
        QVERIFY(app.dialogs().shown().isEmpty());
    }

    void countLinesRefused() {
        TEST_BACKEND();
        const qint32 mov = prepare(app);
        CashCount count(app.ctx(), movement(app, mov));
        QVERIFY(!contar(app, count, 7, QString(), QStringLiteral("1,00"))); // not money
        QVERIFY(!contar(app, count, 100, QString(), QStringLiteral("1,00,0")));
        QVERIFY(!contar(app, count, 100, QString(), QString()));
        QVERIFY(!contar(app, count, 100, QStringLiteral("O'NEIL"), QStringLiteral("1,00")));
        QCOMPARE(
            app.dialogs().texts().mid(0, 3),
            (QStringList{Desc::kEspecieInvalida, Desc::kValorInvalido, Desc::kCamposObrigatorios}));
        QCOMPARE(app.count(QStringLiteral("ConfCaixa")), 0);

        clsConfCaixa foreign(app.db());
        foreign.IDMOVIMENTO = mov + 1;
        foreign.ESPECIE = 100;
        foreign.VALOR = Money::fromReais(1);
        QVERIFY(foreign.SQLInsert(0));
        app.dialogs().clear();
        QVERIFY(!told(app, count.excluir(foreign.ID))); // another day's line
        QVERIFY(!told(app, count.excluir(0)));
        QCOMPARE(app.dialogs().texts(),
                 QStringList(2, QStringLiteral("Você deve clicar no item antes!!")));
        QCOMPARE(app.count(QStringLiteral("ConfCaixa")), 1);
    }

    // The kinds listed in [Reserva] itens, in that order, that are kinds of money; all of them
    // when it is empty. Only those are counted.
    void kindsOfferedForCounting() {
        TEST_BACKEND();
        const qint32 mov = prepare(app);
        auto codes = [&] {
            QList<int> out;
            for (const auto& k : CashCount::especies(app.ctx()))
                out << k.first;
            return out;
        };
        QCOMPARE(codes(), (QList<int>{100, 101}));
        app.setOption(QStringLiteral("Reserva"), QStringLiteral("itens"),
                      QStringLiteral("101; 7,100 101"));
        QCOMPARE(codes(), (QList<int>{101, 100}));
        app.setOption(QStringLiteral("Reserva"), QStringLiteral("itens"), QStringLiteral("101"));
        CashCount offered(app.ctx(), movement(app, mov));
        QVERIFY(!contar(app, offered, 100, QString(), QStringLiteral("1,00")));
        QCOMPARE(app.dialogs().last().text, Desc::kEspecieInvalida);
    }

    // The provisional count sums the receipts and entries of the open day now, and stores
    // nothing.
    void provisionalCount() {
        TEST_BACKEND();
        const qint32 mov = prepare(app);
        clsRecebimentos r(app.db());
        r.CODBARRA = clsRecebimentos::kSemCodigo;
        r.IDMOVIMENTO = static_cast<qint16>(mov);
        r.TIPO = 7;
        r.VALOR = *Money::parse(QStringLiteral("1.234,56"));
        QVERIFY(r.SQLInsert());
        for (const auto& [tipo, in, out] :
             {std::tuple{"ENTRADA", 20000, 0}, std::tuple{"SANGRIA", 0, 5000}}) {
            clsSangria s(app.db());
            s.IDMOVIMENTO = mov;
            s.TIPO = QLatin1String(tipo);
            s.DESCRICAO = QStringLiteral("X");
            s.SDATA = QDate(2026, 11, 23);
            s.ENTRADA = Money::fromCents(in);
            s.SAIDA = Money::fromCents(out);
            QVERIFY(s.inserirNovo());
        }
        const auto c = CashCount::provisoria(
            app.ctx(), movement(app, mov),
            {*Money::parse(QStringLiteral("1.000,00")), *Money::parse(QStringLiteral("384,56"))});
        QVERIFY(c);
        QCOMPARE(c->arrecadacao.format(), QStringLiteral("1.234,56"));
        QCOMPARE(c->lancamentos.format(), QStringLiteral("150,00"));
        QCOMPARE(c->contado.format(), QStringLiteral("1.384,56"));
        QCOMPARE(c->linhas, 2);
        QCOMPARE(c->diferenca().format(), QStringLiteral("0,00"));
        QCOMPARE(app.count(QStringLiteral("ConfCaixa")), 0);
        QCOMPARE(*CashCount::validar(app.ctx(), 100, QStringLiteral("1,5")),
                 *Money::parse(QStringLiteral("1,50")));
    }
};

QTEST_GUILESS_MAIN(tst_safe_count)
#include "tst_safe_count.moc"
