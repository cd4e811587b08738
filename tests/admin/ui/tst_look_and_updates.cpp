// The skin and update screens, the update question of the start, and stamping a loose
// document on the authenticating printer.
#include "IniFile.h"
#include "PrinterEmulator.h"
#include "PrinterService.h"
#include "Skin.h"
#include "TestApp.h"
#include "UpdateCheck.h"
#include "UpdateOffer.h"
#include "clsAutenticacaoAvulsa.h"
#include "frmAtualiza.h"
#include "frmAutenticar.h"
#include "frmSkin.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {
void write(const QString& path, const QByteArray& data) {
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(data);
}

QString ini(TestApp& app, const char* section, const char* key) {
    return IniFile::read(QLatin1String(section), QLatin1String(key), app.ctx().iniPath());
}
} // namespace

class tst_look_and_updates : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { qApp->setStyleSheet(QString()); }

    void aChosenSkinIsSavedAndAppliedAtOnce() {
        TestApp app;
        frmSkin form(app.ctx());
        auto* path = form.findChild<QLineEdit*>(QStringLiteral("Text1"));
        auto* shipped = form.findChild<QComboBox*>(QStringLiteral("cmbSkins"));
        shipped->setCurrentIndex(2);
        emit shipped->activated(2);
        QCOMPARE(path->text(), QStringLiteral(":/skins/escuro.qss"));
        form.findChild<QPushButton*>(QStringLiteral("cmdGravar"))->click();
        QVERIFY(app.dialogs().shown().isEmpty());
        QCOMPARE(ini(app, "Skin", "nome"), QStringLiteral(":/skins/escuro.qss"));
        QCOMPARE(qApp->styleSheet(), *Skin::read(QStringLiteral(":/skins/escuro.qss")));
    }

    void aFileThatIsNotAStyleSheetIsRefused() {
        TestApp app;
        write(app.path(QStringLiteral("foto.skn")), QByteArray("\x89PNG\r\n\x1a\n\0\0", 10));
        frmSkin form(app.ctx());
        QString offered = app.path(QStringLiteral("foto.skn"));
        form.chooseFile = [&offered](QWidget*, const QString&) { return offered; };
        auto* path = form.findChild<QLineEdit*>(QStringLiteral("Text1"));
        form.findChild<QPushButton*>(QStringLiteral("cmdCaminho"))->click();
        QCOMPARE(path->text(), offered);
        offered.clear(); // cancelled: the box keeps its text
        form.findChild<QPushButton*>(QStringLiteral("cmdCaminho"))->click();
        QCOMPARE(path->text(), app.path(QStringLiteral("foto.skn")));
        form.findChild<QPushButton*>(QStringLiteral("cmdGravar"))->click();
        QCOMPARE(app.dialogs().last().title, QStringLiteral("Aviso"));
        QCOMPARE(app.dialogs().last().text,
                 QStringLiteral("O arquivo %1 não é uma aparência válida: não é um arquivo de "
                                "texto")
                     .arg(app.path(QStringLiteral("foto.skn"))));
        QCOMPARE(app.dialogs().last().icon, DialogIcon::Exclamation);
        QVERIFY(ini(app, "Skin", "nome").isEmpty());
        QVERIFY(qApp->styleSheet().isEmpty());
    }

    void theUpdateFolderKeepsATrailingSeparator() {
        TestApp app;
        frmAtualiza form(app.ctx());
        QString title;
        form.chooseFolder = [&](QWidget*, const QString& t, const QString&) {
            title = t;
            return app.path(QStringLiteral("versoes"));
        };
        form.findChild<QPushButton*>(QStringLiteral("cmdAbrir"))->click();
        QCOMPARE(title, QStringLiteral("Procura destino..."));
        QCOMPARE(form.findChild<QLineEdit*>(QStringLiteral("txtCaminho"))->text(),
                 app.path(QStringLiteral("versoes/")));
        form.findChild<QPushButton*>(QStringLiteral("cmdGravar"))->click();
        QCOMPARE(ini(app, "Opcoes", "Atualiza"), app.path(QStringLiteral("versoes/")));
        frmAtualiza again(app.ctx());
        QCOMPARE(again.findChild<QLineEdit*>(QStringLiteral("txtCaminho"))->text(),
                 app.path(QStringLiteral("versoes/")));
    }

    void theQuestionOfTheStart_data() {
        QTest::addColumn<QByteArray>("file"); // "-": no version file
        QTest::addColumn<bool>("asked");
        QTest::newRow("present and newer") << QByteArray("99.0.0\r\n") << true;
        QTest::newRow("absent") << QByteArray("-") << false;
        QTest::newRow("older") << QByteArray("0.0.1") << false;
    }

    void theQuestionOfTheStart() {
        QFETCH(QByteArray, file);
        QFETCH(bool, asked);
        TestApp app;
        QDir(app.folder()).mkpath(QStringLiteral("versoes"));
        if (file != "-")
            write(app.path(QStringLiteral("versoes/VersaoAtual.txt")), file);
        app.setOption(QStringLiteral("Opcoes"), QStringLiteral("Atualiza"),
                      QStringLiteral("versoes/"));
        app.dialogs().pushAnswer(DialogAnswer::No);
        QVERIFY(!UpdateOffer::run(app.ctx(), 5000));
        QCOMPARE(app.dialogs().shown().size(), asked ? 1 : 0);
        if (asked) {
            QCOMPARE(app.dialogs().last().title, QStringLiteral("Aviso"));
            QCOMPARE(app.dialogs().last().text,
                     QStringLiteral(
                         "Uma nova versão do sistema está disponível. Deseja instalar agora?"));
            QCOMPARE(app.dialogs().last().icon, DialogIcon::Question);
        }
    }

    void yesStartsTheUpdater() {
        TestApp app;
        QDir(app.folder()).mkpath(QStringLiteral("versoes"));
        write(app.path(QStringLiteral("versoes/VersaoAtual.txt")), "99.0.0\n");
        app.setOption(QStringLiteral("Opcoes"), QStringLiteral("Atualiza"),
                      QStringLiteral("versoes/"));
        app.dialogs().pushAnswer(DialogAnswer::Yes);
        QVERIFY(!UpdateOffer::run(app.ctx(), 5000)); // no updater in the folder
        QVERIFY(app.dialogs().last().text.startsWith(QStringLiteral("Atualizador não encontrado")));
        QCOMPARE(app.dialogs().last().icon, DialogIcon::Critical);
        QVERIFY(app.log().contains(QStringLiteral("Atualizador não encontrado")));

        // One that others may change is not run; why goes to Log.ini, and the program goes on.
        const QString updater = app.path(QStringLiteral("versoes/atualizador"));
        write(updater,
              "#!/bin/sh\ntouch \"" + app.path(QStringLiteral("grupo.txt")).toUtf8() + "\"\n");
        QFile::setPermissions(updater, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                           QFile::WriteGroup | QFile::ExeGroup);
        app.dialogs().pushAnswer(DialogAnswer::Yes);
        QVERIFY(!UpdateOffer::run(app.ctx(), 5000));
        QVERIFY(app.log().contains(QStringLiteral("pode ser alterado por outros usuários")));
        QVERIFY(!QFile::exists(app.path(QStringLiteral("grupo.txt"))));

        const QString marker = app.path(QStringLiteral("rodou.txt"));
        write(app.path(QStringLiteral("versoes/atualizador")),
              "#!/bin/sh\ntouch \"" + marker.toUtf8() + "\"\n");
        QFile::setPermissions(app.path(QStringLiteral("versoes/atualizador")),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        app.dialogs().pushAnswer(DialogAnswer::Yes);
        QVERIFY(UpdateOffer::run(app.ctx(), 5000));
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(marker), 10000);
    }

    void aLooseDocumentIsStamped() {
        TestApp app;
        app.setOption(QStringLiteral("Print"), QStringLiteral("impressora"),
                      QStringLiteral("bematech"));
        app.setOption(QStringLiteral("Print"), QStringLiteral("modo"), QStringLiteral("1"));
        app.setOption(QStringLiteral("Print"), QStringLiteral("cabecalho"), QStringLiteral("1"));
        app.setOption(QStringLiteral("Mensagem"), QStringLiteral("cabecalho"),
                      QStringLiteral("PMX"));
        app.setOption(QStringLiteral("Export"), QStringLiteral("guiche"), QStringLiteral("A"));
        app.ctx().workingDate = QDate(2026, 11, 23);
        PrinterEmulator emulator(PrinterEmulator::Model::Bematech);
        PrinterService service(app.ctx());
        service.makeTransport = [&emulator] { return std::make_unique<MemoryTransport>(emulator); };
        service.sleep = [](int) {};
        service.documentTimeoutMs = 50;
        // The counter's printer, here run at once instead of on its own thread.
        app.ctx().printerJobs = [&service](std::function<void(PrinterService&)> job) {
            job(service);
        };
        frmAutenticar form(app.ctx(), QStringLiteral("CHEFE"));
        app.ctx().userName = QStringLiteral("ANA");
        auto stamps = [&app] { return *clsAutenticacaoAvulsa::listar(app.db(), std::nullopt); };
        auto* ultima = form.findChild<QLabel*>(QStringLiteral("lblUltima"));
        QCOMPARE(form.findChild<QLabel*>(QStringLiteral("lblCabecalho"))->text(),
                 QStringLiteral("PMX"));
        auto* valor = form.findChild<QLineEdit*>(QStringLiteral("mskvalor"));
        auto* go = form.findChild<QPushButton*>(QStringLiteral("cmdAutenticar"));

        valor->setText(QStringLiteral("1,2,3"));
        go->click();
        QCOMPARE(app.dialogs().last().text, QStringLiteral("Informe o valor do documento!!"));
        QCOMPARE(app.dialogs().last().icon, DialogIcon::Exclamation);

        valor->setText(QStringLiteral("150,00"));
        go->click(); // no document in place: the printer's own message
        QCOMPARE(app.dialogs().last().title, QStringLiteral("Autenticação de Documentos"));
        QCOMPARE(app.dialogs().last().text, QStringLiteral("Tempo maior que o permitido."));
        QVERIFY(emulator.documents().isEmpty());
        // Recorded before printing, never confirmed, never shown as the last one.
        QCOMPARE(stamps().size(), 1);
        QVERIFY(!stamps().first().CONFIRMADA);
        QCOMPARE(stamps().first().OPERADOR, QStringLiteral("ANA"));
        QCOMPARE(stamps().first().ADMINISTRADOR, QStringLiteral("CHEFE"));
        QCOMPARE(stamps().first().VALOR, *Money::parse(QStringLiteral("150,00")));
        QVERIFY(ultima->text().isEmpty());

        emulator.setDocument(true);
        const int shown = app.dialogs().shown().size();
        valor->setText(QStringLiteral("150,00"));
        go->click();
        QCOMPARE(app.dialogs().shown().size(), shown);
        QCOMPARE(emulator.documents(),
                 QStringList{QStringLiteral("PMX A 23/11/2026        150,00R")});
        QCOMPARE(ultima->text(), QStringLiteral("PMX A 23/11/2026        150,00R"));
        QVERIFY(valor->text().isEmpty());
        QCOMPARE(stamps().size(), 2);
        QVERIFY(stamps().last().CONFIRMADA);
        QCOMPARE(stamps().last().TEXTO, QStringLiteral("PMX A 23/11/2026        150,00R"));

        // The printer switched off: the stamp is recorded as not confirmed and the last one
        // shown is still the one printed.
        emulator.setSilent(true);
        valor->setText(QStringLiteral("20,00"));
        go->click();
        QCOMPARE(emulator.documents().size(), 1);
        QCOMPARE(stamps().size(), 3);
        QVERIFY(!stamps().last().CONFIRMADA);
        QCOMPARE(ultima->text(), QStringLiteral("PMX A 23/11/2026        150,00R"));
        emulator.setSilent(false);

        app.setOption(QStringLiteral("Print"), QStringLiteral("modo"), QStringLiteral("0"));
        valor->setText(QStringLiteral("10,00"));
        go->click();
        QVERIFY(app.dialogs().last().text.startsWith(
            QStringLiteral("A autenticadora não está habilitada")));
        QCOMPARE(emulator.documents().size(), 1);
        QCOMPARE(stamps().size(), 3); // refused before anything was recorded
    }

    // With no counter up the screen has a printer thread of its own: the click returns while
    // the printer waits for the document, and the stamp comes when the document does.
    void aLooseDocumentNeverHoldsTheScreen() {
        TestApp app;
        PrinterEmulator emulator(PrinterEmulator::Model::Bematech);
        auto link = EmulatorLink::tcp(emulator);
        QVERIFY(link);
        for (const auto& [k, v] : QList<QPair<QString, QString>>{
                 {QStringLiteral("impressora"), QStringLiteral("bematech")},
                 {QStringLiteral("modo"), QStringLiteral("1")},
                 {QStringLiteral("porta"), link->porta()},
                 {QStringLiteral("espera_documento"), QStringLiteral("5000")}})
            app.setOption(QStringLiteral("Print"), k, v);
        app.setOption(QStringLiteral("Export"), QStringLiteral("guiche"), QStringLiteral("A"));
        app.ctx().workingDate = QDate(2026, 11, 23);
        frmAutenticar form(app.ctx(), QStringLiteral("CHEFE"));
        form.show();
        form.findChild<QLineEdit*>(QStringLiteral("mskvalor"))->setText(QStringLiteral("5,00"));
        form.findChild<QPushButton*>(QStringLiteral("cmdAutenticar"))->click();
        QVERIFY(emulator.documents().isEmpty());
        emulator.setDocument(true);
        QTRY_COMPARE_WITH_TIMEOUT(emulator.documents(),
                                  QStringList{QStringLiteral("A 23/11/2026          5,00R")},
                                  20000);
        // Confirmed on the screen's thread once the printer's thread stamped it.
        QTRY_VERIFY_WITH_TIMEOUT(clsAutenticacaoAvulsa::listar(app.db(), std::nullopt)
                                     ->value(0, clsAutenticacaoAvulsa(app.db()))
                                     .CONFIRMADA,
                                 20000);
        QCOMPARE(form.findChild<QLabel*>(QStringLiteral("lblUltima"))->text(),
                 QStringLiteral("A 23/11/2026          5,00R"));
        form.close();
        QVERIFY(app.dialogs().shown().isEmpty());
    }
};

QTEST_MAIN(tst_look_and_updates)
#include "tst_look_and_updates.moc"
