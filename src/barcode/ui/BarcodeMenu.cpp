#include "BarcodeMenu.h"

#include "AdminGuard.h"
#include "CommandRegistry.h"
#include "frmFeriados.h"
#include "frmJuros.h"

void BarcodeMenu::addJuros(CommandRegistry& r, AppContext& ctx, std::function<void()> after,
                           QWidget* parent) {
    r.add(QStringLiteral("mnuJuros"), QStringLiteral("&Ferramentas"),
          QStringLiteral("Juros por Dia/Mês (F6)"), [&ctx, after, parent] {
              frmJuros(ctx, parent).exec();
              after();
          });
}

void BarcodeMenu::addFeriados(CommandRegistry& r, AppContext& ctx, std::function<void()> after,
                              QWidget* parent) {
    r.add(QStringLiteral("mnuFeriados"), QStringLiteral("&Ferramentas"),
          QStringLiteral("Feriados..."), [&ctx, after, parent] {
              if (!AdminGuard::ask(ctx, Act::Feriados, QStringLiteral("Feriados")))
                  return; // a wrong password opens nothing, silently
              {
                  const AuthorizedScope allowed(ctx);
                  frmFeriados(ctx, parent).exec();
              }
              after();
          });
}
