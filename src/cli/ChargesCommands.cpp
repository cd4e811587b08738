// encargos: the overdue decision and the charges of one guide whose kind charges interest.
#include "Acrescimos.h"
#include "AppContext.h"
#include "CliArgs.h"
#include "CliCommand.h"
#include "CliSupport.h"
#include "DateUtil.h"
#include "HolidayCalendar.h"

#include <QJsonObject>
#include <QTextStream>

namespace {

int encargos(CliEnv& e) {
    const auto v = DateUtil::parseBr(e.args.value(QStringLiteral("vencimento")));
    const auto w = DateUtil::parseBr(e.args.value(QStringLiteral("data")));
    if (!v || !w) {
        e.err << "Informe --vencimento e --data como DD/MM/AAAA (datas válidas).\n";
        return ExitUsage;
    }
    const QString valorTexto = e.args.value(QStringLiteral("valor")).trimmed();
    const auto valor = Money::parse(valorTexto);
    if (!valor || valor->isNegative()) {
        e.err << QStringLiteral("Valor inválido: \"%1\" (use 1.234,56, sem sinal).\n")
                     .arg(valorTexto);
        return ExitUsage;
    }
    int esquema = e.ctx.settings.juros;
    if (e.args.has(QStringLiteral("esquema"))) {
        bool ok = false;
        esquema = e.args.value(QStringLiteral("esquema")).toInt(&ok);
        if (!ok) {
            e.err << "O esquema deve ser 1 (1% ao mês + 0,33% ao dia), 2 (1% ao mês + 2%) ou 0 "
                     "(sem juros).\n";
            return ExitUsage;
        }
    }
    if (esquema != 1 && esquema != 2)
        e.err << QStringLiteral("Esquema %1: sem juros nem multa.\n").arg(esquema);
    HolidayCalendar cal(e.ctx.db);
    const auto r = Acrescimos::avaliar(*v, *w, *valor, true, esquema,
                                       [&cal](const QDate& d) { return cal.E_feriado(d); });
    if (!r) {
        e.err << QStringLiteral("Encargos não calculados: o vencimento deve ser de %1 em diante, "
                                "o valor até %2 e o total não pode passar desse máximo.\n")
                     .arg(DateUtil::br(Acrescimos::kPrimeiroVencimento), Money::maximum().format());
        return ExitRefused;
    }
    QJsonObject o{{QStringLiteral("vencimento"), DateUtil::br(r->vencimento)}};
    CliSupport::addEncargos(o, *r);
    if (e.json) {
        CliSupport::printJson(e, o);
        return ExitOk;
    }
    e.out << QStringLiteral(
                 "Vencimento: %1%2\nDias de Atraso..: %3\nMeses de Atraso.: %4\n"
                 "(+) Mora / Multa..................:R$ %5\n(+) Outros Acrescimos.........:R$ %6\n"
                 "(=) Valor à Cobrar...............:R$ %7\n")
                 .arg(DateUtil::br(r->vencimento),
                      r->vencida ? QString() : QStringLiteral(" (em dia)"))
                 .arg(r->dias)
                 .arg(r->meses)
                 .arg(r->multa.format(), r->juros.format(), r->total.format());
    return ExitOk;
}

} // namespace

void registerChargesCommands(QList<CliCommand>& c) {
    c.append({{QStringLiteral("encargos")},
              QStringLiteral("encargos --vencimento DD/MM/AAAA --data DD/MM/AAAA --valor VALOR "
                             "[--esquema N] [--json]"),
              QStringLiteral("juros e multa de uma guia vencida (esquema padrão: [Opcoes] juros)"),
              {},
              CliCommand::Db::ReadOnly,
              encargos});
    c.last().act = Act::Consultar;
}
