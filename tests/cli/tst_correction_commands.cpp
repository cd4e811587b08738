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

class Folder : public CliFolder {
public:
    // Every command of a day: the administrator's password on stdin and the day.
    CliRun admin(QStringList args) const {
        return asAdmin(args << QStringLiteral("--data") << day());
    }
    static QString day() { return QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy")); }
    // autentica -> idrecebe of the day's receipts.
    QMap<int, int> receipts() const {
        QMap<int, int> out;
        const CliRun r = admin(
            {QStringLiteral("caixa"), QStringLiteral("recebimentos"), QStringLiteral("--json")});
        for (const auto& v : r.array())
            out.insert(v.toObject().value(QStringLiteral("autentica")).toInt(),
                       v.toObject().value(QStringLiteral("idrecebe")).toInt());
        return out;
    }
};

QStringList words(const char* a, const char* b, int id) {
    return {QLatin1String(a), QLatin1String(b), QStringLiteral("--id"), QString::number(id)};
}
} // namespace

class tst_correction_commands : public QObject {
    Q_OBJECT
private slots:
    void correctionsFromTheCommandLine() {
        PrinterEmulator emulator(PrinterEmulator::Model::Bematech);
        const auto link = EmulatorLink::tcp(emulator);
        Folder f;
        f.set("Print", "impressora", QStringLiteral("bematech"));
        f.set("Print", "modo", QStringLiteral("1"));
        f.set("Print", "porta", link->porta());
        f.set("Export", "guiche", QStringLiteral("2"));
        QCOMPARE(f.admin({QStringLiteral("caixa"), QStringLiteral("abrir")}).code, 0);
        QCOMPARE(f.admin({QStringLiteral("caixa"), QStringLiteral("receber"), kTaxas, kAgua,
                          QStringLiteral("--avulso"), QStringLiteral("8:5,00")})
                     .code,
                 0);
        QMap<int, int> ids = f.receipts();
        QCOMPARE(ids.size(), 3);

        CliRun r = f.admin(words("recebimento", "estornar", ids[3])
                           << QStringLiteral("--motivo") << QStringLiteral("Cobrado a mais")
                           << QStringLiteral("--json"));
        QCOMPARE(r.code, 0);
        QVERIFY(r.err.contains(QStringLiteral("Exclusão efetuada com sucesso!!")));
        QCOMPARE(r.json().value(QStringLiteral("fita")).toString(), QStringLiteral("impressa"));
        QCOMPARE(r.json().value(QStringLiteral("antes")).toObject().value("valor").toString(),
                 QStringLiteral("5,00"));
        QVERIFY(
            emulator.tape().contains(QStringLiteral("(-)  ESTORNO ITEM: 003 --->         5,00")));

        r = f.admin(words("recebimento", "alterar", ids[2])
                    << QStringLiteral("--valor") << QStringLiteral("99,15")
                    << QStringLiteral("--tipo") << QStringLiteral("2") << QStringLiteral("--motivo")
                    << QStringLiteral("conferido") << QStringLiteral("--json"));
        QCOMPARE(r.code, 0);
        QVERIFY(r.err.contains(QStringLiteral("Operação efetuada com sucesso!!")));
        const QJsonObject depois = r.json().value(QStringLiteral("depois")).toObject();
        QCOMPARE(depois.value(QStringLiteral("valor")).toString(), QStringLiteral("99,15"));
        QCOMPARE(depois.value(QStringLiteral("idcod")).toInt(), 2);
        QVERIFY(emulator.tape().contains(QStringLiteral("(*) ALT. ITEM: 002 NOVO VALOR: 99,15")));
        QVERIFY(
            emulator.tape().contains(QStringLiteral("(*) ALT. ITEM: 002 NOVO TIPO: TAXAS DIVE")));

        // Refusals: exit 1, the screen's message on stderr, nothing changed.
        const QString logPath =
            f.path(QStringLiteral("Estorno_2_%1.txt").arg(QDate::currentDate().year()));
        QFile log(logPath);
        QVERIFY(log.open(QIODevice::ReadOnly));
        const QByteArray logBefore = log.readAll();
        log.close();
        QVERIFY(logBefore.contains("Motivo da Altera\xE7\xE3o: conferido\r\n"));
        const auto before = f.receipts();
        const QList<std::pair<QStringList, QString>> refusals = {
            {words("recebimento", "estornar", ids[1]),
             QStringLiteral("Um motivo deve ser especificado!!")},
            {words("recebimento", "alterar", ids[1])
                 << QStringLiteral("--valor") << QStringLiteral("12,ab")
                 << QStringLiteral("--motivo") << QStringLiteral("x"),
             QStringLiteral("O valor informado não é um número!!")},
            {words("recebimento", "alterar", ids[1])
                 << QStringLiteral("--autentica") << QStringLiteral("2")
                 << QStringLiteral("--motivo") << QStringLiteral("x"),
             QStringLiteral(
                 "A autenticação 002 já pertence a outro recebimento deste movimento!!")},
            {words("recebimento", "alterar", ids[2])
                 << QStringLiteral("--codbarra") << kTaxas << QStringLiteral("--motivo")
                 << QStringLiteral("x"),
             QStringLiteral("Conta já Recebida!!!")},
            {words("recebimento", "estornar", ids[1])
                 << QStringLiteral("--motivo") << QStringLiteral("d'agua"),
             QStringLiteral("Erro ao excluir")},
            {words("recebimento", "reverter", ids[1]),
             QStringLiteral("Não há estorno deste recebimento para reverter!!")}};
        for (const auto& [args, message] : refusals) {
            r = f.admin(args);
            QCOMPARE(r.code, 1);
            QVERIFY2(r.err.contains(message), qPrintable(r.err));
        }
        r = f.run(words("recebimento", "estornar", ids[1])
                      << QStringLiteral("--motivo") << QStringLiteral("x"),
                  "errada\n");
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("Senha de administrador não aceita.")));
        QCOMPARE(f.admin({QStringLiteral("recebimento"), QStringLiteral("estornar"),
                          QStringLiteral("--motivo"), QStringLiteral("x")})
                     .code,
                 2);
        QCOMPARE(f.receipts(), before);
        QVERIFY(log.open(QIODevice::ReadOnly));
        QCOMPARE(log.readAll(), logBefore);
        log.close();

        r = f.admin(words("recebimento", "reverter", ids[3]) << QStringLiteral("--json"));
        QCOMPARE(r.code, 0);
        QVERIFY(r.err.contains(QStringLiteral("Revertido com sucesso!!")));
        QCOMPARE(r.json().value(QStringLiteral("depois")).toObject().value("idrecebe").toInt(),
                 ids[3]);
        QCOMPARE(f.receipts(), ids); // the same key under the same number
        QVERIFY(
            emulator.tape().contains(QStringLiteral("(+)  REVERTE ITEM: 003 --->         5,00")));

        // Reading the log needs no password.
        r = f.run({QStringLiteral("estornos"), QStringLiteral("--json")});
        QCOMPARE(r.code, 0);
        const QJsonArray anos = r.json().value(QStringLiteral("anos")).toArray();
        QCOMPARE(anos.size(), 1);
        const QJsonArray entradas =
            anos.at(0).toObject().value(QStringLiteral("entradas")).toArray();
        QCOMPARE(entradas.size(), 3);
        QCOMPARE(entradas.at(0).toObject().value(QStringLiteral("operacao")).toString(),
                 QStringLiteral("estorno"));
        QCOMPARE(entradas.at(1).toObject().value(QStringLiteral("valor_anterior")).toString(),
                 QStringLiteral("89,15"));
        QCOMPARE(entradas.at(1).toObject().value(QStringLiteral("tipo_anterior")).toString(),
                 QStringLiteral("AGUA E ESGOTO"));
        QCOMPARE(entradas.at(2).toObject().value(QStringLiteral("operacao")).toString(),
                 QStringLiteral("reversao"));
        r = f.run({QStringLiteral("estornos")});
        QVERIFY(r.out.startsWith(QString(100, QLatin1Char('=')) + QLatin1Char('\n')));
        QVERIFY(r.out.contains(QStringLiteral("Motivo do estorno: Cobrado a mais\n")));
        QCOMPARE(f.run({QStringLiteral("estornos"), QStringLiteral("--ano"), QStringLiteral("1999"),
                        QStringLiteral("--json")})
                     .json()
                     .value(QStringLiteral("anos"))
                     .toArray()
                     .size(),
                 0);
        QCOMPARE(
            f.run({QStringLiteral("estornos"), QStringLiteral("--ano"), QStringLiteral("x")}).code,
            2);

        // A closed day is refused.
        QCOMPARE(f.admin({QStringLiteral("caixa"), QStringLiteral("encerrar"),
                          QStringLiteral("--sem-cupom")})
                     .code,
                 0);
        r = f.admin(words("recebimento", "estornar", ids[1])
                    << QStringLiteral("--motivo") << QStringLiteral("x"));
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("O movimento deste dia está encerrado!!")));
    }

    // A printer that is off-line does not undo the correction: the tape is reported missing.
    void printerOffline() {
        PrinterEmulator emulator(PrinterEmulator::Model::Bematech);
        const auto link = EmulatorLink::tcp(emulator);
        Folder f;
        QCOMPARE(f.admin({QStringLiteral("caixa"), QStringLiteral("abrir")}).code, 0);
        QCOMPARE(f.admin({QStringLiteral("caixa"), QStringLiteral("receber"), kTaxas}).code, 0);
        f.set("Print", "impressora", QStringLiteral("bematech"));
        f.set("Print", "modo", QStringLiteral("1"));
        f.set("Print", "porta", link->porta());
        emulator.setOffline(true);
        const CliRun r = f.admin(words("recebimento", "estornar", f.receipts().value(1))
                                 << QStringLiteral("--motivo") << QStringLiteral("x")
                                 << QStringLiteral("--json"));
        QCOMPARE(r.code, 0);
        QCOMPARE(r.json().value(QStringLiteral("fita")).toString(), QStringLiteral("nao_impressa"));
        QVERIFY(r.json().value(QStringLiteral("registrado")).toBool());
        QVERIFY(r.err.contains(QStringLiteral("a linha da fita não foi impressa")));
        QVERIFY(f.receipts().isEmpty());
    }
};

QTEST_GUILESS_MAIN(tst_correction_commands)
#include "tst_correction_commands.moc"
