#include "NetworkDayReport.h"

#include "AppContext.h"
#include "CentralDay.h"
#include "DocumentValue.h"
#include "clsConflitoRede.h"
#include "clsPublicacaoRede.h"

#include <algorithm>

namespace {

NetworkDayReport::Counter& counterOf(NetworkDayReport& r, const QString& guiche) {
    for (NetworkDayReport::Counter& c : r.guiches)
        if (c.guiche == guiche)
            return c;
    NetworkDayReport::Counter c;
    c.guiche = guiche;
    r.guiches.append(c);
    return r.guiches.last();
}

} // namespace

std::optional<NetworkDayReport> NetworkDayReport::montar(AppContext& ctx, const QDate& dia,
                                                         QString* why) {
    const auto central = CentralDay::ler(ctx, dia, why);
    if (!central)
        return std::nullopt;
    NetworkDayReport r;
    r.data = dia;
    for (const clsRecebimentos1& row : central->recebimentos) {
        Counter& c = counterOf(r, row.GUICHE.trimmed());
        ++c.quantidade;
        c.valorDocumentos += DocumentValue::doCodigo(row.CODBARRA).value_or(Money());
        const QDateTime when = clsPublicacaoRede::momentFrom(row.MOMENTO);
        if (when.isValid() && (!c.ultimo.isValid() || when > c.ultimo))
            c.ultimo = when;
    }
    // This counter appears even on a day it published nothing: its queue may hold the day.
    Counter& own = counterOf(r, ctx.settings.guiche.trimmed());
    own.esteGuiche = true;
    if (const auto queue = clsPublicacaoRede::resumo(ctx.db))
        own.pendentes = queue->pendentes;
    if (const auto conflicts = clsConflitoRede::listar(ctx.db))
        own.conflitosAbertos = std::count_if(conflicts->begin(), conflicts->end(),
                                             [](const clsConflitoRede& c) { return !c.estornado; });
    // A counter that sealed the day without publishing a code still has its line.
    if (central->selados)
        for (const QString& g : *central->selados)
            counterOf(r, g);
    for (Counter& c : r.guiches)
        if (central->selados)
            c.selo = central->selados->contains(c.guiche) ? Selo::Recebido : Selo::Ausente;
    std::sort(r.guiches.begin(), r.guiches.end(),
              [](const Counter& a, const Counter& b) { return a.guiche < b.guiche; });
    return r;
}
