#include "CorrectionRecord.h"

#include "AppContext.h"
#include "Clock.h"
#include "DayMovement.h"
#include "FileText.h"
#include "KindRegistry.h"
#include "NetworkOutbox.h"
#include "SystemTexts.h"
#include "Transaction.h"
#include "clsAtos.h"
#include "clsCodBarra.h"

#include <QRegularExpression>

namespace {
Notice text(SystemText t) {
    return SystemTexts::notice(t);
}

QString numero(int n) {
    return QStringLiteral("%1").arg(n, 3, 10, QLatin1Char('0'));
}

bool semCodigoProprio(const QString& codbarra) {
    // The 44 zeros and the codes starting "000" may repeat.
    return codbarra.startsWith(QLatin1String("000"));
}

Notice acimaDoLimite() {
    return text(SystemText::AutenticaAcimaDoLimite).arg(clsRecebimentos::kMaxAutentica);
}
} // namespace

CorrectionRecord::CorrectionRecord(AppContext& ctx, const CorrectionLog& log)
    : m_ctx(ctx), m_log(log) {}

QString CorrectionRecord::autorizou(const AppContext& ctx) {
    return ctx.autorizadoPor.isEmpty() ? ctx.userName : ctx.autorizadoPor;
}

QString CorrectionRecord::ato(CorrectionLog::Kind kind) {
    switch (kind) {
    case CorrectionLog::Kind::Estorno:
        return QStringLiteral("Estorno");
    case CorrectionLog::Kind::Alteracao:
        return QStringLiteral("Alteração");
    case CorrectionLog::Kind::Reversao:
        break;
    }
    return QStringLiteral("Reversão");
}

Notice CorrectionRecord::recusaMotivo(const QString& motivo) {
    const Notice obrigatorio = text(SystemText::MotivoObrigatorio);
    if (motivo.trimmed().isEmpty())
        return obrigatorio;
    // The reason is one line of the year's log, kept as typed.
    const QString why = FileText::problem(motivo.trimmed(), FileText::Field::Motivo);
    return why.isEmpty() ? Notice{} : obrigatorio.with(why);
}

Notice CorrectionRecord::recusaRecebimento(qint32 idrecebe, clsRecebimentos& r, clsMovimento& mov) {
    const auto day = DayMovement::ofWorkingDate(m_ctx);
    if (!day)
        return text(SystemText::SemMovimento);
    mov = *day;
    if (!mov.aberto())
        return text(SystemText::CorrecaoDiaEncerrado);
    if (!r.SQLSelect(idrecebe) || r.IDMOVIMENTO != mov.ID)
        return text(SystemText::RecebimentoNaoEncontrado);
    return {};
}

Notice CorrectionRecord::recusaNumeroECodigo(qint32 idrecebe, std::optional<qint32> autentica,
                                             const std::optional<QString>& codbarra,
                                             qint32 idMovimento) {
    if (autentica) {
        const auto used =
            clsRecebimentos::autenticaEmUso(m_ctx.db, idMovimento, *autentica, idrecebe);
        if (!used || *used)
            return text(SystemText::AutenticaEmUso).arg(numero(*autentica));
    }
    if (codbarra && !semCodigoProprio(*codbarra)) {
        const auto used = clsRecebimentos::codigoEmUso(m_ctx.db, *codbarra, idrecebe);
        if (!used || *used)
            return text(SystemText::ContaRecebida);
    }
    return {};
}

Notice CorrectionRecord::recusaRegistro() {
    QString where;
    return m_log.podeGravar(&where) ? Notice{}
                                    : text(SystemText::RegistroEstornosBloqueado).arg(where);
}

Notice CorrectionRecord::recusaEstorno(qint32 idrecebe, clsEstornos& e, clsMovimento& mov) {
    const auto day = DayMovement::ofWorkingDate(m_ctx);
    if (!day)
        return text(SystemText::SemMovimento);
    mov = *day;
    const auto found = clsEstornos::ultimoEstorno(m_ctx.db, idrecebe);
    if (!found || found->IDMOVIMENTO != mov.ID)
        return text(SystemText::SemEstorno);
    if (!mov.aberto())
        return text(SystemText::CorrecaoDiaEncerrado);
    e = *found;
    // The receipt comes back with its own number and code, so neither may have been taken.
    const Notice recusa = recusaNumeroECodigo(e.IDRECEBE, e.AUTENTICA, e.CODBARRA, mov.ID);
    return recusa.empty() ? recusaRegistro() : recusa;
}

Notice CorrectionRecord::tipoValido(int tipo, qint16 atual) {
    clsCodBarra k(m_ctx.db);
    if (tipo < 1 || tipo > 99 || !k.SQLSelect(tipo))
        return text(SystemText::TipoNaoCadastrado);
    // The code's digits mean what its standard says: a Febraban guide read as a bank slip
    // would carry its digits as a face value.
    if (clsCodBarra antes(m_ctx.db);
        tipo != atual && antes.SQLSelect(atual) &&
        antes.PADRAO.trimmed().compare(k.PADRAO.trimmed(), Qt::CaseInsensitive) != 0)
        return text(SystemText::PadraoDiferente)
            .arg(KindRegistry::codeText(tipo))
            .arg(antes.PADRAO.trimmed());
    return {};
}

Notice CorrectionRecord::valores(const CorrectionRequest& p, const clsRecebimentos& atual,
                                 CorrectionValues& v) {
    v = {atual.TIPO, atual.AUTENTICA, atual.CODBARRA, atual.VALOR};
    if (p.tipo) {
        if (const Notice n = tipoValido(*p.tipo, atual.TIPO); !n.empty())
            return n;
        v.tipo = static_cast<qint16>(*p.tipo);
    }
    if (p.autentica) {
        if (*p.autentica < 1)
            return text(SystemText::AutenticaInvalida);
        if (*p.autentica > clsRecebimentos::kMaxAutentica)
            return acimaDoLimite();
        v.autentica = qint32(*p.autentica);
    }
    if (p.codbarra) {
        static const QRegularExpression digits(QStringLiteral("^\\d{44}$"));
        if (!digits.match(*p.codbarra).hasMatch())
            return text(SystemText::CodigoBarrasInvalido);
        v.codbarra = *p.codbarra;
    }
    // An amount is whole centavos and more than nothing.
    if (p.valor && p.valor->units() <= 0)
        return text(SystemText::ValorNaoNumero);
    if (p.valor)
        v.valor = *p.valor;
    return {};
}

clsEstornos CorrectionRecord::registroDe(const clsRecebimentos& r, clsEstornos::Operacao op,
                                         const QString& motivo) {
    clsEstornos e(m_ctx.db);
    e.copiarRecebimento(r);
    e.OPERACAO = op;
    e.MOMENTO = m_ctx.clock.now();
    e.USUARIO = autorizou(m_ctx);
    e.MOTIVO = motivo.trimmed();
    return e;
}

bool CorrectionRecord::registrarAto(CorrectionLog::Kind kind, qint32 idEstorno) {
    return clsAtos::gravar(m_ctx.db, {m_ctx.clock.now(), ato(kind), QStringLiteral("Estornos"),
                                      idEstorno, m_ctx.userName, m_ctx.autorizadoPor});
}

CorrectionRecord::Gravacao CorrectionRecord::estornar(qint32 idrecebe, const QString& motivo) {
    Gravacao g(m_ctx.db);
    g.motivo = motivo;
    bool gravou = false;
    {
        Transaction tx(m_ctx.db);
        if (tx.ok())
            g.recusa = recusaRecebimento(idrecebe, g.antes, g.mov);
        if (tx.ok() && g.recusa.empty())
            g.recusa = recusaRegistro();
        if (tx.ok() && g.recusa.empty()) {
            clsEstornos e = registroDe(g.antes, clsEstornos::Operacao::Estorno, motivo);
            gravou = e.SQLInsert() && registrarAto(CorrectionLog::Kind::Estorno, e.ID) &&
                     g.antes.SQLDelete() && NetworkOutbox::retirar(m_ctx, g.antes, e.MOMENTO) &&
                     tx.commit();
        }
    }
    if (g.recusa.empty() && !gravou)
        g.recusa = text(SystemText::ErroExcluir);
    return g;
}

Notice CorrectionRecord::recusaAlteracao(const CorrectionValues& novo, Gravacao& g) {
    const clsRecebimentos& antes = g.antes;
    if (novo.tipo == antes.TIPO && novo.autentica == antes.AUTENTICA &&
        novo.codbarra == antes.CODBARRA && novo.valor == antes.VALOR)
        return text(SystemText::NadaAlterado);
    if (novo.autentica != antes.AUTENTICA &&
        (novo.autentica < 1 || novo.autentica > clsRecebimentos::kMaxAutentica))
        return acimaDoLimite();
    const Notice n = recusaNumeroECodigo(
        antes.IDRECEBE,
        novo.autentica != antes.AUTENTICA ? std::optional(novo.autentica) : std::nullopt,
        novo.codbarra != antes.CODBARRA ? std::optional(novo.codbarra) : std::nullopt, g.mov.ID);
    return n.empty() ? recusaRegistro() : n;
}

bool CorrectionRecord::gravarAlteracao(const CorrectionValues& novo, Gravacao& g) {
    const clsRecebimentos& antes = g.antes;
    clsEstornos e = registroDe(antes, clsEstornos::Operacao::Alteracao, g.motivo);
    e.NOVO_TIPO = novo.tipo;
    e.NOVO_AUTENTICA = novo.autentica;
    e.NOVO_CODBARRA = novo.codbarra;
    e.NOVO_VALOR = novo.valor;
    clsRecebimentos& depois = g.depois;
    depois = antes;
    depois.TIPO = novo.tipo;
    depois.AUTENTICA = novo.autentica;
    depois.CODBARRA = novo.codbarra;
    depois.VALOR = novo.valor;
    bool gravou =
        e.SQLInsert() && registrarAto(CorrectionLog::Kind::Alteracao, e.ID) && depois.SQLUpdate();
    if (gravou && depois.CODBARRA != antes.CODBARRA)
        gravou = NetworkOutbox::retirar(m_ctx, antes, e.MOMENTO) &&
                 NetworkOutbox::publicar(m_ctx, depois);
    // Items without barcode never go to a bank file; a real code does.
    const bool semCodigo = depois.CODBARRA == clsRecebimentos::kSemCodigo;
    if (gravou && semCodigo != (antes.CODBARRA == clsRecebimentos::kSemCodigo)) {
        depois.EXPORT = semCodigo ? 1 : 0;
        gravou = depois.SQLUpdateExport(depois.IDRECEBE, depois.EXPORT);
    }
    return gravou;
}

CorrectionRecord::Gravacao CorrectionRecord::alterar(qint32 idrecebe, const CorrectionValues& novo,
                                                     const QString& motivo) {
    Gravacao g(m_ctx.db);
    g.motivo = motivo;
    bool gravou = false;
    {
        Transaction tx(m_ctx.db);
        if (tx.ok())
            g.recusa = recusaRecebimento(idrecebe, g.antes, g.mov);
        if (tx.ok() && g.recusa.empty())
            g.recusa = recusaAlteracao(novo, g);
        if (tx.ok() && g.recusa.empty())
            gravou = gravarAlteracao(novo, g) && tx.commit();
    }
    if (g.recusa.empty() && !gravou)
        g.recusa = text(SystemText::ErroGravar);
    return g;
}

CorrectionRecord::Gravacao CorrectionRecord::reverter(qint32 idrecebe) {
    Gravacao g(m_ctx.db);
    clsEstornos e(m_ctx.db);
    bool gravou = false;
    {
        Transaction tx(m_ctx.db);
        if (tx.ok())
            g.recusa = recusaEstorno(idrecebe, e, g.mov);
        if (tx.ok() && g.recusa.empty()) {
            e.restaurarEm(g.depois);
            gravou = g.depois.SQLRestore() &&
                     e.SQLMarcarRevertido(m_ctx.clock.now(), autorizou(m_ctx)) &&
                     registrarAto(CorrectionLog::Kind::Reversao, e.ID) &&
                     NetworkOutbox::publicar(m_ctx, g.depois) && tx.commit();
        }
    }
    g.motivo = e.MOTIVO;
    if (g.recusa.empty() && !gravou)
        g.recusa = text(SystemText::ErroReverter);
    return g;
}
