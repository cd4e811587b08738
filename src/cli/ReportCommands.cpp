// Commands of the reports: relatorio dia and relatorio periodo, on the same figures as the
// screens' previews.
#include "AppContext.h"
#include "CliArgs.h"
#include "CliCommand.h"
#include "CliSupport.h"
#include "DateUtil.h"
#include "DayBulletin.h"
#include "Login.h"
#include "NetworkDayReport.h"
#include "OrdinaryPrinter.h"
#include "PeriodCsv.h"
#include "PeriodReport.h"
#include "ReportDocument.h"
#include "ReportFile.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QTextDocument>
#include <QTextStream>

namespace {

QJsonObject kindJson(const DayBulletin::KindLine& k) {
    QJsonObject o{{QStringLiteral("quantidade"), k.quantidade},
                  {QStringLiteral("valor_face"), k.valorFace.format()},
                  {QStringLiteral("encargos"), k.encargos.format()},
                  {QStringLiteral("total"), k.total.format()}};
    if (k.idcod != 0) {
        o.insert(QStringLiteral("idcod"), k.idcod);
        o.insert(QStringLiteral("descricao"), k.descricao);
    }
    return o;
}

QJsonObject kindJson(const ReceiptFigures::Kind& k) {
    return kindJson(DayBulletin::KindLine{k.idcod, k.descricao, k.quantidade, k.valorFace,
                                          k.encargos, k.total});
}

QJsonObject entriesJson(const DayBulletin& b, EntryKind kind) {
    QJsonArray list;
    for (const DayBulletin::Entry& e : b.lancamentos) {
        if (e.kind != kind)
            continue;
        QJsonArray items;
        for (const clsItens& i : e.itens)
            items.append(QJsonObject{{QStringLiteral("especie"), i.ESPECIE},
                                     {QStringLiteral("descricao"), i.especieDescricao},
                                     {QStringLiteral("numero"), i.NUMERO},
                                     {QStringLiteral("valor"), i.VALOR.format()}});
        list.append(QJsonObject{{QStringLiteral("id"), e.id},
                                {QStringLiteral("descricao"), e.descricao},
                                {QStringLiteral("valor"), e.valor.format()},
                                {QStringLiteral("itens"), items}});
    }
    return {{QStringLiteral("lancamentos"), list},
            {QStringLiteral("total"), b.totalDe(kind).format()}};
}

QJsonObject conferenceJson(const DayBulletin& b) {
    const CashConference& c = b.conferencia;
    QJsonArray lines;
    for (const clsConfCaixa& l : b.contagem)
        lines.append(QJsonObject{{QStringLiteral("id"), l.ID},
                                 {QStringLiteral("especie"), l.ESPECIE},
                                 {QStringLiteral("descricao"), l.especieDescricao},
                                 {QStringLiteral("numero"), l.NUMERO},
                                 {QStringLiteral("valor"), l.VALOR.format()}});
    return {{QStringLiteral("arrecadacao"), c.arrecadacao.format()},
            {QStringLiteral("lancamentos"), c.lancamentos.format()},
            {QStringLiteral("suprimento"), c.suprimento.format()},
            {QStringLiteral("esperado"), (c.arrecadacao + c.lancamentos).format()},
            {QStringLiteral("contado"), c.contado.format()},
            {QStringLiteral("diferenca"), c.diferenca().format()},
            {QStringLiteral("provisoria"), b.conferenciaProvisoria},
            {QStringLiteral("itens"), lines}};
}

QJsonArray correctionsJson(const DayBulletin& b) {
    QJsonArray list;
    for (const DayBulletin::Correction& c : b.correcoes) {
        const clsEstornos& e = c.row;
        QJsonObject o{
            {QStringLiteral("operacao"), e.OPERACAO == clsEstornos::Operacao::Estorno
                                             ? QStringLiteral("estorno")
                                             : QStringLiteral("alteracao")},
            {QStringLiteral("momento"), e.MOMENTO.toString(QStringLiteral("dd/MM/yyyy hh:mm:ss"))},
            {QStringLiteral("autentica"), e.AUTENTICA},
            {QStringLiteral("idcod"), e.TIPO},
            {QStringLiteral("tipo"), c.tipoDescricao},
            {QStringLiteral("valor"), e.VALOR.format()},
            {QStringLiteral("autorizado_por"), e.USUARIO},
            {QStringLiteral("motivo"), e.MOTIVO},
            {QStringLiteral("revertido"), e.REVERTIDO_EM.isValid()}};
        if (e.NOVO_VALOR)
            o.insert(QStringLiteral("novo_valor"), e.NOVO_VALOR->format());
        if (e.REVERTIDO_EM.isValid())
            o.insert(QStringLiteral("revertido_por"), e.REVERTIDO_POR);
        list.append(o);
    }
    return list;
}

QJsonArray unstampedJson(const DayBulletin& b) {
    QJsonArray list;
    for (const auto& p : b.semAutenticacao)
        list.append(QJsonObject{{QStringLiteral("autentica"), p.autentica},
                                {QStringLiteral("descricao"), p.descricao},
                                {QStringLiteral("valor"), p.valor.format()},
                                {QStringLiteral("gravado"),
                                 p.momento.toString(QStringLiteral("dd/MM/yyyy hh:mm:ss"))}});
    return list;
}

QJsonObject bulletinJson(const DayBulletin& b) {
    QJsonArray kinds;
    for (const auto& k : b.porTipo)
        kinds.append(kindJson(k));
    QJsonObject receipts = kindJson(b.totalRecebido);
    receipts.insert(QStringLiteral("por_tipo"), kinds);
    QJsonArray oneOffs;
    for (const auto& a : b.avulsos)
        oneOffs.append(QJsonObject{{QStringLiteral("autentica"), a.autentica},
                                   {QStringLiteral("descricao"), a.descricao},
                                   {QStringLiteral("vencimento"), a.vencimento},
                                   {QStringLiteral("parcela"), a.parcela},
                                   {QStringLiteral("obs"), a.obs},
                                   {QStringLiteral("valor"), a.valor.format()}});
    return {{QStringLiteral("prefeitura"), b.prefeitura},
            {QStringLiteral("cabecalho"), b.cabecalho},
            {QStringLiteral("guiche"), b.guiche},
            {QStringLiteral("data"), DateUtil::br(b.data)},
            {QStringLiteral("id"), b.idMovimento},
            {QStringLiteral("mov"), b.mov},
            {QStringLiteral("status"), b.status},
            {QStringLiteral("operadores"), QJsonArray::fromStringList(b.operadores)},
            {QStringLiteral("emitido_por"), b.emitidoPor},
            {QStringLiteral("recebimentos"), receipts},
            {QStringLiteral("avulsos"), oneOffs},
            {QStringLiteral("entradas"), entriesJson(b, EntryKind::CashIn)},
            {QStringLiteral("pagamentos"), entriesJson(b, EntryKind::PaymentOut)},
            {QStringLiteral("sangrias"), entriesJson(b, EntryKind::Withdrawal)},
            {QStringLiteral("cofre"),
             QJsonObject{{QStringLiteral("saldo"),
                          b.cofre ? QJsonValue(b.cofre->format()) : QJsonValue(QJsonValue::Null)},
                         {QStringLiteral("suprimento"), b.suprimento.format()}}},
            {QStringLiteral("conferencia"), conferenceJson(b)},
            {QStringLiteral("correcoes"), correctionsJson(b)},
            {QStringLiteral("sem_autenticacao"), unstampedJson(b)},
            {QStringLiteral("autenticados_mais_de_uma_vez"), b.autenticacoesRepetidas},
            {QStringLiteral("selo"),
             b.selo.isEmpty() ? QJsonValue(QJsonValue::Null) : QJsonValue(b.selo)}};
}

// --pdf and --csv name new files: refused before any work when they exist.
int refuseTargets(CliEnv& e, const QStringList& options) {
    for (const QString& o : options)
        if (e.args.has(o))
            if (const QString why = ReportFile::recusa(e.args.value(o)); !why.isEmpty()) {
                e.err << why << "\n";
                return ExitRefused;
            }
    return -1;
}

// The pages: to --pdf, to the ordinary printer with --imprimir, else as text on stdout.
int output(CliEnv& e, QTextDocument& doc, const QString& title, const QString& nome,
           QJsonObject* json) {
    if (e.args.has(QStringLiteral("pdf"))) {
        QString why;
        const QString path = e.args.value(QStringLiteral("pdf"));
        if (!ReportDocument::gravarPdf(doc, path, title, &why)) {
            e.err << why << "\n";
            return ExitRefused;
        }
        if (json)
            json->insert(QStringLiteral("pdf"), path);
        else
            e.err << QStringLiteral("Relatório gravado em %1\n").arg(path);
    }
    if (e.args.has(QStringLiteral("imprimir"))) {
        const OrdinaryPrinter::Resultado r = OrdinaryPrinter::imprimir(e.ctx, doc, nome);
        e.err << OrdinaryPrinter::aviso(r) << "\n";
        if (!r.ok)
            return ExitRefused;
        if (json)
            json->insert(QStringLiteral("impresso"),
                         r.destino.pdf.isEmpty() ? r.destino.impressora : r.destino.pdf);
    }
    if (!e.json && !e.args.has(QStringLiteral("pdf")) && !e.args.has(QStringLiteral("imprimir")))
        e.out << doc.toPlainText() << "\n";
    return ExitOk;
}

int dia(CliEnv& e) {
    if (int rc = refuseTargets(e, {QStringLiteral("pdf")}); rc >= 0)
        return rc;
    if (int rc = CliSupport::chooseDay(e, DateScreenLogic::Action::Consultar); rc >= 0)
        return rc;
    QString why;
    const auto b = DayBulletin::montar(e.ctx, e.ctx.workingDate, &why);
    if (!b) {
        e.err << why << "\n";
        return ExitRefused;
    }
    QJsonObject o = bulletinJson(*b);
    const auto doc = ReportDocument::dia(*b);
    const int rc =
        output(e, *doc, QStringLiteral("Boletim diário %1").arg(DateUtil::br(b->data)),
               QStringLiteral("boletim_%1").arg(b->data.toString(QStringLiteral("yyyyMMdd"))),
               e.json ? &o : nullptr);
    if (rc == ExitOk && e.json)
        CliSupport::printJson(e, o);
    return rc;
}

std::optional<QDate> dateOption(CliEnv& e, const QString& name) {
    const auto d = DateUtil::parseBr(e.args.value(name));
    if (!d)
        e.err << QStringLiteral("Use --%1 DD/MM/AAAA.\n").arg(name);
    return d;
}

QJsonObject periodJson(const PeriodReport& p) {
    QJsonArray days;
    for (const PeriodReport::Day& d : p.dias) {
        QJsonArray kinds;
        for (const auto& k : d.figuras.porTipo)
            kinds.append(kindJson(k));
        QJsonObject o = kindJson(d.figuras.todos);
        o.insert(QStringLiteral("data"), DateUtil::br(d.data));
        o.insert(QStringLiteral("mov"), d.mov);
        o.insert(QStringLiteral("status"), d.status);
        o.insert(QStringLiteral("por_tipo"), kinds);
        days.append(o);
    }
    QJsonArray kinds;
    for (const auto& k : p.porTipo)
        kinds.append(kindJson(k));
    QJsonArray hours;
    for (int h = 0; h < 24; ++h)
        if (p.porHora[size_t(h)].quantidade > 0) {
            QJsonObject o = kindJson(p.porHora[size_t(h)]);
            o.insert(QStringLiteral("hora"), h);
            hours.append(o);
        }
    QJsonObject o = kindJson(p.todos);
    o.insert(QStringLiteral("de"), DateUtil::br(p.de));
    o.insert(QStringLiteral("ate"), DateUtil::br(p.ate));
    o.insert(QStringLiteral("dias"), days);
    o.insert(QStringLiteral("por_tipo"), kinds);
    o.insert(QStringLiteral("por_hora"), hours);
    return o;
}

int periodo(CliEnv& e) {
    const auto de = dateOption(e, QStringLiteral("de"));
    const auto ate = de ? dateOption(e, QStringLiteral("ate")) : std::nullopt;
    if (!de || !ate)
        return ExitUsage;
    if (int rc = refuseTargets(e, {QStringLiteral("pdf"), QStringLiteral("csv")}); rc >= 0)
        return rc;
    if (e.args.has(QStringLiteral("pdf")) && e.args.has(QStringLiteral("csv")) &&
        QFileInfo(e.args.value(QStringLiteral("pdf"))).absoluteFilePath() ==
            QFileInfo(e.args.value(QStringLiteral("csv"))).absoluteFilePath()) {
        e.err << "--pdf e --csv devem ser arquivos diferentes.\n";
        return ExitUsage;
    }
    QString why;
    const auto p = PeriodReport::montar(e.ctx, *de, *ate, &why);
    if (!p) {
        e.err << why << "\n";
        return ExitRefused;
    }
    QJsonObject o = periodJson(*p);
    if (e.args.has(QStringLiteral("csv"))) {
        const QString path = e.args.value(QStringLiteral("csv"));
        if (!ReportFile::gravar(path, PeriodCsv::texto(*p), &why)) {
            e.err << why << "\n";
            return ExitRefused;
        }
        o.insert(QStringLiteral("csv"), path);
    }
    const auto doc = ReportDocument::periodo(*p);
    const bool onlyCsv = e.args.has(QStringLiteral("csv")) && !e.args.has(QStringLiteral("pdf")) &&
                         !e.args.has(QStringLiteral("imprimir"));
    if (!onlyCsv || e.json) {
        const int rc = onlyCsv ? int(ExitOk)
                               : output(e, *doc,
                                        QStringLiteral("Arrecadação %1 a %2")
                                            .arg(DateUtil::br(p->de), DateUtil::br(p->ate)),
                                        QStringLiteral("periodo_%1_%2")
                                            .arg(p->de.toString(QStringLiteral("yyyyMMdd")),
                                                 p->ate.toString(QStringLiteral("yyyyMMdd"))),
                                        e.json ? &o : nullptr);
        if (rc != ExitOk)
            return rc;
    }
    if (e.json)
        CliSupport::printJson(e, o);
    return ExitOk;
}

QString seloText(NetworkDayReport::Selo s) {
    switch (s) {
    case NetworkDayReport::Selo::Recebido:
        return QStringLiteral("recebido");
    case NetworkDayReport::Selo::Ausente:
        return QStringLiteral("ausente");
    case NetworkDayReport::Selo::Desconhecido:
        break;
    }
    return QStringLiteral("desconhecido");
}

QJsonValue optionalCount(const std::optional<qint64>& n) {
    return n ? QJsonValue(*n) : QJsonValue(QJsonValue::Null);
}

int rede(CliEnv& e) {
    const auto day = CliSupport::workingDate(e);
    if (!day)
        return ExitUsage;
    QString why;
    const auto r = NetworkDayReport::montar(e.ctx, *day, &why);
    if (!r) {
        e.err << why << "\n";
        return ExitRefused;
    }
    QJsonArray list;
    for (const NetworkDayReport::Counter& c : r->guiches)
        list.append(QJsonObject{{QStringLiteral("guiche"), c.guiche},
                                {QStringLiteral("este_guiche"), c.esteGuiche},
                                {QStringLiteral("recebimentos"), c.quantidade},
                                {QStringLiteral("valor_documentos"), c.valorDocumentos.format()},
                                {QStringLiteral("ultimo"),
                                 c.ultimo.isValid()
                                     ? QJsonValue(c.ultimo.toString(QStringLiteral("hh:mm:ss")))
                                     : QJsonValue(QJsonValue::Null)},
                                {QStringLiteral("pendentes"), optionalCount(c.pendentes)},
                                {QStringLiteral("conflitos"), optionalCount(c.conflitosAbertos)},
                                {QStringLiteral("selo"), seloText(c.selo)}});
    if (e.json) {
        CliSupport::printJson(e, QJsonObject{{QStringLiteral("data"), DateUtil::br(*day)},
                                             {QStringLiteral("guiches"), list}});
        return ExitOk;
    }
    e.out << QStringLiteral("Guichê\tRecebimentos\tValor dos documentos\tÚltimo\tNa fila\t"
                            "Conflitos\tSelo\n");
    auto count = [](const std::optional<qint64>& n) {
        return n ? QString::number(*n) : QStringLiteral("-");
    };
    for (const NetworkDayReport::Counter& c : r->guiches)
        e.out << QStringList{c.guiche + (c.esteGuiche ? QStringLiteral(" (este)") : QString()),
                             QString::number(c.quantidade),
                             c.valorDocumentos.format(),
                             c.ultimo.isValid() ? c.ultimo.toString(QStringLiteral("hh:mm:ss"))
                                                : QStringLiteral("-"),
                             count(c.pendentes),
                             count(c.conflitosAbertos),
                             seloText(c.selo)}
                     .join(QLatin1Char('\t'))
              << "\n";
    return ExitOk;
}

} // namespace

void registerReportCommands(QList<CliCommand>& c) {
    c.append({{QStringLiteral("relatorio"), QStringLiteral("dia")},
              QStringLiteral("relatorio dia [--data DD/MM/AAAA] [--pdf ARQUIVO] [--imprimir] "
                             "[--json]"),
              QStringLiteral("boletim diário do caixa (recebimentos por tipo, lançamentos, cofre, "
                             "conferência, correções, selo)"),
              {QStringLiteral("imprimir")},
              CliCommand::Db::ReadOnly,
              dia,
              {},
              true});
    c.last().act = Act::Relatorios;
    c.append({{QStringLiteral("relatorio"), QStringLiteral("periodo")},
              QStringLiteral("relatorio periodo --de DD/MM/AAAA --ate DD/MM/AAAA [--pdf ARQUIVO] "
                             "[--csv ARQUIVO] [--imprimir] [--json]"),
              QStringLiteral("arrecadação do período por dia, por tipo e por hora, com gráficos; "
                             "CSV de uma linha por dia e tipo"),
              {QStringLiteral("imprimir")},
              CliCommand::Db::ReadOnly,
              periodo,
              {},
              true});
    c.last().act = Act::Relatorios;
    c.append({{QStringLiteral("relatorio"), QStringLiteral("rede")},
              QStringLiteral("relatorio rede [--data DD/MM/AAAA] [--json]"),
              QStringLiteral("cada guichê no dia, pela central: recebimentos, valor dos "
                             "documentos, último recebimento; fila e conflitos deste guichê"),
              {},
              CliCommand::Db::ReadOnly,
              rede});
    c.last().act = Act::Consultar;
}
