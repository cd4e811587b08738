// Commands of kinds of guide, holidays, the reading routine and typed lines.
#include "Acrescimos.h"
#include "AppContext.h"
#include "BarcodeReader.h"
#include "CliArgs.h"
#include "CliCommand.h"
#include "CliSupport.h"
#include "Clock.h"
#include "DateUtil.h"
#include "HolidayCalendar.h"
#include "KindRegistry.h"
#include "SystemTexts.h"
#include "TypedLine.h"
#include "TypedLineBatch.h"
#include "clsCodBarra.h"
#include "clsFeriado.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTextStream>

namespace {

int tipoGravar(CliEnv& e) {
    bool ok = false;
    const int id = e.args.value(QStringLiteral("idcod")).toInt(&ok);
    KindRegistry::Input in;
    if (ok)
        in.idcod = id;
    in.idtipo = e.args.value(QStringLiteral("idtipo"));
    in.descricao = e.args.value(QStringLiteral("descricao"));
    in.padrao = e.args.value(QStringLiteral("padrao"));
    in.juros = e.args.value(QStringLiteral("juros"));
    in.bloqueio = e.args.value(QStringLiteral("bloqueio"));
    in.codbanco = e.args.value(QStringLiteral("codbanco"));
    const bool alterar = e.args.has(QStringLiteral("alterar"));
    const auto r = KindRegistry::gravar(
        e.ctx, in, alterar ? KindRegistry::Mode::Update : KindRegistry::Mode::Insert);
    const QString code = KindRegistry::codeText(id);
    switch (r.outcome) {
    case KindRegistry::Outcome::Saved:
        e.out << QStringLiteral("Tipo %1 gravado.\n").arg(code);
        return ExitOk;
    case KindRegistry::Outcome::MissingField:
        e.err << SystemTexts::text(SystemText::CamposObrigatorios) << "\n";
        return ExitUsage;
    case KindRegistry::Outcome::CodeOutOfRange:
    case KindRegistry::Outcome::InvalidFlags:
        e.err << "Código de 1 a 999, padrão de uma letra, juros e bloqueio S ou N.\n";
        return ExitUsage;
    case KindRegistry::Outcome::NotFound:
        e.err << QStringLiteral("Tipo %1 não encontrado.\n").arg(code);
        return ExitRefused;
    case KindRegistry::Outcome::CodeInUse:
        e.err << QStringLiteral("O código %1 já existe (use --alterar).\n").arg(code);
        return ExitRefused;
    case KindRegistry::Outcome::TextRefused:
    case KindRegistry::Outcome::LayoutInUse:
        e.err << r.message << "\n";
        return ExitRefused;
    case KindRegistry::Outcome::WriteFailed:
        break;
    }
    e.err << "Erro ao gravar o tipo.\n";
    return ExitRefused;
}

int tipoListar(CliEnv& e) {
    const auto kinds = clsCodBarra::listar(e.ctx.db);
    if (!kinds)
        return ExitRefused;
    QJsonArray list;
    if (!e.json)
        e.out << "IDCOD\tIDTIPO\tDESCRICAO\tPADRAO\tJUROS\tBLOQUEIO\tCODBANCO\n";
    for (const clsCodBarra& k : *kinds) {
        const QStringList cols = {QStringLiteral("%1").arg(k.IDCOD, 3, 10, QLatin1Char('0')),
                                  k.IDTIPO,
                                  k.DESCRICAO,
                                  k.PADRAO,
                                  k.Juros,
                                  k.BLOQUEIO,
                                  k.CODBANCO};
        if (!e.json) {
            e.out << cols.join(QLatin1Char('\t')) << "\n";
            continue;
        }
        list.append(QJsonObject{{QStringLiteral("idcod"), int(k.IDCOD)},
                                {QStringLiteral("idtipo"), cols[1]},
                                {QStringLiteral("descricao"), cols[2]},
                                {QStringLiteral("padrao"), cols[3]},
                                {QStringLiteral("juros"), cols[4]},
                                {QStringLiteral("bloqueio"), cols[5]},
                                {QStringLiteral("codbanco"), cols[6]}});
    }
    if (e.json)
        CliSupport::printJson(e, list);
    return ExitOk;
}

int tipoExcluir(CliEnv& e) {
    bool ok = false;
    const int id = e.args.value(QStringLiteral("idcod")).toInt(&ok);
    const auto r = ok ? KindRegistry::excluir(e.ctx, id) : KindRegistry::DeleteOutcome::NotFound;
    if (r == KindRegistry::DeleteOutcome::NotFound) {
        // No code given is the screen's "nothing selected"; a code given was not found.
        e.err << (ok ? SystemTexts::text(SystemText::CodigoNaoMaisCadastrado)
                           .arg(KindRegistry::codeText(id))
                     : SystemTexts::text(SystemText::InformeItem))
              << "\n";
        return ExitRefused;
    }
    if (r == KindRegistry::DeleteOutcome::InUse) {
        e.err << SystemTexts::text(SystemText::TipoComRecebimentos).arg(KindRegistry::codeText(id))
              << "\n";
        return ExitRefused;
    }
    if (r == KindRegistry::DeleteOutcome::Failed) {
        e.err << SystemTexts::text(SystemText::ErroExcluir) << "\n";
        return ExitRefused;
    }
    e.out << QStringLiteral("Tipo %1 excluído.\n").arg(KindRegistry::codeText(id));
    return ExitOk;
}

std::optional<QDate> dateArg(CliEnv& e) {
    const auto d = DateUtil::parseBr(e.args.positional.value(0));
    if (!d)
        e.err << QStringLiteral("Data inválida: %1 (use DD/MM/AAAA).\n")
                     .arg(e.args.positional.value(0));
    return d;
}

int feriadoGravar(CliEnv& e) {
    const auto d = dateArg(e);
    if (!d)
        return ExitUsage;
    qint32 id = 0;
    const Outcome done = HolidayCalendar::gravar(e.ctx, *d, &id);
    tell(e.ctx.dialogs, done.notice);
    if (!done)
        return ExitRefused;
    e.out << QStringLiteral("Feriado %1 gravado (id %2).\n").arg(DateUtil::br(*d)).arg(id);
    return ExitOk;
}

int feriadoListar(CliEnv& e) {
    const auto holidays = HolidayCalendar(e.ctx.db).listar();
    if (!holidays)
        return ExitRefused;
    QJsonArray list;
    for (const clsFeriado& f : *holidays) {
        const QString day = DateUtil::br(f.FERIADO);
        if (e.json)
            list.append(
                QJsonObject{{QStringLiteral("id"), f.ID}, {QStringLiteral("feriado"), day}});
        else
            e.out << QStringLiteral("%1").arg(f.ID, 4, 10, QLatin1Char('0')) << "\t" << day << "\n";
    }
    if (e.json)
        CliSupport::printJson(e, list);
    return ExitOk;
}

int feriadoExcluir(CliEnv& e) {
    if (e.args.has(QStringLiteral("todos"))) {
        const Outcome done = HolidayCalendar::excluirTodos(e.ctx);
        tell(e.ctx.dialogs, done.notice);
        if (!done)
            return ExitRefused;
        e.out << "Todos os feriados foram excluídos.\n";
        return ExitOk;
    }
    bool ok = false;
    const qint32 id = e.args.value(QStringLiteral("id")).toInt(&ok);
    if (!ok) {
        e.err << SystemTexts::text(SystemText::InformeItem) << "\n";
        return ExitUsage;
    }
    const Outcome done = HolidayCalendar::excluir(e.ctx, id);
    tell(e.ctx.dialogs, done.notice);
    if (!done)
        return ExitRefused;
    e.out << QStringLiteral("Feriado %1 excluído.\n").arg(id, 4, 10, QLatin1Char('0'));
    return ExitOk;
}

int diaUtil(CliEnv& e) {
    const auto d = dateArg(e);
    if (!d)
        return ExitUsage;
    e.out << DateUtil::br(HolidayCalendar(e.ctx.db).Proximo_dia_util(*d)) << "\n";
    return ExitOk;
}

QJsonObject decisionJson(const ReadingDecision& d) {
    QJsonObject o{{QStringLiteral("resultado"), CliSupport::resultado(d.outcome)},
                  {QStringLiteral("mensagens"), QJsonArray::fromStringList(d.mensagens)}};
    if (d.networkChecked) // lblStatusRede as the counter would show it
        o.insert(QStringLiteral("rede"),
                 d.showNetworkLabel ? QStringLiteral("inativa") : QStringLiteral("ativa"));
    if (d.outcome != ReadingDecision::Outcome::Aceito)
        return o;
    o.insert(QStringLiteral("padrao"), CliSupport::padrao(d.route));
    o.insert(QStringLiteral("idcod"), d.idcod);
    o.insert(QStringLiteral("descricao"), d.descricao);
    o.insert(QStringLiteral("valor"), d.valor.format());
    if (d.vencimento.isValid())
        o.insert(QStringLiteral("vencimento"), DateUtil::br(d.vencimento));
    if (d.route != ReadingDecision::Route::Diversos)
        o.insert(QStringLiteral("juros"), d.juros ? QStringLiteral("SIM") : QStringLiteral("NÃO"));
    return o;
}

// The overdue decision of an accepted guide, as the counter would take it with the operator's
// consent.
void addOverdue(CliEnv& e, const ReadingDecision& d, const QDate& day, QJsonObject& o) {
    if (d.route == ReadingDecision::Route::Diversos || !d.vencimento.isValid())
        return;
    HolidayCalendar cal(e.ctx.db);
    const auto enc = Acrescimos::avaliar(d.vencimento, day, d.valor, d.juros, e.ctx.settings.juros,
                                         cal.isHoliday());
    if (!enc || !enc->vencida)
        return;
    CliSupport::addEncargos(o, *enc);
}

int ler(CliEnv& e) {
    if (e.args.positional.size() != 1) {
        e.err << "Uso: tolvane ler CODIGO [--data DD/MM/AAAA] [--json]\n";
        return ExitUsage;
    }
    const auto chosen = CliSupport::workingDate(e);
    if (!chosen)
        return ExitUsage;
    const QDate day = *chosen;
    const ReadingDecision d =
        BarcodeReader(e.ctx).Leitura_codigo_barras(e.args.positional.first(), day, {});
    QJsonObject o = decisionJson(d);
    if (d.outcome == ReadingDecision::Outcome::Aceito)
        addOverdue(e, d, day, o);
    if (e.json) {
        CliSupport::printJson(e, o);
    } else {
        for (auto it = o.begin(); it != o.end(); ++it)
            if (it.key() != QLatin1String("mensagens"))
                e.out << it.key() << ": " << it.value().toVariant().toString() << "\n";
    }
    return d.outcome == ReadingDecision::Outcome::Aceito ? ExitOk : ExitRefused;
}

int linha(CliEnv& e) {
    if (e.args.positional.size() != 1) {
        e.err << "Uso: tolvane linha DIGITOS [--json]  (ou - para ler da entrada padrão)\n";
        return ExitUsage;
    }
    if (e.args.positional.first() == QLatin1String("-")) {
        e.out.flush();
        return TypedLineBatch::run(stdin, stdout) == 0 ? ExitOk : ExitRefused;
    }
    const TypedLine::Result r = TypedLine::toBarcode(e.args.positional.first());
    if (!r.ok()) {
        if (e.json)
            CliSupport::printJson(e, QJsonObject{{QStringLiteral("erro"), r.erro},
                                                 {QStringLiteral("campo"), r.campo}});
        e.err << r.erro << "\n";
        return ExitRefused;
    }
    if (e.json)
        CliSupport::printJson(e, QJsonObject{{QStringLiteral("codigo"), r.barcode}});
    else
        e.out << r.barcode << "\n";
    return ExitOk;
}

using D = CliCommand::Db;

void registerKindCommands(QList<CliCommand>& c) {
    c.append({{QStringLiteral("tipo"), QStringLiteral("gravar")},
              QStringLiteral("tipo gravar --idcod N --idtipo T --descricao D --padrao P --juros "
                             "S|N --bloqueio S|N [--codbanco C] [--alterar]"),
              QStringLiteral("grava um tipo de guia (com --alterar, altera um existente)"),
              {QStringLiteral("alterar")},
              D::Existing,
              tipoGravar});
    c.last().act = Act::TiposGuia;
    c.append({{QStringLiteral("tipo"), QStringLiteral("listar")},
              QStringLiteral("tipo listar [--json]"),
              QStringLiteral("lista os tipos de guia"),
              {},
              D::Existing,
              tipoListar});
    c.last().act = Act::Consultar;
    c.append({{QStringLiteral("tipo"), QStringLiteral("excluir")},
              QStringLiteral("tipo excluir --idcod N"),
              QStringLiteral("exclui um tipo de guia"),
              {},
              D::Existing,
              tipoExcluir});
    c.last().act = Act::TiposGuia;
}

void registerHolidayCommands(QList<CliCommand>& c) {
    c.append({{QStringLiteral("feriado"), QStringLiteral("gravar")},
              QStringLiteral("feriado gravar DD/MM/AAAA"),
              QStringLiteral("grava um feriado"),
              {},
              D::Existing,
              feriadoGravar});
    c.last().act = Act::Feriados;
    c.append({{QStringLiteral("feriado"), QStringLiteral("listar")},
              QStringLiteral("feriado listar [--json]"),
              QStringLiteral("lista os feriados"),
              {},
              D::Existing,
              feriadoListar});
    c.last().act = Act::Consultar;
    c.append({{QStringLiteral("feriado"), QStringLiteral("excluir")},
              QStringLiteral("feriado excluir (--id N | --todos)"),
              QStringLiteral("exclui um feriado, ou todos"),
              {QStringLiteral("todos")},
              D::Existing,
              feriadoExcluir});
    c.last().act = Act::Feriados;
    c.append(
        {{QStringLiteral("dia-util")},
         QStringLiteral("dia-util DD/MM/AAAA"),
         QStringLiteral("o próximo dia útil depois da data (sem sábados, domingos e feriados)"),
         {},
         D::Existing,
         diaUtil});
    c.last().act = Act::Consultar;
}

void registerReadingCommands(QList<CliCommand>& c) {
    c.append(
        {{QStringLiteral("ler")},
         QStringLiteral("ler CODIGO [--data DD/MM/AAAA] [--json]"),
         QStringLiteral(
             "lê um código de barras como o caixa (lista do cliente vazia) e mostra a decisão"),
         {},
         D::Existing,
         ler});
    c.last().act = Act::Consultar;
    c.append({{QStringLiteral("linha")},
              QStringLiteral("linha DIGITOS|- [--json]"),
              QStringLiteral("converte a linha digitável (47 ou 48 dígitos) no código de barras; - "
                             "lê uma por linha da entrada"),
              {},
              D::None,
              linha});
    c.last().act = Act::Consultar;
}

} // namespace

void registerBarcodeCommands(QList<CliCommand>& c) {
    registerKindCommands(c);
    registerHolidayCommands(c);
    registerReadingCommands(c);
}
