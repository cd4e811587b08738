#include "PaymentRecorder.h"

#include "AppContext.h"
#include "Clock.h"
#include "DateUtil.h"
#include "DialogPort.h"
#include "NetworkOutbox.h"
#include "SystemTexts.h"
#include "Transaction.h"

#include "clsAutenticacoes.h"
#include "clsMovimento.h"
#include "clsRecebimentos.h"

#include <QSet>

namespace {
const QString kFalhou = SystemTexts::text(SystemText::PagamentoFalhou);
constexpr qint64 kMaxAutentica = clsRecebimentos::kMaxAutentica;

QString itemText(int index, const CustomerItem& item) {
    return QStringLiteral("item %1 (%2)")
        .arg(index + 1, 2, 10, QLatin1Char('0'))
        .arg(item.codbarra);
}
} // namespace

QString PaymentRecorder::refusal(AppContext& ctx, const CustomerList& list) {
    QSet<QString> seen;
    for (int i = 0; i < list.size(); ++i) {
        const CustomerItem& item = list.at(i);
        if (item.valor.isNegative() || !item.valor.withinLimit())
            return SystemTexts::text(SystemText::ValorForaDoLimite)
                .arg(itemText(i, item), Money::maximum().formatCurrency());
        if (!clsRecebimentos::isUniqueCode(item.codbarra))
            continue;
        if (seen.contains(item.codbarra))
            return QStringLiteral("Conta já Lançada!!! O %1 está duas vezes na soma. Nada foi "
                                  "gravado: retire um deles e grave de novo.")
                .arg(itemText(i, item));
        seen.insert(item.codbarra);
        const auto received = clsRecebimentos::codigoRecebido(ctx.db, item.codbarra);
        if (!received)
            return kFalhou;
        if (*received)
            return QStringLiteral("Conta já Recebida!!! O %1 já foi recebido. Nada foi gravado: "
                                  "retire o item da soma e grave de novo.")
                .arg(itemText(i, item));
    }
    return list.acimaDoLimite();
}

std::optional<QList<RecordedReceipt>>
PaymentRecorder::record(AppContext& ctx, const clsMovimento& mov, const CustomerList& list) {
    if (list.isEmpty())
        return std::nullopt;
    // Decided first, with no transaction open and no claim held; told after.
    QString why;
    const auto rows = claimAndRecord(ctx, mov, list, why);
    if (!rows) {
        tell(ctx.dialogs, SystemTexts::notice(SystemText::PagamentoFalhou).with(why));
        return std::nullopt;
    }
    NetworkOutbox::enviar(ctx);
    return rows;
}

std::optional<QList<RecordedReceipt>> PaymentRecorder::claimAndRecord(AppContext& ctx,
                                                                      const clsMovimento& mov,
                                                                      const CustomerList& list,
                                                                      QString& why) {
    // What this counter refuses by itself is not claimed at the central.
    why = refusal(ctx, list);
    if (!why.isEmpty())
        return std::nullopt;
    QStringList codes;
    for (int i = 0; i < list.size(); ++i)
        codes << list.at(i).codbarra;
    // The claim comes before the local write lock: the central's wait never holds this database.
    const ReservaRede reserva = NetworkOutbox::reservar(ctx, codes);
    if (reserva.estado == ReservaRede::Estado::JaRecebida) {
        const int i = int(codes.indexOf(reserva.codigo));
        why =
            QStringLiteral("Conta já Recebida!!! O %1 já foi recebido %2. Nada foi gravado: "
                           "retire o item da soma e grave de novo.")
                .arg(itemText(qMax(0, i), list.at(qMax(0, i))),
                     reserva.guiche.isEmpty() ? QStringLiteral("num ano anterior (importado)")
                                              : QStringLiteral("no guichê %1").arg(reserva.guiche));
        return std::nullopt;
    }
    auto rows = recordLocally(ctx, mov, list, why);
    if (!rows)
        NetworkOutbox::liberar(ctx, reserva); // the guide may be paid again, here or elsewhere
    return rows;
}

std::optional<QList<RecordedReceipt>> PaymentRecorder::recordLocally(AppContext& ctx,
                                                                     const clsMovimento& mov,
                                                                     const CustomerList& list,
                                                                     QString& why) {
    // The write lock first: everything below is read and written with no other writer between.
    Transaction tx(ctx.db);
    why = kFalhou;
    if (!tx.ok())
        return std::nullopt;
    clsMovimento current(ctx.db);
    if (!current.SQLSelect(mov.ID) || !current.aberto()) {
        why = SystemTexts::text(SystemText::PagamentoDiaEncerrado);
        return std::nullopt;
    }
    why = refusal(ctx, list);
    if (!why.isEmpty())
        return std::nullopt;
    clsRecebimentos max(ctx.db);
    max.AUTENTICA = 0; // the first receipt of a movement is 1
    max.SQLSelectMax(mov.ID);
    if (qint64(max.AUTENTICA) + list.size() > kMaxAutentica) {
        why = SystemTexts::text(SystemText::LimiteAutenticacoes).arg(kMaxAutentica);
        return std::nullopt;
    }
    const QDateTime momento = ctx.clock.now();
    QList<RecordedReceipt> out;
    qint32 next = max.AUTENTICA;
    bool ok = true;
    for (int i = 0; ok && i < list.size(); ++i) {
        const CustomerItem& item = list.at(i);
        clsRecebimentos r(ctx.db);
        r.AUTENTICA = ++next;
        r.IDMOVIMENTO = static_cast<qint16>(mov.ID);
        r.TIPO = static_cast<qint16>(item.tipo);
        r.VALOR = item.valor;
        r.CODBARRA = item.codbarra.isEmpty() ? clsRecebimentos::kSemCodigo : item.codbarra;
        r.VENCIMENTO = item.vencimento.isValid() ? DateUtil::br(item.vencimento) : QString();
        r.PARCELA = item.parcela;
        r.OBS = item.obs;
        r.INTEGRA = 0;
        r.EXPORT = 0;
        r.MOMENTO = momento;
        // The document waits for its stamp from here: a stop before the printer confirms it
        // leaves it listed among the day's documents without one.
        ok = r.SQLInsert() && NetworkOutbox::publicar(ctx, r) &&
             clsAutenticacoes::registrar(ctx.db, r.IDRECEBE, mov.ID, r.AUTENTICA);
        if (ok)
            out.append({r.IDRECEBE, r.AUTENTICA, item, momento});
    }
    why = kFalhou;
    if (!ok || !tx.commit())
        return std::nullopt;
    why.clear();
    return out;
}
