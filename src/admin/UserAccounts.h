#pragma once

#include "clsUsuarios.h"

#include <QList>
#include <QString>
#include <optional>

class AppContext;

// The operators as the users screen and the `usuario` commands keep them. Passwords are stored
// only as hashes; a password already used by another operator is refused, since the login
// admits exactly one match. The refusals' wording belongs to the callers.
class UserAccounts {
public:
    static constexpr int kMinPassword = 6;

    enum class Field { None, NOME, SENHA, TIPO };
    enum class Outcome {
        Saved,
        MissingField,  // `field` names it: name, type, or the password of a new operator
        InvalidType,   // neither "USER" nor "ADM"
        NotFound,      // update of an operator that is not there
        QuoteRefused,  // a single quote in the name or password (logged)
        TextRefused,   // a name the files cannot hold (control characters, width): `message`
        ShortPassword, // fewer than kMinPassword characters
        PasswordInUse, // another operator already has this password
        NameInUse,     // another operator has this name, whatever its case
        WriteFailed    // the database refused; already reported
    };
    struct Result {
        Outcome outcome = Outcome::Saved;
        Field field = Field::None;
        qint32 id = 0;        // the operator's key after a save
        QString message = {}; // TextRefused: what to show
        bool ok() const { return outcome == Outcome::Saved; }
    };

    struct Input {
        std::optional<qint32> id; // empty for a new operator
        QString nome;
        QString senha; // as typed; empty on an update keeps the current one
        QString tipo;
        bool ativo = true;
    };

    // Every rule of a save, without writing: the screen calls it before asking for the
    // confirmation of the password.
    static Result check(AppContext& ctx, const Input& input);
    static Result gravar(AppContext& ctx, const Input& input);

    enum class DeleteOutcome { Deleted, NotFound, LastAdministrator, Failed };
    // Deleting the only administrator is allowed once the caller has warned about it and
    // passes `lastAdministratorConfirmed`; until then the answer is LastAdministrator.
    static DeleteOutcome excluir(AppContext& ctx, qint32 id, bool lastAdministratorConfirmed);
    static bool isLastAdministrator(AppContext& ctx, qint32 id);

    static std::optional<QList<clsUsuarios>> listar(AppContext& ctx);
};
