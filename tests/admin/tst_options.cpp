// Saving the settings: each key's rule, one replacement of Config.ini keeping what others own,
// and the settings loaded again.
#include "IniFile.h"
#include "Options.h"
#include "TestApp.h"
#include "TextFile.h"

#include <QDir>
#include <QFile>

namespace {
using E = Options::Error;

QByteArray bytes(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}
} // namespace

class tst_options : public QObject {
    Q_OBJECT
private slots:
    void rules_data() {
        QTest::addColumn<QString>("section");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("error");
        auto row = [](const char* name, const char* section, const char* key, const QString& v,
                      E e) {
            QTest::newRow(name) << QString::fromLatin1(section) << QString::fromLatin1(key) << v
                                << int(e);
        };
        row("counter letter as it is", "Export", "guiche", QStringLiteral("b"), E::None);
        row("counter letter changed", "Export", "guiche", QStringLiteral("C"), E::GuicheFixo);
        row("counter of two", "Export", "guiche", QStringLiteral("AB"), E::Guiche);
        row("counter empty", "Export", "guiche", QString(), E::Guiche);
        row("header of three", "Mensagem", "cabecalho", QStringLiteral("PMX"), E::None);
        row("header of four", "Mensagem", "cabecalho", QStringLiteral("PMXY"), E::Cabecalho);
        row("header of two", "Mensagem", "cabecalho", QStringLiteral(" PM "), E::Cabecalho);
        row("folder missing", "Export", "Path1", QStringLiteral("/nao/existe"), E::FolderMissing);
        row("folder relative missing", "Export", "Path3", QStringLiteral("Falta/"),
            E::FolderMissing);
        row("folder not writable", "Export", "caminho_febraban", QStringLiteral("/proc"),
            E::FolderNotWritable);
        row("folder is a file", "Export", "Path2", QStringLiteral("Config.ini"), E::FolderMissing);
        row("folder empty", "Export", "Path1", QString(), E::None);
        row("folder inside", "Export", "Path1", QStringLiteral("Saida"), E::None);
        row("file in missing folder", "Export", "caminho_soma", QStringLiteral("/nao/soma.txt"),
            E::FileFolderMissing);
        row("file in the folder", "Export", "caminho_soma", QStringLiteral("soma.txt"), E::None);
        row("interest 1", "Opcoes", "juros", QStringLiteral("1"), E::None);
        row("interest 3", "Opcoes", "juros", QStringLiteral("3"), E::Juros);
        row("model any case", "Print", "impressora", QStringLiteral("Quattro"), E::None);
        row("unknown model", "Print", "impressora", QStringLiteral("epson"), E::Modelo);
        row("switch 2", "Export", "rede", QStringLiteral("2"), E::Flag);
        row("cnpj with dots", "Export", "cnpj", QStringLiteral("12.345"), E::Digits);
        row("wait not a number", "Print", "espera_documento", QStringLiteral("6s"), E::Number);
        row("skin not a style sheet", "Skin", "nome", QStringLiteral("Config.ini"), E::Skin);
        row("shipped skin", "Skin", "nome", QStringLiteral(":/skins/escuro.qss"), E::None);
        row("value of 255", "Mensagem", "mensagem", QString(255, QLatin1Char('A')), E::TooLong);
        row("line break", "Mensagem", "pref", QStringLiteral("A\nB"), E::LineBreak);
        row("outside latin-1", "Mensagem", "pref", QStringLiteral("R€"), E::NotLatin1);
        row("unknown key", "Export", "caminho", QStringLiteral("x"), E::UnknownKey);
        row("money kinds", "Reserva", "itens", QStringLiteral("100; 101,102"), E::None);
        row("money kinds empty", "Reserva", "itens", QString(), E::None);
        row("money kinds a folder", "Reserva", "itens", QStringLiteral("Export/"), E::MoneyKinds);
        row("safe balance", "Reserva", "cofre", QStringLiteral("10,00"), E::Fixed);
        row("database", "banco", "TIPO", QStringLiteral("postgres"), E::Fixed);
    }

    void rules() {
        QFETCH(QString, section);
        QFETCH(QString, key);
        QFETCH(QString, value);
        QFETCH(int, error);
        TestApp app;
        app.setOption(QStringLiteral("Export"), QStringLiteral("guiche"), QStringLiteral("B"));
        QDir(app.folder()).mkpath(QStringLiteral("Saida"));
        const QByteArray before = bytes(app.ctx().iniPath());
        const Options::Result r = Options::gravar(app.ctx(), {{section, key, value}});
        QCOMPARE(int(r.problem ? r.problem->error : E::None), error);
        if (error == int(E::None)) {
            QVERIFY(r.written);
        } else {
            QVERIFY(!Options::message(*r.problem).isEmpty());
            QCOMPARE(bytes(app.ctx().iniPath()), before); // nothing half-saved
        }
    }

    void savedKeysReadBackWithForeignKeysAndComments() {
        TestApp app;
        QDir(app.folder()).mkpath(QStringLiteral("Export"));
        const QString ini = app.ctx().iniPath();
        QStringList lines = TextFile::readLines(ini);
        lines << QStringLiteral("; Ajuste feito pela informática") << QStringLiteral("[Extra]")
              << QStringLiteral("chave=valor com = sinal") << QStringLiteral("[Export]")
              << QStringLiteral("; pasta do banco") << QStringLiteral("cnpj=1")
              << QStringLiteral("outra=manter");
        QVERIFY(TextFile::writeAll(ini, lines));

        const Options::Result r = Options::gravar(
            app.ctx(),
            {{QStringLiteral("export"), QStringLiteral("CNPJ"), QStringLiteral("123")},
             {QStringLiteral("Export"), QStringLiteral("Path3"), QStringLiteral("Export")},
             {QStringLiteral("Export"), QStringLiteral("rede"), QStringLiteral("1")},
             {QStringLiteral("Opcoes"), QStringLiteral("Atualiza"), QStringLiteral("/srv/versoes")},
             {QStringLiteral("Mensagem"), QStringLiteral("pref"),
              QStringLiteral("PREFEITURA DE SÃO JOSÉ")}});
        QVERIFY(r.ok());
        const QString text = QString::fromLatin1(bytes(ini));
        QVERIFY(text.contains(QStringLiteral("; Ajuste feito pela informática\r\n")));
        QVERIFY(text.contains(QStringLiteral("[Extra]\r\nchave=valor com = sinal\r\n")));
        QVERIFY(text.contains(QStringLiteral("; pasta do banco\r\ncnpj=123\r\noutra=manter\r\n")));
        QCOMPARE(IniFile::read(QStringLiteral("Export"), QStringLiteral("Path3"), ini),
                 QStringLiteral("Export/"));
        // The receipts' folder is not the cash count's list of kinds of money.
        QCOMPARE(IniFile::read(QStringLiteral("Reserva"), QStringLiteral("itens"), ini), QString());
        QCOMPARE(IniFile::read(QStringLiteral("Opcoes"), QStringLiteral("Atualiza"), ini),
                 QStringLiteral("/srv/versoes/"));
        QCOMPARE(
            Options::value(Options::load(ini), QStringLiteral("Mensagem"), QStringLiteral("pref")),
            QStringLiteral("PREFEITURA DE SÃO JOSÉ"));
        QVERIFY(!QDir(app.folder()).entryList({QStringLiteral("*.tmp*")}, QDir::Files).size());

        // Loaded again with the network switch's rule: the file's 1 after the setting's 1.
        QCOMPARE(app.ctx().settings.Path3, QStringLiteral("Export/"));
        QCOMPARE(int(app.ctx().settings.rede), 1);
        QVERIFY(Options::gravar(app.ctx(), {{QStringLiteral("Export"), QStringLiteral("rede"),
                                             QStringLiteral("1")}})
                    .ok());
        QCOMPARE(int(app.ctx().settings.rede), 11);
    }

    void aFileThatCannotBeReplacedIsReported() {
        TestApp app;
        const QString ini = app.ctx().iniPath();
        QFile::remove(ini);
        QVERIFY(QDir().mkpath(ini)); // a folder where the file should be
        const Options::Result r = Options::gravar(
            app.ctx(), {{QStringLiteral("Mensagem"), QStringLiteral("pref"), QStringLiteral("A")}});
        QVERIFY(!r.problem);
        QVERIFY(!r.written);
    }

    void theHeaderSwitchKeepsAHeaderText_data() {
        QTest::addColumn<bool>("on");
        QTest::addColumn<QString>("current");
        QTest::addColumn<QString>("stored");
        QTest::newRow("off") << false << "PMX"
                             << "0";
        QTest::newRow("on from 0") << true << "0"
                                   << "1";
        QTest::newRow("on from empty") << true << ""
                                       << "1";
        QTest::newRow("on keeps 1") << true << "1"
                                    << "1";
        QTest::newRow("on keeps a text") << true << " PREF "
                                         << "PREF";
    }

    void theHeaderSwitchKeepsAHeaderText() {
        QFETCH(bool, on);
        QFETCH(QString, current);
        QFETCH(QString, stored);
        QCOMPARE(Options::headerSwitch(on, current), stored);
        QCOMPARE(Options::headerSwitchOn(stored), on);
    }
};

QTEST_MAIN(tst_options)
#include "tst_options.moc"
