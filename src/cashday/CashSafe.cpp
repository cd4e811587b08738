#include "CashSafe.h"

#include "AppContext.h"
#include "CashAmount.h"
#include "Clock.h"
#include "Transaction.h"
#include "clsCofre.h"
#include "clsMovimento.h"

const QString CashSafe::kTitulo = QStringLiteral("Aviso");
const QString CashSafe::kCaixaEncerrado =
    QStringLiteral("Você não pode movimentar o cofre, com o caixa já encerrado!!");
const QString CashSafe::kAcimaDoSaldo =
    QStringLiteral("Valor não pode ser maior que o saldo disponível.");
const QString CashSafe::kGravado = QStringLiteral("Valor gravado. Saldo atualizado para R$ ");
const QString CashSafe::kAcimaDoLimite =
    QStringLiteral("O saldo do cofre e o suprimento do dia não podem passar de %1. Nada foi "
                   "gravado.")
        .arg(Money::maximum().formatCurrency());
const QString CashSafe::kFalhou =
    QStringLiteral("Não foi possível gravar o movimento do cofre. Nada foi alterado.");

std::optional<Money> CashSafe::saldo(AppContext& ctx) {
    const auto v = clsCofre::saldo(ctx.db);
    if (!v)
        ctx.dialogs.critical(
            kTitulo,
            QStringLiteral("Não foi possível ler o saldo do cofre: %1").arg(ctx.db.lastError()));
    return v;
}

bool CashSafe::podeMovimentar(AppContext& ctx, qint32 idMovimento) {
    clsMovimento mov(ctx.db);
    if (mov.SQLSelect(idMovimento) && mov.STATUS == QLatin1String("ABERTO"))
        return true;
    ctx.dialogs.critical(kTitulo, kCaixaEncerrado);
    return false;
}

CashSafe::Result CashSafe::aplicar(AppContext& ctx, qint32 idMovimento, Direction direction,
                                   const QString& valor) {
    const auto amount = CashAmount::parse(valor);
    Transaction tx(ctx.db);
    const auto balance = tx.ok() ? clsCofre::saldo(ctx.db) : std::nullopt;
    if (!balance)
        return {Outcome::Failed, Money(), kFalhou, DialogIcon::Critical};
    if (!amount)
        return {Outcome::InvalidValue, *balance, CashAmount::kValorInvalido,
                DialogIcon::Exclamation};
    clsMovimento mov(ctx.db);
    if (!mov.SQLSelect(idMovimento))
        return {Outcome::Failed, *balance, kFalhou, DialogIcon::Critical};
    if (mov.STATUS != QLatin1String("ABERTO"))
        return {Outcome::Closed, *balance, kCaixaEncerrado, DialogIcon::Critical};
    if (direction == Direction::Out && *amount > *balance)
        return {Outcome::AboveBalance, *balance, kAcimaDoSaldo, DialogIcon::Critical};
    const bool in = direction == Direction::In;
    const Money novo = in ? *balance + *amount : *balance - *amount;
    mov.SUPRIMENTO += in ? *amount : -*amount;
    if (!novo.withinLimit() || !mov.SUPRIMENTO.withinLimit())
        return {Outcome::AboveCeiling, *balance, kAcimaDoLimite, DialogIcon::Critical};
    clsCofre::Lancamento l;
    l.idMovimento = idMovimento;
    l.operacao = in ? clsCofre::kEntrada : clsCofre::kSaida;
    l.valor = *amount;
    l.saldo = novo;
    l.usuario = ctx.userName;
    l.momento = ctx.clock.now();
    if (!mov.SQLUpdateTotais() || !clsCofre::gravar(ctx.db, l) || !tx.commit())
        return {Outcome::Failed, *balance, kFalhou, DialogIcon::Critical};
    return {Outcome::Done, novo, kGravado + novo.format(), DialogIcon::Information};
}

CashSafe::Result CashSafe::movimentar(AppContext& ctx, qint32 idMovimento, Direction direction,
                                      const QString& valor) {
    const Result r = aplicar(ctx, idMovimento, direction, valor);
    ctx.dialogs.message(kTitulo, r.mensagem, r.icon, DialogButtons::Ok);
    return r;
}
