// The options screen: the choosers, the key filters, saving to Config.ini (what it does not own
// kept) and the refusals with the tab at fault shown.
#include "IniFile.h"
#include "TestApp.h"
#include "TextFile.h"
#include "frmOpcoes.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

namespace {
struct Screen {
    frmOpcoes form;
    QStringList titles; // of the choosers, as asked
    QString answer;     // what the chooser gives back
    explicit Screen(AppContext& ctx) : form(ctx) {
        auto chooser = [this](QWidget*, const QString& title, const QString&) {
            titles << title;
            return answer;
        };
        form.chooseFolder = chooser;
        form.chooseFile = chooser;
    }
    template <class W> W* get(const char* name) { return form.findChild<W*>(QLatin1String(name)); }
    QLineEdit* edit(const char* name) { return get<QLineEdit>(name); }
    void click(const char* name) { get<QPushButton>(name)->click(); }
};

QString ini(TestApp& app, const char* section, const char* key) {
    return IniFile::read(QLatin1String(section), QLatin1String(key), app.ctx().iniPath());
}

QByteArray bytes(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}
} // namespace

class tst_opcoes_screen : public QObject {
    Q_OBJECT
private slots:
    void keyFilters() {
        TestApp app;
        Screen s(app.ctx());
        QVERIFY(s.edit("txtguiche")->isReadOnly()); // changed by guiche assumir only
        QTest::keyClicks(s.edit("txtcabecalho"), QStringLiteral("PMXY"));
        QCOMPARE(s.edit("txtcabecalho")->text(), QStringLiteral("PMX"));
        QTest::keyClicks(s.edit("txtcnpj"), QStringLiteral("12.a34"));
        QCOMPARE(s.edit("txtcnpj")->text(), QStringLiteral("1234"));
        QTest::keyClicks(s.edit("txtpref"), QStringLiteral("D'OESTE \"X\""));
        QCOMPARE(s.edit("txtpref")->text(), QStringLiteral("DOESTE X"));
    }

    void savedAndReadBack() {
        TestApp app;
        app.setOption(QStringLiteral("Export"), QStringLiteral("guiche"), QStringLiteral("C"));
        QDir(app.folder()).mkpath(QStringLiteral("saida/febraban"));
        const QString dir = app.path(QStringLiteral("saida"));
        QStringList lines = TextFile::readLines(app.ctx().iniPath());
        lines << QStringLiteral("; feito à mão") << QStringLiteral("[Print]")
              << QStringLiteral("serial=19200,8,N,1") << QStringLiteral("cabecalho=PREF");
        QVERIFY(TextFile::writeAll(app.ctx().iniPath(), lines));
        Screen s(app.ctx());
        s.form.setInstalledPrinters({QStringLiteral("Termica"), QStringLiteral("Laser")});
        QVERIFY(s.get<QCheckBox>("chkCabecalho")->isChecked()); // a header text is "on"

        s.answer = dir;
        s.click("cmdCaminho1");
        s.click("Command4");
        s.answer = dir + QStringLiteral("/febraban");
        s.click("cmdCaminhoFebraban");
        s.answer = dir + QStringLiteral("/Soma.txt");
        s.click("Command3");
        QCOMPARE(s.titles, QStringList(4, QStringLiteral("Procura destino...")));
        QCOMPARE(s.edit("txtcaminho1")->text(), dir + QLatin1Char('/'));
        s.answer.clear(); // a cancelled chooser leaves the box as it was
        s.click("cmdCaminho2");
        QVERIFY(s.edit("txtcaminho_estorno")->text().isEmpty());

        s.edit("txtcabecalho")->setText(QStringLiteral("PMS"));
        s.edit("txtpref")->setText(QStringLiteral("PREFEITURA DE SÃO JOSÉ"));
        s.get<QCheckBox>("chkRede")->setChecked(true);
        s.get<QRadioButton>("optMulta")->setChecked(true);
        s.get<QRadioButton>("optQuatro")->setChecked(true);
        s.get<QComboBox>("cmbPorta")->setCurrentText(QStringLiteral("COM2"));
        s.get<QComboBox>("cmbImpressoras")->setCurrentIndex(2);
        s.click("cmdEscolhe");
        s.get<QComboBox>("cmbImpressoras")->setCurrentIndex(1);
        s.click("Command5");
        s.get<QCheckBox>("chkPrintCupom")->setChecked(true);
        s.get<QCheckBox>("chkCnab")->setChecked(true); // the export screen may write CNAB files
        s.click("Command1");
        QVERIFY(app.dialogs().shown().isEmpty());
        QCOMPARE(s.form.result(), int(QDialog::Accepted));

        QCOMPARE(ini(app, "Export", "Path1"), dir + QLatin1Char('/'));
        QCOMPARE(ini(app, "Export", "Path3"), dir + QLatin1Char('/'));
        QCOMPARE(ini(app, "Reserva", "itens"), QString()); // a setting of its own
        QCOMPARE(ini(app, "Export", "caminho_febraban"), dir + QStringLiteral("/febraban/"));
        QCOMPARE(ini(app, "Export", "caminho_soma"), dir + QStringLiteral("/Soma.txt"));
        QCOMPARE(ini(app, "Export", "guiche"), QStringLiteral("C"));
        QCOMPARE(ini(app, "Export", "rede"), QStringLiteral("1"));
        QCOMPARE(ini(app, "Mensagem", "cabecalho"), QStringLiteral("PMS"));
        QCOMPARE(ini(app, "Mensagem", "pref"), QStringLiteral("PREFEITURA DE SÃO JOSÉ"));
        QCOMPARE(ini(app, "Opcoes", "juros"), QStringLiteral("2"));
        QCOMPARE(ini(app, "Print", "impressora"), QStringLiteral("quattro"));
        QCOMPARE(ini(app, "Print", "porta"), QStringLiteral("COM2"));
        QCOMPARE(ini(app, "Print", "impressora_padrao"), QStringLiteral("Laser"));
        QCOMPARE(ini(app, "Print", "impressora_autenticadora"), QStringLiteral("Termica"));
        QCOMPARE(ini(app, "Print", "print_cupom"), QStringLiteral("1"));
        QCOMPARE(ini(app, "Export", "cnab"), QStringLiteral("1"));
        QCOMPARE(ini(app, "Print", "cabecalho"), QStringLiteral("PREF"));
        QCOMPARE(ini(app, "Print", "serial"), QStringLiteral("19200,8,N,1"));
        QVERIFY(bytes(app.ctx().iniPath()).contains("; feito \xe0 m\xe3o\r\n"));
        // The settings in use were loaded again.
        QCOMPARE(app.ctx().settings.guiche, QStringLiteral("C"));
        QCOMPARE(app.ctx().settings.juros, qint16(2));
        QCOMPARE(app.ctx().settings.impressora_padrao, QStringLiteral("Laser"));

        Screen again(app.ctx()); // opens with what was saved
        QCOMPARE(again.edit("txtguiche")->text(), QStringLiteral("C"));
        QVERIFY(again.get<QRadioButton>("optMulta")->isChecked());
        QVERIFY(again.get<QRadioButton>("optQuatro")->isChecked());
        QVERIFY(again.get<QCheckBox>("chkCnab")->isChecked());
        QCOMPARE(again.get<QLabel>("lblImpressoraNome")->text(), QStringLiteral("Laser"));
        again.get<QRadioButton>("optDesc")->setChecked(true);
        again.get<QCheckBox>("chkCabecalho")->setChecked(false);
        again.click("Command1");
        QCOMPARE(ini(app, "Opcoes", "juros"), QStringLiteral("1"));
        QCOMPARE(ini(app, "Print", "cabecalho"), QStringLiteral("0"));
    }

    void refusals_data() {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("tab");
        auto row = [](const char* tag, const char* box, const char* value, const char* message,
                      const char* tab) {
            QTest::newRow(tag) << box << value << QString::fromUtf8(message) << tab;
        };
        row("counter empty", "txtguiche", "",
            "O guichê de trabalho deve ter uma letra (ou um algarismo).", "Mensagem");
        row("counter changed", "txtguiche", "Z",
            "O guichê de trabalho não muda pelas opções: com o movimento fechado, o "
            "administrador usa tolvane guiche assumir LETRA.",
            "Mensagem");
        row("header of two", "txtcabecalho", "PM",
            "O cabeçalho da autenticação deve ter 3 posições.", "Mensagem");
        row("folder missing", "txtcaminho_febraban", "/nao/existe",
            "A pasta /nao/existe não existe.", "Exportação");
        row("folder not writable", "txtcaminho1", "/proc", "A pasta /proc não permite gravação.",
            "Exportação");
    }

    void refusals() {
        QFETCH(QString, box);
        QFETCH(QString, value);
        QFETCH(QString, message);
        QFETCH(QString, tab);
        TestApp app;
        app.setOption(QStringLiteral("Export"), QStringLiteral("guiche"), QStringLiteral("A"));
        app.setOption(QStringLiteral("Mensagem"), QStringLiteral("cabecalho"),
                      QStringLiteral("PMX"));
        const QByteArray before = bytes(app.ctx().iniPath());
        Screen s(app.ctx());
        s.form.show();
        s.get<QTabWidget>("SSTab1")->setCurrentIndex(3);
        s.edit(box.toLatin1().constData())->setText(value);
        s.click("Command1");
        QCOMPARE(app.dialogs().last().title, QStringLiteral("Aviso"));
        QCOMPARE(app.dialogs().last().text, message);
        QCOMPARE(app.dialogs().last().icon, DialogIcon::Exclamation);
        auto* tabs = s.get<QTabWidget>("SSTab1");
        QCOMPARE(tabs->tabText(tabs->currentIndex()), tab);
        QVERIFY(s.form.focusWidget());
        QCOMPARE(s.form.focusWidget()->objectName(), box);
        QCOMPARE(bytes(app.ctx().iniPath()), before);
        QVERIFY(s.form.isVisible());
    }

    void cancelWritesNothing() {
        TestApp app;
        const QByteArray before = bytes(app.ctx().iniPath());
        Screen s(app.ctx());
        s.edit("txtguiche")->setText(QStringLiteral("Z"));
        s.click("Command2");
        QCOMPARE(s.form.result(), int(QDialog::Rejected));
        QCOMPARE(bytes(app.ctx().iniPath()), before);
    }
};

QTEST_MAIN(tst_opcoes_screen)
#include "tst_opcoes_screen.moc"
