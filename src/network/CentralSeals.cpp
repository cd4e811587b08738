#include "CentralSeals.h"

#include "AppContext.h"
#include "DirectCentral.h"
#include "clsMovimento.h"
#include "clsSeloRede.h"

#include <QHash>

namespace {
QString br(const QDate& d) {
    return d.toString(QStringLiteral("dd/MM/yyyy"));
}
} // namespace

CentralSeals::Conferencia CentralSeals::conferir(AppContext& ctx, DirectCentral& central,
                                                 std::optional<QDate> dia) {
    Conferencia c;
    const QString guiche = ctx.settings.guiche.trimmed();
    if (!central.ativa())
        return c;
    const auto naCentral = central.link().selos(guiche);
    const auto locais = clsSeloRede::encerrados(ctx.db);
    if (!naCentral || !locais)
        return c;
    c.consultada = true;
    QHash<QDate, QString> central1;
    for (const clsSeloRede& s : *naCentral)
        central1.insert(s.DIA, s.HASH);
    QHash<QDate, QString> aqui;
    for (const clsSeloRede::DiaEncerrado& d : *locais) {
        aqui.insert(d.dia, d.hash);
        if (dia && d.dia != *dia)
            continue;
        const auto it = central1.constFind(d.dia);
        if (it == central1.cend())
            c.semSelo << br(d.dia);
        else if (*it != d.hash)
            c.diferencas << QStringLiteral("%1: o selo deste banco (%2) não é o que a central "
                                           "recebeu (%3).")
                                .arg(br(d.dia), d.hash.left(16), it->left(16));
        else
            ++c.conferidos;
    }
    for (const clsSeloRede& s : *naCentral) {
        if ((dia && s.DIA != *dia) || aqui.contains(s.DIA))
            continue;
        // A day reopened here is sealed again when it closes; a day gone is not.
        clsMovimento mov(ctx.db);
        if (!mov.SQLSelectByDate(s.DIA))
            c.diferencas << QStringLiteral("%1: a central tem o selo deste dia (%2), que não "
                                           "está neste banco.")
                                .arg(br(s.DIA), s.HASH.left(16));
    }
    return c;
}
