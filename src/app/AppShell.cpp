#include "AppShell.h"

#include "AdminGuard.h"
#include "AdminMenu.h"
#include "AppContext.h"
#include "BarcodeMenu.h"
#include "CashDayMenu.h"
#include "CommandRegistry.h"
#include "CommandRibbon.h"
#include "CounterCommands.h"
#include "CounterSession.h"
#include "ReportsMenu.h"
#include "frmExportar.h"
#include "frmFrente.h"

#include <QAction>
#include <QHBoxLayout>
#include <QHash>
#include <QMenu>
#include <QMenuBar>
#include <QToolButton>

std::unique_ptr<frmFrente> AppShell::counter(CounterSession& session, bool consulta) {
    auto front = std::make_unique<frmFrente>(session, consulta);
    CommandRegistry registry;
    registerAll(*front, registry);
    build(*front, registry);
    return front;
}

void AppShell::registerAll(frmFrente& front, CommandRegistry& r) {
    CounterSession& session = front.session();
    AppContext& ctx = session.ctx();
    const auto after = [&front] { front.afterScreen(); };
    const auto movimento = [&session] { return session.day().movimento(); };
    const auto back = [&front] { front.backToEntry(); };
    // The tools in the order the counter's keys name them: F6, F9, then the holidays.
    CounterCommands::add(r, front);
    BarcodeMenu::addJuros(r, ctx, back, &front);
    CounterCommands::addTools(r, front);
    BarcodeMenu::addFeriados(r, ctx, back, &front);
    r.add(QStringLiteral("mnuExpCebi"), QStringLiteral("&Ferramentas"),
          QStringLiteral("Arquivos Bancários..."), [&ctx, &front, movimento] {
              if (!AdminGuard::ask(ctx, Act::ArquivosBanco, QStringLiteral("Arquivos Bancários")))
                  return;
              {
                  const AuthorizedScope allowed(ctx);
                  const clsMovimento mov = movimento();
                  frmExportar(ctx, mov.ID, mov.MDATA, &front).exec();
              }
              front.afterScreen();
          });
    AdminMenu::add(r, ctx, after, &front);
    CashDayMenu::add(
        r, ctx, movimento,
        [&front, &session] {
            session.day().reload();
            front.afterScreen();
        },
        &front);
    ReportsMenu::add(
        r, ctx, [&session] { return session.day().movimento().MDATA; }, &front);
    CashDayMenu::addCorrections(
        r, ctx, session.printer(), [&front] { front.refreshAll(); }, &front);
}

void AppShell::build(frmFrente& front, const CommandRegistry& registry) {
    QHash<QString, QMenu*> menus;
    auto* ribbon = new CommandRibbon(&front, front.centralWidget());
    QHash<QString, int> groups;
    for (const QString& title : registry.menus()) {
        menus.insert(title, front.menuBar()->addMenu(title));
        groups.insert(title, ribbon->addGroup(Command::groupOf(title)));
    }
    for (const Command& c : registry.commands()) {
        QMenu* menu = menus.value(c.menu);
        if (c.separatorBefore)
            menu->addSeparator();
        QAction* a = menu->addAction(c.text);
        a->setObjectName(c.id);
        QObject::connect(a, &QAction::triggered, &front, c.handler);
        // A past day is only looked at: what would change it is disabled, menu and ribbon.
        a->setEnabled(!(front.consulta() && c.writesDay));
        if (c.id != QLatin1String("mnuSair")) // leaving stays in sight, beside the tabs
            ribbon->addCommand(groups.value(c.menu), c.id);
    }
    ribbon->setCurrentIndex(groups.value(QStringLiteral("&Soma")));
    auto* strip = new QHBoxLayout;
    strip->addWidget(ribbon, 1);
    if (QToolButton* sair =
            ribbon->standaloneCommand(QStringLiteral("mnuSair"), front.centralWidget(),
                                      QStringLiteral("Sair"), QStringLiteral("ESC")))
        strip->addWidget(sair, 0, Qt::AlignBottom);
    front.placeRibbon(strip);
}
