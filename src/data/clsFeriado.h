#pragma once

#include <QDate>
#include <QList>
#include <optional>

class clsDataAccess;

// One holiday (Feriados).
class clsFeriado {
public:
    explicit clsFeriado(clsDataAccess& db) : m_db(&db) {}

    qint32 ID = 0;
    QDate FERIADO;

    bool SQLSelect(qint32 id);
    bool Incluir();
    bool excluir(qint32 id); // the row `id` only
    static bool excluirTodos(clsDataAccess& db);

    // Every holiday, by date (the holiday screen and `feriado listar`).
    static std::optional<QList<clsFeriado>> listar(clsDataAccess& db);
    // How many rows hold this date (a date entered twice is possible only outside the program).
    static std::optional<int> contar(clsDataAccess& db, const QDate& day);

private:
    clsDataAccess* m_db;
};
