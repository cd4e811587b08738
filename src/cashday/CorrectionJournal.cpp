#include "CorrectionJournal.h"

#include "AppContext.h"
#include "CorrectionRecord.h"
#include "SystemTexts.h"
#include "clsArquivoBanco.h"
#include "clsAtos.h"
#include "clsCodBarra.h"

#include <QHash>

CorrectionJournal::CorrectionJournal(AppContext& ctx) : m_ctx(ctx), m_log(ctx) {}

QString CorrectionJournal::descricaoTipo(qint16 idcod) {
    clsCodBarra k(m_ctx.db);
    if (k.SQLSelect(idcod) && !k.DESCRICAO.trimmed().isEmpty())
        return k.DESCRICAO.trimmed();
    return QString::number(idcod);
}

QString CorrectionJournal::arquivosBanco(qint32 idrecebe) {
    const auto files = clsArquivoBanco::doRecebimento(m_ctx.db, idrecebe);
    QStringList out;
    for (const auto& f : files.value_or(QList<clsArquivoBanco::Arquivo>{}))
        out << f.descricao();
    return out.join(QStringLiteral(", "));
}

CorrectionLog::Entry CorrectionJournal::entrada(CorrectionLog::Kind kind, const clsMovimento& mov,
                                                const clsRecebimentos& r, const QString& motivo) {
    CorrectionLog::Entry e;
    e.kind = kind;
    e.movimento = mov.MOV;
    e.data = mov.MDATA;
    e.usuario = CorrectionRecord::autorizou(m_ctx);
    // Named apart only when an administrator allowed what the operator at the counter did.
    e.operador = m_ctx.autorizadoPor.isEmpty() ? QString() : m_ctx.userName;
    e.autentica = r.AUTENTICA;
    e.tipo = descricaoTipo(r.TIPO);
    e.valor = r.VALOR;
    e.arquivoBanco = arquivosBanco(r.IDRECEBE);
    e.motivo = motivo.trimmed();
    return e;
}

void CorrectionJournal::registrar(const CorrectionLog::Entry& e, CorrectionResult& res) {
    QString error;
    res.arquivo = m_log.currentPath();
    res.registrado = m_log.append(e, &error);
    if (!res.registrado)
        res.avisos << SystemTexts::notice(SystemText::RegistroEstornosFalhou).arg(error);
}

QString CorrectionJournal::operadorDoAto(CorrectionLog::Kind kind, qint32 idEstorno) {
    const QString ato = CorrectionRecord::ato(kind);
    const auto atos = clsAtos::doRegistro(m_ctx.db, QStringLiteral("Estornos"), idEstorno);
    for (const clsAtos::Ato& a : atos.value_or(QList<clsAtos::Ato>{}))
        if (a.ato == ato)
            return a.autorizadoPor.isEmpty() ? QString() : a.operador;
    return {};
}

void CorrectionJournal::entradasDe(const clsEstornos& row, const clsMovimento& mov, PorAno& out) {
    using Kind = CorrectionLog::Kind;
    clsRecebimentos antes(m_ctx.db);
    row.restaurarEm(antes);
    const bool alteracao = row.OPERACAO == clsEstornos::Operacao::Alteracao;
    clsRecebimentos depois = antes;
    if (alteracao) {
        depois.AUTENTICA = row.NOVO_AUTENTICA.value_or(antes.AUTENTICA);
        depois.TIPO = row.NOVO_TIPO.value_or(antes.TIPO);
        depois.VALOR = row.NOVO_VALOR.value_or(antes.VALOR);
    }
    const Kind kind = alteracao ? Kind::Alteracao : Kind::Estorno;
    CorrectionLog::Entry e = entrada(kind, mov, depois, row.MOTIVO);
    e.usuario = row.USUARIO;
    e.operador = operadorDoAto(kind, row.ID);
    if (alteracao && depois.VALOR != antes.VALOR)
        e.valorAnterior = antes.VALOR;
    if (alteracao && depois.TIPO != antes.TIPO)
        e.tipoAnterior = descricaoTipo(antes.TIPO);
    out[row.MOMENTO.date().year()].append(e);
    if (!alteracao && row.REVERTIDO_EM.isValid()) {
        CorrectionLog::Entry r = entrada(Kind::Reversao, mov, antes, row.MOTIVO);
        r.usuario = row.REVERTIDO_POR;
        r.operador = operadorDoAto(Kind::Reversao, row.ID);
        out[row.REVERTIDO_EM.date().year()].append(r);
    }
}

std::optional<CorrectionJournal::PorAno> CorrectionJournal::esperadas() {
    const auto rows = clsEstornos::listarTodos(m_ctx.db);
    if (!rows)
        return std::nullopt;
    QHash<qint32, std::optional<clsMovimento>> movimentos;
    PorAno out;
    for (const clsEstornos& row : *rows) {
        auto it = movimentos.find(row.IDMOVIMENTO);
        if (it == movimentos.end()) {
            clsMovimento mov(m_ctx.db);
            it = movimentos.insert(row.IDMOVIMENTO, mov.SQLSelect(row.IDMOVIMENTO)
                                                        ? std::optional(mov)
                                                        : std::nullopt);
        }
        clsMovimento mov(m_ctx.db);
        if (*it)
            mov = **it;
        entradasDe(row, mov, out);
    }
    return out;
}

QList<CorrectionLog::Entry>
CorrectionJournal::faltantes(int year, const QList<CorrectionLog::Entry>& entries) {
    QHash<QString, int> escritas;
    for (const auto& f : m_log.read(year))
        for (const auto& p : CorrectionLog::parse(f.lines))
            ++escritas[CorrectionLog::chave(p.kind, p.fields)];
    QList<CorrectionLog::Entry> faltam;
    for (const CorrectionLog::Entry& e : entries) {
        int& n = escritas[CorrectionLog::chave(e.kind, CorrectionLog::lines(e))];
        if (n > 0)
            --n;
        else
            faltam << e;
    }
    return faltam;
}

std::optional<int> CorrectionJournal::completar() {
    const auto porAno = esperadas();
    if (!porAno)
        return std::nullopt;
    int added = 0;
    for (const auto& [year, entries] : *porAno) {
        const QList<CorrectionLog::Entry> faltam = faltantes(year, entries);
        QString error;
        if (!m_log.appendTo(year, faltam, &error)) {
            m_ctx.errors.append(QStringLiteral("Registro de estornos"),
                                {0, error, QStringLiteral("ReceiptCorrections")});
            return std::nullopt;
        }
        added += int(faltam.size());
    }
    return added;
}
