#pragma once

#include <QString>

class AppContext;

// Start-up and the two password routines every screen shares.
class AbreBD {
public:
    static const QString kSenhaInvalida;       // "Senha Inválida!!"
    static const QString kPromptAdministrador;  // "Entre com a senha do administrador!!"

    // Opens the configured database and brings its schema up to date. With `create` false a
    // missing SQLite file is an error (a wrong folder must not silently start an empty day).
    // `detail` tells why it failed.
    static bool Abre_conexao(AppContext& ctx, bool create, QString* detail = nullptr);
    static bool Carrega_config(AppContext& ctx);

    // The start-up steps after the single-instance check: connection and settings, each with its
    // message when it fails. The program goes on either way.
    static void startup(AppContext& ctx);

    // Login: exactly one operator whose password matches, and active. Sets the operator's name
    // and type (also for an inactive one).
    static bool Valida_senha(AppContext& ctx, const QString& senha);
    // The type of the single operator matching the password, else "USER". Activity not checked.
    static QString Tipo_usuario(AppContext& ctx, const QString& senha);
    // The administrator guard: masked input box titled `title`; true only for type "ADM".
    static bool Pede_senha_administrador(AppContext& ctx, const QString& title);

private:
    static int matchingUsers(AppContext& ctx, const QString& senha, QString* nome, QString* tipo,
                             int* ativo);
};
