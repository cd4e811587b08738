#pragma once

#include <QList>
#include <QString>

// Every setting of Config.ini the program knows, with the rule its value must follow. The keys
// of the options screen come first, in the order the screen writes them.
class OptionCatalog {
public:
    enum class Kind {
        Text,         // free text
        Flag,         // "0" or "1"
        Folder,       // a folder that exists and can be written (empty: the program's folder)
        File,         // a file whose folder exists and can be written (empty: not used)
        Guiche,       // one letter or digit; changed only by `guiche assumir`, never here
        MoneyKinds,   // codes of kinds of money separated by ";", "," or blanks (may be empty)
        Cabecalho,    // exactly three characters
        Juros,        // "1" or "2"
        Modelo,       // "bematech", "quattro" or "txt"
        Digits,       // digits only (may be empty)
        Number,       // a whole number (may be empty)
        Skin,         // empty or a style sheet file that loads
        UpdateFolder, // kept with a trailing separator; may be out of reach when saved
        Secret,       // a password: written, never shown back
        Fixed         // shown but never written by the options (money or the database link)
    };

    struct Key {
        QString section;
        QString key;
        Kind kind;
        bool onScreen; // written by the options screen
    };

    static const QList<Key>& all();
    static const Key* find(const QString& section, const QString& key); // case-insensitive
    static QList<Key> screenKeys();
};
