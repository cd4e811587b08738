// The reading routine's decisions and the holiday calendar, on both engines.
#include "BarcodeReader.h"
#include "CheckDigits.h"
#include "DateUtil.h"
#include "DemoData.h"
#include "HolidayCalendar.h"
#include "TestApp.h"
#include "TestCodes.h"
#include "clsFeriado.h"

namespace {
// Demo kinds: 0425 IPTU F juros N bloqueio N; 0426 F S S; 0427 F S N; 12345 C S N; 54321 C N S;
// 101 "0000" slips, bloqueio N.
void seedKinds(TestApp& app) {
    QVERIFY(DemoData::seed(app.ctx(), nullptr, nullptr));
}

void receipt(TestApp& app, const QString& table, const QString& code) {
    const QString sql = table == QLatin1String("RECEBIMENTOS1")
                            ? QStringLiteral("INSERT INTO RECEBIMENTOS1 (CODBARRA) VALUES (?)")
                            : QStringLiteral("INSERT INTO Recebimentos (AUTENTICA, IDMOVIMENTO, "
                                             "TIPO, VALOR, CODBARRA) VALUES (1, 1, 1, 0, ?)");
    QVERIFY(app.db().SQLExecute(sql, {code}));
}

// The outcome as the rows below write it.
QString word(const ReadingDecision& d) {
    using O = ReadingDecision::Outcome;
    static const QMap<O, QString> words = {{O::Aceito, "aceito"},
                                           {O::Lancada, "lancada"},
                                           {O::Recebida, "recebida"},
                                           {O::Bloqueada, "bloqueada"},
                                           {O::Desconhecida, "desconhecida"},
                                           {O::Digito, "digito"},
                                           {O::NaoReconhecida, "nao_reconhecida"},
                                           {O::Ignorada, "ignorada"},
                                           {O::Erro, "erro"}};
    return words.value(d.outcome);
}
// The outcome and, when accepted, "IDCOD value due interest" with "-" for no due date and for
// the interest flag of "0000" slips, which have none.
QString describe(const ReadingDecision& d) {
    if (d.outcome != ReadingDecision::Outcome::Aceito)
        return word(d);
    const QString juros = d.route == ReadingDecision::Route::Diversos ? QStringLiteral("-")
                          : d.juros                                   ? QStringLiteral("SIM")
                                                                      : QStringLiteral("NÃO");
    return QStringList{word(d), QString::number(d.idcod), d.valor.format(),
                       d.vencimento.isValid() ? DateUtil::br(d.vencimento) : QStringLiteral("-"),
                       juros}
        .join(QLatin1Char(' '));
}
} // namespace

class tst_reader : public QObject {
    Q_OBJECT
private slots:
    void initTestCase_data() { addBackendRows(); }

    // The outcome, then for an accepted code: IDCOD, value, due date and interest ("-": none).
    void decisions_data() {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("decision");
        QTest::addColumn<QStringList>("mensagens");
        QTest::addColumn<bool>("cleared");
        QTest::newRow("febraban mod 10")
            << "81660000003124004262026113058888888888888888"
            << "aceito 2 312,40 30/11/2026 SIM" << QStringList{} << false;
        QTest::newRow("febraban mod 11")
            << "81830000012345604272026011000000000000000000"
            << "aceito 3 1.234,56 10/01/2026 SIM" << QStringList{} << false;
        QTest::newRow("0425 ending 3") << "81640000000500004252026121500000000000000003"
                                       << "aceito 1 50,00 15/12/2026 SIM" << QStringList{} << false;
        QTest::newRow("0425 ending 4") << "81620000000500004252026121500000000000000004"
                                       << "aceito 1 50,00 15/12/2026 NÃO" << QStringList{} << false;
        QTest::newRow("first value digit dropped")
            << "81611234567890104272026121500000000000000000"
            << "aceito 3 23.456.789,01 15/12/2026 SIM" << QStringList{} << false;
        QTest::newRow("febraban wrong digit") << "81670000003124004262026113058888888888888888"
                                              << "digito" << QStringList{} << true;
        QTest::newRow("earlier year blocked")
            << "81650000000100004262025031000000000000000000"
            << "bloqueada"
            << QStringList{QStringLiteral("Não pode ser recebida!!! Conta de um ano anterior.")}
            << true;
        QTest::newRow("earlier year warned")
            << "81640000000100004272025031000000000000000000"
            << "aceito 3 10,00 10/03/2025 SIM"
            << QStringList{QStringLiteral(
                   "Conta de um ano anterior. Verifique os dados antes de receber este boleto.")}
            << false;
        QTest::newRow("month 13") << "81610000000100004272026131000000000000000000"
                                  << "erro" << QStringList{} << false;
        QTest::newRow("sigcb slip") << "00193165100000089151234500000000000000000000"
                                    << "aceito 4 89,15 05/12/2026 SIM" << QStringList{} << false;
        QTest::newRow("sicob slip") << "23791164600001500009999999999543211111111111"
                                    << "aceito 5 1.500,00 30/11/2026 NÃO" << QStringList{} << false;
        QTest::newRow("slip without due date") << "00199000000000025001234500000000000000000000"
                                               << "aceito 4 25,00 - SIM" << QStringList{} << false;
        QTest::newRow("slip wrong digit")
            << "00194165100000089151234500000000000000000000"
            << "digito" << QStringList{QStringLiteral("ERRO NA LEITURA DO CÓDIGO DE BARRAS!!!")}
            << true;
        QTest::newRow("0000 slip, no digit check")
            << "34197163600000077000000010155555555555555555"
            << "aceito 6 77,00 20/11/2026 -" << QStringList{} << false;
        QTest::newRow("unknown kind") << "81660000003124009992026113058888888888888888"
                                      << "desconhecida" << QStringList{} << true;
        QTest::newRow("kind neither F nor C") << "99990000000000000001111010100000000000000000"
                                              << "nao_reconhecida" << QStringList{} << false;
        QTest::newRow("43 characters") << "8166000000312400426202611305888888888888888"
                                       << "ignorada" << QStringList{} << false;
        QTest::newRow("letters") << "8166000000312400426202611305888888888888888x"
                                 << "digito" << QStringList{} << true;
    }
    void decisions() {
        QFETCH(QString, code);
        QFETCH(QString, decision);
        QFETCH(QStringList, mensagens);
        QFETCH(bool, cleared);
        TEST_BACKEND();
        seedKinds(app);
        app.dialogs().clear();
        BarcodeReader reader(app.ctx());
        const ReadingDecision d = reader.Leitura_codigo_barras(code, QDate(2026, 11, 23), {});
        QCOMPARE(describe(d), decision);
        QCOMPARE(d.clearField, cleared);
        if (d.outcome != ReadingDecision::Outcome::Erro)
            QCOMPARE(d.mensagens, mensagens);
    }

    void publicCodes_data() {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QDate>("working");
        QTest::addColumn<QString>("fator");
        QTest::addColumn<QString>("decision");
        const QString bb =
            QStringLiteral("00193373700000001000500940144816060680935031"); // factor 3737
        const QString cef =
            QStringLiteral("10499898100000214032006561000100040099726390"); // factor 8981
        const QString taxes = QStringLiteral("84630000000299902962020041013600000200644114");
        const QString none;
        QTest::newRow("bb read in 2006")
            << bb << QDate(2006, 1, 2) << none << QStringLiteral("aceito 10 1,00 31/12/2007 SIM");
        QTest::newRow("bb read in 2026: second cycle")
            << bb << QDate(2026, 11, 23) << none << QStringLiteral("aceito 10 1,00 21/08/2032 SIM");
        QTest::newRow("cef read in 2022") << cef << QDate(2022, 5, 2) << none
                                          << QStringLiteral("aceito 11 214,03 10/05/2022 NÃO");
        QTest::newRow("cef of 2022 read in 2026")
            << cef << QDate(2026, 11, 23) << none << QStringLiteral("bloqueada");
        QTest::newRow("cef read in 2040: second cycle")
            << cef << QDate(2040, 3, 1) << none
            << QStringLiteral("aceito 11 214,03 30/12/2046 NÃO");
        QTest::newRow("cef read in 2040, fixed base")
            << cef << QDate(2040, 3, 1) << QStringLiteral("legado") << QStringLiteral("bloqueada");
        QTest::newRow("cef read in 2006: out of window")
            << cef << QDate(2006, 1, 2) << none << QStringLiteral("erro");
        QTest::newRow("taxes of 2020 in 2020") << taxes << QDate(2020, 4, 1) << none
                                               << QStringLiteral("aceito 12 29,99 10/04/2020 NÃO");
        QTest::newRow("taxes of 2020 in 2026")
            << taxes << QDate(2026, 11, 23) << none << QStringLiteral("bloqueada");
    }
    void publicCodes() {
        QFETCH(QString, code);
        QFETCH(QDate, working);
        QFETCH(QString, fator);
        QFETCH(QString, decision);
        TEST_BACKEND();
        QVERIFY(app.db().SQLExecute(QStringLiteral(
            "INSERT INTO CodBarra (IDCOD, IDTIPO, DESCRICAO, PADRAO, JUROS, BLOQUEIO) VALUES "
            "(10, '05009', 'BB', 'C', 'S', 'N'), (11, '20065', 'CEF', 'C', 'N', 'S'), "
            "(12, '0296', 'TAXAS', 'F', 'N', 'S')")));
        app.setOption(QStringLiteral("Opcoes"), QStringLiteral("fator_vencimento"), fator);
        const ReadingDecision d = BarcodeReader(app.ctx()).Leitura_codigo_barras(code, working, {});
        QCOMPARE(describe(d), decision);
    }

    // Each read asks the database once per kind, however many of its rules look at the kind: an
    // earlier-year guide with interest goes through the layout, the year block and the interest.
    void eachReadLooksUpAKindOnce() {
        TEST_BACKEND();
        seedKinds(app);
        int lookups = 0;
        app.db().faultHook = [&](const QString& sql) {
            lookups += sql.contains(QLatin1String("WHERE IDTIPO = ? ORDER BY")) ? 1 : 0;
            return false;
        };
        BarcodeReader reader(app.ctx());
        const QString code = QStringLiteral("81640000000100004272025031000000000000000000");
        for (int read = 1; read <= 2; ++read) {
            const auto d = reader.Leitura_codigo_barras(code, QDate(2026, 11, 23), {});
            QCOMPARE(describe(d), QStringLiteral("aceito 3 10,00 10/03/2025 SIM"));
            QCOMPARE(lookups, read); // a later read sees the kinds as they are then
        }
        app.db().faultHook = nullptr;
    }

    void runtimeErrorsAreLogged() {
        TEST_BACKEND();
        seedKinds(app);
        BarcodeReader reader(app.ctx());
        const auto d = reader.Leitura_codigo_barras(
            QStringLiteral("81610000000100004272026131000000000000000000"), QDate(2026, 11, 23),
            {});
        QCOMPARE(word(d), QStringLiteral("erro"));
        QFile log(app.path(QStringLiteral("Log.ini")));
        QVERIFY(log.open(QIODevice::ReadOnly));
        QVERIFY(QString::fromLatin1(log.readAll())
                    .contains(QStringLiteral("Local: Função de Leitura Código de Barras")));
    }

    void duplicates() {
        TEST_BACKEND();
        seedKinds(app);
        const QString code = QStringLiteral("81660000003124004262026113058888888888888888");
        BarcodeReader reader(app.ctx());
        reader.networkAlive = [] { return true; };
        auto read = [&](const QStringList& list = {}) {
            return reader.Leitura_codigo_barras(code, QDate(2026, 11, 23), list);
        };

        QCOMPARE(word(read({code})), QStringLiteral("lancada"));
        QCOMPARE(app.dialogs().last().form, QStringLiteral("frmContaLancada"));
        QCOMPARE(app.dialogs().last().text, QStringLiteral("Conta já Lançada!!!"));
        receipt(app, QStringLiteral("Recebimentos"), code);
        QCOMPARE(word(read()), QStringLiteral("recebida"));
        // Twice locally (a repetition kept, marked, from an older database): the exactly-one
        // rule lets it pass.
        QVERIFY(app.db().SQLExecute(QStringLiteral("INSERT INTO Recebimentos (AUTENTICA, "
                                                   "IDMOVIMENTO, TIPO, VALOR, CODBARRA, "
                                                   "DUPLICADO) VALUES (2, 1, 1, 0, ?, 99)"),
                                    {code}));
        QCOMPARE(word(read()), QStringLiteral("aceito"));
        receipt(app, QStringLiteral("RECEBIMENTOS1"), code);
        QCOMPARE(word(read()), QStringLiteral("aceito")); // network check off
        app.setOption(QStringLiteral("Export"), QStringLiteral("rede"), QStringLiteral("1"));
        QCOMPARE(app.ctx().settings.rede, qint16(1));
        QCOMPARE(word(read()), QStringLiteral("recebida"));
        app.ctx().reloadSettings();
        QCOMPARE(app.ctx().settings.rede, qint16(11)); // the second load concatenates
        const auto off = read();
        QCOMPARE(word(off), QStringLiteral("aceito")); // only exactly 1 turns the check on
        QVERIFY(!off.networkChecked);
        app.ctx().settings.rede = 1;
        reader.networkAlive = [] { return false; };
        const auto down = read();
        QCOMPARE(word(down), QStringLiteral("aceito"));
        QVERIFY(down.showNetworkLabel && down.networkChecked);
    }

    void codesStartingWith000AreNeverDuplicates() {
        TEST_BACKEND();
        seedKinds(app);
        QVERIFY(app.db().SQLExecute(QStringLiteral(
            "INSERT INTO CodBarra (IDCOD, IDTIPO, DESCRICAO, PADRAO, JUROS, BLOQUEIO) "
            "VALUES (9, '0123', 'TAXA ZERO', 'F', 'N', 'N')")));
        QString code = QStringLiteral("000") + QStringLiteral("00000000100") +
                       QStringLiteral("0123") + QStringLiteral("20261215") +
                       QString(17, QLatin1Char('0'));
        code.insert(3, Modulo10_arrecadacao(code));
        receipt(app, QStringLiteral("Recebimentos"), code);
        const auto d =
            BarcodeReader(app.ctx()).Leitura_codigo_barras(code, QDate(2026, 11, 23), {code});
        QCOMPARE(word(d), QStringLiteral("aceito"));
    }

    void precedenceOfTheKindQuery() {
        TEST_BACKEND();
        // An "S" kind matched by its code at 16-19 is left out; matched at 20-24 it is listed.
        QVERIFY(app.db().SQLExecute(QStringLiteral(
            "INSERT INTO CodBarra (IDCOD, IDTIPO, DESCRICAO, PADRAO, JUROS, BLOQUEIO) "
            "VALUES (100, '0426', 'DINHEIRO', 'S', 'N', 'N'), (101, '77777', 'CHEQUE', 'S', 'N', "
            "'N')")));
        BarcodeReader reader(app.ctx());
        auto d = reader.Leitura_codigo_barras(
            QStringLiteral("81660000003124004262026113058888888888888888"), QDate(2026, 11, 23),
            {});
        QCOMPARE(word(d), QStringLiteral("desconhecida"));
        d = reader.Leitura_codigo_barras(
            QStringLiteral("99990000000000000007777700000000000000000000"), QDate(2026, 11, 23),
            {});
        QCOMPARE(word(d), QStringLiteral("nao_reconhecida"));
        QCOMPARE(d.kinds.size(), 1);
    }

    // The kind recorded is the one whose code the layout read, even when another kind with a
    // lower IDCOD matches digits elsewhere in the code (BOLETO DIVERSOS, 101, at 25-27).
    void kindIsTheOneTheLayoutRead_data() {
        QTest::addColumn<QString>("code");
        QTest::addColumn<int>("idcod");
        QTest::addColumn<QString>("descricao");
        const QString zeros17(17, QLatin1Char('0'));
        QTest::newRow("guide 0500 due 01/11: 101 at 25-27")
            << TestCodes::guide(QStringLiteral("0500"), 1000, QStringLiteral("20261101"), zeros17)
            << 50 << "TAXA DE LICENCA";
        QTest::newRow("guide 0500 due 02/11")
            << TestCodes::guide(QStringLiteral("0500"), 1000, QStringLiteral("20261102"), zeros17)
            << 50 << "TAXA DE LICENCA";
        // SIGCB kind 60606 at 20-24, then "101" at 25-27.
        const QString body = QStringLiteral("0019") + QStringLiteral("1651") +
                             QStringLiteral("0000008915") + QStringLiteral("60606") +
                             QStringLiteral("101") + QString(17, QLatin1Char('0'));
        QTest::newRow("slip 60606 with 101 at 25-27")
            << body.left(4) + QString::number(Modulo11_boleto(body)) + body.mid(4) << 60
            << "AGUA RURAL";
        QTest::newRow("0000 slip keeps 101")
            << "34197163600000077000000010155555555555555555" << 6 << "BOLETO DIVERSOS";
    }
    void kindIsTheOneTheLayoutRead() {
        QFETCH(QString, code);
        QFETCH(int, idcod);
        QFETCH(QString, descricao);
        TEST_BACKEND();
        seedKinds(app);
        QVERIFY(app.db().SQLExecute(QStringLiteral(
            "INSERT INTO CodBarra (IDCOD, IDTIPO, DESCRICAO, PADRAO, JUROS, BLOQUEIO) VALUES "
            "(50, '0500', 'TAXA DE LICENCA', 'F', 'N', 'N'), (60, '60606', 'AGUA RURAL', 'C', "
            "'N', 'N')")));
        BarcodeReader reader(app.ctx());
        GuideKinds shown;
        bool selectFirst = false;
        reader.kindsFilled = [&](const GuideKinds& k, bool first) {
            shown = k;
            selectFirst = first;
        };
        const ReadingDecision d = reader.Leitura_codigo_barras(code, QDate(2026, 10, 23), {});
        QCOMPARE(word(d), QStringLiteral("aceito"));
        QCOMPARE(d.idcod, idcod);
        QCOMPARE(d.descricao, descricao);
        // The screen selects the first entry of the list it was given.
        QVERIFY(selectFirst);
        QVERIFY(!shown.isEmpty());
        QCOMPARE(shown.first().idcod, idcod);
    }

    void holidays() {
        TEST_BACKEND();
        HolidayCalendar cal(app.db());
        clsFeriado f(app.db());
        // Empty calendar: only weekends are skipped.
        QCOMPARE(cal.Proximo_dia_util(QDate(2026, 11, 20)),
                 QDate(2026, 11, 23)); // Friday -> Monday
        QCOMPARE(cal.Proximo_dia_util(QDate(2026, 11, 25)),
                 QDate(2026, 11, 26)); // Wednesday -> Thursday
        f.FERIADO = QDate(2026, 11, 23);
        QVERIFY(f.Incluir());
        QVERIFY(cal.E_feriado(QDate(2026, 11, 23)));
        QCOMPARE(cal.Proximo_dia_util(QDate(2026, 11, 20)),
                 QDate(2026, 11, 24)); // Monday holiday -> Tuesday
        clsFeriado twice(app.db());
        twice.FERIADO = QDate(2026, 11, 23);
        QVERIFY(twice.Incluir());
        QVERIFY(!cal.E_feriado(QDate(2026, 11, 23))); // entered twice: no longer a holiday
        // Deleting one holiday deletes that row only; the whole calendar goes only when asked.
        QVERIFY(HolidayCalendar::excluir(app.ctx(), twice.ID).done);
        QVERIFY(cal.E_feriado(QDate(2026, 11, 23)));
        QCOMPARE(app.count(QStringLiteral("Feriados")), 1);
        const Outcome missing = HolidayCalendar::excluir(app.ctx(), twice.ID);
        QVERIFY(!missing.done);
        QCOMPARE(missing.notice.text, QStringLiteral("Informe um item !!!"));
        QVERIFY(HolidayCalendar::excluirTodos(app.ctx()).done);
        QCOMPARE(app.count(QStringLiteral("Feriados")), 0);
    }
};

QTEST_GUILESS_MAIN(tst_reader)
#include "tst_reader.moc"
