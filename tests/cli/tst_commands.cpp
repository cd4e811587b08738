// The command line as an installer, a back office or a checker uses it: kinds, holidays,
// reading, charges, the printer and a whole customer.
#include "CliFolder.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTest>

class tst_commands : public QObject {
    Q_OBJECT
private slots:
    // A long day is listed in pages and counted by the database: every receipt comes out once,
    // newest first, in one JSON array.
    void longDayListing() {
        CliFolder f;
        QCOMPARE(f.asAdmin(words("caixa abrir")).code, 0);
        {
            QSqlDatabase db =
                QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("longDay"));
            db.setDatabaseName(f.path(QStringLiteral("caixa.db")));
            QVERIFY(db.open() && db.transaction());
            QSqlQuery q(db);
            QVERIFY(q.prepare(QStringLiteral("INSERT INTO Recebimentos (AUTENTICA, CODBARRA, "
                                             "IDMOVIMENTO, TIPO, VALOR) VALUES (?, ?, 1, 1, ?)")));
            for (int i = 1; i <= 4321; ++i) {
                q.addBindValue(i);
                q.addBindValue(QStringLiteral("8") +
                               QString::number(i).rightJustified(43, QLatin1Char('0')));
                q.addBindValue(qint64(i) * 100);
                QVERIFY(q.exec());
            }
            QVERIFY(db.commit());
        }
        QSqlDatabase::removeDatabase(QStringLiteral("longDay"));
        const CliRun r = f.asAdmin(words("caixa recebimentos --json"));
        QCOMPARE(r.code, 0);
        const QJsonArray rows = r.array();
        QCOMPARE(rows.size(), 4321);
        for (int i = 0; i < rows.size(); ++i)
            QCOMPARE(rows[i].toObject().value(u"autentica").toInt(), 4321 - i);
        QCOMPARE(rows.last().toObject().value(u"valor").toString(), QStringLiteral("0,01"));
        const CliRun sit = f.asAdmin(words("caixa situacao --json"));
        QCOMPARE(sit.json().value(u"recebimentos").toInt(), 4321);
    }

    void kindsAndHolidays() {
        CliFolder f;
        CliRun r = f.run(words("tipo listar"));
        QCOMPARE(r.out.section(QLatin1Char('\n'), 0, 0),
                 QStringLiteral("IDCOD\tIDTIPO\tDESCRICAO\tPADRAO\tJUROS\tBLOQUEIO\tCODBANCO"));
        QVERIFY(r.out.section(QLatin1Char('\n'), 1, 1).startsWith(QStringLiteral("001\t0425\t")));
        const QStringList base = words("tipo gravar --idcod 50 --idtipo 0999 --padrao F --juros S "
                                       "--bloqueio N --descricao")
                                 << QStringLiteral("TAXA NOVA");
        QCOMPARE(f.asAdmin(base).code, 0);
        QCOMPARE(f.asAdmin(base).code, 1); // the key exists
        QCOMPARE(f.asAdmin(base + words("--alterar --codbanco 77")).code, 0);
        QCOMPARE(f.asAdmin(QStringList(base).replaceInStrings(QStringLiteral("TAXA NOVA"),
                                                              QStringLiteral("D'AGUA"))
                           << QStringLiteral("--alterar"))
                     .code,
                 1);
        QCOMPARE(f.asAdmin(base.mid(0, 6)).code, 2);
        bool found = false;
        for (const auto& k : f.run(words("tipo listar --json")).array())
            found = found ||
                    (k.toObject().value(u"idcod").toInt() == 50 &&
                     k.toObject().value(u"codbanco").toString() == QLatin1String("77") &&
                     k.toObject().value(u"descricao").toString() == QLatin1String("TAXA NOVA"));
        QVERIFY(found);
        QCOMPARE(f.asAdmin(words("tipo excluir --idcod 50")).code, 0);
        QCOMPARE(f.asAdmin(words("tipo excluir --idcod 50")).code, 1);

        QCOMPARE(f.asAdmin(words("feriado excluir --todos")).code, 0);
        QCOMPARE(f.run(words("dia-util 20/11/2026")).out.trimmed(), QStringLiteral("23/11/2026"));
        QCOMPARE(f.asAdmin(words("feriado gravar 23/11/2026")).code, 0);
        r = f.asAdmin(words("feriado gravar 23/11/2026"));
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("Data já lançada!!!")));
        QCOMPARE(f.run(words("dia-util 20/11/2026")).out.trimmed(), QStringLiteral("24/11/2026"));
        QCOMPARE(f.run(words("dia-util 31/02/2026")).code, 2);
        QCOMPARE(f.asAdmin(words("feriado gravar 25/12/2026")).code, 0);
        const QJsonArray days = f.run(words("feriado listar --json")).array();
        QCOMPARE(days.size(), 2);
        const int id = days.at(0).toObject().value(u"id").toInt();
        // One holiday deleted is that one only; deleting it again is refused.
        QCOMPARE(f.asAdmin(words("feriado excluir --id") << QString::number(id)).code, 0);
        const QJsonArray left = f.run(words("feriado listar --json")).array();
        QCOMPARE(left.size(), 1);
        QCOMPARE(left.at(0).toObject().value(u"feriado").toString(), QStringLiteral("25/12/2026"));
        r = f.asAdmin(words("feriado excluir --id") << QString::number(id));
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("Informe um item !!!")));
    }

    // Deleting a code or an operator that is not there names what was missing.
    void deletingWhatIsNotThere_data() {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<QString>("message");
        QTest::newRow("kind") << QByteArray("tipo excluir --idcod 99")
                              << QStringLiteral("O código 099 não está mais cadastrado!!");
        QTest::newRow("kind, no code")
            << QByteArray("tipo excluir --idcod x") << QStringLiteral("Informe um item !!!");
        QTest::newRow("operator") << QByteArray("usuario excluir --id 99")
                                  << QStringLiteral("Usuário não encontrado!!");
        QTest::newRow("operator, no id")
            << QByteArray("usuario excluir --id x") << QStringLiteral("Informe um item !!!");
    }
    void deletingWhatIsNotThere() {
        QFETCH(QByteArray, command);
        QFETCH(QString, message);
        CliFolder f;
        const auto r = f.asAdmin(words(command.constData()));
        QCOMPARE(r.code, 1);
        QCOMPARE(r.err.trimmed(), message);
    }

    void readingAndCharges() {
        CliFolder f;
        CliRun r = f.run(
            words("ler 00193165100000089151234500000000000000000000 --data 23/11/2026 --json"));
        QCOMPARE(r.code, 0);
        QCOMPARE(r.json().value(u"padrao").toString(), QStringLiteral("C"));
        QCOMPARE(r.json().value(u"vencimento").toString(), QStringLiteral("05/12/2026"));
        QCOMPARE(r.json().value(u"juros").toString(), QStringLiteral("SIM"));
        QVERIFY(!r.json().contains(QStringLiteral("vencida")));
        r = f.run(
            words("ler 81830000012345604272026011000000000000000000 --data 23/11/2026 --json"));
        QCOMPARE(r.json().value(u"total").toString(), QStringLiteral("1.493,82"));
        QCOMPARE(r.json().value(u"dias").toInt(), 317);

        r = f.run(words("encargos --vencimento 21/11/2026 --data 24/11/2026 --valor 100,00 "
                        "--esquema 1 --json"));
        QCOMPARE(r.code, 0);
        QCOMPARE(r.json().value(u"acrescimo_multa").toString(), QStringLiteral("0,99"));
        QCOMPARE(r.json().value(u"acrescimo_juros").toString(), QStringLiteral("1,00"));
        QCOMPARE(r.json().value(u"total").toString(), QStringLiteral("101,99"));
        // 20/11/2026 is a national holiday in the demo calendar: due then, paid Monday, on time.
        QStringList onTime = words("encargos --vencimento 20/11/2026 --data 23/11/2026");
        r = f.run(onTime + words("--valor 100,00 --json"));
        QCOMPARE(r.json().value(u"vencida").toBool(), false);
        QCOMPARE(r.json().value(u"vencimento").toString(), QStringLiteral("23/11/2026"));
        for (const char* bad : {"--valor 1,0,0", "--valor -5,00", "--valor 1,00 --esquema um"})
            QCOMPARE(f.run(onTime + words(bad)).code, 2);
        QCOMPARE(f.run(onTime << QStringLiteral("--valor") << QString()).code, 2);
    }

    // An overdue guide is a question about money: without --aceitar-vencidas the command takes
    // the safe answer and says why; --recusar-vencidas says the same; with consent it is charged.
    void overdueGuideNeedsConsent_data() {
        QTest::addColumn<QString>("option");
        QTest::addColumn<int>("code");
        QTest::newRow("default") << QString() << 1;
        QTest::newRow("refuse") << QStringLiteral("--recusar-vencidas") << 1;
        QTest::newRow("accept") << QStringLiteral("--aceitar-vencidas") << 0;
    }
    void overdueGuideNeedsConsent() {
        QFETCH(QString, option);
        QFETCH(int, code);
        CliFolder f;
        const QStringList day = words("--data 16/11/2026");
        QCOMPARE(f.asAdmin(words("caixa abrir") + day).code, 0);
        QStringList args =
            words("caixa receber --json 81640000000100004272025031000000000000000000");
        if (!option.isEmpty())
            args << option;
        const CliRun r = f.asAdmin(args + day);
        QCOMPARE(r.code, code);
        const QJsonObject o = r.json();
        if (code == 0) {
            QCOMPARE(o.value(u"gravados").toArray().size(), 1);
            QVERIFY(!r.err.contains(QStringLiteral("Guia com a data de vencimento vencida.")));
        } else {
            QCOMPARE(o.value(u"gravados").toArray().size(), 0);
            QCOMPARE(
                o.value(u"recusados").toArray().at(0).toObject().value(u"resultado").toString(),
                QStringLiteral("recusada"));
            QVERIFY2(r.err.contains(QStringLiteral("Guia com a data de vencimento vencida.")),
                     qPrintable(r.err));
            // Read as a person would: the reason on stderr, and no total of a payment that
            // did not happen.
            args.removeAll(QStringLiteral("--json"));
            const CliRun text = f.asAdmin(args + day);
            QCOMPARE(text.code, 1);
            QCOMPARE(text.out, QString());
            QVERIFY2(text.err.split(QLatin1Char('\n'))
                         .contains(QStringLiteral("Guia com a data de vencimento vencida. Use "
                                                  "--aceitar-vencidas para recebê-la.")),
                     qPrintable(text.err));
            QCOMPARE(f.asAdmin(words("caixa recebimentos --json") + day).array().size(), 0);
        }
        QCOMPARE(
            f.asAdmin(words("caixa receber --aceitar-vencidas --recusar-vencidas X") + day).code,
            2);
    }

    // A payment whose stamps fail leaves its documents listed, in order, by `impressora
    // pendentes` and in the day's bulletin; a payment the printer confirms adds none.
    void unstampedDocumentsAreListed() {
        CliFolder f;
        const QStringList day = words("--data 16/11/2026");
        QCOMPARE(f.asAdmin(words("caixa abrir") + day).code, 0);
        f.set(QStringLiteral("Print"), QStringLiteral("modo"), QStringLiteral("1"));
        f.set(QStringLiteral("Print"), QStringLiteral("impressora"), QStringLiteral("bematech"));
        f.set(QStringLiteral("Print"), QStringLiteral("porta"),
              QStringLiteral("tcp:127.0.0.1:1")); // refused: nothing is stamped
        CliRun r = f.asAdmin(words("caixa receber 81830000012345604272026011000000000000000000 "
                                   "--avulso 8:5,00 --aceitar-vencidas") +
                             day);
        QCOMPARE(f.asAdmin(words("caixa situacao --json") + day).json().value(u"recebimentos"),
                 QJsonValue(2));
        r = f.asAdmin(words("impressora pendentes --json") + day);
        QCOMPARE(r.code, 0);
        const QJsonArray pending = r.json().value(u"pendentes").toArray();
        QCOMPARE(pending.size(), 2);
        QCOMPARE(pending.at(0).toObject().value(u"autentica").toInt(), 1);
        QCOMPARE(pending.at(0).toObject().value(u"codbarra").toString(),
                 QStringLiteral("81830000012345604272026011000000000000000000"));
        QCOMPARE(pending.at(1).toObject().value(u"autentica").toInt(), 2);
        QCOMPARE(pending.at(1).toObject().value(u"valor").toString(), QStringLiteral("5,00"));

        f.set(QStringLiteral("Print"), QStringLiteral("porta"),
              QStringLiteral("file:") + f.path(QStringLiteral("fita.bin")));
        QCOMPARE(f.asAdmin(words("caixa receber --avulso 8:7,00") + day).code, 0);
        r = f.asAdmin(words("impressora pendentes") + day);
        QCOMPARE(r.code, 0);
        const QStringList lines = r.out.split(u'\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 2);
        QVERIFY(lines.at(0).startsWith(QStringLiteral("0001\t")));
        QVERIFY(lines.at(1).startsWith(QStringLiteral("0002\t")));
        const QJsonArray bulletin = f.asAdmin(words("relatorio dia --json") + day)
                                        .json()
                                        .value(u"sem_autenticacao")
                                        .toArray();
        QCOMPARE(bulletin.size(), 2);
        QCOMPARE(f.asAdmin(words("impressora pendentes --data 17/11/2026")).code, 1);
    }

    void wholeCustomerWithPrinter() {
        CliFolder f;
        f.set(QStringLiteral("Print"), QStringLiteral("modo"), QStringLiteral("1"));
        f.set(QStringLiteral("Print"), QStringLiteral("impressora"), QStringLiteral("bematech"));
        f.set(QStringLiteral("Print"), QStringLiteral("porta"),
              QStringLiteral("file:") + f.path(QStringLiteral("fita.bin")));
        const QStringList day = words("--data 16/11/2026");
        QCOMPARE(f.asAdmin(words("caixa abrir") + day).code, 0);
        // A bill, a typed slip line, the same bill again, a loose amount.
        CliRun r = f.asAdmin(
            words("caixa receber --aceitar-vencidas --pago 2.000,00 --json "
                  "81830000012345604272026011000000000000000000")
            << QStringLiteral("00191.23454 00000.000000 00000.000000 3 16510000008915")
            << words("81830000012345604272026011000000000000000000 --avulso 8:5,00") + day);
        QCOMPARE(r.code, 0);
        const QJsonObject o = r.json();
        const QJsonArray gravados = o.value(u"gravados").toArray();
        QCOMPARE(gravados.size(), 3);
        QCOMPARE(gravados.at(0).toObject().value(u"autentica").toInt(), 1);
        QCOMPARE(gravados.at(2).toObject().value(u"autentica").toInt(), 3);
        QCOMPARE(o.value(u"recusados").toArray().at(0).toObject().value(u"resultado").toString(),
                 QStringLiteral("lancada"));
        QCOMPARE(o.value(u"total").toString(), QStringLiteral("1.587,97"));
        QCOMPARE(o.value(u"troco").toString(), QStringLiteral("412,03"));

        r = f.asAdmin(words("caixa receber --recusar-vencidas --json "
                            "81640000000100004272025031000000000000000000") +
                      day);
        QCOMPARE(r.code, 1);
        QCOMPARE(
            r.json().value(u"recusados").toArray().at(0).toObject().value(u"resultado").toString(),
            QStringLiteral("recusada"));

        QCOMPARE(f.asAdmin(words("caixa situacao --json") + day).json().value(u"recebimentos"),
                 QJsonValue(3));
        QCOMPARE(f.asAdmin(words("caixa encerrar") + day).code, 0);
        r = f.asAdmin(words("caixa situacao --json") + day);
        QCOMPARE(r.json().value(u"status").toString(), QStringLiteral("FECHADO"));
        QCOMPARE(r.json().value(u"valor_arrecadado").toString(), QStringLiteral("1.587,97"));
        r = f.asAdmin(words("caixa receber 00199000000000025001234500000000000000000000") + day);
        QCOMPARE(r.code, 1); // closed day
        QCOMPARE(f.run(words("caixa situacao"), "errada\n").code, 1);

        QFile tape(f.path(QStringLiteral("fita.bin")));
        QVERIFY(tape.open(QIODevice::ReadOnly));
        const QByteArray bytes = tape.readAll();
        QVERIFY(bytes.contains("ABERTURA DE MOVIMENTO: 001"));
        QVERIFY(bytes.contains(QByteArray("\x1B\x61\x01", 3) +
                               "PMX 1 0001 16/11/2026      1.493,82R\r\n" +
                               QByteArray("\x1B\x61\x00", 3)));
        QVERIFY(bytes.contains("(+)========== ARRECADADO -->    1.587,97"));

        QCOMPARE(f.asAdmin(words("impressora fita TESTE")).code, 0);
        QCOMPARE(f.asAdmin(words("impressora autenticar X --espera 0")).code, 2);
    }
};

QTEST_GUILESS_MAIN(tst_commands)
#include "tst_commands.moc"
