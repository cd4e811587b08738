// Loose documents: autenticar stamps one (an administrator's act, recorded), autenticacoes
// lists what was stamped and whether the printer confirmed it.
#include "AdminGuard.h"
#include "AppContext.h"
#include "CliArgs.h"
#include "CliCommand.h"
#include "CliSupport.h"
#include "DateUtil.h"
#include "LooseStamp.h"
#include "PrinterService.h"
#include "SystemTexts.h"
#include "clsAutenticacaoAvulsa.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTextStream>

namespace {

int autenticar(CliEnv& e) {
    if (e.args.positional.size() != 1) {
        e.err << "Uso: tolvane autenticar VALOR [--data DD/MM/AAAA] [--json]\n";
        return ExitUsage;
    }
    const auto dia = CliSupport::workingDate(e);
    if (!dia)
        return ExitUsage;
    e.ctx.workingDate = *dia;
    PrinterService printer(e.ctx);
    if (const QString problem = printer.problemaConfiguracao(); !problem.isEmpty()) {
        e.err << problem << "\n";
        return ExitRefused;
    }
    const LooseStamp::Resultado r = LooseStamp::autenticar(
        e.ctx, printer, Money::parseTyped(e.args.positional.first()), e.ctx.autorizadoPor);
    if (r.outcome != LooseStamp::Outcome::Registrada) {
        e.err << r.notice().text << "\n";
        return r.outcome == LooseStamp::Outcome::ValorInvalido ? ExitUsage : ExitRefused;
    }
    if (e.json)
        CliSupport::printJson(e, QJsonObject{{QStringLiteral("id"), r.id},
                                             {QStringLiteral("texto"), r.texto},
                                             {QStringLiteral("confirmada"), r.confirmada}});
    else if (r.confirmada)
        e.out << QStringLiteral("Autenticado: %1\n").arg(r.texto);
    if (!r.confirmada)
        e.err << SystemTexts::text(SystemText::AutenticacaoNaoConfirmada) << "\n";
    return r.confirmada ? ExitOk : ExitRefused;
}

QJsonObject stampJson(const clsAutenticacaoAvulsa& a) {
    return {{QStringLiteral("id"), a.ID},
            {QStringLiteral("momento"), a.MOMENTO.toString(QStringLiteral("dd/MM/yyyy hh:mm:ss"))},
            {QStringLiteral("dia"), DateUtil::br(a.DIA)},
            {QStringLiteral("valor"), a.VALOR.format()},
            {QStringLiteral("texto"), a.TEXTO},
            {QStringLiteral("guiche"), a.GUICHE},
            {QStringLiteral("operador"), a.OPERADOR},
            {QStringLiteral("administrador"), a.ADMINISTRADOR},
            {QStringLiteral("confirmada"), a.CONFIRMADA}};
}

int autenticacoes(CliEnv& e) {
    std::optional<QDate> dia;
    if (e.args.has(QStringLiteral("data")) && !(dia = CliSupport::workingDate(e)))
        return ExitUsage;
    const auto rows = clsAutenticacaoAvulsa::listar(e.ctx.db, dia);
    if (!rows)
        return ExitRefused;
    if (e.json) {
        QJsonArray list;
        for (const clsAutenticacaoAvulsa& a : *rows)
            list.append(stampJson(a));
        CliSupport::printJson(e, QJsonObject{{QStringLiteral("total"), int(rows->size())},
                                             {QStringLiteral("autenticacoes"), list}});
        return ExitOk;
    }
    for (const clsAutenticacaoAvulsa& a : *rows)
        e.out << QStringLiteral("%1\t%2\t%3\t%4\t%5\t%6\n")
                     .arg(a.MOMENTO.toString(QStringLiteral("dd/MM/yyyy hh:mm:ss")),
                          a.VALOR.format(),
                          a.CONFIRMADA ? QStringLiteral("impressa")
                                       : QStringLiteral("NÃO CONFIRMADA"),
                          a.OPERADOR, a.ADMINISTRADOR, a.TEXTO);
    e.out << QStringLiteral("%1 autenticação(ões) avulsa(s).\n").arg(rows->size());
    return ExitOk;
}

} // namespace

void registerLooseStampCommands(QList<CliCommand>& c) {
    c.append({{QStringLiteral("autenticar")},
              QStringLiteral("autenticar VALOR [--data DD/MM/AAAA] [--json]"),
              QStringLiteral("autentica um documento avulso na autenticadora e o registra (com "
                             "quem autorizou e se a impressora confirmou)"),
              {},
              CliCommand::Db::Existing,
              autenticar});
    c.last().act = Act::AutenticarAvulso;
    c.append({{QStringLiteral("autenticacoes")},
              QStringLiteral("autenticacoes [--data DD/MM/AAAA] [--json]"),
              QStringLiteral("lista as autenticações avulsas (do dia do caixa, com --data): "
                             "quando, valor, se a impressora confirmou, operador e "
                             "administrador; senha do administrador"),
              {},
              CliCommand::Db::ReadOnly,
              autenticacoes});
    c.last().act = Act::Auditar;
}
