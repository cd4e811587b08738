// Money: parsing what operators type, formatting, and the rounding of computed charges.
#include "Money.h"

#include <QTest>
#include <cmath>
#include <limits>

class tst_money : public QObject {
    Q_OBJECT
private slots:
    void parse_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<qint64>("units");
        QTest::newRow("thousands") << "1.234,56" << true << qint64(12345600);
        QTest::newRow("one decimal") << "12,5" << true << qint64(125000);
        QTest::newRow("zero") << "0,00" << true << qint64(0);
        QTest::newRow("no decimals") << "15" << true << qint64(150000);
        QTest::newRow("leading zeros") << "00001234,56" << true << qint64(12345600);
        QTest::newRow("currency sign") << "R$ 3,10" << true << qint64(31000);
        QTest::newRow("negative") << "-0,50" << true << qint64(-5000);
        QTest::newRow("four decimals") << "1,2345" << true << qint64(12345);
        QTest::newRow("millions") << "1.234.567,89" << true << qint64(12345678900);
        QTest::newRow("two commas") << "1,2,3" << false << qint64(0);
        QTest::newRow("letters") << "12a" << false << qint64(0);
        QTest::newRow("empty") << "" << false << qint64(0);
        QTest::newRow("bad grouping") << "12.34,00" << false << qint64(0);
        QTest::newRow("five decimals") << "1,23456" << false << qint64(0);
        QTest::newRow("dot as decimal") << "12.5" << false << qint64(0);
        QTest::newRow("only sign") << "-" << false << qint64(0);
        QTest::newRow("only comma") << "," << false << qint64(0);
        QTest::newRow("comma without decimals") << "12," << false << qint64(0);
        QTest::newRow("decimals without whole") << ",5" << true << qint64(5000);
        QTest::newRow("the maximum") << "999.999.999,99" << true << qint64(9999999999900);
        QTest::newRow("a cent more") << "999.999.999,9901" << false << qint64(0);
        QTest::newRow("a billion") << "1.000.000.000,00" << false << qint64(0);
        QTest::newRow("fourteen digits") << "99.999.999.999.999" << false << qint64(0);
        QTest::newRow("leading zeros to the maximum")
            << "000000999999999,99" << true << qint64(9999999999900);
        QTest::newRow("arabic-indic digits")
            << QString::fromUtf8("\u0661,00") << false << qint64(0);
    }
    void parse() {
        QFETCH(QString, text);
        QFETCH(bool, valid);
        QFETCH(qint64, units);
        const auto m = Money::parse(text);
        QCOMPARE(m.has_value(), valid);
        if (valid)
            QCOMPARE(m->units(), units);
    }

    void format_data() {
        QTest::addColumn<qint64>("units");
        QTest::addColumn<QString>("plain");
        QTest::addColumn<QString>("cents10");
        for (const auto& [name, units, plain, cents10] :
             {std::tuple{"small", qint64(5000), "0,50", "0000000050"},
              {"thousands", 12345600, "1.234,56", "0000123456"},
              {"million", 12345678900, "1.234.567,89", "0123456789"},
              {"half cent up", 150, "0,02", "0000000002"},
              {"below half", 149, "0,01", "0000000001"},
              {"negative half", -150, "-0,02", "0000000002"},
              {"exact thousand", 10000000, "1.000,00", "0000100000"}})
            QTest::newRow(name) << units << QString::fromLatin1(plain)
                                << QString::fromLatin1(cents10);
    }
    void format() {
        QFETCH(qint64, units);
        QFETCH(QString, plain);
        QFETCH(QString, cents10);
        const Money m = Money::fromUnits(units);
        QCOMPARE(m.format(), plain);
        QCOMPARE(m.formatCurrency(), QStringLiteral("R$ ") + plain);
        QCOMPARE(m.centsText(10), cents10);
    }

    void roundingHalfAwayFromZero_data() {
        QTest::addColumn<double>("reais");
        QTest::addColumn<qint64>("cents");
        QTest::newRow("0.005") << 0.005 << qint64(1);
        QTest::newRow("2.675 stored below") << 2.675 << qint64(268);
        QTest::newRow("-0.005") << -0.005 << qint64(-1);
        QTest::newRow("0.0049") << 0.0049 << qint64(0);
        QTest::newRow("13.2% of 100") << 13.2 << qint64(1320);
    }
    void roundingHalfAwayFromZero() {
        QFETCH(double, reais);
        QFETCH(qint64, cents);
        QCOMPARE(Money::fromDoubleRounded(reais).centsRounded(), cents);
    }

    // Nothing wraps: the operators saturate far beyond the maximum (and so fail withinLimit),
    // the checked forms refuse.
    void overflow() {
        const Money big = Money::fromUnits(std::numeric_limits<qint64>::max() - 5);
        QVERIFY(!(big + Money::fromUnits(10)).isNegative());
        QVERIFY(!(big + Money::fromUnits(10)).withinLimit());
        QVERIFY((-big - Money::fromUnits(10)).isNegative());
        QVERIFY(!Money::add(big, Money::fromUnits(10)));
        QVERIFY(!Money::subtract(-big, Money::fromUnits(10)));
        QCOMPARE(Money::add(Money::maximum(), Money::fromCents(1))->units(),
                 Money::kMaxUnits + 100);
        QVERIFY(!Money::maximum().times(1'000'000'000));
        QCOMPARE(Money::fromCents(-3).times(-4)->format(), QStringLiteral("0,12"));
        QVERIFY(!Money::fromCents(std::numeric_limits<qint64>::max()).withinLimit());
        QVERIFY(!Money::fromDoubleRounded(1e300).withinLimit());
        QVERIFY(!Money::fromDoubleRounded(std::nan("")).withinLimit());
        QVERIFY(Money::fromUnits(std::numeric_limits<qint64>::min()).format().startsWith('-'));
        QVERIFY(Money::maximum().withinLimit() && (-Money::maximum()).withinLimit());
        QCOMPARE((Money::fromCents(1015) - Money::fromReais(11)).format(), QStringLiteral("-0,85"));
    }
};

QTEST_GUILESS_MAIN(tst_money)
#include "tst_money.moc"
