#include "CashDayMenu.h"

#include "AdminGuard.h"
#include "AppContext.h"
#include "CashSafe.h"
#include "EntryKind.h"
#include "frmCofre.h"
#include "frmLancaTemp.h"
#include "frmLancamentos.h"
#include "frmSangria.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

void CashDayMenu::build(QMenuBar* bar, AppContext& ctx, std::function<clsMovimento()> movimento,
                        std::function<void()> refresh, QWidget* parent) {
    QMenu* menu = bar->addMenu(QStringLiteral("&Lançamentos"));
    menu->setObjectName(QStringLiteral("mnuLancamentos"));
    auto add = [&](const char* name, const QString& text, std::function<void()> run) {
        QAction* a = menu->addAction(text);
        a->setObjectName(QLatin1String(name));
        QObject::connect(a, &QAction::triggered, parent, [run, refresh] {
            run();
            refresh();
        });
    };
    // The entry screen in the mode the menu names: "A" entries, "P" payments, "S" withdrawals.
    auto entries = [&ctx, movimento, parent](const char* modo) {
        const EntryKind kind = *frmSangria::kindForMode(QLatin1String(modo));
        return std::pair{
            EntryKinds::caption(kind) + QStringLiteral("..."),
            std::function<void()>([&ctx, movimento, parent, kind] {
                if (!AdminGuard::ask(ctx, EntryKinds::act(kind), EntryKinds::caption(kind)))
                    return;
                const AuthorizedScope allowed(ctx);
                frmSangria(ctx, movimento().ID, kind, parent).exec();
            })};
    };
    for (const auto& [name, modo] :
         {std::pair{"mnuLanca", "A"}, std::pair{"mnuPagtos", "P"}, std::pair{"mnuSangria", "S"}}) {
        const auto [text, run] = entries(modo);
        add(name, text, run);
    }
    add("mnuSuprimentos", QStringLiteral("Suprimentos (Cofre)..."), [&ctx, movimento, parent] {
        const qint32 id = movimento().ID;
        if (CashSafe::podeMovimentar(ctx, id))
            frmCofre(ctx, id, parent).exec();
    });
    menu->addSeparator();
    add("mnuConferir", QStringLiteral("Conferência de Caixa..."),
        [&ctx, movimento, parent] { frmLancamentos(ctx, movimento().MDATA, parent).exec(); });
    add("mnuConftemp", QStringLiteral("Conferência Temporária..."),
        [&ctx, movimento, parent] { frmLancaTemp(ctx, movimento(), parent).exec(); });
}
