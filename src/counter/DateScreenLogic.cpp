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
        ctx.dialogs.critical(
            SystemTexts::aviso(),
            QStringLiteral("A data atual não pode ser menor que esta selecionada!!"));
        return false;
    }
    if (action == Action::Consultar) {
        if (!DayMovement::of(ctx.db, chosen)) {
            ctx.dialogs.warn(SystemTexts::aviso(),
                             QStringLiteral("Não foi encontrado nenhum movimento com essa data!!"));
            return false;
        }
    } else if (chosen != today) {
        ctx.dialogs.warn(
            SystemTexts::aviso(),
            QStringLiteral(
                "Data do Computador diferente da data de abertura do caixa!! Verifique."));
        ctx.dialogs.warn(SystemTexts::aviso(),
                         QStringLiteral("O caixa será aberto com a data selecionada."));
    }
    ctx.workingDate = chosen;
    return true;
}
