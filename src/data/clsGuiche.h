#pragma once

#include <QString>

class clsDataAccess;

// The one row of Guiche: the counter (`[Export] guiche`) that owns this database, recorded on
// its first use.
class clsGuiche {
public:
    explicit clsGuiche(clsDataAccess& db) : m_db(&db) {}

    QString GUICHE;
    QString DESDE; // the day it was recorded, "AAAA-MM-DD"

    bool SQLSelect(); // false when no counter was recorded yet (or the read failed)
    bool SQLInsert();
    bool gravar(); // the owner replaced (or recorded), in one transaction

private:
    clsDataAccess* m_db;
};
