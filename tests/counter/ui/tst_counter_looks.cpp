// How the counter and its screens sit on a cashier's monitor: the window fits the small screens
// counters have, nothing is cut or moves while the cashier works, menus and ribbon agree, and
// dates read in Portuguese whatever the machine's language.
#include "AppShell.h"
#include "BrazilianLocale.h"
#include "DateField.h"
#include "OpenCounter.h"
#include "Skin.h"
#include "TitleRoom.h"
#include "frmFrente.h"
#include "frmJuros.h"
#include "frmLancamentos.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCalendarWidget>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QScopeGuard>
#include <QScrollBar>
#include <QTabWidget>
#include <QToolButton>
#include <QTreeWidget>

namespace {

// The screen a counter has, less the window's title bar and a task bar.
constexpr int kUsableHeight = 768 - 60;

// The open counter's window.
struct CounterWindow : OpenCounter {
    std::unique_ptr<frmFrente> form;
    explicit CounterWindow(bool consulta = false) {
        QVERIFY(open());
        form = AppShell::counter(session, consulta);
    }
    template <class T> T* w(const char* name) { return form->findChild<T*>(QLatin1String(name)); }
    void item(int idcod, const char* descricao, int reais) {
        session.adicionarDigitado(idcod, QString::fromLatin1(descricao), Money::fromReais(reais));
    }
    void showAt(int width) {
        form->resize(width, kUsableHeight);
        form->show();
        QVERIFY(QTest::qWaitForWindowExposed(form.get()));
        QApplication::processEvents();
    }
};

// Widgets of `top` that are cut: outside the window, or narrower than their text needs.
QStringList clipped(QWidget* top) {
    QStringList out;
    const QRect inside = top->rect();
    for (QWidget* w : top->findChildren<QWidget*>()) {
        if (!w->isVisibleTo(top) || w->isWindow())
            continue;
        const QRect r(w->mapTo(top, QPoint(0, 0)), w->size());
        const QString name =
            QLatin1String(w->metaObject()->className()) + QLatin1Char(' ') + w->objectName();
        if (!inside.contains(r) && !qobject_cast<QMenuBar*>(w->parentWidget()))
            out << name + QStringLiteral(" fora da janela");
        const bool fixedText = qobject_cast<QAbstractButton*>(w) ||
                               (qobject_cast<QLabel*>(w) && !static_cast<QLabel*>(w)->wordWrap() &&
                                w->sizePolicy().horizontalPolicy() != QSizePolicy::Ignored);
        if (fixedText && w->width() < w->minimumSizeHint().width())
            out << name + QStringLiteral(" cortado");
    }
    return out;
}

} // namespace

class tst_counter_looks : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { BrazilianLocale::apply(); }

    void fitsSmallScreens_data() {
        QTest::addColumn<QString>("skin");
        QTest::addColumn<int>("width");
        for (const auto& [name, path] : Skin::shipped())
            for (int width : {1366, 1024})
                QTest::newRow(qPrintable(QStringLiteral("%1 %2x768").arg(name).arg(width)))
                    << path << width;
    }
    void fitsSmallScreens() {
        QFETCH(QString, skin);
        QFETCH(int, width);
        qApp->setStyleSheet(Skin::read(skin).value_or(QString()));
        const auto plain = qScopeGuard([] { qApp->setStyleSheet(QString()); });
        CounterWindow c;
        QVERIFY(c.form->minimumSizeHint().width() <= width);
        QVERIFY(c.form->minimumSizeHint().height() <= kUsableHeight);
        c.item(7, "TAXA DE EXPEDIENTE", 15);
        c.showAt(width);
        QCOMPARE(c.form->size(), QSize(width, kUsableHeight));
        const QStringList cut = clipped(c.form.get());
        QVERIFY2(cut.isEmpty(), qPrintable(cut.join(QLatin1Char('\n'))));
    }

    // Every column of the customer's list in sight at 1366 wide, with the longest code, in
    // every skin (a skin may make the list's letters larger or bold).
    void customerListWithoutScrolling_data() {
        QTest::addColumn<QString>("skin");
        for (const auto& [name, path] : Skin::shipped())
            QTest::newRow(name.toUtf8().constData()) << path;
    }
    void customerListWithoutScrolling() {
        QFETCH(QString, skin);
        qApp->setStyleSheet(Skin::read(skin).value_or(QString()));
        const auto plain = qScopeGuard([] { qApp->setStyleSheet(QString()); });
        CounterWindow c;
        QVERIFY(!c.session.ler(QStringLiteral("81660000003124004262026113058888888888888888"))
                     .precisaConsentimento);
        c.item(8, "CERTIDAO NEGATIVA DE DEBITOS MUNICIPAIS", 32);
        c.form->refreshAll();
        c.showAt(1366);
        auto* soma = c.w<QTreeWidget>("lstSoma");
        QCOMPARE(soma->topLevelItemCount(), 2);
        QCOMPARE(soma->horizontalScrollBar()->maximum(), 0);
        for (int col = 0; col < soma->columnCount(); ++col)
            QVERIFY2(!soma->header()->isSectionHidden(col) && soma->columnWidth(col) > 0,
                     qPrintable(QString::number(col)));
        // The code reads whole: its column is as wide as the code's text.
        const QString code = soma->topLevelItem(0)->text(4);
        QCOMPARE(code.size(), 44);
        QVERIFY(soma->columnWidth(4) >= QFontMetrics(soma->font()).horizontalAdvance(code));
    }

    // The printer's banner has its room before it shows and when it grows: the code field
    // stays where the cashier's eyes are.
    void bannerMovesNothing() {
        CounterWindow c;
        c.showAt(1366);
        auto* entry = c.w<QLineEdit>("txtValorCodBarra");
        auto* banner = c.w<QLabel>("lblImpressora");
        const int y = entry->mapTo(c.form.get(), QPoint()).y();
        const QStringList texts = {
            QStringLiteral("Insira o documento: IPTU R$ 312,40"),
            QStringLiteral("Documentos sem autenticação: 0001, 0002, 0003, 0004, 0005, 0006, "
                           "0007, 0008, 0009, 0010, 0011, 0012, 0013, 0014, 0015, 0016. Quando a "
                           "autenticadora voltar: Caixa > Reautenticar.")};
        for (const QString& t : texts) {
            banner->setText(t);
            banner->show();
            QApplication::processEvents();
            QCOMPARE(entry->mapTo(c.form.get(), QPoint()).y(), y);
        }
        banner->hide();
        QApplication::processEvents();
        QCOMPARE(entry->mapTo(c.form.get(), QPoint()).y(), y);
    }

    // The change of the customer who paid stays until the next one begins or the day closes.
    void changeLeavesWithTheCustomer_data() {
        QTest::addColumn<bool>("closeDay");
        QTest::newRow("próximo cliente") << false;
        QTest::newRow("encerramento") << true;
    }
    void changeLeavesWithTheCustomer() {
        QFETCH(bool, closeDay);
        CounterWindow c;
        c.showAt(1366);
        c.item(7, "TAXA DE EXPEDIENTE", 15);
        c.form->refreshAll();
        auto* entry = c.w<QLineEdit>("txtValorCodBarra");
        entry->setFocus();
        QTest::keyClicks(entry, QStringLiteral("20,00"));
        QTest::keyClick(entry, Qt::Key_Minus);
        QTest::keyClick(entry, Qt::Key_Return);
        QCOMPARE(c.w<QLabel>("lblTroco")->text(), QStringLiteral("Troco: R$ 5,00"));
        if (closeDay) {
            c.app.dialogs().defaultAnswer = DialogAnswer::Yes;
            c.form->findChild<QAction*>(QStringLiteral("mnuEncerrar"))->trigger();
        } else {
            QTest::keyClick(entry, Qt::Key_8);
        }
        QVERIFY(!c.w<QLabel>("lblTroco")->text().startsWith(QLatin1String("Troco")));
    }

    // Each menu is a tab of the ribbon holding the same entries, in the same order.
    void menusAndRibbonAgree() {
        CounterWindow c;
        auto* ribbon = c.form->findChild<QTabWidget*>(QStringLiteral("CommandRibbon"));
        QStringList menus, tabs;
        for (QAction* m : c.form->menuBar()->actions()) {
            if (!m->menu())
                continue;
            QString title = m->menu()->title();
            menus << title.remove(QLatin1Char('&'));
            QStringList entries, buttons;
            for (QAction* a : m->menu()->actions())
                if (!a->isSeparator() && a->objectName() != QLatin1String("mnuSair"))
                    entries << QStringLiteral("rib") + a->objectName();
            const int tab = int(menus.size()) - 1;
            for (QToolButton* b : ribbon->widget(tab)->findChildren<QToolButton*>())
                buttons << b->objectName();
            QCOMPARE(buttons, entries);
        }
        for (int i = 0; i < ribbon->count(); ++i)
            tabs << ribbon->tabText(i);
        QCOMPARE(tabs, menus);
        QVERIFY(menus.contains(QStringLiteral("Ferramentas")));
        // The bank files and the stamping of a loose document are tools, in both places.
        for (const char* name : {"ribmnuExpCebi", "ribmnuAutenticar"}) {
            auto* b = ribbon->findChild<QToolButton*>(QLatin1String(name));
            QVERIFY(b);
            QCOMPARE(ribbon->tabText(ribbon->indexOf(b->parentWidget())),
                     QStringLiteral("Ferramentas"));
        }
    }

    // A past day consulted: what would write to it is disabled, menu and ribbon alike.
    void consultationDisables() {
        CounterWindow c(true);
        for (const char* name : {"mnuEncerrar", "mnuGravar", "mnuLanca", "mnuSangria", "mnuPagtos",
                                 "mnuSuprimentos", "mnuConftemp", "mnuCorrige"}) {
            QVERIFY2(!c.form->findChild<QAction*>(QLatin1String(name))->isEnabled(), name);
            const QByteArray rib = QByteArray("rib") + name;
            QVERIFY2(!c.form->findChild<QToolButton*>(QLatin1String(rib))->isEnabled(), name);
        }
        QVERIFY(!c.w<QLineEdit>("txtValorCodBarra")->isEnabled());
        for (const char* name : {"mnuRecebidas", "mnuBoletim", "mnuJuros", "mnuestornos"})
            QVERIFY2(c.form->findChild<QAction*>(QLatin1String(name))->isEnabled(), name);
    }

    // Whatever the machine's language, the calendar speaks Portuguese.
    void calendarInPortuguese() {
        QCalendarWidget calendar;
        calendar.setSelectedDate(QDate(2026, 11, 23));
        calendar.show();
        QApplication::processEvents();
        QStringList texts;
        for (QToolButton* b : calendar.findChildren<QToolButton*>())
            texts << b->text();
        QVERIFY2(texts.contains(QStringLiteral("novembro")), qPrintable(texts.join(',')));
        const QAbstractItemModel* days =
            calendar.findChild<QAbstractItemView*>(QStringLiteral("qt_calendar_calendarview"))
                ->model();
        QStringList header;
        for (int col = 0; col < days->columnCount(); ++col)
            header << days->data(days->index(0, col)).toString();
        QVERIFY2(header.contains(QStringLiteral("seg.")) || header.contains(QStringLiteral("seg")),
                 qPrintable(header.join(',')));
        QCOMPARE(QLocale().toString(1234.5, 'f', 2), QStringLiteral("1.234,50"));
    }

    // "Tab 01102026" in the calculator's date: the digits fill day, month and year even when
    // they arrive before the field has settled.
    void typedDateInTheCalculator() {
        TestApp app;
        app.ctx().workingDate = QDate(2026, 11, 23);
        frmJuros dlg(app.ctx());
        dlg.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dlg));
        auto* due = dlg.findChild<DateField*>(QStringLiteral("dtpVencimento"));
        due->setFocus(Qt::TabFocusReason); // reached with Tab
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(due));
        QTest::keyClicks(due, QStringLiteral("0110"));
        QApplication::processEvents(); // whatever the field had left for later runs now
        QTest::keyClicks(due, QStringLiteral("2026"));
        QCOMPARE(due->date(), QDate(2026, 10, 1));
    }

    // The cash count starts at the count: the kind first, the amount two Tabs later.
    void countStartsAtTheCount() {
        CounterWindow c;
        frmLancamentos dlg(c.app.ctx(), QDate(2026, 11, 23));
        dlg.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dlg));
        QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("Combo1"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("mskvalor"));
    }

    // A small box keeps its whole title.
    void titlesKeepTheirRoom_data() {
        QTest::addColumn<QString>("title");
        QTest::newRow("caixa") << QStringLiteral("Gravar Registro");
        QTest::newRow("tela") << QStringLiteral("Autenticação de Documentos");
    }
    void titlesKeepTheirRoom() {
        QFETCH(QString, title);
        TitleRoom room;
        qApp->installEventFilter(&room);
        QMessageBox box(QMessageBox::Information, title, QStringLiteral("Ok!!!"));
        box.show();
        QApplication::processEvents();
        QApplication::processEvents();
        QFont f = QApplication::font();
        f.setBold(true);
        QVERIFY(box.width() > QFontMetrics(f).horizontalAdvance(title) + 100);
        qApp->removeEventFilter(&room);
    }
};

QTEST_MAIN(tst_counter_looks)
#include "tst_counter_looks.moc"
