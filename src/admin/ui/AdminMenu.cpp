#include "AdminMenu.h"

#include "AdminGuard.h"
#include "CommandRegistry.h"
#include "frmAtualiza.h"
#include "frmAutenticar.h"
#include "frmCodBarra.h"
#include "frmOpcoes.h"
#include "frmSkin.h"
#include "frmUsuarios.h"

#include <memory>

namespace {
// A screen of `Form`; with a guard title, only after the administrator's password (a wrong one
// opens nothing, silently).
template <class Form>
std::function<void()> screen(AppContext& ctx, const QString& guardTitle,
                             const std::function<void()>& after, QWidget* parent) {
    return [&ctx, guardTitle, after, parent] {
        if (!guardTitle.isEmpty() && !AdminGuard::ask(ctx, guardTitle))
            return;
        auto form = std::make_unique<Form>(ctx, parent);
        form->exec();
        form.reset();
        after();
    };
}
} // namespace

void AdminMenu::add(CommandRegistry& r, AppContext& ctx, std::function<void()> after,
                    QWidget* parent) {
    const QString tools = QStringLiteral("&Ferramentas"), admin = QStringLiteral("&Administração");
    // The loose stamp asks for the administrator itself, to name who allowed it.
    r.add(QStringLiteral("mnuAutenticar"), tools, QStringLiteral("Autenticar Documento..."),
          [&ctx, after, parent] {
              frmAutenticar::abrir(ctx, parent);
              after();
          });
    r.add(QStringLiteral("mnuItens"), admin, QStringLiteral("Tipos de Guia..."),
          screen<frmCodBarra>(ctx, QStringLiteral("Tipos de Guia"), after, parent));
    r.add(QStringLiteral("mnuuser"), admin, QStringLiteral("Usuários..."),
          screen<frmUsuarios>(ctx, QStringLiteral("Usuários"), after, parent));
    r.add(QStringLiteral("mnuParam"), admin, QStringLiteral("Opções..."),
          screen<frmOpcoes>(ctx, QStringLiteral("Opções"), after, parent));
    r.separator();
    r.add(QStringLiteral("mnuAltSkin"), admin, QStringLiteral("Aparência..."),
          screen<frmSkin>(ctx, {}, after, parent));
    r.add(QStringLiteral("mnuAtualiza"), admin, QStringLiteral("Atualização..."),
          screen<frmAtualiza>(ctx, {}, after, parent));
}
