#include "ReceiptStamps.h"

#include "AppContext.h"
#include "Clock.h"
#include "CounterPrinter.h"
#include "PrinterService.h"
#include "SystemTexts.h"
#include "Transaction.h"

namespace {
QString numero(qint32 autentica) {
    return QStringLiteral("%1").arg(autentica, 4, 10, QLatin1Char('0'));
}

ReceiptStamps::Outcome told(ReceiptStamps::Result r, SystemText id) {
    const Notice n = SystemTexts::notice(id);
    ReceiptStamps::Outcome o;
    o.result = r;
    o.titulo = n.title;
    o.texto = n.text;
    o.icon = n.icon;
    return o;
}
} // namespace

ReceiptStamps::Outcome ReceiptStamps::autenticar(const QList<RecordedReceipt>& rows,
                                                 Repetir repetir) {
    if (rows.isEmpty())
        return {};
    if (!m_printer)
        return told(Result::SemImpressora, SystemText::SemAutenticadoraNaTela);
    QList<RecordedReceipt> send;
    QStringList stamped;
    for (const RecordedReceipt& r : rows) {
        const auto e = clsAutenticacoes::estado(m_ctx.db, r.idrecebe);
        if (!e)
            return told(Result::Falhou, SystemText::AutenticacoesIlegiveis);
        if (e->vezes > 0) {
            stamped << SystemTexts::text(SystemText::JaAutenticado)
                           .arg(numero(r.autentica))
                           .arg(e->vezes)
                           .arg(e->ultima.toString(QStringLiteral("dd/MM/yyyy hh:mm")));
            if (repetir != Repetir::Sim)
                continue;
        }
        send.append(r);
    }
    if (repetir == Repetir::Perguntar && !stamped.isEmpty()) {
        const Notice n = SystemTexts::notice(SystemText::PerguntaReautenticar)
                             .arg(stamped.join(QLatin1Char('\n')));
        Outcome o;
        o.result = Result::PrecisaConfirmar;
        o.titulo = n.title;
        o.texto = n.text;
        o.icon = n.icon;
        return o;
    }
    if (send.isEmpty())
        return {};
    if (!m_printer->documentos(send))
        return told(Result::Falhou, SystemText::ErroLinhaImpressao);
    Outcome o;
    o.result = Result::Enviado;
    o.enviados = send;
    return o;
}

ReceiptStamps::Outcome ReceiptStamps::autenticarPendentes(qint32 idMovimento) {
    const auto list = pendentes(m_ctx, idMovimento);
    if (!list)
        return told(Result::Falhou, SystemText::PendentesIlegiveis);
    QList<RecordedReceipt> rows;
    for (const clsAutenticacoes::Pendente& p : *list)
        rows.append(receipt(p));
    return autenticar(rows, Repetir::Nao);
}

bool ReceiptStamps::confirmados(AppContext& ctx, const QList<qint32>& idrecebes) {
    if (idrecebes.isEmpty())
        return true;
    const QDateTime now = ctx.clock.now();
    Transaction tx(ctx.db);
    bool ok = tx.ok();
    for (qint32 id : idrecebes)
        ok = ok && clsAutenticacoes::confirmar(ctx.db, id, now, ctx.userName);
    ok = ok && tx.commit();
    if (!ok) {
        QStringList ids;
        for (qint32 id : idrecebes)
            ids << QString::number(id);
        ctx.errors.append(QStringLiteral("Autenticações confirmadas"),
                          {0,
                           QStringLiteral("Não gravadas (IDRECEBE %1): %2")
                               .arg(ids.join(QStringLiteral(", ")), ctx.db.lastError()),
                           QStringLiteral("ReceiptStamps")});
    }
    return ok;
}

std::optional<QList<clsAutenticacoes::Pendente>> ReceiptStamps::pendentes(AppContext& ctx,
                                                                          qint32 idMovimento) {
    return clsAutenticacoes::pendentes(ctx.db, idMovimento);
}

RecordedReceipt ReceiptStamps::receipt(const clsAutenticacoes::Pendente& p) {
    RecordedReceipt r;
    r.idrecebe = p.idrecebe;
    r.autentica = p.autentica;
    r.item.tipo = p.tipo;
    r.item.descricao = p.descricao;
    r.item.valor = p.valor;
    r.item.codbarra = p.codbarra;
    r.momento = p.momento;
    return r;
}

bool ReceiptStamps::autenticadoraAtiva(const AppContext& ctx) {
    const PrinterConfig c = PrinterConfig::from(ctx);
    const PrinterModel m = PrinterService::modelFrom(c.impressora);
    return c.modo.trimmed() == QLatin1String("1") &&
           (m == PrinterModel::Bematech || m == PrinterModel::Quattro);
}
