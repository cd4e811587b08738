// Cash entries as the entry screen and the command line record them: the header stored at once,
// its amount rewritten with every item in the same transaction, no empty entry left behind,
// and every refusal of a bad value, a bad kind or a closed movement.
#include "AuditChain.h"
#include "AuthCounterPrinter.h"
#include "CashAmount.h"
#include "CashDay.h"
#include "CashEntry.h"
#include "DescriptionTexts.h"
#include "PrinterEmulator.h"
#include "PrinterService.h"
#include "TestApp.h"
#include "clsMovimento.h"
#include "clsRecebimentos.h"

#include <QFile>
#include <QSqlQuery>

namespace {

// Kinds of money, a kind of guide, and the open movement of 23/11/2026.
qint32 prepare(TestApp& app) {
    if (!app.db().SQLExecute(QStringLiteral(
            "INSERT INTO CodBarra (IDCOD, IDTIPO, DESCRICAO, PADRAO) VALUES (100, 'DIN', "
            "'DINHEIRO', 'S'), (101, 'CHQ', 'CHEQUE', 'S'), (1, '0425', 'IPTU', 'F')")))
        return 0;
    clsMovimento m(app.db());
    m.MDATA = QDate(2026, 11, 23);
    m.MOV = 1;
    m.STATUS = QStringLiteral("ABERTO");
    app.ctx().workingDate = m.MDATA;
    app.dialogs().clear();
    return m.inserirNovo() ? m.ID : 0;
}

void setStatus(TestApp& app, qint32 id, const char* status) {
    clsMovimento m(app.db());
    QVERIFY(m.SQLSelect(id));
    m.STATUS = QLatin1String(status);
    QVERIFY(m.SQLUpdateTotais());
}

clsSangria stored(TestApp& app, qint32 id) {
    clsSangria s(app.db());
    s.SQLSelect(id);
    return s;
}

// The entry screen's way with a typed item: the amount read at the edge, the outcome told.
bool gravar(TestApp& app, CashEntry& e, int especie, const QString& numero, const QString& valor) {
    Notice why;
    const auto v = CashAmount::read(valor, why);
    const Outcome done = v ? e.gravarItem(especie, numero, *v) : Outcome::refused(why);
    tell(app.dialogs(), done.notice);
    return done.done;
}

bool told(TestApp& app, const Outcome& o) {
    tell(app.dialogs(), o.notice);
    return o.done;
}

} // namespace

class tst_cash_entry : public QObject {
    Q_OBJECT
private slots:
    void initTestCase_data() { addBackendRows(); }

    // Entries and their items join the audit chain: changes through the program keep it whole;
    // a row changed or removed by a database tool is named.
    void entriesAreInTheAuditChain() {
        TEST_BACKEND();
        const qint32 mov = prepare(app);
        CashEntry e(app.ctx(), mov, EntryKind::Withdrawal);
        QVERIFY(told(app, e.incluirItens(QString())));
        QVERIFY(gravar(app, e, 100, QString(), QStringLiteral("100,00")));
        QVERIFY(gravar(app, e, 101, QStringLiteral("123"), QStringLiteral("50,00")));
        QVERIFY(told(app, e.excluirItem(e.itens().first().ID)));
        AuditChain::Report r = AuditChain::audit(app.db());
        QVERIFY2(r.ok, qPrintable(r.problems.join(QLatin1Char('\n'))));

        for (const auto& [tamper, named] :
             {std::pair{"UPDATE Sangria SET SAIDA = 10000", "Sangria"},
              std::pair{"DELETE FROM Itens WHERE VALOR = 500000", "Itens"}}) {
            QSqlQuery q(app.db().database());
            QVERIFY(q.exec(QLatin1String(tamper)));
            r = AuditChain::audit(app.db());
            QVERIFY(!r.ok);
            QVERIFY2(r.problems.join(QLatin1Char('\n')).contains(QLatin1String(named)),
                     qPrintable(r.problems.join(QLatin1Char('\n'))));
        }
    }

    // When the header cannot be rewritten, the item is not kept either.
    void itemAndAmountAreOneTransaction() {
        TEST_BACKEND();
        const qint32 mov = prepare(app);
        CashEntry e(app.ctx(), mov, EntryKind::PaymentOut);
        QVERIFY(told(app, e.incluirItens(QStringLiteral("EMPENHO 7"))));
        QVERIFY(gravar(app, e, 100, QString(), QStringLiteral("10,00")));
        app.db().faultHook = [](const QString& sql) {
            return sql.startsWith(QLatin1String("UPDATE Sangria"));
        };
        QVERIFY(!gravar(app, e, 100, QString(), QStringLiteral("5,00")));
        QCOMPARE(app.count(QStringLiteral("Itens")), 1);
        QVERIFY(!told(app, e.excluirItem(e.itens().first().ID)));
        app.db().faultHook = nullptr;
        QCOMPARE(app.count(QStringLiteral("Itens")), 1);
        QCOMPARE(stored(app, e.header().ID).SAIDA, Money::fromReais(10));
        QCOMPARE(e.header().SAIDA, Money::fromReais(10));
        QCOMPARE(e.itens().size(), 1);
    }

    // Each kind stores its own type and side; only a payment keeps the description typed.
    void kindsAndDescriptions_data() {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("tipo");
        QTest::addColumn<QString>("descricao");
        QTest::addColumn<bool>("entrada");
        QTest::newRow("opening") << int(EntryKind::CashIn) << "ENTRADA"
                                 << "ABERTURA DE CAIXA" << true;
        QTest::newRow("withdrawal") << int(EntryKind::Withdrawal) << "SANGRIA"
                                    << "RETIRADAS DE CAIXA" << false;
        QTest::newRow("payment") << int(EntryKind::PaymentOut) << "SAIDA"
                                 << "EMPENHO 12/2026" << false;
    }
    void kindsAndDescriptions() {
        TEST_BACKEND();
        QFETCH(int, kind);
        QFETCH(QString, tipo);
        QFETCH(QString, descricao);
        QFETCH(bool, entrada);
        const qint32 mov = prepare(app);
        CashEntry e(app.ctx(), mov, EntryKind(kind));
        if (EntryKind(kind) == EntryKind::PaymentOut) {
            QVERIFY(!told(app, e.incluirItens(QStringLiteral("   "))));
            QCOMPARE(app.dialogs().last().text, Desc::kCamposObrigatorios);
            QCOMPARE(app.dialogs().last().title, QStringLiteral("Aviso"));
            QCOMPARE(app.dialogs().last().icon, DialogIcon::Exclamation);
            QVERIFY(!e.stored());
        }
        QVERIFY(told(app, e.incluirItens(QStringLiteral("  EMPENHO 12/2026 "))));
        QCOMPARE(stored(app, e.header().ID).SDATA, QDate(2026, 11, 23)); // stored at once
        // The amount follows the items: 200 + 50, then 50 once the first is deleted.
        QVERIFY(gravar(app, e, 100, QString(), QStringLiteral("200")));
        QVERIFY(gravar(app, e, 101, QStringLiteral("123"), QStringLiteral("50,00")));
        QCOMPARE(e.total(), Money::fromReais(250));
        QCOMPARE(e.itens().at(1).NUMERO, QStringLiteral("123"));
        QVERIFY(told(app, e.excluirItem(e.itens().first().ID)));
        const clsSangria o = stored(app, e.header().ID);
        QCOMPARE(o.TIPO, tipo);
        QCOMPARE(o.DESCRICAO, descricao);
        QCOMPARE(o.ENTRADA, entrada ? Money::fromReais(50) : Money());
        QCOMPARE(o.SAIDA, entrada ? Money() : Money::fromReais(50));
        QCOMPARE(o.IDMOVIMENTO, mov);
        QCOMPARE(app.count(QStringLiteral("Itens")), 1);
        QVERIFY(told(app, e.concluir()));
        QVERIFY(!e.stored()); // ready for the next entry
    }

    void badItems_data() {
        QTest::addColumn<int>("especie");
        QTest::addColumn<QString>("valor");
        QTest::addColumn<QString>("message");
        QTest::addColumn<int>("icon");
        const int warn = int(DialogIcon::Exclamation);
        const int crit = int(DialogIcon::Critical);
        QTest::newRow("letters") << 100 << "1a,00" << Desc::kValorInvalido << warn;
        QTest::newRow("two commas") << 100 << "1,00,00" << Desc::kValorInvalido << warn;
        QTest::newRow("negative") << 100 << "-5,00" << Desc::kValorInvalido << warn;
        QTest::newRow("zero") << 100 << "0,00" << Desc::kValorInvalido << warn;
        QTest::newRow("fraction of a cent") << 100 << "1,005" << Desc::kValorInvalido << warn;
        QTest::newRow("empty") << 100 << "  " << Desc::kCamposObrigatorios << warn;
        QTest::newRow("no kind") << 0 << "5,00" << Desc::kCamposObrigatorios << warn;
        QTest::newRow("a guide, not money") << 1 << "5,00" << Desc::kEspecieInvalida << crit;
        QTest::newRow("unknown kind") << 999 << "5,00" << Desc::kEspecieInvalida << crit;
    }
    void badItems() {
        QFETCH(int, especie);
        QFETCH(QString, valor);
        QFETCH(QString, message);
        QFETCH(int, icon);
        TEST_BACKEND();
        const qint32 mov = prepare(app);
        CashEntry e(app.ctx(), mov, EntryKind::Withdrawal);
        QVERIFY(told(app, e.incluirItens(QString())));
        QVERIFY(!gravar(app, e, especie, QString(), valor));
        QCOMPARE(app.dialogs().texts(), QStringList{message});
        QCOMPARE(int(app.dialogs().last().icon), icon);
        QCOMPARE(app.count(QStringLiteral("Itens")), 0);
        QCOMPARE(stored(app, e.header().ID).SAIDA, Money());
    }

    void closedMovementRefusesEveryChange() {
        TEST_BACKEND();
        const qint32 mov = prepare(app);
        CashEntry e(app.ctx(), mov, EntryKind::Withdrawal);
        QVERIFY(told(app, e.incluirItens(QString())));
        QVERIFY(gravar(app, e, 100, QString(), QStringLiteral("10,00")));
        setStatus(app, mov, "FECHADO");

        QVERIFY(!gravar(app, e, 100, QString(), QStringLiteral("5,00")));
        QVERIFY(!told(app, e.excluirItem(e.itens().first().ID)));
        CashEntry other(app.ctx(), mov, EntryKind::PaymentOut);
        QVERIFY(!told(app, other.incluirItens(QStringLiteral("EMPENHO"))));
        QCOMPARE(app.dialogs().texts(), QStringList(3, Desc::kMovimentoFechado));
        QCOMPARE(app.dialogs().last().icon, DialogIcon::Critical);
        app.dialogs().clear();
        QVERIFY(!told(app, CashEntry::excluirLancamento(app.ctx(), mov, e.header().ID)));
        QCOMPARE(app.dialogs().texts(), QStringList{Desc::kNaoPodeExcluir});
        QCOMPARE(app.count(QStringLiteral("Sangria")), 1);
        QCOMPARE(app.count(QStringLiteral("Itens")), 1);
        QCOMPARE(stored(app, e.header().ID).SAIDA, Money::fromReais(10));
        // Still listed.
        const auto list = CashEntry::listar(app.ctx(), mov, EntryKind::Withdrawal);
        QCOMPARE(list->size(), 1);
    }

    void noEmptyEntryIsLeftBehind() {
        TEST_BACKEND();
        const qint32 mov = prepare(app);
        CashEntry e(app.ctx(), mov, EntryKind::Withdrawal);
        QVERIFY(told(app, e.incluirItens(QString())));
        QVERIFY(!told(app, e.concluir())); // finishing without items
        QCOMPARE(app.dialogs().texts(), QStringList{Desc::kInformeItem});
        QCOMPARE(app.dialogs().last().icon, DialogIcon::Critical);
        QCOMPARE(app.count(QStringLiteral("Sangria")), 1);
        QVERIFY(e.sair());
        QCOMPARE(app.count(QStringLiteral("Sangria")), 0);

        QVERIFY(told(app, e.incluirItens(QString())));
        QVERIFY(gravar(app, e, 100, QString(), QStringLiteral("7,00")));
        QVERIFY(told(app, e.excluirItem(e.itens().first().ID))); // back to zero
        QCOMPARE(stored(app, e.header().ID).SAIDA, Money());
        QVERIFY(e.sair());
        QCOMPARE(app.count(QStringLiteral("Sangria")), 0);

        QVERIFY(told(app, e.incluirItens(QString())));
        QVERIFY(gravar(app, e, 100, QString(), QStringLiteral("7,00")));
        QVERIFY(e.sair());
        QCOMPARE(app.count(QStringLiteral("Sangria")), 1); // an entry with items stays
    }

    // A run that ended in the middle of an entry left its empty header: the next opening of
    // the entries removes it, and nothing else.
    void emptyHeadersOfAnInterruptedRun() {
        TEST_BACKEND();
        const qint32 mov = prepare(app);
        {
            CashEntry full(app.ctx(), mov, EntryKind::PaymentOut);
            QVERIFY(told(app, full.incluirItens(QStringLiteral("EMPENHO"))));
            QVERIFY(gravar(app, full, 100, QString(), QStringLiteral("1,00")));
            CashEntry left(app.ctx(), mov, EntryKind::Withdrawal);
            QVERIFY(told(app, left.incluirItens(QString())));
            CashEntry again(app.ctx(), mov, EntryKind::CashIn);
            QVERIFY(told(app, again.incluirItens(QString())));
        } // never left through sair()
        QCOMPARE(app.count(QStringLiteral("Sangria")), 3);
        setStatus(app, mov, "FECHADO");
        QCOMPARE(CashEntry::descartarVazios(app.ctx(), mov), 0); // a closed day stays as it is
        setStatus(app, mov, "ABERTO");
        QCOMPARE(CashEntry::descartarVazios(app.ctx(), mov + 1), 0);
        QCOMPARE(CashEntry::descartarVazios(app.ctx(), mov), 2);
        QCOMPARE(app.count(QStringLiteral("Sangria")), 1);
        QCOMPARE(app.count(QStringLiteral("Sangria"), QStringLiteral("TIPO = 'SAIDA'")), 1);
    }

    void deletingEntries() {
        TEST_BACKEND();
        const qint32 mov = prepare(app);
        CashEntry e(app.ctx(), mov, EntryKind::PaymentOut);
        QVERIFY(told(app, e.incluirItens(QStringLiteral("EMPENHO 3"))));
        QVERIFY(gravar(app, e, 100, QString(), QStringLiteral("3,00")));
        const qint32 id = e.header().ID;
        QVERIFY(!told(app,
                      CashEntry::excluirLancamento(app.ctx(), mov + 1, id))); // not this movement's
        QCOMPARE(app.dialogs().texts(), QStringList{Desc::kNaoPodeExcluir});
        app.dialogs().clear();
        QVERIFY(!told(app, CashEntry::excluirLancamento(app.ctx(), mov, id + 50)));
        QCOMPARE(app.dialogs().texts(), QStringList{Desc::kErroExcluir});
        QVERIFY(told(app, CashEntry::excluirLancamento(app.ctx(), mov, id)));
        QCOMPARE(app.count(QStringLiteral("Sangria")), 0);
        QCOMPARE(app.count(QStringLiteral("Itens")), 1); // the items stay where they were

        CashEntry other(app.ctx(), mov, EntryKind::Withdrawal);
        QVERIFY(!other.carregar(id)); // gone
        app.dialogs().clear();
        QVERIFY(!told(app, other.excluirItem(999)));
        QCOMPARE(app.dialogs().texts(), QStringList{Desc::kInformeItem});
    }

    // Closing sums the day's entries into the movement and prints them on the closing block.
    void closingCarriesTheEntries() {
        TEST_BACKEND();
        const qint32 mov = prepare(app);
        for (const auto& [kind, valores] :
             {std::pair{EntryKind::CashIn, QStringList{QStringLiteral("200,00")}},
              std::pair{EntryKind::Withdrawal,
                        QStringList{QStringLiteral("100,00"), QStringLiteral("50,00")}},
              std::pair{EntryKind::PaymentOut, QStringList{QStringLiteral("30,00")}}}) {
            CashEntry e(app.ctx(), mov, kind);
            QVERIFY(told(app, e.incluirItens(QStringLiteral("EMPENHO 1"))));
            for (const QString& v : valores)
                QVERIFY(gravar(app, e, 100, QString(), v));
        }
        clsRecebimentos r(app.db());
        r.AUTENTICA = 1;
        r.CODBARRA = clsRecebimentos::kSemCodigo;
        r.IDMOVIMENTO = static_cast<qint16>(mov);
        r.TIPO = 1;
        r.VALOR = *Money::parse(QStringLiteral("1.000,00"));
        QVERIFY(r.SQLInsert());

        app.setOption(QStringLiteral("Print"), QStringLiteral("impressora"),
                      QStringLiteral("bematech"));
        app.setOption(QStringLiteral("Print"), QStringLiteral("modo"), QStringLiteral("1"));
        PrinterEmulator emulator(PrinterEmulator::Model::Bematech);
        PrinterService service(app.ctx());
        service.makeTransport = [&] { return std::make_unique<MemoryTransport>(emulator); };
        AuthCounterPrinter printer(app.ctx(), service);
        service.abrirPorta();
        CashDay day(app.ctx(), &printer);
        QVERIFY(day.consultar());
        QVERIFY(day.encerrar());
        QCOMPARE(day.movimento().ENTRADA, Money::fromReais(200));
        QCOMPARE(day.movimento().SAIDA, Money::fromReais(180));
        QCOMPARE(day.movimento().VALOR_ARRECADADO, Money::fromReais(1000));
        QVERIFY(day.imprimirEncerramento());
        const QStringList tape = emulator.tape();
        QVERIFY(tape.contains(QStringLiteral("(+)========== ENTRADAS   -->      200,00")));
        QVERIFY(tape.contains(QStringLiteral("(-)========== RETIRADAS  -->      180,00")));
        QVERIFY(tape.contains(QStringLiteral("(=)========== TOTAL/DIA  -->    1.020,00")));
    }
};

QTEST_GUILESS_MAIN(tst_cash_entry)
#include "tst_cash_entry.moc"
