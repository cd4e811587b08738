#pragma once

#include "Money.h"
#include "Notice.h"
#include "clsConfCaixa.h"
#include "clsMovimento.h"

#include <QList>
#include <QPair>
#include <optional>

class AppContext;

// What the day should hold against what was counted.
struct CashConference {
    Money arrecadacao; // receipts
    Money lancamentos; // entries in minus payments and withdrawals
    Money suprimento;  // supplies, when [Reserva] soma=1; zero otherwise
    Money contado;     // the count
    int linhas = 0;
    // (counted + supplies) - (receipts + entries): zero when the till balances.
    Money diferenca() const { return contado + suprimento - (arrecadacao + lancamentos); }
    // The integration file's footer amount: what was counted plus the supplies.
    Money confCaixa() const { return contado + suprimento; }
};

// The cash count of a movement. The till is counted after the day is closed, so count lines
// can be added and deleted on a closed day as well as an open one.
class CashCount {
public:
    CashCount(AppContext& ctx, const clsMovimento& mov);

    // The kinds of money offered for counting: those listed in [Reserva] itens (codes
    // separated by ";", "," or blanks, in that order), or every kind of money when it is
    // empty. Codes that are not kinds of money are left out.
    static QList<QPair<qint16, QString>> especies(AppContext& ctx);

    const clsMovimento& movimento() const { return m_mov; }
    std::optional<QList<clsConfCaixa>> linhas();
    // The movement's figures (written at closing) against the stored count.
    std::optional<CashConference> conferir();
    // A count line of `valor` (as validar read it) of one of the offered kinds. The caller tells
    // the outcome once its transaction has ended.
    Outcome adicionar(int especie, const QString& numero, Money valor);
    // The edge's reading of a typed count line: its value when the kind is offered and the value
    // is an amount; nullopt (message shown) otherwise. Never called inside a transaction.
    static std::optional<Money> validar(AppContext& ctx, int especie, const QString& valor);
    Outcome excluir(qint32 idLinha);

    // The same comparison for an open day, at any moment: receipts and entries summed now,
    // `contados` kept by the caller only. Nothing is written.
    static std::optional<CashConference> provisoria(AppContext& ctx, const clsMovimento& mov,
                                                    const QList<Money>& contados);

private:
    static Money suprimento(AppContext& ctx, const clsMovimento& mov);

    AppContext& m_ctx;
    clsMovimento m_mov;
};
