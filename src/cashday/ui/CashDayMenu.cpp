#include "CashDayMenu.h"

#include "AdminGuard.h"
#include "AppContext.h"
#include "CashSafe.h"
#include "CommandRegistry.h"
#include "EntryKind.h"
#include "ReversalUndoDialog.h"
#include "frmCofre.h"
#include "frmCorrigeGuia.h"
#include "frmExbi.h"
#include "frmLancaTemp.h"
#include "frmLancamentos.h"
#include "frmSangria.h"

void CashDayMenu::add(CommandRegistry& registry, AppContext& ctx,
                      std::function<clsMovimento()> movimento, std::function<void()> refresh,
                      QWidget* parent) {
    const QString menu = QStringLiteral("&Lançamentos");
    // Each changes the day but the count, which a closed day consulted later still takes.
    auto add = [&](const char* name, const QString& text, std::function<void()> run,
                   bool writesDay = true) {
        registry.add(
            QLatin1String(name), menu, text,
            [run, refresh] {
                run();
                refresh();
            },
            writesDay);
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
    registry.separator();
    add(
        "mnuConferir", QStringLiteral("Conferência de Caixa..."),
        [&ctx, movimento, parent] { frmLancamentos(ctx, movimento().MDATA, parent).exec(); },
        false);
    add("mnuConftemp", QStringLiteral("Conferência Temporária..."),
        [&ctx, movimento, parent] { frmLancaTemp(ctx, movimento(), parent).exec(); });
}

void CashDayMenu::addCorrections(CommandRegistry& registry, AppContext& ctx,
                                 CounterPrinter* printer, std::function<void()> refresh,
                                 QWidget* parent) {
    const QString menu = QStringLiteral("C&orreções");
    // Each asks for an administrator first; the counter is redrawn after a correction.
    const auto guarded = [&ctx, printer, refresh, parent](auto open, const QString& title) {
        return [&ctx, printer, refresh, parent, open, title] {
            if (open(ctx, printer, title, parent))
                refresh();
        };
    };
    registry.add(
        QStringLiteral("mnuCorrige"), menu, QStringLiteral("Corrigir ou Estornar Recebimento..."),
        guarded(&frmCorrigeGuia::abrir, QStringLiteral("Corrigir ou Estornar Recebimento")), true);
    registry.add(QStringLiteral("mnuAlt_item"), menu, QStringLiteral("Alterar Item Recebido..."),
                 guarded(&frmCorrigeGuia::abrir, QStringLiteral("Alterar Item Recebido")), true);
    registry.add(QStringLiteral("mnureverter"), menu, QStringLiteral("Reverter Estorno..."),
                 guarded(&ReversalUndoDialog::abrir, QStringLiteral("Reverter Estorno")), true);
    registry.add(QStringLiteral("mnuestornos"), menu, QStringLiteral("Estornos e Alterações..."),
                 [&ctx, parent] { frmExbi(ctx, parent).exec(); });
}
