#include "DocumentStamp.h"

#include "AppContext.h"
#include "Clock.h"
#include "DateUtil.h"
#include "PrinterService.h"
#include "Settings.h"
#include "clsAutenticadora.h"

QString DocumentStamp::header(const QString& printCabecalho, const QString& mensagemCabecalho) {
    const QString v = printCabecalho.trimmed();
    if (v.isEmpty() || v == QLatin1String("0"))
        return {};
    return (v == QLatin1String("1") ? mensagemCabecalho.trimmed() : v).left(kHeaderWidth);
}

QString DocumentStamp::line(const QString& header, const QString& guiche, const QDate& date,
                            Money valor) {
    QString l;
    if (!header.isEmpty())
        l = header.left(kHeaderWidth) + QLatin1Char(' ');
    return l + clsAutenticadora::pad(guiche.trimmed(), 1) + QLatin1Char(' ') + DateUtil::br(date) +
           QStringLiteral("  ") + clsAutenticadora::right(valor.format(), kValueWidth) +
           QLatin1Char('R');
}

DocumentStamp::Outcome DocumentStamp::preparar(AppContext& ctx, const std::optional<Money>& valor,
                                               QString* text) {
    if (!valor || valor->isNegative() || valor->isZero() || valor->format().size() > kValueWidth)
        return Outcome::InvalidValue;
    if (!Settings::modoAutenticadora(PrinterConfig::from(ctx).modo))
        return Outcome::PrinterOff;
    const QDate day = ctx.workingDate.isValid() ? ctx.workingDate : ctx.clock.today();
    *text = line(header(ctx.option(QStringLiteral("Print"), QStringLiteral("cabecalho")),
                        ctx.settings.cabecalho),
                 ctx.settings.guiche, day, *valor);
    return Outcome::Sent;
}
