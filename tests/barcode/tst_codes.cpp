// Check digits and due factors: pure rules, checked against public examples and
// codes built by hand.
#include "CheckDigits.h"
#include "DueFactor.h"

#include <QTest>

class tst_codes : public QObject {
    Q_OBJECT
private slots:
    // Input, then its modulo 10 and modulo 11 collection digits ("" when not all digits).
    void moduloEdges_data() {
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("m10");
        QTest::addColumn<QString>("m11");
        auto row = [](const char* name, const char* input, const char* m10, const char* m11) {
            QTest::newRow(name) << QString::fromLatin1(input) << QString::fromLatin1(m10)
                                << QString::fromLatin1(m11);
        };
        row("not numeric", "12a4", "", "");
        row("blank", "1 2", "", "");
        row("zero sum", "0", "0", "0");
        row("product over nine", "9", "1", "4");   // 18 -> 1+8; 18 % 11 = 7
        row("remainder 10", "5", "9", "1");        // 10 -> 1+0; 10 % 11 = 10
        row("remainder 1", "6", "7", "0");         // 12 -> 1+2; 12 % 11 = 1
        row("ninth digit", "100000000", "8", "9"); // weight 2 in both: after 9 comes 2
    }
    void moduloEdges() {
        QFETCH(QString, input);
        QFETCH(QString, m10);
        QFETCH(QString, m11);
        QCOMPARE(Modulo10_arrecadacao(input), m10);
        QCOMPARE(Modulo11_arrecadacao(input), m11);
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

    // "factor working-date [rule] -> due date, or the status when there is none"
    void dueFactor_data() {
        QTest::addColumn<QString>("row");
        QTest::newRow("1000 in 2000") << "1000 01/07/2000 -> 03/07/2000";
        QTest::newRow("1667 in 2002") << "1667 01/04/2002 -> 01/05/2002";
        QTest::newRow("4789 in 2010") << "4789 01/11/2010 -> 17/11/2010";
        QTest::newRow("9999 the day before") << "9999 20/02/2025 -> 21/02/2025";
        QTest::newRow("1000 after the restart") << "1000 20/02/2025 -> 22/02/2025";
        QTest::newRow("1000 today") << "1000 23/11/2026 -> 22/02/2025";
        QTest::newRow("9999 paid late in 2025") << "9999 10/03/2025 -> 21/02/2025";
        QTest::newRow("1651 today") << "1651 23/11/2026 -> 05/12/2026";
        QTest::newRow("no due date") << "0000 23/11/2026 -> NoDueDate";
        QTest::newRow("legacy 1000") << "1000 23/11/2026 legado -> 03/07/2000";
        QTest::newRow("legacy 0000") << "0000 23/11/2026 LEGADO -> 07/10/1997";
        // The same printed factor on both sides of the restart, read on different days.
        QTest::newRow("8981 in 2022") << "8981 02/05/2022 -> 10/05/2022";
        QTest::newRow("8981 in 2040") << "8981 01/03/2040 -> 30/12/2046";
        QTest::newRow("3737 in 2006") << "3737 01/01/2006 -> 31/12/2007";
        QTest::newRow("3737 in 2026") << "3737 23/11/2026 -> 21/08/2032";
        QTest::newRow("8981 in 2006: too far ahead") << "8981 01/01/2006 -> OutOfWindow";
        // Below 1000 only the first cycle has the factor.
        QTest::newRow("0500 in 1999") << "0500 01/02/1999 -> 19/02/1999";
        QTest::newRow("0500 today") << "0500 23/11/2026 -> OutOfWindow";
        QTest::newRow("not digits") << "12a4 23/11/2026 -> Invalid";
    }
    void dueFactor() {
        QFETCH(QString, row);
        const QStringList in = row.section(QStringLiteral(" -> "), 0, 0).split(QLatin1Char(' '));
        const auto r =
            DueFactor::dueDate(in[0], QDate::fromString(in[1], QStringLiteral("dd/MM/yyyy")),
                               DueFactor::ruleFromSetting(in.value(2)));
        static const QMap<DueFactor::Status, QString> names = {
            {DueFactor::Status::NoDueDate, QStringLiteral("NoDueDate")},
            {DueFactor::Status::OutOfWindow, QStringLiteral("OutOfWindow")},
            {DueFactor::Status::Invalid, QStringLiteral("Invalid")}};
        QCOMPARE(r.status == DueFactor::Status::Ok ? r.date.toString(QStringLiteral("dd/MM/yyyy"))
                                                   : names.value(r.status),
                 row.section(QStringLiteral(" -> "), 1));
        QCOMPARE(r.date.isValid(), r.status == DueFactor::Status::Ok);
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
