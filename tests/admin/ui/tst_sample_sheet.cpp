// The sheet of sample guides: its barcodes read back from the PDF by a barcode reader, and every
// guide taking at the counter the path the sheet says it takes.
#include "CounterSession.h"
#include "DemoData.h"
#include "Interleaved2of5.h"
#include "SampleSheet.h"
#include "TestApp.h"
#include "TextFile.h"
#include "TypedLine.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>

namespace {

QStringList run(const QString& program, const QStringList& args, const QString& dir) {
    QProcess p;
    p.setWorkingDirectory(dir);
    p.start(program, args);
    if (!p.waitForFinished(60000) || p.exitStatus() != QProcess::NormalExit)
        return {};
    return QString::fromLatin1(p.readAllStandardOutput())
        .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace

class tst_sample_sheet : public QObject {
    Q_OBJECT
private slots:
    void elements_data() {
        QTest::addColumn<QString>("digits");
        QTest::addColumn<QList<int>>("widths");
        // Start 1010, "1" in the bars (wide, n, n, n, wide), "2" in the spaces (n, wide, n, n,
        // wide), stop: wide bar, narrow space, narrow bar.
        QTest::newRow("12") << "12"
                            << QList<int>{1, 1, 1, 1, 3, 1, 1, 3, 1, 1, 1, 1, 3, 3, 3, 1, 1};
        QTest::newRow("odd") << "123" << QList<int>{};
        QTest::newRow("letter") << "1A" << QList<int>{};
        QTest::newRow("empty") << "" << QList<int>{};
    }
    void elements() {
        QFETCH(QString, digits);
        QFETCH(QList<int>, widths);
        QCOMPARE(Interleaved2of5::elements(digits), widths);
    }

    // Each pair of digits takes 18 modules (two wide of three in bars and in spaces).
    void aGuideIsFourHundredFiveModules() {
        const QString code = SampleSheet::guides(QDate(2026, 11, 23)).first().codigo;
        QCOMPARE(Interleaved2of5::modules(Interleaved2of5::elements(code)), 4 + 22 * 18 + 5);
    }

    void barcodesReadBackFromThePdf() {
        const QString pdftoppm = QStandardPaths::findExecutable(QStringLiteral("pdftoppm"));
        const QString zbarimg = QStandardPaths::findExecutable(QStringLiteral("zbarimg"));
        QVERIFY2(!pdftoppm.isEmpty() && !zbarimg.isEmpty(),
                 "pdftoppm and zbarimg (poppler-utils, zbar-tools) are installed by install-deps");
        QTemporaryDir dir;
        const QDate today(2026, 11, 23);
        const SampleSheet::Written w = SampleSheet::write(dir.path(), today);
        QVERIFY2(w.ok(), qPrintable(w.error));
        QVERIFY(w.created);
        run(pdftoppm,
            {QStringLiteral("-r"), QStringLiteral("200"), QStringLiteral("-png"), w.pdf,
             QStringLiteral("page")},
            dir.path());
        const QStringList pages =
            QDir(dir.path()).entryList({QStringLiteral("page-*.png")}, QDir::Files);
        QCOMPARE(pages.size(), 2);
        QStringList args{QStringLiteral("--raw"), QStringLiteral("-q"), QStringLiteral("-Sdisable"),
                         QStringLiteral("-Si25.enable")};
        QStringList read = run(zbarimg, args + pages, dir.path());
        QStringList printed;
        for (const SampleSheet::Guide& g : SampleSheet::guides(today))
            if (g.barras)
                printed << g.codigo;
        printed.removeDuplicates(); // the paid guide is the first one's second copy
        read.removeDuplicates();
        read.sort();
        printed.sort();
        QCOMPARE(read, printed);

        // The text file carries the same codes and the typed lines.
        const QString text = TextFile::readLines(w.txt).join(QLatin1Char('\n'));
        for (const SampleSheet::Guide& g : SampleSheet::guides(today)) {
            QVERIFY(text.contains(g.titulo + QLatin1Char('\n') + g.explicacao));
            if (g.barras)
                QVERIFY(text.contains(g.codigo));
            // The printed line, read back as the counter reads a typed line, is the code.
            const QString label = QStringLiteral("Linha digitável: ");
            const qsizetype at = text.indexOf(label, text.indexOf(g.explicacao));
            const QString linha = text.mid(at + label.size()).section(QLatin1Char('\n'), 0, 0);
            QCOMPARE(TypedLine::toBarcode(linha).barcode, g.codigo);
        }
    }

    void filesAlreadyThereAreLeft() {
        QTemporaryDir dir;
        QFile mine(dir.filePath(SampleSheet::kPdf));
        QVERIFY(mine.open(QIODevice::WriteOnly));
        mine.write("not the program's");
        mine.close();
        const SampleSheet::Written w = SampleSheet::write(dir.path(), QDate(2026, 11, 23));
        QVERIFY(w.ok());
        QVERIFY(w.created); // the text file was missing
        QVERIFY(mine.open(QIODevice::ReadOnly));
        QCOMPARE(mine.readAll(), QByteArray("not the program's"));
        QVERIFY(QFile::exists(w.txt));
        QVERIFY(!SampleSheet::write(dir.path(), QDate(2026, 11, 24)).created);
    }

    // What the sheet promises, read at a counter with the demonstration's kinds of guide.
    void everyGuideTakesItsPath() {
        TestApp app;
        app.setOption(QStringLiteral("Opcoes"), QStringLiteral("juros"), QStringLiteral("1"));
        QVERIFY(DemoData::seed(app.ctx(), nullptr, nullptr));
        const QDate today = app.clock().today();
        const QList<SampleSheet::Guide> g = SampleSheet::guides(today);
        QCOMPARE(g.size(), 8);
        CounterSession s(app.ctx(), nullptr);
        app.ctx().userName = QStringLiteral("ANA");
        app.ctx().workingDate = today;
        QVERIFY(s.day().abrir());
        using O = CounterSession::Outcome;

        auto r = s.ler(g[0].codigo); // on time
        QVERIFY(r.accepted);
        QCOMPARE(s.list().total().format(), QStringLiteral("150,00"));

        r = s.ler(g[1].codigo); // overdue: consent, then charges
        QVERIFY(r.precisaConsentimento);
        r = s.continuar(true);
        QVERIFY(r.accepted);
        QVERIFY(r.encargos && r.encargos->vencida);
        QVERIFY(r.encargos->total > r.encargos->valor);
        QCOMPARE(s.list().total(), *Money::parse(QStringLiteral("150,00")) + r.encargos->total);

        r = s.ler(g[2].codigo); // earlier year, blocked
        QCOMPARE(r.resultado, O::Bloqueada);
        QVERIFY(!r.accepted);

        r = s.ler(g[3].codigo); // the same guide as the first, in the same sum
        QCOMPARE(r.resultado, O::Lancada);
        QVERIFY(r.mensagens.contains(QStringLiteral("Conta já Lançada!!!")));

        r = s.ler(g[4].codigo); // bank slip
        QVERIFY(r.accepted);
        r = s.ler(g[5].codigo); // slip with no due date
        QVERIFY(r.accepted);
        QVERIFY(!r.encargos || !r.encargos->vencida);
        QVERIFY(!g[6].barras);
        r = s.lerLinha(g[6].linha); // typed line
        QVERIFY(r.accepted);
        r = s.ler(g[7].codigo); // unknown kind
        QCOMPARE(r.resultado, O::Desconhecida);
        QVERIFY(!r.accepted);
        QCOMPARE(s.list().size(), 5);

        QVERIFY(s.gravar());
        r = s.ler(g[3].codigo); // already paid
        QCOMPARE(r.resultado, O::Recebida);
        QVERIFY(r.mensagens.contains(QStringLiteral("Conta já Recebida!!!")));
    }
};

QTEST_MAIN(tst_sample_sheet)
#include "tst_sample_sheet.moc"
