// The correction screen, the log viewer, the undo list and the counter screen's entries that
// reach them, driven through their widgets and the scripted dialog port.
#include "AppShell.h"
#include "CashEntry.h"
#include "CounterSession.h"
#include "DemoData.h"
#include "DescriptionTexts.h"
#include "ReceiptCorrections.h"
#include "ReversalUndoDialog.h"
#include "TestApp.h"
#include "frmCorrigeGuia.h"
#include "frmExbi.h"
#include "frmFrente.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QTreeView>
#include <QTreeWidget>

using RC = ReceiptCorrections;

namespace {
const QString kTaxas = QStringLiteral("81660000003124004262026113058888888888888888");
const QString kAgua = QStringLiteral("00193165100000089151234500000000000000000000");
const QString kSenhaAdm = QStringLiteral("chefe-123");

// One customer recorded on 23/11/2026: 001 TAXAS DIVERSAS 312,40, 002 AGUA E ESGOTO 89,15,
// 003 CERTIDAO NEGATIVA 5,00.
struct Day {
    TestApp app;
    CounterSession session{app.ctx(), nullptr};
    Day() {
        DemoData::seed(app.ctx(), nullptr, nullptr);
        app.addUser(QStringLiteral("CHEFE"), kSenhaAdm, QStringLiteral("ADM"));
        app.setOption(QStringLiteral("Export"), QStringLiteral("guiche"), QStringLiteral("2"));
        app.ctx().workingDate = QDate(2026, 11, 23);
        app.ctx().userName = QStringLiteral("ANA");
        session.day().abrir();
        session.ler(kTaxas);
        session.ler(kAgua);
        session.somaAvulso({8, Money::fromReais(5), QDate(), QString(), QString()});
        session.gravar();
        app.dialogs().clear();
    }
};

template <class T> T* child(QWidget& w, const char* name) {
    T* c = w.findChild<T*>(QLatin1String(name));
    if (!c)
        qFatal("no widget %s", name);
    return c;
}

void click(QWidget& w, const char* name) {
    child<QPushButton>(w, name)->click();
}

void select(QWidget& w, int row) {
    auto* list = child<QTreeWidget>(w, "ListView1");
    list->setCurrentItem(list->topLevelItem(row));
    click(w, "cmdSelecionar");
}

QStringList rowTexts(QTreeWidgetItem* item) {
    QStringList out;
    for (int c = 0; c < item->columnCount(); ++c)
        out << item->text(c);
    return out;
}

bool askedAnything(const ScriptedDialogPort& d) {
    for (const auto& s : d.shown())
        if (s.icon == DialogIcon::Question)
            return true;
    return false;
}
} // namespace

class tst_correction_screens : public QObject {
    Q_OBJECT
private slots:
    void listAndSearch() {
        Day d;
        frmCorrigeGuia form(d.app.ctx(), nullptr);
        auto* list = child<QTreeWidget>(form, "ListView1");
        QCOMPARE(list->topLevelItemCount(), 3);
        QCOMPARE(rowTexts(list->topLevelItem(0)),
                 (QStringList{QStringLiteral("0003"), QStringLiteral("003"), QStringLiteral("08"),
                              QStringLiteral("CERTIDAO NEGATIVA"), QStringLiteral("5,00"),
                              QString(44, QLatin1Char('0'))}));
        QCOMPARE(rowTexts(list->topLevelItem(2)),
                 (QStringList{QStringLiteral("0001"), QStringLiteral("001"), QStringLiteral("02"),
                              QStringLiteral("TAXAS DIVERSAS"), QStringLiteral("312,40"), kTaxas}));

        child<QLineEdit>(form, "txtpesquisa")->setText(QStringLiteral("2"));
        click(form, "cmdProcura");
        QCOMPARE(list->topLevelItemCount(), 1);
        QCOMPARE(list->topLevelItem(0)->text(3), QStringLiteral("AGUA E ESGOTO"));
        child<QLineEdit>(form, "txtpesquisa")->setText(QStringLiteral("dois"));
        click(form, "cmdProcura");
        QCOMPARE(d.app.dialogs().last().text,
                 QStringLiteral("O número de autenticação deve ser um número maior que zero!!"));
        QCOMPARE(d.app.dialogs().last().icon, DialogIcon::Critical);
        child<QLineEdit>(form, "txtpesquisa")->clear();
        click(form, "cmdProcura");
        QCOMPARE(list->topLevelItemCount(), 3);
    }

    void reversal() {
        Day d;
        frmCorrigeGuia form(d.app.ctx(), nullptr);
        for (const char* button : {"cmdSelecionar", "cmdEstornar"}) {
            d.app.dialogs().clear();
            click(form, button); // nothing selected
            QCOMPARE(d.app.dialogs().texts(), QStringList{Desc::kInformeItem});
            QCOMPARE(d.app.dialogs().last().icon, DialogIcon::Critical);
            QCOMPARE(d.app.dialogs().last().title, QStringLiteral("Aviso"));
        }
        select(form, 1);
        QCOMPARE(child<QLineEdit>(form, "txtordem")->text(), QStringLiteral("0002"));
        QCOMPARE(child<QComboBox>(form, "cmbOrgao")->currentData().toInt(), 4);
        QCOMPARE(child<QLineEdit>(form, "txtbarra")->text(), kAgua);
        QCOMPARE(child<QLineEdit>(form, "mskvalor")->text(), QStringLiteral("89,15"));
        QCOMPARE(child<QLineEdit>(form, "txttipoantigo")->text(), QStringLiteral("AGUA E ESGOTO"));

        // No reason: refused before the question.
        d.app.dialogs().clear();
        click(form, "cmdEstornar");
        QCOMPARE(d.app.dialogs().texts(),
                 QStringList{QStringLiteral("Um motivo deve ser especificado!!")});
        QCOMPARE(d.app.dialogs().last().icon, DialogIcon::Exclamation);
        QVERIFY(!askedAnything(d.app.dialogs()));

        child<QLineEdit>(form, "txtmotivo")->setText(QStringLiteral("engano"));
        d.app.dialogs().clear();
        d.app.dialogs().pushAnswer(DialogAnswer::No);
        click(form, "cmdEstornar");
        QCOMPARE(d.app.dialogs().texts(),
                 QStringList{QStringLiteral("Confirma exclusão deste item? - 002")});
        QCOMPARE(d.app.dialogs().last().icon, DialogIcon::Question);
        QCOMPARE(d.app.count(QStringLiteral("Recebimentos")), 3);
        QVERIFY(!form.corrigiu());

        d.app.dialogs().pushAnswer(DialogAnswer::Yes);
        click(form, "cmdEstornar");
        QCOMPARE(d.app.dialogs().last().text, QStringLiteral("Exclusão efetuada com sucesso!!"));
        QCOMPARE(d.app.count(QStringLiteral("Recebimentos")), 2);
        QCOMPARE(child<QTreeWidget>(form, "ListView1")->topLevelItemCount(), 2);
        QVERIFY(child<QLineEdit>(form, "txtordem")->text().isEmpty());
        QVERIFY(child<QLineEdit>(form, "txtmotivo")->text().isEmpty());
        QVERIFY(form.corrigiu());
        QVERIFY(QFile::exists(d.app.path(QStringLiteral("Estorno_2_2026.txt"))));
    }

    void change() {
        Day d;
        frmCorrigeGuia form(d.app.ctx(), nullptr);
        select(form, 0);
        child<QLineEdit>(form, "txtbarra")->clear();
        child<QLineEdit>(form, "txtmotivo")->setText(QStringLiteral("conferido"));
        click(form, "cmdAlterar");
        QCOMPARE(d.app.dialogs().texts(), QStringList{Desc::kCamposObrigatorios});
        child<QLineEdit>(form, "txtbarra")->setText(QString(44, QLatin1Char('0')));
        child<QLineEdit>(form, "mskvalor")->setText(QStringLiteral("7,50"));
        auto* kinds = child<QComboBox>(form, "cmbOrgao");
        kinds->setCurrentIndex(kinds->findData(7));
        d.app.dialogs().clear();
        click(form, "cmdAlterar");
        QCOMPARE(d.app.dialogs().texts(),
                 QStringList{QStringLiteral("Operação efetuada com sucesso!!")});
        QVERIFY(!askedAnything(d.app.dialogs()));
        auto* first = child<QTreeWidget>(form, "ListView1")->topLevelItem(0);
        QCOMPARE(first->text(2), QStringLiteral("07"));
        QCOMPARE(first->text(3), QStringLiteral("TAXA DE EXPEDIENTE"));
        QCOMPARE(first->text(4), QStringLiteral("7,50"));
        QVERIFY(form.corrigiu());
    }

    // The log read back: the newest year first, and a search that finds the next occurrence.
    void logViewer() {
        Day d;
        RC c(d.app.ctx(), nullptr);
        QVERIFY(c.estornar(1, QStringLiteral("primeiro ano")).feito);
        d.app.clock().set(QDateTime(QDate(2027, 1, 5), QTime(8, 0)));
        QVERIFY(c.estornar(2, QStringLiteral("segundo ano")).feito);
        frmExbi view(d.app.ctx());
        QCOMPARE(view.windowTitle(), QStringLiteral("Visualizando Estornos e Alterações"));
        auto* text = child<QPlainTextEdit>(view, "txtTexto");
        const QString all = text->toPlainText();
        QVERIFY(all.indexOf(QStringLiteral("segundo ano")) >= 0);
        QVERIFY(all.indexOf(QStringLiteral("segundo ano")) <
                all.indexOf(QStringLiteral("primeiro ano")));
        child<QLineEdit>(view, "txtpesquisa")->setText(QStringLiteral("primeiro"));
        click(view, "cmdProcura");
        QCOMPARE(text->textCursor().selectedText(), QStringLiteral("primeiro"));
        d.app.dialogs().clear();
        child<QLineEdit>(view, "txtpesquisa")->setText(QStringLiteral("inexistente"));
        click(view, "cmdProcura");
        QCOMPARE(d.app.dialogs().texts(), QStringList{QStringLiteral("Texto não encontrado!!")});
    }

    void undoList() {
        Day d;
        RC c(d.app.ctx(), nullptr);
        QVERIFY(c.estornar(3, QStringLiteral("engano")).feito);
        ReversalUndoDialog dialog(d.app.ctx(), nullptr);
        auto* list = child<QTreeWidget>(dialog, "lstEstornos");
        QCOMPARE(list->topLevelItemCount(), 1);
        QCOMPARE(list->topLevelItem(0)->text(0), QStringLiteral("003"));
        QCOMPARE(list->topLevelItem(0)->text(5), QStringLiteral("engano"));
        d.app.dialogs().clear();
        click(dialog, "cmdReverter");
        QCOMPARE(d.app.dialogs().texts(), QStringList{Desc::kInformeItem});
        list->setCurrentItem(list->topLevelItem(0));
        d.app.dialogs().clear();
        d.app.dialogs().pushAnswer(DialogAnswer::No);
        click(dialog, "cmdReverter");
        QCOMPARE(d.app.count(QStringLiteral("Recebimentos")), 2);
        list->setCurrentItem(list->topLevelItem(0));
        click(dialog, "cmdReverter");
        QCOMPARE(d.app.dialogs().texts(),
                 (QStringList{QStringLiteral("Confirma a reversão do estorno deste item? - 003"),
                              QStringLiteral("Confirma a reversão do estorno deste item? - 003"),
                              QStringLiteral("Revertido com sucesso!!")}));
        QCOMPARE(d.app.count(QStringLiteral("Recebimentos")), 3);
        QCOMPARE(list->topLevelItemCount(), 0);
        QVERIFY(dialog.reverteu());
    }

    // The counter's entries: the administrator guard, the screens, and the counter's list
    // redrawn when they close.
    void counterEntries() {
        Day d;
        const auto frontWindow = AppShell::counter(d.session, false);
        frmFrente& front = *frontWindow;
        front.show();
        auto* lancado = child<QTreeView>(front, "lstLancado");
        QCOMPARE(lancado->model()->rowCount(), 3);
        auto trigger = [&](const char* name) {
            front.findChild<QAction*>(QLatin1String(name))->trigger();
        };
        QString opened;
        auto whenOpen = [&](std::function<void(QWidget&)> work) {
            QTimer::singleShot(0, [&opened, work] {
                QWidget* w = QApplication::activeModalWidget();
                opened = w ? w->objectName() : QString();
                if (w) {
                    work(*w);
                    static_cast<QDialog*>(w)->accept();
                }
            });
        };

        // A password that is not an administrator's opens nothing and says nothing.
        d.app.dialogs().pushInput(QStringLiteral("errada"));
        trigger("mnuCorrige");
        QCOMPARE(d.app.dialogs().texts(),
                 QStringList{QStringLiteral("Entre com a senha do administrador!!")});
        QCOMPARE(d.app.dialogs().last().title, QStringLiteral("Corrigir ou Estornar Recebimento"));

        d.app.dialogs().pushInput(kSenhaAdm);
        d.app.dialogs().pushAnswer(DialogAnswer::Yes);
        whenOpen([](QWidget& w) {
            select(w, 0);
            child<QLineEdit>(w, "txtmotivo")->setText(QStringLiteral("engano"));
            click(w, "cmdEstornar");
        });
        trigger("mnuAlt_item");
        QCOMPARE(opened, QStringLiteral("frmCorrigeGuia"));
        QCOMPARE(lancado->model()->rowCount(), 2);

        d.app.dialogs().pushInput(kSenhaAdm);
        whenOpen([](QWidget& w) {
            auto* list = child<QTreeWidget>(w, "lstEstornos");
            list->setCurrentItem(list->topLevelItem(0));
            click(w, "cmdReverter");
        });
        trigger("mnureverter");
        QCOMPARE(opened, QStringLiteral("ReversalUndoDialog"));
        QCOMPARE(lancado->model()->rowCount(), 3);

        whenOpen([](QWidget&) {});
        trigger("mnuestornos");
        QCOMPARE(opened, QStringLiteral("frmExbi"));

        // Looking at a past day corrects nothing.
        const auto consultaWindow = AppShell::counter(d.session, true);
        frmFrente& consulta = *consultaWindow;
        QVERIFY(!consulta.findChild<QAction*>(QStringLiteral("mnuCorrige"))->isEnabled());
        QVERIFY(!consulta.findChild<QAction*>(QStringLiteral("mnureverter"))->isEnabled());
        QVERIFY(consulta.findChild<QAction*>(QStringLiteral("mnuestornos"))->isEnabled());
    }
};

QTEST_MAIN(tst_correction_screens)
#include "tst_correction_screens.moc"
