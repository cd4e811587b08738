// The day's bulletin and the period report against the commands that show the same day:
// caixa situacao, caixa recebimentos, conferencia, lancamento listar and estornos. The PDF is
// read back with pdftotext and the CSV summed per day.
#include "CliFolder.h"
#include "Money.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QMap>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>

namespace {

const QString kDia = QStringLiteral("23/11/2026");
const QString kDia2 = QStringLiteral("24/11/2026");
// TAXAS DIVERSAS due 30/11/2026 (31,24), a water slip (89,15), an ISSQN guide of 1.234,56 due
// 10/01/2026 (overdue: charged), and two one-off items.
const QString kTaxas = QStringLiteral("81660000003124004262026113058888888888888888");
const QString kAgua = QStringLiteral("00193165100000089151234500000000000000000000");
const QString kIss = QStringLiteral("81830000012345604272026011000000000000000000");

// A command of `day`, answered in JSON.
CliRun at(const CliFolder& f, const QString& day, const QStringList& args) {
    return f.onDay(day, args + QStringList{QStringLiteral("--json")});
}
CliRun report(const CliFolder& f, const QStringList& args) {
    return f.run(args, f.password() + "\n");
}

Money money(const QJsonValue& v) {
    return *Money::parse(v.toString());
}

QString pdfText(const QString& path) {
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")});
    p.waitForFinished(30000);
    return QString::fromUtf8(p.readAllStandardOutput());
}

} // namespace

class tst_reports_cli : public QObject {
    Q_OBJECT

    CliFolder f;

private slots:
    // A day with receipts of four kinds, an opening, a payment, a withdrawal, a reversal, the
    // closing and a count ten reais short; and a second day with one receipt.
    void initTestCase() {
        QVERIFY(f.ok());
        f.set("Mensagem", "pref", QStringLiteral("PREFEITURA MUNICIPAL DE TOLVANE"));
        QCOMPARE(at(f, kDia, words("caixa abrir")).code, 0);
        QCOMPARE(at(f, kDia, words("lancamento gravar --tipo entrada --item 100:200,00")).code, 0);
        QCOMPARE(at(f, kDia,
                    words("caixa receber --aceitar-vencidas")
                        << kTaxas << kAgua << kIss << words("--avulso 8:5,00"))
                     .code,
                 0);
        QCOMPARE(at(f, kDia, words("caixa receber --avulso 7:15,00:23/11/2026:1/2:LOTE")).code, 0);
        QCOMPARE(at(f, kDia,
                    words("lancamento gravar --tipo sangria --item 100:100,00 "
                          "--item 101:50,00:123"))
                     .code,
                 0);
        QCOMPARE(at(f, kDia,
                    words("lancamento gravar --tipo saida --descricao EMPENHO "
                          "--item 102:30,00"))
                     .code,
                 0);
        const QJsonArray receipts = at(f, kDia, words("caixa recebimentos")).array();
        QCOMPARE(receipts.size(), 5);
        int avulso = 0; // the 5,00 one-off item goes back
        for (const auto& v : receipts)
            if (v.toObject().value(u"valor").toString() == QLatin1String("5,00"))
                avulso = v.toObject().value(u"idrecebe").toInt();
        QCOMPARE(
            at(f, kDia,
               words("recebimento estornar --motivo DUPLICADO --id") << QString::number(avulso))
                .code,
            0);
        QCOMPARE(at(f, kDia, words("caixa encerrar --sem-cupom")).code, 0);
        QCOMPARE(at(f, kDia, words("conferencia --item 100:1.000,00 --item 101:320,00:9")).code, 0);
        QCOMPARE(at(f, kDia2, words("caixa abrir")).code, 0);
        QCOMPARE(at(f, kDia2, words("caixa receber --avulso 8:42,10")).code, 0);
    }

    void bulletinAgreesWithTheDayCommands() {
        const QString pdf = f.path(QStringLiteral("boletim.pdf"));
        const CliRun r = report(f, words("relatorio dia --json --data")
                                       << kDia << QStringLiteral("--pdf") << pdf);
        QCOMPARE(r.code, 0);
        const QJsonObject b = r.json();
        const QJsonObject situacao = at(f, kDia, words("caixa situacao")).json();
        const QJsonObject conf = at(f, kDia, words("conferencia")).json();

        QCOMPARE(b.value(u"status").toString(), QStringLiteral("FECHADO"));
        QCOMPARE(b.value(u"mov").toInt(), situacao.value(u"mov").toInt());
        const QJsonObject rec = b.value(u"recebimentos").toObject();
        QCOMPARE(rec.value(u"total").toString(), situacao.value(u"valor_arrecadado").toString());
        QCOMPARE(rec.value(u"quantidade").toInt(), situacao.value(u"recebimentos").toInt());

        // Per kind, against the day's receipts grouped by their description.
        QMap<QString, Money> byKind;
        for (const auto& v : at(f, kDia, words("caixa recebimentos")).array())
            byKind[v.toObject().value(u"descricao").toString()] +=
                money(v.toObject().value(u"valor"));
        QMap<QString, Money> reported;
        Money face;
        Money charges;
        for (const auto& v : rec.value(u"por_tipo").toArray()) {
            const QJsonObject k = v.toObject();
            reported[k.value(u"descricao").toString()] = money(k.value(u"total"));
            QCOMPARE(money(k.value(u"valor_face")) + money(k.value(u"encargos")),
                     money(k.value(u"total")));
            face += money(k.value(u"valor_face"));
            charges += money(k.value(u"encargos"));
        }
        QCOMPARE(reported, byKind);
        QCOMPARE((face + charges).format(), rec.value(u"total").toString());
        // Only the overdue ISSQN guide was charged; the others were paid at face value.
        for (const auto& v : rec.value(u"por_tipo").toArray()) {
            const QJsonObject k = v.toObject();
            if (k.value(u"descricao").toString() == QLatin1String("ISSQN")) {
                QCOMPARE(k.value(u"valor_face").toString(), QStringLiteral("1.234,56"));
                QVERIFY(money(k.value(u"encargos")) > Money());
            } else {
                QCOMPARE(k.value(u"encargos").toString(), QStringLiteral("0,00"));
            }
        }
        QCOMPARE(b.value(u"avulsos").toArray().size(), 1); // the 5,00 one was reversed
        QCOMPARE(b.value(u"avulsos").toArray()[0].toObject().value(u"parcela").toString(),
                 QStringLiteral("1/2"));

        const QJsonObject c = b.value(u"conferencia").toObject();
        for (const char* k : {"arrecadacao", "lancamentos", "suprimento", "contado", "diferenca"})
            QCOMPARE(c.value(QLatin1String(k)).toString(), conf.value(QLatin1String(k)).toString());
        QCOMPARE(c.value(u"itens").toArray().size(), conf.value(u"itens").toArray().size());
        QVERIFY(money(c.value(u"diferenca")) != Money());
        QCOMPARE(b.value(u"sangrias").toObject().value(u"total").toString(),
                 QStringLiteral("150,00"));
        QCOMPARE(b.value(u"sangrias")
                     .toObject()
                     .value(u"lancamentos")
                     .toArray()[0]
                     .toObject()
                     .value(u"itens")
                     .toArray()
                     .size(),
                 2);
        QCOMPARE(b.value(u"entradas").toObject().value(u"total").toString(),
                 situacao.value(u"entrada").toString());
        QCOMPARE((money(b.value(u"sangrias").toObject().value(u"total")) +
                  money(b.value(u"pagamentos").toObject().value(u"total")))
                     .format(),
                 situacao.value(u"saida").toString());

        const QJsonArray corr = b.value(u"correcoes").toArray();
        QCOMPARE(corr.size(), 1);
        QCOMPARE(corr[0].toObject().value(u"operacao").toString(), QStringLiteral("estorno"));
        QCOMPARE(corr[0].toObject().value(u"motivo").toString(), QStringLiteral("DUPLICADO"));
        QVERIFY(!corr[0].toObject().value(u"autorizado_por").toString().isEmpty());
        const QString seal = b.value(u"selo").toString();
        QCOMPARE(seal.size(), 64);

        if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
            QSKIP("pdftotext (poppler-utils) is not installed");
        const QString text = pdfText(pdf);
        for (const QString& figure :
             {rec.value(u"total").toString(), c.value(u"diferenca").toString(),
              c.value(u"contado").toString(), QStringLiteral("150,00"), QStringLiteral("DUPLICADO"),
              QStringLiteral("PREFEITURA MUNICIPAL DE TOLVANE"), QStringLiteral("Tesoureiro"),
              seal.left(32)})
            QVERIFY2(text.contains(figure), qPrintable(figure));
        for (const auto& v : rec.value(u"por_tipo").toArray())
            QVERIFY(text.contains(v.toObject().value(u"total").toString()));
    }

    void anOpenDayIsComparedAsItStandsAndHasNoSeal() {
        const CliRun r = report(f, words("relatorio dia --json --data") << kDia2);
        QCOMPARE(r.code, 0);
        QCOMPARE(r.json().value(u"selo"), QJsonValue(QJsonValue::Null));
        const QJsonObject c = r.json().value(u"conferencia").toObject();
        QVERIFY(c.value(u"provisoria").toBool());
        QCOMPARE(c.value(u"arrecadacao").toString(), QStringLiteral("42,10"));
    }

    void periodCsvSumsToTheDays() {
        const QString csv = f.path(QStringLiteral("periodo.csv"));
        const QString pdf = f.path(QStringLiteral("periodo.pdf"));
        const CliRun r =
            report(f, words("relatorio periodo --json --de 01/11/2026 --ate 30/11/2026 --csv")
                          << csv << QStringLiteral("--pdf") << pdf);
        QCOMPARE(r.code, 0);
        QFile file(csv);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        QVERIFY(bytes.startsWith("\xEF\xBB\xBF"));
        const QStringList lines =
            QString::fromUtf8(bytes.mid(3)).split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
        QMap<QString, Money> perDay;
        for (const QString& l : lines.mid(1)) {
            const QStringList cols = l.split(QLatin1Char(';'));
            QCOMPARE(cols.size(), 8);
            QVERIFY(!cols[7].contains(QLatin1Char('.'))); // no thousands mark
            perDay[cols[0]] += *Money::parse(cols[7]);
        }
        QCOMPARE(perDay.size(), 2);
        for (const QString& day : {kDia, kDia2}) {
            const QJsonObject day1 = report(f, words("relatorio dia --json --data") << day).json();
            QCOMPARE(perDay.value(day).format(),
                     day1.value(u"recebimentos").toObject().value(u"total").toString());
        }
        QCOMPARE(r.json().value(u"total").toString(),
                 (perDay.value(kDia) + perDay.value(kDia2)).format());
        QVERIFY(QFile::exists(pdf));
    }

    void anExistingFileIsNeverReplaced_data() {
        QTest::addColumn<QStringList>("args");
        QTest::newRow("dia --pdf")
            << (words("relatorio dia --data") << kDia << QStringLiteral("--pdf"));
        QTest::newRow("periodo --pdf")
            << words("relatorio periodo --de 01/11/2026 --ate 30/11/2026 --pdf");
        QTest::newRow("periodo --csv")
            << words("relatorio periodo --de 01/11/2026 --ate 30/11/2026 --csv");
    }

    void anExistingFileIsNeverReplaced() {
        QFETCH(QStringList, args);
        const QString path = f.path(QStringLiteral("existente.txt"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write("do operador");
        file.close();
        const CliRun r = report(f, args << path);
        QCOMPARE(r.code, 1);
        QVERIFY2(r.err.contains(QStringLiteral("já existe e não será substituído")),
                 qPrintable(r.err));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("do operador"));
    }

    void refusals_data() {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("message");
        QTest::newRow("day without movement")
            << words("relatorio dia --data 20/11/2026") << 1
            << QStringLiteral("Não foi encontrado nenhum movimento com essa data!!");
        QTest::newRow("period reversed")
            << words("relatorio periodo --de 30/11/2026 --ate 01/11/2026") << 1
            << QStringLiteral("A data final deve ser igual ou posterior à inicial.");
        QTest::newRow("period without dates") << words("relatorio periodo --de 01/11/2026") << 2
                                              << QStringLiteral("Use --ate DD/MM/AAAA.");
    }

    void refusals() {
        QFETCH(QStringList, args);
        QFETCH(int, code);
        QFETCH(QString, message);
        const CliRun r = report(f, args);
        QCOMPARE(r.code, code);
        QVERIFY2(r.err.contains(message), qPrintable(r.err));
    }
};

QTEST_GUILESS_MAIN(tst_reports_cli)
#include "tst_reports_cli.moc"
