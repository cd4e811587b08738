// The bank files from the command line, as a back office uses it: receipts taken with
// `caixa receber` on a demo folder with a filled [Export] section, marks changed by id, and both
// files read back record by record.
#include "BankFileReader.h"
#include "CliFolder.h"
#include "TestCodes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QTest>

namespace {
using BR = BankFileReader;

const QString kData = QStringLiteral("23/11/2026");

// The [Export] section of a counter that writes bank files into its own folder.
void exportSettings(const CliFolder& f) {
    for (const auto& [k, v] : QList<QPair<const char*, QString>>{
             {"Path3", f.path(QStringLiteral("Export"))},
             {"caminho_febraban", f.path(QStringLiteral("Febraban"))},
             {"cod_banco_cnab", QStringLiteral("104")},
             {"nome_banco", QStringLiteral("BANCO DA PRACA")},
             {"cedente_agua", QStringLiteral("112233")},
             {"cedente_iptu", QStringLiteral("445566")},
             {"agencia", QStringLiteral("321")},
             {"dv", QStringLiteral("X")},
             {"cnpj", QStringLiteral("98765432000110")},
             {"guiche", QStringLiteral("C")}})
        f.set(QStringLiteral("Export"), QLatin1String(k), v);
    QDir().mkpath(f.path(QStringLiteral("Export")));
    QDir().mkpath(f.path(QStringLiteral("Febraban")));
}
// A cashier's command on the test day.
CliRun cashier(const CliFolder& f, QStringList args) {
    return f.asAdmin(args << QStringLiteral("--data") << kData);
}

// Each record of a file against the one expected, field by field.
void sameRecords(const QStringList& lines, const QList<QList<BR::Field>>& expected, int width) {
    QCOMPARE(lines.size(), expected.size());
    for (int i = 0; i < lines.size(); ++i)
        QCOMPARE(BR::differences(lines[i], expected[i], width), QString());
}

QStringList ids(const QJsonArray& a) {
    QStringList out;
    for (const auto& v : a)
        out << QString::number(v.toObject().value(u"idrecebe").toInt());
    return out;
}
} // namespace

class tst_export_cli : public QObject {
    Q_OBJECT
private slots:
    void bothFilesFromReceivedCodes() {
        CliFolder f;
        exportSettings(f);
        const QString slipA =
            TestCodes::slip(1651, 8915, QStringLiteral("12345"), QStringLiteral("111333555555555"),
                            QStringLiteral("24"));
        const QString slipB =
            TestCodes::slip(1660, 2000, QStringLiteral("12345"), QStringLiteral("222444666666666"),
                            QStringLiteral("57"));
        const auto guide = [](int cents, const char* due, char fill) {
            return TestCodes::guide(QStringLiteral("0425"), cents, QLatin1String(due),
                                    QString(17, QLatin1Char(fill)));
        };
        const QString guideA = guide(45678, "20261201", '3');
        const QString guideB = guide(100, "20261202", '4');
        QCOMPARE(cashier(f, words("caixa abrir")).code, 0);
        const CliRun rec = cashier(f, words("caixa receber")
                                          << slipA << guideA << slipB << guideB << words("--json"));
        QCOMPARE(rec.code, 0);
        QCOMPARE(rec.json().value(u"gravados").toArray().size(), 4);

        CliRun r = cashier(f, words("exportar listar --tipo 1 --json"));
        QCOMPARE(r.code, 0);
        const QJsonArray guides = r.array();
        QCOMPARE(guides.size(), 2);
        const QJsonObject first = guides.at(0).toObject();
        QCOMPARE(first.value(u"autentica").toInt(), 2);
        QCOMPARE(first.value(u"valor").toString(), QStringLiteral("456,78"));
        QCOMPARE(first.value(u"codbarra").toString(), guideA);
        QCOMPARE(first.value(u"export").toInt(), 0);

        // The second guide leaves the file, comes back, and leaves again.
        const QString second = ids(guides).at(1);
        const QStringList rejeitar = words("exportar rejeitar --id") << second;
        QCOMPARE(cashier(f, rejeitar).code, 0);
        r = cashier(f, words("exportar listar --tipo 1 --rejeitados --json"));
        QCOMPARE(ids(r.array()), QStringList{second});
        QCOMPARE(r.array().at(0).toObject().value(u"export").toInt(), 1);
        QCOMPARE(cashier(f, words("exportar confirmar --id") << second).code, 0);
        QCOMPARE(cashier(f, rejeitar + words("999")).code, 1);
        QCOMPARE(cashier(f, rejeitar).code, 0);

        r = cashier(f, words("exportar febraban --tipo 1 --banco 033 --json"));
        QCOMPARE(r.code, 0);
        QJsonObject o = r.json();
        QCOMPARE(o.value(u"registros").toInt(), 3);
        QCOMPARE(o.value(u"total").toString(), QStringLiteral("456,78"));
        QCOMPARE(o.value(u"erros").toArray().size(), 0);
        QString file = o.value(u"arquivo").toString();
        QVERIFY2(QFileInfo(file).fileName().startsWith(QStringLiteral("FebCXCIPTU_033_")),
                 qPrintable(file));
        sameRecords(
            BR::records(file),
            {BR::febHeader({QStringLiteral("033"), QStringLiteral("BANCO DA PRACA      "),
                            QStringLiteral("20261123"), QStringLiteral("261123")}),
             BR::febDetalhe(QStringLiteral("20261123"), guideA, QStringLiteral("000000045678"), 1),
             BR::febTrailer(3, QStringLiteral("00000000000045678"))},
            150);

        r = cashier(f, words("exportar cnab --tipo 4 --json"));
        QCOMPARE(r.code, 0);
        o = r.json();
        QCOMPARE(o.value(u"registros").toInt(), 8);
        QCOMPARE(o.value(u"total").toString(), QStringLiteral("109,15"));
        file = o.value(u"arquivo").toString();
        QVERIFY(QFileInfo(file).fileName().startsWith(QStringLiteral("CnabAGUA")));
        QCOMPARE(QFileInfo(file).absolutePath(), f.path(QStringLiteral("Export")));
        const QStringList lines = BR::records(file);
        QVERIFY(!lines.isEmpty());
        const BR::Cnab e{QStringLiteral("104"),
                         QStringLiteral("98765432000110"),
                         QStringLiteral("00321"),
                         QStringLiteral("X"),
                         QStringLiteral("112233"),
                         QStringLiteral("PREFEITURA MUNICIPAL          "),
                         QStringLiteral("BANCO DA PRACA                "),
                         QStringLiteral("23112026"),
                         lines[0].mid(151, 6), // the time of the run
                         QStringLiteral("000001")};
        const BR::Boleto a{QStringLiteral("24"),          QStringLiteral("111333555555555"),
                           QStringLiteral("05122026"),    QStringLiteral("000000000008915"),
                           QString(15, QLatin1Char('0')), QStringLiteral("000000000008915")};
        const BR::Boleto b{QStringLiteral("57"),          QStringLiteral("222444666666666"),
                           QStringLiteral("14122026"),    QStringLiteral("000000000002000"),
                           QString(15, QLatin1Char('0')), QStringLiteral("000000000002000")};
        sameRecords(lines,
                    {BR::cnabHeaderArquivo(e), BR::cnabHeaderLote(e), BR::cnabSegmentoT(e, 1, a),
                     BR::cnabSegmentoU(e, 2, a), BR::cnabSegmentoT(e, 3, b),
                     BR::cnabSegmentoU(e, 4, b), BR::cnabTrailerLote(e, 6),
                     BR::cnabTrailerArquivo(e, 8)},
                    240);
    }

    // Two CNAB runs back to back: two files of one header each, numbers 1 and 2; the receipt
    // lists both; reversing it says which file carried it, and the yearly log, lost, comes
    // back from the database when `estornos` reads it.
    void runsOfOneMinuteAndTheirReceipts() {
        CliFolder f;
        exportSettings(f);
        const QString slip =
            TestCodes::slip(1651, 8915, QStringLiteral("12345"), QStringLiteral("111333555555555"),
                            QStringLiteral("24"));
        QCOMPARE(cashier(f, words("caixa abrir")).code, 0);
        QCOMPARE(cashier(f, words("caixa receber") << slip).code, 0);
        QStringList files;
        for (int nsa = 1; nsa <= 2; ++nsa) {
            const CliRun r = cashier(f, words("exportar cnab --tipo 4 --json"));
            QCOMPARE(r.code, 0);
            QCOMPARE(r.json().value(u"nsa").toInt(), nsa);
            files << r.json().value(u"arquivo").toString();
            const QStringList lines = BR::records(files.last());
            QCOMPARE(lines.size(), 6);
            QCOMPARE(lines[0].mid(157, 6), QStringLiteral("%1").arg(nsa, 6, 10, QLatin1Char('0')));
        }
        QVERIFY(files[0] != files[1]);
        QCOMPARE(QDir(f.path(QStringLiteral("Export"))).entryList({QStringLiteral("Cnab*")}).size(),
                 2);

        CliRun r = cashier(f, words("exportar listar --tipo 4 --json"));
        const QJsonObject row = r.array().at(0).toObject();
        const QJsonArray carried = row.value(u"arquivos").toArray();
        QCOMPARE(carried.size(), 2);
        QCOMPARE(carried.at(1).toObject().value(u"arquivo").toString(),
                 QFileInfo(files[1]).fileName());
        QCOMPARE(carried.at(1).toObject().value(u"nsa").toInt(), 2);

        const QString id = QString::number(row.value(u"idrecebe").toInt());
        r = cashier(f, words("recebimento estornar --motivo dobro --json --id") << id);
        QCOMPARE(r.code, 0);
        const QString sent =
            QStringLiteral("%1 (NSA 1), %2 (NSA 2)")
                .arg(QFileInfo(files[0]).fileName(), QFileInfo(files[1]).fileName());
        QCOMPARE(r.json().value(u"arquivo_banco").toString(), sent);
        QVERIFY2(r.err.contains(QStringLiteral("já foi enviado ao banco no arquivo ") + sent),
                 qPrintable(r.err));
        const QString log = r.json().value(u"registro").toString();
        QVERIFY(QFile::remove(log));
        r = f.run(words("estornos --json"));
        QCOMPARE(r.code, 0);
        const QJsonArray entries =
            r.json().value(u"anos").toArray().at(0).toObject().value(u"entradas").toArray();
        QCOMPARE(entries.size(), 1);
        QCOMPARE(entries.at(0).toObject().value(u"motivo").toString(), QStringLiteral("dobro"));
        QCOMPARE(f.run(words("estornos --json"))
                     .json()
                     .value(u"anos")
                     .toArray()
                     .at(0)
                     .toObject()
                     .value(u"entradas")
                     .toArray()
                     .size(),
                 1);
    }

    void refusals() {
        CliFolder f;
        exportSettings(f);
        QCOMPARE(cashier(f, words("caixa abrir")).code, 0);
        for (const char* bad : {"12", "1234", "1a2"}) {
            const CliRun r = cashier(f, words("exportar febraban --tipo 1 --banco") + words(bad));
            QCOMPARE(r.code, 1);
            QVERIFY(r.err.contains(QStringLiteral("Código do banco não informado!!")));
        }
        // Without --banco the kind's own code is used: the demo's IPTU has four digits.
        QCOMPARE(cashier(f, words("exportar febraban --tipo 1")).code, 1);
        f.set(QStringLiteral("Export"), QStringLiteral("cnpj"), QStringLiteral("1234567800011"));
        CliRun r = cashier(f, words("exportar cnab --tipo 4 --json"));
        QCOMPARE(r.code, 1);
        QCOMPARE(r.json().value(u"erros").toArray().size(), 2);
        QVERIFY(r.err.contains(QStringLiteral("Erro ao gerar header do CNAB -> 0")));
        QCOMPARE(QDir(f.path(QStringLiteral("Export"))).entryList({QStringLiteral("Cnab*")}),
                 QStringList());
        QCOMPARE(cashier(f, words("exportar cnab")).code, 2);
        QCOMPARE(cashier(f, words("exportar rejeitar")).code, 2);
        QCOMPARE(f.run(words("exportar listar --tipo 1"), "errada\n").code, 1);
    }
};

QTEST_MAIN(tst_export_cli)
#include "tst_export_cli.moc"
