// Changes, reversals and their undoing on receipts recorded as the counter records them: the
// rows, the Estornos table, the yearly log line by line, the tape through the emulated printer,
// and every refusal with nothing changed.
#include "CashEntry.h"
#include "CorrectionLog.h"
#include "CounterSession.h"
#include "DescriptionTexts.h"
#include "OpenCounter.h"
#include "ReceiptCorrections.h"
#include "TextFile.h"
#include "clsEstornos.h"

#include <QDir>
#include <QFile>

using RC = ReceiptCorrections;

namespace {
const QString kTaxas = QStringLiteral("81660000003124004262026113058888888888888888");
const QString kAgua = QStringLiteral("00193165100000089151234500000000000000000000");

// A counter of guiche 3 with the first printer model, and one customer recorded: 001 312,40
// TAXAS DIVERSAS, 002 89,15 AGUA E ESGOTO, 003 5,00 CERTIDAO NEGATIVA (no barcode).
struct Counter : OpenCounter {
    RC corrections{app.ctx(), printer.get()};
    QList<RecordedReceipt> rows;
    int tapeBefore = 0;

    explicit Counter(const QString& backend)
        : OpenCounter(backend == QLatin1String("postgres") ? TestApp::Backend::PostgreSQL
                                                           : TestApp::Backend::SQLite,
                      Printer::Bematech) {
        if (seeded && open())
            recordOneCustomer();
    }
    void recordOneCustomer() {
        session.ler(kTaxas);
        session.ler(kAgua);
        session.somaAvulso({8, Money::fromReais(5), QDate(), QString(), QString()});
        rows = session.gravar().value_or(QList<RecordedReceipt>{});
        app.dialogs().clear();
        tapeBefore = int(emulator.tape().size());
    }
    // As the screen and the command do: what was typed read at the edge, the correction, then
    // its notices told.
    RC::Resultado told(RC::Resultado r) {
        r.mostrar(app.dialogs());
        return r;
    }
    RC::Resultado alterar(const CorrectionRequest::AsTyped& typed) {
        const auto read = CorrectionRequest::read(typed);
        return told(read.request ? corrections.alterar(*read.request)
                                 : RC::Resultado::refused(read.refusal));
    }
    RC::Resultado alterar(qint32 id, const RC::Valores& v, const QString& motivo) {
        return told(corrections.alterar(id, v, motivo));
    }
    RC::Resultado estornar(qint32 id, const QString& motivo) {
        return told(corrections.estornar(id, motivo));
    }
    RC::Resultado reverter(qint32 id) { return told(corrections.reverter(id)); }
    QStringList newTape() const { return emulator.tape().mid(tapeBefore); }
    QString logPath(int year = 2026) {
        return app.path(QStringLiteral("Estorno_3_%1.txt").arg(year));
    }
    QStringList log(int year = 2026) {
        QFile f(logPath(year));
        if (!f.open(QIODevice::ReadOnly))
            return {};
        QStringList lines = QString::fromLatin1(f.readAll()).split(QStringLiteral("\r\n"));
        lines.removeLast(); // after the last CRLF
        return lines;
    }
    // Every receipt as a line, to see that nothing changed.
    QStringList snapshot() {
        QStringList out;
        const auto rs = app.ctx().db.SQLSelect_ReadOnly(
            QStringLiteral("SELECT IDRECEBE, AUTENTICA, CODBARRA, TIPO, VALOR, EXPORT FROM "
                           "Recebimentos ORDER BY IDRECEBE"));
        for (Recordset r = *rs; !r.EOF_(); r.moveNext())
            out << QStringList{r.text(QStringLiteral("IDRECEBE")),
                               r.text(QStringLiteral("AUTENTICA")),
                               r.text(QStringLiteral("CODBARRA")),
                               r.text(QStringLiteral("TIPO")),
                               r.text(QStringLiteral("VALOR")),
                               r.text(QStringLiteral("EXPORT"))}
                       .join(QLatin1Char(' '));
        return out;
    }
    clsRecebimentos receipt(qint32 id) {
        clsRecebimentos r(app.ctx().db);
        r.SQLSelect(id);
        return r;
    }
};

const QStringList kHeader = {QString(100, QLatin1Char('=')),
                             QStringLiteral("CONTROLE DE RECEBIMENTO DIÁRIO - PMX"),
                             QStringLiteral("CAIXA: 3"), QString(100, QLatin1Char('='))};

QStringList entry(const QString& item, const QString& tipo, const QString& valor) {
    return {QStringLiteral("Movimento: 001"), QStringLiteral("Data: 23/11/2026"),
            QStringLiteral("User: ANA"),      QStringLiteral("Item: ") + item,
            QStringLiteral("Tipo: ") + tipo,  QStringLiteral("Valor: ") + valor};
}
} // namespace

class tst_corrections : public QObject {
    Q_OBJECT
private slots:
    void initTestCase_data() { addBackendRows(); }

    void reversalKeepsTheReceiptLogsAndPrints() {
        QFETCH_GLOBAL(QString, backend);
        Counter c(backend);
        TestApp& app = c.app;
        QVERIFY2(app.ok(), "test database could not be opened");
        QCOMPARE(c.rows.size(), 3);
        const qint32 id = c.rows.at(2).idrecebe;
        const auto res = c.corrections.estornar(id, QStringLiteral("  Cobrado a mais "));
        QVERIFY(res.feito);
        // The core tells nothing itself: its result is told once the work is over.
        QVERIFY(app.dialogs().shown().isEmpty());
        res.mostrar(app.dialogs());
        QCOMPARE(res.fita, CounterPrinter::Fita::Impressa);
        QCOMPARE(app.count(QStringLiteral("Recebimentos")), 2);
        QCOMPARE(app.count(QStringLiteral("Recebimentos"), QStringLiteral("IDRECEBE = %1").arg(id)),
                 0);

        const auto kept = clsEstornos::listarDoMovimento(app.db(), c.session.day().movimento().ID);
        QCOMPARE(kept->size(), 1);
        const clsEstornos& e = kept->first();
        QCOMPARE(e.OPERACAO, clsEstornos::Operacao::Estorno);
        QCOMPARE(QStringList({QString::number(e.IDRECEBE), QString::number(e.AUTENTICA), e.CODBARRA,
                              QString::number(e.EXPORT), QString::number(e.TIPO), e.VALOR.format(),
                              e.USUARIO, e.MOTIVO}),
                 QStringList({QString::number(id), "3", clsRecebimentos::kSemCodigo, "1", "8",
                              "5,00", "ANA", "Cobrado a mais"}));
        QCOMPARE(e.MOMENTO, app.clock().now());

        QCOMPARE(c.log(),
                 kHeader + entry(QStringLiteral("003"), QStringLiteral("CERTIDAO NEGATIVA"),
                                 QStringLiteral("5,00"))
                     << QStringLiteral("Motivo do estorno: Cobrado a mais"));
        QFile raw(c.logPath());
        QVERIFY(raw.open(QIODevice::ReadOnly));
        QVERIFY(raw.readAll().contains("DI\xC1RIO - PMX\r\nCAIXA: 3\r\n")); // Latin-1, CRLF

        QCOMPARE(c.newTape(),
                 QStringList{QStringLiteral("(-)  ESTORNO ITEM: 003 --->         5,00")});
        QCOMPARE(c.newTape().first().size(), 40);
        QCOMPARE(app.dialogs().shown().size(), 1);
        QCOMPARE(app.dialogs().last().text, QStringLiteral("Exclusão efetuada com sucesso!!"));
        QCOMPARE(app.dialogs().last().title, QStringLiteral("Aviso"));
        QCOMPARE(app.dialogs().last().icon, DialogIcon::Information);
    }

    void change_data() {
        QTest::addColumn<QString>("tipo");
        QTest::addColumn<QString>("autentica");
        QTest::addColumn<QString>("codbarra");
        QTest::addColumn<QString>("valor");
        QTest::addColumn<QStringList>("logTail"); // after "User: ANA"
        QTest::addColumn<QStringList>("tape");
        QTest::addColumn<int>("exportFlag");
        const QString m = QStringLiteral("Motivo da Alteração: conferido");
        QTest::newRow("amount")
            << QString() << QString() << QString() << QStringLiteral("6,50")
            << QStringList{QStringLiteral("Item: 003"), QStringLiteral("Tipo: CERTIDAO NEGATIVA"),
                           QStringLiteral("Valor: 6,50"), QStringLiteral("Valor anterior: 5,00"), m}
            << QStringList{QStringLiteral("(*) ALT. ITEM: 003 NOVO VALOR: 6,50")} << 1;
        // A kind of the same standard (a loose item stays a loose item).
        QTest::newRow("type")
            << QStringLiteral("7") << QString() << QString() << QString()
            << QStringList{QStringLiteral("Item: 003"), QStringLiteral("Tipo: TAXA DE EXPEDIENTE"),
                           QStringLiteral("Valor: 5,00"),
                           QStringLiteral("Tipo anterior: CERTIDAO NEGATIVA"), m}
            << QStringList{QStringLiteral("(*) ALT. ITEM: 003 NOVO TIPO: TAXA DE EX")} << 1;
        QTest::newRow("both")
            << QStringLiteral("7") << QString() << QString() << QStringLiteral("1.234,50")
            << QStringList{QStringLiteral("Item: 003"),
                           QStringLiteral("Tipo: TAXA DE EXPEDIENTE"),
                           QStringLiteral("Valor: 1.234,50"),
                           QStringLiteral("Valor anterior: 5,00"),
                           QStringLiteral("Tipo anterior: CERTIDAO NEGATIVA"),
                           m}
            << QStringList{QStringLiteral("(*) ALT. ITEM: 003 NOVO VALOR: 1.234,50"),
                           QStringLiteral("(*) ALT. ITEM: 003 NOVO TIPO: TAXA DE EX")}
            << 1;
        // A number or a code changes without a tape line; a real code goes to the bank files.
        QTest::newRow("number and code")
            << QString() << QStringLiteral("9") << QString(44, QLatin1Char('5')) << QString()
            << QStringList{QStringLiteral("Item: 009"), QStringLiteral("Tipo: CERTIDAO NEGATIVA"),
                           QStringLiteral("Valor: 5,00"), m}
            << QStringList{} << 0;
    }
    void change() {
        QFETCH_GLOBAL(QString, backend);
        QFETCH(QString, tipo);
        QFETCH(QString, autentica);
        QFETCH(QString, codbarra);
        QFETCH(QString, valor);
        QFETCH(QStringList, logTail);
        QFETCH(QStringList, tape);
        QFETCH(int, exportFlag);
        Counter c(backend);
        TestApp& app = c.app;
        QVERIFY2(app.ok(), "test database could not be opened");
        const clsRecebimentos before = c.receipt(c.rows.at(2).idrecebe);
        CorrectionRequest::AsTyped p;
        p.idrecebe = before.IDRECEBE;
        auto given = [](const QString& s) { return s.isEmpty() ? std::nullopt : std::optional(s); };
        p.tipo = given(tipo);
        p.autentica = given(autentica);
        p.codbarra = given(codbarra);
        p.valor = given(valor);
        p.motivo = QStringLiteral("conferido");
        const auto res = c.alterar(p);
        QVERIFY(res.feito);
        QCOMPARE(app.dialogs().last().text, QStringLiteral("Operação efetuada com sucesso!!"));
        QCOMPARE(app.dialogs().last().icon, DialogIcon::Information);

        const clsRecebimentos after = c.receipt(before.IDRECEBE);
        QCOMPARE(after.TIPO, tipo.isEmpty() ? before.TIPO : qint16(tipo.toInt()));
        QCOMPARE(after.AUTENTICA,
                 autentica.isEmpty() ? before.AUTENTICA : qint16(autentica.toInt()));
        QCOMPARE(after.CODBARRA, codbarra.isEmpty() ? before.CODBARRA : codbarra);
        QCOMPARE(after.VALOR, valor.isEmpty() ? before.VALOR : *Money::parse(valor));
        QCOMPARE(after.EXPORT, qint16(exportFlag));
        QCOMPARE(after.VENCIMENTO, before.VENCIMENTO);

        const auto kept = clsEstornos::listarDoMovimento(app.db(), c.session.day().movimento().ID);
        QCOMPARE(kept->size(), 1);
        const clsEstornos& e = kept->first();
        QCOMPARE(e.OPERACAO, clsEstornos::Operacao::Alteracao);
        QCOMPARE(e.VALOR, before.VALOR);
        QCOMPARE(e.TIPO, before.TIPO);
        QCOMPARE(e.AUTENTICA, before.AUTENTICA);
        QCOMPARE(e.CODBARRA, before.CODBARRA);
        QCOMPARE(e.NOVO_VALOR, std::optional(after.VALOR));
        QCOMPARE(e.NOVO_TIPO, std::optional(after.TIPO));
        QCOMPARE(e.NOVO_AUTENTICA, std::optional(after.AUTENTICA));
        QCOMPARE(e.NOVO_CODBARRA, after.CODBARRA);

        QStringList expected = kHeader;
        expected << QStringLiteral("Movimento: 001") << QStringLiteral("Data: 23/11/2026")
                 << QStringLiteral("User: ANA") << logTail;
        QCOMPARE(c.log(), expected);
        QCOMPARE(c.newTape(), tape);
        for (const QString& line : c.newTape())
            QVERIFY2(line.size() <= 40, qPrintable(line));
    }

    void refusals_data() {
        QTest::addColumn<QString>("op");
        QTest::addColumn<QString>("field"); // which field of the change carries `text`
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("motivo");
        QTest::addColumn<QString>("message");
        QTest::addColumn<int>("icon");
        const int warn = int(DialogIcon::Exclamation);
        const int crit = int(DialogIcon::Critical);
        auto row = [](const char* name, const char* op, const char* field, const QString& text,
                      const char* motivo, const QString& message, int icon) {
            QTest::newRow(name) << op << field << text << motivo << message << icon;
        };
        const char* ok = "motivo";
        row("reversal, blank reason", "estornar", "", "", "   ",
            QStringLiteral("Um motivo deve ser especificado!!"), warn);
        row("change, blank reason", "alterar", "valor", "6,00", "",
            QStringLiteral("Um motivo deve ser especificado!!"), warn);
        row("change, empty field", "alterar", "valor", " ", ok, Desc::kCamposObrigatorios, warn);
        row("amount with letters", "alterar", "valor", "12,ab", ok,
            QStringLiteral("O valor informado não é um número!!"), crit);
        row("amount zero", "alterar", "valor", "0,00", ok,
            QStringLiteral("O valor informado não é um número!!"), crit);
        row("amount below a cent", "alterar", "valor", "1,005", ok,
            QStringLiteral("O valor informado não é um número!!"), crit);
        row("number of another receipt", "alterar", "autentica", "1", ok,
            QStringLiteral("A autenticação %1 já pertence a outro recebimento deste movimento!!")
                .arg("001"),
            crit);
        row("number not a number", "alterar", "autentica", "x1", ok,
            QStringLiteral("O número de autenticação deve ser um número maior que zero!!"), crit);
        const QString beyond = QStringLiteral("O número de autenticação vai até 99999: os "
                                              "arquivos do movimento não levam um número maior!!");
        row("number beyond five digits", "alterar", "autentica", "100000", ok, beyond, crit);
        row("number beyond 32 bits", "alterar", "autentica", "2147483647", ok, beyond, crit);
        row("number beyond 64 bits", "alterar", "autentica", "99999999999999999999", ok,
            QStringLiteral("O número de autenticação deve ser um número maior que zero!!"), crit);
        row("code of another receipt", "alterar", "codbarra", kTaxas, ok,
            QStringLiteral("Conta já Recebida!!!"), crit);
        row("code too short", "alterar", "codbarra", "8166", ok,
            QStringLiteral("O código de barras deve ter 44 dígitos!!"), crit);
        row("unknown kind", "alterar", "tipo", "99", ok,
            QStringLiteral("Tipo de guia não cadastrado!!"), crit);
        row("nothing changed", "alterar", "valor", "5,00", ok,
            QStringLiteral("Nenhum campo foi alterado!!"), warn);
        row("reversal, reason with a quote", "estornar", "", "", "d'agua", Desc::kErroExcluir,
            crit);
        row("change, reason with a quote", "alterar", "valor", "6,00", "d'agua",
            QStringLiteral("Erro ao gravar"), crit);
        row("reversal, closed day", "estornar-fechado", "", "", ok,
            QStringLiteral(
                "O movimento deste dia está encerrado!! Reabra o movimento (F5) para corrigir."),
            crit);
        row("change, closed day", "alterar-fechado", "valor", "6,00", ok,
            QStringLiteral(
                "O movimento deste dia está encerrado!! Reabra o movimento (F5) para corrigir."),
            crit);
        row("reversal, log folder cannot be written", "estornar-pasta", "", "", ok, "", crit);
        row("change, log folder cannot be written", "alterar-pasta", "valor", "6,00", ok, "", crit);
        row("reversal, database refuses the delete", "estornar-falha", "", "", ok,
            Desc::kErroExcluir, crit);
        row("change, database refuses the update", "alterar-falha", "valor", "6,00", ok,
            QStringLiteral("Erro ao gravar"), crit);
        row("unknown receipt", "estornar-desconhecido", "", "", ok,
            QStringLiteral("Recebimento não encontrado no movimento deste dia!!"), crit);
        row("day without movement", "alterar-outro", "valor", "6,00", ok,
            QStringLiteral("Não há movimento nesta data!!"), crit);
    }
    void refusals() {
        QFETCH_GLOBAL(QString, backend);
        QFETCH(QString, op);
        QFETCH(QString, field);
        QFETCH(QString, text);
        QFETCH(QString, motivo);
        QFETCH(QString, message);
        QFETCH(int, icon);
        Counter c(backend);
        TestApp& app = c.app;
        QVERIFY2(app.ok(), "test database could not be opened");
        qint32 id = c.rows.at(2).idrecebe;
        if (op.endsWith(QLatin1String("-fechado")))
            QVERIFY(c.session.day().encerrar());
        if (op.endsWith(QLatin1String("-pasta"))) {
            // A folder that cannot be made: its parent is a file.
            QFile blocker(app.path(QStringLiteral("bloqueio")));
            QVERIFY(blocker.open(QIODevice::WriteOnly));
            app.setOption(QStringLiteral("Export"), QStringLiteral("Path2"),
                          app.path(QStringLiteral("bloqueio/estornos")));
            message = QStringLiteral(
                          "Não é possível gravar o registro de estornos em %1!! Nada foi alterado.")
                          .arg(QDir::toNativeSeparators(
                              app.path(QStringLiteral("bloqueio/estornos/Estorno_3_2026.txt"))));
        }
        if (op.endsWith(QLatin1String("-falha")))
            app.db().faultHook = [](const QString& sql) {
                return sql.startsWith(QLatin1String("DELETE FROM Recebimentos")) ||
                       sql.startsWith(QLatin1String("UPDATE Recebimentos SET AUTENTICA"));
            };
        if (op.endsWith(QLatin1String("-outro")))
            app.ctx().workingDate = QDate(2026, 11, 24);
        if (op.endsWith(QLatin1String("-desconhecido")))
            id = 99999;
        const QStringList before = c.snapshot();
        app.dialogs().clear();
        RC::Resultado res;
        if (op.startsWith(QLatin1String("estornar"))) {
            const Notice refusal = c.corrections.recusaEstorno(id, motivo);
            tell(app.dialogs(), refusal);
            const bool may = refusal.empty();
            // What the check sees is refused before the question; the rest by the write.
            QCOMPARE(may, message == Desc::kErroExcluir);
            app.dialogs().clear();
            res = c.estornar(id, motivo);
        } else {
            CorrectionRequest::AsTyped p;
            p.idrecebe = id;
            if (field == QLatin1String("valor"))
                p.valor = text;
            else if (field == QLatin1String("autentica"))
                p.autentica = text;
            else if (field == QLatin1String("codbarra"))
                p.codbarra = text;
            else
                p.tipo = text;
            p.motivo = motivo;
            res = c.alterar(p);
        }
        app.db().faultHook = nullptr;
        QVERIFY(!res.feito);
        QCOMPARE(app.dialogs().last().text, message);
        QCOMPARE(app.dialogs().last().title, QStringLiteral("Aviso"));
        QCOMPARE(int(app.dialogs().last().icon), icon);
        QCOMPARE(c.snapshot(), before);
        QCOMPARE(app.count(QStringLiteral("Estornos")), 0);
        QVERIFY(!QFile::exists(c.logPath()));
        QVERIFY(c.newTape().isEmpty());
    }

    // A reversal committed whose log entry was never written (a crash at the log's opening)
    // gets it from the Estornos table, exactly once: on the next correction, on `estornos` and
    // when a day is opened. A torn last line is ended before the entry.
    void logIsCompletedFromTheTable() {
        QFETCH_GLOBAL(QString, backend);
        Counter c(backend);
        TestApp& app = c.app;
        QVERIFY2(app.ok(), "test database could not be opened");
        QVERIFY(c.estornar(c.rows.at(0).idrecebe, QStringLiteral("primeiro")).feito);
        // The second reversal as the database kept it when the program died after its commit.
        clsRecebimentos lost = c.receipt(c.rows.at(1).idrecebe);
        clsEstornos row(app.db());
        row.copiarRecebimento(lost);
        row.OPERACAO = clsEstornos::Operacao::Estorno;
        row.MOMENTO = app.clock().now();
        row.USUARIO = QStringLiteral("ANA");
        row.MOTIVO = QStringLiteral("queda de energia");
        QVERIFY(row.SQLInsert());
        QVERIFY(lost.SQLDelete());
        QFile torn(c.logPath());
        QVERIFY(torn.open(QIODevice::Append));
        QVERIFY(torn.write("Movimento: 0") > 0);
        torn.close();

        const QStringList lostEntry =
            entry(QStringLiteral("002"), QStringLiteral("AGUA E ESGOTO"), QStringLiteral("89,15"))
            << QStringLiteral("Motivo do estorno: queda de energia");
        QCOMPARE(c.corrections.completarRegistro(), std::optional<int>(1));
        QCOMPARE(c.log().mid(c.log().size() - lostEntry.size()), lostEntry);
        QCOMPARE(c.log().at(c.log().size() - lostEntry.size() - 1), QStringLiteral("Movimento: 0"));
        // Once: neither a second completion nor the next correction writes it again.
        QCOMPARE(c.corrections.completarRegistro(), std::optional<int>(0));
        CorrectionRequest::AsTyped p;
        p.idrecebe = c.rows.at(2).idrecebe;
        p.valor = QStringLiteral("6,00");
        p.motivo = QStringLiteral("valor");
        QVERIFY(c.alterar(p).feito);
        QVERIFY(c.reverter(c.rows.at(1).idrecebe).feito);
        QCOMPARE(c.corrections.completarRegistro(), std::optional<int>(0));
        const QStringList log = c.log();
        QCOMPARE(log.count(QStringLiteral("Motivo do estorno: queda de energia")), 1);
        QCOMPARE(log.count(QStringLiteral("Motivo do estorno: primeiro")), 1);
        QCOMPARE(log.count(QStringLiteral("Motivo da Alteração: valor")), 1);
        QCOMPARE(
            log.count(QStringLiteral("Estorno revertido. Motivo do estorno: queda de energia")), 1);

        // A change and an undoing lost the same way are completed as well.
        QVERIFY(QFile::remove(c.logPath()));
        QCOMPARE(c.corrections.completarRegistro(), std::optional<int>(4));
        QCOMPARE(c.log().mid(0, kHeader.size()), kHeader);
        QCOMPARE(c.log().count(QStringLiteral("Valor anterior: 5,00")), 1);
        QCOMPARE(c.corrections.completarRegistro(), std::optional<int>(0));
    }

    // The last number the files carry may be given by a correction; the movement is then full
    // and the next payment is refused whole, without a receipt numbered 100000.
    void lastNumberFillsTheMovement() {
        QFETCH_GLOBAL(QString, backend);
        Counter c(backend);
        TestApp& app = c.app;
        QVERIFY2(app.ok(), "test database could not be opened");
        CorrectionRequest::AsTyped p;
        p.idrecebe = c.rows.at(2).idrecebe;
        p.autentica = QStringLiteral("99999");
        p.motivo = QStringLiteral("número da fita");
        QVERIFY(c.alterar(p).feito);
        QCOMPARE(c.receipt(p.idrecebe).AUTENTICA, 99999);
        const int before = app.count(QStringLiteral("Recebimentos"));
        c.session.somaAvulso({8, Money::fromReais(7), QDate(), QString(), QString()});
        app.dialogs().clear();
        QVERIFY(!c.session.gravar());
        QCOMPARE(app.dialogs().last().text,
                 QStringLiteral("Limite de 99999 autenticações do movimento atingido. Nada foi "
                                "gravado."));
        QCOMPARE(app.count(QStringLiteral("Recebimentos")), before);
    }

    // The 44 zeros and codes starting "000" may be carried by several receipts.
    void codesWithoutOwnNumberMayRepeat() {
        QFETCH_GLOBAL(QString, backend);
        Counter c(backend);
        TestApp& app = c.app;
        QVERIFY2(app.ok(), "test database could not be opened");
        CorrectionRequest::AsTyped p;
        p.idrecebe = c.rows.at(0).idrecebe;
        p.codbarra = clsRecebimentos::kSemCodigo;
        p.motivo = QStringLiteral("sem código");
        QVERIFY(c.alterar(p).feito);
        QCOMPARE(c.receipt(p.idrecebe).EXPORT, qint16(1)); // no longer goes to a bank file
        p.codbarra = QStringLiteral("000") + QString(41, QLatin1Char('1'));
        QVERIFY(c.alterar(p).feito);
        p.idrecebe = c.rows.at(1).idrecebe;
        QVERIFY(c.alterar(p).feito);
    }

    // The correction stands when the printer is off-line (the operator is told the line is
    // missing) or when there is none; the log is written all the same.
    void withoutTheTape_data() {
        QTest::addColumn<bool>("offline");
        QTest::addColumn<int>("fita");
        QTest::addColumn<QStringList>("texts");
        // The printer tells its fault as it happens; the correction's own notices follow.
        QTest::newRow("off-line")
            << true << int(CounterPrinter::Fita::Falhou)
            << QStringList{QStringLiteral("Problemas na impressão do texto.\n"
                                          "A autenticadora está fora de linha (off-line)."),
                           QStringLiteral("Exclusão efetuada com sucesso!!"),
                           QStringLiteral("A correção foi gravada, mas a linha da fita não foi "
                                          "impressa.")};
        QTest::newRow("no printer")
            << false << int(CounterPrinter::Fita::SemImpressora)
            << QStringList{QStringLiteral("Exclusão efetuada com sucesso!!")};
    }
    void withoutTheTape() {
        QFETCH_GLOBAL(QString, backend);
        QFETCH(bool, offline);
        QFETCH(int, fita);
        QFETCH(QStringList, texts);
        Counter c(backend);
        TestApp& app = c.app;
        QVERIFY2(app.ok(), "test database could not be opened");
        if (offline)
            c.emulator.setOffline(true);
        else
            app.setOption(QStringLiteral("Print"), QStringLiteral("modo"), QStringLiteral("0"));
        const auto res = c.estornar(c.rows.at(0).idrecebe, QStringLiteral("x"));
        QVERIFY(res.feito);
        QVERIFY(res.registrado);
        QCOMPARE(int(res.fita), fita);
        QCOMPARE(res.linhasFita,
                 QStringList{QStringLiteral("(-)  ESTORNO ITEM: 001 --->       312,40")});
        QCOMPARE(app.count(QStringLiteral("Recebimentos")), 2);
        QCOMPARE(app.dialogs().texts(), texts);
        if (!offline)
            QVERIFY(c.newTape().isEmpty());
    }

    void undoBringsTheReceiptBack() {
        QFETCH_GLOBAL(QString, backend);
        Counter c(backend);
        TestApp& app = c.app;
        QVERIFY2(app.ok(), "test database could not be opened");
        const clsRecebimentos before = c.receipt(c.rows.at(2).idrecebe);
        const QStringList snapshotBefore = c.snapshot();
        QVERIFY(c.estornar(before.IDRECEBE, QStringLiteral("engano")).feito);
        QCOMPARE(c.corrections.estornosRevertiveis()->size(), 1);
        const QStringList logBefore = c.log();
        app.dialogs().clear();
        c.tapeBefore = int(c.emulator.tape().size());

        QVERIFY(c.corrections.recusaReversao(before.IDRECEBE).empty());
        const auto res = c.reverter(before.IDRECEBE);
        QVERIFY(res.feito);
        QCOMPARE(c.snapshot(), snapshotBefore);
        QCOMPARE(app.count(QStringLiteral("Estornos")), 1);
        QVERIFY(c.corrections.estornosRevertiveis()->isEmpty());
        clsEstornos e(app.db());
        QVERIFY(
            e.SQLSelect(clsEstornos::listarDoMovimento(app.db(), before.IDMOVIMENTO)->first().ID));
        QCOMPARE(e.REVERTIDO_EM, app.clock().now());
        QCOMPARE(e.REVERTIDO_POR, QStringLiteral("ANA"));

        QCOMPARE(app.dialogs().texts(), QStringList{QStringLiteral("Revertido com sucesso!!")});
        QCOMPARE(app.dialogs().last().icon, DialogIcon::Information);
        QCOMPARE(c.log(),
                 logBefore + entry(QStringLiteral("003"), QStringLiteral("CERTIDAO NEGATIVA"),
                                   QStringLiteral("5,00"))
                     << QStringLiteral("Estorno revertido. Motivo do estorno: engano"));
        QCOMPARE(c.newTape(),
                 QStringList{QStringLiteral("(+)  REVERTE ITEM: 003 --->         5,00")});

        // Once undone there is nothing left to undo.
        QVERIFY(!c.reverter(before.IDRECEBE).feito);
        QCOMPARE(app.dialogs().last().text,
                 QStringLiteral("Não há estorno deste recebimento para reverter!!"));
    }

    void undoRefusals_data() {
        QTest::addColumn<QString>("meanwhile");
        QTest::addColumn<QString>("message");
        QTest::newRow("number taken")
            << "numero"
            << QStringLiteral("A autenticação %1 já pertence a outro recebimento deste movimento!!")
                   .arg("003");
        QTest::newRow("code taken") << "codigo" << QStringLiteral("Conta já Recebida!!!");
        QTest::newRow("day closed")
            << "fechado"
            << QStringLiteral(
                   "O movimento deste dia está encerrado!! Reabra o movimento (F5) para corrigir.");
        QTest::newRow("database refuses")
            << "falha" << QStringLiteral("Erro ao reverter arquivo! ");
    }
    void undoRefusals() {
        QFETCH_GLOBAL(QString, backend);
        QFETCH(QString, meanwhile);
        QFETCH(QString, message);
        Counter c(backend);
        TestApp& app = c.app;
        QVERIFY2(app.ok(), "test database could not be opened");
        // The reversed receipt holds the highest number and a real code, so a new payment can
        // take either.
        QVERIFY(c.estornar(c.rows.at(2).idrecebe, QStringLiteral("a")).feito);
        const qint32 id = c.rows.at(0).idrecebe;
        QVERIFY(
            c.alterar(id, {2, 3, kTaxas, Money::fromCents(31240)}, QStringLiteral("troca")).feito);
        QVERIFY(c.estornar(id, QStringLiteral("b")).feito);
        if (meanwhile == QLatin1String("numero")) {
            c.session.somaAvulso({8, Money::fromReais(7), QDate(), QString(), QString()});
            const auto again = c.session.gravar();
            QVERIFY(again && again->first().autentica == 3);
        } else if (meanwhile == QLatin1String("codigo")) {
            QVERIFY(c.session.ler(kTaxas).accepted);
            const auto again = c.session.gravar();
            QVERIFY(again);
            QVERIFY(c.alterar(again->first().idrecebe, {2, 5, kTaxas, Money::fromCents(31240)},
                              QStringLiteral("número livre"))
                        .feito);
        } else if (meanwhile == QLatin1String("fechado")) {
            QVERIFY(c.session.day().encerrar());
        } else {
            app.db().faultHook = [](const QString& sql) {
                return sql.startsWith(QLatin1String("INSERT INTO Recebimentos"));
            };
        }
        const QStringList before = c.snapshot();
        const QStringList logBefore = c.log();
        app.dialogs().clear();
        QVERIFY(!c.reverter(id).feito);
        app.db().faultHook = nullptr;
        QCOMPARE(app.dialogs().last().text, message);
        QCOMPARE(app.dialogs().last().icon, DialogIcon::Critical);
        QCOMPARE(c.snapshot(), before);
        QCOMPARE(c.log(), logBefore);
        QCOMPARE(c.corrections.estornosRevertiveis()->size(), 2);
    }

    // The year's first entry heads its file; later entries are only appended; a new year starts
    // a new file, and reading back gives the newest year first.
    void yearlyFiles() {
        QFETCH_GLOBAL(QString, backend);
        Counter c(backend);
        TestApp& app = c.app;
        QVERIFY2(app.ok(), "test database could not be opened");
        app.setOption(QStringLiteral("Export"), QStringLiteral("Path2"),
                      QStringLiteral("estornos"));
        QVERIFY(c.estornar(c.rows.at(0).idrecebe, QStringLiteral("um")).feito);
        QVERIFY(c.estornar(c.rows.at(1).idrecebe, QStringLiteral("dois")).feito);
        const QString in2026 = app.path(QStringLiteral("estornos/Estorno_3_2026.txt"));
        const QStringList lines = TextFile::readLines(in2026);
        QCOMPARE(lines.size(), 4 + 7 + 7);
        QCOMPARE(lines.count(QString(100, QLatin1Char('='))), 2);
        app.clock().set(QDateTime(QDate(2027, 1, 4), QTime(9, 0)));
        QVERIFY(c.estornar(c.rows.at(2).idrecebe, QStringLiteral("três")).feito);
        const QString in2027 = app.path(QStringLiteral("estornos/Estorno_3_2027.txt"));
        QCOMPARE(TextFile::readLines(in2027).mid(0, 4), kHeader);
        QCOMPARE(TextFile::readLines(in2027).last(), QStringLiteral("Motivo do estorno: três"));
        QCOMPARE(TextFile::readLines(in2026), lines);

        const CorrectionLog log(app.ctx());
        const auto files = log.read();
        QCOMPARE(files.size(), 2);
        QCOMPARE(files.at(0).year, 2027);
        QCOMPARE(files.at(1).path, in2026);
        const auto parsed = CorrectionLog::parse(files.at(1).lines);
        QCOMPARE(parsed.size(), 2);
        QCOMPARE(parsed.at(1).value(QStringLiteral("Item")), QStringLiteral("002"));
        QCOMPARE(parsed.at(1).value(QStringLiteral("Motivo do estorno")), QStringLiteral("dois"));
        QCOMPARE(log.read(2026).size(), 1);
    }
};

QTEST_GUILESS_MAIN(tst_corrections)
#include "tst_corrections.moc"
