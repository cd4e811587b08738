// The bank-file runs over receipts recorded by the counter: every record read back by the
// tests' own layout tables, counts and totals, file names, the settings, bad codes and bad
// settings, folders, a file of its own for each run, its sequence number and the temporary files.
#include "BankFileReader.h"
#include "BankFileWriter.h"
#include "CnabExport.h"
#include "ExportMarks.h"
#include "FebrabanExport.h"
#include "OpenCounter.h"
#include "ReceiptCorrections.h"
#include "TestCodes.h"
#include "Transaction.h"
#include "clsArquivoBanco.h"
#include "clsRecebimentos.h"
#include "clsSequenciaArquivo.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QScopeGuard>
#include <unistd.h>

namespace {

using BR = BankFileReader;
const QDate kDia(2026, 11, 23);
const int kAgua = 4;     // CNAB kind "AGUA E ESGOTO", IDTIPO 12345
const int kMelhoria = 5; // CNAB kind "CONTRIBUICAO DE MELHORIA", IDTIPO 54321
const int kTaxas = 2;    // Febraban kind "TAXAS DIVERSAS", IDTIPO 0426
const int kIssqn = 3;    // Febraban kind "ISSQN", IDTIPO 0427

// The open counter with a filled [Export] section, at guiche B, operator CAIXA.
struct BankCounter : OpenCounter {
    qint32 mov = 0;

    BankCounter() {
        QVERIFY(seeded);
        QVERIFY(QDir(app.folder()).mkpath(QStringLiteral("Export")));
        QVERIFY(QDir(app.folder()).mkpath(QStringLiteral("Febraban")));
        const QList<QPair<const char*, const char*>> options = {
            {"Path3", "Export/"},       {"caminho_febraban", "Febraban"},
            {"cod_banco_cnab", "104"},  {"nome_banco", "CAIXA ECONOMICA FEDERAL DO BRASIL"},
            {"cedente_agua", "123456"}, {"cedente_iptu", "654321"},
            {"agencia", "1234"},        {"dv", "7"},
            {"cnpj", "12345678000199"}, {"guiche", "B"}};
        for (const auto& [k, v] : options)
            app.setOption(QStringLiteral("Export"), QLatin1String(k), QLatin1String(v));
        app.setOption(QStringLiteral("Mensagem"), QStringLiteral("pref"),
                      QStringLiteral("PREFEITURA MUNICIPAL DE VILA NOVA"));
        app.ctx().userName = QStringLiteral("CAIXA");
        QVERIFY(open());
        mov = session.day().movimento().ID;
    }

    // A receipt written as it is stored, for codes the counter would not read.
    qint32 insert(int tipo, const QString& code, const char* valor, int exportFlag = 0) {
        clsRecebimentos r(app.db());
        r.AUTENTICA = 90 + app.count(QStringLiteral("Recebimentos"));
        r.CODBARRA = code;
        r.IDMOVIMENTO = qint16(mov);
        r.TIPO = qint16(tipo);
        r.VALOR = *Money::parse(QString::fromLatin1(valor));
        if (!r.SQLInsert())
            return 0;
        if (r.EXPORT != exportFlag)
            r.SQLUpdateExport(r.IDRECEBE, exportFlag);
        return r.IDRECEBE;
    }
    QList<clsRecebimentos> confirmed(int tipo) {
        return clsRecebimentos::listarExportacao(app.db(), mov, tipo, 0)
            .value_or(QList<clsRecebimentos>());
    }
    BankExport::Result cnab(int tipo) {
        BankExport::Request rq;
        rq.idMovimento = mov;
        rq.movimento = kDia;
        rq.idcod = tipo;
        const qsizetype before = app.dialogs().texts().size();
        return told(before, CnabExport::gerar(app.ctx(), rq));
    }
    BankExport::Result febraban(int tipo, const QString& banco, QStringList* progress = nullptr) {
        BankExport::Request rq;
        rq.idMovimento = mov;
        rq.movimento = kDia;
        rq.idcod = tipo;
        rq.codBanco = banco;
        if (progress)
            rq.progresso = [progress](int feitos, int total) {
                *progress << QStringLiteral("%1/%2").arg(feitos).arg(total);
            };
        const qsizetype before = app.dialogs().texts().size();
        return told(before, FebrabanExport::gerar(app.ctx(), rq));
    }
    // The run decides and keeps what to tell: none of its boxes until its notices are shown.
    // Only the database's own error report ("Tolvane", after a failed commit) may come first.
    BankExport::Result told(qsizetype before, const BankExport::Result& r) {
        for (qsizetype i = before; i < app.dialogs().shown().size(); ++i)
            if (app.dialogs().shown().at(i).title != QLatin1String("Tolvane"))
                QTest::qFail("the export opened a box", __FILE__, __LINE__);
        r.mostrar(app.dialogs());
        return r;
    }
    QStringList files(const QString& sub) {
        return QDir(app.path(sub)).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    QString exportMarks() {
        QString s;
        const auto rs = app.db().SQLSelect_ReadOnly(
            QStringLiteral("SELECT EXPORT FROM Recebimentos ORDER BY IDRECEBE"));
        for (Recordset r = *rs; !r.EOF_(); r.moveNext())
            s += QString::number(r.integer(QStringLiteral("EXPORT")));
        return s;
    }
    int shown(const QString& text) { return int(app.dialogs().texts().count(text)); }
};

// A slip of the water kind (12345) and a guide of the fees kind (0426).
QString slip(int factor, qint64 cents, const char* nosso = "111333555555555",
             const char* modal = "24") {
    return TestCodes::slip(factor, cents, QStringLiteral("12345"), QLatin1String(nosso),
                           QLatin1String(modal));
}
QString guide(qint64 cents, const char* due, const QString& free17, const char* kind = "0426") {
    return TestCodes::guide(QLatin1String(kind), cents, QLatin1String(due), free17);
}

BR::Cnab cnabExpected(const QString& convenio, const QString& nsa) {
    return {QStringLiteral("104"),
            QStringLiteral("12345678000199"),
            QStringLiteral("01234"),
            QStringLiteral("7"),
            convenio,
            QStringLiteral("PREFEITURA MUNICIPAL DE VILA N"),
            QStringLiteral("CAIXA ECONOMICA FEDERAL DO BRA"),
            QStringLiteral("23112026"),
            QStringLiteral("100000"),
            nsa};
}

QString cents(const Money& m, int width) {
    return QString::number(m.units() / 100).rightJustified(width, QLatin1Char('0'));
}

} // namespace

class tst_bank_files : public QObject {
    Q_OBJECT
private slots:
    void cnabFileOfTheCounter() {
        BankCounter c;
        c.app.setOption(QStringLiteral("Opcoes"), QStringLiteral("juros"), QStringLiteral("1"));
        const QString onTime = slip(1651, 8915);
        const QString late = slip(1600, 15000, "700800900000001", "13");
        const QString noDue = slip(0, 4321, "000000000000077", "99");
        const QString rejected = slip(1651, 1000, "999999999999999", "55");
        const QString fee = guide(31240, "20261130", QStringLiteral("58888888888888888"));
        QVERIFY(c.receive({onTime, late, fee}));
        QVERIFY(c.receive({noDue, rejected}));
        const auto rows = c.confirmed(kAgua);
        QCOMPARE(rows.size(), 4);
        QVERIFY(ExportMarks::gravarIds(c.app.ctx(), c.mov, {rows[3].IDRECEBE}, 1));
        QCOMPARE(rows[1].CODBARRA, late);
        QVERIFY2(rows[1].VALOR > Money::fromCents(15000), "the overdue slip carries charges");
        const QString marks = c.exportMarks();

        const BankExport::Result r = c.cnab(kAgua);
        QVERIFY2(r.ok, qPrintable(r.erros.join(QLatin1Char('|'))));
        QCOMPARE(r.arquivo, c.app.path(QStringLiteral("Export/CnabAGUA202611231000.RET")));
        QCOMPARE(c.files(QStringLiteral("Export")).filter(QStringLiteral("Cnab")),
                 QStringList{QStringLiteral("CnabAGUA202611231000.RET")});
        QCOMPARE(r.registros, 10);
        QCOMPARE(r.total, rows[0].VALOR + rows[1].VALOR + rows[2].VALOR);
        QCOMPARE(r.nsa, 1);
        QCOMPARE(c.exportMarks(), marks);

        const QStringList rec = BR::records(r.arquivo);
        QCOMPARE(rec.size(), 10);
        const BR::Cnab e = cnabExpected(QStringLiteral("123456"), QStringLiteral("000001"));
        QCOMPARE(BR::differences(rec[0], BR::cnabHeaderArquivo(e), 240), QString());
        QCOMPARE(BR::differences(rec[1], BR::cnabHeaderLote(e), 240), QString());
        const QList<BR::Boleto> slips = {
            {QStringLiteral("24"), QStringLiteral("111333555555555"), QStringLiteral("05122026"),
             QStringLiteral("000000000008915"), cents(rows[0].VALOR - Money::fromCents(8915), 15),
             cents(rows[0].VALOR, 15)},
            {QStringLiteral("13"), QStringLiteral("700800900000001"), QStringLiteral("15102026"),
             QStringLiteral("000000000015000"), cents(rows[1].VALOR - Money::fromCents(15000), 15),
             cents(rows[1].VALOR, 15)},
            {QStringLiteral("99"), QStringLiteral("000000000000077"), QStringLiteral("00000000"),
             QStringLiteral("000000000004321"), QString(15, QLatin1Char('0')),
             cents(rows[2].VALOR, 15)}};
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(
                BR::differences(rec[2 + 2 * i], BR::cnabSegmentoT(e, 1 + 2 * i, slips[i]), 240),
                QString());
            QCOMPARE(
                BR::differences(rec[3 + 2 * i], BR::cnabSegmentoU(e, 2 + 2 * i, slips[i]), 240),
                QString());
        }
        QVERIFY(slips[1].juros != QString(15, QLatin1Char('0')));
        QCOMPARE(BR::differences(rec[8], BR::cnabTrailerLote(e, 8), 240), QString());
        QCOMPARE(BR::differences(rec[9], BR::cnabTrailerArquivo(e, 10), 240), QString());
    }

    void febrabanFileOfTheCounter() {
        BankCounter c;
        const QStringList guides = {
            guide(31240, "20261130", QStringLiteral("58888888888888888")),
            guide(123456789, "20261215", QStringLiteral("00000000000000001")),
            guide(5, "20261231", QStringLiteral("00000000000000002"))};
        QVERIFY(c.receive({guides[0], guides[1]}));
        QVERIFY(c.receive(
            {guides[2], guide(700, "20261201", QStringLiteral("00000000000000003"), "0427")}));
        QStringList progress;
        const BankExport::Result r = c.febraban(kTaxas, QStringLiteral("237"), &progress);
        QVERIFY2(r.ok, qPrintable(r.erros.join(QLatin1Char('|'))));
        QCOMPARE(progress, (QStringList{QStringLiteral("1/3"), QStringLiteral("2/3"),
                                        QStringLiteral("3/3")})); // one step per receipt
        QCOMPARE(QFileInfo(r.arquivo).fileName(),
                 QStringLiteral("FebCXBTAXA_237_202611231000.RET"));
        QCOMPARE(QFileInfo(r.arquivo).absolutePath(), c.app.path(QStringLiteral("Febraban")));
        QCOMPARE(r.registros, 5);
        QCOMPARE(r.total, *Money::parse(QStringLiteral("1.234.880,34")));
        const QStringList rec = BR::records(r.arquivo);
        QCOMPARE(rec.size(), 5);
        QCOMPARE(BR::differences(
                     rec[0],
                     BR::febHeader({QStringLiteral("237"), QStringLiteral("CAIXA ECONOMICA FEDE"),
                                    QStringLiteral("20261123"), QStringLiteral("261123")}),
                     150),
                 QString());
        const QStringList values = {QStringLiteral("000000031240"), QStringLiteral("000123456789"),
                                    QStringLiteral("000000000005")};
        for (int i = 0; i < 3; ++i)
            QCOMPARE(BR::differences(
                         rec[1 + i],
                         BR::febDetalhe(QStringLiteral("20261123"), guides[i], values[i], i + 1),
                         150),
                     QString());
        QCOMPARE(
            BR::differences(rec[4], BR::febTrailer(5, QStringLiteral("00000000123488034")), 150),
            QString());
    }

    void emptyLists() {
        BankCounter c;
        const BankExport::Result cnab = c.cnab(kMelhoria);
        QVERIFY(cnab.ok);
        QCOMPARE(QFileInfo(cnab.arquivo).fileName(), QStringLiteral("CnabCONT202611231000.RET"));
        QStringList rec = BR::records(cnab.arquivo);
        QCOMPARE(rec.size(), 4);
        const BR::Cnab e = cnabExpected(QStringLiteral("654321"), QStringLiteral("000001"));
        QCOMPARE(BR::differences(rec[0], BR::cnabHeaderArquivo(e), 240), QString());
        QCOMPARE(BR::differences(rec[1], BR::cnabHeaderLote(e), 240), QString());
        QCOMPARE(BR::differences(rec[2], BR::cnabTrailerLote(e, 2), 240), QString());
        QCOMPARE(BR::differences(rec[3], BR::cnabTrailerArquivo(e, 4), 240), QString());

        const BankExport::Result feb = c.febraban(kIssqn, QStringLiteral("001"));
        QVERIFY(feb.ok);
        QCOMPARE(feb.registros, 2);
        rec = BR::records(feb.arquivo);
        QCOMPARE(rec.size(), 2);
        QCOMPARE(BR::differences(rec[1], BR::febTrailer(2, QString(17, QLatin1Char('0'))), 150),
                 QString());
    }

    // A setting of the wrong width fails the records that carry it: messages, no file, marks
    // and the file sequence untouched.
    void wrongSettings_data() {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QStringList>("erros");
        const QString ha = QStringLiteral("Erro ao gerar header do CNAB -> 0");
        const QString hl = QStringLiteral("Erro ao gerar header do lote CNAB -> 1");
        const QString t = QStringLiteral("Erro ao gerar Detalhe T");
        const QString u = QStringLiteral("Erro ao gerar Detalhe U");
        const QString tl = QStringLiteral("Erro ao gerar Trailer de Lote");
        const QString ta = QStringLiteral("Erro ao gerar Trailer de Arquivo");
        QTest::newRow("4-digit cedente_agua") << "cedente_agua"
                                              << "1234" << QStringList{ha, hl, t};
        QTest::newRow("13-digit cnpj") << "cnpj"
                                       << "1234567800019" << QStringList{ha, hl};
        QTest::newRow("2-digit bank") << "cod_banco_cnab"
                                      << "04" << QStringList{ha, hl, t, u, tl, ta};
        QTest::newRow("6-digit agencia") << "agencia"
                                         << "123456" << QStringList{ha, hl, t};
        QTest::newRow("no dv") << "dv"
                               << "" << QStringList{ha, hl};
    }
    void wrongSettings() {
        QFETCH(QString, key);
        QFETCH(QString, value);
        QFETCH(QStringList, erros);
        BankCounter c;
        QVERIFY(c.receive({slip(1651, 8915), slip(1652, 100, "111333555555556", "24")}));
        const QString marks = c.exportMarks();
        c.app.setOption(QStringLiteral("Export"), key, value);
        c.app.dialogs().clear();
        const BankExport::Result r = c.cnab(kAgua);
        QVERIFY(!r.ok);
        QCOMPARE(r.erros, erros);
        QCOMPARE(r.registros, 0);
        // Shown once per kind of record, whatever the number of receipts.
        for (const QString& e : erros)
            QCOMPARE(c.shown(e), 1);
        QCOMPARE(r.falhas, erros.size() +
                               (erros.contains(QStringLiteral("Erro ao gerar Detalhe T")) ? 1 : 0) +
                               (erros.contains(QStringLiteral("Erro ao gerar Detalhe U")) ? 1 : 0));
        QCOMPARE(c.app.dialogs().last().title, QStringLiteral("Aviso"));
        QCOMPARE(c.app.dialogs().last().icon, DialogIcon::Critical);
        QCOMPARE(c.files(QStringLiteral("Export")).filter(QStringLiteral("Cnab")), QStringList());
        QCOMPARE(c.exportMarks(), marks);
        QCOMPARE(clsSequenciaArquivo::ultimo(c.app.db(), QStringLiteral("104")).value_or(-1), 0);
    }

    // Codes the bank cannot take: the records they feed fail and no file is written.
    void badCodes_data() {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QStringList>("cnabErros");
        QTest::addColumn<bool>("febrabanFails");
        const QString t = QStringLiteral("Erro ao gerar Detalhe T");
        const QString u = QStringLiteral("Erro ao gerar Detalhe U");
        QTest::newRow("item without barcode")
            << QString(44, QLatin1Char('0')) << QStringList{t, u} << true;
        QTest::newRow("43 digits") << QString(43, QLatin1Char('1')) << QStringList{t, u} << true;
        QTest::newRow("letters") << QStringLiteral("0019X165100000089151234500000000000000000000")
                                 << QStringList{t, u} << true;
        // 7400 is after every window's end in the first cycle and before its start in the
        // second, seen from 23/11/2026.
        QTest::newRow("factor outside every window") << slip(7400, 500) << QStringList{t} << false;
        QTest::newRow("factor 0500") << slip(500, 500) << QStringList{t} << false;
    }
    void badCodes() {
        QFETCH(QString, code);
        QFETCH(QStringList, cnabErros);
        QFETCH(bool, febrabanFails);
        BankCounter c;
        QVERIFY(c.receive({slip(1651, 8915)}));
        QVERIFY(c.insert(kAgua, code, "10,00") > 0);
        // A code is received only once: the guide kind gets its own copy of the bad code.
        QString again = code;
        if (!again.startsWith(QLatin1String("000")))
            again[again.size() - 1] =
                again.endsWith(QLatin1Char('9')) ? QLatin1Char('8') : QLatin1Char('9');
        QVERIFY(c.insert(kTaxas, again, "10,00") > 0);
        QCOMPARE(c.confirmed(kAgua).size(), 2); // the 44 zeros confirmed by hand too
        const QString marks = c.exportMarks();
        const BankExport::Result r = c.cnab(kAgua);
        QVERIFY(!r.ok);
        QCOMPARE(r.erros, cnabErros);
        const BankExport::Result f = c.febraban(kTaxas, QStringLiteral("001"));
        QCOMPARE(f.ok, !febrabanFails);
        if (febrabanFails)
            QCOMPARE(f.erros, QStringList{QStringLiteral("Erro ao gerar content")});
        QCOMPARE(c.files(QStringLiteral("Export")).filter(QStringLiteral("Cnab")), QStringList());
        QCOMPARE(c.files(QStringLiteral("Febraban")).size(), febrabanFails ? 0 : 1);
        QCOMPARE(c.exportMarks(), marks);
    }

    // The due date comes from the same rule as the reading of codes.
    void dueDateRule_data() {
        QTest::addColumn<int>("factor");
        QTest::addColumn<QString>("rule");
        QTest::addColumn<QString>("vencimento");
        QTest::newRow("second cycle") << 1651 << ""
                                      << "05122026";
        QTest::newRow("first factor of the second cycle") << 1000 << ""
                                                          << "22022025";
        QTest::newRow("late first cycle") << 9999 << ""
                                          << "21022025";
        QTest::newRow("no due date") << 0 << ""
                                     << "00000000";
        QTest::newRow("fixed base") << 1651 << "legado"
                                    << "15042002";
        QTest::newRow("fixed base, factor 0") << 0 << "legado"
                                              << "07101997";
    }
    void dueDateRule() {
        QFETCH(int, factor);
        QFETCH(QString, rule);
        QFETCH(QString, vencimento);
        BankCounter c;
        c.app.setOption(QStringLiteral("Opcoes"), QStringLiteral("fator_vencimento"), rule);
        QVERIFY(c.insert(kAgua, slip(factor, 500), "5,00") > 0);
        const BankExport::Result r = c.cnab(kAgua);
        QVERIFY(r.ok);
        QCOMPARE(BR::records(r.arquivo).value(2).mid(73, 8), vencimento);
    }

    void bankCode_data() {
        QTest::addColumn<QString>("code");
        QTest::addColumn<bool>("valid");
        QTest::newRow("three digits") << "341" << true;
        QTest::newRow("two") << "34" << false;
        QTest::newRow("four") << "3410" << false;
        QTest::newRow("letter") << "34A" << false;
    }
    void bankCode() {
        QFETCH(QString, code);
        QFETCH(bool, valid);
        QCOMPARE(BankExport::codigoBancoValido(code), valid);
        BankCounter c;
        const BankExport::Result r = c.febraban(kTaxas, code);
        QCOMPARE(r.ok, valid);
        QCOMPARE(c.files(QStringLiteral("Febraban")).size(), valid ? 1 : 0);
        if (!valid)
            QCOMPARE(c.app.dialogs().last().text,
                     QStringLiteral("Código do banco não informado!!"));
    }

    // Each run writes a file of its own, even in the same minute; a sequence number is used
    // only by a file written whole and recorded; each receipt keeps the files that carried it.
    void eachRunItsOwnFileAndNumber() {
        BankCounter c;
        const qint32 id = c.insert(kAgua, slip(1651, 500), "5,00");
        QVERIFY(id > 0);
        const BankExport::Result a = c.cnab(kAgua);
        const BankExport::Result b = c.cnab(kAgua);
        QVERIFY(a.ok && b.ok);
        QCOMPARE(QFileInfo(a.arquivo).fileName(), QStringLiteral("CnabAGUA202611231000.RET"));
        QCOMPARE(QFileInfo(b.arquivo).fileName(), QStringLiteral("CnabAGUA202611231000_2.RET"));
        for (const auto& [run, nsa] : {std::pair{a, "000001"}, std::pair{b, "000002"}}) {
            const QStringList rec = BR::records(run.arquivo);
            QCOMPARE(rec.size(), 6); // one header: one whole file
            QCOMPARE(rec[0].mid(157, 6), QLatin1String(nsa));
        }
        // A run that fails its records, or whose record in the database fails, uses no number
        // and leaves no file.
        c.app.setOption(QStringLiteral("Export"), QStringLiteral("cedente_agua"),
                        QStringLiteral("12345"));
        QVERIFY(!c.cnab(kAgua).ok);
        c.app.setOption(QStringLiteral("Export"), QStringLiteral("cedente_agua"),
                        QStringLiteral("123456"));
        c.app.db().faultHook = [](const QString& sql) {
            return sql.startsWith(QLatin1String("INSERT INTO ArquivosBanco"));
        };
        QVERIFY(!c.cnab(kAgua).ok);
        // The file written, then the commit fails: no file, no number, and every box shown
        // once the transaction has ended (a box under the lock fails the test).
        c.app.db().faultHook = [](const QString& sql) { return sql == QLatin1String("COMMIT"); };
        c.app.dialogs().clear();
        QVERIFY(!c.cnab(kAgua).ok);
        QVERIFY(c.app.log().contains(QStringLiteral("Função CommitTrans")));
        QVERIFY2(c.app.dialogs().last().text.startsWith(
                     QStringLiteral("Erro ao registrar o arquivo no banco de dados")),
                 qPrintable(c.app.dialogs().last().text));
        c.app.db().faultHook = nullptr;
        // No final name and no temporary file left by the failed runs.
        QCOMPARE(c.files(QStringLiteral("Export")).filter(QStringLiteral("Cnab")),
                 QStringList({QStringLiteral("CnabAGUA202611231000.RET"),
                              QStringLiteral("CnabAGUA202611231000_2.RET")}));
        c.app.clock().set(QDateTime(kDia, QTime(10, 1, 5)));
        const BankExport::Result next = c.cnab(kAgua);
        QVERIFY(next.ok);
        QCOMPARE(QFileInfo(next.arquivo).fileName(), QStringLiteral("CnabAGUA202611231001.RET"));
        QCOMPARE(next.nsa, 3);
        QCOMPARE(BR::records(next.arquivo).value(0).mid(151, 6), QStringLiteral("100105"));
        c.app.setOption(QStringLiteral("Export"), QStringLiteral("cod_banco_cnab"),
                        QStringLiteral("001"));
        QCOMPARE(c.cnab(kAgua).nsa, 1);

        const auto carried = clsArquivoBanco::doRecebimento(c.app.db(), id);
        QVERIFY(carried);
        QStringList names;
        for (const auto& f : *carried)
            names << f.descricao();
        QCOMPARE(names,
                 QStringList(
                     {"CnabAGUA202611231000.RET (NSA 1)", "CnabAGUA202611231000_2.RET (NSA 2)",
                      "CnabAGUA202611231001.RET (NSA 3)", "CnabAGUA202611231001_2.RET (NSA 1)"}));

        QVERIFY(c.febraban(kTaxas, QStringLiteral("001")).ok);
        const BankExport::Result f2 = c.febraban(kTaxas, QStringLiteral("001"));
        QVERIFY(f2.ok);
        QVERIFY(f2.arquivo.endsWith(QStringLiteral("_2.RET")));
        QCOMPARE(BR::records(f2.arquivo).size(), 2);
        QCOMPARE(
            c.febraban(kTaxas, QStringLiteral("002")).arquivo.contains(QStringLiteral("_002_")),
            true);
        QCOMPARE(c.files(QStringLiteral("Febraban")).size(), 3);
    }

    // Reversing or changing a receipt a file already carried says so in the question, after
    // the correction, and in the yearly log; a receipt in no file says nothing of the kind.
    void correctingAReceiptAlreadySent() {
        BankCounter c;
        const qint32 sent = c.insert(kAgua, slip(1651, 500), "5,00");
        const qint32 kept = c.insert(kAgua, slip(1651, 700), "7,00");
        QVERIFY(c.cnab(kAgua).ok);
        const qint32 later = c.insert(kAgua, slip(1651, 900), "9,00");
        ReceiptCorrections rc(c.app.ctx(), nullptr);
        const QString file = QStringLiteral("CnabAGUA202611231000.RET (NSA 1)");
        QCOMPARE(rc.arquivosBanco(sent), file);
        QCOMPARE(rc.arquivosBanco(later), QString());
        QCOMPARE(ReceiptCorrections::perguntaEstorno(90, rc.arquivosBanco(sent)).text,
                 QStringLiteral("Confirma exclusão deste item? - 090\nO item 090 já foi enviado "
                                "ao banco no arquivo CnabAGUA202611231000.RET (NSA 1): a correção "
                                "não muda esse arquivo; avise o banco."));
        c.app.dialogs().clear();
        auto r = rc.estornar(sent, QStringLiteral("pago em dobro"));
        QVERIFY(r.feito);
        r.mostrar(c.app.dialogs());
        QCOMPARE(r.arquivoBanco, file);
        QCOMPARE(c.app.dialogs().last().text,
                 QStringLiteral("O item 090 já foi enviado ao banco no arquivo "
                                "CnabAGUA202611231000.RET (NSA 1): a correção não muda esse "
                                "arquivo; avise o banco."));
        QCOMPARE(c.app.dialogs().last().icon, DialogIcon::Exclamation);
        ReceiptCorrections::Pedido p;
        p.idrecebe = kept;
        p.valor = Money::fromCents(800);
        p.motivo = QStringLiteral("valor errado");
        r = rc.alterar(p);
        QVERIFY(r.feito);
        QCOMPARE(r.arquivoBanco, file);
        p.idrecebe = later;
        p.valor = Money::fromCents(1000);
        c.app.dialogs().clear();
        r = rc.alterar(p);
        QVERIFY(r.feito);
        r.mostrar(c.app.dialogs());
        QCOMPARE(r.arquivoBanco, QString());
        QCOMPARE(c.app.dialogs().texts(),
                 QStringList{QStringLiteral("Operação efetuada com sucesso!!")});
        QFile log(c.app.path(QStringLiteral("Estorno_B_2026.txt")));
        QVERIFY(log.open(QIODevice::ReadOnly));
        const QString text = QString::fromLatin1(log.readAll());
        QCOMPARE(text.count(QStringLiteral("Arquivo do banco: ") + file + QStringLiteral("\r\n")),
                 2);
        // The log completed from the table writes nothing more.
        QCOMPARE(rc.completarRegistro(), std::optional<int>(0));
    }

    // A run that died after its commit left its whole temporary file: the next run gives it
    // its name instead of removing it, so the recorded number has its file.
    void recordedRunIsPublishedByTheNext() {
        BankCounter c;
        QVERIFY(c.insert(kAgua, slip(1651, 500), "5,00") > 0);
        const QString name = QStringLiteral("CnabAGUA202611230930.RET");
        const QString temp = c.app.path(QStringLiteral("Export/")) + name + QStringLiteral(".tmp");
        {
            QFile f(temp);
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write("whole run\r\n");
        }
        clsArquivoBanco::Arquivo run;
        run.arquivo = name;
        run.padrao = QStringLiteral("C");
        run.nsa = 7;
        QVERIFY(clsArquivoBanco::registrar(c.app.db(), run, {}));
        QVERIFY(c.cnab(kAgua).ok);
        QFile published(c.app.path(QStringLiteral("Export/")) + name);
        QVERIFY(published.open(QIODevice::ReadOnly));
        QCOMPARE(published.readAll(), QByteArray("whole run\r\n"));
        QCOMPARE(c.files(QStringLiteral("Export")).filter(QStringLiteral(".tmp")), QStringList());
    }

    // A full disk: the run fails, leaves no file, and its number is still free.
    void fullDiskUsesNoNumber() {
        if (geteuid() != 0)
            QSKIP("a small disk of its own needs permission to mount one");
        BankCounter c;
        for (int i = 0; i < 40; ++i)
            QVERIFY(c.insert(kAgua, slip(1651, 500 + i, "111333555555555"), "5,00") > 0);
        const QString disk = c.app.path(QStringLiteral("Export"));
        QCOMPARE(
            QProcess::execute(QStringLiteral("mount"),
                              {QStringLiteral("-t"), QStringLiteral("tmpfs"), QStringLiteral("-o"),
                               QStringLiteral("size=8k"), QStringLiteral("tmpfs"), disk}),
            0);
        const auto cleanup =
            qScopeGuard([&] { QProcess::execute(QStringLiteral("umount"), {disk}); });
        const BankExport::Result full = c.cnab(kAgua);
        QVERIFY(!full.ok);
        QVERIFY(!full.erros.isEmpty());
        QCOMPARE(c.files(QStringLiteral("Export")), QStringList());
        QCOMPARE(clsSequenciaArquivo::ultimo(c.app.db(), QStringLiteral("104")),
                 std::optional<int>(0));
    }

    // What a run that died left behind is removed by the next run of the same file kind.
    void temporaryFilesOfDeadRuns() {
        BankCounter c;
        const QString staleCnab = c.app.path(QStringLiteral("Export/CnabAGUA202611230930.RET.tmp"));
        const QString staleFeb =
            c.app.path(QStringLiteral("Febraban/FebCXBTAXA_001_202611230930.RET.tmp"));
        for (const QString& p : {staleCnab, staleFeb}) {
            QFile f(p);
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write("half a run");
        }
        QVERIFY(c.cnab(kAgua).ok);
        QVERIFY(!QFile::exists(staleCnab));
        QVERIFY(QFile::exists(staleFeb));
        QVERIFY(c.febraban(kTaxas, QStringLiteral("001")).ok);
        QVERIFY(!QFile::exists(staleFeb));
        QCOMPARE(c.files(QStringLiteral("Export")).filter(QStringLiteral(".tmp")), QStringList());
    }

    void writerKeepsFinalNameWhole() {
        QTemporaryDir dir;
        const QString final = dir.filePath(QStringLiteral("CnabX.RET"));
        {
            BankFileWriter w(final, dir.filePath(QStringLiteral("lock")),
                             QStringLiteral("Cnab*.RET.tmp"));
            QString error;
            QVERIFY(w.begin(&error));
            QVERIFY(QFile::exists(BankFileWriter::temporaryPath(final)));
            QVERIFY(!QFile::exists(final));
            BankFileWriter other(final, dir.filePath(QStringLiteral("lock")),
                                 QStringLiteral("Cnab*.RET.tmp"));
            QVERIFY(!other.begin(&error)); // one run at a time
            QVERIFY(error.contains(QStringLiteral("em andamento")));
        } // abandoned without commit
        QVERIFY(!QFile::exists(BankFileWriter::temporaryPath(final)));
        QVERIFY(!QFile::exists(final));
        BankFileWriter w(final, dir.filePath(QStringLiteral("lock")),
                         QStringLiteral("Cnab*.RET.tmp"));
        QString error;
        QVERIFY(w.begin(&error));
        QVERIFY(w.commit({"ab\r\n", "cd\r\n"}, &error));
        QFile f(final);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QCOMPARE(f.readAll(), QByteArray("ab\r\ncd\r\n"));
    }

    void missingOrReadOnlyFolder() {
        BankCounter c;
        c.app.setOption(QStringLiteral("Export"), QStringLiteral("Path3"),
                        QStringLiteral("naoexiste/"));
        BankExport::Result r = c.cnab(kAgua);
        QVERIFY(!r.ok);
        QVERIFY(r.erros.value(0).startsWith(QStringLiteral("A pasta do arquivo não existe: ")));
        QVERIFY(r.erros.value(0).contains(QStringLiteral("Path3")));
        QVERIFY(!QDir(c.app.path(QStringLiteral("naoexiste"))).exists());

        QString readOnly = c.app.path(QStringLiteral("somente-leitura"));
        QVERIFY(QDir().mkpath(readOnly));
        QFile::setPermissions(readOnly, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
        if (QFile probe(readOnly + QStringLiteral("/probe")); probe.open(QIODevice::WriteOnly)) {
            probe.remove(); // the superuser writes anywhere: use a folder the kernel keeps
            readOnly = QStringLiteral("/proc/self");
        }
        c.app.setOption(QStringLiteral("Export"), QStringLiteral("caminho_febraban"), readOnly);
        r = c.febraban(kTaxas, QStringLiteral("001"));
        QVERIFY(!r.ok);
        QVERIFY2(r.erros.value(0).startsWith(QStringLiteral("Não foi possível gravar ")),
                 qPrintable(r.erros.value(0)));
        QCOMPARE(QDir(readOnly).entryList({QStringLiteral("Feb*")}), QStringList());
        QFile::setPermissions(c.app.path(QStringLiteral("somente-leitura")),
                              QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                  QFileDevice::ExeOwner);
    }

    // Segment numbers have five digits: a batch holds 49 999 receipts, and more are refused
    // before any record is built.
    void cnabBatchLimit() {
        BankCounter c;
        {
            Transaction tx(c.app.db());
            for (int i = 0; i < CnabExport::kMaximoRecebimentos + 1; ++i)
                QVERIFY(c.app.db().SQLExecute(
                    QStringLiteral("INSERT INTO Recebimentos (AUTENTICA, CODBARRA, IDMOVIMENTO, "
                                   "TIPO, VALOR) VALUES (?, ?, ?, 4, 10000)"),
                    {i + 1,
                     QStringLiteral("9") + QString::number(i).rightJustified(43, QLatin1Char('0')),
                     c.mov}));
            QVERIFY(tx.commit());
        }
        c.app.dialogs().clear();
        const BankExport::Result r = c.cnab(kAgua);
        QVERIFY(!r.ok);
        QCOMPARE(r.erros, QStringList{QStringLiteral("O arquivo CNAB comporta até 49999 "
                                                     "recebimentos por lote; há 50000 neste "
                                                     "movimento.")});
        QCOMPARE(c.app.dialogs().texts().size(), 1);
        QCOMPARE(c.files(QStringLiteral("Export")).filter(QStringLiteral("Cnab")), QStringList());
    }

    void kindOfTheWrongStandard() {
        BankCounter c;
        BankExport::Result r = c.cnab(kTaxas);
        QVERIFY(!r.ok);
        QVERIFY(r.erros.value(0).contains(QStringLiteral("padrão C")));
        r = c.febraban(kAgua, QStringLiteral("001"));
        QVERIFY(!r.ok);
        r = c.febraban(77, QStringLiteral("001"));
        QVERIFY(r.erros.value(0).contains(QStringLiteral("não encontrado")));
        QCOMPARE(c.files(QStringLiteral("Export")).filter(QStringLiteral("Cnab")), QStringList());
        QCOMPARE(c.files(QStringLiteral("Febraban")), QStringList());
    }

    void namesAndSettings() {
        const QDateTime t(QDate(2026, 1, 2), QTime(3, 4, 59));
        QCOMPARE(CnabExport::nomeArquivo(QStringLiteral("IPTU PREDIAL"), t),
                 QStringLiteral("CnabIPTU202601020304.RET"));
        QCOMPARE(CnabExport::nomeArquivo(QStringLiteral("A/B:C"), t),
                 QStringLiteral("CnabA_B_202601020304.RET"));
        QCOMPARE(FebrabanExport::nomeArquivo(QStringLiteral("3"), QStringLiteral("ISS"),
                                             QStringLiteral("001"), t),
                 QStringLiteral("FebCX3ISS_001_202601020304.RET"));
        BankCounter c;
        c.app.setOption(QStringLiteral("Export"), QStringLiteral("guiche"),
                        QStringLiteral(" 2/A "));
        QCOMPARE(FebrabanExport::estacao(c.app.ctx()), QStringLiteral("2A"));
        QCOMPARE(CnabExport::jurosMulta(Money::fromCents(1000), Money::fromCents(1200)), Money());
        QCOMPARE(CnabExport::jurosMulta(Money::fromCents(1200), Money::fromCents(1200)), Money());
        QCOMPARE(CnabExport::jurosMulta(Money::fromCents(1250), Money::fromCents(1200)),
                 Money::fromCents(50));
        QCOMPARE(BankExport::pausaTela(c.app.ctx()), 800);
        c.app.setOption(QStringLiteral("Export"), QStringLiteral("pausa_registro"),
                        QStringLiteral("0"));
        QCOMPARE(BankExport::pausaTela(c.app.ctx()), 0);
        c.app.setOption(QStringLiteral("Export"), QStringLiteral("pausa_registro"),
                        QStringLiteral("rapido"));
        QCOMPARE(BankExport::pausaTela(c.app.ctx()), 800);
        QVERIFY(!BankExport::cnabNaTela(c.app.ctx()));
        c.app.setOption(QStringLiteral("Export"), QStringLiteral("cnab"), QStringLiteral("1"));
        QVERIFY(BankExport::cnabNaTela(c.app.ctx()));
    }
};

QTEST_MAIN(tst_bank_files)
#include "tst_bank_files.moc"
