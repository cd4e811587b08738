// The coupon of the "txt" model on screen: without any printer installed it becomes a PDF.
#include "TestApp.h"
#include "TextCouponPrinter.h"

#include <QDir>

class tst_text_coupon : public QObject {
    Q_OBJECT
private slots:
    void withoutPrinterTheCouponIsAPdf() {
        TestApp app;
        QVERIFY(TextCouponPrinter::imprimir(app.ctx(), {QStringLiteral("TOTAL PAGO: 100,00")}));
        QVERIFY(!QDir(app.path(QStringLiteral("Cupons")))
                     .entryList({QStringLiteral("*.pdf")})
                     .isEmpty());
    }
};

QTEST_MAIN(tst_text_coupon)
#include "tst_text_coupon.moc"
