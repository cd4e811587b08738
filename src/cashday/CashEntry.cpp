#include "CashEntry.h"

#include "AppContext.h"
#include "CashAmount.h"
#include "DialogPort.h"
#include "FileText.h"
#include "Transaction.h"
#include "clsMovimento.h"

const QString CashEntry::kTitulo = QStringLiteral("Aviso");
const QString CashEntry::kMovimentoFechado =
    QStringLiteral("Você não pode efetuar nenhuma inclusão ou alteração de registro com o "
                   "movimento fechado");
const QString CashEntry::kCamposObrigatorios =
    QStringLiteral("Todos os campos obrigatórios devem ser preenchidos!!");
const QString CashEntry::kInformeItem = QStringLiteral("Informe um item !!!");
const QString CashEntry::kPerguntaExcluirItem =
    QStringLiteral("Confirma exclusão do item selecionado?");
const QString CashEntry::kPerguntaExcluirLancamento =
    QStringLiteral("Confirma exclusão deste item?");
const QString CashEntry::kNaoPodeExcluir =
    QStringLiteral("Você não pode excluir!! O movimento desta data já foi fechado");
const QString CashEntry::kErroExcluir = QStringLiteral("Erro ao excluir");
const QString CashEntry::kTotalAcimaDoLimite =
    QStringLiteral("O total do lançamento não pode passar de %1. Nada foi gravado.")
        .arg(Money::maximum().formatCurrency());
const QString CashEntry::kDiaAcimaDoLimite =
    QStringLiteral("Os lançamentos do dia não podem somar mais de %1. Nada foi gravado.")
        .arg(Money::maximum().formatCurrency());
const QString CashEntry::kErroGravar = QStringLiteral("Erro ao gravar o item. Nada foi gravado.");
const QString CashEntry::kEspecieInvalida =
    QStringLiteral("A espécie informada não é um tipo de dinheiro!!");

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
    clsMovimento mov(ctx.db);
    if (!mov.SQLSelect(idMovimento))
        return std::nullopt;
    return mov.STATUS != QLatin1String("ABERTO");
}

// True (message shown) when the movement is closed or cannot be read.
bool CashEntry::refusedClosed(const QString& message) {
    const auto closed = fechado(m_ctx, m_idMovimento);
    if (closed && !*closed)
        return false;
    m_ctx.dialogs.critical(kTitulo, message);
    return true;
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

bool CashEntry::incluirItens(const QString& descricao) {
    if (refusedClosed(kMovimentoFechado))
        return false;
    if (stored())
        return true;
    const QString text = EntryKinds::descriptionEditable(m_kind)
                             ? descricao.trimmed()
                             : EntryKinds::defaultDescription(m_kind);
    if (text.isEmpty()) {
        m_ctx.dialogs.warn(kTitulo, kCamposObrigatorios);
        return false;
    }
    // The description is the integration file's debit header text.
    if (const QString why = FileText::problem(text, FileText::Field::DescricaoLancamento);
        !why.isEmpty()) {
        m_ctx.dialogs.warn(kTitulo, why);
        return false;
    }
    clsMovimento mov(m_ctx.db);
    if (!mov.SQLSelect(m_idMovimento))
        return false;
    clsSangria h(m_ctx.db);
    h.IDMOVIMENTO = m_idMovimento;
    h.SDATA = mov.MDATA; // an entry always belongs to its cash day's date
    h.TIPO = EntryKinds::tipo(m_kind);
    h.DESCRICAO = text;
    if (!h.SQLInsert(1))
        return false;
    m_header = h;
    m_itens.clear();
    return true;
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
    return header.SQLInsert(2);
}

bool CashEntry::gravarItem(int especie, const QString& numero, const QString& valor) {
    if (refusedClosed(kMovimentoFechado))
        return false;
    if (!stored() || especie <= 0 || valor.trimmed().isEmpty()) {
        m_ctx.dialogs.warn(kTitulo, kCamposObrigatorios);
        return false;
    }
    const auto amount = CashAmount::parse(valor);
    if (!amount) {
        m_ctx.dialogs.warn(kTitulo, CashAmount::kValorInvalido);
        return false;
    }
    if (const QString why = FileText::problem(numero.trimmed(), FileText::Field::NumeroDocumento);
        !why.isEmpty()) {
        m_ctx.dialogs.warn(kTitulo, why);
        return false;
    }
    const auto kinds = clsItens::especies(m_ctx.db);
    if (!kinds)
        return false;
    bool money = false;
    for (const auto& k : *kinds)
        money = money || k.first == especie;
    if (!money) {
        m_ctx.dialogs.critical(kTitulo, kEspecieInvalida);
        return false;
    }
    QString recusa;
    QList<clsItens> items;
    clsSangria header = m_header;
    {
        Transaction tx(m_ctx.db);
        if (!tx.ok() || refusedClosed(kMovimentoFechado))
            return false;
        clsItens item(m_ctx.db);
        item.IDSANGRIA = m_header.ID;
        item.ESPECIE = static_cast<qint16>(especie);
        item.NUMERO = numero.trimmed();
        item.VALOR = *amount;
        if (!item.SQLInsert(1) || !reloadItems(items))
            return false;
        recusa = acimaDoLimite(items);
        if (recusa.isEmpty() && (!rewriteHeader(items, header) || !tx.commit()))
            return false;
    }
    if (!recusa.isEmpty()) {
        m_ctx.dialogs.critical(kTitulo, recusa);
        return false;
    }
    m_header = header;
    m_itens = items;
    return true;
}

QString CashEntry::acimaDoLimite(const QList<clsItens>& items) {
    Money sum;
    for (const clsItens& i : items)
        sum += i.VALOR;
    if (!sum.withinLimit())
        return kTotalAcimaDoLimite;
    // The day's entries in the same column, with this one's new total in place of its old.
    const auto somas = clsSangria::somarMovimento(m_ctx.db, m_idMovimento);
    if (!somas)
        return kErroGravar;
    const Money antes = m_kind == EntryKind::CashIn ? m_header.ENTRADA : m_header.SAIDA;
    const Money dia = (m_kind == EntryKind::CashIn ? somas->entrada : somas->saida) - antes + sum;
    return dia.withinLimit() ? QString() : kDiaAcimaDoLimite;
}

bool CashEntry::excluirItem(qint32 idItem) {
    if (refusedClosed(kMovimentoFechado))
        return false;
    bool ours = false;
    for (const clsItens& i : m_itens)
        ours = ours || i.ID == idItem;
    if (!stored() || !ours) {
        m_ctx.dialogs.critical(kTitulo, kInformeItem);
        return false;
    }
    Transaction tx(m_ctx.db);
    if (!tx.ok() || refusedClosed(kMovimentoFechado))
        return false;
    QList<clsItens> items;
    clsSangria header = m_header;
    if (!clsItens(m_ctx.db).SQLDelete(idItem) || !reloadItems(items) ||
        !rewriteHeader(items, header) || !tx.commit())
        return false;
    m_header = header;
    m_itens = items;
    return true;
}

bool CashEntry::concluir() {
    if (stored() && m_itens.isEmpty()) {
        m_ctx.dialogs.critical(kTitulo, kInformeItem);
        return false;
    }
    m_header = clsSangria(m_ctx.db);
    m_itens.clear();
    return true;
}

bool CashEntry::sair() {
    if (stored() && m_itens.isEmpty() && !clsSangria(m_header).SQLDelete(m_header.ID))
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
        if (!s.SQLDelete(0))
            return 0;
    return tx.commit() ? int(empty->size()) : 0;
}

bool CashEntry::excluirLancamento(AppContext& ctx, qint32 idMovimento, qint32 idSangria) {
    Transaction tx(ctx.db);
    const auto closed = fechado(ctx, idMovimento);
    if (!closed || *closed) {
        ctx.dialogs.critical(kTitulo, kNaoPodeExcluir);
        return false;
    }
    clsSangria entry(ctx.db);
    if (!tx.ok() || !entry.SQLSelect(idSangria) || entry.IDMOVIMENTO != idMovimento ||
        !entry.SQLDelete(idSangria) || !tx.commit()) {
        ctx.dialogs.critical(kTitulo, kErroExcluir);
        return false;
    }
    return true;
}
