#include "DayBulletin.h"

#include "AppContext.h"
#include "CashEntry.h"
#include "CashSafe.h"
#include "Clock.h"
#include "DateUtil.h"
#include "DayMovement.h"
#include "ReceiptFigures.h"
#include "SystemTexts.h"
#include "clsCodBarra.h"
#include "clsMovimento.h"
#include "clsRecebimentos.h"

#include <QHash>
#include <algorithm>

namespace {

bool fail(QString* why, const QString& text) {
    if (why)
        *why = text;
    return false;
}

bool readEntries(AppContext& ctx, DayBulletin& b, QString* why) {
    for (EntryKind k : {EntryKind::CashIn, EntryKind::PaymentOut, EntryKind::Withdrawal}) {
        auto rows = CashEntry::listar(ctx, b.idMovimento, k);
        if (!rows)
            return fail(why, SystemTexts::text(SystemText::LancamentosIlegiveis));
        std::reverse(rows->begin(), rows->end()); // in the order they were made
        for (const clsSangria& s : *rows) {
            CashEntry entry(ctx, b.idMovimento, k);
            entry.carregar(s.ID);
            b.lancamentos.append(
                {s.ID, k, s.DESCRICAO, s.ENTRADA.isZero() ? s.SAIDA : s.ENTRADA, entry.itens()});
        }
    }
    return true;
}

bool readCount(AppContext& ctx, const clsMovimento& mov, DayBulletin& b, QString* why) {
    CashCount count(ctx, mov);
    const auto lines = count.linhas();
    if (!lines)
        return fail(why, SystemTexts::text(SystemText::ConferenciaIlegivel));
    b.contagem = *lines;
    // A closed day is compared with the figures its closing wrote; an open one with what the
    // receipts and entries sum to now, as the temporary conference does.
    std::optional<CashConference> c;
    if (b.fechado) {
        c = count.conferir();
    } else {
        QList<Money> counted;
        for (const clsConfCaixa& l : *lines)
            counted << l.VALOR;
        c = CashCount::provisoria(ctx, mov, counted);
        b.conferenciaProvisoria = true;
    }
    if (!c)
        return fail(why, SystemTexts::text(SystemText::ConferenciaIlegivel));
    b.conferencia = *c;
    return true;
}

bool readCorrections(AppContext& ctx, DayBulletin& b, QString* why) {
    auto rows = clsEstornos::listarDoMovimento(ctx.db, b.idMovimento);
    const auto kinds = clsCodBarra::listar(ctx.db);
    if (!rows || !kinds)
        return fail(why, SystemTexts::text(SystemText::CorrecoesIlegiveis));
    QHash<int, QString> names;
    for (const clsCodBarra& k : *kinds)
        names.insert(k.IDCOD, k.DESCRICAO);
    std::reverse(rows->begin(), rows->end());
    for (const clsEstornos& e : *rows) {
        b.correcoes.append({e, names.value(e.TIPO)});
        for (const QString& who : {e.USUARIO, e.REVERTIDO_POR})
            if (!who.trimmed().isEmpty() && !b.operadores.contains(who.trimmed()))
                b.operadores << who.trimmed();
    }
    return true;
}

bool readStamps(AppContext& ctx, DayBulletin& b, QString* why) {
    const auto pending = clsAutenticacoes::pendentes(ctx.db, b.idMovimento);
    const auto repeated = clsAutenticacoes::repetidas(ctx.db, b.idMovimento);
    if (!pending || !repeated)
        return fail(why, SystemTexts::text(SystemText::AutenticacoesDiaIlegiveis));
    b.semAutenticacao = *pending;
    b.autenticacoesRepetidas = *repeated;
    return true;
}

} // namespace

Money DayBulletin::totalDe(EntryKind k) const {
    Money sum;
    for (const Entry& e : lancamentos)
        if (e.kind == k)
            sum += e.valor;
    return sum;
}

std::optional<DayBulletin> DayBulletin::montar(AppContext& ctx, const QDate& day, QString* why) {
    const auto found = DayMovement::of(ctx.db, day);
    if (!found) {
        fail(why, SystemTexts::text(SystemText::SemMovimentoEm).arg(DateUtil::br(day)));
        return std::nullopt;
    }
    const clsMovimento& mov = *found;
    DayBulletin b;
    b.prefeitura = ctx.settings.pref.trimmed();
    b.cabecalho = ctx.settings.cabecalho.trimmed();
    b.guiche = ctx.settings.guiche.trimmed();
    b.data = mov.MDATA;
    b.idMovimento = mov.ID;
    b.mov = mov.MOV;
    b.status = mov.STATUS;
    b.fechado = mov.status() == DayStatus::Closed;
    b.emitidoPor = ctx.userName;
    b.emitidoEm = ctx.clock.now();
    b.suprimento = mov.SUPRIMENTO;
    if (b.fechado)
        b.selo = mov.HASH_CADEIA;

    const auto receipts = clsRecebimentos::listarMovimento(ctx.db, mov.ID);
    if (!receipts) {
        fail(why, SystemTexts::text(SystemText::RecebimentosDiaIlegiveis));
        return std::nullopt;
    }
    const ReceiptFigures figures = ReceiptFigures::of(*receipts);
    for (const ReceiptFigures::Kind& k : figures.porTipo)
        b.porTipo.append({k.idcod, k.descricao, k.quantidade, k.valorFace, k.encargos, k.total});
    b.totalRecebido = {0,
                       QString(),
                       figures.todos.quantidade,
                       figures.todos.valorFace,
                       figures.todos.encargos,
                       figures.todos.total};
    for (const clsRecebimentos::ComTipo& r : *receipts)
        if (r.r.CODBARRA == clsRecebimentos::kSemCodigo)
            b.avulsos.append(
                {r.r.AUTENTICA, r.descricao, r.r.VENCIMENTO, r.r.PARCELA, r.r.OBS, r.r.VALOR});

    if (!readEntries(ctx, b, why) || !readCount(ctx, mov, b, why) ||
        !readCorrections(ctx, b, why) || !readStamps(ctx, b, why))
        return std::nullopt;
    b.cofre = CashSafe::saldo(ctx);
    return b;
}
