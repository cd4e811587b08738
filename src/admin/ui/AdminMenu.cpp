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
// A screen of `Form`, after the administrator's password when the permission table asks for one
// (a wrong one opens nothing, silently).
template <class Form>
std::function<void()> screen(AppContext& ctx, Act act, const QString& guardTitle,
                             const std::function<void()>& after, QWidget* parent) {
    return [&ctx, act, guardTitle, after, parent] {
        if (!AdminGuard::ask(ctx, act, guardTitle))
            return;
        {
            const AuthorizedScope allowed(ctx);
            auto form = std::make_unique<Form>(ctx, parent);
            form->exec();
        }
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
          screen<frmCodBarra>(ctx, Act::TiposGuia, QStringLiteral("Tipos de Guia"), after, parent));
    r.add(QStringLiteral("mnuuser"), admin, QStringLiteral("Usuários..."),
          screen<frmUsuarios>(ctx, Act::Usuarios, QStringLiteral("Usuários"), after, parent));
    r.add(QStringLiteral("mnuParam"), admin, QStringLiteral("Opções..."),
          screen<frmOpcoes>(ctx, Act::Opcoes, QStringLiteral("Opções"), after, parent));
    r.separator();
    r.add(QStringLiteral("mnuAltSkin"), admin, QStringLiteral("Aparência..."),
          screen<frmSkin>(ctx, Act::Aparencia, QStringLiteral("Aparência"), after, parent));
    r.add(QStringLiteral("mnuAtualiza"), admin, QStringLiteral("Atualização..."),
          screen<frmAtualiza>(ctx, Act::PastaAtualizacao, QStringLiteral("Atualização"), after,
                              parent));
}
