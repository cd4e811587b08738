// The first run on screen: a computer with no folder of the program gets one from the dialog,
// with the town hall, the counter and an administrator whose password was typed twice. Bad
// answers are said and change nothing.
#include "AppContext.h"
#include "FirstRunDialog.h"
#include "FolderSetup.h"
#include "IniFile.h"
#include "Login.h"
#include "SampleSheet.h"
#include "Startup.h"
#include "TestApp.h"
#include "clsCodBarra.h"

#include <QApplication>
#include <QCheckBox>
#include <QDirIterator>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

namespace {

struct Screen {
    FirstRunDialog form;
    explicit Screen(AppContext& ctx) : form(ctx) {}
    QLineEdit* edit(const char* name) { return form.findChild<QLineEdit*>(QLatin1String(name)); }
    void fill(const QString& pref, const QString& cab, const QString& guiche, const QString& senha,
              const QString& confirma) {
        edit("txtpref")->setText(pref);
        edit("txtcabecalho")->setText(cab);
        edit("txtguiche")->setText(guiche);
        edit("txtsenha")->setText(senha);
        edit("txtconfirma")->setText(confirma);
    }
    void criar() { form.findChild<QPushButton*>(QStringLiteral("cmdCriar"))->click(); }
};

// Whether any file under the folder holds the text as it was typed.
bool anyFileHolds(const QString& folder, const QByteArray& text) {
    QDirIterator it(folder, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QFile f(it.next());
        if (f.open(QIODevice::ReadOnly) && f.readAll().contains(text))
            return true;
    }
    return false;
}

} // namespace

class tst_first_run : public QObject {
    Q_OBJECT
private slots:
    void createsTheFolderAndTheAdministrator() {
        QTemporaryDir tmp;
        const QString folder = tmp.filePath(QStringLiteral("Tolvane"));
        FolderContext run(folder);
        QVERIFY(FolderSetup::isNew(folder));
        Screen s(run.ctx);
        QCOMPARE(s.edit("txtsenha")->echoMode(), QLineEdit::Password);
        QCOMPARE(s.edit("txtconfirma")->echoMode(), QLineEdit::Password);
        s.fill(QStringLiteral("PREFEITURA MUNICIPAL DE TOLVANE"), QStringLiteral("PMT"),
               QStringLiteral("b"), QStringLiteral("Guiche-B1"), QStringLiteral("Guiche-B1"));
        s.criar();
        QCOMPARE(s.form.result(), int(QDialog::Accepted));
        QVERIFY(run.dialogs.shown().isEmpty());
        QVERIFY(!FolderSetup::isNew(folder));

        const QString ini = run.ctx.iniPath();
        QCOMPARE(IniFile::read(QStringLiteral("Mensagem"), QStringLiteral("pref"), ini),
                 QStringLiteral("PREFEITURA MUNICIPAL DE TOLVANE"));
        QCOMPARE(IniFile::read(QStringLiteral("Mensagem"), QStringLiteral("cabecalho"), ini),
                 QStringLiteral("PMT"));
        QCOMPARE(IniFile::read(QStringLiteral("Export"), QStringLiteral("guiche"), ini),
                 QStringLiteral("B"));
        QVERIFY(!anyFileHolds(folder, "Guiche-B1")); // only its hash is kept

        // The program's own start-up takes the folder, and the administrator logs in.
        FolderContext next(folder);
        QVERIFY(Startup::Abre_conexao(next.ctx, false));
        QVERIFY(Login::Valida_senha(next.ctx, QStringLiteral("guiche-b1")));
        QCOMPARE(next.ctx.userName, QStringLiteral("ADMINISTRADOR"));
        QCOMPARE(next.ctx.userType, UserType::Admin);
        QVERIFY(!QFile::exists(QDir(folder).filePath(SampleSheet::kPdf)));
        QVERIFY(!s.form.resumo().contains(SampleSheet::kPdf));
    }

    void refusals_data() {
        QTest::addColumn<QString>("pref");
        QTest::addColumn<QString>("cabecalho");
        QTest::addColumn<QString>("senha");
        QTest::addColumn<QString>("confirma");
        QTest::addColumn<QString>("message");
        QTest::addColumn<bool>("passwordCleared");
        const QString ok = QStringLiteral("segredo1");
        QTest::newRow("typed twice differently") << "PREFEITURA"
                                                 << "PMT" << ok << "segredo2"
                                                 << "Senha não confere!!" << true;
        QTest::newRow("short") << "PREFEITURA"
                               << "PMT"
                               << "abc12"
                               << "abc12"
                               << "A senha deve ter pelo menos 6 caracteres!!" << true;
        QTest::newRow("no town hall")
            << "  "
            << "PMT" << ok << ok << "Todos os campos obrigatórios devem ser preenchidos!!" << false;
        QTest::newRow("no password")
            << "PREFEITURA"
            << "PMT"
            << ""
            << ""
            << "Todos os campos obrigatórios devem ser preenchidos!!" << true;
    }
    void refusals() {
        QFETCH(QString, pref);
        QFETCH(QString, cabecalho);
        QFETCH(QString, senha);
        QFETCH(QString, confirma);
        QFETCH(QString, message);
        QFETCH(bool, passwordCleared);
        QTemporaryDir tmp;
        const QString folder = tmp.filePath(QStringLiteral("Tolvane"));
        FolderContext run(folder);
        Screen s(run.ctx);
        s.fill(pref, cabecalho, QStringLiteral("A"), senha, confirma);
        s.criar();
        QCOMPARE(s.form.result(), int(QDialog::Rejected));
        QCOMPARE(run.dialogs.last().title, QStringLiteral("Aviso"));
        QCOMPARE(run.dialogs.last().text, message);
        QCOMPARE(run.dialogs.last().icon, DialogIcon::Exclamation);
        QVERIFY(!QFileInfo::exists(folder)); // nothing written
        QCOMPARE(s.edit("txtsenha")->text().isEmpty(), passwordCleared || senha.isEmpty());
        QCOMPARE(s.edit("txtpref")->text(), pref);
    }

    // A header that is not three characters breaks the options' own rule, with its message.
    void headerOfTwoCharacters() {
        QTemporaryDir tmp;
        FolderContext run(tmp.filePath(QStringLiteral("Tolvane")));
        Screen s(run.ctx);
        s.fill(QStringLiteral("PREFEITURA"), QStringLiteral("PM"), QStringLiteral("A"),
               QStringLiteral("segredo1"), QStringLiteral("segredo1"));
        s.criar();
        QCOMPARE(s.form.result(), int(QDialog::Rejected));
        QCOMPARE(run.dialogs.last().text,
                 QStringLiteral("O cabeçalho da autenticação deve ter 3 posições."));
        QVERIFY(!QFileInfo::exists(run.ctx.folder));
    }

    void sampleSheetOnRequest() {
        QTemporaryDir tmp;
        const QString folder = tmp.filePath(QStringLiteral("Tolvane"));
        FolderContext run(folder);
        Screen s(run.ctx);
        s.fill(QStringLiteral("PREFEITURA"), QStringLiteral("PMT"), QStringLiteral("C"),
               QStringLiteral("segredo1"), QStringLiteral("segredo1"));
        s.form.findChild<QCheckBox*>(QStringLiteral("chkExemplo"))->setChecked(true);
        s.criar();
        QCOMPARE(s.form.result(), int(QDialog::Accepted));
        const QString pdf = QDir(folder).filePath(SampleSheet::kPdf);
        QVERIFY(QFile::exists(pdf));
        QVERIFY(QFile::exists(QDir(folder).filePath(SampleSheet::kTxt)));
        QVERIFY(s.form.resumo().contains(QDir::toNativeSeparators(pdf)));
        clsCodBarra iptu(run.ctx.db);
        QVERIFY(iptu.SQLSelect(1)); // the demonstration's kinds of guide
        QCOMPARE(iptu.DESCRICAO, QStringLiteral("IPTU"));
    }

    // Declining the offer ends the program with nothing created.
    void offerDeclined() {
        QTemporaryDir tmp;
        FolderContext run(tmp.filePath(QStringLiteral("Tolvane")));
        run.dialogs.pushAnswer(DialogAnswer::No);
        QString resumo;
        QVERIFY(!FirstRunDialog::offer(run.ctx, &resumo));
        QCOMPARE(run.dialogs.last().icon, DialogIcon::Question);
        QVERIFY(run.dialogs.last().text.contains(QDir::toNativeSeparators(run.ctx.folder)));
        QVERIFY(!QFileInfo::exists(run.ctx.folder));
    }

    // Accepting shows the dialog; leaving it with Sair ends the program the same way.
    void dialogLeftWithSair() {
        QTemporaryDir tmp;
        FolderContext run(tmp.filePath(QStringLiteral("Tolvane")));
        QTimer::singleShot(0, [] {
            for (QWidget* w : QApplication::topLevelWidgets())
                if (auto* d = qobject_cast<FirstRunDialog*>(w))
                    d->findChild<QPushButton*>(QStringLiteral("cmdSair"))->click();
        });
        QString resumo;
        QVERIFY(!FirstRunDialog::offer(run.ctx, &resumo));
        QVERIFY(!QFileInfo::exists(run.ctx.folder));
    }
};

QTEST_MAIN(tst_first_run)
#include "tst_first_run.moc"
