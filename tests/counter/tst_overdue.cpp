// Overdue guides at the counter: consent and refusal, the charges notice, one-off items.
#include "OpenCounter.h"
#include "clsRecebimentos.h"

namespace {
// Kind 0427 (ISSQN) charges interest; due 10/01/2026, 1.234,56.
const QString kOverdue = QStringLiteral("81830000012345604272026011000000000000000000");

// Opens the shared counter's day with the charges scheme [Opcoes] juros.
void start(OpenCounter& c, int esquema = 1) {
    c.app.setOption(QStringLiteral("Opcoes"), QStringLiteral("juros"), QString::number(esquema));
    QVERIFY(c.open());
}
} // namespace

class tst_overdue : public QObject {
    Q_OBJECT
private slots:
    void refusalAddsNothing() {
        OpenCounter c;
        start(c);
        const auto pending = c.session.ler(kOverdue);
        QVERIFY(pending.precisaConsentimento);
        QVERIFY(!pending.clearField); // the code stays while the question is open
        QVERIFY(c.session.list().isEmpty());
        const auto r = c.session.continuar(false);
        QVERIFY(!r.accepted);
        QCOMPARE(r.resultado, ReadingDecision::Outcome::Recusada);
        QVERIFY(r.clearField);
        QVERIFY(r.clearKind);
        QVERIFY(c.session.list().isEmpty());
        QVERIFY(!c.session.aguardandoConsentimento());
        QVERIFY(c.app.dialogs().shown().isEmpty()); // the core asks nothing itself
    }

    void consentAddsTheCharges() {
        OpenCounter c;
        start(c);
        c.app.clock().set(QDateTime(QDate(2026, 11, 23), QTime(9, 0)));
        const auto r = c.read(kOverdue);
        QVERIFY(c.asked);
        QVERIFY(r.accepted);
        // 317 days: fine capped at 10%; 10 months and a day past: 11 months of 1%.
        QCOMPARE(c.session.list().at(0).valor.format(), QStringLiteral("1.493,82"));
        QCOMPARE(c.session.list().at(0).multa.format(), QStringLiteral("123,46"));
        QCOMPARE(c.session.list().at(0).juros.format(), QStringLiteral("135,80"));
        const auto shown = c.app.dialogs().last();
        QCOMPARE(shown.form, QStringLiteral("frmAcrescimos"));
        QCOMPARE(shown.text.split(QLatin1Char('\n')),
                 (QStringList{QStringLiteral("Vencimento: 10/01/2026"),
                              QStringLiteral("(+) Mora / Multa..................:R$ 123,46"),
                              QStringLiteral("(+) Outros Acrescimos.........:R$ 135,80"),
                              QStringLiteral("(=) Valor à Cobrar...............:R$ 1.493,82"),
                              QStringLiteral("317 dias de atraso")}));
        const auto rows = c.session.gravar();
        QVERIFY(rows);
        clsRecebimentos rec(c.app.db());
        QVERIFY(rec.SQLSelect(rows->first().idrecebe));
        QCOMPARE(rec.VALOR.format(), QStringLiteral("1.493,82"));
    }

    void daysLineOnlyBeyondNinetyDaysOfTheComputerDate() {
        OpenCounter c;
        start(c);
        c.app.ctx().workingDate = QDate(2026, 11, 23);
        c.app.clock().set(QDateTime(QDate(2026, 4, 10),
                                    QTime(9, 0))); // the computer's date, not the working date
        QVERIFY(c.read(kOverdue).accepted);
        QCOMPARE(c.app.dialogs().last().text.split(QLatin1Char('\n')).size(),
                 4); // 90 days: no line
    }

    void schemeZeroStillAsksAndShows() {
        OpenCounter c;
        start(c, 0);
        QVERIFY(c.read(kOverdue).accepted);
        QVERIFY(c.asked);
        QCOMPARE(c.session.list().at(0).valor.format(), QStringLiteral("1.234,56"));
        QCOMPARE(c.app.dialogs().shown().size(), 1); // the charges notice, all zero
    }

    void noInterestKindIsFaceValueAfterConsent() {
        OpenCounter c;
        start(c);
        // Kind 0425 charges no interest unless the code ends in 3; due 15/01/2026.
        const auto r = c.read(QStringLiteral("81630000000500004252026011500000000000000000"));
        QVERIFY(c.asked);
        QVERIFY(r.accepted);
        QCOMPARE(c.session.list().at(0).valor.format(), QStringLiteral("50,00"));
        QVERIFY(c.app.dialogs().texts().isEmpty()); // no charges notice
    }

    void oneOffItems() {
        OpenCounter c;
        start(c);
        // Kind 7 charges interest, kind 8 does not; kinds 1 (F) and 4 (C) are not offered.
        auto add = [&](int kind, const char* valor, const char* venc) {
            auto r = c.session.somaAvulso(
                {kind, *Money::parse(QString::fromLatin1(valor)),
                 QDate::fromString(QString::fromLatin1(venc), QStringLiteral("yyyyMMdd")),
                 QStringLiteral("1/3"), QStringLiteral("nota")});
            while (r.precisaConsentimento)
                r = c.session.continuar(true);
            return r;
        };
        QVERIFY(
            add(8, "20,00", "20260101").accepted); // overdue, no interest: face value, no question
        QVERIFY(c.app.dialogs().shown().isEmpty());
        QVERIFY(add(7, "10,00", "20261010").accepted);
        QCOMPARE(c.session.list().at(1).valor.format(), QStringLiteral("11,20"));
        for (int kind : {1, 4, 100}) {
            const auto r = add(kind, "1,00", "20261123");
            QVERIFY(!r.accepted);
            QCOMPARE(c.app.dialogs().last().text,
                     QString::number(kind) + QStringLiteral(" - Erro na Soma Avulso!!"));
        }
        QVERIFY(!add(8, "0,00", "20261123").accepted);
        QCOMPARE(c.app.dialogs().last().text, QStringLiteral("0,00 - Erro na Soma Avulso!!"));
        QCOMPARE(c.app.dialogs().last().icon, DialogIcon::Critical);
        OneOffItem parsed;
        QString error;
        QVERIFY(!OneOffItem::fromArgument(QStringLiteral("8:1,0,0"), parsed, &error));
        QCOMPARE(error, QStringLiteral("1,0,0 - Erro na Soma Avulso!!"));
        QCOMPARE(c.session.list().size(), 2);
        QCOMPARE(c.session.list().at(0).parcela, QStringLiteral("1/3"));
        const auto rows = c.session.gravar();
        QVERIFY(rows);
        QCOMPARE(c.app.count(QStringLiteral("Recebimentos"),
                             QStringLiteral("EXPORT = 1 AND CODBARRA = '") +
                                 QString(44, QLatin1Char('0')) + QLatin1Char('\'')),
                 2);
    }
};

QTEST_MAIN(tst_overdue)
#include "tst_overdue.moc"
