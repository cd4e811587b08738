// Every act that changes money or the record leaves one row in the chained acts table, naming the
// cashier at the counter and the administrator who allowed it, written with the act or not at
// all; and the day's row, the operators, the counter's letter and the outbox are chained, so a
// change made with a database tool is found by a plain `auditar`.
#include "ChainRewrite.h"
#include "CliFolder.h"

#include <QSqlQuery>
#include <QTest>

namespace {

const QByteArray kAna = "ana-caixa1";
const QString kAdmin = QStringLiteral("ADMINISTRADOR");

struct Ato {
    qint64 id = 0;
    QString ato, operador, autorizadoPor;
    qint64 chave = 0;
};

// A demo folder with the cashier ANA.
class Counter : public CliFolder {
public:
    Counter() {
        cashier = asAdmin(words("usuario gravar --nome ANA --tipo USER"), kAna + "\n").code == 0;
    }
    // The acts recorded after `after`, oldest first.
    QList<Ato> atos(qint64 after = 0) const {
        QList<Ato> out;
        {
            QSqlDatabase db = ChainRewrite::openSqlite(path(QStringLiteral("caixa.db")));
            QSqlQuery q(db);
            q.prepare(QStringLiteral("SELECT ID, ATO, OPERADOR, AUTORIZADO_POR, CHAVE FROM Atos "
                                     "WHERE ID > ? ORDER BY ID"));
            q.addBindValue(after);
            q.exec();
            while (q.next())
                out.append({q.value(0).toLongLong(), q.value(1).toString(), q.value(2).toString(),
                            q.value(3).toString(), q.value(4).toLongLong()});
            db.close();
        }
        return out;
    }
    qint64 lastId() const {
        const QList<Ato> all = atos();
        return all.isEmpty() ? 0 : all.last().id;
    }
    bool sql(const QString& statement) const {
        QSqlDatabase db = ChainRewrite::openSqlite(path(QStringLiteral("caixa.db")));
        const bool ok = QSqlQuery(db).exec(statement);
        db.close();
        return ok;
    }
    int count(const QString& table) const {
        QSqlDatabase db = ChainRewrite::openSqlite(path(QStringLiteral("caixa.db")));
        QSqlQuery q(db);
        const int n = q.exec(QStringLiteral("SELECT COUNT(*) FROM %1").arg(table)) && q.next()
                          ? q.value(0).toInt()
                          : -1;
        db.close();
        return n;
    }
    // ANA at the counter, the administrator allowing the act when `admin`.
    CliRun byAna(const QString& args, bool admin, const QByteArray& more = {}) const {
        return run(args.split(QLatin1Char(' '), Qt::SkipEmptyParts),
                   admin ? CliFolder::passwords(kAna, password(), more) : kAna + "\n" + more);
    }
    bool cashier = false;
};

} // namespace

class tst_acts_cli : public QObject {
    Q_OBJECT
private slots:
    // One command after the other on one counter, as a day goes; {chave} is the row the
    // previous act named.
    void everyActNamesItsPeople() {
        struct Row {
            const char* args;
            bool admin; // the administrator's password after ANA's
            QByteArray more;
            QStringList atos; // the acts' names, as the acts table says them
        };
        const QList<Row> rows = {
            {"caixa abrir", false, {}, {"Abrir movimento"}},
            {"lancamento gravar --tipo saida --descricao LUZ --item 100:1,00",
             false,
             {},
             {"Pagamentos: inclusão", "Pagamentos: alteração"}},
            {"lancamento gravar --tipo entrada --item 100:10,00",
             true,
             {},
             {"Entradas e sangrias: inclusão", "Entradas e sangrias: alteração"}},
            {"lancamento excluir --id {chave}", true, {}, {"Entradas e sangrias: exclusão"}},
            {"lancamento gravar --tipo sangria --item 100:2,00",
             true,
             {},
             {"Entradas e sangrias: inclusão", "Entradas e sangrias: alteração"}},
            {"cofre --entrada 50,00", false, {}, {"Suprimentos (cofre)"}},
            // A payment is in its own rows (Autenticacoes names the cashier), not an act.
            {"caixa receber 81660000003124004262026113058888888888888888", false, {}, {}},
            {"exportar rejeitar --id 1", true, {}, {"Arquivos bancários: alteração"}},
            {"exportar confirmar --id 1", true, {}, {"Arquivos bancários: alteração"}},
            {"exportar febraban --tipo 2 --banco 001", true, {}, {"Arquivos bancários"}},
            {"conferencia --item 100:10,00", false, {}, {"Conferência de caixa: inclusão"}},
            {"tipo gravar --idcod 77 --idtipo 0777 --descricao TESTE --padrao F --juros N "
             "--bloqueio N",
             true,
             {},
             {"Tipos de guia: inclusão"}},
            {"tipo gravar --idcod 77 --idtipo 0777 --descricao TESTE --padrao F --juros N "
             "--bloqueio S --alterar",
             true,
             {},
             {"Tipos de guia: alteração"}},
            {"tipo excluir --idcod 77", true, {}, {"Tipos de guia: exclusão"}},
            {"usuario gravar --nome BIA --tipo USER", true, "bia-caixa1\n", {"Usuários: inclusão"}},
            {"usuario gravar --id {chave} --nome BIA --tipo USER",
             true,
             "\n",
             {"Usuários: alteração"}},
            {"usuario gravar --id {chave} --nome BIA --tipo USER",
             true,
             "bia-caixa2\n",
             {"Usuários: troca de senha"}},
            {"usuario excluir --id {chave}", true, {}, {"Usuários: exclusão"}},
            {"feriado gravar 25/12/2031", true, {}, {"Feriados: inclusão"}},
            {"feriado excluir --todos", true, {}, {"Feriados: exclusão"}},
            {"opcoes gravar Mensagem/cabecalho=PMZ", true, {}, {"Opções"}},
            // Recorded before the printer is tried (the test has no printer at its port).
            {"autenticar 12,34", true, {}, {"Autenticar documento"}},
            {"impressora autenticar TESTE", true, {}, {"Autenticar documento: texto livre"}},
            {"caixa encerrar --sem-cupom", false, {}, {"Encerrar movimento"}},
            {"caixa reabrir --sem-cupom", false, {}, {"Reabrir movimento"}},
            {"caixa encerrar --sem-cupom", false, {}, {"Encerrar movimento"}},
            {"guiche assumir", true, {}, {"Assumir o guichê"}},
        };
        Counter f;
        QVERIFY(f.ok() && f.cashier);
        f.set(QStringLiteral("Print"), QStringLiteral("modo"), QStringLiteral("1"));
        qint64 chave = 0;
        for (const Row& row : rows) {
            const qint64 before = f.lastId();
            const QString args = QString::fromUtf8(row.args).replace(QStringLiteral("{chave}"),
                                                                     QString::number(chave));
            const CliRun r = f.byAna(args, row.admin, row.more);
            const int code = args.contains(QStringLiteral("autenticar")) ? 1 : 0;
            QVERIFY2(r.code == code, qPrintable(args + QStringLiteral(": ") + r.err));
            const QList<Ato> added = f.atos(before);
            QStringList names;
            for (const Ato& a : added) {
                names << a.ato;
                QVERIFY2(a.operador == QLatin1String("ANA"), qPrintable(args));
                QVERIFY2(a.autorizadoPor == (row.admin ? kAdmin : QString()), qPrintable(args));
            }
            QCOMPARE(names, row.atos);
            chave = added.isEmpty() ? 0 : added.first().chave;
        }
        QCOMPARE(f.asAdmin(words("auditar")).code, 0);
    }

    // An act whose row in the acts table cannot be written is not done: the act's own rows are
    // rolled back with it.
    void anActThatCannotBeRecordedIsNotDone_data() {
        QTest::addColumn<QString>("args");
        QTest::addColumn<bool>("admin");
        QTest::addColumn<QString>("table"); // where the act would have written
        QTest::newRow("holiday") << "feriado gravar 01/01/2032" << true << "Feriados";
        QTest::newRow("kind of guide")
            << "tipo gravar --idcod 78 --idtipo 0778 --descricao OUTRO --padrao F --juros N "
               "--bloqueio N"
            << true << "CodBarra";
        QTest::newRow("cash entry")
            << "lancamento gravar --tipo entrada --item 100:10,00" << true << "Sangria";
        QTest::newRow("safe") << "cofre --entrada 5,00" << false << "CofreMovimentos";
        QTest::newRow("count") << "conferencia --item 100:10,00" << false << "ConfCaixa";
        QTest::newRow("closing") << "caixa encerrar --sem-cupom" << false << "Cadeia";
        QTest::newRow("operator") << "usuario gravar --nome BIA --tipo USER" << true << "Usuarios";
    }
    void anActThatCannotBeRecordedIsNotDone() {
        QFETCH(QString, args);
        QFETCH(bool, admin);
        QFETCH(QString, table);
        Counter f;
        QVERIFY(f.ok() && f.cashier);
        QCOMPARE(f.byAna(QStringLiteral("caixa abrir"), false).code, 0);
        QVERIFY(f.sql(QStringLiteral("CREATE TRIGGER sem_atos BEFORE INSERT ON Atos BEGIN SELECT "
                                     "RAISE(ABORT, 'recusado'); END")));
        const int rows = f.count(table);
        const qint64 last = f.lastId();
        const CliRun r = f.byAna(args, admin, "bia-caixa1\n");
        QVERIFY2(r.code != 0, qPrintable(r.out));
        QCOMPARE(f.count(table), rows);
        QCOMPARE(f.lastId(), last);
        QVERIFY(f.sql(QStringLiteral("DROP TRIGGER sem_atos")));
        QCOMPARE(f.asAdmin(words("auditar")).code, 0);
    }

    // A row of the chained tables changed behind the program's back, on a closed day.
    void aChangeBehindTheProgramsBackIsFound_data() {
        QTest::addColumn<QString>("statement");
        QTest::addColumn<QString>("found");
        QTest::newRow("a closed day's total lowered")
            << "UPDATE Movimento SET VALOR_ARRECADADO = VALOR_ARRECADADO - 1000000"
            << "Movimento ID=1 foi alterado fora do programa: VALOR_ARRECADADO era";
        QTest::newRow("a closed day opened again")
            << "UPDATE Movimento SET STATUS = 'ABERTO'"
            << "Movimento ID=1 foi alterado fora do programa: STATUS era \"FECHADO\", agora "
               "\"ABERTO\"";
        QTest::newRow("a day taken out") << "DELETE FROM Movimento"
                                         << "Movimento ID=1 foi apagado fora do programa.";
        QTest::newRow("a cashier made administrator")
            << "UPDATE Usuarios SET TIPO = 'ADM' WHERE NOME = 'ANA'"
            << "foi alterado fora do programa: TIPO era \"USER\", agora \"ADM\"";
        QTest::newRow("a cashier's password replaced")
            << "UPDATE Usuarios SET SENHA = 'outra' WHERE NOME = 'ANA'"
            << "foi alterado fora do programa: SENHA era";
        QTest::newRow("an administrator added")
            << "INSERT INTO Usuarios (NOME, SENHA, TIPO, ATIVO) VALUES ('X', 'y', 'ADM', 1)"
            << "não está na cadeia: foi gravado fora do programa.";
        QTest::newRow("the counter's letter")
            << "UPDATE Guiche SET GUICHE = 'Z'"
            << "Guiche ID=1 foi alterado fora do programa: GUICHE era";
        QTest::newRow("a row put in the outbox")
            << "INSERT INTO PublicacaoRede (OPERACAO, CODBARRA, IDRECEBE, MOMENTO) VALUES "
               "('RETIRAR', '1', 1, '2026-11-23T10:00:00.000')"
            << "PublicacaoRede ID=1 não está na cadeia: foi gravado fora do programa.";
    }
    void aChangeBehindTheProgramsBackIsFound() {
        QFETCH(QString, statement);
        QFETCH(QString, found);
        Counter f;
        QVERIFY(f.ok() && f.cashier);
        QCOMPARE(f.byAna(QStringLiteral("caixa abrir"), false).code, 0);
        QCOMPARE(f.byAna(QStringLiteral("caixa encerrar --sem-cupom"), false).code, 0);
        QCOMPARE(f.asAdmin(words("auditar")).code, 0);
        QVERIFY(f.sql(statement));
        const CliRun r = f.asAdmin(words("auditar"));
        QCOMPARE(r.code, 1);
        QVERIFY2(r.out.contains(found), qPrintable(r.out));
    }
};

QTEST_GUILESS_MAIN(tst_acts_cli)
#include "tst_acts_cli.moc"
