// Who may run what: every administrator's command with no password, with a cashier's and with
// an administrator's, and the people a correction allowed by an administrator names.
#include "CliFolder.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTest>

namespace {

const QString kTaxas = QStringLiteral("81660000003124004262026113058888888888888888");
const QString kAgua = QStringLiteral("00193165100000089151234500000000000000000000");
const QByteArray kAna = "ana-caixa1";

class Folder : public CliFolder {
public:
    // Every row of every table, and Config.ini: what a refused command must leave as it was.
    QString snapshot() const {
        QString out;
        {
            QSqlDatabase db =
                QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("snapshot"));
            db.setDatabaseName(path(QStringLiteral("caixa.db")));
            if (db.open()) {
                for (const QString& t : db.tables()) {
                    QSqlQuery q(QStringLiteral("SELECT * FROM %1").arg(t), db);
                    while (q.next())
                        for (int i = 0; i < q.record().count(); ++i)
                            out += t + q.value(i).toString() + QLatin1Char('|');
                }
            }
        }
        QSqlDatabase::removeDatabase(QStringLiteral("snapshot"));
        QFile ini(path(QStringLiteral("Config.ini")));
        if (ini.open(QIODevice::ReadOnly))
            out += QString::fromLatin1(ini.readAll());
        return out;
    }
    QStringList files() const { return QDir(path()).entryList(QDir::Files); }
};

struct Row {
    const char* args;
    QByteArray more; // after the passwords (a new operator's password)
    int adminCode;   // the exit with an administrator's password
};

} // namespace

class tst_authority_cli : public QObject {
    Q_OBJECT
private slots:
    void administratorsCommandsAskForBothPasswords() {
        Folder f;
        QVERIFY(f.ok());
        const QByteArray adm = f.password();
        QCOMPARE(f.asAdmin(words("usuario gravar --nome ANA --tipo USER"), kAna + "\n").code, 0);
        QCOMPARE(f.run(words("caixa abrir"), kAna + "\n").code, 0);
        const CliRun paid = f.run(words("caixa receber --json") << kTaxas << kAgua, kAna + "\n");
        QCOMPARE(paid.code, 0);
        const QString id = QString::number(f.run(words("caixa recebimentos --json"), kAna + "\n")
                                               .array()
                                               .first()
                                               .toObject()
                                               .value(u"idrecebe")
                                               .toInt());
        const QString copy = f.path(QStringLiteral("manual.db"));
        const QList<Row> rows = {
            {"usuario gravar --nome BIA --tipo USER", "bia-caixa1\n", 0},
            {"usuario gravar --nome ADM2 --tipo ADM", "adm2-senha\n", 0},
            {"usuario excluir --id 3", {}, 0},
            {"tipo gravar --idcod 77 --idtipo 0777 --descricao TESTE --padrao F --juros N "
             "--bloqueio N",
             {},
             0},
            {"tipo excluir --idcod 77", {}, 0},
            {"feriado gravar 25/12/2031", {}, 0},
            {"feriado excluir --todos", {}, 0},
            {"opcoes gravar Mensagem/cabecalho=PMZ", {}, 0},
            {"lancamento gravar --tipo entrada --item 100:10,00", {}, 0},
            {"lancamento gravar --tipo sangria --item 100:5,00", {}, 0},
            {"lancamento listar", {}, 0},
            {"recebimento estornar --motivo conferido --id ", {}, 0},
            {"recebimento reverter --id ", {}, 0},
            {"exportar rejeitar --id ", {}, 0},
            {"auditar", {}, 0},
            // Allowed, then refused by its own rule: the day is open.
            {"guiche assumir", {}, 1},
            {"copia ", {}, 0},
            {"iniciar --demo", {}, 0},
        };
        for (const Row& row : rows) {
            QStringList args = words(row.args);
            if (QByteArray(row.args).endsWith("--id "))
                args << id;
            if (QByteArray(row.args) == "copia ")
                args << copy;
            const QString before = f.snapshot();
            const QStringList filesBefore = f.files();
            struct Try {
                QByteArray input;
                const char* refusal;
            };
            const Try refused[] = {
                {QByteArray(), "Senha Inválida!!"},
                {kAna + "\n", "Senha de administrador não aceita."},
                {kAna + "\n" + kAna + "\n", "Senha de administrador não aceita."},
                {adm + "\nerrada\n", "Senha de administrador não aceita."},
                {"errada\n" + adm + "\n", "Senha Inválida!!"},
            };
            for (const Try& t : refused) {
                const CliRun r = f.run(args, t.input + row.more);
                QVERIFY2(r.code == 1, row.args);
                QVERIFY2(r.err.contains(QString::fromUtf8(t.refusal)), qPrintable(r.err));
                QVERIFY2(f.snapshot() == before, row.args);
                QVERIFY2(f.files() == filesBefore, row.args);
            }
            // The cashier at the counter, the administrator allowing it.
            const CliRun r = f.run(args, CliFolder::passwords(kAna, adm, row.more));
            QVERIFY2(r.code == row.adminCode,
                     qPrintable(QStringLiteral("%1: %2").arg(QString::fromUtf8(row.args), r.err)));
        }
        QVERIFY(QFile::exists(copy));
    }

    // The cashier's own acts take her password alone; consultations take none.
    void operatorsAndOpenCommands() {
        Folder f;
        QCOMPARE(f.asAdmin(words("usuario gravar --nome ANA --tipo USER"), kAna + "\n").code, 0);
        const char* operators[] = {"caixa abrir",
                                   "caixa situacao",
                                   "caixa recebimentos",
                                   "lancamento gravar --tipo saida --descricao LUZ --item 100:1,00",
                                   "lancamento listar --tipo saida",
                                   "conferencia",
                                   "controle"};
        for (const char* c : operators) {
            CliRun r = f.run(words(c));
            QVERIFY2(r.code == 1 && r.err.contains(QStringLiteral("Senha Inválida!!")), c);
            r = f.run(words(c), kAna + "\n");
            QVERIFY2(r.code == 0, qPrintable(QString::fromUtf8(c) + r.err));
        }
        for (const char* c : {"usuario listar", "tipo listar", "feriado listar", "opcoes",
                              "verificar", "estornos", "dia-util 24/11/2026"})
            QVERIFY2(f.run(words(c)).code == 0, c);
    }

    // Only a database without an administrator takes a new one without a password; a second
    // operator of the same name, in any case, is refused.
    void theFirstAdministratorAndUniqueNames() {
        QTemporaryDir dir;
        const QString at = dir.filePath(QStringLiteral("novo"));
        QCOMPARE(runTolvane(at, words("iniciar")).code, 0);
        CliRun r = runTolvane(at, words("usuario gravar --nome ANA --tipo USER"), "ana-123\n");
        QCOMPARE(r.code, 1);
        QCOMPARE(r.err.trimmed(), QStringLiteral("Senha Inválida!!"));
        QCOMPARE(runTolvane(at, words("usuario gravar --nome CHEFE --tipo ADM"), "chefe-1\n").code,
                 0);
        r = runTolvane(at, words("usuario gravar --nome OUTRO --tipo ADM"), "outro-1\n");
        QCOMPARE(r.code, 1);
        QCOMPARE(runTolvane(at, words("usuario listar --json")).array().size(), 1);
        r = runTolvane(at, words("usuario gravar --nome ana --tipo USER"),
                       "chefe-1\nchefe-1\nana-123\n");
        QCOMPARE(r.code, 0);
        for (const char* name : {"ANA", "Ana", " ana "}) {
            r = runTolvane(at,
                           words("usuario gravar --tipo USER --nome") << QString::fromUtf8(name),
                           "chefe-1\nchefe-1\nana-456\n");
            QCOMPARE(r.code, 1);
            QCOMPARE(r.err.trimmed(), QStringLiteral("Já existe um operador com este nome."));
        }
        QCOMPARE(runTolvane(at, words("usuario listar --json")).array().size(), 2);
    }

    // A reversal at ANA's counter allowed by the administrator names both: in the Atos row, in
    // the yearly log (User: the administrator) and in the command's tape lines.
    void aReversalNamesTheCashierAndWhoAllowedIt() {
        Folder f;
        QCOMPARE(f.asAdmin(words("usuario gravar --nome ANA --tipo USER"), kAna + "\n").code, 0);
        QCOMPARE(f.run(words("caixa abrir"), kAna + "\n").code, 0);
        QCOMPARE(f.run(words("caixa receber") << kTaxas, kAna + "\n").code, 0);
        const int id = f.run(words("caixa recebimentos --json"), kAna + "\n")
                           .array()
                           .first()
                           .toObject()
                           .value(u"idrecebe")
                           .toInt();
        const CliRun r = f.run(words("recebimento estornar --motivo conferido --json --id")
                                   << QString::number(id),
                               CliFolder::passwords(kAna, f.password()));
        QCOMPARE(r.code, 0);
        const QJsonArray tape = r.json().value(u"linhas_fita").toArray();
        QCOMPARE(tape.last().toString().trimmed(), QStringLiteral("OPER: ANA AUT: ADMINISTRADOR"));
        QFile log(f.path(QStringLiteral("Estorno_1_%1.txt").arg(QDate::currentDate().year())));
        QVERIFY(log.open(QIODevice::ReadOnly));
        const QByteArray text = log.readAll();
        QVERIFY2(text.contains("User: ADMINISTRADOR\r\nOperador: ANA\r\n"), text.constData());
        const QJsonObject entry = f.run(words("estornos --json"))
                                      .json()
                                      .value(u"anos")
                                      .toArray()
                                      .first()
                                      .toObject()
                                      .value(u"entradas")
                                      .toArray()
                                      .first()
                                      .toObject();
        QCOMPARE(entry.value(u"usuario").toString(), QStringLiteral("ADMINISTRADOR"));
        QCOMPARE(entry.value(u"operador").toString(), QStringLiteral("ANA"));
        {
            QSqlDatabase db =
                QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("atos"));
            db.setDatabaseName(f.path(QStringLiteral("caixa.db")));
            QVERIFY(db.open());
            QSqlQuery q(QStringLiteral("SELECT e.USUARIO, a.OPERADOR, a.AUTORIZADO_POR, a.ATO "
                                       "FROM Estornos e JOIN Atos a ON a.TABELA = 'Estornos' "
                                       "AND a.CHAVE = e.ID"),
                        db);
            QVERIFY(q.next());
            QCOMPARE(q.value(0).toString(), QStringLiteral("ADMINISTRADOR"));
            QCOMPARE(q.value(1).toString(), QStringLiteral("ANA"));
            QCOMPARE(q.value(2).toString(), QStringLiteral("ADMINISTRADOR"));
            QCOMPARE(q.value(3).toString(), QStringLiteral("Estorno"));
        }
        QSqlDatabase::removeDatabase(QStringLiteral("atos"));
        QCOMPARE(f.asAdmin(words("auditar")).code, 0); // the acts are in the chain
    }
};

QTEST_MAIN(tst_authority_cli)
#include "tst_authority_cli.moc"
