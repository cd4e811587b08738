#pragma once

#include "Money.h"
#include "Notice.h"

#include <QString>
#include <optional>

// What a receipt becomes.
struct CorrectionValues {
    qint16 tipo = 0;
    qint32 autentica = 0;
    QString codbarra;
    Money valor;
};

// A change of a receipt as the core takes it: a field left out (nullopt) keeps the receipt's
// value. The screen and the command read it from what the operator typed with `read`.
struct CorrectionRequest {
    qint32 idrecebe = 0;
    std::optional<int> tipo;
    std::optional<qint64> autentica;
    std::optional<QString> codbarra;
    std::optional<Money> valor;
    QString motivo;

    // The fields as typed; a field not offered is nullopt.
    struct AsTyped {
        qint32 idrecebe = 0;
        std::optional<QString> tipo;
        std::optional<QString> autentica;
        std::optional<QString> codbarra;
        std::optional<QString> valor;
        QString motivo;
    };
    struct Read;
    // A blank field, or a kind, number or amount that is not a number, is refused here;
    // what the database must say (the kind exists, the number is free) is the core's.
    static Read read(const AsTyped& typed);
};

struct CorrectionRequest::Read {
    std::optional<CorrectionRequest> request;
    Notice refusal; // the system's text when what was typed is not a request
};
