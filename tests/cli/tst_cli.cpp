// The command line of the application frame, run as a user would: a real process on a
// temporary folder.
#include "CliFolder.h"
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
        CliRun r = runTolvane(f, words("iniciar --demo"));
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
        // Demonstration data on a database with an administrator is that administrator's act.
        r = runTolvane(f, words("iniciar --demo"));
        QCOMPARE(r.code, 1);
        r = runTolvane(f, words("iniciar --demo"),
                       CliFolder::passwords(password.toUtf8(), password.toUtf8()));
        QCOMPARE(r.code, 0);
        QVERIFY(!r.out.contains(QStringLiteral("Senha do administrador")));
        QCOMPARE(IniFile::read(QStringLiteral("Mensagem"), QStringLiteral("pref"),
                               f + QStringLiteral("/Config.ini")),
                 QStringLiteral("9"));
        r = runTolvane(f, words("usuario listar --json"));
        QCOMPARE(r.array().size(), 1);

        r = runTolvane(f, words("entrar --json"), password.toUpper().toUtf8() + "\n");
        QCOMPARE(r.code, 0);
        // The printed command sets a new password.
        const QStringList changeIt =
            change.section(QStringLiteral("\" "), 1).split(QLatin1Char(' '));
        QCOMPARE(
            runTolvane(f, changeIt,
                       CliFolder::passwords(password.toUtf8(), password.toUtf8(), "nova-senha-1\n"))
                .code,
            0);
        QCOMPARE(runTolvane(f, words("entrar"), "nova-senha-1\n").code, 0);
        QCOMPARE(r.json().value(u"tipo").toString(), QStringLiteral("ADM"));
    }

    void usersAndLogin() {
        const QString f = folder(QStringLiteral("usuarios"));
        QCOMPARE(runTolvane(f, words("iniciar")).code, 0);
        // The first administrator needs no password; every other operator is the
        // administrator's act.
        QCOMPARE(runTolvane(f, words("usuario gravar --nome Chefe --tipo ADM"), "chefe-1\n").code,
                 0);
        const auto gravar = [&](const QStringList& args, const QByteArray& senha) {
            return runTolvane(f, words("usuario gravar") + args,
                              CliFolder::passwords("chefe-1", "chefe-1", senha + "\n"));
        };
        const auto login = [&](const char* args, const QByteArray& senha) {
            return runTolvane(f, words(args), senha + "\n");
        };
        // The login admits exactly one operator per password, so a second one is refused.
        struct Save {
            const char* args;
            QByteArray senha;
            int code;
            const char* err;
        };
        const Save saves[] = {
            {"--nome Ana --tipo USER", "ana123", 0, ""},
            {"--nome Bia --tipo USER", "mesma1", 0, ""},
            {"--nome Caio --tipo ADM", "MESMA1", 1, "Senha já usada por outro operador"},
            {"--nome Caio --tipo ADM", "caio5", 1, "A senha deve ter pelo menos 6 caracteres."},
            {"--nome Davi --tipo ADM --inativo", "davi12", 0, ""},
            {"--nome Edu --tipo adm", "edu123", 0, ""},
            {"--nome Fe --tipo USER", "", 1, nullptr},
            {"--nome Gil --tipo USER", "d'oeste1", 1, nullptr},
            {"--nome Hugo --tipo CHEFE", "h", 2, nullptr}};
        for (const Save& x : saves) {
            const CliRun r = gravar(words(x.args), x.senha);
            QVERIFY2(r.code == x.code, x.args);
            if (x.err)
                QCOMPARE(r.err.trimmed(), QString::fromUtf8(x.err));
        }

        const CliRun list = runTolvane(f, words("usuario listar --json"));
        const QJsonArray users = list.array();
        QCOMPARE(users.size(), 5);
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
            const CliRun r = login("entrar", c.senha);
            QVERIFY2(r.code == c.code, c.senha.constData());
            if (c.code == 0)
                QCOMPARE(r.out.trimmed(), QString::fromUtf8(c.out));
            else
                QVERIFY(r.err.contains(QStringLiteral("Senha Inválida!!")));
        }
        QCOMPARE(login("entrar --adm", "davi12").code, 0);
        QCOMPARE(login("entrar --adm", "edu123").code, 1);

        // Changing an operator without a password keeps the old one.
        const int anaId = users.at(0).toObject().value(u"id").toInt();
        QCOMPARE(gravar(words("--tipo USER --id")
                            << QString::number(anaId) << QStringLiteral("--nome")
                            << QStringLiteral("Ana Maria"),
                        "")
                     .code,
                 0);
        QCOMPARE(login("entrar", "ana123").out.trimmed(), QStringLiteral("Ana Maria\tUSER"));
    }

    void badFoldersAndDatabases() {
        // A file that is not a database.
        const QString junk = folder(QStringLiteral("lixo"));
        QDir().mkpath(junk);
        QFile db(junk + QStringLiteral("/caixa.db"));
        QVERIFY(db.open(QIODevice::WriteOnly));
        db.write(QByteArray(4096, 'x'));
        db.close();
        CliRun r = runTolvane(junk, words("iniciar"));
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("Erro ao conectar banco de dados!!!")));
        QCOMPARE(QFileInfo(junk + QStringLiteral("/caixa.db")).size(), qint64(4096));

        // A folder without a database is not silently given an empty one.
        const QString empty = folder(QStringLiteral("vazia"));
        QDir().mkpath(empty);
        r = runTolvane(empty, words("usuario listar"));
        QCOMPARE(r.code, 1);
        QVERIFY(!QFile::exists(empty + QStringLiteral("/caixa.db")));

        // A folder that cannot be created.
        QFile blocker(folder(QStringLiteral("arquivo")));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocker.close();
        r = runTolvane(folder(QStringLiteral("arquivo/sub")), words("iniciar"));
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("Não foi possível criar a pasta")));

        // A database newer than the program is refused and left as it is.
        const QString newer = folder(QStringLiteral("nova"));
        QCOMPARE(runTolvane(newer, words("iniciar")).code, 0);
        {
            QSqlDatabase c =
                QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("newer"));
            c.setDatabaseName(newer + QStringLiteral("/caixa.db"));
            QVERIFY(c.open());
            QSqlQuery(c).exec(QStringLiteral("UPDATE VersaoBanco SET VERSAO = 99"));
        }
        QSqlDatabase::removeDatabase(QStringLiteral("newer"));
        r = runTolvane(newer, words("iniciar"));
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("mais nova")));
    }

    void usage() {
        const QString f = folder(QStringLiteral("u"));
        QCOMPARE(runTolvane(f, words("voar")).code, 2);
        QCOMPARE(runTolvane(f, words("usuario gravar --nome")).code, 2);
        const CliRun help = runTolvane(f, words("--help"));
        QCOMPARE(help.code, 0);
        QVERIFY(help.out.contains(QStringLiteral("iniciar")));
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
        const QString f = folder(QStringLiteral("impressora"));
        QVERIFY(QFile::exists(f) || runTolvane(f, words("iniciar")).code == 0);
        const QString ini = f + QStringLiteral("/Config.ini");
        const QString p = QStringLiteral("Print");
        IniFile::write(p, QStringLiteral("impressora"), QStringLiteral("bematech"), ini);
        IniFile::write(p, QStringLiteral("modo"), QStringLiteral("1"), ini);
        IniFile::write(p, QStringLiteral("porta"),
                       QStringLiteral("file:") + f + QStringLiteral("/fita.bin"), ini);
        IniFile::write(p, key, value, ini);
        if (runTolvane(f, words("usuario listar --json")).array().isEmpty())
            QCOMPARE(
                runTolvane(f, words("usuario gravar --nome CHEFE --tipo ADM"), "chefe-1\n").code,
                0);
        for (const char* command : {"impressora status", "impressora fita TESTE"}) {
            const CliRun r = runTolvane(f, words(command), "chefe-1\n");
            QCOMPARE(r.code, 1);
            QVERIFY2(r.err.contains(QStringLiteral("[Print] ") + key + QLatin1Char('=')),
                     qPrintable(r.err));
        }
        QVERIFY(!QFile::exists(f + QStringLiteral("/fita.bin")));
    }
};

QTEST_GUILESS_MAIN(tst_cli)
#include "tst_cli.moc"
