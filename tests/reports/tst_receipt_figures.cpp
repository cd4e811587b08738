// What was paid split into the document's value and the charges, by the code's own layout.
#include "ReceiptFigures.h"
#include "TestApp.h"
#include "TestCodes.h"

#include <QTest>

class tst_receipt_figures : public QObject {
    Q_OBJECT
private slots:
    void faceValue_data() {
        QTest::addColumn<QString>("code");
        QTest::addColumn<qint64>("paidCents");
        QTest::addColumn<qint64>("faceCents");
        QTest::newRow("guide on time")
            << TestCodes::guide(QStringLiteral("0426"), 3124, QStringLiteral("20261130"),
                                QStringLiteral("58888888888888888"))
            << qint64(3124) << qint64(3124);
        QTest::newRow("guide overdue")
            << TestCodes::guide(QStringLiteral("0427"), 123456, QStringLiteral("20260110"),
                                QStringLiteral("00000000000000000"))
            << qint64(131000) << qint64(123456);
        QTest::newRow("bank slip with charges")
            << TestCodes::slip(1651, 8915, QStringLiteral("12345"),
                               QStringLiteral("000000000000001"), QStringLiteral("14"))
            << qint64(9100) << qint64(8915);
        QTest::newRow("bank slip without value: whole payment")
            << TestCodes::slip(1651, 0, QStringLiteral("12345"), QStringLiteral("000000000000002"),
                               QStringLiteral("14"))
            << qint64(5000) << qint64(5000);
        QTest::newRow("one-off item")
            << QString(44, QLatin1Char('0')) << qint64(1500) << qint64(1500);
        QTest::newRow("corrected below the document: whole payment")
            << TestCodes::guide(QStringLiteral("0426"), 3124, QStringLiteral("20261130"),
                                QStringLiteral("58888888888888888"))
            << qint64(2000) << qint64(2000);
    }

    void faceValue() {
        QFETCH(QString, code);
        QFETCH(qint64, paidCents);
        QFETCH(qint64, faceCents);
        TestApp app;
        clsRecebimentos r(app.ctx().db);
        r.CODBARRA = code;
        r.VALOR = Money::fromCents(paidCents);
        QCOMPARE(ReceiptFigures::valorFace(r), Money::fromCents(faceCents));
    }

    // Kinds, totals and hours add up to the same payments.
    void figuresAddUp() {
        TestApp app;
        auto row = [&app](int tipo, qint64 cents, int hour) {
            clsRecebimentos::ComTipo c{clsRecebimentos(app.ctx().db),
                                       QStringLiteral("K%1").arg(tipo)};
            c.r.TIPO = qint16(tipo);
            c.r.CODBARRA = QString(44, QLatin1Char('0'));
            c.r.VALOR = Money::fromCents(cents);
            if (hour >= 0)
                c.r.MOMENTO = QDateTime(QDate(2026, 11, 23), QTime(hour, 10));
            return c;
        };
        const ReceiptFigures f =
            ReceiptFigures::of({row(3, 1000, 9), row(1, 250, 9), row(3, 125, 14), row(1, 5, -1)});
        QCOMPARE(f.porTipo.size(), 2);
        QCOMPARE(f.porTipo[0].idcod, 1);
        QCOMPARE(f.porTipo[0].total, Money::fromCents(255));
        QCOMPARE(f.porTipo[1].quantidade, qint64(2));
        QCOMPARE(f.todos.total, Money::fromCents(1380));
        QCOMPARE(f.porHora[9].quantidade, qint64(2));
        QCOMPARE(f.porHora[14].total, Money::fromCents(125));
        QCOMPARE(f.semHora, qint64(1));
    }
};

QTEST_GUILESS_MAIN(tst_receipt_figures)
#include "tst_receipt_figures.moc"
