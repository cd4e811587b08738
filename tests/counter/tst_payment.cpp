// The customer's list, the change, recording a payment and the cash day, on both engines.
#include "CashDay.h"
#include "CounterPrinter.h"
#include "CounterSession.h"
#include "DailyControlFile.h"
#include "DescriptionTexts.h"
#include "TestApp.h"
#include "TextFile.h"
#include "clsRecebimentos.h"

#include <QFile>

namespace {
// Records what the counter asked to print.
class RecordingPrinter : public CounterPrinter {
public:
    QStringList calls;
    bool aberturaMovimento(const clsMovimento& m) override {
        calls << QStringLiteral("abertura %1").arg(m.MOV);
        return true;
    }
    bool encerramento(const clsMovimento& m) override {
        calls << QStringLiteral("encerramento %1").arg(m.VALOR_ARRECADADO.format());
        return true;
    }
    bool reabertura(const clsMovimento& m) override {
        calls << QStringLiteral("reabertura %1").arg(m.MOV);
        return true;
    }
    bool documentos(const QList<RecordedReceipt>& rows, std::optional<PrinterMessage>*) override {
        for (const auto& r : rows)
            calls << QStringLiteral("documento %1 %2").arg(r.autentica).arg(r.item.valor.format());
        return true;
    }
    bool cupom(const QList<RecordedReceipt>& rows, const QString& pago,
               const QString& troco) override {
        calls << QStringLiteral("cupom %1 %2 %3").arg(rows.size()).arg(pago, troco);
        return true;
    }
};

CustomerItem item(int tipo, const char* valor, const QString& codbarra = {}) {
    CustomerItem it;
    it.tipo = tipo;
    it.descricao = QStringLiteral("TIPO %1").arg(tipo);
    it.valor = *Money::parse(QString::fromLatin1(valor));
    it.codbarra = codbarra;
    return it;
}
} // namespace

class tst_payment : public QObject {
    Q_OBJECT
private slots:
    void initTestCase_data() { addBackendRows(); }

    void listColumnsAndRemoval() {
        CustomerList l;
        l.append(item(4, "10,50", QString(44, QLatin1Char('8'))));
        l.append(item(12, "1.000,00"));
        QCOMPARE(l.text(0, CustomerList::Column::Numero), QStringLiteral("01"));
        QCOMPARE(l.text(1, CustomerList::Column::Tipo), QStringLiteral("12-TIPO 12"));
        QCOMPARE(l.text(1, CustomerList::Column::Acumulado), QStringLiteral("1.010,50"));
        QCOMPARE(l.text(1, CustomerList::Column::CodBarra), QString(44, QLatin1Char('0')));
        QVERIFY(l.hasBarcodeStartingWith(QString(44, QLatin1Char('8'))));
        QCOMPARE(l.removeByNumber(QStringLiteral("")), CustomerList::RemoveResult::Empty);
        QCOMPARE(l.removeByNumber(QStringLiteral("um")), CustomerList::RemoveResult::NotANumber);
        QCOMPARE(l.removeByNumber(QStringLiteral("3")), CustomerList::RemoveResult::NoSuchItem);
        QCOMPARE(l.removeByNumber(QStringLiteral("0")), CustomerList::RemoveResult::NoSuchItem);
        QCOMPARE(l.size(), 2);
        QCOMPARE(l.removeByNumber(QStringLiteral(" 1 ")), CustomerList::RemoveResult::Removed);
        QCOMPARE(l.text(0, CustomerList::Column::Numero), QStringLiteral("01"));
        QCOMPARE(l.total().format(), QStringLiteral("1.000,00"));

        CustomerList back;
        QVERIFY(CustomerList::fromLines(l.toLines(), back));
        QCOMPARE(back.toLines(), l.toLines());
        QVERIFY(!CustomerList::fromLines({QStringLiteral("01;xx;1,00")}, back));
    }

    // Tendered for a list of 10,50 and 20,00 (or none), the state and the label.
    void change_data() {
        QTest::addColumn<QString>("tendered");
        QTest::addColumn<bool>("items");
        QTest::addColumn<int>("state");
        QTest::addColumn<QString>("label");
        using S = ChangeResult::State;
        auto row = [](const char* name, const char* paid, bool items, S state, const char* label) {
            QTest::newRow(name) << QString::fromLatin1(paid) << items << int(state)
                                << QString::fromUtf8(label);
        };
        row("change", "50,00", true, S::Change, "Troco: R$ 19,50");
        row("owes", "30", true, S::Owes, "Deve: R$ 0,50");
        row("exact", "30,50", true, S::Exact, "Troco: R$ 0,00");
        row("no items", "10,00", false, S::NoItems, "Não tem ...");
        row("negative", "-5,00", true, S::AmountInvalid, "");
    }
    void change() {
        QFETCH_GLOBAL(QString, backend);
        QFETCH(QString, tendered);
        QFETCH(bool, items);
        QFETCH(int, state);
        QFETCH(QString, label);
        CustomerList l;
        if (items) {
            l.append(item(1, "10,50"));
            l.append(item(2, "20,00"));
        }
        const auto paid = Money::parse(tendered);
        QVERIFY(paid);
        const ChangeResult r = computeChange(*paid, l);
        QCOMPARE(int(r.state), state);
        QCOMPARE(r.label, label);
    }

    void recordsInOrderWithConsecutiveNumbers() {
        TEST_BACKEND();
        RecordingPrinter printer;
        app.setOption(QStringLiteral("Print"), QStringLiteral("print_cupom"), QStringLiteral("1"));
        CounterSession s(app.ctx(), &printer);
        app.ctx().workingDate = QDate(2026, 11, 23);
        app.ctx().userName = QStringLiteral("ANA");
        for (int k : {4, 7})
            QVERIFY(app.db().SQLExecute(QStringLiteral("INSERT INTO CodBarra (IDCOD, IDTIPO, "
                                                       "DESCRICAO, PADRAO) VALUES (?, ?, ?, 'F')"),
                                        {k, QString::number(k), QStringLiteral("TIPO %1").arg(k)}));
        QVERIFY(s.day().abrir());
        QVERIFY(s.append(item(4, "10,00", QString(44, QLatin1Char('8')))));
        QVERIFY(s.append(item(7, "5,25")));
        s.tender(Money::fromReais(20));
        app.dialogs().clear();
        auto rows = s.gravar();
        QVERIFY(rows);
        QCOMPARE(rows->size(), 2);
        QCOMPARE(app.dialogs().last().text, QStringLiteral("Registro Gravado!!!"));
        QCOMPARE(app.dialogs().last().title, QStringLiteral("Gravar Registro"));
        QCOMPARE(app.dialogs().last().icon, DialogIcon::Information);
        QVERIFY(s.list().isEmpty());
        QCOMPARE(s.paymentLabel(), QStringLiteral("A Pagar"));
        QCOMPARE(printer.calls.mid(1), (QStringList{QStringLiteral("documento 1 10,00"),
                                                    QStringLiteral("documento 2 5,25"),
                                                    QStringLiteral("cupom 2 20,00 4,75")}));

        clsRecebimentos r(app.db());
        QVERIFY(r.SQLSelect(rows->at(1).idrecebe));
        QCOMPARE(r.AUTENTICA, qint16(2));
        QCOMPARE(r.TIPO, qint16(7));
        QCOMPARE(r.EXPORT, qint16(1)); // no barcode
        QCOMPARE(r.VALOR.format(), QStringLiteral("5,25"));

        // The next customer continues the numbering.
        QVERIFY(s.append(item(4, "1,00", QString(44, QLatin1Char('9')))));
        rows = s.gravar();
        QVERIFY(rows);
        QCOMPARE(rows->first().autentica, qint16(3));
        const auto lancados = s.lancados();
        QCOMPARE(lancados.size(), 3);
        QCOMPARE(lancados.first().autentica, qint16(3)); // newest first
        QCOMPARE(lancados.last().descricao, QStringLiteral("TIPO 4"));

        QFile f(DailyControlFile::path(app.ctx(), QDate(2026, 11, 23)));
        QVERIFY(f.open(QIODevice::ReadOnly));
        const QList<QByteArray> lines = f.readAll().split('\n');
        QVERIFY(lines.first().startsWith("CONTROLE DE RECEBIMENTO DI\xc1RIO - 23/11/2026\r"));
        QCOMPARE(std::count_if(lines.begin(), lines.end(),
                               [](const QByteArray& l) { return l.contains("8888888888"); }),
                 1);
        QVERIFY(lines.at(4).startsWith("0001 10:00:00 04-TIPO 4"));
    }

    void failureAtThirdInsertRecordsNothing() {
        TEST_BACKEND();
        CounterSession s(app.ctx(), nullptr);
        app.ctx().workingDate = QDate(2026, 11, 23);
        QVERIFY(s.day().abrir());
        for (int i = 1; i <= 5; ++i)
            QVERIFY(s.append(item(i, "2,00", QString(44, QLatin1Char('0' + i)))));
        int inserts = 0;
        app.db().faultHook = [&](const QString& sql) {
            return sql.startsWith(QLatin1String("INSERT INTO Recebimentos")) && ++inserts == 3;
        };
        QVERIFY(!s.gravar());
        QCOMPARE(app.dialogs().last().text, Desc::kPagamentoFalhou);
        QCOMPARE(app.count(QStringLiteral("Recebimentos")), 0);
        QCOMPARE(s.list().size(), 5); // still there to retry

        app.db().faultHook = nullptr;
        const auto rows = s.gravar();
        QVERIFY(rows);
        QCOMPARE(app.count(QStringLiteral("Recebimentos")), 5);
        QCOMPARE(rows->last().autentica, qint16(5));
    }

    // Authentication numbers go on past 32 767 within one movement, recorded and listed.
    void numbersPastSixteenBits() {
        TEST_BACKEND();
        CounterSession s(app.ctx(), nullptr);
        app.ctx().workingDate = QDate(2026, 11, 23);
        QVERIFY(
            app.db().SQLExecute(QStringLiteral("INSERT INTO CodBarra (IDCOD, IDTIPO, DESCRICAO, "
                                               "PADRAO) VALUES (4, '4', 'TIPO 4', 'F')")));
        QVERIFY(s.day().abrir());
        clsRecebimentos last(app.db());
        last.AUTENTICA = 32767;
        last.IDMOVIMENTO = s.day().movimento().ID;
        last.TIPO = 4;
        last.CODBARRA = QString(44, QLatin1Char('7'));
        last.VALOR = Money::fromReais(1);
        QVERIFY(last.SQLInsert());
        QVERIFY(s.append(item(4, "2,00")));
        QVERIFY(s.append(item(4, "3,00")));
        const auto rows = s.gravar();
        QVERIFY(rows);
        QCOMPARE(rows->at(0).autentica, 32768);
        QCOMPARE(rows->at(1).autentica, 32769);
        const auto listed = s.lancados();
        QCOMPARE(listed.size(), 3);
        QCOMPARE(listed.first().autentica, 32769); // newest first
        QCOMPARE(s.resumoLancados()->quantidade, qint64(3));
    }

    void owedAmountAndClosedDayRefuse() {
        TEST_BACKEND();
        CounterSession s(app.ctx(), nullptr);
        app.ctx().workingDate = QDate(2026, 11, 23);
        QVERIFY(s.day().abrir());
        QVERIFY(s.append(item(1, "10,00")));
        s.tender(Money::fromReais(5));
        QVERIFY(!s.mayRecord());
        QVERIFY(!s.gravar());
        QCOMPARE(app.count(QStringLiteral("Recebimentos")), 0);

        QVERIFY(s.day().encerrar());
        s.tender(Money::fromReais(10));
        QVERIFY(!s.gravar());
        QCOMPARE(app.dialogs().last().text, Desc::kPagamentoEncerrado);
        QVERIFY(!s.append(item(2, "1,00")));
        QCOMPARE(app.count(QStringLiteral("Recebimentos")), 0);
    }

    void openResumeCloseReopen() {
        TEST_BACKEND();
        RecordingPrinter printer;
        app.ctx().workingDate = QDate(2026, 11, 20);
        CashDay day(app.ctx(), &printer);
        QVERIFY(day.abrir());
        QCOMPARE(app.dialogs().texts(), QStringList{QStringLiteral("Caixa Aberto!!!")});
        QCOMPARE(printer.calls, QStringList{QStringLiteral("abertura 1")});
        CashDay again(app.ctx(), &printer);
        QVERIFY(again.abrir());
        QCOMPARE(again.movimento().ID, day.movimento().ID); // resumed, not a second movement
        QCOMPARE(app.count(QStringLiteral("Movimento")), 1);

        // Receipts and the day's cash entries are summed into the movement.
        QVERIFY(app.db().SQLExecute(
            QStringLiteral(
                "INSERT INTO Recebimentos (AUTENTICA, IDMOVIMENTO, TIPO, VALOR, CODBARRA) "
                "VALUES (1, ?, 1, 123400, 'x'), (2, ?, 1, 5000, 'y')"),
            {day.movimento().ID, day.movimento().ID}));
        QVERIFY(app.db().SQLExecute(
            QStringLiteral("INSERT INTO Sangria (IDMOVIMENTO, TIPO, SDATA, ENTRADA, SAIDA) VALUES "
                           "(?, 'ENTRADA', ?, 1000000, 0), (?, 'SANGRIA', ?, 0, 20000)"),
            {day.movimento().ID, QDate(2026, 11, 20), day.movimento().ID, QDate(2026, 11, 20)}));
        app.dialogs().clear();
        QVERIFY(day.podeEncerrar());
        QVERIFY(!day.podeReabrir());
        QCOMPARE(app.dialogs().texts(), QStringList{QStringLiteral("O movimento já está aberto.")});
        QVERIFY(day.encerrar());
        QVERIFY(day.imprimirEncerramento());
        QCOMPARE(day.statusLabel(), QStringLiteral("CAIXA ENCERRADO"));
        QVERIFY(!day.podeEncerrar());
        QCOMPARE(app.dialogs().last().text, QStringLiteral("O movimento já está encerrado."));
        clsMovimento m(app.db());
        QVERIFY(m.SQLSelect(day.movimento().ID));
        QCOMPARE(m.VALOR_ARRECADADO.format(), QStringLiteral("12,84"));
        QCOMPARE(m.ENTRADA.format(), QStringLiteral("100,00"));
        QCOMPARE(m.SAIDA.format(), QStringLiteral("2,00"));
        QCOMPARE(m.STATUS, QStringLiteral("FECHADO"));
        QCOMPARE(printer.calls.last(), QStringLiteral("encerramento 12,84"));

        QVERIFY(day.reabrir());
        QVERIFY(day.imprimirReabertura());
        QVERIFY(m.SQLSelect(day.movimento().ID));
        QCOMPARE(m.STATUS, QStringLiteral("ABERTO"));
        QCOMPARE(printer.calls.last(), QStringLiteral("reabertura 1"));
    }

    // Scan, F11, record, F12: the recorded guides never come back. A sum file whose items were
    // all recorded is emptied; a code of the file already received or already on the loaded list
    // is refused as a scan refuses it, and the rest is loaded.
    void sumFileNeverBringsBackRecordedCodes() {
        TEST_BACKEND();
        CounterSession s(app.ctx(), nullptr);
        app.ctx().workingDate = QDate(2026, 11, 23);
        QVERIFY(s.day().abrir());
        const QString a = QStringLiteral("8") + QString(43, QLatin1Char('1'));
        const QString b = QStringLiteral("8") + QString(43, QLatin1Char('2'));
        QVERIFY(s.append(item(3, "10,00", a)));
        QVERIFY(s.append(item(3, "20,00", b)));
        QVERIFY(s.salvarSoma());
        QVERIFY(s.gravar());
        app.dialogs().clear();
        QVERIFY(!s.carregarSoma());
        QCOMPARE(app.dialogs().texts(), QStringList{QStringLiteral("Não há dados!!")});
        QVERIFY(s.list().isEmpty());

        // A file written before a was recorded, and a code twice: a and the second c stay out.
        const QString c = QStringLiteral("8") + QString(43, QLatin1Char('3'));
        CustomerList file;
        file.append(item(3, "10,00", a));
        file.append(item(4, "20,00", c));
        file.append(item(4, "20,00", c));
        file.append(item(5, "5,00", QString(44, QLatin1Char('0'))));
        QVERIFY(TextFile::writeAll(app.path(QStringLiteral("soma.txt")), file.toLines()));
        app.dialogs().clear();
        QVERIFY(s.carregarSoma());
        QCOMPARE(s.list().size(), 2);
        QCOMPARE(s.list().at(0).codbarra, c);
        QCOMPARE(app.dialogs().shown().size(), 2);
        const auto refused = app.dialogs().shown().at(0);
        QCOMPARE(refused.icon, DialogIcon::Exclamation);
        QCOMPARE(
            refused.text,
            QStringLiteral("Itens da soma não carregados:\n03-TIPO 3 %1: Conta já Recebida!!!\n"
                           "04-TIPO 4 %2: Conta já Lançada!!!")
                .arg(a, c));
        QCOMPARE(app.dialogs().last().text, QStringLiteral("Arquivo carregado com sucesso!!"));
        QVERIFY(s.gravar());
        QCOMPARE(app.count(QStringLiteral("Recebimentos")), 4);
        // Part of the file was refused, so it is kept as it was.
        QCOMPARE(TextFile::readLines(app.path(QStringLiteral("soma.txt"))).size(), 4);
    }

    // Items taken off the sum go to the removed-items file with the sum, and come back with it.
    void removedItemsFileIsKeptWithTheSum() {
        TEST_BACKEND();
        app.setOption(QStringLiteral("Export"), QStringLiteral("caminho_remove_item"),
                      QStringLiteral("removidos.txt"));
        CounterSession s(app.ctx(), nullptr);
        app.ctx().workingDate = QDate(2026, 11, 23);
        QVERIFY(s.day().abrir());
        QVERIFY(s.append(item(3, "1,00")));
        QVERIFY(s.append(item(4, "2,00")));
        QVERIFY(s.append(item(5, "3,00")));
        QVERIFY(s.removerUltimo());
        QCOMPARE(s.removerNumero(QStringLiteral("1")), CustomerList::RemoveResult::Removed);
        QCOMPARE(s.removerNumero(QStringLiteral("7")), CustomerList::RemoveResult::NoSuchItem);
        QCOMPARE(s.list().size(), 1);
        QVERIFY(s.salvarSoma());
        const QStringList removed = TextFile::readLines(app.path(QStringLiteral("removidos.txt")));
        QCOMPARE(removed.size(), 2);
        QVERIFY(removed.at(0).startsWith(QStringLiteral("01;05-TIPO 5;3,00;")));
        QVERIFY(removed.at(1).startsWith(QStringLiteral("02;03-TIPO 3;1,00;")));
        s.limparSoma();
        QCOMPARE(s.removidos().size(), 3);
        QVERIFY(s.carregarSoma());
        QCOMPARE(s.list().size(), 1);
        QCOMPARE(s.removidos().size(), 2);
        QVERIFY(s.gravar());
        QVERIFY(s.removidos().isEmpty());
        QVERIFY(TextFile::readLines(app.path(QStringLiteral("removidos.txt"))).isEmpty());
    }
};

QTEST_GUILESS_MAIN(tst_payment)
#include "tst_payment.moc"
