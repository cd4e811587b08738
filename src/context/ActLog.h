#pragma once

#include "Permissions.h"

#include <QString>

class AppContext;

// The acts table's row for an act that changes money or the record: the act's name from the
// permission table (with what it did to the row, when it can do several things), the row it
// wrote, the operator logged in and the administrator who allowed it when the act needs one.
// Written inside the caller's transaction, with the row it names: both or neither.
class ActLog {
public:
    enum class Acao { Unica, Inclusao, Alteracao, Exclusao, Senha, TextoLivre };

    static bool gravar(AppContext& ctx, Act act, Acao acao, const QString& tabela, qint64 chave);
    static bool gravar(AppContext& ctx, Act act, const QString& tabela, qint64 chave) {
        return gravar(ctx, act, Acao::Unica, tabela, chave);
    }
    // The name the row carries: "Usuários: inclusão".
    static QString nome(Act act, Acao acao);
};
