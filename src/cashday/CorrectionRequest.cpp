#include "CorrectionRequest.h"

#include "SystemTexts.h"

namespace {
CorrectionRequest::Read refused(SystemText t) {
    return {std::nullopt, SystemTexts::notice(t)};
}
} // namespace

CorrectionRequest::Read CorrectionRequest::read(const AsTyped& typed) {
    bool filled = typed.idrecebe > 0;
    for (const auto* field : {&typed.tipo, &typed.autentica, &typed.codbarra, &typed.valor})
        filled = filled && !(*field && (*field)->trimmed().isEmpty());
    if (!filled)
        return refused(SystemText::CamposObrigatorios);
    CorrectionRequest r;
    r.idrecebe = typed.idrecebe;
    r.motivo = typed.motivo;
    bool ok = true;
    if (typed.tipo) {
        r.tipo = typed.tipo->trimmed().toInt(&ok);
        if (!ok)
            return refused(SystemText::TipoNaoCadastrado);
    }
    if (typed.autentica) {
        r.autentica = typed.autentica->trimmed().toLongLong(&ok);
        if (!ok)
            return refused(SystemText::AutenticaInvalida);
    }
    if (typed.codbarra)
        r.codbarra = typed.codbarra->trimmed();
    if (typed.valor) {
        r.valor = Money::parseTyped(typed.valor->trimmed());
        if (!r.valor)
            return refused(SystemText::ValorNaoNumero);
    }
    return {r, {}};
}
