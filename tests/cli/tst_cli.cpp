// The command line of the application frame, run as a user would: a real process on a
// temporary folder.
#include "CliRun.h"
#include "IniFile.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

class tst_cli : public QObject {
    Q_OBJECT
    QTemporaryDir m_dir;
    QString folder(const QString& name) const { return m_dir.filePath(name); }

private slots:
    void iniciarCreatesEverythingOnce() {
        const QString f = folder(QStringLiteral("novo/caixa1"));
        CliRun r = runTolvane(f, {QStringLiteral("iniciar"), QStringLiteral("--demo")});
        QCOMPARE(r.code, 0);
        QVERIFY(QFile::exists(f + QStringLiteral("/Config.ini")));
        QVERIFY(r.out.contains(QStringLiteral("Senha do administrador")));
        const QString password = r.demoPassword();
        QVERIFY(!password.isEmpty());
        // Last and framed, with the command that changes it.
        const QStringList lines = r.out.trimmed().split(QLatin1Char('\n'));
        QCOMPARE(lines.last(), QString(72, QLatin1Char('#')));
        QVERIFY(r.out.indexOf(QStringLiteral("Pasta pronta")) <
                r.out.indexOf(QStringLiteral("Senha do administrador")));
        const QString change = lines.at(lines.size() - 2).section(QStringLiteral("tolvane "), 1);
        QVERIFY2(change.contains(QStringLiteral("usuario gravar --id ")), qPrintable(change));

        {
            QSqlDatabase db =
                QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("check"));
            db.setDatabaseName(f + QStringLiteral("/caixa.db"));
            QVERIFY(db.open());
            QSqlQuery q(db);
            QStringList tables, indexes;
            QVERIFY(q.exec(QStringLiteral("SELECT type, name, tbl_name FROM sqlite_master")));
            while (q.next())
                (q.value(0).toString() == QLatin1String("table") ? tables : indexes)
                    << q.value(1).toString() + QLatin1Char('.') + q.value(2).toString();
            for (const char* t :
                 {"Usuarios", "Movimento", "Contador", "Recebimentos", "RECEBIMENTOS1", "CodBarra",
                  "Sangria", "Itens", "ConfCaixa", "Suprimentos", "Feriados"})
                QVERIFY2(tables.contains(QLatin1String(t) + QLatin1Char('.') + QLatin1String(t)),
                         t);
            for (const char* t :
                 {"Recebimentos", "RECEBIMENTOS1", "Movimento", "Sangria", "Feriados"})
                QVERIFY2(indexes.filter(QLatin1Char('.') + QLatin1String(t)).size() >= 1, t);
            QVERIFY(q.exec(QStringLiteral("SELECT COUNT(*) FROM CodBarra WHERE PADRAO = 'S'")) &&
                    q.next());
            QVERIFY(q.value(0).toInt() >= 2);
            QVERIFY(q.exec(QStringLiteral("SELECT SENHA FROM Usuarios")) && q.next());
            QVERIFY(!q.value(0).toString().contains(password));
        }
        QSqlDatabase::removeDatabase(QStringLiteral("check"));

        // Again: nothing destroyed, nothing doubled, no second password.
        IniFile::write(QStringLiteral("Mensagem"), QStringLiteral("pref"), QStringLiteral("9"),
                       f + QStringLiteral("/Config.ini"));
        r = runTolvane(f, {QStringLiteral("iniciar"), QStringLiteral("--demo")});
        QCOMPARE(r.code, 0);
        QVERIFY(!r.out.contains(QStringLiteral("Senha do administrador")));
        QCOMPARE(IniFile::read(QStringLiteral("Mensagem"), QStringLiteral("pref"),
                               f + QStringLiteral("/Config.ini")),
                 QStringLiteral("9"));
        r = runTolvane(
            f, {QStringLiteral("usuario"), QStringLiteral("listar"), QStringLiteral("--json")});
        QCOMPARE(r.array().size(), 1);

        r = runTolvane(f, {QStringLiteral("entrar"), QStringLiteral("--json")},
                       password.toUpper().toUtf8() + "\n");
        QCOMPARE(r.code, 0);
        // The printed command sets a new password.
        const QStringList words = change.section(QStringLiteral("\" "), 1).split(QLatin1Char(' '));
        QCOMPARE(runTolvane(f, words, "nova-senha-1\n").code, 0);
        QCOMPARE(runTolvane(f, {QStringLiteral("entrar")}, "nova-senha-1\n").code, 0);
        QCOMPARE(r.json().value(QStringLiteral("tipo")).toString(), QStringLiteral("ADM"));
    }

    void usersAndLogin() {
        const QString f = folder(QStringLiteral("usuarios"));
        QCOMPARE(runTolvane(f, {QStringLiteral("iniciar")}).code, 0);
        auto gravar = [&](const QStringList& extra, const QByteArray& senha) {
            return runTolvane(
                f, QStringList{QStringLiteral("usuario"), QStringLiteral("gravar")} + extra,
                senha + "\n");
        };
        QCOMPARE(gravar({QStringLiteral("--nome"), QStringLiteral("Ana"), QStringLiteral("--tipo"),
                         QStringLiteral("USER")},
                        "ana123")
                     .code,
                 0);
        QCOMPARE(gravar({QStringLiteral("--nome"), QStringLiteral("Bia"), QStringLiteral("--tipo"),
                         QStringLiteral("USER")},
                        "mesma1")
                     .code,
                 0);
        // The login admits exactly one operator per password, so a second one is refused.
        const CliRun same = gravar({QStringLiteral("--nome"), QStringLiteral("Caio"),
                                    QStringLiteral("--tipo"), QStringLiteral("ADM")},
                                   "MESMA1");
        QCOMPARE(same.code, 1);
        QCOMPARE(same.err.trimmed(), QStringLiteral("Senha já usada por outro operador"));
        const CliRun shortOne = gravar({QStringLiteral("--nome"), QStringLiteral("Caio"),
                                        QStringLiteral("--tipo"), QStringLiteral("ADM")},
                                       "caio5");
        QCOMPARE(shortOne.code, 1);
        QCOMPARE(shortOne.err.trimmed(),
                 QStringLiteral("A senha deve ter pelo menos 6 caracteres."));
        QCOMPARE(gravar({QStringLiteral("--nome"), QStringLiteral("Davi"), QStringLiteral("--tipo"),
                         QStringLiteral("ADM"), QStringLiteral("--inativo")},
                        "davi12")
                     .code,
                 0);
        QCOMPARE(gravar({QStringLiteral("--nome"), QStringLiteral("Edu"), QStringLiteral("--tipo"),
                         QStringLiteral("adm")},
                        "edu123")
                     .code,
                 0);
        QCOMPARE(gravar({QStringLiteral("--nome"), QStringLiteral("Fe"), QStringLiteral("--tipo"),
                         QStringLiteral("USER")},
                        "")
                     .code,
                 1);
        CliRun quote = gravar({QStringLiteral("--nome"), QStringLiteral("Gil"),
                               QStringLiteral("--tipo"), QStringLiteral("USER")},
                              "d'oeste1");
        QCOMPARE(quote.code, 1);
        QCOMPARE(gravar({QStringLiteral("--nome"), QStringLiteral("Hugo"), QStringLiteral("--tipo"),
                         QStringLiteral("CHEFE")},
                        "h")
                     .code,
                 2);

        const CliRun list = runTolvane(
            f, {QStringLiteral("usuario"), QStringLiteral("listar"), QStringLiteral("--json")});
        const QJsonArray users = list.array();
        QCOMPARE(users.size(), 4);
        QVERIFY(!list.out.contains(QStringLiteral("senha"), Qt::CaseInsensitive));
        QVERIFY(!list.out.contains(QStringLiteral("pbkdf2")));

        struct Case {
            QByteArray senha;
            int code;
            const char* out;
        };
        const Case cases[] = {{"ANA123", 0, "Ana\tUSER"},
                              {"mesma1", 0, "Bia\tUSER"},
                              {"davi12", 1, ""},
                              {"", 1, ""},
                              {"   ", 1, ""}};
        for (const Case& c : cases) {
            const CliRun r = runTolvane(f, {QStringLiteral("entrar")}, c.senha + "\n");
            QVERIFY2(r.code == c.code, c.senha.constData());
            if (c.code == 0)
                QCOMPARE(r.out.trimmed(), QString::fromUtf8(c.out));
            else
                QVERIFY(r.err.contains(QStringLiteral("Senha Inválida!!")));
        }
        QCOMPARE(
            runTolvane(f, {QStringLiteral("entrar"), QStringLiteral("--adm")}, "davi12\n").code, 0);
        QCOMPARE(
            runTolvane(f, {QStringLiteral("entrar"), QStringLiteral("--adm")}, "edu123\n").code, 1);

        // Changing an operator without a password keeps the old one.
        const int anaId = users.at(0).toObject().value(QStringLiteral("id")).toInt();
        QCOMPARE(
            gravar({QStringLiteral("--id"), QString::number(anaId), QStringLiteral("--nome"),
                    QStringLiteral("Ana Maria"), QStringLiteral("--tipo"), QStringLiteral("USER")},
                   "")
                .code,
            0);
        QCOMPARE(runTolvane(f, {QStringLiteral("entrar")}, "ana123\n").out.trimmed(),
                 QStringLiteral("Ana Maria\tUSER"));
    }

    void badFoldersAndDatabases() {
        // A file that is not a database.
        const QString junk = folder(QStringLiteral("lixo"));
        QDir().mkpath(junk);
        QFile db(junk + QStringLiteral("/caixa.db"));
        QVERIFY(db.open(QIODevice::WriteOnly));
        db.write(QByteArray(4096, 'x'));
        db.close();
        CliRun r = runTolvane(junk, {QStringLiteral("iniciar")});
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("Erro ao conectar banco de dados!!!")));
        QCOMPARE(QFileInfo(junk + QStringLiteral("/caixa.db")).size(), qint64(4096));

        // A folder without a database is not silently given an empty one.
        const QString empty = folder(QStringLiteral("vazia"));
        QDir().mkpath(empty);
        r = runTolvane(empty, {QStringLiteral("usuario"), QStringLiteral("listar")});
        QCOMPARE(r.code, 1);
        QVERIFY(!QFile::exists(empty + QStringLiteral("/caixa.db")));

        // A folder that cannot be created.
        QFile blocker(folder(QStringLiteral("arquivo")));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocker.close();
        r = runTolvane(folder(QStringLiteral("arquivo/sub")), {QStringLiteral("iniciar")});
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("Não foi possível criar a pasta")));

        // A database newer than the program is refused and left as it is.
        const QString newer = folder(QStringLiteral("nova"));
        QCOMPARE(runTolvane(newer, {QStringLiteral("iniciar")}).code, 0);
        {
            QSqlDatabase c =
                QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("newer"));
            c.setDatabaseName(newer + QStringLiteral("/caixa.db"));
            QVERIFY(c.open());
            QSqlQuery(c).exec(QStringLiteral("UPDATE VersaoBanco SET VERSAO = 99"));
        }
        QSqlDatabase::removeDatabase(QStringLiteral("newer"));
        r = runTolvane(newer, {QStringLiteral("iniciar")});
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("mais nova")));
    }

    void usage() {
        QCOMPARE(runTolvane(folder(QStringLiteral("u")), {QStringLiteral("voar")}).code, 2);
        QCOMPARE(runTolvane(folder(QStringLiteral("u")),
                            {QStringLiteral("usuario"), QStringLiteral("gravar"),
                             QStringLiteral("--nome")})
                     .code,
                 2);
        const CliRun help = runTolvane(folder(QStringLiteral("u")), {QStringLiteral("--help")});
        QCOMPARE(help.code, 0);
        QVERIFY(help.out.contains(QStringLiteral("iniciar")));
    }

    void kindListHasAHeader() {
        const QString f = folder(QStringLiteral("tipos"));
        QCOMPARE(runTolvane(f, {QStringLiteral("iniciar"), QStringLiteral("--demo")}).code, 0);
        const CliRun r = runTolvane(f, {QStringLiteral("tipo"), QStringLiteral("listar")});
        QCOMPARE(r.code, 0);
        QCOMPARE(r.out.section(QLatin1Char('\n'), 0, 0),
                 QStringLiteral("IDCOD\tIDTIPO\tDESCRICAO\tPADRAO\tJUROS\tBLOQUEIO\tCODBANCO"));
        QVERIFY(r.out.section(QLatin1Char('\n'), 1, 1).startsWith(QStringLiteral("001\t0425\t")));
    }

    // A printer setting with a comment glued to it is named, never printed to in silence.
    void printerSettingProblemIsNamed_data() {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::newRow("model") << "impressora"
                               << "bematech   ; bematech, quattro ou txt";
        QTest::newRow("port") << "porta"
                              << "LPT1            ; LPT1 LPT2 COM1";
        QTest::newRow("switch") << "modo"
                                << "1 ; liga";
    }
    void printerSettingProblemIsNamed() {
        QFETCH(QString, key);
        QFETCH(QString, value);
        const QString f = folder(QStringLiteral("impressora-") + key);
        QCOMPARE(runTolvane(f, {QStringLiteral("iniciar")}).code, 0);
        const QString ini = f + QStringLiteral("/Config.ini");
        const QString p = QStringLiteral("Print");
        IniFile::write(p, QStringLiteral("impressora"), QStringLiteral("bematech"), ini);
        IniFile::write(p, QStringLiteral("modo"), QStringLiteral("1"), ini);
        IniFile::write(p, QStringLiteral("porta"),
                       QStringLiteral("file:") + f + QStringLiteral("/fita.bin"), ini);
        IniFile::write(p, key, value, ini);
        const QList<QStringList> commands = {
            {QStringLiteral("impressora"), QStringLiteral("status")},
            {QStringLiteral("impressora"), QStringLiteral("fita"), QStringLiteral("TESTE")}};
        for (const QStringList& command : commands) {
            const CliRun r = runTolvane(f, command);
            QCOMPARE(r.code, 1);
            QVERIFY2(r.err.contains(QStringLiteral("[Print] ") + key + QLatin1Char('=')),
                     qPrintable(r.err));
        }
        QVERIFY(!QFile::exists(f + QStringLiteral("/fita.bin")));
    }
};

QTEST_GUILESS_MAIN(tst_cli)
#include "tst_cli.moc"
