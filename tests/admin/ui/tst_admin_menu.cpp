// The administration entries of the counter screen: the administrator's password before the
// guarded ones, and each entry opening its screen.
#include "AppShell.h"
#include "CounterSession.h"
#include "TestApp.h"
#include "frmFrente.h"

#include <QAction>
#include <QApplication>
#include <QTimer>

class tst_admin_menu : public QObject {
    Q_OBJECT

    // Triggers an entry and answers the screen it opens (closing it); empty when none opened.
    static QString open(frmFrente& form, const char* entry) {
        QString opened;
        QTimer closer; // fires inside the screen's own loop, if one opens
        closer.setSingleShot(true);
        QObject::connect(&closer, &QTimer::timeout, [&opened] {
            if (QWidget* w = QApplication::activeModalWidget()) {
                opened = w->objectName();
                w->close();
            }
        });
        closer.start(0);
        form.findChild<QAction*>(QLatin1String(entry))->trigger();
        return opened;
    }

private slots:
    void entries_data() {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("guard"); // the input box's title, empty when not guarded
        QTest::addColumn<QString>("screen");
        auto row = [](const char* entry, const char* guard, const char* screen) {
            QTest::newRow(screen) << entry << QString::fromUtf8(guard) << screen;
        };
        row("mnuItens", "Tipos de Guia", "frmCodBarra");
        row("mnuuser", "Usuários", "frmUsuarios");
        row("mnuParam", "Opções", "frmOpcoes");
        row("mnuAltSkin", "", "frmSkin");
        row("mnuAtualiza", "Atualização", "frmAtualiza");
        row("mnuAutenticar", "Autenticar Documento", "frmAutenticar");
        row("mnuFeriados", "Feriados", "frmFeriados");
        row("mnuExpCebi", "Arquivos Bancários", "frmExportar");
    }

    void entries() {
        QFETCH(QString, entry);
        QFETCH(QString, guard);
        QFETCH(QString, screen);
        TestApp app;
        app.addUser(QStringLiteral("CHEFE"), QStringLiteral("chefe1"), QStringLiteral("ADM"));
        app.addUser(QStringLiteral("CAIXA"), QStringLiteral("caixa1"), QStringLiteral("USER"));
        app.ctx().workingDate = QDate(2026, 11, 23);
        CounterSession session(app.ctx(), nullptr);
        QVERIFY(session.day().abrir());
        const auto formWindow = AppShell::counter(session, false);
        frmFrente& form = *formWindow;
        form.show();
        app.dialogs().clear();
        const QByteArray name = entry.toLatin1();
        if (!guard.isEmpty()) {
            for (const char* refused : {"caixa1", "", "errada"}) {
                app.dialogs().pushInput(QString::fromLatin1(refused));
                QCOMPARE(open(form, name.constData()), QString());
                QCOMPARE(app.dialogs().last().kind, QStringLiteral("input"));
                QCOMPARE(app.dialogs().last().title, guard);
                QCOMPARE(app.dialogs().last().text,
                         QStringLiteral("Entre com a senha do administrador!!"));
            }
            app.dialogs().pushInput(std::nullopt);
            QCOMPARE(open(form, name.constData()), QString());
            QCOMPARE(app.dialogs().shown().size(), 4); // the input boxes, nothing else
            app.dialogs().pushInput(QStringLiteral("chefe1"));
        }
        QCOMPARE(open(form, name.constData()), screen);
    }
};

QTEST_MAIN(tst_admin_menu)
#include "tst_admin_menu.moc"
