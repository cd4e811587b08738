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
    auto entries = [&ctx, movimento, parent](EntryKind kind) {
        return [&ctx, movimento, parent, kind] {
            if (EntryKinds::needsAdministrator(kind) &&
                !AdminGuard::ask(ctx, EntryKinds::caption(kind)))
                return;
            frmSangria(ctx, movimento().ID, kind, parent).exec();
        };
    };
    add("mnuLanca", EntryKinds::caption(EntryKind::CashIn) + QStringLiteral("..."),
        entries(EntryKind::CashIn));
    add("mnuPagtos", EntryKinds::caption(EntryKind::PaymentOut) + QStringLiteral("..."),
        entries(EntryKind::PaymentOut));
    add("mnuSangria", EntryKinds::caption(EntryKind::Withdrawal) + QStringLiteral("..."),
        entries(EntryKind::Withdrawal));
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
