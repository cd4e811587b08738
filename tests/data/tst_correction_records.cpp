// The records behind corrections: Estornos keeps a receipt whole, and the receipt queries the
// corrections rely on, on both SQLite and PostgreSQL.
#include "TestApp.h"
#include "Transaction.h"
#include "clsEstornos.h"
#include "clsRecebimentos.h"

namespace {
qint32 receipt(clsDataAccess& db, int mov, int aut, const QString& code, int tipo = 1,
               qint64 cents = 1000) {
    clsRecebimentos r(db);
    r.IDMOVIMENTO = static_cast<qint16>(mov);
    r.AUTENTICA = static_cast<qint16>(aut);
    r.CODBARRA = code;
    r.TIPO = static_cast<qint16>(tipo);
    r.VALOR = Money::fromCents(cents);
    r.VENCIMENTO = QStringLiteral("10/11/2026");
    r.PARCELA = QStringLiteral("2/5");
    r.OBS = QStringLiteral("obs");
    return r.SQLInsert() ? r.IDRECEBE : 0;
}

QString code(char c) {
    return QString(44, QLatin1Char(c));
}
} // namespace

class tst_correction_records : public QObject {
    Q_OBJECT
private slots:
    void initTestCase_data() { addBackendRows(); }

    // A row written and read back keeps every column, NULL new values included.
    void reversalRowKeepsTheWholeReceipt() {
        TEST_BACKEND();
        clsRecebimentos r(app.db());
        QVERIFY(r.SQLSelect(receipt(app.db(), 4, 7, code('8'), 3, 31240)));
        QVERIFY(r.SQLUpdateExport(r.IDRECEBE, 1));
        QVERIFY(r.SQLUpdateIntegra(4, 1));
        QVERIFY(r.SQLSelect(r.IDRECEBE));

        clsEstornos e(app.db());
        e.copiarRecebimento(r);
        e.MOMENTO = QDateTime(QDate(2026, 11, 23), QTime(10, 5, 9));
        e.USUARIO = QStringLiteral("ANA");
        e.MOTIVO = QStringLiteral("Pago em duplicidade");
        QVERIFY(e.SQLInsert());
        QVERIFY(e.ID > 0);

        clsEstornos back(app.db());
        QVERIFY(back.SQLSelect(e.ID));
        QCOMPARE(back.OPERACAO, clsEstornos::Operacao::Estorno);
        QCOMPARE(back.MOMENTO, e.MOMENTO);
        QCOMPARE(back.USUARIO, QStringLiteral("ANA"));
        QCOMPARE(back.MOTIVO, QStringLiteral("Pago em duplicidade"));
        clsRecebimentos kept(app.db());
        back.restaurarEm(kept);
        QCOMPARE(kept.IDRECEBE, r.IDRECEBE);
        QCOMPARE(kept.AUTENTICA, qint16(7));
        QCOMPARE(kept.CODBARRA, code('8'));
        QCOMPARE(kept.IDMOVIMENTO, qint16(4));
        QCOMPARE(kept.TIPO, qint16(3));
        QCOMPARE(kept.INTEGRA, qint16(1));
        QCOMPARE(kept.EXPORT, qint16(1));
        QCOMPARE(kept.VALOR, Money::fromCents(31240));
        QCOMPARE(kept.VENCIMENTO, QStringLiteral("10/11/2026"));
        QCOMPARE(kept.PARCELA, QStringLiteral("2/5"));
        QCOMPARE(kept.OBS, QStringLiteral("obs"));
        QVERIFY(!back.NOVO_VALOR && !back.NOVO_TIPO && !back.NOVO_AUTENTICA);
        QVERIFY(!back.REVERTIDO_EM.isValid());

        clsEstornos change = e;
        change.OPERACAO = clsEstornos::Operacao::Alteracao;
        change.NOVO_VALOR = Money::fromCents(30000);
        change.NOVO_TIPO = 5;
        change.NOVO_AUTENTICA = 9;
        change.NOVO_CODBARRA = code('7');
        QVERIFY(change.SQLInsert());
        QVERIFY(back.SQLSelect(change.ID));
        QCOMPARE(back.OPERACAO, clsEstornos::Operacao::Alteracao);
        QCOMPARE(back.NOVO_VALOR, std::optional(Money::fromCents(30000)));
        QCOMPARE(back.NOVO_TIPO, std::optional<qint16>(5));
        QCOMPARE(back.NOVO_AUTENTICA, std::optional<qint16>(9));
        QCOMPARE(back.NOVO_CODBARRA, code('7'));
    }

    // Only reversals that were not undone can be undone; the latest one of a receipt counts.
    void openReversals() {
        TEST_BACKEND();
        clsRecebimentos r(app.db());
        QVERIFY(r.SQLSelect(receipt(app.db(), 4, 1, code('8'))));
        auto add = [&](clsEstornos::Operacao op, int mov) {
            clsEstornos e(app.db());
            e.copiarRecebimento(r);
            e.IDMOVIMENTO = static_cast<qint16>(mov);
            e.OPERACAO = op;
            e.MOMENTO = app.clock().now();
            e.MOTIVO = QStringLiteral("m");
            return e.SQLInsert() ? e.ID : 0;
        };
        const qint32 first = add(clsEstornos::Operacao::Estorno, 4);
        add(clsEstornos::Operacao::Alteracao, 4);
        add(clsEstornos::Operacao::Estorno, 5);
        auto open = clsEstornos::estornosAbertos(app.db(), 4);
        QVERIFY(open);
        QCOMPARE(open->size(), 1);
        QCOMPARE(open->first().ID, first);
        QCOMPARE(clsEstornos::listarDoMovimento(app.db(), 4)->size(), 2);

        auto latest = clsEstornos::ultimoEstorno(app.db(), r.IDRECEBE);
        QVERIFY(latest);
        QVERIFY(latest->ID > first); // movement 5's row is newer
        QVERIFY(latest->SQLMarcarRevertido(app.clock().now(), QStringLiteral("ADM")));
        QCOMPARE(clsEstornos::ultimoEstorno(app.db(), r.IDRECEBE)->ID, first);
        clsEstornos marked(app.db());
        QVERIFY(marked.SQLSelect(latest->ID));
        QCOMPARE(marked.REVERTIDO_EM, app.clock().now());
        QCOMPARE(marked.REVERTIDO_POR, QStringLiteral("ADM"));
        QVERIFY(clsEstornos::estornosAbertos(app.db(), 5)->isEmpty());
    }

    // The list of the movement joined with its kinds, newest first, and the search by number.
    void listingAndSearch() {
        TEST_BACKEND();
        QVERIFY(app.db().SQLExecute(
            QStringLiteral("INSERT INTO CodBarra (IDCOD, IDTIPO, DESCRICAO, PADRAO, JUROS, "
                           "BLOQUEIO) VALUES (1, 'A', 'IPTU', 'F', 'N', 'N'), "
                           "(2, 'B', 'ISS', 'F', 'N', 'N')")));
        const qint32 a = receipt(app.db(), 4, 1, code('8'), 1, 500);
        const qint32 b = receipt(app.db(), 4, 2, code('7'), 2, 123456);
        receipt(app.db(), 5, 1, code('6'), 1);
        const auto all = clsRecebimentos::listarParaCorrecao(app.db(), 4);
        QVERIFY(all);
        QCOMPARE(all->size(), 2);
        QCOMPARE(all->at(0).idrecebe, b);
        QCOMPARE(all->at(0).descricao, QStringLiteral("ISS"));
        QCOMPARE(all->at(0).idcod, qint16(2));
        QCOMPARE(all->at(0).valor.format(), QStringLiteral("1.234,56"));
        QCOMPARE(all->at(0).codbarra, code('7'));
        QCOMPARE(all->at(1).idrecebe, a);
        const auto one = clsRecebimentos::listarParaCorrecao(app.db(), 4, qint16(1));
        QCOMPARE(one->size(), 1);
        QCOMPARE(one->first().idrecebe, a);
        QVERIFY(clsRecebimentos::listarParaCorrecao(app.db(), 4, qint16(9))->isEmpty());
    }

    // "Used by another receipt": the receipt itself never counts; numbers are per movement,
    // codes are not.
    void usedByAnother() {
        TEST_BACKEND();
        const qint32 a = receipt(app.db(), 4, 1, code('8'));
        const qint32 b = receipt(app.db(), 4, 2, code('7'));
        receipt(app.db(), 5, 3, code('6'));
        QCOMPARE(clsRecebimentos::autenticaEmUso(app.db(), 4, 1, a), std::optional(false));
        QCOMPARE(clsRecebimentos::autenticaEmUso(app.db(), 4, 1, b), std::optional(true));
        QCOMPARE(clsRecebimentos::autenticaEmUso(app.db(), 4, 3, b), std::optional(false));
        QCOMPARE(clsRecebimentos::codigoEmUso(app.db(), code('8'), a), std::optional(false));
        QCOMPARE(clsRecebimentos::codigoEmUso(app.db(), code('8'), b), std::optional(true));
        QCOMPARE(clsRecebimentos::codigoEmUso(app.db(), code('6'), a), std::optional(true));
    }

    // A restored receipt takes its old key back, and later receipts still get new keys.
    void restoreKeepsTheKey() {
        TEST_BACKEND();
        const qint32 a = receipt(app.db(), 4, 1, code('8'));
        receipt(app.db(), 4, 2, code('7'));
        clsRecebimentos r(app.db());
        QVERIFY(r.SQLSelect(a));
        QVERIFY(r.SQLUpdateExport(a, 1));
        r.EXPORT = 1;
        {
            Transaction tx(app.db());
            QVERIFY(r.SQLDelete());
            QVERIFY(tx.commit());
        }
        QVERIFY(r.SQLRestore());
        clsRecebimentos back(app.db());
        QVERIFY(back.SQLSelect(a));
        QCOMPARE(back.EXPORT, qint16(1));
        QCOMPARE(back.AUTENTICA, qint16(1));
        QVERIFY(!r.SQLRestore()); // the key is taken now
        const qint32 c = receipt(app.db(), 4, 3, code('6'));
        QVERIFY(c > a + 1);
    }
};

QTEST_GUILESS_MAIN(tst_correction_records)
#include "tst_correction_records.moc"
