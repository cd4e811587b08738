#include "ExportMarks.h"
#include "SystemTexts.h"

#include "ActLog.h"
#include "AppContext.h"
#include "Transaction.h"
#include "clsRecebimentos.h"

namespace {
// The marks and one act per receipt marked, together.
bool gravarComAtos(AppContext& ctx, const QList<QPair<qint32, int>>& marcas) {
    Transaction tx(ctx.db);
    if (!tx.ok() || !clsRecebimentos::SQLUpdateExport(ctx.db, marcas))
        return false;
    for (const auto& m : marcas)
        if (!ActLog::gravar(ctx, Act::ArquivosBanco, ActLog::Acao::Alteracao,
                            QStringLiteral("Recebimentos"), m.first))
            return false;
    return tx.commit();
}
} // namespace

QList<QPair<qint32, int>> ExportMarks::marcas(Lista lista, const QList<Linha>& linhas) {
    QList<QPair<qint32, int>> out;
    out.reserve(linhas.size());
    for (const Linha& l : linhas) {
        const bool rejeita = lista == Lista::Confirmados ? l.marcada : !l.marcada;
        out.append({l.idrecebe, rejeita ? 1 : 0});
    }
    return out;
}

Outcome ExportMarks::gravar(AppContext& ctx, const QList<QPair<qint32, int>>& marcas) {
    if (gravarComAtos(ctx, marcas))
        return Outcome::ok();
    return Outcome::refused(SystemTexts::notice(SystemText::ErroGravarMarcas));
}

Outcome ExportMarks::gravarIds(AppContext& ctx, qint32 idMovimento, const QList<qint32>& ids,
                               int flag) {
    QList<QPair<qint32, int>> list;
    for (const qint32 id : ids) {
        clsRecebimentos r(ctx.db);
        if (!r.SQLSelect(id) || r.IDMOVIMENTO != idMovimento)
            return Outcome::refused(
                {SystemTexts::aviso(),
                 SystemTexts::text(SystemText::RecebimentoNaoEncontradoMovimento).arg(id),
                 DialogIcon::Critical});
        list.append({id, flag});
    }
    return gravar(ctx, list);
}
