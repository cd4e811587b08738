#include "CnabExport.h"

#include "AppContext.h"
#include "BankFileWriter.h"
#include "CheckDigits.h"
#include "Clock.h"
#include "clsCodBarra.h"
#include "clsGeraCnab.h"
#include "clsRecebimentos.h"

#include <QDir>

namespace {
using R = clsGeraCnab::Registro;
const QString kExport = QStringLiteral("Export");
} // namespace

QString CnabExport::nomeArquivo(const QString& descricao, const QDateTime& agora) {
    return QStringLiteral("Cnab") + BankExport::parteDoNome(descricao.left(4)) +
           agora.toString(QStringLiteral("yyyyMMddHHmm")) + QStringLiteral(".RET");
}

Money CnabExport::jurosMulta(Money pago, Money valorTitulo) {
    return pago > valorTitulo ? pago - valorTitulo : Money();
}

void CnabExport::preencheArquivo(const AppContext& ctx, const clsCodBarra& kind,
                                 const QDate& movimento, const QDateTime& agora, clsGeraCnab& g) {
    const bool agua = kind.DESCRICAO.startsWith(QLatin1String("AGUA"), Qt::CaseInsensitive);
    g.COD_BANCO = ctx.option(kExport, QStringLiteral("cod_banco_cnab"));
    g.NOME_BANCO = BankExport::ajusta(ctx.option(kExport, QStringLiteral("nome_banco")), 30);
    g.CONVENIO =
        ctx.option(kExport, agua ? QStringLiteral("cedente_agua") : QStringLiteral("cedente_iptu"));
    const QString agencia = ctx.option(kExport, QStringLiteral("agencia"));
    g.AGENCIA = agencia.isEmpty() || !isAllDigits(agencia)
                    ? agencia
                    : agencia.rightJustified(5, QLatin1Char('0'));
    g.DIG_AGENCIA = ctx.option(kExport, QStringLiteral("dv"));
    g.NUM_INSC_EMP = ctx.option(kExport, QStringLiteral("cnpj"));
    g.NOME_EMP = BankExport::ajusta(ctx.settings.pref, 30);
    g.DATA_ARQUIVO = movimento.toString(QStringLiteral("ddMMyyyy"));
    g.HORA_ARQUIVO = agora.toString(QStringLiteral("HHmmss"));
    g.NSARQUIVO = BankExport::numero(0, 6); // the real number is taken once the run is good
}

// A value that cannot come from the code is left empty, so the record that needs it fails
// its width and the run writes nothing.
void CnabExport::preencheRecebimento(const clsRecebimentos& row, const QDate& movimento,
                                     DueFactor::Rule rule, clsGeraCnab& g) {
    const QString& code = row.CODBARRA;
    g.VALOR_PAGO_SACADO = row.VALOR.centsText(15);
    g.VALOR_LIQUIDO = g.VALOR_PAGO_SACADO;
    if (!BankExport::codigoValido(code)) {
        g.DATA_VENC_TITULO = g.IDENT_TITULO_BANCO = g.MODAL_NOSSO_NUM = g.VALOR_TITULO =
            g.JUROS_MULTA = QString();
        return;
    }
    const DueFactor::Result due = DueFactor::dueDate(code.mid(5, 4), movimento, rule);
    g.DATA_VENC_TITULO = due.status == DueFactor::Status::Ok
                             ? due.date.toString(QStringLiteral("ddMMyyyy"))
                         : due.status == DueFactor::Status::NoDueDate ? QStringLiteral("00000000")
                                                                      : QString();
    g.IDENT_TITULO_BANCO = code.mid(26, 3) + code.mid(30, 3) + code.mid(34, 9);
    g.MODAL_NOSSO_NUM = code.mid(29, 1) + code.mid(33, 1);
    const Money face = Money::fromCents(code.mid(9, 10).toLongLong());
    g.VALOR_TITULO = face.centsText(15);
    g.JUROS_MULTA = jurosMulta(row.VALOR, face).centsText(15);
}

void CnabExport::monta(AppContext& ctx, const BankExport::Request& rq,
                       const QList<clsRecebimentos>& rows, clsGeraCnab& g, Records& out,
                       BankExport::Result& r) {
    auto put = [&](bool built, R kind, QByteArray& into) {
        BankExport::registro(r, built, g.resultado(kind), clsGeraCnab::mensagemErro(kind), into);
    };
    put(g.Header_arquivo(), R::HeaderArquivo, out.head);
    put(g.Header_lote(), R::HeaderLote, out.head);
    const auto rule = DueFactor::ruleFromSetting(
        ctx.option(QStringLiteral("Opcoes"), QStringLiteral("fator_vencimento")));
    out.body.reserve(qsizetype(rows.size()) * 2 * (clsGeraCnab::kTamanho + 2));
    int counter = 0;
    for (int i = 0; i < rows.size(); ++i) {
        preencheRecebimento(rows[i], rq.movimento, rule, g);
        g.NSREGISTRO = BankExport::numero(++counter, 5);
        put(g.Detalhe_t(), R::DetalheT, out.body);
        g.NSREGISTRO = BankExport::numero(++counter, 5);
        put(g.Detalhe_u(), R::DetalheU, out.body);
        r.total += rows[i].VALOR;
        if (rq.progresso)
            rq.progresso(i + 1, int(rows.size()));
        if (i + 1 < rows.size())
            BankExport::pausa(rq.pausaMs);
    }
    g.QUANT_REG_LOTE = BankExport::numero(counter + 2, 6);
    g.QUANT_REG_ARQ = BankExport::numero(counter + 4, 6);
    put(g.Cria_trailer_lote(), R::TrailerLote, out.tail);
    put(g.Cria_trailer_arquivo(), R::TrailerArquivo, out.tail);
    r.registros = counter + 4;
}

BankExport::Result CnabExport::gerar(AppContext& ctx, const BankExport::Request& rq) {
    BankExport::Result r;
    clsCodBarra kind(ctx.db);
    if (!BankExport::tipo(rq.idcod, BankExport::Arquivo::Cnab, kind, r))
        return r;
    const QDateTime agora = ctx.clock.now();
    const auto folder = BankExport::pasta(ctx, ctx.settings.Path3, QStringLiteral("Path3"), r);
    if (!folder)
        return r;
    r.arquivo = QDir(*folder).filePath(nomeArquivo(kind.DESCRICAO, agora));
    BankFileWriter file(r.arquivo, ctx.filePath(QStringLiteral("exportar.lock")),
                        QStringLiteral("Cnab*.RET.tmp"), BankExport::registrado(ctx));
    const auto rows = BankExport::inicia(ctx, rq, file, r);
    if (!rows)
        return r;
    if (rows->size() > kMaximoRecebimentos) {
        BankExport::falha(r, QStringLiteral("O arquivo CNAB comporta até %1 recebimentos por lote; "
                                            "há %2 neste movimento.")
                                 .arg(kMaximoRecebimentos)
                                 .arg(rows->size()));
        return r;
    }
    clsGeraCnab g;
    preencheArquivo(ctx, kind, rq.movimento, agora, g);
    Records records;
    monta(ctx, rq, *rows, g, records, r);
    if (r.falhas > 0) {
        r.registros = 0;
        return r;
    }
    // The number is taken only now, with the file written in its transaction: a run that fails
    // its records or its writing does not use one up.
    const auto numera = [&](int nsa) -> std::optional<QList<QByteArray>> {
        g.NSARQUIVO = BankExport::numero(nsa, 6);
        if (!g.Header_arquivo() || !g.Header_lote())
            return std::nullopt;
        records.head = g.resultado(R::HeaderArquivo).toLatin1() + "\r\n" +
                       g.resultado(R::HeaderLote).toLatin1() + "\r\n";
        return QList<QByteArray>{records.head, records.body, records.tail};
    };
    if (!BankExport::conclui(ctx, rq, BankExport::Arquivo::Cnab, g.COD_BANCO, file, *rows, numera,
                             r))
        return r;
    r.ok = true;
    return r;
}
