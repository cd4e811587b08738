#pragma once

#include <QString>

class AppContext;

// Start-up: the database connection and the settings, each with its message when it fails.
class Startup {
public:
    // Opens the configured database and brings its schema up to date. With `create` false a
    // missing SQLite file is an error (a wrong folder must not silently start an empty day).
    // `detail` tells why it failed.
    static bool Abre_conexao(AppContext& ctx, bool create, QString* detail = nullptr);
    static bool Carrega_config(AppContext& ctx);

    // The start-up steps after the single-instance check. The program goes on either way.
    static void run(AppContext& ctx);
};
