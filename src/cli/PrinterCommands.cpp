// Commands that try the configured authenticating printer (impressora fita, autenticar, status)
// and list the day's documents it never confirmed as stamped (impressora pendentes).
#include "ActLog.h"
#include "AppContext.h"
#include "CliArgs.h"
#include "CliCommand.h"
#include "CliSupport.h"
#include "CounterSession.h"
#include "DateUtil.h"
#include "LooseStamp.h"
#include "PrinterService.h"
#include "ScriptedDialogPort.h"
#include "SystemTexts.h"
#include "Transaction.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTextStream>

namespace {

// A setting the printer cannot work with (an unknown model or port, a modo that is neither 0
// nor 1) is said plainly, never left to silence.
int refuseMisconfigured(CliEnv& e, PrinterService& p) {
    const QString problem = p.problemaConfiguracao();
    if (problem.isEmpty())
        return -1;
    e.err << problem << "\n";
    return ExitRefused;
}

int refuseDisabled(CliEnv& e, PrinterService& p) {
    if (int rc = refuseMisconfigured(e, p); rc >= 0)
        return rc;
    if (p.habilitada())
        return -1;
    e.err << "A autenticadora está desativada no Config.ini ([Print] modo diferente de 1): nada "
             "foi impresso.\n";
    return ExitRefused;
}

int afterPrinting(CliEnv& e, int shownBefore) {
    auto* dialogs = dynamic_cast<ScriptedDialogPort*>(&e.ctx.dialogs);
    return dialogs && dialogs->shown().size() > shownBefore ? ExitRefused : ExitOk;
}

int shownCount(CliEnv& e) {
    auto* dialogs = dynamic_cast<ScriptedDialogPort*>(&e.ctx.dialogs);
    return dialogs ? int(dialogs->shown().size()) : 0;
}

int fita(CliEnv& e) {
    if (e.args.positional.size() != 1) {
        e.err << "Uso: tolvane impressora fita TEXTO\n";
        return ExitUsage;
    }
    PrinterService p(e.ctx);
    if (int rc = refuseDisabled(e, p); rc >= 0)
        return rc;
    const int before = shownCount(e);
    p.abrirPorta();
    p.ImprimeAutenticadora(PrinterOperation::Imprimir, p.modelo(), e.args.positional.first());
    p.fecharPorta(true);
    return afterPrinting(e, before);
}

bool recordStamp(CliEnv& e) {
    Transaction tx(e.ctx.db);
    if (tx.ok() &&
        ActLog::gravar(e.ctx, Act::AutenticarAvulso, ActLog::Acao::TextoLivre, QString(), 0) &&
        tx.commit())
        return true;
    e.err << SystemTexts::text(SystemText::AutenticacaoNaoRegistrada) << "\n";
    return false;
}

int autenticar(CliEnv& e) {
    if (e.args.positional.size() != 1) {
        e.err << "Uso: tolvane impressora autenticar TEXTO [--espera MS]\n";
        return ExitUsage;
    }
    PrinterService p(e.ctx);
    if (e.args.has(QStringLiteral("espera"))) {
        bool ok = false;
        const int ms = e.args.value(QStringLiteral("espera")).toInt(&ok);
        if (!ok || ms <= 0 || ms > 600000) {
            e.err << "--espera deve ser um número de milissegundos entre 1 e 600000.\n";
            return ExitUsage;
        }
        p.documentTimeoutMs = ms;
        p.quattroEsperaMs = ms;
    } else if (PrinterConfig::from(e.ctx).quattroEspera.trimmed().toInt() <= 0) {
        p.quattroEsperaMs = p.documentTimeoutMs; // a command never waits without end
    }
    if (int rc = refuseDisabled(e, p); rc >= 0)
        return rc;
    // A stamp of any text is an administrator's act: its people are recorded before it prints.
    if (!recordStamp(e))
        return ExitRefused;
    const int before = shownCount(e);
    p.abrirPorta();
    p.ImprimeAutenticadora(PrinterOperation::Autenticar, p.modelo(), e.args.positional.first());
    p.fecharPorta(true);
    return afterPrinting(e, before);
}

int status(CliEnv& e) {
    PrinterService p(e.ctx);
    if (int rc = refuseMisconfigured(e, p); rc >= 0)
        return rc;
    if (p.modelo() == PrinterModel::Txt) {
        e.out << "Modelo txt: não há autenticadora para consultar.\n";
        return ExitOk;
    }
    const PrinterStatus s = p.status();
    if (!s.answered) {
        e.err << QStringLiteral("A impressora não respondeu (%1, porta %2).\n")
                     .arg(e.ctx.settings.impressora, e.ctx.settings.porta);
        return ExitRefused;
    }
    auto yes = [](bool b) { return b ? QStringLiteral("sim") : QStringLiteral("não"); };
    e.out << QStringLiteral(
                 "modelo: %1\nporta: %2\nligada: %3\nsem papel: %4\ndocumento: %5\nbyte: 0x%6\n")
                 .arg(e.ctx.settings.impressora, e.ctx.settings.porta, yes(s.online),
                      yes(s.paperOut), yes(s.document))
                 .arg(s.raw, 2, 16, QLatin1Char('0'));
    return ExitOk;
}

QJsonObject pendenteJson(const clsAutenticacoes::Pendente& p) {
    return {{QStringLiteral("idrecebe"), p.idrecebe},
            {QStringLiteral("autentica"), p.autentica},
            {QStringLiteral("tipo"), p.tipo},
            {QStringLiteral("descricao"), p.descricao},
            {QStringLiteral("valor"), p.valor.format()},
            {QStringLiteral("codbarra"), p.codbarra},
            {QStringLiteral("gravado"), p.momento.toString(QStringLiteral("dd/MM/yyyy hh:mm:ss"))}};
}

int pendentes(CliEnv& e) {
    CounterSession s(e.ctx, nullptr);
    if (int rc = CliSupport::chooseDay(e, DateScreenLogic::Action::Consultar); rc >= 0)
        return rc;
    if (!s.day().consultar())
        return ExitRefused;
    const auto rows = s.pendentes();
    if (!rows) {
        e.err << SystemTexts::text(SystemText::PendentesIlegiveis) << "\n";
        return ExitRefused;
    }
    if (e.json) {
        QJsonArray list;
        for (const clsAutenticacoes::Pendente& p : *rows)
            list.append(pendenteJson(p));
        CliSupport::printJson(
            e, QJsonObject{{QStringLiteral("data"), DateUtil::br(s.day().movimento().MDATA)},
                           {QStringLiteral("movimento"), s.day().movimento().ID},
                           {QStringLiteral("pendentes"), list}});
        return ExitOk;
    }
    for (const clsAutenticacoes::Pendente& p : *rows)
        e.out << QStringLiteral("%1\t%2\t%3\t%4\t%5\n")
                     .arg(p.autentica, 4, 10, QLatin1Char('0'))
                     .arg(p.descricao, p.valor.format(),
                          p.momento.toString(QStringLiteral("dd/MM/yyyy hh:mm:ss")), p.codbarra);
    if (rows->isEmpty())
        e.out << QStringLiteral("Nenhum documento sem autenticação em %1.\n")
                     .arg(DateUtil::br(s.day().movimento().MDATA));
    return ExitOk;
}

} // namespace

void registerPrinterCommands(QList<CliCommand>& c) {
    c.append({{QStringLiteral("impressora"), QStringLiteral("fita")},
              QStringLiteral("impressora fita TEXTO"),
              QStringLiteral("imprime uma linha na fita da autenticadora do Config.ini"),
              {},
              CliCommand::Db::None,
              fita});
    c.last().act = Act::ImprimirFita;
    c.append({{QStringLiteral("impressora"), QStringLiteral("autenticar")},
              QStringLiteral("impressora autenticar TEXTO [--espera MS]"),
              QStringLiteral("autentica um documento (espera o documento até MS milissegundos)"),
              {},
              CliCommand::Db::Existing,
              autenticar});
    c.last().act = Act::AutenticarAvulso;
    c.append({{QStringLiteral("impressora"), QStringLiteral("status")},
              QStringLiteral("impressora status"),
              QStringLiteral("consulta a autenticadora configurada"),
              {},
              CliCommand::Db::None,
              status});
    c.last().act = Act::Consultar;
    c.append({{QStringLiteral("impressora"), QStringLiteral("pendentes")},
              QStringLiteral("impressora pendentes [--data DD/MM/AAAA] [--json]"),
              QStringLiteral("lista os documentos do dia que a autenticadora não confirmou como "
                             "autenticados, na ordem"),
              {},
              CliCommand::Db::ReadOnly,
              pendentes});
    c.last().act = Act::ConsultarDia;
}
