// The integration file, read back by a reader of its own that knows the layout independently
// of the program's table: every field of every record, the withdrawal and payment records, the
// footer, the records of the wrong length, and the runs that must leave no file.
#include "CashCount.h"
#include "CashEntry.h"
#include "IntegrationFile.h"
#include "TestApp.h"
#include "clsConfCaixa.h"
#include "clsGeraIntegra.h"
#include "clsMovimento.h"
#include "clsRecebimentos.h"

#include <QDir>
#include <QFile>

namespace {

struct Pos {
    const char* name;
    int pos;
    int width;
};

// The layout as the accounting system reads it, keyed by the record's first character.
const QHash<QChar, QList<Pos>>& layout() {
    static const QHash<QChar, QList<Pos>> l = {
        {QLatin1Char('A'),
         {{"reg", 1, 1},
          {"banco", 2, 6},
          {"data", 8, 8},
          {"setor", 16, 1},
          {"nsa", 17, 14},
          {"zero", 31, 1},
          {"brancos", 32, 169}}},
        {QLatin1Char('R'),
         {{"reg", 1, 1},
          {"data", 2, 8},
          {"sep1", 10, 1},
          {"autentica", 11, 5},
          {"guiche", 16, 1},
          {"tipo", 17, 4},
          {"sep2", 21, 1},
          {"entrada", 22, 9},
          {"saida", 31, 9},
          {"diferenca", 40, 9},
          {"sep3", 49, 1},
          {"barra", 50, 44},
          {"sep4", 94, 1},
          {"especie", 95, 10},
          {"identifica", 105, 10},
          {"sep5", 115, 1},
          {"export", 116, 1},
          {"msg", 117, 84}}},
        {QLatin1Char('J'),
         {{"reg", 1, 1},
          {"data", 2, 8},
          {"total", 10, 10},
          {"id", 20, 10},
          {"descricao", 30, 171}}},
        {QLatin1Char('D'),
         {{"reg", 1, 1},
          {"especie", 2, 5},
          {"numero", 7, 30},
          {"valor", 37, 10},
          {"id", 47, 10},
          {"brancos", 57, 144}}},
        {QLatin1Char('Z'),
         {{"reg", 1, 1},
          {"cont", 2, 9},
          {"total", 11, 15},
          {"confcaixa", 26, 15},
          {"zero", 41, 1},
          {"brancos", 42, 159}}},
    };
    return l;
}

using Fields = QHash<QString, QString>;

Fields read(const QString& line) {
    const QChar code = line.at(0) == QLatin1Char('S') ? QLatin1Char('J') : line.at(0);
    Fields f;
    int next = 1;
    for (const Pos& p : layout().value(code)) {
        [&] { QCOMPARE(p.pos, next); }(); // the test's own table has no gaps
        next += p.width;
        f.insert(QLatin1String(p.name), line.mid(p.pos - 1, p.width));
    }
    return f;
}

QString spaces(int n) {
    return QString(n, QLatin1Char(' '));
}

struct Day {
    TestApp& app;
    qint32 mov = 0;

    explicit Day(TestApp& a) : app(a) {
        QVERIFY(app.db().SQLExecute(QStringLiteral(
            "INSERT INTO CodBarra (IDCOD, IDTIPO, DESCRICAO, PADRAO) VALUES (100, 'DIN', "
            "'DINHEIRO', 'S'), (101, 'CHQ', 'CHEQUE', 'S'), (102, 'EMP', 'EMPENHO', 'S'), "
            "(1, '0425', 'IPTU', 'F'), (7, 'AV1', 'TAXA DE EXPEDIENTE', 'A')")));
        clsMovimento m(app.db());
        m.MDATA = QDate(2026, 11, 23);
        m.MOV = 4;
        m.STATUS = QStringLiteral("ABERTO");
        QVERIFY(m.SQLInsert(0));
        mov = m.ID;
        QDir(app.folder()).mkdir(QStringLiteral("Integracao"));
        app.setOption(QStringLiteral("Export"), QStringLiteral("Path1"),
                      QStringLiteral("Integracao/"));
        app.setOption(QStringLiteral("Export"), QStringLiteral("guiche"), QStringLiteral("3"));
    }

    void receipt(int autentica, int tipo, const char* valor, const QString& codbarra,
                 qint32 movimento = 0) {
        clsRecebimentos r(app.db());
        r.AUTENTICA = static_cast<qint16>(autentica);
        r.CODBARRA = codbarra;
        r.IDMOVIMENTO = static_cast<qint16>(movimento ? movimento : mov);
        r.TIPO = static_cast<qint16>(tipo);
        r.VALOR = *Money::parse(QLatin1String(valor));
        QVERIFY(r.SQLInsert());
    }

    qint32 entry(EntryKind kind, const QString& descricao,
                 const QList<std::tuple<int, QString, QString>>& items) {
        CashEntry e(app.ctx(), mov, kind);
        [&] { QVERIFY(e.incluirItens(descricao)); }();
        for (const auto& [especie, numero, valor] : items)
            [&] { QVERIFY(e.gravarItem(especie, numero, valor)); }();
        return e.header().ID;
    }

    IntegrationFile::Result run(Money confCaixa, int* pauses = nullptr) {
        clsMovimento m(app.db());
        m.SQLSelect(mov);
        IntegrationFile f(app.ctx());
        if (pauses) {
            f.pausaMs = 500;
            f.wait = [pauses](int ms) { *pauses += ms == 500; };
        }
        app.dialogs().clear();
        return f.gerar(m, confCaixa);
    }

    QString expectedPath() const {
        return QDir(app.folder()).filePath(QStringLiteral("Integracao/3_202611231000.INT"));
    }
};

QStringList linesOf(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    QStringList out = QString::fromLatin1(f.readAll()).split(QStringLiteral("\r\n"));
    if (!out.isEmpty() && out.last().isEmpty())
        out.removeLast();
    return out;
}

const QString kBarcode = QStringLiteral("81660000012345604252026113058888888888888888");

} // namespace

// Another code like `code`: a code is received only once.
QString other(const QString& code, int n) {
    return code.left(code.size() - 2) + QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0'));
}

class tst_integration : public QObject {
    Q_OBJECT
private slots:
    void initTestCase_data() { addBackendRows(); }

    // A day of two receipts, an opening float, a withdrawal of two items and a payment out,
    // read back field by field.
    void wholeDayFieldByField() {
        TEST_BACKEND();
        Day d(app);
        d.receipt(1, 1, "1.234,56", kBarcode);
        d.receipt(2, 7, "10,00", clsRecebimentos::kSemCodigo);  // stored with EXPORT 1
        d.receipt(3, 55, "99,00", other(kBarcode, 1));          // no such kind: not carried
        d.receipt(1, 1, "5,00", other(kBarcode, 2), d.mov + 1); // another day
        d.entry(EntryKind::CashIn, QString(), {{100, QString(), QStringLiteral("200,00")}});
        const qint32 sangria = d.entry(EntryKind::Withdrawal, QString(),
                                       {{100, QString(), QStringLiteral("100,00")},
                                        {101, QStringLiteral("123"), QStringLiteral("50,00")}});
        const qint32 pagamento =
            d.entry(EntryKind::PaymentOut, QStringLiteral("EMPENHO ÁGUA"),
                    {{102, QString(30, QLatin1Char('9')), QStringLiteral("30,00")}});
        int pauses = 0;
        const auto r = d.run(*Money::parse(QStringLiteral("1.100,00")), &pauses);
        QVERIFY(r.written);
        QCOMPARE(r.arquivo, d.expectedPath());
        QCOMPARE(r.registros, 9);
        QVERIFY(r.erros.isEmpty());
        QCOMPARE(pauses, 2 + 2 + 3); // after each receipt, entry and item
        QCOMPARE(app.dialogs().texts(), QStringList{IntegrationFile::kSucesso});
        QCOMPARE(app.dialogs().last().icon, DialogIcon::Information);

        QFile raw(r.arquivo);
        QVERIFY(raw.open(QIODevice::ReadOnly));
        const QByteArray bytes = raw.readAll();
        QVERIFY(bytes.contains("EMPENHO \xC1GUA")); // ISO-8859-1
        QCOMPARE(bytes.count("\r\n"), 9);
        QCOMPARE(bytes.count('\n'), 9);
        const QStringList lines = linesOf(r.arquivo);
        QString kinds;
        for (const QString& l : lines) {
            QCOMPARE(l.size(), 200);
            kinds += l.at(0);
        }
        QCOMPARE(kinds, QStringLiteral("ARRJDDSDZ"));

        const Fields a = read(lines[0]);
        QCOMPARE(a[QStringLiteral("banco")], QStringLiteral("005001"));
        QCOMPARE(a[QStringLiteral("data")], QStringLiteral("23112026"));
        QCOMPARE(a[QStringLiteral("setor")], QStringLiteral("3"));
        QCOMPARE(a[QStringLiteral("nsa")],
                 QStringLiteral("%1").arg(d.mov, 14, 10, QLatin1Char('0')));
        QCOMPARE(a[QStringLiteral("zero")], QStringLiteral("0"));
        QCOMPARE(a[QStringLiteral("brancos")], spaces(169));

        const Fields r1 = read(lines[1]);
        const Fields expected1 = {{QStringLiteral("reg"), QStringLiteral("R")},
                                  {QStringLiteral("data"), QStringLiteral("23112026")},
                                  {QStringLiteral("sep1"), spaces(1)},
                                  {QStringLiteral("autentica"), QStringLiteral("00001")},
                                  {QStringLiteral("guiche"), QStringLiteral("3")},
                                  {QStringLiteral("tipo"), QStringLiteral("0001")},
                                  {QStringLiteral("sep2"), spaces(1)},
                                  {QStringLiteral("entrada"), QStringLiteral("000123456")},
                                  {QStringLiteral("saida"), QStringLiteral("000000000")},
                                  {QStringLiteral("diferenca"), QStringLiteral("000000000")},
                                  {QStringLiteral("sep3"), spaces(1)},
                                  {QStringLiteral("barra"), kBarcode},
                                  {QStringLiteral("sep4"), spaces(1)},
                                  {QStringLiteral("especie"), spaces(10)},
                                  {QStringLiteral("identifica"), QStringLiteral("0000000000")},
                                  {QStringLiteral("sep5"), spaces(1)},
                                  {QStringLiteral("export"), QStringLiteral("0")},
                                  {QStringLiteral("msg"), spaces(84)}};
        QCOMPARE(r1, expected1);
        const Fields r2 = read(lines[2]);
        QCOMPARE(r2[QStringLiteral("autentica")], QStringLiteral("00002"));
        QCOMPARE(r2[QStringLiteral("tipo")], QStringLiteral("0007"));
        QCOMPARE(r2[QStringLiteral("entrada")], QStringLiteral("000001000"));
        QCOMPARE(r2[QStringLiteral("barra")], clsRecebimentos::kSemCodigo);
        QCOMPARE(r2[QStringLiteral("export")], QStringLiteral("1"));

        const Fields j = read(lines[3]);
        QCOMPARE(j[QStringLiteral("reg")], QStringLiteral("J"));
        QCOMPARE(j[QStringLiteral("data")], QStringLiteral("23112026"));
        QCOMPARE(j[QStringLiteral("total")], QStringLiteral("0000015000"));
        QCOMPARE(j[QStringLiteral("id")],
                 QStringLiteral("%1").arg(sangria, 10, 10, QLatin1Char('0')));
        QCOMPARE(j[QStringLiteral("descricao")],
                 QStringLiteral("RETIRADAS DE CAIXA").leftJustified(171, QLatin1Char(' ')));
        const Fields d1 = read(lines[4]);
        QCOMPARE(d1[QStringLiteral("especie")], QStringLiteral("00100"));
        QCOMPARE(d1[QStringLiteral("numero")], spaces(30));
        QCOMPARE(d1[QStringLiteral("valor")], QStringLiteral("0000010000"));
        QCOMPARE(d1[QStringLiteral("id")], j[QStringLiteral("id")]);
        QCOMPARE(d1[QStringLiteral("brancos")], spaces(144));
        const Fields d2 = read(lines[5]);
        QCOMPARE(d2[QStringLiteral("especie")], QStringLiteral("00101"));
        QCOMPARE(d2[QStringLiteral("numero")], QStringLiteral("123") + spaces(27));
        QCOMPARE(d2[QStringLiteral("valor")], QStringLiteral("0000005000"));

        const Fields s = read(lines[6]);
        QCOMPARE(s[QStringLiteral("reg")], QStringLiteral("S"));
        QCOMPARE(s[QStringLiteral("total")], QStringLiteral("0000003000"));
        QCOMPARE(s[QStringLiteral("id")],
                 QStringLiteral("%1").arg(pagamento, 10, 10, QLatin1Char('0')));
        QCOMPARE(s[QStringLiteral("descricao")].trimmed(), QStringLiteral("EMPENHO ÁGUA"));
        const Fields d3 = read(lines[7]);
        QCOMPARE(d3[QStringLiteral("numero")], spaces(30)); // 30 characters do not fit
        QCOMPARE(d3[QStringLiteral("id")], s[QStringLiteral("id")]);

        const Fields z = read(lines[8]);
        QCOMPARE(z[QStringLiteral("cont")], QStringLiteral("000000002"));
        QCOMPARE(z[QStringLiteral("total")], QStringLiteral("000000000124456"));
        QCOMPARE(z[QStringLiteral("confcaixa")], QStringLiteral("000000000110000"));
        QCOMPARE(z[QStringLiteral("zero")], QStringLiteral("0"));
        QCOMPARE(z[QStringLiteral("brancos")], spaces(159));
    }

    // A day without receipts gets no file, withdrawals or not.
    void noReceiptsNoFile() {
        TEST_BACKEND();
        Day d(app);
        d.entry(EntryKind::Withdrawal, QString(), {{100, QString(), QStringLiteral("10,00")}});
        const auto r = d.run(Money());
        QVERIFY(!r.written);
        QVERIFY(!QFile::exists(d.expectedPath()));
        QVERIFY(QDir(app.path(QStringLiteral("Integracao"))).isEmpty());
        QCOMPARE(app.dialogs().texts(), QStringList{IntegrationFile::kSemRecebimentos});
    }

    // A counter number that does not fit the header's one character (or no number at all):
    // the header is left out and reported; the receipts carry the last digit, or a zero.
    void counterNumberThatDoesNotFit_data() {
        QTest::addColumn<QString>("guiche");
        QTest::addColumn<QString>("digito");
        QTest::newRow("two characters") << "12"
                                        << "2";
        QTest::newRow("none") << ""
                              << "0";
    }
    void counterNumberThatDoesNotFit() {
        QFETCH(QString, guiche);
        QFETCH(QString, digito);
        TEST_BACKEND();
        Day d(app);
        app.setOption(QStringLiteral("Export"), QStringLiteral("guiche"), guiche);
        d.receipt(1, 1, "1,00", kBarcode);
        const auto r = d.run(Money::fromReais(1));
        QVERIFY(r.written);
        QCOMPARE(r.erros, QStringList{QStringLiteral("Header")});
        QCOMPARE(app.dialogs().texts(), QStringList{QStringLiteral("Erro ao gerar: Header")});
        QCOMPARE(app.dialogs().last().icon, DialogIcon::Critical);
        QCOMPARE(r.arquivo, app.path(QStringLiteral("Integracao/%1_202611231000.INT").arg(guiche)));
        const QStringList lines = linesOf(r.arquivo);
        QCOMPARE(lines.size(), 2);
        QCOMPARE(lines[0].size(), 200);
        QCOMPARE(read(lines[0])[QStringLiteral("guiche")], digito);
        QCOMPARE(lines[1].at(0), QLatin1Char('Z'));
        QCOMPARE(read(lines[1])[QStringLiteral("cont")], QStringLiteral("000000001"));
    }

    // A description that does not fit is not cut: the record is left out and reported, the
    // next entry's record is written, and a later long description keeps the previous one.
    void longDescriptionsAndNegativeCount() {
        TEST_BACKEND();
        Day d(app);
        d.receipt(1, 1, "1,00", kBarcode);
        const QString longText(171, QLatin1Char('X'));
        d.entry(EntryKind::PaymentOut, longText, {{102, QString(), QStringLiteral("1,00")}});
        d.entry(EntryKind::PaymentOut, QStringLiteral("CURTA"),
                {{102, QString(), QStringLiteral("2,00")}});
        d.entry(EntryKind::PaymentOut, longText + QStringLiteral("Y"),
                {{102, QString(), QStringLiteral("3,00")}});
        const auto r = d.run(-Money::fromReais(1));
        QCOMPARE(r.erros, (QStringList{QStringLiteral("HEADER_DEBITO"), QStringLiteral("FOOTER")}));
        QCOMPARE(app.dialogs().texts(), QStringList{QStringLiteral("Erro ao gerar: FOOTER")});
        const QStringList lines = linesOf(r.arquivo);
        QString kinds;
        for (const QString& l : lines)
            kinds += l.at(0);
        QCOMPARE(kinds, QStringLiteral("ARDSDSD")); // no footer, no first debit header
        QCOMPARE(read(lines[5])[QStringLiteral("descricao")].trimmed(), QStringLiteral("CURTA"));
        QCOMPARE(read(lines[5])[QStringLiteral("total")], QStringLiteral("0000000300"));
    }

    void filesThatCannotBeWritten_data() {
        QTest::addColumn<QString>("path1");
        QTest::newRow("missing folder") << "NaoExiste/";
        QTest::newRow("a file, not a folder") << "Config.ini/";
        QTest::newRow("read-only place") << "/proc/";
    }
    void filesThatCannotBeWritten() {
        QFETCH(QString, path1);
        TEST_BACKEND();
        Day d(app);
        d.receipt(1, 1, "1,00", kBarcode);
        app.setOption(QStringLiteral("Export"), QStringLiteral("Path1"), path1);
        const auto r = d.run(Money());
        QVERIFY(!r.written);
        QCOMPARE(app.dialogs().texts().size(), 2); // the error report, then the message
        QCOMPARE(app.dialogs().shown().first().icon, DialogIcon::Exclamation);
        QCOMPARE(app.dialogs().last().text, IntegrationFile::kErroGravar);
        QCOMPARE(app.dialogs().last().icon, DialogIcon::Critical);
        QVERIFY(!QFile::exists(r.arquivo));
        QVERIFY(QFile::exists(app.path(QStringLiteral("Log.ini"))));
    }

    void fileNameAndPause() {
        TEST_BACKEND();
        Day d(app);
        IntegrationFile f(app.ctx());
        QCOMPARE(f.caminhoPadrao(), d.expectedPath());
        app.setOption(QStringLiteral("Export"), QStringLiteral("Path1"), QString());
        QCOMPARE(f.caminhoPadrao(), app.path(QStringLiteral("3_202611231000.INT")));
        app.setOption(QStringLiteral("Export"), QStringLiteral("Path1"), QStringLiteral("/tmp/x"));
        QCOMPARE(f.caminhoPadrao(), QStringLiteral("/tmp/x/3_202611231000.INT"));
        QCOMPARE(IntegrationFile::pausaConfigurada(app.ctx()), 500);
        app.setOption(QStringLiteral("Export"), QStringLiteral("pausa_integracao"),
                      QStringLiteral("0"));
        QCOMPARE(IntegrationFile::pausaConfigurada(app.ctx()), 0);
        app.setOption(QStringLiteral("Export"), QStringLiteral("pausa_integracao"),
                      QStringLiteral("abc"));
        QCOMPARE(IntegrationFile::pausaConfigurada(app.ctx()), 500);
    }

    // The builder only joins what it is given: a field of the wrong width makes its record the
    // wrong length, and the layout table formats without cutting.
    void builderChecksTheLengthOnly() {
        using G = clsGeraIntegra;
        using R = G::Registro;
        G g;
        g.BANCO = G::campo(R::Header, &G::BANCO, QStringLiteral("5001"));
        g.DATA_RECEBIMENTO = QStringLiteral("23112026");
        g.SETOR = QStringLiteral("1");
        g.NSA = G::campo(R::Header, &G::NSA, QStringLiteral("42"));
        QVERIFY(g.Cria_header());
        QCOMPARE(g.HEADER().size(), 200);
        QVERIFY(g.HEADER().startsWith(QStringLiteral("A005001231120261000000000000420 ")));
        g.SETOR = QStringLiteral("12");
        QVERIFY(!g.Cria_header());
        QCOMPARE(g.HEADER().size(), 201);

        QCOMPARE(G::campo(R::Content, &G::AUTENTICA, QStringLiteral("123456")),
                 QStringLiteral("123456"));
        QCOMPARE(G::campo(R::DebitoContent, &G::D_NUMERO, QStringLiteral("12")),
                 QStringLiteral("12") + spaces(28));
        QCOMPARE(G::largura(R::Footer, &G::TOTAL), 15);
        QCOMPARE(G::largura(R::Footer, &G::BARRA), 0);
        QVERIFY(!g.Cria_footer()); // nothing set
        g.cont = G::campo(R::Footer, &G::cont, QStringLiteral("1"));
        g.TOTAL = Money::fromCents(1).centsText(15);
        g.CONFCAIXA = Money().centsText(15);
        QVERIFY(g.Cria_footer());
        QCOMPARE(G::nome(R::Content), QStringLiteral("CONTENT"));
        QCOMPARE(G::nome(R::DebitoContent), QStringLiteral("CONTENT_DEBITO"));
        g.RECURSO = QStringLiteral("kept"); // accepted, written by no record
        QVERIFY(g.Cria_footer());
        QCOMPARE(g.FOOTER().size(), 200);
    }
};

QTEST_GUILESS_MAIN(tst_integration)
#include "tst_integration.moc"
