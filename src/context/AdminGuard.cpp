#include "AdminGuard.h"

#include "AppContext.h"
#include "DialogPort.h"
#include "Login.h"
#include "SystemTexts.h"

bool AdminGuard::isAdministrator(AppContext& ctx, const QString& senha) {
    if (senha.trimmed().isEmpty())
        return false;
    return Login::Tipo_usuario(ctx, senha) == UserType::Admin;
}

bool AdminGuard::ask(AppContext& ctx, Act act, const QString& title) {
    ctx.autorizadoPor.clear();
    if (Permissions::needed(ctx, act) != Authority::Administrador)
        return true;
    const auto answer = ctx.dialogs.input(
        title, SystemTexts::text(SystemText::SenhaAdministradorPedido), true, QString());
    if (!answer)
        return false;
    const auto admin = Login::administrador(ctx, *answer);
    if (!admin)
        return false;
    ctx.autorizadoPor = *admin;
    return true;
}

AuthorizedScope::~AuthorizedScope() {
    m_ctx.autorizadoPor.clear();
}

std::optional<QString> AdminGuard::administrador(AppContext& ctx, const QString& senha) {
    if (!isAdministrator(ctx, senha))
        return std::nullopt;
    return Login::Nome_usuario(ctx, senha);
}

std::optional<QString> AdminGuard::askAdministrador(AppContext& ctx, const QString& title) {
    const auto answer = ctx.dialogs.input(
        title, SystemTexts::text(SystemText::SenhaAdministradorPedido), true, QString());
    return answer ? administrador(ctx, *answer) : std::nullopt;
}
