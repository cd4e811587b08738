#include "UpdateOffer.h"
#include "SystemTexts.h"

#include "AppContext.h"
#include "DialogPort.h"
#include "UpdateCheck.h"

bool UpdateOffer::run(AppContext& ctx, int waitMs) {
    const UpdateCheck::Result r =
        UpdateCheck::checkWithin(UpdateCheck::folder(ctx), UpdateCheck::runningVersion(), waitMs);
    if (!r.newer() || !askNotice(ctx.dialogs, SystemTexts::notice(SystemText::PerguntaAtualizacao)))
        return false;
    QString error;
    if (UpdateCheck::startUpdater(ctx, &error))
        return true;
    ctx.dialogs.critical(SystemTexts::aviso(), error);
    ctx.errors.append(QStringLiteral("Atualização"), {0, error, QStringLiteral("UpdateOffer")});
    return false;
}
