#pragma once

#include "Permissions.h"

#include <QString>
#include <optional>

class AppContext;

// The screens' door to an act of the permission table: when the act needs an administrator, a
// masked password whose operator type is exactly "ADM". Commands read theirs from stdin.
class AdminGuard {
public:
    static bool isAdministrator(AppContext& ctx, const QString& senha);
    // Asks in an input box titled `title` when the table says the act needs an administrator,
    // who then is ctx.autorizadoPor; false when cancelled, empty or not an administrator.
    static bool ask(AppContext& ctx, Act act, const QString& title);
    // The administrator whose password this is, for the record of what they allowed; nullopt
    // when it is not an administrator's.
    static std::optional<QString> administrador(AppContext& ctx, const QString& senha);
    // Asks for an administrator's password whatever the act, giving who answered.
    static std::optional<QString> askAdministrador(AppContext& ctx, const QString& title);
};

// The administrator named by a screen's guard allows what that screen does, and nothing after it.
class AuthorizedScope {
public:
    explicit AuthorizedScope(AppContext& ctx) : m_ctx(ctx) {}
    ~AuthorizedScope();
    AuthorizedScope(const AuthorizedScope&) = delete;
    AuthorizedScope& operator=(const AuthorizedScope&) = delete;

private:
    AppContext& m_ctx;
};
