#pragma once

#include "clsUsuarios.h"

#include <QString>
#include <optional>

class AppContext;

// The operator's password: the login of the date screen and the type lookup behind the
// administrator guard. Exactly one operator may match a password.
class Login {
public:
    // Exactly one operator whose password matches, and active. Sets the operator's name and type
    // (also for an inactive one).
    static bool Valida_senha(AppContext& ctx, const QString& senha);
    // The type of the single operator matching the password, else "USER". Activity not checked.
    static UserType Tipo_usuario(AppContext& ctx, const QString& senha);
    // The name of the single operator matching the password, else empty. Activity not checked.
    static QString Nome_usuario(AppContext& ctx, const QString& senha);
    // The name of the single active operator matching the password when its type is "ADM": the
    // administrator who allows an act.
    static std::optional<QString> administrador(AppContext& ctx, const QString& senha);

private:
    struct Match;
    static int matchingUsers(AppContext& ctx, const QString& senha, Match& first);
};
