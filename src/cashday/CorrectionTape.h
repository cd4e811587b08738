#pragma once

#include "CorrectionResult.h"

class AppContext;
class clsAutenticadora;

// The tape lines of a correction, printed after it was recorded: a printer that fails does not
// undo what was recorded, it is told. When an administrator allowed the correction, a line
// names the operator and the administrator.
class CorrectionTape {
public:
    CorrectionTape(const AppContext& ctx, CounterPrinter* printer);

    // The one line of a reversal or of its undoing.
    void item(const clsRecebimentos& r, bool (clsAutenticadora::*linha)(), CorrectionResult& res);
    // A line for a changed amount, one for a changed kind (`tipo`, its description).
    void alteracao(const clsRecebimentos& antes, const clsRecebimentos& depois, const QString& tipo,
                   CorrectionResult& res);

private:
    // "OPER: ANA AUT: CHEFE".
    QString linhaPessoas() const;
    // The lines go to the tape, or "Erro na geração..." when one could not be composed.
    void imprimir(QStringList linhas, bool composta, CorrectionResult& res);

    const AppContext& m_ctx;
    CounterPrinter* m_printer;
};
