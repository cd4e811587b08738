// Check digits, typed lines and due factors: pure rules, checked against public examples and
// codes built by hand.
#include "CheckDigits.h"
#include "DueFactor.h"
#include "TypedLine.h"

#include <QRegularExpression>
#include <QTest>

class tst_codes : public QObject {
    Q_OBJECT
private slots:
    void collectionDigits_data() {
        QTest::addColumn<QString>("code");
        // Published collection example (utility segment, modulo 10) and guides built by hand.
        QTest::newRow("public example") << "83640000001331201380008128846271108013618155";
        QTest::newRow("modulo 10") << "81660000003124004262026113058888888888888888";
        QTest::newRow("modulo 11") << "81830000012345604272026011000000000000000000";
    }
    void collectionDigits() {
        QFETCH(QString, code);
        const QString body = code.left(3) + code.mid(4);
        const QString digit =
            code.mid(2, 1).toInt() < 8 ? Modulo10_arrecadacao(body) : Modulo11_arrecadacao(body);
        QCOMPARE(digit, code.mid(3, 1));
        // Any other digit in any position is caught.
        for (int pos : {0, 10, 42}) {
            QString broken = body;
            broken[pos] = QChar('0' + (broken[pos].digitValue() + 1) % 10);
            const QString d2 = code.mid(2, 1).toInt() < 8 ? Modulo10_arrecadacao(broken)
                                                          : Modulo11_arrecadacao(broken);
            QVERIFY2(d2 != digit || pos == 0, qPrintable(broken));
        }
    }

    void moduloEdges_data() {
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("m10");
        QTest::addColumn<QString>("m11");
        QTest::newRow("not numeric") << "12a4"
                                     << ""
                                     << "";
        QTest::newRow("blank") << "1 2"
                               << ""
                               << "";
        QTest::newRow("zero sum") << "0"
                                  << "0"
                                  << "0";
        QTest::newRow("product over nine") << "9"
                                           << "1"
                                           << "4"; // 18 -> 1+8; 18 % 11 = 7
        QTest::newRow("remainder 10") << "5"
                                      << "9"
                                      << "1"; // 10 -> 1+0; 10 % 11 = 10
        QTest::newRow("remainder 1") << "6"
                                     << "7"
                                     << "0"; // 12 -> 1+2; 12 % 11 = 1
        QTest::newRow("ninth digit") << "100000000"
                                     << "8"
                                     << "9"; // weight 2 in both: after 9 comes 2
    }
    void moduloEdges() {
        QFETCH(QString, input);
        QFETCH(QString, m10);
        QFETCH(QString, m11);
        QCOMPARE(Modulo10_arrecadacao(input), m10);
        QCOMPARE(Modulo11_arrecadacao(input), m11);
    }

    void bankSlipDigit_data() {
        QTest::addColumn<QString>("code");
        QTest::newRow("sigcb") << "00193165100000089151234500000000000000000000";
        QTest::newRow("sicob") << "23791164600001500009999999999543211111111111";
        QTest::newRow("factor 0000") << "00199000000000025001234500000000000000000000";
    }
    void bankSlipDigit() {
        QFETCH(QString, code);
        QCOMPARE(Modulo11_boleto(code.left(4) + code.mid(5)), code.mid(4, 1).toInt());
    }

    void bankSlipDigitNeverZero() {
        // Remainders 0 and 1 (d = 11 or 10) both give 1.
        int seen = 0;
        for (int i = 0; i < 400; ++i) {
            const QString body = QStringLiteral("0019%1").arg(i, 39, 10, QLatin1Char('0'));
            const int d = Modulo11_boleto(body);
            QVERIFY(d >= 1 && d <= 9);
            seen |= 1 << d;
        }
        QCOMPARE(seen, 0b1111111110);
    }

    void typedLines_data() {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("barcode");
        QTest::addColumn<int>("campo");
        const QString slip = QStringLiteral("00191234540000000000000000000000316510000008915");
        const QString slipCode = QStringLiteral("00193165100000089151234500000000000000000000");
        QTest::newRow("slip plain") << slip << slipCode << 0;
        QTest::newRow("slip with punctuation")
            << "00191.23454 00000.000000 00000.000000 3 16510000008915" << slipCode << 0;
        QTest::newRow("collection public")
            << "83640000001-1 33120138000-2 81288462711-6 08013618155-1"
            << "83640000001331201380008128846271108013618155" << 0;
        QTest::newRow("slip field 1") << QString(slip).replace(9, 1, QLatin1Char('5')) << "" << 1;
        QTest::newRow("slip field 2") << QString(slip).replace(12, 1, QLatin1Char('7')) << "" << 2;
        QTest::newRow("slip field 3") << QString(slip).replace(31, 1, QLatin1Char('9')) << "" << 3;
        QTest::newRow("slip general") << QString(slip).replace(32, 1, QLatin1Char('4')) << "" << 0;
        QTest::newRow("slip value changed")
            << QString(slip).replace(46, 1, QLatin1Char('6')) << "" << 0;
        QTest::newRow("collection block 2") << "836400000011 331201380003 812884627116 080136181551"
                                            << "" << 2;
        QTest::newRow("collection block 4") << "836400000011 331201380002 812884627116 080136181552"
                                            << "" << 4;
        QTest::newRow("collection general") << "836500000011 331201380002 812884627116 080136181551"
                                            << "" << 1;
        // Lines printed on real slips and bills of several banks and segments.
        QTest::newRow("cef") << "10492006506100010004200997263900989810000021403"
                             << "10499898100000214032006561000100040099726390" << 0;
        QTest::newRow("bradesco") << "23793.38128 60005.963347 21000.063301 1 74640000116037"
                                  << "23791746400001160373381260005963342100006330" << 0;
        QTest::newRow("bradesco card, no factor")
            << "23794150099001980167035000211405700000000000000"
            << "23797000000000000004150090019801673500021140" << 0;
        QTest::newRow("banco do brasil") << "00190.50095 40144.816069 06809.350314 3 37370000000100"
                                         << "00193373700000001000500940144816060680935031" << 0;
        QTest::newRow("sicoob") << "75691303670103467211159238450015997710000096210"
                                << "75699977100000962101303601034672115923845001" << 0;
        QTest::newRow("factor and value zero")
            << "73990.00004 00001.223320 90126.130344 4 00000000000000"
            << "73994000000000000000000000001223329012613034" << 0;
        QTest::newRow("energy, modulo 10") << "838600000050096000190009000801782309000343062712"
                                           << "83860000005096000190000008017823000034306271" << 0;
        QTest::newRow("sanitation, modulo 10")
            << "858200000007572503282030560708202107539591904460"
            << "85820000000572503282035607082021053959190446" << 0;
        QTest::newRow("taxes, modulo 10") << "846300000003299902962024004101360008002006441147"
                                          << "84630000000299902962020041013600000200644114" << 0;
        QTest::newRow("sicoob field 1 mistyped")
            << "75691313670103467211159238450015997710000096210"
            << "" << 1;
        QTest::newRow("itau sample, general digit")
            << "34191.75124 34567.871230 41234.560005 8 92850000026035"
            << "" << 0;
        QTest::newRow("46 digits") << slip.left(46) << "" << -1;
        QTest::newRow("letters") << QString(slip).replace(3, 1, QLatin1Char('x')) << "" << -1;
        QTest::newRow("empty") << ""
                               << "" << -1;
    }
    void typedLines() {
        QFETCH(QString, line);
        QFETCH(QString, barcode);
        QFETCH(int, campo);
        const TypedLine::Result r = TypedLine::toBarcode(line);
        QCOMPARE(r.barcode, barcode);
        if (barcode.isEmpty()) {
            QCOMPARE(r.campo, campo);
            QVERIFY(!r.erro.isEmpty());
            if (campo > 0)
                QVERIFY(r.erro.contains(QStringLiteral("campo %1").arg(campo)));
        } else {
            QCOMPARE(
                TypedLine::fromBarcode(barcode).remove(QRegularExpression(QStringLiteral("\\D"))),
                QString(line).remove(QRegularExpression(QStringLiteral("\\D"))));
        }
    }

    void dueFactor_data() {
        QTest::addColumn<QString>("factor");
        QTest::addColumn<QDate>("working");
        QTest::addColumn<QString>("rule");
        QTest::addColumn<int>("status");
        QTest::addColumn<QDate>("due");
        const int ok = int(DueFactor::Status::Ok);
        QTest::newRow("1000 in 2000")
            << "1000" << QDate(2000, 7, 1) << "" << ok << QDate(2000, 7, 3);
        QTest::newRow("1667 in 2002")
            << "1667" << QDate(2002, 4, 1) << "" << ok << QDate(2002, 5, 1);
        QTest::newRow("4789 in 2010")
            << "4789" << QDate(2010, 11, 1) << "" << ok << QDate(2010, 11, 17);
        QTest::newRow("9999 the day before")
            << "9999" << QDate(2025, 2, 20) << "" << ok << QDate(2025, 2, 21);
        QTest::newRow("1000 after the restart")
            << "1000" << QDate(2025, 2, 20) << "" << ok << QDate(2025, 2, 22);
        QTest::newRow("1000 today")
            << "1000" << QDate(2026, 11, 23) << "" << ok << QDate(2025, 2, 22);
        QTest::newRow("9999 paid late in 2025")
            << "9999" << QDate(2025, 3, 10) << "" << ok << QDate(2025, 2, 21);
        QTest::newRow("1651 today")
            << "1651" << QDate(2026, 11, 23) << "" << ok << QDate(2026, 12, 5);
        QTest::newRow("no due date")
            << "0000" << QDate(2026, 11, 23) << "" << int(DueFactor::Status::NoDueDate) << QDate();
        QTest::newRow("legacy 1000")
            << "1000" << QDate(2026, 11, 23) << "legado" << ok << QDate(2000, 7, 3);
        QTest::newRow("legacy 0000")
            << "0000" << QDate(2026, 11, 23) << "LEGADO" << ok << QDate(1997, 10, 7);
        // The same printed factor on both sides of the restart, read on different days.
        QTest::newRow("8981 in 2022")
            << "8981" << QDate(2022, 5, 2) << "" << ok << QDate(2022, 5, 10);
        QTest::newRow("8981 in 2040")
            << "8981" << QDate(2040, 3, 1) << "" << ok << QDate(2046, 12, 30);
        QTest::newRow("3737 in 2006")
            << "3737" << QDate(2006, 1, 1) << "" << ok << QDate(2007, 12, 31);
        QTest::newRow("3737 in 2026")
            << "3737" << QDate(2026, 11, 23) << "" << ok << QDate(2032, 8, 21);
        QTest::newRow("8981 in 2006: too far ahead")
            << "8981" << QDate(2006, 1, 1) << "" << int(DueFactor::Status::OutOfWindow) << QDate();
        // Below 1000 only the first cycle has the factor.
        QTest::newRow("0500 in 1999")
            << "0500" << QDate(1999, 2, 1) << "" << ok << QDate(1999, 2, 19);
        QTest::newRow("0500 today") << "0500" << QDate(2026, 11, 23) << ""
                                    << int(DueFactor::Status::OutOfWindow) << QDate();
        QTest::newRow("not digits")
            << "12a4" << QDate(2026, 11, 23) << "" << int(DueFactor::Status::Invalid) << QDate();
    }
    void dueFactor() {
        QFETCH(QString, factor);
        QFETCH(QDate, working);
        QFETCH(QString, rule);
        QFETCH(int, status);
        QFETCH(QDate, due);
        const auto r = DueFactor::dueDate(factor, working, DueFactor::ruleFromSetting(rule));
        QCOMPARE(int(r.status), status);
        QCOMPARE(r.date, due);
    }

    void windowEdges() {
        // 3000 days back and 5500 ahead of the working date.
        const QDate w(2026, 11, 23);
        const auto back = DueFactor::dueDate(QString::number(DueFactor::factorOf(w.addDays(-3000))),
                                             w, DueFactor::Rule::Febraban);
        QCOMPARE(back.date, w.addDays(-3000));
        // One day further back falls between the windows of two cycles: not a date to guess.
        const auto gap = DueFactor::dueDate(QString::number(DueFactor::factorOf(w.addDays(-3001))),
                                            w, DueFactor::Rule::Febraban);
        QCOMPARE(gap.status, DueFactor::Status::OutOfWindow);
        const auto far = DueFactor::dueDate(QString::number(DueFactor::factorOf(w.addDays(5500))),
                                            w, DueFactor::Rule::Febraban);
        QCOMPARE(far.date, w.addDays(5500));
    }
};

QTEST_GUILESS_MAIN(tst_codes)
#include "tst_codes.moc"
