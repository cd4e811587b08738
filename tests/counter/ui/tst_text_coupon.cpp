// The coupon of the "txt" model on screen: without the chosen printer (none chosen and none
// installed, or one chosen that is not installed) it becomes a PDF.
#include "TestApp.h"
#include "TextCouponPrinter.h"

#include <QDir>
#include <QPrinterInfo>

class tst_text_coupon : public QObject {
    Q_OBJECT
private slots:
    void withoutPrinterTheCouponIsAPdf_data() {
        QTest::addColumn<QString>("chosen");
        QTest::newRow("none chosen") << QString();
        QTest::newRow("chosen but not installed") << QStringLiteral("Impressora-Que-Nao-Existe");
    }

    void withoutPrinterTheCouponIsAPdf() {
        QFETCH(QString, chosen);
        if (chosen.isEmpty() && !QPrinterInfo::defaultPrinter().isNull())
            QSKIP("this machine has a default printer");
        TestApp app;
        app.setOption(QStringLiteral("Print"), QStringLiteral("impressora_padrao"), chosen);
        QVERIFY(TextCouponPrinter::imprimir(app.ctx(), {QStringLiteral("TOTAL PAGO: 100,00")}));
        QVERIFY(!QDir(app.path(QStringLiteral("Cupons")))
                     .entryList({QStringLiteral("*.pdf")})
                     .isEmpty());
    }
};

QTEST_MAIN(tst_text_coupon)
#include "tst_text_coupon.moc"
