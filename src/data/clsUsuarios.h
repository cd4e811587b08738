#pragma once

#include <QList>
#include <QString>
#include <optional>

class clsDataAccess;

// The operator's type; the column holds "USER" or "ADM".
enum class UserType { User, Admin };

// One operator of Usuarios. SENHA holds the salted hash, never the password itself.
class clsUsuarios {
public:
    explicit clsUsuarios(clsDataAccess& db) : m_db(&db) {}

    qint32 ID = 0;
    QString NOME;
    QString SENHA; // a stored hash (PasswordHash::hash); empty on an update keeps the old one
    QString TIPO;  // "USER" or "ADM"
    qint16 ATIVO = 1;

    UserType tipo() const { return tipoDe(TIPO); }
    void setTipo(UserType t) { TIPO = texto(t); }
    // Only exactly "ADM" is an administrator; anything else is an ordinary operator.
    static UserType tipoDe(const QString& tipo);
    static QString texto(UserType t);
    // nullopt when the text is neither "USER" nor "ADM" (what the screens and commands type).
    static std::optional<UserType> lerTipo(const QString& tipo);

    bool SQLSelect(qint32 id);
    bool inserirNovo(); // ID read back
    bool alterar();     // the row ID; an empty SENHA keeps the stored hash
    bool SQLDelete();

    // Every operator, ordered by name; nullopt when the read failed (logged).
    static std::optional<QList<clsUsuarios>> listar(clsDataAccess& db);
    // Replaces the stored hash of operator `id` when it still is `from` (not changed meanwhile).
    static bool replaceHash(clsDataAccess& db, qint32 id, const QString& from, const QString& to);

private:
    clsDataAccess* m_db; // a pointer so rows can be copied
};
