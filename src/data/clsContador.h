#pragma once

#include <QtGlobal>

class clsDataAccess;

// One row of Contador: the last movement number given out in a year.
class clsContador {
public:
    explicit clsContador(clsDataAccess& db) : m_db(&db) {}

    qint16 ANO = 0;
    qint16 CONTADOR = 0;

    bool SQLSelect(int year);
    bool SQLInsert();
    bool SQLUpdate();
    bool SQLDelete();

private:
    clsDataAccess* m_db; // a pointer so rows can be copied
};
