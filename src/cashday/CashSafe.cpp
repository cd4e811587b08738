#include "CashSafe.h"

#include "AppContext.h"
#include "CashAmount.h"
#include "DialogPort.h"
#include "IniFile.h"
#include "Transaction.h"
#include "clsMovimento.h"

namespace {
const QString kReserva = QStringLiteral("Reserva");
const QString kCofre = QStringLiteral("cofre");
} // namespace

const QString CashSafe::kTitulo = QStringLiteral("Aviso");
const QString CashSafe::kCaixaEncerrado =
    QStringLiteral("Você não pode movimentar o cofre, com o caixa já encerrado!!");
const QString CashSafe::kAcimaDoSaldo =
    QStringLiteral("Valor não pode ser maior que o saldo disponível.");
const QString CashSafe::kGravado = QStringLiteral("Valor gravado. Saldo atualizado para R$ ");

std::optional<Money> CashSafe::saldo(AppContext& ctx) {
    const QString text = ctx.option(kReserva, kCofre).trimmed();
    if (text.isEmpty())
        return Money();
    const auto v = Money::parse(text);
    if (!v) {
        ctx.dialogs.critical(kTitulo,
                             QStringLiteral("O saldo do cofre em Config.ini ([Reserva] cofre) "
                                            "não é um valor: %1")
                                 .arg(text));
        return std::nullopt;
    }
    return v;
}

bool CashSafe::podeMovimentar(AppContext& ctx, qint32 idMovimento) {
    clsMovimento mov(ctx.db);
    if (mov.SQLSelect(idMovimento) && mov.STATUS == QLatin1String("ABERTO"))
        return true;
    ctx.dialogs.critical(kTitulo, kCaixaEncerrado);
    return false;
}

CashSafe::Result CashSafe::movimentar(AppContext& ctx, qint32 idMovimento, Direction direction,
                                      const QString& valor) {
    const auto balance = saldo(ctx);
    if (!balance)
        return {Outcome::Failed, Money()};
    const auto amount = CashAmount::parse(valor);
    if (!amount) {
        ctx.dialogs.warn(kTitulo, CashAmount::kValorInvalido);
        return {Outcome::InvalidValue, *balance};
    }
    if (direction == Direction::Out && *amount > *balance) {
        ctx.dialogs.critical(kTitulo, kAcimaDoSaldo);
        return {Outcome::AboveBalance, *balance};
    }
    const Money novo = direction == Direction::In ? *balance + *amount : *balance - *amount;

    // The movement is written first and committed only once the settings file holds the new
    // balance; should the commit fail, the old balance goes back into the file.
    Transaction tx(ctx.db);
    clsMovimento mov(ctx.db);
    if (!tx.ok() || !mov.SQLSelect(idMovimento))
        return {Outcome::Failed, *balance};
    if (mov.STATUS != QLatin1String("ABERTO")) {
        ctx.dialogs.critical(kTitulo, kCaixaEncerrado);
        return {Outcome::Closed, *balance};
    }
    mov.SUPRIMENTO += direction == Direction::In ? *amount : -*amount;
    const QString path = ctx.iniPath();
    if (!mov.SQLUpdateTotais())
        return {Outcome::Failed, *balance};
    if (!IniFile::write(kReserva, kCofre, novo.format(), path)) {
        ctx.dialogs.critical(
            kTitulo, QStringLiteral("Não foi possível gravar o saldo do cofre em %1.").arg(path));
        return {Outcome::Failed, *balance};
    }
    if (!tx.commit()) {
        IniFile::write(kReserva, kCofre, balance->format(), path);
        return {Outcome::Failed, *balance};
    }
    ctx.settings.cofre = novo.format();
    ctx.dialogs.info(kTitulo, kGravado + novo.format());
    return {Outcome::Done, novo};
}
