// What the export reads and writes in the database, on both engines: the receipts of a movement
// and kind by mark, the marks stored all or none, the kinds by standard, the files' sequence.
#include "DemoData.h"
#include "ExportMarks.h"
#include "TestApp.h"
#include "clsCodBarra.h"
#include "clsRecebimentos.h"
#include "clsSequenciaArquivo.h"

namespace {
qint32 add(TestApp& app, int mov, int tipo, int aut, const QString& code, int exportFlag) {
    clsRecebimentos r(app.db());
    r.IDMOVIMENTO = qint16(mov);
    r.TIPO = qint16(tipo);
    r.AUTENTICA = qint16(aut);
    r.CODBARRA = code;
    r.EXPORT = qint16(exportFlag);
    r.VALOR = Money::fromCents(100 * aut);
    return r.SQLInsert() ? r.IDRECEBE : 0;
}

QList<qint32> ids(const std::optional<QList<clsRecebimentos>>& rows) {
    QList<qint32> out;
    for (const auto& r : rows.value_or(QList<clsRecebimentos>()))
        out << r.IDRECEBE;
    return out;
}
} // namespace

// A code is received only once: every receipt here gets its own.
QString codeNo(int n) {
    return QString(42, QLatin1Char('7')) + QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0'));
}

class tst_export_records : public QObject {
    Q_OBJECT
private slots:
    void initTestCase_data() { addBackendRows(); }

    void listingByMovementKindAndMark() {
        TEST_BACKEND();
        QVERIFY(DemoData::seed(app.ctx(), nullptr, nullptr));
        const qint32 a3 = add(app, 1, 4, 3, codeNo(1), 0);
        const qint32 a1 = add(app, 1, 4, 1, codeNo(2), 0);
        const qint32 rejected = add(app, 1, 4, 2, codeNo(3), 1);
        add(app, 2, 4, 1, codeNo(4), 0);  // another movement
        add(app, 1, 5, 4, codeNo(5), 0);  // another kind
        add(app, 1, 99, 5, codeNo(6), 0); // a kind that does not exist
        const qint32 zeros = add(app, 1, 4, 6, clsRecebimentos::kSemCodigo, 0); // forced to 1
        QCOMPARE(ids(clsRecebimentos::listarExportacao(app.db(), 1, 4, 0)),
                 (QList<qint32>{a1, a3}));
        QCOMPARE(ids(clsRecebimentos::listarExportacao(app.db(), 1, 4, 1)),
                 (QList<qint32>{rejected, zeros}));
        QCOMPARE(ids(clsRecebimentos::listarExportacao(app.db(), 1, 99, 0)), QList<qint32>());
        const auto rows = clsRecebimentos::listarExportacao(app.db(), 1, 4, 0);
        QCOMPARE(rows->at(1).AUTENTICA, qint16(3));
        QCOMPARE(rows->at(1).VALOR, Money::fromCents(300));
        QCOMPARE(rows->at(1).CODBARRA, codeNo(1));
        QCOMPARE(rows->at(1).EXPORT, qint16(0));
    }

    // The marks of a list are stored together: one failing update leaves every mark as it was.
    void marksAllOrNone() {
        TEST_BACKEND();
        QVERIFY(DemoData::seed(app.ctx(), nullptr, nullptr));
        const qint32 a = add(app, 1, 4, 1, codeNo(7), 0);
        const qint32 b = add(app, 1, 4, 2, codeNo(8), 0);
        const qint32 c = add(app, 1, 4, 3, codeNo(9), 1);
        const QList<ExportMarks::Linha> confirmados = {{a, true}, {b, false}};
        QVERIFY(ExportMarks::gravar(
            app.ctx(), ExportMarks::marcas(ExportMarks::Lista::Confirmados, confirmados)));
        QCOMPARE(ids(clsRecebimentos::listarExportacao(app.db(), 1, 4, 1)), (QList<qint32>{a, c}));
        int updates = 0;
        app.db().faultHook = [&](const QString& sql) {
            return sql.startsWith(QLatin1String("UPDATE Recebimentos SET EXPORT")) &&
                   ++updates == 2;
        };
        QVERIFY(!ExportMarks::gravar(app.ctx(), ExportMarks::marcas(ExportMarks::Lista::Rejeitados,
                                                                    {{a, true}, {c, true}})));
        app.db().faultHook = nullptr;
        QCOMPARE(ids(clsRecebimentos::listarExportacao(app.db(), 1, 4, 1)), (QList<qint32>{a, c}));
        QVERIFY(ExportMarks::gravar(app.ctx(), ExportMarks::marcas(ExportMarks::Lista::Rejeitados,
                                                                   {{a, true}, {c, true}})));
        QCOMPARE(ids(clsRecebimentos::listarExportacao(app.db(), 1, 4, 0)),
                 (QList<qint32>{a, b, c}));
    }

    void marksByIdStayInTheMovement() {
        TEST_BACKEND();
        QVERIFY(DemoData::seed(app.ctx(), nullptr, nullptr));
        const qint32 a = add(app, 1, 4, 1, codeNo(10), 0);
        const qint32 other = add(app, 2, 4, 1, codeNo(11), 0);
        const Outcome refused = ExportMarks::gravarIds(app.ctx(), 1, {a, other}, 1);
        QVERIFY(!refused);
        QCOMPARE(refused.notice.text,
                 QStringLiteral("Recebimento %1 não encontrado neste movimento.").arg(other));
        QCOMPARE(refused.notice.icon, DialogIcon::Critical);
        QVERIFY(!ExportMarks::gravarIds(app.ctx(), 1, {a, 999}, 1));
        QCOMPARE(app.count(QStringLiteral("Recebimentos"), QStringLiteral("EXPORT = 1")), 0);
        QVERIFY(ExportMarks::gravarIds(app.ctx(), 1, {a}, 1));
        QCOMPARE(app.count(QStringLiteral("Recebimentos"), QStringLiteral("EXPORT = 1")), 1);
    }

    void kindsByStandard() {
        TEST_BACKEND();
        QVERIFY(DemoData::seed(app.ctx(), nullptr, nullptr));
        QStringList names;
        const auto kinds = clsCodBarra::listarPorPadrao(app.db(), QStringLiteral("F"));
        QVERIFY(kinds);
        for (const auto& k : *kinds)
            names << QStringLiteral("%1 %2 %3").arg(k.IDCOD).arg(k.DESCRICAO, k.CODBANCO);
        QCOMPARE(names, (QStringList{QStringLiteral("1 IPTU 0425"), QStringLiteral("3 ISSQN 0427"),
                                     QStringLiteral("2 TAXAS DIVERSAS 0426")}));
        QCOMPARE(clsCodBarra::listarPorPadrao(app.db(), QStringLiteral("c"))->size(), 2);
    }

    void fileSequencePerBank() {
        TEST_BACKEND();
        QCOMPARE(clsSequenciaArquivo::ultimo(app.db(), QStringLiteral("104")), 0);
        QCOMPARE(clsSequenciaArquivo::proximo(app.db(), QStringLiteral("104")), 1);
        QCOMPARE(clsSequenciaArquivo::proximo(app.db(), QStringLiteral("104")), 2);
        QCOMPARE(clsSequenciaArquivo::proximo(app.db(), QStringLiteral("001")), 1);
        QCOMPARE(clsSequenciaArquivo::ultimo(app.db(), QStringLiteral("104")), 2);
        QVERIFY(app.db().SQLExecute(
            QStringLiteral("UPDATE SequenciaArquivo SET NSA = 999999 WHERE BANCO = '001'")));
        QCOMPARE(clsSequenciaArquivo::proximo(app.db(), QStringLiteral("001")), 1);
        app.db().faultHook = [](const QString& sql) {
            return sql.startsWith(QLatin1String("UPDATE SequenciaArquivo"));
        };
        QCOMPARE(clsSequenciaArquivo::proximo(app.db(), QStringLiteral("104")), std::nullopt);
        app.db().faultHook = nullptr;
        QCOMPARE(clsSequenciaArquivo::proximo(app.db(), QStringLiteral("104")), 3);
    }
};

QTEST_MAIN(tst_export_records)
#include "tst_export_records.moc"
