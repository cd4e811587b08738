// recebimento alterar / estornar / reverter and estornos as an administrator runs them, on
// receipts recorded by caixa receber, with the printer emulated behind a TCP port.
#include "CliFolder.h"
#include "PrinterEmulator.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QTest>

namespace {
const QString kTaxas = QStringLiteral("81660000003124004262026113058888888888888888");
const QString kAgua = QStringLiteral("00193165100000089151234500000000000000000000");

// Every command of the day: the administrator's password on stdin and the day.
CliRun admin(const CliFolder& f, QStringList args) {
    return f.asAdmin(args << QStringLiteral("--data")
                          << QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy")));
}
// autentica -> idrecebe of the day's receipts.
QMap<int, int> receipts(const CliFolder& f) {
    QMap<int, int> out;
    const CliRun r = admin(f, words("caixa recebimentos --json"));
    for (const auto& v : r.array())
        out.insert(v.toObject().value(u"autentica").toInt(),
                   v.toObject().value(u"idrecebe").toInt());
    return out;
}

// `recebimento WHAT --id ID`.
QStringList cmd(const char* what, int id) {
    return words("recebimento") + words(what) << QStringLiteral("--id") << QString::number(id);
}
} // namespace

class tst_correction_commands : public QObject {
    Q_OBJECT
private slots:
    void correctionsFromTheCommandLine() {
        PrinterEmulator emulator(PrinterEmulator::Model::Bematech);
        const auto link = EmulatorLink::tcp(emulator);
        CliFolder f;
        f.set("Print", "impressora", QStringLiteral("bematech"));
        f.set("Print", "modo", QStringLiteral("1"));
        f.set("Print", "porta", link->porta());
        f.set("Export", "guiche", QStringLiteral("2"));
        QCOMPARE(admin(f, words("caixa abrir")).code, 0);
        QCOMPARE(
            admin(f, words("caixa receber") << kTaxas << kAgua << words("--avulso 8:5,00")).code,
            0);
        QMap<int, int> ids = receipts(f);
        QCOMPARE(ids.size(), 3);

        CliRun r = admin(f, cmd("estornar", ids[3])
                                << QStringLiteral("--motivo") << QStringLiteral("Cobrado a mais")
                                << words("--json"));
        QCOMPARE(r.code, 0);
        QVERIFY(r.err.contains(QStringLiteral("Exclusão efetuada com sucesso!!")));
        QCOMPARE(r.json().value(u"fita").toString(), QStringLiteral("impressa"));
        QCOMPARE(r.json().value(u"antes").toObject().value("valor").toString(),
                 QStringLiteral("5,00"));
        QVERIFY(
            emulator.tape().contains(QStringLiteral("(-)  ESTORNO ITEM: 003 --->         5,00")));

        r = admin(f, cmd("alterar", ids[2])
                         << words("--valor 99,15 --tipo 5 --motivo conferido --json"));
        QCOMPARE(r.code, 0);
        QVERIFY(r.err.contains(QStringLiteral("Operação efetuada com sucesso!!")));
        const QJsonObject depois = r.json().value(u"depois").toObject();
        QCOMPARE(depois.value(u"valor").toString(), QStringLiteral("99,15"));
        QCOMPARE(depois.value(u"idcod").toInt(), 5); // a bank slip stays a bank slip
        QVERIFY(emulator.tape().contains(QStringLiteral("(*) ALT. ITEM: 002 NOVO VALOR: 99,15")));
        QVERIFY(
            emulator.tape().contains(QStringLiteral("(*) ALT. ITEM: 002 NOVO TIPO: CONTRIBUIC")));

        // Refusals: exit 1, the screen's message on stderr, nothing changed.
        const QString logPath =
            f.path(QStringLiteral("Estorno_2_%1.txt").arg(QDate::currentDate().year()));
        QFile log(logPath);
        QVERIFY(log.open(QIODevice::ReadOnly));
        const QByteArray logBefore = log.readAll();
        log.close();
        QVERIFY(logBefore.contains("Motivo da Altera\xE7\xE3o: conferido\r\n"));
        const auto before = receipts(f);
        const QList<std::pair<QStringList, QString>> refusals = {
            {cmd("estornar", ids[1]), QStringLiteral("Um motivo deve ser especificado!!")},
            {cmd("alterar", ids[1]) << words("--valor 12,ab --motivo x"),
             QStringLiteral("O valor informado não é um número!!")},
            {cmd("alterar", ids[1]) << words("--autentica 2 --motivo x"),
             QStringLiteral(
                 "A autenticação 002 já pertence a outro recebimento deste movimento!!")},
            {cmd("alterar", ids[2]) << words("--motivo x --codbarra") << kTaxas,
             QStringLiteral("Conta já Recebida!!!")},
            {cmd("estornar", ids[1]) << words("--motivo d'agua"),
             QStringLiteral("Erro ao excluir")},
            {cmd("reverter", ids[1]),
             QStringLiteral("Não há estorno deste recebimento para reverter!!")}};
        for (const auto& [args, message] : refusals) {
            r = admin(f, args);
            QCOMPARE(r.code, 1);
            QVERIFY2(r.err.contains(message), qPrintable(r.err));
        }
        r = f.run(cmd("estornar", ids[1]) << words("--motivo x"), "errada\n");
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("Senha Inválida!!")));
        r = f.run(cmd("estornar", ids[1]) << words("--motivo x"), f.password() + "\nerrada\n");
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("Senha de administrador não aceita.")));
        QCOMPARE(admin(f, words("recebimento estornar --motivo x")).code, 2);
        QCOMPARE(receipts(f), before);
        QVERIFY(log.open(QIODevice::ReadOnly));
        QCOMPARE(log.readAll(), logBefore);
        log.close();

        r = admin(f, cmd("reverter", ids[3]) << words("--json"));
        QCOMPARE(r.code, 0);
        QVERIFY(r.err.contains(QStringLiteral("Revertido com sucesso!!")));
        QCOMPARE(r.json().value(u"depois").toObject().value("idrecebe").toInt(), ids[3]);
        QCOMPARE(receipts(f), ids); // the same key under the same number
        QVERIFY(
            emulator.tape().contains(QStringLiteral("(+)  REVERTE ITEM: 003 --->         5,00")));

        // Reading the log needs no password.
        r = f.run(words("estornos --json"));
        QCOMPARE(r.code, 0);
        const QJsonArray anos = r.json().value(u"anos").toArray();
        QCOMPARE(anos.size(), 1);
        const QJsonArray entradas = anos.at(0).toObject().value(u"entradas").toArray();
        QCOMPARE(entradas.size(), 3);
        QCOMPARE(entradas.at(0).toObject().value(u"operacao").toString(),
                 QStringLiteral("estorno"));
        QCOMPARE(entradas.at(1).toObject().value(u"valor_anterior").toString(),
                 QStringLiteral("89,15"));
        QCOMPARE(entradas.at(1).toObject().value(u"tipo_anterior").toString(),
                 QStringLiteral("AGUA E ESGOTO"));
        QCOMPARE(entradas.at(2).toObject().value(u"operacao").toString(),
                 QStringLiteral("reversao"));
        r = f.run(words("estornos"));
        QVERIFY(r.out.startsWith(QString(100, QLatin1Char('=')) + QLatin1Char('\n')));
        QVERIFY(r.out.contains(QStringLiteral("Motivo do estorno: Cobrado a mais\n")));
        QCOMPARE(f.run(words("estornos --ano 1999 --json")).json().value(u"anos"),
                 QJsonValue(QJsonArray()));
        QCOMPARE(f.run(words("estornos --ano x")).code, 2);

        // A printer that is off-line does not undo the correction: the tape is reported missing.
        emulator.setOffline(true);
        r = admin(f, cmd("estornar", ids[2]) << words("--motivo x --json"));
        QCOMPARE(r.code, 0);
        QCOMPARE(r.json().value(u"fita").toString(), QStringLiteral("nao_impressa"));
        QVERIFY(r.json().value(u"registrado").toBool());
        QVERIFY(r.err.contains(QStringLiteral("a linha da fita não foi impressa")));
        QVERIFY(!receipts(f).values().contains(ids[2]));
        emulator.setOffline(false);

        // A closed day is refused.
        QCOMPARE(admin(f, words("caixa encerrar --sem-cupom")).code, 0);
        r = admin(f, cmd("estornar", ids[1]) << words("--motivo x"));
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("O movimento deste dia está encerrado!!")));
    }
};

QTEST_GUILESS_MAIN(tst_correction_commands)
#include "tst_correction_commands.moc"
