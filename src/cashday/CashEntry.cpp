#include "CashEntry.h"

#include "ActLog.h"
#include "AppContext.h"
#include "CashAmount.h"
#include "DayMovement.h"
#include "FileText.h"
#include "Transaction.h"
#include "clsMovimento.h"

namespace {
Notice text(SystemText id) {
    return SystemTexts::notice(id);
}
Notice ceiling(SystemText id) {
    return text(id).arg(Money::maximum().formatCurrency());
}
bool registrar(AppContext& ctx, EntryKind kind, ActLog::Acao acao, qint32 idSangria) {
    return ActLog::gravar(ctx, EntryKinds::act(kind), acao, QStringLiteral("Sangria"), idSangria);
}
} // namespace

CashEntry::CashEntry(AppContext& ctx, qint32 idMovimento, EntryKind kind)
    : m_ctx(ctx), m_idMovimento(idMovimento), m_kind(kind), m_header(ctx.db) {}

std::optional<clsSangria> CashEntry::lancamento(AppContext& ctx, qint32 idMovimento,
                                                qint32 idSangria) {
    clsSangria s(ctx.db);
    if (!s.SQLSelect(idSangria) || s.IDMOVIMENTO != idMovimento)
        return std::nullopt;
    return s;
}

std::optional<qint32> CashEntry::lancamentoDoItem(AppContext& ctx, qint32 idItem) {
    clsItens i(ctx.db);
    if (!i.SQLSelect(idItem))
        return std::nullopt;
    return i.IDSANGRIA;
}

Money CashEntry::total() const {
    Money sum;
    for (const clsItens& i : m_itens)
        sum += i.VALOR;
    return sum;
}

std::optional<bool> CashEntry::fechado(AppContext& ctx, qint32 idMovimento) {
    const auto open = DayMovement::isOpen(ctx.db, idMovimento);
    if (!open)
        return std::nullopt;
    return !*open;
}

Notice CashEntry::closedRefusal(SystemText id) {
    const auto closed = fechado(m_ctx, m_idMovimento);
    return closed && !*closed ? Notice{} : text(id);
}

bool CashEntry::carregar(qint32 idSangria) {
    clsSangria h(m_ctx.db);
    QList<clsItens> items;
    if (!h.SQLSelect(idSangria) || h.IDMOVIMENTO != m_idMovimento ||
        EntryKinds::fromTipo(h.TIPO) != m_kind)
        return false;
    m_header = h;
    if (!reloadItems(items))
        return false;
    m_itens = items;
    return true;
}

Outcome CashEntry::incluirItens(const QString& descricao) {
    if (Notice why = closedRefusal(SystemText::MovimentoFechadoAlteracao); !why.empty())
        return Outcome::refused(why);
    if (stored())
        return Outcome::ok();
    const QString descricaoFinal = EntryKinds::descriptionEditable(m_kind)
                                       ? descricao.trimmed()
                                       : EntryKinds::defaultDescription(m_kind);
    if (descricaoFinal.isEmpty())
        return Outcome::refused(text(SystemText::CamposObrigatorios));
    // The description is the integration file's debit header text.
    if (const QString why = FileText::problem(descricaoFinal, FileText::Field::DescricaoLancamento);
        !why.isEmpty())
        return Outcome::refused(text(SystemText::CamposObrigatorios).with(why));
    clsMovimento mov(m_ctx.db);
    // A database failure: its own report has already said why.
    if (!mov.SQLSelect(m_idMovimento))
        return Outcome::refused({});
    clsSangria h(m_ctx.db);
    h.IDMOVIMENTO = m_idMovimento;
    h.SDATA = mov.MDATA; // an entry always belongs to its cash day's date
    h.TIPO = EntryKinds::tipo(m_kind);
    h.DESCRICAO = descricaoFinal;
    Transaction tx(m_ctx.db);
    if (!tx.ok() || !h.inserirNovo() || !registrar(m_ctx, m_kind, ActLog::Acao::Inclusao, h.ID) ||
        !tx.commit())
        return Outcome::refused({});
    m_header = h;
    m_itens.clear();
    return Outcome::ok();
}

bool CashEntry::reloadItems(QList<clsItens>& items) {
    const auto rows = clsItens::listar(m_ctx.db, m_header.ID);
    if (!rows)
        return false;
    items = *rows;
    return true;
}

bool CashEntry::rewriteHeader(const QList<clsItens>& items, clsSangria& header) {
    Money sum;
    for (const clsItens& i : items)
        sum += i.VALOR;
    header.ENTRADA = m_kind == EntryKind::CashIn ? sum : Money();
    header.SAIDA = m_kind == EntryKind::CashIn ? Money() : sum;
    return header.alterar();
}

Outcome CashEntry::gravarItem(int especie, const QString& numero, Money valor) {
    if (Notice why = closedRefusal(SystemText::MovimentoFechadoAlteracao); !why.empty())
        return Outcome::refused(why);
    if (!stored() || especie <= 0)
        return Outcome::refused(text(SystemText::CamposObrigatorios));
    if (valor.isNegative() || valor.isZero())
        return Outcome::refused(text(SystemText::ValorInvalido));
    if (const QString why = FileText::problem(numero.trimmed(), FileText::Field::NumeroDocumento);
        !why.isEmpty())
        return Outcome::refused(text(SystemText::CamposObrigatorios).with(why));
    const auto kinds = clsItens::especies(m_ctx.db);
    if (!kinds)
        return Outcome::refused({});
    bool money = false;
    for (const auto& k : *kinds)
        money = money || k.first == especie;
    if (!money)
        return Outcome::refused(text(SystemText::EspecieInvalida));
    return gravarNaTransacao(especie, numero.trimmed(), valor);
}

Outcome CashEntry::gravarNaTransacao(int especie, const QString& numero, Money valor) {
    QList<clsItens> items;
    clsSangria header = m_header;
    Transaction tx(m_ctx.db);
    if (!tx.ok())
        return Outcome::refused({});
    if (Notice why = closedRefusal(SystemText::MovimentoFechadoAlteracao); !why.empty())
        return Outcome::refused(why);
    clsItens item(m_ctx.db);
    item.IDSANGRIA = m_header.ID;
    item.ESPECIE = static_cast<qint16>(especie);
    item.NUMERO = numero;
    item.VALOR = valor;
    if (!item.inserirNovo() || !reloadItems(items))
        return Outcome::refused({});
    if (Notice why = acimaDoLimite(items); !why.empty())
        return Outcome::refused(why);
    if (!rewriteHeader(items, header) ||
        !registrar(m_ctx, m_kind, ActLog::Acao::Alteracao, header.ID) || !tx.commit())
        return Outcome::refused({});
    m_header = header;
    m_itens = items;
    return Outcome::ok();
}

Notice CashEntry::acimaDoLimite(const QList<clsItens>& items) {
    Money sum;
    for (const clsItens& i : items)
        sum += i.VALOR;
    if (!sum.withinLimit())
        return ceiling(SystemText::TotalLancamentoAcimaDoLimite);
    // The day's entries in the same column, with this one's new total in place of its old.
    const auto somas = clsSangria::somarMovimento(m_ctx.db, m_idMovimento);
    if (!somas)
        return text(SystemText::ErroGravarItem);
    const Money antes = m_kind == EntryKind::CashIn ? m_header.ENTRADA : m_header.SAIDA;
    const Money dia = (m_kind == EntryKind::CashIn ? somas->entrada : somas->saida) - antes + sum;
    return dia.withinLimit() ? Notice{} : ceiling(SystemText::LancamentosDiaAcimaDoLimite);
}

Outcome CashEntry::excluirItem(qint32 idItem) {
    if (Notice why = closedRefusal(SystemText::MovimentoFechadoAlteracao); !why.empty())
        return Outcome::refused(why);
    bool ours = false;
    for (const clsItens& i : m_itens)
        ours = ours || i.ID == idItem;
    if (!stored() || !ours)
        return Outcome::refused(text(SystemText::InformeItem));
    QList<clsItens> items;
    clsSangria header = m_header;
    {
        Transaction tx(m_ctx.db);
        if (!tx.ok())
            return Outcome::refused({});
        if (Notice why = closedRefusal(SystemText::MovimentoFechadoAlteracao); !why.empty())
            return Outcome::refused(why);
        if (!clsItens(m_ctx.db).excluir(idItem) || !reloadItems(items) ||
            !rewriteHeader(items, header) ||
            !registrar(m_ctx, m_kind, ActLog::Acao::Alteracao, header.ID) || !tx.commit())
            return Outcome::refused({});
    }
    m_header = header;
    m_itens = items;
    return Outcome::ok();
}

Outcome CashEntry::concluir() {
    if (stored() && m_itens.isEmpty())
        return Outcome::refused(text(SystemText::InformeItem));
    m_header = clsSangria(m_ctx.db);
    m_itens.clear();
    return Outcome::ok();
}

bool CashEntry::sair() {
    if (stored() && m_itens.isEmpty() && !clsSangria(m_header).excluir(m_header.ID))
        return false;
    m_header = clsSangria(m_ctx.db);
    m_itens.clear();
    return true;
}

std::optional<QList<clsSangria>> CashEntry::listar(AppContext& ctx, qint32 idMovimento,
                                                   EntryKind kind, const QString& pesquisa) {
    return clsSangria::listar(ctx.db, idMovimento, EntryKinds::tipo(kind), pesquisa.trimmed());
}

int CashEntry::descartarVazios(AppContext& ctx, qint32 idMovimento) {
    Transaction tx(ctx.db);
    const auto closed = fechado(ctx, idMovimento);
    const auto empty = clsSangria::vazios(ctx.db, idMovimento);
    if (!tx.ok() || !closed || *closed || !empty)
        return 0;
    for (clsSangria s : *empty)
        if (!s.excluirEste())
            return 0;
    return tx.commit() ? int(empty->size()) : 0;
}

Outcome CashEntry::excluirLancamento(AppContext& ctx, qint32 idMovimento, qint32 idSangria) {
    Transaction tx(ctx.db);
    const auto closed = fechado(ctx, idMovimento);
    if (!closed || *closed)
        return Outcome::refused(text(SystemText::NaoPodeExcluirFechado));
    clsSangria entry(ctx.db);
    if (!tx.ok() || !entry.SQLSelect(idSangria) || entry.IDMOVIMENTO != idMovimento ||
        !entry.excluir(idSangria) ||
        // Deleting a whole entry, of any kind, is the administrator's act.
        !ActLog::gravar(ctx, Act::EntradaSangria, ActLog::Acao::Exclusao, QStringLiteral("Sangria"),
                        idSangria) ||
        !tx.commit())
        return Outcome::refused(text(SystemText::ErroExcluir));
    return Outcome::ok();
}
