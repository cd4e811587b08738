#pragma once

#include "IniFile.h"
#include "OptionCatalog.h"

#include <QList>
#include <QString>
#include <optional>

class AppContext;

// Saving the settings: each value checked by the rule of its key, then every key written in one
// replacement of Config.ini (keys and comments of others kept), then the settings loaded again.
// The options screen saves all its keys; `opcoes gravar` only those it is given.
class Options {
public:
    using Values = QList<IniFile::Entry>;

    enum class Error {
        None,
        UnknownKey,
        Fixed,
        TooLong,
        NotLatin1,
        LineBreak,
        Guiche,
        GuicheFixo, // a change of the counter's letter
        MoneyKinds,
        Cabecalho,
        FolderMissing,
        FolderNotWritable,
        FileFolderMissing,
        OwnFile, // a file option naming the database, Config.ini, a log, a copy or a non-file
        Juros,
        Modelo,
        Flag,
        Digits,
        Number,
        Skin
    };
    struct Problem {
        Error error = Error::None;
        QString section;
        QString key;
        QString value;
        QString detail; // what the skin check found
    };
    struct Result {
        std::optional<Problem> problem;
        bool written = false;
        bool ok() const { return !problem && written; }
    };

    // The stored value of every key of the catalogue, in its order.
    static Values load(const QString& iniPath);
    static QString value(const Values& values, const QString& section, const QString& key);

    // The first value that breaks its key's rule; values are taken as they would be stored.
    // A folder being prepared (no database yet) takes its counter's letter from the options;
    // afterwards the letter changes only through `guiche assumir`.
    enum class Setup { Ordinary, NewFolder };
    static std::optional<Problem> check(const AppContext& ctx, const Values& values,
                                        Setup setup = Setup::Ordinary);
    static Result gravar(AppContext& ctx, const Values& values, Setup setup = Setup::Ordinary);

    // What is stored for a value: trimmed, folders with a trailing separator, the letter of the
    // counter and the printer model in their cases.
    static QString stored(OptionCatalog::Kind kind, const QString& value);
    // A relative path is taken inside the program's folder.
    static QString resolve(const AppContext& ctx, const QString& path);
    static QString withSeparator(const QString& folder);
    // [Print] cabecalho as the check box leaves it: off "0"; on keeps a header text already
    // there, else "1".
    static QString headerSwitch(bool on, const QString& current);
    static bool headerSwitchOn(const QString& current);

    static QString message(const Problem& p);
    // A Config.ini that could not be replaced: "Não foi possível gravar o arquivo <path>."
    static QString notWritten(const AppContext& ctx);
};
