#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <optional>

class clsDataAccess;

// Who did an act and who allowed it: one chained row per act that changes money or the record,
// naming the row it wrote (table and key), the operator at the counter and the administrator
// who allowed it (empty when the act needed none).
class clsAtos {
public:
    struct Ato {
        QDateTime momento;
        QString ato; // the act's name in the permission table
        QString tabela;
        qint64 chave = 0;
        QString operador;
        QString autorizadoPor;
    };
    // Inside the caller's transaction, with the row it names.
    static bool gravar(clsDataAccess& db, const Ato& a);
    // The acts that name a row, oldest first; nullopt when the query failed.
    static std::optional<QList<Ato>> doRegistro(clsDataAccess& db, const QString& tabela,
                                                qint64 chave);
};
