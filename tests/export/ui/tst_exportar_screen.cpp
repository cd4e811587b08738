// The export screen driven through its controls and the scripted dialogs: the two
// lists and their check marks, the bank code, the CNAB switch and the files it writes.
#include "AppShell.h"
#include "BankFileReader.h"
#include "CounterSession.h"
#include "DemoData.h"
#include "TestApp.h"
#include "TestCodes.h"
#include "clsRecebimentos.h"
#include "frmExportar.h"
#include "frmFrente.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>

namespace {

const QDate kDia(2026, 11, 23);

struct Screen {
    TestApp app;
    qint32 mov = 0;
    std::unique_ptr<frmExportar> form;

    Screen() {
        QVERIFY(DemoData::seed(app.ctx(), nullptr, nullptr));
        QVERIFY(QDir(app.folder()).mkpath(QStringLiteral("Febraban")));
        QVERIFY(QDir(app.folder()).mkpath(QStringLiteral("Export")));
        for (const auto& [k, v] :
             QList<QPair<const char*, const char*>>{{"Path3", "Export"},
                                                    {"caminho_febraban", "Febraban"},
                                                    {"cod_banco_cnab", "104"},
                                                    {"nome_banco", "BANCO"},
                                                    {"cedente_agua", "123456"},
                                                    {"cedente_iptu", "654321"},
                                                    {"agencia", "1234"},
                                                    {"dv", "7"},
                                                    {"cnpj", "12345678000199"},
                                                    {"guiche", "1"},
                                                    {"pausa_registro", "0"}})
            app.setOption(QStringLiteral("Export"), QLatin1String(k), QLatin1String(v));
        app.ctx().workingDate = kDia;
        CounterSession s(app.ctx(), nullptr);
        QVERIFY(s.day().abrir());
        mov = s.day().movimento().ID;
        for (int i = 0; i < 3; ++i)
            QVERIFY(
                s.ler(TestCodes::guide(QStringLiteral("0426"), 1000 + i, QStringLiteral("20261130"),
                                       QString(17, QLatin1Char('1' + i))))
                    .accepted);
        QVERIFY(s.ler(TestCodes::slip(1651, 8915, QStringLiteral("12345"),
                                      QStringLiteral("111333555555555"), QStringLiteral("24")))
                    .accepted);
        QVERIFY(s.gravar());
        form = std::make_unique<frmExportar>(app.ctx(), mov, kDia);
        app.dialogs().clear();
    }
    template <class T> T* get(const char* name) { return form->findChild<T*>(QLatin1String(name)); }
    void click(const char* name) { get<QPushButton>(name)->click(); }
    void choose(int sel, const QString& tipo) {
        get<QComboBox>("cmbSel")->setCurrentIndex(sel);
        auto* t = get<QComboBox>("cmbTipo");
        t->setCurrentIndex(t->findText(tipo));
    }
    QStringList rows(const char* list) {
        QStringList out;
        auto* l = get<QTreeWidget>(list);
        for (int i = 0; i < l->topLevelItemCount(); ++i) {
            const QTreeWidgetItem* it = l->topLevelItem(i);
            out << QStringLiteral("%1 %2 %3 %4")
                       .arg(it->text(1), it->text(2))
                       .arg(it->checkState(0) == Qt::Checked ? QStringLiteral("x")
                                                             : QStringLiteral("-"))
                       .arg(it->text(3).size());
        }
        return out;
    }
    void check(const char* list, int row, bool on) {
        get<QTreeWidget>(list)->topLevelItem(row)->setCheckState(0,
                                                                 on ? Qt::Checked : Qt::Unchecked);
    }
    QStringList files(const QString& sub) { return QDir(app.path(sub)).entryList(QDir::Files); }
};

} // namespace

class tst_exportar_screen : public QObject {
    Q_OBJECT
private slots:
    void marksOfBothLists() {
        Screen s;
        s.choose(1, QStringLiteral("TAXAS DIVERSAS"));
        s.click("cmdPesquisar");
        QCOMPARE(s.rows("lstRecebimentos"),
                 (QStringList{QStringLiteral("1 10,00 - 44"), QStringLiteral("2 10,01 - 44"),
                              QStringLiteral("3 10,02 - 44")}));
        QCOMPARE(s.get<QLabel>("lblTotal")->text(), QStringLiteral("3 confirmados: R$ 30,03"));
        s.check("lstRecebimentos", 0, true);
        s.check("lstRecebimentos", 2, true);
        s.app.dialogs().pushAnswer(DialogAnswer::No);
        s.click("cmdRejeita");
        QCOMPARE(
            s.app.dialogs().texts(),
            QStringList{QStringLiteral("Confirma a exportação dos itens relacionados na lista?")});
        QCOMPARE(s.app.count(QStringLiteral("Recebimentos"), QStringLiteral("EXPORT = 1")), 0);
        s.app.dialogs().clear();
        s.app.dialogs().pushAnswer(DialogAnswer::Yes);
        s.click("cmdRejeita");
        QCOMPARE(
            s.app.dialogs().texts(),
            (QStringList{QStringLiteral("Confirma a exportação dos itens relacionados na lista?"),
                         QStringLiteral("Processo demorado dependendo da quantidade de itens "
                                        "cadastrados. Aguarde!!"),
                         QStringLiteral("Gravação Concluida!!")}));
        QCOMPARE(s.app.dialogs().shown().at(0).title, QStringLiteral("Aviso"));
        QCOMPARE(s.rows("lstRecebimentos"), QStringList{QStringLiteral("2 10,01 - 44")});
        s.click("cmdRejeitados");
        QCOMPARE(s.rows("lstRejeitado"),
                 (QStringList{QStringLiteral("1 10,00 x 44"), QStringLiteral("3 10,02 x 44")}));

        // On the rejected list a checked row goes back to the export; an unchecked one stays out.
        s.check("lstRejeitado", 1, false);
        s.app.dialogs().clear();
        s.app.dialogs().pushAnswer(DialogAnswer::Yes);
        s.click("cmdDesfazRejeicao");
        QCOMPARE(
            s.app.dialogs().texts().first(),
            QStringLiteral("Confirma a reversão da rejeição dos itens desabilitados da lista?"));
        QCOMPARE(s.rows("lstRejeitado"), QStringList{QStringLiteral("3 10,02 x 44")});
        s.click("cmdPesquisar");
        QCOMPARE(s.rows("lstRecebimentos").size(), 2);

        // Every row of the rejected list checked returns them all.
        s.app.dialogs().pushAnswer(DialogAnswer::Yes);
        s.click("cmdDesfazRejeicao");
        QCOMPARE(s.rows("lstRejeitado"), QStringList());
        // Nothing checked on the confirmed list confirms every listed receipt.
        s.click("cmdPesquisar");
        s.app.dialogs().pushAnswer(DialogAnswer::Yes);
        s.click("cmdRejeita");
        QCOMPARE(s.rows("lstRecebimentos").size(), 3);
        QCOMPARE(s.app.count(QStringLiteral("Recebimentos"), QStringLiteral("EXPORT = 1")), 0);
    }

    void bankCodeAndCnabSwitch() {
        Screen s;
        s.choose(1, QStringLiteral("TAXAS DIVERSAS"));
        s.click("cmdPesquisar");
        auto* code = s.get<QLineEdit>("txtcodbanco");
        for (const QString& bad :
             {QStringLiteral("12"), QStringLiteral("1234"), QStringLiteral("1a2"), QString()}) {
            code->setText(bad);
            s.app.dialogs().clear();
            s.click("cmdExportar");
            QCOMPARE(s.app.dialogs().texts(),
                     QStringList{QStringLiteral("Código do banco não informado!!")});
            QCOMPARE(s.app.dialogs().last().title, QStringLiteral("Aviso"));
        }
        QCOMPARE(s.files(QStringLiteral("Febraban")), QStringList());

        code->setText(QStringLiteral("001"));
        s.choose(0, QStringLiteral("AGUA E ESGOTO"));
        QCOMPARE(s.rows("lstRecebimentos"), QStringList()); // a new kind empties the lists
        s.app.dialogs().clear();
        s.click("cmdExportar");
        QCOMPARE(s.app.dialogs().texts(), QStringList()); // empty list: nothing happens
        s.click("cmdPesquisar");
        s.click("cmdExportar");
        QCOMPARE(s.app.dialogs().texts(),
                 QStringList{QStringLiteral("Este sistema ainda não executa esta função!!")});
        QCOMPARE(s.files(QStringLiteral("Export")).filter(QStringLiteral("Cnab")), QStringList());

        s.app.setOption(QStringLiteral("Export"), QStringLiteral("cnab"), QStringLiteral("1"));
        s.app.dialogs().clear();
        s.click("cmdExportar");
        QCOMPARE(s.app.dialogs().texts(),
                 QStringList{QStringLiteral("Geração de arquivo efetuada com sucesso!!")});
        const QStringList cnab = s.files(QStringLiteral("Export")).filter(QStringLiteral("Cnab"));
        QCOMPARE(cnab, QStringList{QStringLiteral("CnabAGUA202611231000.RET")});
        QCOMPARE(BankFileReader::records(s.app.path(QStringLiteral("Export/")) + cnab[0]).size(),
                 6);
        QCOMPARE(s.get<QProgressBar>("pbr")->maximum(), 1);
    }

    void febrabanExportAndFailure() {
        Screen s;
        s.choose(1, QStringLiteral("TAXAS DIVERSAS"));
        s.get<QLineEdit>("txtcodbanco")->setText(QStringLiteral("237"));
        s.click("cmdPesquisar");
        s.click("cmdExportar");
        QCOMPARE(s.app.dialogs().last().text,
                 QStringLiteral("Geração de arquivo efetuada com sucesso!!"));
        const QString name = QStringLiteral("FebCX1TAXA_237_202611231000.RET");
        QCOMPARE(s.files(QStringLiteral("Febraban")), QStringList{name});
        const QStringList rec =
            BankFileReader::records(s.app.path(QStringLiteral("Febraban/")) + name);
        QCOMPARE(rec.size(), 5);
        QCOMPARE(
            BankFileReader::differences(
                rec[4], BankFileReader::febTrailer(5, QStringLiteral("00000000000003003")), 150),
            QString());
        QCOMPARE(s.get<QProgressBar>("pbr")->maximum(), 3);

        s.app.setOption(QStringLiteral("Export"), QStringLiteral("caminho_febraban"),
                        QStringLiteral("sumiu"));
        s.app.dialogs().clear();
        s.click("cmdExportar");
        QCOMPARE(s.app.dialogs().texts().size(), 2);
        QVERIFY(s.app.dialogs().texts().first().startsWith(QStringLiteral("A pasta do arquivo")));
        QCOMPARE(s.app.dialogs().last().text, QStringLiteral("Erro ao gravar arquivo!!"));
        QCOMPARE(s.app.dialogs().last().icon, DialogIcon::Critical);
    }

    // The counter's menu opens the screen on the counter's own movement.
    void openedFromTheCounter() {
        Screen s;
        CounterSession session(s.app.ctx(), nullptr);
        QVERIFY(session.day().consultar());
        const auto counterWindow = AppShell::counter(session, false);
        frmFrente& counter = *counterWindow;
        // Bank files are an administrator's act: the screen opens after the password.
        s.app.addUser(QStringLiteral("CHEFE"), QStringLiteral("chefe1"), QStringLiteral("ADM"));
        s.app.dialogs().pushInput(QStringLiteral("chefe1"));
        QAction* entry = counter.findChild<QAction*>(QStringLiteral("mnuExpCebi"));
        QVERIFY(entry);
        int listed = -1;
        QTimer::singleShot(0, [&] {
            auto* form = qobject_cast<frmExportar*>(QApplication::activeModalWidget());
            if (!form)
                return;
            form->findChild<QComboBox*>(QStringLiteral("cmbSel"))->setCurrentIndex(1);
            auto* tipo = form->findChild<QComboBox*>(QStringLiteral("cmbTipo"));
            tipo->setCurrentIndex(tipo->findText(QStringLiteral("TAXAS DIVERSAS")));
            form->findChild<QPushButton*>(QStringLiteral("cmdPesquisar"))->click();
            listed = form->findChild<QTreeWidget*>(QStringLiteral("lstRecebimentos"))
                         ->topLevelItemCount();
            form->findChild<QPushButton*>(QStringLiteral("cmdSair"))->click();
        });
        entry->trigger();
        QCOMPARE(listed, 3);
    }
};

QTEST_MAIN(tst_exportar_screen)
#include "tst_exportar_screen.moc"
