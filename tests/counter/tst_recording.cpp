// What the counter keeps whatever screen or command drives it: a code is recorded once, amounts
// and charges stay within the maximum, the control file follows the receipts.
#include "Acrescimos.h"
#include "CounterSession.h"
#include "DailyControlFile.h"
#include "OpenCounter.h"
#include "PaymentRecorder.h"
#include "TestApp.h"
#include "TextFile.h"
#include "clsRecebimentos.h"

#include <QFile>

namespace {

const QString kGuia = QStringLiteral("81660000003124004262026113058888888888888888");
const QString kBoleto = QStringLiteral("00193165100000089151234500000000000000000000");

CustomerItem listed(const QString& code, const char* valor = "10,00") {
    CustomerItem it;
    it.tipo = 1;
    it.descricao = QStringLiteral("IPTU");
    it.codbarra = code;
    it.valor = *Money::parse(QString::fromLatin1(valor));
    return it;
}

// One customer's items recorded as the counter records them.
std::optional<QList<RecordedReceipt>> record(OpenCounter& c, const QList<CustomerItem>& items) {
    CustomerList list;
    for (const CustomerItem& it : items)
        list.append(it);
    return PaymentRecorder::record(c.app.ctx(), c.session.day().movimento(), list);
}

} // namespace

class tst_recording : public QObject {
    Q_OBJECT
private slots:
    void aCodeIsRecordedOnce_data() { addBackendRows(); }
    void aCodeIsRecordedOnce() {
        QFETCH(QString, backend);
        OpenCounter c(backend == QLatin1String("postgres") ? TestApp::Backend::PostgreSQL
                                                           : TestApp::Backend::SQLite);
        QVERIFY(c.open());
        QVERIFY(c.app.ok());
        QVERIFY(record(c, {listed(kGuia)}));
        // A list that never went through the reading (a loaded sum file, another program).
        c.app.dialogs().clear();
        QVERIFY(!record(c, {listed(kBoleto), listed(kGuia)}));
        QVERIFY(c.app.dialogs().last().text.startsWith(QStringLiteral("Conta já Recebida!!!")));
        QVERIFY(c.app.dialogs().last().text.contains(QStringLiteral("item 02")));
        QVERIFY(!record(c, {listed(kBoleto), listed(kBoleto)}));
        QVERIFY(c.app.dialogs().last().text.startsWith(QStringLiteral("Conta já Lançada!!!")));
        QCOMPARE(c.app.count(QStringLiteral("Recebimentos")), 1); // nothing of the refused lists
        // Items without a document of their own repeat freely.
        const QString noDocument = QStringLiteral("000") + QString(41, QLatin1Char('3'));
        QVERIFY(record(c, {listed(clsRecebimentos::kSemCodigo), listed(clsRecebimentos::kSemCodigo),
                           listed(noDocument)}));
        QVERIFY(record(c, {listed(noDocument), listed(QString())}));
        QCOMPARE(c.app.count(QStringLiteral("Recebimentos")), 6);
        QCOMPARE(c.app.count(QStringLiteral("Recebimentos"), QStringLiteral("AUTENTICA = 6")), 1);
    }

    void amountsStayWithinTheMaximum() {
        OpenCounter c;
        QVERIFY(c.open());
        // The customer's total is held to the maximum as well: two one-off items of the
        // maximum each, or the maximum and a centavo, are refused whole.
        const QString noDocument = clsRecebimentos::kSemCodigo;
        QVERIFY(!record(
            c, {listed(noDocument, "999.999.999,99"), listed(noDocument, "999.999.999,99")}));
        QCOMPARE(c.app.dialogs().last().text,
                 QStringLiteral("O total do cliente (R$ 1.999.999.999,98) passa de "
                                "R$ 999.999.999,99. Nada foi gravado: divida o pagamento em "
                                "dois."));
        QVERIFY(!record(c, {listed(kGuia, "999.999.999,99"), listed(kBoleto, "0,01")}));
        QCOMPARE(c.app.count(QStringLiteral("Recebimentos")), 0);
        QVERIFY(record(c, {listed(kGuia, "999.999.999,98"), listed(kBoleto, "0,01")}));
        CustomerItem huge = listed(QString(44, QLatin1Char('5')));
        huge.valor = Money::maximum() + Money::fromCents(1);
        QVERIFY(!record(c, {huge}));
        QVERIFY(c.app.dialogs().last().text.contains(QStringLiteral("R$ 999.999.999,99")));

        // A one-off item far beyond the maximum, or due before 1997, is refused with its entry.
        for (const auto& [valor, vencimento] :
             {std::pair{"999.999.999,99", "00010101"}, {"1.000,00", "19961231"}}) {
            OneOffItem item;
            item.idcod = 7; // charges interest
            item.valor = *Money::parse(QString::fromLatin1(valor));
            item.vencimento =
                QDate::fromString(QString::fromLatin1(vencimento), QStringLiteral("yyyyMMdd"));
            auto r = c.session.somaAvulso(item);
            while (r.precisaConsentimento)
                r = c.session.continuar(true);
            QVERIFY(!r.accepted);
        }
        QVERIFY(c.session.list().isEmpty());
        OneOffItem parsed;
        QString error;
        QVERIFY(!OneOffItem::fromArgument(QStringLiteral("7:99.999.999.999.999:01/01/0001"), parsed,
                                          &error));
        QCOMPARE(error, QStringLiteral("99.999.999.999.999 - Erro na Soma Avulso!!"));
    }

    void controlFileFollowsTheReceipts() {
        OpenCounter c;
        QVERIFY(c.open());
        const QString path = DailyControlFile::path(c.app.ctx(), QDate(2026, 11, 23));
        QVERIFY(c.session.append(listed(kGuia, "312,40")));
        QVERIFY(c.session.gravar());
        QCOMPARE(TextFile::readLines(path).size(), 4); // coupon off: the header only

        c.app.setOption(QStringLiteral("Print"), QStringLiteral("print_cupom"),
                        QStringLiteral("1"));
        QVERIFY(c.session.append(listed(kBoleto, "89,15")));
        QVERIFY(c.session.append(listed(QString(), "5,00")));
        QVERIFY(c.session.gravar());
        QCOMPARE(TextFile::readLines(path).size(), 6); // the lines of this payment
        QVERIFY(c.session.day().abrir()); // resuming rebuilds: the first payment's line too
        const QStringList whole = TextFile::readLines(path);
        QCOMPARE(whole.size(), 7);
        QVERIFY(whole.at(4).startsWith(QStringLiteral("0001 10:00:00 01-IPTU")));
        QVERIFY(whole.at(6).endsWith(clsRecebimentos::kSemCodigo));

        // Lines lost and the last one torn by a full disk: the next payment repairs the file.
        QByteArray bytes = TextFile::encode(whole.mid(0, 5) + QStringList{whole.at(6)});
        bytes.chop(20);
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size());
        f.close();
        QVERIFY(c.session.append(listed(QString(44, QLatin1Char('6')), "1,00")));
        QVERIFY(c.session.gravar());
        QCOMPARE(TextFile::readLines(path).mid(0, 7), whole);
        QCOMPARE(TextFile::readLines(path).size(), 8);
        QVERIFY(TextFile::readLines(path).last().startsWith(QStringLiteral("0004 ")));

        // The header too is written again when it is gone.
        QVERIFY(QFile::remove(path));
        QVERIFY(c.session.day().encerrar());
        QCOMPARE(TextFile::readLines(path).size(), 8);
    }

    void chargesNeverLeaveTheRange_data() {
        QTest::addColumn<QDate>("due");
        QTest::addColumn<QDate>("paid");
        QTest::addColumn<QString>("valor");
        QTest::addColumn<int>("scheme");
        QTest::addColumn<bool>("computed");
        QTest::newRow("year one") << QDate(1, 1, 1) << QDate(2026, 11, 23) << "10,00" << 1 << false;
        QTest::newRow("day before 1997")
            << QDate(1996, 12, 31) << QDate(2026, 11, 23) << "10,00" << 2 << false;
        QTest::newRow("first day")
            << QDate(1997, 1, 1) << QDate(2026, 11, 23) << "10,00" << 1 << true;
        QTest::newRow("largest amount, 30 years")
            << QDate(1997, 1, 1) << QDate(2026, 11, 23) << "999.999.999,99" << 1 << false;
        QTest::newRow("largest amount, a month")
            << QDate(2026, 10, 23) << QDate(2026, 11, 23) << "900.000.000,00" << 2 << true;
        QTest::newRow("far future")
            << QDate(1997, 1, 1) << QDate(9999, 12, 31) << "1,00" << 1 << false;
    }
    void chargesNeverLeaveTheRange() {
        QFETCH(QDate, due);
        QFETCH(QDate, paid);
        QFETCH(QString, valor);
        QFETCH(int, scheme);
        QFETCH(bool, computed);
        const auto e = Acrescimos::avaliar(due, paid, *Money::parse(valor), true, scheme, {});
        QCOMPARE(e.has_value(), computed);
        if (e) {
            QVERIFY(e->total >= e->valor && !e->juros.isNegative() && !e->multa.isNegative());
            QVERIFY(e->total.withinLimit());
        }
    }
};

QTEST_GUILESS_MAIN(tst_recording)
#include "tst_recording.moc"
