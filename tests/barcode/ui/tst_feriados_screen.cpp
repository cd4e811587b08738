// The holiday screen driven through its controls and the scripted dialogs.
#include "Recordset.h"
#include "TestApp.h"
#include "clsDataAccess.h"
#include "frmFeriados.h"

#include <QDateEdit>
#include <QPushButton>
#include <QTreeWidget>

class tst_feriados_screen : public QObject {
    Q_OBJECT
private slots:
    void recordDeleteAndClear() {
        TestApp app;
        // ANA at the counter, CHEFE allowing the screen (as its guard leaves them).
        app.ctx().userName = QStringLiteral("ANA");
        app.ctx().autorizadoPor = QStringLiteral("CHEFE");
        frmFeriados form(app.ctx());
        auto* list = form.findChild<QTreeWidget*>(QStringLiteral("lwFeriados"));
        auto* date = form.findChild<QDateEdit*>(QStringLiteral("dtpData"));
        auto click = [&](const char* name) {
            form.findChild<QPushButton*>(QLatin1String(name))->click();
        };

        date->setDate(QDate(2026, 12, 25));
        click("cmdGravar");
        date->setDate(QDate(2026, 11, 20));
        click("cmdGravar");
        QCOMPARE(list->topLevelItemCount(), 2);
        QCOMPARE(list->topLevelItem(0)->text(1), QStringLiteral("20/11/2026"));
        QVERIFY(list->topLevelItem(0)->text(0).size() == 4); // "0002"
        click("cmdGravar");
        QCOMPARE(app.dialogs().last().text, QStringLiteral("Data já lançada!!!"));
        QCOMPARE(app.dialogs().last().icon, DialogIcon::Exclamation);
        QCOMPARE(app.count(QStringLiteral("Feriados")), 2);

        app.dialogs().pushAnswer(DialogAnswer::Yes);
        click("cmdExcluir"); // nothing chosen
        QCOMPARE(app.dialogs().last().text, QStringLiteral("Informe um item !!!"));
        list->setCurrentItem(list->topLevelItem(1));
        app.dialogs().pushAnswer(DialogAnswer::No);
        click("cmdExcluir");
        QCOMPARE(app.count(QStringLiteral("Feriados")), 2);
        app.dialogs().pushAnswer(DialogAnswer::Yes);
        list->setCurrentItem(list->topLevelItem(1));
        click("cmdExcluir");
        QCOMPARE(app.dialogs().last().text,
                 QStringLiteral("Confirma exclusão do item selecionado?"));
        QCOMPARE(list->topLevelItemCount(), 1);
        QCOMPARE(list->topLevelItem(0)->text(1), QStringLiteral("20/11/2026"));

        app.dialogs().pushAnswer(DialogAnswer::Yes);
        click("cmdLimpar");
        QCOMPARE(app.dialogs().last().text,
                 QStringLiteral("Confirma exclusão de todos os feriados?"));
        QCOMPARE(list->topLevelItemCount(), 0);
        QCOMPARE(app.count(QStringLiteral("Feriados")), 0);

        // Each change done, and only those, names both people.
        const auto atos = app.db().SQLSelect_ReadOnly(
            QStringLiteral("SELECT ATO, OPERADOR, AUTORIZADO_POR FROM Atos ORDER BY ID"));
        QVERIFY(atos);
        QStringList seen;
        for (Recordset r = *atos; !r.EOF_(); r.moveNext())
            seen << QStringList{r.text(QStringLiteral("ATO")), r.text(QStringLiteral("OPERADOR")),
                                r.text(QStringLiteral("AUTORIZADO_POR"))}
                        .join(QLatin1Char('/'));
        QCOMPARE(seen, QStringList({QStringLiteral("Feriados: inclusão/ANA/CHEFE"),
                                    QStringLiteral("Feriados: inclusão/ANA/CHEFE"),
                                    QStringLiteral("Feriados: exclusão/ANA/CHEFE"),
                                    QStringLiteral("Feriados: exclusão/ANA/CHEFE")}));
    }
};

QTEST_MAIN(tst_feriados_screen)
#include "tst_feriados_screen.moc"
