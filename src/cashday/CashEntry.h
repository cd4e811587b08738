#pragma once

#include "EntryKind.h"
#include "Money.h"
#include "Notice.h"
#include "SystemTexts.h"
#include "clsItens.h"
#include "clsSangria.h"

#include <QList>
#include <optional>

class AppContext;

// One cash entry of a movement as the operator records it: the header is stored at once with
// a zero amount, every item stored or deleted rewrites the header's amount as the sum of its
// items in the same transaction, and a header still at zero when the operator leaves it is
// deleted, so no empty entry survives. Nothing of a closed movement is added, changed or
// deleted. Every operation answers an outcome; the caller tells its notice once the
// transaction has ended, and asks the questions itself.
class CashEntry {
public:
    CashEntry(AppContext& ctx, qint32 idMovimento, EntryKind kind);

    EntryKind kind() const { return m_kind; }
    bool stored() const { return m_header.ID != 0; }
    const clsSangria& header() const { return m_header; }
    const QList<clsItens>& itens() const { return m_itens; }
    Money total() const;

    // Continues a stored entry of this movement and kind.
    bool carregar(qint32 idSangria);

    // Stores the header with a zero amount (once). The description of opening entries and
    // withdrawals is always their fixed one; a payment out needs one.
    Outcome incluirItens(const QString& descricao);
    // `valor` as the edge read it (CashAmount::read).
    Outcome gravarItem(int especie, const QString& numero, Money valor);
    Outcome excluirItem(qint32 idItem);
    // Finishing: a stored entry without items is refused; otherwise the next entry starts.
    Outcome concluir();
    // Leaving the entry: a header still at zero is deleted.
    bool sair();

    // The entries of the movement of one kind, newest first (the entry screen's list).
    static std::optional<QList<clsSangria>> listar(AppContext& ctx, qint32 idMovimento,
                                                   EntryKind kind, const QString& pesquisa = {});
    // Deletes the empty entries a run that ended in the middle of one left in an open
    // movement (a finished entry always has items). Answers how many went.
    static int descartarVazios(AppContext& ctx, qint32 idMovimento);
    // Deletes a whole entry of an open movement; its items are left where they are.
    static Outcome excluirLancamento(AppContext& ctx, qint32 idMovimento, qint32 idSangria);
    // The entry `idSangria` of the movement, if it is one of its.
    static std::optional<clsSangria> lancamento(AppContext& ctx, qint32 idMovimento,
                                                qint32 idSangria);
    // The entry an item belongs to.
    static std::optional<qint32> lancamentoDoItem(AppContext& ctx, qint32 idItem);
    // nullopt when the movement cannot be read.
    static std::optional<bool> fechado(AppContext& ctx, qint32 idMovimento);

private:
    // The refusal when the movement is closed or cannot be read, else empty.
    Notice closedRefusal(SystemText text);
    Outcome gravarNaTransacao(int especie, const QString& numero, Money valor);
    bool reloadItems(QList<clsItens>& items);
    bool rewriteHeader(const QList<clsItens>& items, clsSangria& header);
    // The refusal when the entry's items or the day's entries would pass the ceiling.
    Notice acimaDoLimite(const QList<clsItens>& items);

    AppContext& m_ctx;
    qint32 m_idMovimento;
    EntryKind m_kind;
    clsSangria m_header;
    QList<clsItens> m_itens;
};
