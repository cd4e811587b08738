#include "ClosedDayTotals.h"

#include "clsMovimento.h"

std::optional<QList<ClosedDayTotals::Difference>>
ClosedDayTotals::conferir(clsDataAccess& db, std::optional<qint32> idMovimento) {
    const auto days = clsMovimento::encerrados(db);
    if (!days)
        return std::nullopt;
    QList<Difference> out;
    for (const clsMovimento& m : *days) {
        if (idMovimento && m.ID != *idMovimento)
            continue;
        const auto sums = clsMovimento::somarDia(db, m.ID, m.MDATA);
        if (!sums)
            return std::nullopt;
        const std::pair<Total, std::pair<Money, Money>> totals[] = {
            {Total::Arrecadado, {m.VALOR_ARRECADADO, sums->arrecadado}},
            {Total::Entrada, {m.ENTRADA, sums->entrada}},
            {Total::Saida, {m.SAIDA, sums->saida}}};
        for (const auto& [total, values] : totals)
            if (values.first != values.second)
                out.append({m.ID, m.MDATA, m.MOV, total, values.first, values.second});
    }
    return out;
}

QString ClosedDayTotals::coluna(Total total) {
    switch (total) {
    case Total::Arrecadado:
        return QStringLiteral("VALOR_ARRECADADO");
    case Total::Entrada:
        return QStringLiteral("ENTRADA");
    case Total::Saida:
        break;
    }
    return QStringLiteral("SAIDA");
}
