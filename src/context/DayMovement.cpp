#include "DayMovement.h"

#include "AppContext.h"

std::optional<clsMovimento> DayMovement::of(clsDataAccess& db, const QDate& day) {
    clsMovimento mov(db);
    if (!day.isValid() || !mov.SQLSelectByDate(day))
        return std::nullopt;
    return mov;
}

std::optional<clsMovimento> DayMovement::ofWorkingDate(AppContext& ctx) {
    return of(ctx.db, ctx.workingDate);
}

std::optional<bool> DayMovement::isOpen(clsDataAccess& db, qint32 id) {
    clsMovimento mov(db);
    if (!mov.SQLSelect(id))
        return std::nullopt;
    return mov.aberto();
}
