#include "ReportHtml.h"

#include "DateUtil.h"
#include "DayBulletin.h"
#include "PeriodReport.h"

const QString ReportHtml::kGraficoDias = QStringLiteral("grafico:dias");
const QString ReportHtml::kGraficoTipos = QStringLiteral("grafico:tipos");
const QString ReportHtml::kGraficoHoras = QStringLiteral("grafico:horas");

namespace {

const QString kStyle = QStringLiteral(
    "<style>body{font-family:'DejaVu Sans';font-size:9pt;} h1{font-size:14pt;margin:0;} "
    "h2{font-size:11pt;margin-top:10px;margin-bottom:3px;border-bottom:1px solid #444;} "
    "th{background:#e6e6e6;text-align:left;} td.v{text-align:right;} th.v{text-align:right;} "
    "tr.t td{font-weight:bold;border-top:1px solid #000;} .n{color:#555;}</style>");

QString esc(const QString& t) {
    return ReportHtml::escape(t);
}

QString cell(const QString& t, bool money = false) {
    return money ? QStringLiteral("<td class=\"v\">%1</td>").arg(esc(t))
                 : QStringLiteral("<td>%1</td>").arg(esc(t));
}

QString head(const QStringList& cols, int firstMoney) {
    QString h = QStringLiteral("<tr>");
    for (int i = 0; i < cols.size(); ++i)
        h += QStringLiteral("<th%1>%2</th>")
                 .arg(firstMoney >= 0 && i >= firstMoney ? QStringLiteral(" class=\"v\"")
                                                         : QString(),
                      esc(cols[i]));
    return h + QStringLiteral("</tr>");
}

QString table(const QString& rows) {
    return QStringLiteral("<table width=\"100%\" cellspacing=\"0\" cellpadding=\"3\" border=\"1\" "
                          "style=\"border-collapse:collapse;border-color:#999;\">%1</table>")
        .arg(rows);
}

QString none(const QString& text) {
    return QStringLiteral("<p class=\"n\">%1</p>").arg(esc(text));
}

QString kindRow(const DayBulletin::KindLine& k, const QString& name, bool total) {
    return QStringLiteral("<tr%1>%2%3%4%5%6</tr>")
        .arg(total ? QStringLiteral(" class=\"t\"") : QString(), cell(name),
             cell(QString::number(k.quantidade), true), cell(k.valorFace.format(), true),
             cell(k.encargos.format(), true), cell(k.total.format(), true));
}

QString receipts(const DayBulletin& b) {
    QString h = QStringLiteral("<h2>Recebimentos por tipo de guia</h2>");
    if (b.porTipo.isEmpty())
        return h + none(QStringLiteral("Nenhum recebimento no dia."));
    QString rows = head({QStringLiteral("Tipo"), QStringLiteral("Quantidade"),
                         QStringLiteral("Valor dos documentos"), QStringLiteral("Juros e multa"),
                         QStringLiteral("Total")},
                        1);
    for (const auto& k : b.porTipo)
        rows += kindRow(
            k, QStringLiteral("%1 %2").arg(k.idcod, 4, 10, QLatin1Char('0')).arg(k.descricao),
            false);
    rows += kindRow(b.totalRecebido, QStringLiteral("TOTAL"), true);
    return h + table(rows);
}

QString oneOffs(const DayBulletin& b) {
    QString h = QStringLiteral("<h2>Itens avulsos</h2>");
    if (b.avulsos.isEmpty())
        return h + none(QStringLiteral("Nenhum item avulso."));
    QString rows =
        head({QStringLiteral("Aut."), QStringLiteral("Tipo"), QStringLiteral("Vencimento"),
              QStringLiteral("Parcela"), QStringLiteral("Obs."), QStringLiteral("Valor")},
             5);
    Money sum;
    for (const auto& a : b.avulsos) {
        rows += QStringLiteral("<tr>%1%2%3%4%5%6</tr>")
                    .arg(cell(QStringLiteral("%1").arg(a.autentica, 4, 10, QLatin1Char('0'))),
                         cell(a.descricao), cell(a.vencimento), cell(a.parcela), cell(a.obs),
                         cell(a.valor.format(), true));
        sum += a.valor;
    }
    rows += QStringLiteral("<tr class=\"t\"><td colspan=\"5\">TOTAL</td>%1</tr>")
                .arg(cell(sum.format(), true));
    return h + table(rows);
}

QString entries(const DayBulletin& b, EntryKind k, const QString& title) {
    QString h = QStringLiteral("<h2>%1</h2>").arg(esc(title));
    QString rows = head({QStringLiteral("Nº"), QStringLiteral("Descrição / espécie"),
                         QStringLiteral("Número"), QStringLiteral("Valor")},
                        3);
    bool any = false;
    for (const auto& e : b.lancamentos) {
        if (e.kind != k)
            continue;
        any = true;
        rows += QStringLiteral("<tr><td>%1</td><td colspan=\"2\"><b>%2</b></td>%3</tr>")
                    .arg(QStringLiteral("%1").arg(e.id, 4, 10, QLatin1Char('0')), esc(e.descricao),
                         cell(e.valor.format(), true));
        for (const clsItens& i : e.itens)
            rows += QStringLiteral("<tr><td></td>%1%2%3</tr>")
                        .arg(cell(QStringLiteral("   ") + i.especieDescricao), cell(i.NUMERO),
                             cell(i.VALOR.format(), true));
    }
    if (!any)
        return h + none(QStringLiteral("Nenhum lançamento."));
    rows += QStringLiteral("<tr class=\"t\"><td colspan=\"3\">TOTAL</td>%1</tr>")
                .arg(cell(b.totalDe(k).format(), true));
    return h + table(rows);
}

QString pair(const QString& label, const QString& value) {
    return QStringLiteral("<tr>%1%2</tr>").arg(cell(label), cell(value, true));
}

QString safeAndCount(const DayBulletin& b) {
    QString h = QStringLiteral("<h2>Cofre</h2>");
    h += table(pair(QStringLiteral("Suprimento do dia"), b.suprimento.format()) +
               pair(QStringLiteral("Saldo atual do cofre"),
                    b.cofre ? b.cofre->format() : QStringLiteral("ilegível no Config.ini")));
    h += QStringLiteral("<h2>Conferência de caixa</h2>");
    if (b.conferenciaProvisoria)
        h += none(QStringLiteral("Dia aberto: arrecadação e lançamentos somados na emissão."));
    const CashConference& c = b.conferencia;
    h += table(pair(QStringLiteral("Arrecadação"), c.arrecadacao.format()) +
               pair(QStringLiteral("Lançamentos (entradas - saídas)"), c.lancamentos.format()) +
               pair(QStringLiteral("Suprimento"), c.suprimento.format()) +
               pair(QStringLiteral("Valor esperado"), (c.arrecadacao + c.lancamentos).format()) +
               pair(QStringLiteral("Contado"), c.contado.format()) +
               QStringLiteral("<tr class=\"t\">%1%2</tr>")
                   .arg(cell(QStringLiteral("Diferença")), cell(c.diferenca().format(), true)));
    if (!b.contagem.isEmpty()) {
        QString rows = head({QStringLiteral("Nº"), QStringLiteral("Espécie"),
                             QStringLiteral("Número"), QStringLiteral("Valor")},
                            3);
        for (const clsConfCaixa& l : b.contagem)
            rows +=
                QStringLiteral("<tr>%1%2%3%4</tr>")
                    .arg(cell(QStringLiteral("%1").arg(l.ID, 4, 10, QLatin1Char('0'))),
                         cell(l.especieDescricao), cell(l.NUMERO), cell(l.VALOR.format(), true));
        h += QStringLiteral("<p>Contagem:</p>") + table(rows);
    }
    return h;
}

QString unstamped(const DayBulletin& b) {
    QString h = QStringLiteral("<h2>Documentos sem autenticação</h2>");
    if (b.semAutenticacao.isEmpty())
        h += none(QStringLiteral("Todos os documentos do dia têm autenticação confirmada."));
    else {
        QString rows = head({QStringLiteral("Aut."), QStringLiteral("Tipo"),
                             QStringLiteral("Gravado em"), QStringLiteral("Valor")},
                            3);
        for (const auto& p : b.semAutenticacao)
            rows += QStringLiteral("<tr>%1%2%3%4</tr>")
                        .arg(cell(QStringLiteral("%1").arg(p.autentica, 4, 10, QLatin1Char('0'))),
                             cell(p.descricao),
                             cell(p.momento.toString(QStringLiteral("dd/MM/yyyy hh:mm"))),
                             cell(p.valor.format(), true));
        h += table(rows);
    }
    if (b.autenticacoesRepetidas > 0)
        h += none(QStringLiteral("%1 documento(s) autenticado(s) mais de uma vez.")
                      .arg(b.autenticacoesRepetidas));
    return h;
}

QString corrections(const DayBulletin& b) {
    QString h = QStringLiteral("<h2>Correções e estornos</h2>");
    if (b.correcoes.isEmpty())
        return h + none(QStringLiteral("Nenhuma correção ou estorno no dia."));
    QString rows = head({QStringLiteral("Hora"), QStringLiteral("Operação"), QStringLiteral("Aut."),
                         QStringLiteral("Tipo"), QStringLiteral("Autorizado por"),
                         QStringLiteral("Motivo"), QStringLiteral("Valor")},
                        6);
    for (const auto& c : b.correcoes) {
        const clsEstornos& e = c.row;
        QString op = e.OPERACAO == clsEstornos::Operacao::Estorno ? QStringLiteral("Estorno")
                                                                  : QStringLiteral("Alteração");
        if (e.NOVO_VALOR)
            op += QStringLiteral(" (novo valor %1)").arg(e.NOVO_VALOR->format());
        if (e.REVERTIDO_EM.isValid())
            op += QStringLiteral(" — revertido às %1 por %2")
                      .arg(e.REVERTIDO_EM.toString(QStringLiteral("hh:mm")), e.REVERTIDO_POR);
        rows += QStringLiteral("<tr>%1%2%3%4%5%6%7</tr>")
                    .arg(cell(e.MOMENTO.toString(QStringLiteral("hh:mm"))), cell(op),
                         cell(QStringLiteral("%1").arg(e.AUTENTICA, 4, 10, QLatin1Char('0'))),
                         cell(c.tipoDescricao), cell(e.USUARIO), cell(e.MOTIVO),
                         cell(e.VALOR.format(), true));
    }
    return h + table(rows);
}

QString signatures() {
    const QString line = QStringLiteral("<td width=\"45%\" align=\"center\"><br><br><br>"
                                        "______________________________<br>%1</td>");
    return QStringLiteral("<br><table width=\"100%\" cellspacing=\"0\" cellpadding=\"6\"><tr>%1"
                          "<td width=\"10%\"></td>%2</tr></table>")
        .arg(line.arg(QStringLiteral("Caixa")), line.arg(QStringLiteral("Tesoureiro")));
}

// One of the period's charts: `source` names the image the document is given when laid out.
QString chart(const QString& source, int height) {
    return QStringLiteral("<p align=\"center\"><img src=\"%1\" width=\"640\" height=\"%2\"></p>")
        .arg(source)
        .arg(height);
}

// The period's days, one row each, and their total.
QString periodDays(const PeriodReport& p) {
    QString rows =
        head({QStringLiteral("Data"), QStringLiteral("Movimento"), QStringLiteral("Situação"),
              QStringLiteral("Quantidade"), QStringLiteral("Valor dos documentos"),
              QStringLiteral("Juros e multa"), QStringLiteral("Total")},
             3);
    for (const PeriodReport::Day& d : p.dias) {
        const auto& t = d.figuras.todos;
        rows +=
            QStringLiteral("<tr>%1%2%3%4%5%6%7</tr>")
                .arg(cell(DateUtil::br(d.data)),
                     cell(QStringLiteral("%1").arg(d.mov, 4, 10, QLatin1Char('0'))), cell(d.status),
                     cell(QString::number(t.quantidade), true), cell(t.valorFace.format(), true),
                     cell(t.encargos.format(), true), cell(t.total.format(), true));
    }
    rows += QStringLiteral("<tr class=\"t\"><td colspan=\"3\">TOTAL</td>%1%2%3%4</tr>")
                .arg(cell(QString::number(p.todos.quantidade), true),
                     cell(p.todos.valorFace.format(), true), cell(p.todos.encargos.format(), true),
                     cell(p.todos.total.format(), true));
    return rows;
}

// The period's kinds of guide, each with its part of the total.
QString periodKinds(const PeriodReport& p) {
    QString rows = head({QStringLiteral("Tipo"), QStringLiteral("Quantidade"),
                         QStringLiteral("Valor dos documentos"), QStringLiteral("Juros e multa"),
                         QStringLiteral("Total"), QStringLiteral("Parte")},
                        1);
    for (const auto& k : p.porTipo) {
        const double share = p.todos.total.isZero()
                                 ? 0.0
                                 : 100.0 * double(k.total.units()) / double(p.todos.total.units());
        rows +=
            QStringLiteral("<tr>%1%2%3%4%5%6</tr>")
                .arg(
                    cell(QStringLiteral("%1 %2")
                             .arg(k.idcod, 4, 10, QLatin1Char('0'))
                             .arg(k.descricao)),
                    cell(QString::number(k.quantidade), true), cell(k.valorFace.format(), true),
                    cell(k.encargos.format(), true), cell(k.total.format(), true),
                    cell(
                        QString::number(share, 'f', 1).replace(QLatin1Char('.'), QLatin1Char(',')) +
                            QStringLiteral(" %"),
                        true));
    }
    return rows;
}

} // namespace

QString ReportHtml::escape(const QString& text) {
    return text.toHtmlEscaped();
}

QString ReportHtml::dia(const DayBulletin& b) {
    QString h = QStringLiteral("<html><head>") + kStyle + QStringLiteral("</head><body>");
    h += QStringLiteral("<h1>%1</h1>")
             .arg(esc(b.prefeitura.isEmpty() ? QStringLiteral("Prefeitura") : b.prefeitura));
    if (!b.cabecalho.isEmpty())
        h += QStringLiteral("<p>%1</p>").arg(esc(b.cabecalho));
    h += QStringLiteral("<h1>Boletim diário de arrecadação</h1>");
    QString rows;
    rows += pair(QStringLiteral("Guichê"), b.guiche);
    rows += pair(QStringLiteral("Data"), DateUtil::br(b.data));
    rows += pair(QStringLiteral("Movimento"),
                 QStringLiteral("%1 — %2").arg(b.mov, 4, 10, QLatin1Char('0')).arg(b.status));
    rows += pair(QStringLiteral("Operadores"), b.operadores.isEmpty()
                                                   ? QStringLiteral("—")
                                                   : b.operadores.join(QStringLiteral(", ")));
    rows += pair(QStringLiteral("Emitido por"),
                 QStringLiteral("%1 em %2")
                     .arg(b.emitidoPor.isEmpty() ? QStringLiteral("—") : b.emitidoPor,
                          b.emitidoEm.toString(QStringLiteral("dd/MM/yyyy hh:mm"))));
    h += table(rows);
    h += receipts(b) + oneOffs(b);
    h += entries(b, EntryKind::CashIn, QStringLiteral("Entradas de caixa"));
    h += entries(b, EntryKind::PaymentOut, QStringLiteral("Pagamentos (saídas)"));
    h += entries(b, EntryKind::Withdrawal, QStringLiteral("Retiradas (sangrias)"));
    h += safeAndCount(b) + corrections(b);
    h += unstamped(b);
    h += QStringLiteral("<h2>Selo de encerramento</h2>");
    h += b.fechado && !b.selo.isEmpty()
             ? QStringLiteral("<p style=\"font-family:'DejaVu Sans Mono';font-size:8pt;\">%1</p>")
                   .arg(esc(b.selo))
             : none(QStringLiteral("Movimento não encerrado: sem selo."));
    h += signatures();
    return h + QStringLiteral("</body></html>");
}

QString ReportHtml::periodo(const PeriodReport& p) {
    QString h = QStringLiteral("<html><head>") + kStyle + QStringLiteral("</head><body>");
    h += QStringLiteral("<h1>%1</h1>")
             .arg(esc(p.prefeitura.isEmpty() ? QStringLiteral("Prefeitura") : p.prefeitura));
    h += QStringLiteral("<h1>Arrecadação de %1 a %2</h1>")
             .arg(DateUtil::br(p.de), DateUtil::br(p.ate));
    h += QStringLiteral("<p>Guichê %1 — emitido por %2 em %3</p>")
             .arg(esc(p.guiche), esc(p.emitidoPor.isEmpty() ? QStringLiteral("—") : p.emitidoPor),
                  p.emitidoEm.toString(QStringLiteral("dd/MM/yyyy hh:mm")));
    if (p.dias.isEmpty())
        return h + none(QStringLiteral("Nenhum movimento no período.")) +
               QStringLiteral("</body></html>");

    h += QStringLiteral("<h2>Arrecadação por dia</h2>") + chart(kGraficoDias, 260);
    h += table(periodDays(p));
    h += QStringLiteral("<h2>Arrecadação por tipo de guia</h2>") + chart(kGraficoTipos, 300);
    h += table(periodKinds(p));
    h += QStringLiteral("<h2>Recebimentos por hora do dia</h2>") + chart(kGraficoHoras, 260);
    return h + QStringLiteral("</body></html>");
}
