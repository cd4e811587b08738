#include "OverdueHandler.h"

#include "AppContext.h"
#include "Clock.h"
#include "DateUtil.h"
#include "DialogPort.h"
#include "HolidayCalendar.h"

const QString OverdueHandler::kCaptionGuia = QStringLiteral("Guia Vencida");
const QStringList OverdueHandler::kLinhasGuia = {
    QStringLiteral("Guia com a data de vencimento vencida."), QStringLiteral("Deseja Continuar?")};

Acrescimos::IsHoliday OverdueHandler::holidays(AppContext& ctx) {
    return [&ctx](const QDate& d) { return HolidayCalendar(ctx.db).E_feriado(d); };
}

QStringList OverdueHandler::linhasAcrescimos(const Encargos& e, const QDate& today) {
    QStringList lines = {
        QStringLiteral("Vencimento: ") + DateUtil::br(e.vencimento),
        QStringLiteral("(+) Mora / Multa..................:R$ ") + e.multa.format(),
        QStringLiteral("(+) Outros Acrescimos.........:R$ ") + e.juros.format(),
        QStringLiteral("(=) Valor à Cobrar...............:R$ ") + e.total.format()};
    const qint64 days = e.vencimento.daysTo(today);
    if (days > 90)
        lines << QString::number(days) + QStringLiteral(" dias de atraso");
    return lines;
}

OverdueHandler::Outcome OverdueHandler::handle(AppContext& ctx, const QDate& vencimento,
                                               Money valor, bool comJuros, const QString& routine) {
    Outcome out;
    const QDate w = ctx.workingDate;
    const auto isHoliday = holidays(ctx);
    const QDate due = Acrescimos::vencimentoEfetivo(vencimento, w, isHoliday);
    out.encargos.vencimento = due;
    out.encargos.valor = out.encargos.total = valor;
    if (due >= w)
        return out;
    if (ctx.dialogs.notice(QStringLiteral("frmGuiavencida"), kCaptionGuia, kLinhasGuia,
                           DialogButtons::YesNo) != DialogAnswer::Yes) {
        out.refused = true;
        return out;
    }
    const auto e = Acrescimos::avaliar(vencimento, w, valor, comJuros,
                                       comJuros ? ctx.settings.juros : 0, isHoliday);
    if (!e) {
        out.failed = true;
        ctx.errors.report(
            routine, {6,
                      QStringLiteral("Encargos não calculados: vencimento anterior a %1, valor "
                                     "acima de %2 ou atraso grande demais.")
                          .arg(DateUtil::br(Acrescimos::kPrimeiroVencimento),
                               Money::maximum().formatCurrency()),
                      QStringLiteral("Tolvane")});
        return out;
    }
    out.encargos = *e;
    if (comJuros)
        ctx.dialogs.notice(QStringLiteral("frmAcrescimos"), QStringLiteral("Acréscimos"),
                           linhasAcrescimos(*e, ctx.clock.today()), DialogButtons::Ok);
    return out;
}
