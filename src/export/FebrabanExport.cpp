#include "FebrabanExport.h"

#include "AppContext.h"
#include "BankFileWriter.h"
#include "Clock.h"
#include "clsCodBarra.h"
#include "clsGeraFebraban.h"
#include "clsRecebimentos.h"

#include <QDir>

namespace {
using R = clsGeraFebraban::Registro;
}

QString FebrabanExport::nomeArquivo(const QString& estacao, const QString& descricao,
                                    const QString& codBanco, const QDateTime& agora) {
    return QStringLiteral("FebCX") + estacao + BankExport::parteDoNome(descricao.left(4)) +
           QLatin1Char('_') + BankExport::parteDoNome(codBanco) + QLatin1Char('_') +
           agora.toString(QStringLiteral("yyyyMMddHHmm")) + QStringLiteral(".RET");
}

QString FebrabanExport::estacao(const AppContext& ctx) {
    QString s;
    for (const QChar c : ctx.settings.guiche)
        if (c.isLetterOrNumber() && c.unicode() < 128)
            s += c;
    return s;
}

void FebrabanExport::monta(AppContext& ctx, const BankExport::Request& rq,
                           const QList<clsRecebimentos>& rows, clsGeraFebraban& g, QByteArray& out,
                           BankExport::Result& r) {
    auto put = [&](bool built, R kind) {
        BankExport::registro(r, built, g.resultado(kind), clsGeraFebraban::mensagemErro(kind), out);
    };
    g.COD_BANCO = rq.codBanco;
    g.NOME_BANCO =
        BankExport::ajusta(ctx.option(QStringLiteral("Export"), QStringLiteral("nome_banco")), 20);
    g.DATA_ARQ = rq.movimento.toString(QStringLiteral("yyyyMMdd"));
    g.CONT_ARQ = rq.movimento.toString(QStringLiteral("yyMMdd")); // the date is the sequence
    put(g.Gera_header(), R::Header);
    out.reserve(qsizetype(rows.size() + 2) * (clsGeraFebraban::kTamanho + 2));
    int counter = 0;
    for (int i = 0; i < rows.size(); ++i) {
        const clsRecebimentos& row = rows[i];
        g.DATA_PAGTO = rq.movimento.toString(QStringLiteral("yyyyMMdd"));
        // An item without barcode, or a code that is not 44 digits, fails its record.
        g.COD_BARRA = BankExport::codigoValido(row.CODBARRA) ? row.CODBARRA : QString();
        g.VALOR_ARREC = row.VALOR.centsText(12);
        g.NSR = BankExport::numero(++counter, 8);
        put(g.Gera_content(), R::Content);
        r.total += row.VALOR;
        if (rq.progresso)
            rq.progresso(i + 1, int(rows.size()));
        if (i + 1 < rows.size())
            BankExport::pausa(rq.pausaMs);
    }
    g.QUANT_REG = BankExport::numero(counter + 2, 6);
    g.VALOR_TOTAL = r.total.centsText(17);
    put(g.Gera_footer(), R::Footer);
    r.registros = counter + 2;
}

BankExport::Result FebrabanExport::gerar(AppContext& ctx, const BankExport::Request& rq) {
    BankExport::Result r;
    if (const QString why =
            BankExport::recusaCodigoBanco(BankExport::Arquivo::Febraban, rq.codBanco);
        !why.isEmpty()) {
        BankExport::falha(r, why);
        return r;
    }
    clsCodBarra kind(ctx.db);
    if (!BankExport::tipo(rq.idcod, BankExport::Arquivo::Febraban, kind, r))
        return r;
    const QDateTime agora = ctx.clock.now();
    const auto folder = BankExport::pasta(
        ctx, ctx.option(QStringLiteral("Export"), QStringLiteral("caminho_febraban")),
        QStringLiteral("caminho_febraban"), r);
    if (!folder)
        return r;
    r.arquivo =
        QDir(*folder).filePath(nomeArquivo(estacao(ctx), kind.DESCRICAO, rq.codBanco, agora));
    BankFileWriter file(r.arquivo, ctx.filePath(QStringLiteral("exportar.lock")),
                        QStringLiteral("Feb*.RET.tmp"), BankExport::registrado(ctx));
    const auto rows = BankExport::inicia(ctx, rq, file, r);
    if (!rows)
        return r;
    clsGeraFebraban g;
    QByteArray records;
    monta(ctx, rq, *rows, g, records, r);
    if (r.falhas == 0)
        BankExport::conclui(
            ctx, rq, BankExport::Arquivo::Febraban, rq.codBanco, file, *rows,
            [&](int) { return std::optional<QList<QByteArray>>(QList<QByteArray>{records}); }, r);
    r.ok = r.falhas == 0 && r.erros.isEmpty();
    if (!r.ok)
        r.registros = 0;
    return r;
}
