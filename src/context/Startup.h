#pragma once

#include <QString>

class AppContext;

// Start-up: the database connection and the settings, each with its message when it fails.
class Startup {
public:
    // How much of an SQLite file is read at the opening. Cheap: the header, the page count, the
    // catalog and the schema version, with the whole file only where CheckRecord's rule asks
    // for it. WholeFile: always the whole file (tolvane verificar). Background: the cheap checks,
    // then always a whole-file check on its own thread; the first write waits for it (the
    // screens).
    enum class Check { Cheap, WholeFile, Background };

    // Opens the configured database, checks it and brings its schema up to date. With `create`
    // false (everything but `iniciar`) a missing SQLite file, or a database without the
    // program's tables, is an error: a wrong folder must not silently start an empty day. A
    // damaged file, or one that is too short to be a database, is always refused. `detail`
    // tells why it failed and what to do.
    static bool Abre_conexao(AppContext& ctx, bool create, QString* detail = nullptr,
                             Check check = Check::Cheap);
    // For consultation: nothing is written (no update, no claim), and a folder on read-only
    // media still opens.
    static bool abrirConsulta(AppContext& ctx, QString* detail = nullptr,
                              Check check = Check::Cheap);
    static bool Carrega_config(AppContext& ctx);
    // Read-write without the counter's claim: only for the path that re-assigns the database.
    static bool abrirSemGuiche(AppContext& ctx, QString* detail = nullptr);
    // The database (opened by abrirSemGuiche) changes hands: it now belongs to the counter `letra`
    // (written into Config.ini as well) or, without one, to the counter of this Config.ini; only
    // while no day is open. An administrator's act (Permissions): the caller has checked who
    // asks. This is the one way the counter's letter changes.
    static bool assumirGuiche(AppContext& ctx, QString* detail, const QString& letra = QString());

    // The start-up steps after the single-instance check. A database file (or its folder) that
    // is not there stops the start with "Erro na abertura do sistema!!" and false; any other
    // failure is told and the program goes on.
    static bool run(AppContext& ctx);
};
