#pragma once

#include <QDate>

class clsDataAccess;

// One holiday (Feriados).
class clsFeriado {
public:
    explicit clsFeriado(clsDataAccess& db) : m_db(&db) {}

    qint32 ID = 0;
    QDate FERIADO;

    bool Incluir();
    // One true: the row ID; false: every holiday.
    bool Excluir(bool one);

private:
    clsDataAccess* m_db;
};
