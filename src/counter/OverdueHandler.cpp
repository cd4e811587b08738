#include "OverdueHandler.h"

#include "AppContext.h"
#include "Clock.h"
#include "DateUtil.h"
#include "DialogPort.h"
#include "HolidayCalendar.h"

const QString OverdueHandler::kFormGuia = QStringLiteral("frmGuiavencida");
const QString OverdueHandler::kCaptionGuia = QStringLiteral("Guia Vencida");
const QStringList OverdueHandler::kLinhasGuia = {
    QStringLiteral("Guia com a data de vencimento vencida."), QStringLiteral("Deseja Continuar?")};

QStringList OverdueHandler::linhasGuia(const QDate& vencimento, Money valor) {
    return {kLinhasGuia.first(), QStringLiteral("Vencimento: ") + DateUtil::br(vencimento),
            QStringLiteral("Valor: ") + valor.formatCurrency(), kLinhasGuia.last()};
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

bool OverdueHandler::vencida(AppContext& ctx, const QDate& vencimento, QDate* efetivo) {
    HolidayCalendar calendar(ctx.db);
    const QDate due =
        Acrescimos::vencimentoEfetivo(vencimento, ctx.workingDate, calendar.isHoliday());
    if (efetivo)
        *efetivo = due;
    return due < ctx.workingDate;
}

OverdueHandler::Charges OverdueHandler::cobrar(AppContext& ctx, const QDate& vencimento,
                                               Money valor, bool comJuros, const QString& routine) {
    Charges out;
    HolidayCalendar calendar(ctx.db);
    const auto e = Acrescimos::avaliar(vencimento, ctx.workingDate, valor, comJuros,
                                       comJuros ? ctx.settings.juros : 0, calendar.isHoliday());
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
