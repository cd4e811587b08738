#pragma once

#include <QList>
#include <QString>
#include <optional>

class clsDataAccess;

// One operator of Usuarios. SENHA holds the salted hash, never the password itself.
class clsUsuarios {
public:
    explicit clsUsuarios(clsDataAccess& db) : m_db(&db) {}

    qint32 ID = 0;
    QString NOME;
    QString SENHA; // a stored hash (PasswordHash::hash); empty on an update keeps the old one
    QString TIPO;  // "USER" or "ADM"
    qint16 ATIVO = 1;

    bool SQLSelect(qint32 id);
    // Mode 1 inserts (ID read back); any other mode updates the row ID.
    bool SQLInsert(int mode);
    bool SQLDelete();

    // Every operator, ordered by name; nullopt when the read failed (logged).
    static std::optional<QList<clsUsuarios>> listar(clsDataAccess& db);
    // Replaces the stored hash of operator `id` when it still is `from` (not changed meanwhile).
    static bool replaceHash(clsDataAccess& db, qint32 id, const QString& from, const QString& to);

private:
    clsDataAccess* m_db; // a pointer so rows can be copied
};
