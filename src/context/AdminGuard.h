#pragma once

#include "Permissions.h"

#include <QString>

class AppContext;

// The screens' door to an act of the permission table: when the act needs an administrator, a
// masked password whose operator type is exactly "ADM". Commands read theirs from stdin.
class AdminGuard {
public:
    static const QString kPrompt; // "Entre com a senha do administrador!!"

    static bool isAdministrator(AppContext& ctx, const QString& senha);
    // Asks in an input box titled `title` when the table says the act needs an administrator,
    // who then is ctx.autorizadoPor; false when cancelled, empty or not an administrator.
    static bool ask(AppContext& ctx, Act act, const QString& title);
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
