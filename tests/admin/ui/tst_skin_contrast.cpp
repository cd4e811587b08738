// Every skin that ships keeps text readable: at least 4.5:1 (WCAG 2 contrast) between every text
// and what lies behind it, on the real screens (rows, alternating rows, selection, the status
// tones) and on the parts a style sheet draws by itself (menus, tabs, headers, tool tips).
#include "AppShell.h"
#include "CounterSession.h"
#include "DemoData.h"
#include "Skin.h"
#include "TestApp.h"
#include "frmFrente.h"
#include "frmJuros.h"
#include "frmLancamentos.h"
#include "frmOpcoes.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QRegularExpression>

namespace {

double channel(double c) {
    c /= 255.0;
    return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& c) {
    return 0.2126 * channel(c.red()) + 0.7152 * channel(c.green()) + 0.0722 * channel(c.blue());
}

double contrast(const QColor& a, const QColor& b) {
    const double la = luminance(a), lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

// A translucent text colour as it shows over its background.
QColor over(const QColor& fg, const QColor& bg) {
    const double a = fg.alphaF();
    return QColor::fromRgbF(float(fg.redF() * a + bg.redF() * (1 - a)),
                            float(fg.greenF() * a + bg.greenF() * (1 - a)),
                            float(fg.blueF() * a + bg.blueF() * (1 - a)));
}

// What is painted behind a widget: its own styled or filled background, else the nearest
// ancestor's, else its window's.
QColor behind(const QWidget* w) {
    for (const QWidget* p = w; p; p = p->parentWidget())
        if (p->isWindow() || p->testAttribute(Qt::WA_StyledBackground) || p->autoFillBackground())
            return p->palette().color(p->backgroundRole());
    return w->palette().color(QPalette::Window);
}

struct Pair {
    QString what;
    QColor fg, bg;
};

QString describe(const QWidget* w) {
    return QStringLiteral("%1 %2").arg(QLatin1String(w->metaObject()->className()),
                                       w->objectName());
}

// The text/background pairs a widget shows. Disabled widgets are left out: they are meant to
// read as unavailable.
QList<Pair> pairsOf(const QWidget* w) {
    const QPalette p = w->palette();
    const QString name = describe(w);
    QList<Pair> out;
    if (auto* view = qobject_cast<const QAbstractItemView*>(w)) {
        out.append(
            {name + QStringLiteral(" linhas"), p.color(QPalette::Text), p.color(QPalette::Base)});
        if (view->alternatingRowColors())
            out.append({name + QStringLiteral(" linhas alternadas"), p.color(QPalette::Text),
                        p.color(QPalette::AlternateBase)});
        out.append({name + QStringLiteral(" seleção"), p.color(QPalette::HighlightedText),
                    p.color(QPalette::Highlight)});
    } else if (auto* edit = qobject_cast<const QLineEdit*>(w)) {
        out.append({name, p.color(QPalette::Text), p.color(QPalette::Base)});
        if (!edit->placeholderText().isEmpty())
            out.append({name + QStringLiteral(" dica"),
                        over(p.color(QPalette::PlaceholderText), p.color(QPalette::Base)),
                        p.color(QPalette::Base)});
    } else if (qobject_cast<const QComboBox*>(w) || qobject_cast<const QAbstractSpinBox*>(w)) {
        out.append({name, p.color(QPalette::Text), p.color(QPalette::Base)});
    } else if (qobject_cast<const QCheckBox*>(w) || qobject_cast<const QRadioButton*>(w)) {
        out.append({name, p.color(QPalette::WindowText), behind(w)});
    } else if (auto* button = qobject_cast<const QAbstractButton*>(w)) {
        if (!button->text().isEmpty())
            out.append({name, p.color(QPalette::ButtonText), p.color(QPalette::Button)});
    } else if (auto* label = qobject_cast<const QLabel*>(w)) {
        if (!label->text().isEmpty())
            out.append({name + QStringLiteral(" \"") + label->text().left(30) + QLatin1Char('"'),
                        p.color(QPalette::WindowText), behind(w)});
    } else if (qobject_cast<const QGroupBox*>(w)) {
        out.append({name, p.color(QPalette::WindowText), behind(w)});
    }
    return out;
}

// The declarations of a style sheet by selector ("QMenu::item:selected" -> color -> #fff).
using Sheet = QHash<QString, QHash<QString, QString>>;

Sheet parse(QString text) {
    text.remove(QRegularExpression(QStringLiteral("/\\*.*?\\*/"),
                                   QRegularExpression::DotMatchesEverythingOption));
    Sheet sheet;
    static const QRegularExpression rule(QStringLiteral("([^{}]+)\\{([^}]*)\\}"));
    for (auto it = rule.globalMatch(text); it.hasNext();) {
        const auto m = it.next();
        for (QString selector : m.captured(1).split(QLatin1Char(','))) {
            selector = selector.simplified();
            for (const QString& decl : m.captured(2).split(QLatin1Char(';'))) {
                const int colon = decl.indexOf(QLatin1Char(':'));
                if (colon > 0)
                    sheet[selector][decl.left(colon).trimmed()] = decl.mid(colon + 1).trimmed();
            }
        }
    }
    return sheet;
}

// The first of `selectors` that sets `property`, as a colour.
QColor lookup(const Sheet& sheet, const QStringList& selectors, const QString& property) {
    for (const QString& s : selectors)
        if (const QString v = sheet.value(s).value(property); !v.isEmpty())
            return QColor(v);
    return {};
}

} // namespace

class tst_skin_contrast : public QObject {
    Q_OBJECT

    static void skinRows() {
        QTest::addColumn<QString>("path");
        for (const auto& [name, path] : Skin::shipped())
            QTest::newRow(name.toUtf8().constData()) << path;
    }

    static QStringList failures(QWidget& top) {
        top.show();
        QApplication::processEvents();
        QStringList out;
        QList<QWidget*> all = top.findChildren<QWidget*>();
        all.prepend(&top);
        for (QWidget* w : all) {
            if (!w->isVisibleTo(&top) || !w->isEnabled())
                continue;
            for (const Pair& p : pairsOf(w)) {
                const double r = contrast(p.fg, p.bg);
                if (r < 4.5)
                    out << QStringLiteral("%1: %2 sobre %3 = %4")
                               .arg(p.what, p.fg.name(), p.bg.name())
                               .arg(r, 0, 'f', 2);
            }
        }
        top.hide();
        return out;
    }

private slots:
    void cleanup() { qApp->setStyleSheet(QString()); }

    // The counter in each state it can be seen in: waiting, with a customer, a refused read
    // on the status line, a past day, consultation.
    void counter_data() { skinRows(); }
    void counter() {
        QFETCH(QString, path);
        qApp->setStyleSheet(Skin::read(path).value_or(QString()));
        TestApp app;
        QVERIFY(DemoData::seed(app.ctx(), nullptr, nullptr));
        app.ctx().workingDate = QDate(2026, 11, 20); // not today: the date stands out
        app.ctx().userName = QStringLiteral("ANA");
        CounterSession session(app.ctx(), nullptr);
        QVERIFY(session.day().abrir());
        const auto emptyWindow = AppShell::counter(session, false);
        frmFrente& empty = *emptyWindow;
        QStringList bad = failures(empty);
        session.adicionarDigitado(7, QStringLiteral("TAXA DE EXPEDIENTE"), Money::fromReais(15));
        session.adicionarDigitado(8, QStringLiteral("CERTIDAO"), Money::fromReais(32));
        session.adicionarDigitado(7, QStringLiteral("TAXA DE EXPEDIENTE"), Money::fromReais(15));
        QVERIFY(session.gravar());
        session.adicionarDigitado(7, QStringLiteral("TAXA DE EXPEDIENTE"), Money::fromReais(9));
        const auto busyWindow = AppShell::counter(session, false);
        frmFrente& busy = *busyWindow;
        auto* list = busy.findChild<QAbstractItemView*>(QStringLiteral("lstLancado"));
        list->setCurrentIndex(list->model()->index(0, 0));
        // A code that is not read puts its reason on the status line.
        QTest::keyClicks(busy.findChild<QLineEdit*>(QStringLiteral("txtValorCodBarra")),
                         QString(44, QLatin1Char('9')));
        bad << failures(busy);
        const auto consultaWindow = AppShell::counter(session, true);
        frmFrente& consulta = *consultaWindow;
        bad << failures(consulta);
        QVERIFY2(bad.isEmpty(), qPrintable(bad.join(QLatin1Char('\n'))));
    }

    // Dialogs with every kind of control: tabs, group boxes, radio buttons, date fields, the
    // count's list and fields.
    void dialogs_data() { skinRows(); }
    void dialogs() {
        QFETCH(QString, path);
        qApp->setStyleSheet(Skin::read(path).value_or(QString()));
        TestApp app;
        app.ctx().workingDate = QDate(2026, 11, 23);
        CounterSession session(app.ctx(), nullptr);
        QVERIFY(session.day().abrir());
        frmOpcoes options(app.ctx());
        frmJuros juros(app.ctx());
        frmLancamentos count(app.ctx(), QDate(2026, 11, 23));
        QStringList bad = failures(options) + failures(juros) + failures(count);
        QVERIFY2(bad.isEmpty(), qPrintable(bad.join(QLatin1Char('\n'))));
    }

    // What the style sheet paints without a palette: menus, tabs, headers, tool tips, and each
    // tone a status label takes.
    void subControls_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QStringList>("fg");
        QTest::addColumn<QStringList>("bg");
        const QStringList w{QStringLiteral("QWidget")};
        const QStringList window{QStringLiteral("QMainWindow"), QStringLiteral("QWidget")};
        const auto parts = [&](const QString& sel, const QStringList& fgMore,
                               const QStringList& bgMore) {
            return std::pair{QStringList{sel} + fgMore, QStringList{sel} + bgMore};
        };
        QList<std::pair<QString, std::pair<QStringList, QStringList>>> items = {
            {QStringLiteral("menu"), parts(QStringLiteral("QMenu"), w, window)},
            {QStringLiteral("menu selecionado"),
             parts(QStringLiteral("QMenu::item:selected"), {}, {})},
            {QStringLiteral("barra de menus selecionada"),
             parts(QStringLiteral("QMenuBar::item:selected"), {}, {})},
            {QStringLiteral("aba"), parts(QStringLiteral("QTabBar::tab"), w, {})},
            {QStringLiteral("aba selecionada"),
             parts(QStringLiteral("QTabBar::tab:selected"), {QStringLiteral("QTabBar::tab")},
                   {QStringLiteral("QTabBar::tab")})},
            {QStringLiteral("cabeçalho"), parts(QStringLiteral("QHeaderView::section"), w, {})},
            {QStringLiteral("dica de ferramenta"), parts(QStringLiteral("QToolTip"), {}, {})},
            {QStringLiteral("botão da faixa"), parts(QStringLiteral("QToolButton"), {}, {})},
        };
        for (const char* tone :
             {"pronto", "alerta", "erro", "espera", "falta", "passado", "data", "apagado", "dica"})
            items.append(
                {QStringLiteral("tom ") + QLatin1String(tone),
                 parts(QStringLiteral("QLabel[tom=\"%1\"]").arg(QLatin1String(tone)), {}, window)});
        for (const auto& [skin, path] : Skin::shipped())
            for (const auto& [what, sel] : items)
                QTest::newRow(qPrintable(skin + QStringLiteral(" ") + what))
                    << path << sel.first << sel.second;
    }
    void subControls() {
        QFETCH(QString, path);
        QFETCH(QStringList, fg);
        QFETCH(QStringList, bg);
        const Sheet sheet = parse(Skin::read(path).value_or(QString()));
        const QColor text = lookup(sheet, fg, QStringLiteral("color"));
        QColor back = lookup(sheet, bg, QStringLiteral("background-color"));
        if (!back.isValid()) // the light skin leaves some backgrounds to the platform
            back = QApplication::palette().color(QPalette::Window);
        QVERIFY2(text.isValid(), "the skin gives no text colour");
        QVERIFY2(contrast(text, back) >= 4.5, qPrintable(QStringLiteral("%1 sobre %2 = %3")
                                                             .arg(text.name(), back.name())
                                                             .arg(contrast(text, back))));
    }

    // The measure itself, on pairs whose ratio is known.
    void measure() {
        QCOMPARE(qRound(contrast(Qt::black, Qt::white) * 100), 2100);
        QCOMPARE(qRound(contrast(QColor(0x76, 0x76, 0x76), Qt::white) * 100), 454);
        QVERIFY(contrast(QColor(0x77, 0x77, 0x77), Qt::white) < 4.5);
        QCOMPARE(over(QColor(0, 0, 0, 0), Qt::white).name(), QStringLiteral("#ffffff"));
    }
};

QTEST_MAIN(tst_skin_contrast)
#include "tst_skin_contrast.moc"
