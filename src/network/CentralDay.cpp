#include "CentralDay.h"

#include "AppContext.h"
#include "CentralConfig.h"
#include "CentralLink.h"
#include "SystemTexts.h"
#include "clsSeloRede.h"

std::optional<CentralDay> CentralDay::ler(AppContext& ctx, const QDate& dia, QString* why) {
    const CentralConfig config = CentralConfig::fromIni(ctx.iniPath());
    auto refuse = [why](const QString& text) {
        if (why)
            *why = text;
        return std::nullopt;
    };
    if (!config.configurada())
        return refuse(SystemTexts::text(SystemText::SemCentral));
    CentralLink link(ctx.errors, ctx.clock);
    // A day's codes may take longer than one duplicate check: ten time-outs at most.
    if (!link.conectar(config, config.tempoMs * 10) || !link.ativa())
        return refuse(link.problema().isEmpty() ? SystemTexts::text(SystemText::CentralNaoRespondeu)
                                                : link.problema());
    const auto rows = clsRecebimentos1::doDia(link.db(), dia);
    if (!rows)
        return refuse(SystemTexts::text(SystemText::RecebimentosCentralIlegiveis));
    CentralDay day;
    day.recebimentos = *rows;
    // Without the seals the codes still stand; each counter's seal is then shown as unknown.
    day.selados = clsSeloRede::doDia(link.db(), dia);
    return day;
}
