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
    void collectionDigits_data()
    {
        QTest::addColumn<QString>("code");
        // Published collection example (utility segment, modulo 10) and guides built by hand.
        QTest::newRow("public example") << "83640000001331201380008128846271108013618155";
        QTest::newRow("modulo 10") << "81660000003124004262026113058888888888888888";
        QTest::newRow("modulo 11") << "81830000012345604272026011000000000000000000";
    }
    void collectionDigits()
    {
        QFETCH(QString, code);
        const QString body = code.left(3) + code.mid(4);
        const QString digit = code.mid(2, 1).toInt() < 8 ? Modulo10_arrecadacao(body) : Modulo11_arrecadacao(body);
        QCOMPARE(digit, code.mid(3, 1));
        // Any other digit in any position is caught.
        for (int pos : {0, 10, 42}) {
            QString broken = body;
            broken[pos] = QChar('0' + (broken[pos].digitValue() + 1) % 10);
            const QString d2 = code.mid(2, 1).toInt() < 8 ? Modulo10_arrecadacao(broken) : Modulo11_arrecadacao(broken);
            QVERIFY2(d2 != digit || pos == 0, qPrintable(broken));
        }
    }

    void moduloEdges_data()
    {
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("m10");
        QTest::addColumn<QString>("m11");
        QTest::newRow("not numeric") << "12a4" << "" << "";
        QTest::newRow("blank") << "1 2" << "" << "";
        QTest::newRow("zero sum") << "0" << "0" << "0";
        QTest::newRow("product over nine") << "9" << "1" << "4";   // 18 -> 1+8; 18 % 11 = 7
        QTest::newRow("remainder 10") << "5" << "9" << "1";        // 10 -> 1+0; 10 % 11 = 10
        QTest::newRow("remainder 1") << "6" << "7" << "0";         // 12 -> 1+2; 12 % 11 = 1
        QTest::newRow("ninth digit") << "100000000" << "8" << "9";  // weight 2 in both: after 9 comes 2
    }
    void moduloEdges()
    {
        QFETCH(QString, input);
        QFETCH(QString, m10);
        QFETCH(QString, m11);
        QCOMPARE(Modulo10_arrecadacao(input), m10);
        QCOMPARE(Modulo11_arrecadacao(input), m11);
    }

    void bankSlipDigit_data()
    {
        QTest::addColumn<QString>("code");
        QTest::newRow("sigcb") << "00193165100000089151234500000000000000000000";
        QTest::newRow("sicob") << "23791164600001500009999999999543211111111111";
        QTest::newRow("factor 0000") << "00199000000000025001234500000000000000000000";
    }
    void bankSlipDigit()
    {
        QFETCH(QString, code);
        QCOMPARE(Modulo11_boleto(code.left(4) + code.mid(5)), code.mid(4, 1).toInt());
    }

    void bankSlipDigitNeverZero()
    {
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

    void typedLines_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("barcode");
        QTest::addColumn<int>("campo");
        const QString slip = QStringLiteral("00191234540000000000000000000000316510000008915");
        const QString slipCode = QStringLiteral("00193165100000089151234500000000000000000000");
        QTest::newRow("slip plain") << slip << slipCode << 0;
        QTest::newRow("slip with punctuation") << "00191.23454 00000.000000 00000.000000 3 16510000008915" << slipCode << 0;
        QTest::newRow("collection public") << "83640000001-1 33120138000-2 81288462711-6 08013618155-1"
                                           << "83640000001331201380008128846271108013618155" << 0;
        QTest::newRow("slip field 1") << QString(slip).replace(9, 1, QLatin1Char('5')) << "" << 1;
        QTest::newRow("slip field 2") << QString(slip).replace(12, 1, QLatin1Char('7')) << "" << 2;
        QTest::newRow("slip field 3") << QString(slip).replace(31, 1, QLatin1Char('9')) << "" << 3;
        QTest::newRow("slip general") << QString(slip).replace(32, 1, QLatin1Char('4')) << "" << 0;
        QTest::newRow("slip value changed") << QString(slip).replace(46, 1, QLatin1Char('6')) << "" << 0;
        QTest::newRow("collection block 2") << "836400000011 331201380003 812884627116 080136181551" << "" << 2;
        QTest::newRow("collection block 4") << "836400000011 331201380002 812884627116 080136181552" << "" << 4;
        QTest::newRow("collection general") << "836500000011 331201380002 812884627116 080136181551" << "" << 1;
        QTest::newRow("46 digits") << slip.left(46) << "" << -1;
        QTest::newRow("letters") << QString(slip).replace(3, 1, QLatin1Char('x')) << "" << -1;
        QTest::newRow("empty") << "" << "" << -1;
    }
    void typedLines()
    {
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
            QCOMPARE(TypedLine::fromBarcode(barcode).remove(QRegularExpression(QStringLiteral("\\D"))),
                     QString(line).remove(QRegularExpression(QStringLiteral("\\D"))));
        }
    }

    void dueFactor_data()
    {
        QTest::addColumn<QString>("factor");
        QTest::addColumn<QDate>("working");
        QTest::addColumn<QString>("rule");
        QTest::addColumn<int>("status");
        QTest::addColumn<QDate>("due");
        const int ok = int(DueFactor::Status::Ok);
        QTest::newRow("1000 in 2000") << "1000" << QDate(2000, 7, 1) << "" << ok << QDate(2000, 7, 3);
        QTest::newRow("1667 in 2002") << "1667" << QDate(2002, 4, 1) << "" << ok << QDate(2002, 5, 1);
        QTest::newRow("4789 in 2010") << "4789" << QDate(2010, 11, 1) << "" << ok << QDate(2010, 11, 17);
        QTest::newRow("9999 the day before") << "9999" << QDate(2025, 2, 20) << "" << ok << QDate(2025, 2, 21);
        QTest::newRow("1000 after the restart") << "1000" << QDate(2025, 2, 20) << "" << ok << QDate(2025, 2, 22);
        QTest::newRow("1000 today") << "1000" << QDate(2026, 11, 23) << "" << ok << QDate(2025, 2, 22);
        QTest::newRow("9999 paid late in 2025") << "9999" << QDate(2025, 3, 10) << "" << ok << QDate(2025, 2, 21);
        QTest::newRow("1651 today") << "1651" << QDate(2026, 11, 23) << "" << ok << QDate(2026, 12, 5);
        QTest::newRow("no due date") << "0000" << QDate(2026, 11, 23) << "" << int(DueFactor::Status::NoDueDate) << QDate();
        QTest::newRow("legacy 1000") << "1000" << QDate(2026, 11, 23) << "legado" << ok << QDate(2000, 7, 3);
        QTest::newRow("legacy 0000") << "0000" << QDate(2026, 11, 23) << "LEGADO" << ok << QDate(1997, 10, 7);
        QTest::newRow("not digits") << "12a4" << QDate(2026, 11, 23) << "" << int(DueFactor::Status::Invalid) << QDate();
    }
    void dueFactor()
    {
        QFETCH(QString, factor);
        QFETCH(QDate, working);
        QFETCH(QString, rule);
        QFETCH(int, status);
        QFETCH(QDate, due);
        const auto r = DueFactor::dueDate(factor, working, DueFactor::ruleFromSetting(rule));
        QCOMPARE(int(r.status), status);
        QCOMPARE(r.date, due);
    }

    void windowEdges()
    {
        // 3000 days back and 5500 ahead of the working date.
        const QDate w(2026, 11, 23);
        const auto back = DueFactor::dueDate(QString::number(DueFactor::factorOf(w.addDays(-3000))), w, DueFactor::Rule::Febraban);
        QCOMPARE(back.date, w.addDays(-3000));
        // One day further back falls between the windows of two cycles: not a date to guess.
        const auto gap = DueFactor::dueDate(QString::number(DueFactor::factorOf(w.addDays(-3001))), w, DueFactor::Rule::Febraban);
        QCOMPARE(gap.status, DueFactor::Status::OutOfWindow);
        const auto far = DueFactor::dueDate(QString::number(DueFactor::factorOf(w.addDays(5500))), w, DueFactor::Rule::Febraban);
        QCOMPARE(far.date, w.addDays(5500));
    }
};

QTEST_GUILESS_MAIN(tst_codes)
#include "tst_codes.moc"
