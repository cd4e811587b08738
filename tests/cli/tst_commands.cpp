// The command line as an installer, a back office or a checker uses it: kinds, holidays,
// reading, typed lines, charges, the printer and a whole customer.
#include "CliFolder.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
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
        QCOMPARE(f.asAdmin({QStringLiteral("caixa"), QStringLiteral("abrir")}).code, 0);
        {
            QSqlDatabase db =
                QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("longDay"));
            db.setDatabaseName(f.path(QStringLiteral("caixa.db")));
            QVERIFY(db.open());
            QVERIFY(db.transaction());
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
            db.close();
        }
        QSqlDatabase::removeDatabase(QStringLiteral("longDay"));
        const CliRun r = f.asAdmin(
            {QStringLiteral("caixa"), QStringLiteral("recebimentos"), QStringLiteral("--json")});
        QCOMPARE(r.code, 0);
        QJsonParseError error;
        const QJsonArray rows = QJsonDocument::fromJson(r.out.toUtf8(), &error).array();
        QCOMPARE(error.error, QJsonParseError::NoError);
        QCOMPARE(rows.size(), 4321);
        for (int i = 0; i < rows.size(); ++i)
            QCOMPARE(rows[i].toObject().value(QStringLiteral("autentica")).toInt(), 4321 - i);
        QCOMPARE(rows.last().toObject().value(QStringLiteral("valor")).toString(),
                 QStringLiteral("0,01"));
        const CliRun sit = f.asAdmin(
            {QStringLiteral("caixa"), QStringLiteral("situacao"), QStringLiteral("--json")});
        QCOMPARE(sit.json().value(QStringLiteral("recebimentos")).toInt(), 4321);
    }

    void kindsAndHolidays() {
        CliFolder f;
        const QStringList base = {
            QStringLiteral("tipo"),        QStringLiteral("gravar"),    QStringLiteral("--idcod"),
            QStringLiteral("50"),          QStringLiteral("--idtipo"),  QStringLiteral("0999"),
            QStringLiteral("--descricao"), QStringLiteral("TAXA NOVA"), QStringLiteral("--padrao"),
            QStringLiteral("F"),           QStringLiteral("--juros"),   QStringLiteral("S"),
            QStringLiteral("--bloqueio"),  QStringLiteral("N")};
        QCOMPARE(f.run(base).code, 0);
        QCOMPARE(f.run(base).code, 1); // the key exists
        QCOMPARE(f.run(base + QStringList{QStringLiteral("--alterar"), QStringLiteral("--codbanco"),
                                          QStringLiteral("77")})
                     .code,
                 0);
        QCOMPARE(f.run(QStringList(base).replaceInStrings(QStringLiteral("TAXA NOVA"),
                                                          QStringLiteral("D'AGUA"))
                       << QStringLiteral("--alterar"))
                     .code,
                 1);
        QCOMPARE(f.run(QStringList(base.mid(0, 6))).code, 2);
        const QJsonArray kinds =
            QJsonDocument::fromJson(
                f.run({QStringLiteral("tipo"), QStringLiteral("listar"), QStringLiteral("--json")})
                    .out.toUtf8())
                .array();
        bool found = false;
        for (const auto& k : kinds)
            found = found || (k.toObject().value(QStringLiteral("idcod")).toInt() == 50 &&
                              k.toObject().value(QStringLiteral("codbanco")).toString() ==
                                  QLatin1String("77") &&
                              k.toObject().value(QStringLiteral("descricao")).toString() ==
                                  QLatin1String("TAXA NOVA"));
        QVERIFY(found);
        QCOMPARE(f.run({QStringLiteral("tipo"), QStringLiteral("excluir"),
                        QStringLiteral("--idcod"), QStringLiteral("50")})
                     .code,
                 0);
        QCOMPARE(f.run({QStringLiteral("tipo"), QStringLiteral("excluir"),
                        QStringLiteral("--idcod"), QStringLiteral("50")})
                     .code,
                 1);

        QCOMPARE(
            f.run({QStringLiteral("feriado"), QStringLiteral("excluir"), QStringLiteral("--todos")})
                .code,
            0);
        QCOMPARE(f.run({QStringLiteral("dia-util"), QStringLiteral("20/11/2026")}).out.trimmed(),
                 QStringLiteral("23/11/2026"));
        QCOMPARE(f.run({QStringLiteral("feriado"), QStringLiteral("gravar"),
                        QStringLiteral("23/11/2026")})
                     .code,
                 0);
        const CliRun again = f.run(
            {QStringLiteral("feriado"), QStringLiteral("gravar"), QStringLiteral("23/11/2026")});
        QCOMPARE(again.code, 1);
        QVERIFY(again.err.contains(QStringLiteral("Data já lançada!!!")));
        QCOMPARE(f.run({QStringLiteral("dia-util"), QStringLiteral("20/11/2026")}).out.trimmed(),
                 QStringLiteral("24/11/2026"));
        QCOMPARE(f.run({QStringLiteral("dia-util"), QStringLiteral("31/02/2026")}).code, 2);
        const QJsonArray days =
            QJsonDocument::fromJson(f.run({QStringLiteral("feriado"), QStringLiteral("listar"),
                                           QStringLiteral("--json")})
                                        .out.toUtf8())
                .array();
        QCOMPARE(days.size(), 1);
        QCOMPARE(
            f.run({QStringLiteral("feriado"), QStringLiteral("excluir"), QStringLiteral("--id"),
                   QString::number(days.at(0).toObject().value(QStringLiteral("id")).toInt())})
                .code,
            0);
    }

    void readingAndTypedLines() {
        CliFolder f;
        CliRun r = f.run(
            {QStringLiteral("ler"), QStringLiteral("00193165100000089151234500000000000000000000"),
             QStringLiteral("--data"), QStringLiteral("23/11/2026"), QStringLiteral("--json")});
        QCOMPARE(r.code, 0);
        QCOMPARE(r.json().value(QStringLiteral("padrao")).toString(), QStringLiteral("C"));
        QCOMPARE(r.json().value(QStringLiteral("vencimento")).toString(),
                 QStringLiteral("05/12/2026"));
        QCOMPARE(r.json().value(QStringLiteral("juros")).toString(), QStringLiteral("SIM"));
        QVERIFY(!r.json().contains(QStringLiteral("vencida")));
        r = f.run(
            {QStringLiteral("ler"), QStringLiteral("81830000012345604272026011000000000000000000"),
             QStringLiteral("--data"), QStringLiteral("23/11/2026"), QStringLiteral("--json")});
        QCOMPARE(r.json().value(QStringLiteral("total")).toString(), QStringLiteral("1.493,82"));
        QCOMPARE(r.json().value(QStringLiteral("dias")).toInt(), 317);
        r = f.run({QStringLiteral("ler"),
                   QStringLiteral("00194165100000089151234500000000000000000000"),
                   QStringLiteral("--json")});
        QCOMPARE(r.code, 1);
        QCOMPARE(r.json().value(QStringLiteral("resultado")).toString(), QStringLiteral("digito"));

        r = f.run({QStringLiteral("linha"),
                   QStringLiteral("83640000001-1 33120138000-2 81288462711-6 08013618155-1")});
        QCOMPARE(r.out.trimmed(), QStringLiteral("83640000001331201380008128846271108013618155"));
        r = f.run({QStringLiteral("linha"),
                   QStringLiteral("836400000011 331201380003 812884627116 080136181551"),
                   QStringLiteral("--json")});
        QCOMPARE(r.code, 1);
        QCOMPARE(r.json().value(QStringLiteral("campo")).toInt(), 2);
        r = f.run({QStringLiteral("linha"), QStringLiteral("-")},
                  "00191234540000000000000000000000316510000008915\n123\n00191234540000000000000000"
                  "000000416510000008915\n");
        const QStringList lines = r.out.trimmed().split(QLatin1Char('\n'));
        QCOMPARE(lines.size(), 3);
        QCOMPARE(lines[0], QStringLiteral("00193165100000089151234500000000000000000000"));
        QVERIFY(lines[2].contains(QStringLiteral("geral")));
        QCOMPARE(r.code, 1);
    }

    void charges() {
        CliFolder f;
        CliRun r = f.run({QStringLiteral("encargos"), QStringLiteral("--vencimento"),
                          QStringLiteral("21/11/2026"), QStringLiteral("--data"),
                          QStringLiteral("24/11/2026"), QStringLiteral("--valor"),
                          QStringLiteral("100,00"), QStringLiteral("--esquema"),
                          QStringLiteral("1"), QStringLiteral("--json")});
        QCOMPARE(r.code, 0);
        QCOMPARE(r.json().value(QStringLiteral("acrescimo_multa")).toString(),
                 QStringLiteral("0,99"));
        QCOMPARE(r.json().value(QStringLiteral("acrescimo_juros")).toString(),
                 QStringLiteral("1,00"));
        QCOMPARE(r.json().value(QStringLiteral("total")).toString(), QStringLiteral("101,99"));
        // 20/11/2026 is a national holiday in the demo calendar: due then, paid Monday, on time.
        r = f.run({QStringLiteral("encargos"), QStringLiteral("--vencimento"),
                   QStringLiteral("20/11/2026"), QStringLiteral("--data"),
                   QStringLiteral("23/11/2026"), QStringLiteral("--valor"),
                   QStringLiteral("100,00"), QStringLiteral("--json")});
        QCOMPARE(r.json().value(QStringLiteral("vencida")).toBool(), false);
        QCOMPARE(r.json().value(QStringLiteral("vencimento")).toString(),
                 QStringLiteral("23/11/2026"));
        for (const char* bad : {"1,0,0", "-5,00", ""})
            QCOMPARE(f.run({QStringLiteral("encargos"), QStringLiteral("--vencimento"),
                            QStringLiteral("20/11/2026"), QStringLiteral("--data"),
                            QStringLiteral("23/11/2026"), QStringLiteral("--valor"),
                            QString::fromLatin1(bad)})
                         .code,
                     2);
        QCOMPARE(f.run({QStringLiteral("encargos"), QStringLiteral("--vencimento"),
                        QStringLiteral("20/11/2026"), QStringLiteral("--data"),
                        QStringLiteral("23/11/2026"), QStringLiteral("--valor"),
                        QStringLiteral("1,00"), QStringLiteral("--esquema"), QStringLiteral("um")})
                     .code,
                 2);
    }

    void wholeCustomerWithPrinter() {
        CliFolder f;
        QFile ini(f.path(QStringLiteral("Config.ini")));
        QVERIFY(ini.open(QIODevice::ReadOnly));
        QByteArray text = ini.readAll();
        ini.close();
        text.replace("modo=0", "modo=1").replace("impressora=txt", "impressora=bematech");
        text.replace("porta=LPT1", "porta=file:" + f.path(QStringLiteral("fita.bin")).toUtf8());
        QVERIFY(ini.open(QIODevice::WriteOnly | QIODevice::Truncate));
        ini.write(text);
        ini.close();

        QCOMPARE(f.asAdmin({QStringLiteral("caixa"), QStringLiteral("abrir"),
                            QStringLiteral("--data"), QStringLiteral("16/11/2026")})
                     .code,
                 0);
        CliRun r =
            f.asAdmin({QStringLiteral("caixa"), QStringLiteral("receber"), QStringLiteral("--data"),
                       QStringLiteral("16/11/2026"), QStringLiteral("--pago"),
                       QStringLiteral("2.000,00"), QStringLiteral("--json"),
                       QStringLiteral("81830000012345604272026011000000000000000000"),
                       QStringLiteral("00191.23454 00000.000000 00000.000000 3 16510000008915"),
                       QStringLiteral("81830000012345604272026011000000000000000000"),
                       QStringLiteral("--avulso"), QStringLiteral("8:5,00")});
        QCOMPARE(r.code, 0);
        const QJsonObject o = r.json();
        const QJsonArray gravados = o.value(QStringLiteral("gravados")).toArray();
        QCOMPARE(gravados.size(), 3);
        QCOMPARE(gravados.at(0).toObject().value(QStringLiteral("autentica")).toInt(), 1);
        QCOMPARE(gravados.at(2).toObject().value(QStringLiteral("autentica")).toInt(), 3);
        QCOMPARE(o.value(QStringLiteral("recusados"))
                     .toArray()
                     .at(0)
                     .toObject()
                     .value(QStringLiteral("resultado"))
                     .toString(),
                 QStringLiteral("lancada"));
        QCOMPARE(o.value(QStringLiteral("total")).toString(), QStringLiteral("1.587,97"));
        QCOMPARE(o.value(QStringLiteral("troco")).toString(), QStringLiteral("412,03"));

        r = f.asAdmin({QStringLiteral("caixa"), QStringLiteral("receber"), QStringLiteral("--data"),
                       QStringLiteral("16/11/2026"), QStringLiteral("--recusar-vencidas"),
                       QStringLiteral("--json"),
                       QStringLiteral("81640000000100004272025031000000000000000000")});
        QCOMPARE(r.code, 1);
        QCOMPARE(r.json()
                     .value(QStringLiteral("recusados"))
                     .toArray()
                     .at(0)
                     .toObject()
                     .value(QStringLiteral("resultado"))
                     .toString(),
                 QStringLiteral("recusada"));

        r = f.asAdmin({QStringLiteral("caixa"), QStringLiteral("situacao"),
                       QStringLiteral("--data"), QStringLiteral("16/11/2026"),
                       QStringLiteral("--json")});
        QCOMPARE(r.json().value(QStringLiteral("recebimentos")).toInt(), 3);
        QCOMPARE(f.asAdmin({QStringLiteral("caixa"), QStringLiteral("encerrar"),
                            QStringLiteral("--data"), QStringLiteral("16/11/2026")})
                     .code,
                 0);
        r = f.asAdmin({QStringLiteral("caixa"), QStringLiteral("situacao"),
                       QStringLiteral("--data"), QStringLiteral("16/11/2026"),
                       QStringLiteral("--json")});
        QCOMPARE(r.json().value(QStringLiteral("status")).toString(), QStringLiteral("FECHADO"));
        QCOMPARE(r.json().value(QStringLiteral("valor_arrecadado")).toString(),
                 QStringLiteral("1.587,97"));
        r = f.asAdmin({QStringLiteral("caixa"), QStringLiteral("receber"), QStringLiteral("--data"),
                       QStringLiteral("16/11/2026"),
                       QStringLiteral("00199000000000025001234500000000000000000000")});
        QCOMPARE(r.code, 1); // closed day
        QCOMPARE(f.run({QStringLiteral("caixa"), QStringLiteral("situacao")}, "errada\n").code, 1);

        QFile tape(f.path(QStringLiteral("fita.bin")));
        QVERIFY(tape.open(QIODevice::ReadOnly));
        const QByteArray bytes = tape.readAll();
        QVERIFY(bytes.contains("ABERTURA DE MOVIMENTO: 001"));
        QVERIFY(bytes.contains(QByteArray("\x1B\x61\x01", 3) +
                               "PMX 1 0001 16/11/2026      1.493,82R\r\n" +
                               QByteArray("\x1B\x61\x00", 3)));
        QVERIFY(bytes.contains("(+)========= ARRECADADO -->     1.587,97"));

        QCOMPARE(
            f.run({QStringLiteral("impressora"), QStringLiteral("fita"), QStringLiteral("TESTE")})
                .code,
            0);
        QCOMPARE(f.run({QStringLiteral("impressora"), QStringLiteral("autenticar"),
                        QStringLiteral("X"), QStringLiteral("--espera"), QStringLiteral("0")})
                     .code,
                 2);
    }
};

QTEST_GUILESS_MAIN(tst_commands)
#include "tst_commands.moc"
