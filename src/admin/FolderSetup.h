#pragma once

#include "Options.h"

#include <QString>
#include <optional>

class AppContext;

// Preparing the program's folder, for `tolvane iniciar` and for the first run on screen alike:
// the folder (private to the account), the template Config.ini when there is none, the folders
// it names, and the database created or brought up to date. Nothing is ever deleted or replaced.
class FolderSetup {
public:
    enum class Step { Ready, FolderNotCreated, FolderNotWritable, ConfigNotWritten, Database };
    struct Prepared {
        Step step = Step::Ready;
        bool configCreated = false;
        QString detail; // why the database did not open
        bool ok() const { return step == Step::Ready; }
    };
    // `settings`, when given, are written into a Config.ini created now, before the database
    // opens (so the database is claimed by the counter they name).
    static Prepared prepare(AppContext& ctx, const Options::Values& settings = {});
    // The refusal in the program's words (database: "Erro ao conectar banco de dados!!!" and why).
    static QString message(const AppContext& ctx, const Prepared& p);

    // Nothing of the program in the folder yet (no Config.ini, no caixa.db): the screen offers to
    // prepare it.
    static bool isNew(const QString& folder);

    // What the first run asks: the town hall's name and header and the counter's letter.
    struct Identity {
        QString prefeitura; // [Mensagem] pref
        QString cabecalho;  // [Mensagem] cabecalho, three characters
        QString guiche;     // [Export] guiche, one letter
    };
    enum class Outcome {
        Done,
        MissingField,    // an empty name, header, letter or password
        BadSetting,      // `problem` says which and why
        PasswordsDiffer, // the two typings of the password differ
        ShortPassword,
        NotPrepared, // `prepared` says why
        AdminNotSaved
    };
    struct FirstRun {
        Outcome outcome = Outcome::Done;
        std::optional<Options::Problem> problem;
        Prepared prepared;
        bool ok() const { return outcome == Outcome::Done; }
    };
    static constexpr const char* kAdministrador = "ADMINISTRADOR";
    // Checks everything first; then prepares the folder with the identity in its Config.ini and
    // records the first administrator with the password typed twice.
    static FirstRun firstRun(AppContext& ctx, const Identity& id, const QString& senha,
                             const QString& confirmacao);
    static QString message(const AppContext& ctx, const FirstRun& r);
};
