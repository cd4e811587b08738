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

// The layout as the accounting system reads it, keyed by the record's first character: each
// field's name and width, in order.
const QHash<QChar, QString>& layout() {
    static const QHash<QChar, QString> l = {
        {QLatin1Char('A'),
         QStringLiteral("reg 1 banco 6 data 8 setor 1 nsa 14 zero 1 brancos 169")},
        {QLatin1Char('R'),
         QStringLiteral("reg 1 data 8 sep1 1 autentica 5 guiche 1 tipo 4 sep2 1 entrada 9 saida 9 "
                        "diferenca 9 sep3 1 barra 44 sep4 1 especie 10 identifica 10 sep5 1 "
                        "export 1 msg 84")},
        {QLatin1Char('J'), QStringLiteral("reg 1 data 8 total 10 id 10 descricao 171")},
        {QLatin1Char('D'), QStringLiteral("reg 1 especie 5 numero 30 valor 10 id 10 brancos 144")},
        {QLatin1Char('Z'), QStringLiteral("reg 1 cont 9 total 15 confcaixa 15 zero 1 brancos 159")},
    };
    return l;
}

using Fields = QHash<QString, QString>;

Fields read(const QString& line) {
    const QChar code = line.at(0) == QLatin1Char('S') ? QLatin1Char('J') : line.at(0);
    const QStringList parts = layout().value(code).split(QLatin1Char(' '));
    Fields f;
    int at = 0;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        f.insert(parts[i], line.mid(at, parts[i + 1].toInt()));
        at += parts[i + 1].toInt();
    }
    [&] { QCOMPARE(at, 200); }(); // the test's own table covers the record
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
        QVERIFY(m.inserirNovo());
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
        [&] { QVERIFY(e.incluirItens(descricao).done); }();
        for (const auto& [especie, numero, valor] : items)
            [&] { QVERIFY(e.gravarItem(especie, numero, *Money::parse(valor)).done); }();
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
        const auto r = f.gerar(m, confCaixa);
        // The run decides and keeps what to tell: no box until the caller shows its notices.
        if (!app.dialogs().texts().isEmpty())
            QTest::qFail("the run opened a box", __FILE__, __LINE__);
        r.mostrar(app.dialogs());
        return r;
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
                    {{102, QString(29, QLatin1Char('9')), QStringLiteral("30,00")}});
        int pauses = 0;
        const auto r = d.run(*Money::parse(QStringLiteral("1.100,00")), &pauses);
        QVERIFY(r.written);
        QCOMPARE(r.arquivo, d.expectedPath());
        QCOMPARE(r.registros, 9);
        QVERIFY(r.erros.isEmpty());
        QCOMPARE(pauses, 2 + 2 + 3); // after each receipt, entry and item
        QCOMPARE(app.dialogs().texts(),
                 QStringList{QStringLiteral("Geração de arquivo efetuada com sucesso!!")});
        QCOMPARE(app.dialogs().last().icon, DialogIcon::Information);

        QFile raw(r.arquivo);
        QVERIFY(raw.open(QIODevice::ReadOnly));
        const QByteArray bytes = raw.readAll();
        QVERIFY(bytes.contains("EMPENHO \xC1GUA")); // ISO-8859-1
        QCOMPARE(bytes.count("\r\n"), 9);
        QCOMPARE(bytes.count('\n'), 9);
        const QStringList lines = linesOf(r.arquivo);
        QCOMPARE(lines.size(), 9);

        const auto id = [](qint32 n, int width) {
            return QStringLiteral("%1").arg(n, width, 10, QLatin1Char('0'));
        };
        const auto text = [](const char* t, int width) {
            return QString::fromUtf8(t).leftJustified(width, QLatin1Char(' '));
        };
        const QStringList expected = {
            QStringLiteral("A00500123112026") + QStringLiteral("3") + id(d.mov, 14) +
                QStringLiteral("0") + spaces(169),
            // date, number, counter, kind, amounts, code, kind of money, identification, export
            QStringLiteral("R23112026 0000130001 000123456000000000000000000 ") + kBarcode +
                QStringLiteral(" ") + spaces(10) + QStringLiteral("0000000000 0") + spaces(84),
            QStringLiteral("R23112026 0000230007 000001000000000000000000000 ") +
                clsRecebimentos::kSemCodigo + QStringLiteral(" ") + spaces(10) +
                QStringLiteral("0000000000 1") + spaces(84),
            QStringLiteral("J231120260000015000") + id(sangria, 10) +
                text("RETIRADAS DE CAIXA", 171),
            QStringLiteral("D00100") + spaces(30) + QStringLiteral("0000010000") + id(sangria, 10) +
                spaces(144),
            QStringLiteral("D00101") + text("123", 30) + QStringLiteral("0000005000") +
                id(sangria, 10) + spaces(144),
            QStringLiteral("S231120260000003000") + id(pagamento, 10) + text("EMPENHO ÁGUA", 171),
            // the longest number that fits (30 would be refused when typed)
            QStringLiteral("D00102") + QString(29, QLatin1Char('9')) +
                QStringLiteral(" 0000003000") + id(pagamento, 10) + spaces(144),
            QStringLiteral("Z000000002000000000124456000000000110000") + QStringLiteral("0") +
                spaces(159)};
        for (int i = 0; i < lines.size(); ++i)
            QCOMPARE(lines[i], expected[i]);
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
        QCOMPARE(app.dialogs().texts(),
                 QStringList{QStringLiteral(
                     "Não há recebimentos neste movimento: nenhum arquivo foi gerado.")});
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

    // A description that does not fit is refused when typed. One already stored (by an older
    // program or a database tool) is not cut: the record is left out and reported, the next
    // entry's record is written, and a later long description keeps the previous one.
    void longDescriptionsAndNegativeCount() {
        TEST_BACKEND();
        Day d(app);
        d.receipt(1, 1, "1,00", kBarcode);
        const QString longText(171, QLatin1Char('X'));
        CashEntry refused(app.ctx(), d.mov, EntryKind::PaymentOut);
        app.dialogs().clear();
        const Outcome told = refused.incluirItens(longText);
        QVERIFY(!told);
        QCOMPARE(told.notice.text,
                 QStringLiteral("A descrição tem 171 caracteres; cabem no máximo 170."));
        QCOMPARE(told.notice.title, QStringLiteral("Aviso"));
        QVERIFY(!refused.stored());
        d.entry(EntryKind::PaymentOut, QStringLiteral("PRIMEIRA"),
                {{102, QString(), QStringLiteral("1,00")}});
        d.entry(EntryKind::PaymentOut, QStringLiteral("CURTA"),
                {{102, QString(), QStringLiteral("2,00")}});
        d.entry(EntryKind::PaymentOut, QStringLiteral("TERCEIRA"),
                {{102, QString(), QStringLiteral("3,00")}});
        for (const auto& [was, now] : {std::pair{"PRIMEIRA", longText},
                                       std::pair{"TERCEIRA", longText + QStringLiteral("Y")}})
            QVERIFY(app.db().SQLExecute(QStringLiteral("UPDATE Sangria SET DESCRICAO = '%1' "
                                                       "WHERE DESCRICAO = '%2'")
                                            .arg(now, QLatin1String(was))));
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

    // The file is always a new one: a second run in the same minute leaves the first alone.
    void sameMinuteIsRefused() {
        TEST_BACKEND();
        Day d(app);
        d.receipt(1, 1, "1,00", kBarcode);
        const auto first = d.run(Money());
        QVERIFY(first.written);
        const QStringList before = linesOf(first.arquivo);
        d.receipt(2, 1, "2,00", other(kBarcode, 1));
        const auto second = d.run(Money());
        QVERIFY(!second.written);
        QVERIFY(app.dialogs().texts().first().contains(
            QStringLiteral("já existe e não será substituído")));
        QCOMPARE(app.dialogs().last().text, QStringLiteral("Erro ao gravar arquivo!!"));
        QCOMPARE(linesOf(first.arquivo), before);
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
        QCOMPARE(app.dialogs().last().text, QStringLiteral("Erro ao gravar arquivo!!"));
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
        QCOMPARE(IntegrationFile::pausaConfigurada(app.ctx()), 500);
        app.setOption(QStringLiteral("Export"), QStringLiteral("pausa_integracao"),
                      QStringLiteral("0"));
        QCOMPARE(IntegrationFile::pausaConfigurada(app.ctx()), 0);
        app.setOption(QStringLiteral("Export"), QStringLiteral("pausa_integracao"),
                      QStringLiteral("abc"));
        QCOMPARE(IntegrationFile::pausaConfigurada(app.ctx()), 500);
    }

    // The builder only joins what it is given: a field of the wrong width makes its record the
    // wrong length, and the layout table pads without cutting.
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
        QVERIFY(!g.Cria_footer()); // nothing set
    }
};

QTEST_GUILESS_MAIN(tst_integration)
#include "tst_integration.moc"
