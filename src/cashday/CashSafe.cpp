#include "CashSafe.h"

#include "ActLog.h"
#include "AppContext.h"
#include "CashAmount.h"
#include "Clock.h"
#include "DayMovement.h"
#include "SystemTexts.h"
#include "Transaction.h"
#include "clsCofre.h"
#include "clsMovimento.h"

namespace {
Notice text(SystemText id) {
    return SystemTexts::notice(id);
}
CashSafe::Result result(CashSafe::Outcome o, Money saldo, const Notice& n) {
    return {o, saldo, n.text, n.icon};
}
} // namespace

std::optional<Money> CashSafe::saldo(AppContext& ctx) {
    const auto v = clsCofre::saldo(ctx.db);
    if (!v)
        tell(ctx.dialogs, text(SystemText::CofreSaldoIlegivel).arg(ctx.db.lastError()));
    return v;
}

bool CashSafe::podeMovimentar(AppContext& ctx, qint32 idMovimento) {
    if (DayMovement::isOpen(ctx.db, idMovimento).value_or(false))
        return true;
    tell(ctx.dialogs, text(SystemText::CofreCaixaEncerrado));
    return false;
}

CashSafe::Result CashSafe::aplicar(AppContext& ctx, qint32 idMovimento, Direction direction,
                                   Money valor) {
    Transaction tx(ctx.db);
    const auto balance = tx.ok() ? clsCofre::saldo(ctx.db) : std::nullopt;
    if (!balance)
        return result(Outcome::Failed, Money(), text(SystemText::CofreFalhou));
    if (valor.isNegative() || valor.isZero())
        return result(Outcome::InvalidValue, *balance, text(SystemText::ValorInvalido));
    clsMovimento mov(ctx.db);
    if (!mov.SQLSelect(idMovimento))
        return result(Outcome::Failed, *balance, text(SystemText::CofreFalhou));
    if (!mov.aberto())
        return result(Outcome::Closed, *balance, text(SystemText::CofreCaixaEncerrado));
    if (direction == Direction::Out && valor > *balance)
        return result(Outcome::AboveBalance, *balance, text(SystemText::CofreAcimaDoSaldo));
    const bool in = direction == Direction::In;
    const Money novo = in ? *balance + valor : *balance - valor;
    mov.SUPRIMENTO += in ? valor : -valor;
    if (!novo.withinLimit() || !mov.SUPRIMENTO.withinLimit())
        return result(Outcome::AboveCeiling, *balance,
                      text(SystemText::CofreAcimaDoLimite).arg(Money::maximum().formatCurrency()));
    clsCofre::Lancamento l;
    l.idMovimento = idMovimento;
    l.operacao = in ? clsCofre::kEntrada : clsCofre::kSaida;
    l.valor = valor;
    l.saldo = novo;
    l.usuario = ctx.userName;
    l.momento = ctx.clock.now();
    qint64 idLancamento = 0;
    if (!mov.SQLUpdateTotais() || !clsCofre::gravar(ctx.db, l, &idLancamento) ||
        !ActLog::gravar(ctx, Act::Cofre, QStringLiteral("CofreMovimentos"), idLancamento) ||
        !tx.commit())
        return result(Outcome::Failed, *balance, text(SystemText::CofreFalhou));
    return result(Outcome::Done, novo, text(SystemText::CofreGravado).arg(novo.format()));
}

CashSafe::Result CashSafe::movimentar(AppContext& ctx, qint32 idMovimento, Direction direction,
                                      const QString& valor) {
    const auto amount = CashAmount::parse(valor);
    const Result r = aplicar(ctx, idMovimento, direction, amount.value_or(Money()));
    ctx.dialogs.message(SystemTexts::title(SystemText::CofreGravado), r.mensagem, r.icon,
                        DialogButtons::Ok);
    return r;
}
