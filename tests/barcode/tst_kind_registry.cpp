// The rules of saving and deleting a kind of guide, on both engines.
#include "KindRegistry.h"
#include "TestApp.h"
#include "clsCodBarra.h"
#include "clsDataAccess.h"

#include <QFile>

namespace {
using O = KindRegistry::Outcome;
using F = KindRegistry::Field;

KindRegistry::Input kind(std::optional<int> idcod,
                         const QString& descricao = QStringLiteral("TAXA"),
                         const QString& padrao = QStringLiteral("F")) {
    return {idcod,
            QStringLiteral("0999"),
            descricao,
            padrao,
            QStringLiteral("s"),
            QStringLiteral(" N "),
            QStringLiteral("77")};
}
} // namespace

class tst_kind_registry : public QObject {
    Q_OBJECT
private slots:
    void initTestCase_data() { addBackendRows(); }

    void refusals_data() {
        QTest::addColumn<int>("field"); // which field is blanked or spoiled: IDCOD, IDTIPO ...
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("outcome");
        QTest::addColumn<int>("focus");
        auto row = [](const char* name, int field, const QString& value, O o, F f) {
            QTest::newRow(name) << field << value << int(o) << int(f);
        };
        row("no code", 0, QString(), O::MissingField, F::IDCOD);
        row("code 0", 0, QStringLiteral("0"), O::CodeOutOfRange, F::IDCOD);
        row("code 1000", 0, QStringLiteral("1000"), O::CodeOutOfRange, F::IDCOD);
        row("negative code", 0, QStringLiteral("-5"), O::CodeOutOfRange, F::IDCOD);
        row("blank type", 1, QStringLiteral("   "), O::MissingField, F::IDTIPO);
        row("blank description", 2, QStringLiteral(" "), O::MissingField, F::DESCRICAO);
        row("no standard", 3, QString(), O::MissingField, F::PADRAO);
        row("two-letter standard", 3, QStringLiteral("FC"), O::InvalidFlags, F::PADRAO);
        row("interest X", 4, QStringLiteral("X"), O::InvalidFlags, F::JUROS);
        row("block missing", 5, QString(), O::MissingField, F::BLOQUEIO);
        row("block SIM", 5, QStringLiteral("SIM"), O::InvalidFlags, F::BLOQUEIO);
    }

    void refusals() {
        TEST_BACKEND();
        QFETCH(int, field);
        QFETCH(QString, value);
        QFETCH(int, outcome);
        QFETCH(int, focus);
        KindRegistry::Input in = kind(50);
        using I = KindRegistry::Input;
        static constexpr QString I::*kText[] = {nullptr,    &I::idtipo, &I::descricao,
                                                &I::padrao, &I::juros,  &I::bloqueio};
        if (field == 0)
            in.idcod = value.isEmpty() ? std::nullopt : std::optional<int>(value.toInt());
        else
            in.*kText[field] = value;
        const auto r = KindRegistry::gravar(app.ctx(), in, KindRegistry::Mode::Insert);
        QCOMPARE(int(r.outcome), outcome);
        QCOMPARE(int(r.field), focus);
        QCOMPARE(app.count(QStringLiteral("CodBarra")), 0);
    }

    void insertUpdateAndDelete_data() {
        QTest::addColumn<int>("idcod");
        QTest::newRow("first entry") << 1;
        QTest::newRow("last entry") << 99;
        QTest::newRow("first exit") << 100;
        QTest::newRow("last exit") << 999;
    }

    void insertUpdateAndDelete() {
        TEST_BACKEND();
        QFETCH(int, idcod);
        QVERIFY(KindRegistry::gravar(app.ctx(), kind(idcod), KindRegistry::Mode::Insert).ok());
        clsCodBarra k(app.db());
        QVERIFY(k.SQLSelect(idcod));
        QCOMPARE(k.Juros, QStringLiteral("S")); // trimmed and upper-cased
        QCOMPARE(k.BLOQUEIO, QStringLiteral("N"));

        const auto again = KindRegistry::gravar(app.ctx(), kind(idcod), KindRegistry::Mode::Insert);
        QCOMPARE(again.outcome, O::CodeInUse);
        QVERIFY(KindRegistry::gravar(app.ctx(), kind(idcod, QStringLiteral("  OUTRA  ")),
                                     KindRegistry::Mode::Update)
                    .ok());
        QVERIFY(k.SQLSelect(idcod));
        QCOMPARE(k.DESCRICAO, QStringLiteral("OUTRA"));
        QCOMPARE(app.count(QStringLiteral("CodBarra")), 1);

        QCOMPARE(KindRegistry::excluir(app.ctx(), idcod), KindRegistry::DeleteOutcome::Deleted);
        QCOMPARE(KindRegistry::excluir(app.ctx(), idcod), KindRegistry::DeleteOutcome::NotFound);
        QCOMPARE(KindRegistry::gravar(app.ctx(), kind(idcod), KindRegistry::Mode::Update).outcome,
                 O::NotFound);
        QCOMPARE(app.count(QStringLiteral("CodBarra")), 0);
    }
};

QTEST_MAIN(tst_kind_registry)
#include "tst_kind_registry.moc"
