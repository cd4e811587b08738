// Late charges to the centavo: both schemes, the weekend and holiday shift, the 10% cap, month
// boundaries and the day rule. Expected values worked out by hand.
#include "Acrescimos.h"
#include "InterestCalculator.h"

#include <QTest>

namespace {
bool holiday(const QDate& d) {
    return d == QDate(2026, 11, 20);
}
QDate dmy(const char* s) {
    return QDate::fromString(QString::fromLatin1(s), QStringLiteral("dd/MM/yyyy"));
}
} // namespace

class tst_charges : public QObject {
    Q_OBJECT
private slots:
    void meses_data() {
        QTest::addColumn<QDate>("v");
        QTest::addColumn<QDate>("r");
        QTest::addColumn<int>("meses");
        QTest::newRow("same day next month") << dmy("10/03/2026") << dmy("10/04/2026") << 1;
        QTest::newRow("a day more") << dmy("10/03/2026") << dmy("11/04/2026") << 2;
        QTest::newRow("a day less") << dmy("10/03/2026") << dmy("09/04/2026") << 1;
        QTest::newRow("three days, month begun") << dmy("21/11/2026") << dmy("24/11/2026") << 1;
        QTest::newRow("31st to end of February") << dmy("31/01/2026") << dmy("28/02/2026") << 1;
        QTest::newRow("31st to 1st of March") << dmy("31/01/2026") << dmy("01/03/2026") << 2;
        QTest::newRow("across the year") << dmy("15/12/2025") << dmy("16/01/2026") << 2;
        QTest::newRow("same day") << dmy("23/11/2026") << dmy("23/11/2026") << 0;
    }
    void meses() {
        QFETCH(QDate, v);
        QFETCH(QDate, r);
        QFETCH(int, meses);
        QCOMPARE(Acrescimos::Meses_atraso(v, r), std::optional<int>(meses));
    }

    void monthOverflowIsReported() {
        QVERIFY(!Acrescimos::Meses_atraso(QDate(100, 1, 1), QDate(9999, 12, 31)).has_value());
        QVERIFY(!Acrescimos::Calcula_acrescimos(QDate(100, 1, 1), QDate(9999, 12, 31),
                                                Money::fromReais(1), 1)
                     .has_value());
    }

    // "due paid valor scheme -> overdue? juros multa total"
    void charges_data() {
        QTest::addColumn<QString>("row");
        QTest::newRow("31 days: capped at 10%")
            << "10/03/2026 10/04/2026 100,00 1 -> vencida 1,00 10,00 111,00";
        QTest::newRow("30 days: 9,9%")
            << "10/03/2026 09/04/2026 100,00 1 -> vencida 1,00 9,90 110,90";
        QTest::newRow("32 days: two months")
            << "10/03/2026 11/04/2026 100,00 1 -> vencida 2,00 10,00 112,00";
        QTest::newRow("40 days") << "01/03/2026 10/04/2026 100,00 1 -> vencida 2,00 10,00 112,00";
        QTest::newRow("same day") << "23/11/2026 23/11/2026 100,00 1 -> em-dia 0,00 0,00 100,00";
        QTest::newRow("Saturday paid Monday")
            << "21/11/2026 23/11/2026 100,00 1 -> em-dia 0,00 0,00 100,00";
        QTest::newRow("Saturday paid Tuesday")
            << "21/11/2026 24/11/2026 100,00 1 -> vencida 1,00 0,99 101,99";
        QTest::newRow("holiday Friday paid Monday")
            << "20/11/2026 23/11/2026 100,00 1 -> em-dia 0,00 0,00 100,00";
        QTest::newRow("Thursday paid Monday")
            << "19/11/2026 23/11/2026 100,00 1 -> vencida 1,00 1,32 102,32";
        QTest::newRow("rates round each charge")
            << "01/10/2026 16/10/2026 1.234,56 1 -> vencida 12,35 61,11 1.308,02";
        QTest::newRow("end of January")
            << "31/01/2026 28/02/2026 100,00 1 -> vencida 1,00 9,24 110,24";
        QTest::newRow("scheme 2") << "10/03/2026 10/05/2026 250,00 2 -> vencida 5,00 5,00 260,00";
        QTest::newRow("scheme 2 half cents")
            << "10/03/2026 20/03/2026 0,50 2 -> vencida 0,01 0,01 0,52";
        QTest::newRow("scheme 0") << "10/03/2026 10/05/2026 250,00 0 -> vencida 0,00 0,00 250,00";
        QTest::newRow("scheme 7") << "10/03/2026 10/05/2026 250,00 7 -> vencida 0,00 0,00 250,00";
    }
    void charges() {
        QFETCH(QString, row);
        const QStringList in = row.section(QStringLiteral(" -> "), 0, 0).split(QLatin1Char(' '));
        const auto e = Acrescimos::avaliar(dmy(qPrintable(in[0])), dmy(qPrintable(in[1])),
                                           *Money::parse(in[2]), true, in[3].toInt(), holiday);
        QVERIFY(e);
        QCOMPARE(QStringList({e->vencida ? QStringLiteral("vencida") : QStringLiteral("em-dia"),
                              e->juros.format(), e->multa.format(), e->total.format()})
                     .join(QLatin1Char(' ')),
                 row.section(QStringLiteral(" -> "), 1));
    }

    void noInterestFlagKeepsFaceValue() {
        const auto e = Acrescimos::avaliar(dmy("10/03/2026"), dmy("10/05/2026"),
                                           Money::fromReais(80), false, 1, holiday);
        QVERIFY(e->vencida);
        QCOMPARE(e->total.format(), QStringLiteral("80,00"));
    }

    void calculator_data() {
        QTest::addColumn<int>("opcao");
        QTest::addColumn<QDate>("venc");
        QTest::addColumn<QString>("prestacao");
        QTest::addColumn<QString>("taxa");
        QTest::addColumn<QString>("answer"); // the refusal, or the total
        const QDate h = dmy("10/04/2026");
        QTest::newRow("no option first")
            << 0 << h.addDays(5) << QStringLiteral("") << QStringLiteral("")
            << QStringLiteral("Uma opção deve ser selecionada!!!");
        QTest::newRow("due after the date")
            << 1 << h.addDays(1) << QStringLiteral("") << QStringLiteral("")
            << QStringLiteral("A data de vencimento não pode ser inferior a data atual!!!");
        QTest::newRow("no instalment")
            << 1 << h << QStringLiteral("") << QStringLiteral("")
            << QStringLiteral("Valor da prestação deve ser informada!!!");
        QTest::newRow("two commas") << 1 << h << QStringLiteral("1,0,0") << QStringLiteral("0,20")
                                    << QStringLiteral("Valor da prestação deve ser informada!!!");
        QTest::newRow("zero instalment")
            << 1 << h << QStringLiteral("0,00") << QStringLiteral("0,20")
            << QStringLiteral("Valor da prestação deve ser informada!!!");
        QTest::newRow("no rate") << 1 << h << QStringLiteral("100,00") << QStringLiteral("")
                                 << QStringLiteral("Valor do juros deve ser informado!!!");
        QTest::newRow("option 1") << 1 << h.addDays(-10) << QStringLiteral("100,00")
                                  << QStringLiteral("0,20") << QStringLiteral("102,00");
        QTest::newRow("option 2 as scheme 1") << 2 << dmy("10/03/2026") << QStringLiteral("100,00")
                                              << QStringLiteral("0,33") << QStringLiteral("111,00");
        QTest::newRow("option 3 as scheme 2") << 3 << dmy("10/02/2026") << QStringLiteral("250,00")
                                              << QStringLiteral("2,00") << QStringLiteral("260,00");
    }
    void calculator() {
        QFETCH(int, opcao);
        QFETCH(QDate, venc);
        QFETCH(QString, prestacao);
        QFETCH(QString, taxa);
        QFETCH(QString, answer);
        const auto r = InterestCalculator::calcular(
            {opcao, dmy("10/04/2026"), venc, Money::parse(prestacao), Money::parse(taxa)});
        QCOMPARE(r.erro.isEmpty() ? r.total.format() : r.erro, answer);
    }
};

QTEST_GUILESS_MAIN(tst_charges)
#include "tst_charges.moc"
