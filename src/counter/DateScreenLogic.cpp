#include "DateScreenLogic.h"
#include "DayMovement.h"
#include "SystemTexts.h"

#include "AppContext.h"
#include "Clock.h"
#include "DialogPort.h"
#include "Login.h"
#include "clsMovimento.h"

bool DateScreenLogic::proceed(AppContext& ctx, const QString& senha, const QDate& chosen,
                              Action action) {
    if (!Login::Valida_senha(ctx, senha)) {
        tell(ctx.dialogs, SystemTexts::notice(SystemText::SenhaInvalida));
        return false;
    }
    return checkDate(ctx, chosen, action);
}

bool DateScreenLogic::checkDate(AppContext& ctx, const QDate& chosen, Action action) {
    const QDate today = ctx.clock.today();
    if (!chosen.isValid() || chosen > today) {
        tell(ctx.dialogs, SystemTexts::notice(SystemText::DataMaiorQueHoje));
        return false;
    }
    if (action == Action::Consultar) {
        if (!DayMovement::of(ctx.db, chosen)) {
            tell(ctx.dialogs, SystemTexts::notice(SystemText::NenhumMovimentoNaData));
            return false;
        }
    } else if (chosen != today) {
        tell(ctx.dialogs, SystemTexts::notice(SystemText::DataDiferenteAbertura));
        tell(ctx.dialogs, SystemTexts::notice(SystemText::CaixaAbertoNaData));
    }
    ctx.workingDate = chosen;
    return true;
}
