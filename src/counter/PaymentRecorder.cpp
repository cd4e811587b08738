#include "PaymentRecorder.h"

#include "AppContext.h"
#include "DateUtil.h"
#include "DialogPort.h"
#include "Transaction.h"
#include "clsMovimento.h"
#include "clsRecebimentos.h"

const QString PaymentRecorder::kGravado = QStringLiteral("Registro Gravado!!!");
const QString PaymentRecorder::kEncerrado =
    QStringLiteral("O movimento deste dia está encerrado!! Reabra o movimento (F5) para receber.");
const QString PaymentRecorder::kFalhou = QStringLiteral(
    "Erro ao gravar o pagamento!! Nenhum item foi gravado; confira e tente novamente.");

std::optional<QList<RecordedReceipt>>
PaymentRecorder::record(AppContext& ctx, const clsMovimento& mov, const CustomerList& list) {
    if (list.isEmpty())
        return std::nullopt;
    clsMovimento current(ctx.db);
    if (!current.SQLSelect(mov.ID) || current.STATUS != QLatin1String("ABERTO")) {
        ctx.dialogs.critical(QStringLiteral("Aviso"), kEncerrado);
        return std::nullopt;
    }
    QList<RecordedReceipt> out;
    Transaction tx(ctx.db);
    bool ok = tx.ok();
    clsRecebimentos max(ctx.db);
    max.AUTENTICA = 0; // the first receipt of a movement is 1
    if (ok)
        max.SQLSelectMax(mov.ID);
    qint16 next = max.AUTENTICA;
    for (int i = 0; ok && i < list.size(); ++i) {
        const CustomerItem& item = list.at(i);
        clsRecebimentos r(ctx.db);
        r.AUTENTICA = ++next;
        r.IDMOVIMENTO = static_cast<qint16>(mov.ID);
        r.TIPO = static_cast<qint16>(item.tipo);
        r.VALOR = item.valor;
        r.CODBARRA = item.codbarra;
        r.VENCIMENTO = item.vencimento.isValid() ? DateUtil::br(item.vencimento) : QString();
        r.PARCELA = item.parcela;
        r.OBS = item.obs;
        r.INTEGRA = 0;
        r.EXPORT = 0;
        ok = r.SQLInsert();
        if (ok)
            out.append({r.IDRECEBE, r.AUTENTICA, item});
    }
    if (!ok || !tx.commit()) {
        ctx.dialogs.critical(QStringLiteral("Aviso"), kFalhou);
        return std::nullopt;
    }
    ctx.dialogs.info(QStringLiteral("Gravar Registro"), kGravado);
    return out;
}
