#include "PeriodReport.h"

#include "AppContext.h"
#include "Clock.h"
#include "DayMovement.h"
#include "SystemTexts.h"
#include "clsMovimento.h"
#include "clsRecebimentos.h"

#include <algorithm>

namespace {

void merge(ReceiptFigures::Kind& into, const ReceiptFigures::Kind& k) {
    into.quantidade += k.quantidade;
    into.valorFace += k.valorFace;
    into.encargos += k.encargos;
    into.total += k.total;
}

void mergeKind(QList<ReceiptFigures::Kind>& list, const ReceiptFigures::Kind& k) {
    auto it = std::find_if(list.begin(), list.end(),
                           [&](const ReceiptFigures::Kind& x) { return x.idcod == k.idcod; });
    if (it == list.end()) {
        ReceiptFigures::Kind fresh;
        fresh.idcod = k.idcod;
        fresh.descricao = k.descricao;
        list.append(fresh);
        it = list.end() - 1;
    }
    merge(*it, k);
}

} // namespace

std::optional<PeriodReport> PeriodReport::montar(AppContext& ctx, const QDate& de, const QDate& ate,
                                                 QString* why) {
    auto refuse = [why](const QString& text) {
        if (why)
            *why = text;
        return std::nullopt;
    };
    if (!de.isValid() || !ate.isValid() || ate < de)
        return refuse(SystemTexts::text(SystemText::DataFinalAnterior));
    if (de.daysTo(ate) >= kMaxDias)
        return refuse(SystemTexts::text(SystemText::PeriodoLongo).arg(kMaxDias));
    PeriodReport p;
    p.prefeitura = ctx.settings.pref.trimmed();
    p.guiche = ctx.settings.guiche.trimmed();
    p.de = de;
    p.ate = ate;
    p.emitidoPor = ctx.userName;
    p.emitidoEm = ctx.clock.now();
    for (QDate d = de; d <= ate; d = d.addDays(1)) {
        const auto found = DayMovement::of(ctx.db, d);
        if (!found)
            continue;
        const clsMovimento& mov = *found;
        const auto receipts = clsRecebimentos::listarMovimento(ctx.db, mov.ID);
        if (!receipts)
            return refuse(SystemTexts::text(SystemText::RecebimentosDeIlegiveis)
                              .arg(d.toString(QStringLiteral("dd/MM/yyyy"))));
        Day day{mov.MDATA, mov.MOV, mov.STATUS, ReceiptFigures::of(*receipts)};
        for (const ReceiptFigures::Kind& k : day.figuras.porTipo)
            mergeKind(p.porTipo, k);
        merge(p.todos, day.figuras.todos);
        for (size_t h = 0; h < p.porHora.size(); ++h)
            merge(p.porHora[h], day.figuras.porHora[h]);
        p.dias.append(day);
    }
    std::sort(p.porTipo.begin(), p.porTipo.end(),
              [](const auto& a, const auto& b) { return a.idcod < b.idcod; });
    return p;
}
