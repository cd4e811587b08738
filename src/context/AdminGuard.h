#pragma once

#include <QString>
#include <optional>

class AppContext;

// The guard of the administrator-only entries: a masked password whose operator type is
// exactly "ADM". Screens ask through the dialog port; commands read the password from stdin.
class AdminGuard {
public:
    static const QString kPrompt; // "Entre com a senha do administrador!!"

    static bool isAdministrator(AppContext& ctx, const QString& senha);
    // Asks in an input box titled `title`; false when cancelled, empty or not an administrator.
    static bool ask(AppContext& ctx, const QString& title);
    // The administrator whose password this is, for the record of what they allowed; nullopt
    // when it is not an administrator's.
    static std::optional<QString> administrador(AppContext& ctx, const QString& senha);
    // ask(), giving who answered.
    static std::optional<QString> askAdministrador(AppContext& ctx, const QString& title);
};
