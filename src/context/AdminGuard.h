#pragma once

#include <QString>

class AppContext;

// The guard of the administrator-only entries: a masked password whose operator type is
// exactly "ADM". Screens ask through the dialog port; commands read the password from stdin.
class AdminGuard {
public:
    static const QString kPrompt; // "Entre com a senha do administrador!!"

    static bool isAdministrator(AppContext& ctx, const QString& senha);
    // Asks in an input box titled `title`; false when cancelled, empty or not an administrator.
    static bool ask(AppContext& ctx, const QString& title);
};
