// Commands of the counter: caixa abrir, receber, encerrar, reabrir, situacao, recebimentos.
#include "AppContext.h"
#include "CliArgs.h"
#include "CliCommand.h"
#include "CliPrinterScope.h"
#include "CliSupport.h"
#include "Clock.h"
#include "CounterSession.h"
#include "DateScreenLogic.h"
#include "DateUtil.h"
#include "DialogPort.h"
#include "SystemTexts.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>

namespace {

// The existing movement of the working date, or a refusal.
int existing(CliEnv& e, CounterSession& s) {
    if (int rc = CliSupport::chooseDay(e, DateScreenLogic::Action::Consultar); rc >= 0)
        return rc;
    return s.day().consultar() ? -1 : int(ExitRefused);
}

QJsonObject situacao(CounterSession& s) {
    const clsMovimento& m = s.day().movimento();
    const auto resumo = s.resumoLancados(); // counted by the database
    QJsonObject o{{QStringLiteral("id"), m.ID},
                  {QStringLiteral("mov"), m.MOV},
                  {QStringLiteral("mdata"), DateUtil::br(m.MDATA)},
                  {QStringLiteral("status"), m.STATUS},
                  {QStringLiteral("valor_arrecadado"), m.VALOR_ARRECADADO.format()},
                  {QStringLiteral("entrada"), m.ENTRADA.format()},
                  {QStringLiteral("saida"), m.SAIDA.format()},
                  {QStringLiteral("suprimento"), m.SUPRIMENTO.format()},
                  {QStringLiteral("recebimentos"), resumo ? resumo->quantidade : qint64(0)}};
    // The seal of the last closing: the audit chain's hash, also sent to the central.
    if (!m.HASH_CADEIA.isEmpty())
        o.insert(QStringLiteral("selo"), m.HASH_CADEIA);
    return o;
}

int abrir(CliEnv& e) {
    CliPrinterScope p(e.ctx);
    CounterSession s(e.ctx, &p.printer);
    if (int rc = CliSupport::chooseDay(e, DateScreenLogic::Action::AbrirCaixa); rc >= 0)
        return rc;
    const bool existed = s.day().consultar();
    if (!s.day().abrir())
        return ExitRefused;
    if (existed)
        e.err << QStringLiteral("Movimento %1 de %2 retomado (%3).\n")
                     .arg(s.day().movimento().MOV)
                     .arg(DateUtil::br(s.day().movimento().MDATA), s.day().movimento().STATUS);
    if (e.json)
        CliSupport::printJson(e, situacao(s));
    return ExitOk;
}

int encerrar(CliEnv& e) {
    CliPrinterScope p(e.ctx);
    CounterSession s(e.ctx, &p.printer);
    if (int rc = existing(e, s); rc >= 0)
        return rc;
    if (!s.day().podeEncerrar() || !s.day().encerrar())
        return ExitRefused;
    if (!e.args.has(QStringLiteral("sem-cupom")))
        s.day().imprimirEncerramento();
    tell(e.ctx.dialogs, SystemTexts::notice(SystemText::MovimentoEncerrado));
    if (e.json)
        CliSupport::printJson(e, situacao(s));
    else
        e.out << QStringLiteral("Selo do dia %1 (hash da cadeia): %2\n")
                     .arg(DateUtil::br(s.day().movimento().MDATA), s.day().movimento().HASH_CADEIA);
    return ExitOk;
}

int reabrir(CliEnv& e) {
    CliPrinterScope p(e.ctx);
    CounterSession s(e.ctx, &p.printer);
    if (int rc = existing(e, s); rc >= 0)
        return rc;
    if (!s.day().podeReabrir() || !s.day().reabrir())
        return ExitRefused;
    if (!e.args.has(QStringLiteral("sem-cupom")))
        s.day().imprimirReabertura();
    if (e.json)
        CliSupport::printJson(e, situacao(s));
    return ExitOk;
}

int mostrarSituacao(CliEnv& e) {
    CounterSession s(e.ctx, nullptr);
    if (int rc = existing(e, s); rc >= 0)
        return rc;
    const QJsonObject o = situacao(s);
    if (e.json) {
        CliSupport::printJson(e, o);
        return ExitOk;
    }
    for (auto it = o.begin(); it != o.end(); ++it)
        e.out << it.key() << ": " << it.value().toVariant().toString() << "\n";
    return ExitOk;
}

int recebimentos(CliEnv& e) {
    CounterSession s(e.ctx, nullptr);
    if (int rc = existing(e, s); rc >= 0)
        return rc;
    // Page by page, each row written as it is read: a long day never sits in memory whole.
    constexpr int kPage = 2000;
    if (e.json)
        e.out << '[';
    bool first = true;
    qint32 before = 0;
    for (;;) {
        const auto page = s.lancados(before, kPage);
        for (const auto& l : page) {
            if (e.json) {
                if (!first)
                    e.out << ',';
                e.out << QJsonDocument(QJsonObject{{QStringLiteral("idrecebe"), l.idrecebe},
                                                   {QStringLiteral("autentica"), l.autentica},
                                                   {QStringLiteral("descricao"), l.descricao},
                                                   {QStringLiteral("valor"), l.valor.format()}})
                             .toJson(QJsonDocument::Compact);
            } else {
                e.out << QStringLiteral("%1\t%2\t%3\n")
                             .arg(l.autentica, 4, 10, QLatin1Char('0'))
                             .arg(l.descricao, l.valor.format());
            }
            first = false;
        }
        if (page.size() < kPage)
            break;
        before = page.last().idrecebe;
    }
    if (e.json)
        e.out << "]\n";
    return ExitOk;
}

} // namespace

void registerCounterCommands(QList<CliCommand>& c) {
    const QString d = QStringLiteral(" [--data DD/MM/AAAA]");
    c.append({{QStringLiteral("caixa"), QStringLiteral("abrir")},
              QStringLiteral("caixa abrir") + d + QStringLiteral(" [--json]"),
              QStringLiteral("abre o movimento do dia (ou retoma o que já existe)"),
              {},
              CliCommand::Db::Existing,
              abrir});
    c.last().act = Act::AbrirDia;
    c.append(
        {{QStringLiteral("caixa"), QStringLiteral("encerrar")},
         QStringLiteral("caixa encerrar") + d + QStringLiteral(" [--sem-cupom] [--json]"),
         QStringLiteral("encerra o movimento: soma recebimentos e lançamentos, situação FECHADO; "
                        "imprime o encerramento na fita, salvo com --sem-cupom"),
         {QStringLiteral("sem-cupom")},
         CliCommand::Db::Existing,
         encerrar});
    c.last().act = Act::EncerrarDia;
    c.append({{QStringLiteral("caixa"), QStringLiteral("reabrir")},
              QStringLiteral("caixa reabrir") + d + QStringLiteral(" [--sem-cupom] [--json]"),
              QStringLiteral("reabre um movimento encerrado; imprime a reabertura na fita, salvo "
                             "com --sem-cupom"),
              {QStringLiteral("sem-cupom")},
              CliCommand::Db::Existing,
              reabrir});
    c.last().act = Act::ReabrirDia;
    c.append({{QStringLiteral("caixa"), QStringLiteral("situacao")},
              QStringLiteral("caixa situacao") + d + QStringLiteral(" [--json]"),
              QStringLiteral("mostra o movimento do dia: id, mov, data, situação e totais"),
              {},
              CliCommand::Db::ReadOnly,
              mostrarSituacao});
    c.last().act = Act::ConsultarDia;
    c.append({{QStringLiteral("caixa"), QStringLiteral("recebimentos")},
              QStringLiteral("caixa recebimentos") + d + QStringLiteral(" [--json]"),
              QStringLiteral("lista os recebimentos do movimento, do mais novo ao mais antigo"),
              {},
              CliCommand::Db::ReadOnly,
              recebimentos});
    c.last().act = Act::ConsultarDia;
}
