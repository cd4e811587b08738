// caixa receber: one customer's payment from the command line, through the same session as the
// counter screen.
#include "AppContext.h"
#include "CliArgs.h"
#include "CliCommand.h"
#include "CliPrinterScope.h"
#include "CliSupport.h"
#include "Clock.h"
#include "CounterSession.h"
#include "DateUtil.h"
#include "DialogPort.h"
#include "SystemTexts.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTextStream>

namespace {

QJsonObject recusado(const QString& codigo, const CounterSession::ReadResult& r) {
    return {{QStringLiteral("codigo"), codigo},
            {QStringLiteral("resultado"), CliSupport::resultado(r.resultado)},
            {QStringLiteral("mensagens"), QJsonArray::fromStringList(r.mensagens)}};
}

// The options that need no database (`paid` is set only by --pago): answers -1 to go on, else
// the exit code.
int checkOptions(CliEnv& e, std::optional<Money>& paid) {
    if (e.args.positional.isEmpty() && !e.args.has(QStringLiteral("avulso"))) {
        e.err << "Informe ao menos um código.\nUso: tolvane caixa receber [--data DD/MM/AAAA] "
                 "[--pago VALOR] CODIGO...\n";
        return ExitUsage;
    }
    if (e.args.has(QStringLiteral("pago"))) {
        const QString pago = e.args.value(QStringLiteral("pago"));
        QString why;
        paid = Money::parseTyped(pago, &why);
        if (!paid) {
            e.err << (Money::parse(pago) ? why
                                         : QStringLiteral("Valor pago inválido: %1").arg(pago))
                  << "\n";
            return ExitUsage;
        }
    }
    if (e.args.has(QStringLiteral("aceitar-vencidas")) &&
        e.args.has(QStringLiteral("recusar-vencidas"))) {
        e.err << "Use --aceitar-vencidas ou --recusar-vencidas, não os dois.\n";
        return ExitUsage;
    }
    return -1;
}

// The command states its answer to frmGuiavencida instead of asking it. A question about money
// defaults to the safe answer, as on the screen: an overdue guide is received only with
// --aceitar-vencidas (--recusar-vencidas states the default).
CounterSession::ReadResult settle(CliEnv& e, CounterSession& session,
                                  CounterSession::ReadResult r) {
    const bool consent = e.args.has(QStringLiteral("aceitar-vencidas"));
    while (r.precisaConsentimento) {
        r = session.continuar(consent);
        if (!consent)
            e.err << SystemTexts::text(SystemText::GuiaVencidaRecusada) << "\n";
    }
    return r;
}

bool readOneOffs(CliEnv& e, QList<OneOffItem>& avulsos) {
    for (const QString& arg : e.args.values(QStringLiteral("avulso"))) {
        OneOffItem item;
        QString error;
        if (!OneOffItem::fromArgument(arg, item, &error)) {
            e.err << error << "\n";
            return false;
        }
        avulsos << item;
    }
    return true;
}

// Reads the codes, then the one-off items, into the customer's list; answers those refused.
QJsonArray addItems(CliEnv& e, CounterSession& s, const QList<OneOffItem>& avulsos) {
    QJsonArray recusados;
    for (const QString& codigo : e.args.positional) {
        const auto r = settle(e, s,
                              CounterSession::pareceLinhaDigitavel(codigo) ? s.lerLinha(codigo)
                                                                           : s.ler(codigo));
        if (!r.accepted)
            recusados.append(recusado(codigo, r));
    }
    for (const OneOffItem& item : avulsos) {
        const auto r = settle(e, s, s.somaAvulso(item));
        if (!r.accepted)
            recusados.append(recusado(
                QStringLiteral("avulso:%1:%2").arg(item.idcod).arg(item.valor.format()), r));
    }
    return recusados;
}

// Records the list (nothing when it is empty); answers the receipts written, or nothing when the
// payment was not recorded.
std::optional<QJsonArray> record(CounterSession& s, const std::optional<Money>& paid) {
    QJsonArray gravados;
    if (s.list().isEmpty())
        return gravados;
    if (paid)
        s.tender(*paid);
    const auto rows = s.gravar();
    if (!rows)
        return std::nullopt;
    for (const RecordedReceipt& r : *rows) {
        QJsonObject g{{QStringLiteral("autentica"), r.autentica},
                      {QStringLiteral("codbarra"), r.item.codbarra},
                      {QStringLiteral("idcod"), r.item.tipo},
                      {QStringLiteral("valor"), r.item.valor.format()}};
        if (r.item.encargos && r.item.encargos->vencida)
            CliSupport::addEncargos(g, *r.item.encargos);
        gravados.append(g);
    }
    return gravados;
}

void printPayment(CliEnv& e, const QJsonObject& out, const Money& total) {
    if (e.json) {
        CliSupport::printJson(e, out);
        return;
    }
    const QJsonArray gravados = out.value(QStringLiteral("gravados")).toArray();
    if (gravados.isEmpty())
        return; // nothing recorded: the refusals on stderr are the whole answer
    for (const auto& g : gravados)
        e.out << QStringLiteral("%1\t%2\t%3\n")
                     .arg(g.toObject().value(QStringLiteral("autentica")).toInt(), 4, 10,
                          QLatin1Char('0'))
                     .arg(g.toObject().value(QStringLiteral("codbarra")).toString(),
                          g.toObject().value(QStringLiteral("valor")).toString());
    e.out << QStringLiteral("Total: %1\n").arg(total.formatCurrency());
    if (out.contains(QStringLiteral("troco")))
        e.out << QStringLiteral("Troco: %1\n").arg(out.value(QStringLiteral("troco")).toString());
}

int receber(CliEnv& e) {
    std::optional<Money> paid;
    if (int rc = checkOptions(e, paid); rc >= 0)
        return rc;
    if (int rc = CliSupport::chooseDay(e, DateScreenLogic::Action::Consultar); rc >= 0)
        return rc;

    CliPrinterScope printing(e.ctx);
    CounterSession s(e.ctx, &printing.printer);
    if (!s.day().consultar() || !s.day().aberto()) {
        e.err << "Não há movimento aberto nesta data. Use: tolvane caixa abrir\n";
        return ExitRefused;
    }
    QList<OneOffItem> avulsos;
    if (!readOneOffs(e, avulsos))
        return ExitUsage;
    const QJsonArray recusados = addItems(e, s, avulsos);
    const Money total = s.list().total();
    const auto gravados = record(s, paid);
    if (!gravados)
        return ExitRefused;
    QJsonObject out{{QStringLiteral("gravados"), *gravados},
                    {QStringLiteral("recusados"), recusados},
                    {QStringLiteral("total"), total.format()}};
    if (paid)
        out.insert(QStringLiteral("troco"), (*paid - total).format());
    printPayment(e, out, total);
    return gravados->isEmpty() ? ExitRefused : ExitOk;
}

} // namespace

void registerCounterReceiveCommand(QList<CliCommand>& c) {
    const QString d = QStringLiteral(" [--data DD/MM/AAAA]");
    c.append({{QStringLiteral("caixa"), QStringLiteral("receber")},
              QStringLiteral("caixa receber") + d +
                  QStringLiteral(" [--pago VALOR] [--aceitar-vencidas | --recusar-vencidas] "
                                 "[--avulso IDCOD:VALOR[:DD/MM/AAAA[:PARCELA[:OBS]]]]... [--json] "
                                 "CODIGO..."),
              QStringLiteral("grava o pagamento de um cliente com os códigos dados (cada um pela "
                             "leitura do caixa)"),
              {QStringLiteral("aceitar-vencidas"), QStringLiteral("recusar-vencidas")},
              CliCommand::Db::Existing,
              receber,
              {QStringLiteral("avulso")}});
    c.last().act = Act::Receber;
}
