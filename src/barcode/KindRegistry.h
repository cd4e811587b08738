#pragma once

#include "clsCodBarra.h"

#include <QList>
#include <QString>
#include <optional>

class AppContext;

// The kinds of guide and item (CodBarra) as the registry screen and the `tipo` commands keep
// them: every rule of a save or a deletion is here, the wording of each refusal at the caller.
class KindRegistry {
public:
    enum class Mode { Insert, Update };
    enum class Field { None, IDCOD, IDTIPO, DESCRICAO, PADRAO, JUROS, BLOQUEIO };
    enum class Outcome {
        Saved,
        MissingField,   // `field` names the first empty one
        CodeOutOfRange, // 1 to 99 entry items, 100 to 999 exit items
        InvalidFlags,   // PADRAO one character, JUROS and BLOQUEIO "S" or "N"
        CodeInUse,      // insert of a code already registered
        LayoutInUse,    // IDTIPO of another kind: `message` names it
        NotFound,       // update of a code that is not registered
        TextRefused,    // a description the files cannot hold: `message` says why
        WriteFailed     // the data layer refused (a quote) or failed; already reported
    };
    struct Result {
        Outcome outcome = Outcome::Saved;
        Field field = Field::None;
        QString message = {};
        bool ok() const { return outcome == Outcome::Saved; }
    };

    // What the operator typed; the texts are trimmed and the three letters upper-cased here.
    struct Input {
        std::optional<int> idcod; // empty when the code was not given
        QString idtipo;
        QString descricao;
        QString padrao;
        QString juros;
        QString bloqueio;
        QString codbanco;
    };

    static Result gravar(AppContext& ctx, const Input& input, Mode mode);

    // A kind named by receipts (or by cash items and count lines) stays: deleting it would
    // take its money out of every list and file that joins the kinds.
    enum class DeleteOutcome { Deleted, NotFound, InUse, Failed };
    static DeleteOutcome excluir(AppContext& ctx, int idcod);

    // The check without writing (the screen calls it to put the focus on the field at fault).
    static Result check(const Input& input);
    // The code as lists show it: "005", "120".
    static QString codeText(int idcod);
};
