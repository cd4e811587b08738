#include "ReceiptCorrections.h"

#include "AppContext.h"
#include "DayMovement.h"
#include "NetworkOutbox.h"
#include "SystemTexts.h"
#include "clsAutenticadora.h"

namespace {
QString numero(int n) {
    return QStringLiteral("%1").arg(n, 3, 10, QLatin1Char('0'));
}
} // namespace

ReceiptCorrections::ReceiptCorrections(AppContext& ctx, CounterPrinter* printer)
    : m_ctx(ctx), m_journal(ctx), m_record(ctx, m_journal.log()), m_tape(ctx, printer) {}

Notice ReceiptCorrections::perguntaEstorno(qint32 autentica, const QString& arquivos) {
    const Notice q =
        SystemTexts::notice(SystemText::PerguntaExcluirLancamento).arg(numero(autentica));
    if (arquivos.isEmpty())
        return q;
    return q.with(q.text + QLatin1Char('\n') + avisoArquivoBanco(autentica, arquivos).text);
}

Notice ReceiptCorrections::avisoArquivoBanco(qint32 autentica, const QString& arquivos) {
    return SystemTexts::notice(SystemText::ArquivoBancoEnviado)
        .arg(numero(autentica))
        .arg(arquivos);
}

Notice ReceiptCorrections::perguntaReversao(qint32 autentica) {
    return SystemTexts::notice(SystemText::PerguntaReversao).arg(numero(autentica));
}

std::optional<clsMovimento> ReceiptCorrections::movimento() {
    return DayMovement::ofWorkingDate(m_ctx);
}

std::optional<QList<clsRecebimentos::Corrigivel>>
ReceiptCorrections::listar(std::optional<qint32> autentica) {
    const auto mov = movimento();
    if (!mov)
        return QList<clsRecebimentos::Corrigivel>{};
    auto rows = clsRecebimentos::listarParaCorrecao(m_ctx.db, mov->ID, autentica);
    if (!rows)
        m_ctx.errors.report(QStringLiteral("Função Lista_Movimento_dia"),
                            {0, m_ctx.db.lastError(), QStringLiteral("frmCorrigeGuia")});
    return rows;
}

std::optional<QList<clsEstornos>> ReceiptCorrections::estornosRevertiveis() {
    const auto mov = movimento();
    if (!mov)
        return QList<clsEstornos>{};
    return clsEstornos::estornosAbertos(m_ctx.db, mov->ID);
}

ReceiptCorrections::Resultado
ReceiptCorrections::concluir(bool enviar, const CorrectionLog::Entry& e, SystemText sucesso) {
    Resultado res;
    res.feito = true;
    if (enviar)
        NetworkOutbox::enviar(m_ctx);
    m_journal.registrar(e, res);
    res.avisos << SystemTexts::notice(sucesso);
    return res;
}

void ReceiptCorrections::avisarArquivo(const clsRecebimentos& r, Resultado& res) {
    res.arquivoBanco = m_journal.arquivosBanco(r.IDRECEBE);
    if (!res.arquivoBanco.isEmpty())
        res.avisos << avisoArquivoBanco(r.AUTENTICA, res.arquivoBanco);
}

Notice ReceiptCorrections::recusaEstorno(qint32 idrecebe, const QString& motivo) {
    if (const Notice n = CorrectionRecord::recusaMotivo(motivo); !n.empty())
        return n;
    clsRecebimentos r(m_ctx.db);
    clsMovimento mov(m_ctx.db);
    const Notice n = m_record.recusaRecebimento(idrecebe, r, mov);
    return n.empty() ? m_record.recusaRegistro() : n;
}

ReceiptCorrections::Resultado ReceiptCorrections::estornar(qint32 idrecebe, const QString& motivo) {
    if (const Notice n = CorrectionRecord::recusaMotivo(motivo); !n.empty())
        return Resultado::refused(n);
    m_journal.completar();
    const CorrectionRecord::Gravacao g = m_record.estornar(idrecebe, motivo);
    if (!g.feito())
        return Resultado::refused(g.recusa);
    const auto kind = CorrectionLog::Kind::Estorno;
    Resultado res = concluir(true, m_journal.entrada(kind, g.mov, g.antes, motivo),
                             SystemText::ExclusaoEfetuada);
    res.antes = g.antes;
    m_tape.item(g.antes, &clsAutenticadora::EstornoItem, res);
    avisarArquivo(g.antes, res);
    return res;
}

ReceiptCorrections::Resultado ReceiptCorrections::alterar(const Pedido& p) {
    if (const Notice n = CorrectionRecord::recusaMotivo(p.motivo); !n.empty())
        return Resultado::refused(n);
    clsRecebimentos r(m_ctx.db);
    clsMovimento mov(m_ctx.db);
    if (const Notice n = m_record.recusaRecebimento(p.idrecebe, r, mov); !n.empty())
        return Resultado::refused(n);
    Valores novo;
    if (const Notice n = m_record.valores(p, r, novo); !n.empty())
        return Resultado::refused(n);
    return alterar(p.idrecebe, novo, p.motivo);
}

ReceiptCorrections::Resultado ReceiptCorrections::alterar(qint32 idrecebe, const Valores& novo,
                                                          const QString& motivo) {
    if (const Notice n = CorrectionRecord::recusaMotivo(motivo); !n.empty())
        return Resultado::refused(n);
    m_journal.completar();
    const CorrectionRecord::Gravacao g = m_record.alterar(idrecebe, novo, motivo);
    if (!g.feito())
        return Resultado::refused(g.recusa);
    CorrectionLog::Entry e =
        m_journal.entrada(CorrectionLog::Kind::Alteracao, g.mov, g.depois, motivo);
    if (g.depois.VALOR != g.antes.VALOR)
        e.valorAnterior = g.antes.VALOR;
    if (g.depois.TIPO != g.antes.TIPO)
        e.tipoAnterior = m_journal.descricaoTipo(g.antes.TIPO);
    Resultado res =
        concluir(g.depois.CODBARRA != g.antes.CODBARRA, e, SystemText::OperacaoEfetuada);
    res.antes = g.antes;
    res.depois = g.depois;
    avisarArquivo(g.antes, res);
    m_tape.alteracao(g.antes, g.depois, e.tipo, res);
    return res;
}

Notice ReceiptCorrections::recusaReversao(qint32 idrecebe) {
    clsEstornos e(m_ctx.db);
    clsMovimento mov(m_ctx.db);
    return m_record.recusaEstorno(idrecebe, e, mov);
}

ReceiptCorrections::Resultado ReceiptCorrections::reverter(qint32 idrecebe) {
    m_journal.completar();
    const CorrectionRecord::Gravacao g = m_record.reverter(idrecebe);
    if (!g.feito())
        return Resultado::refused(g.recusa);
    const auto kind = CorrectionLog::Kind::Reversao;
    Resultado res = concluir(true, m_journal.entrada(kind, g.mov, g.depois, g.motivo),
                             SystemText::RevertidoComSucesso);
    res.depois = g.depois;
    m_tape.item(g.depois, &clsAutenticadora::ReverteItem, res);
    return res;
}
