#include "CashCount.h"

#include "ActLog.h"
#include "AppContext.h"
#include "CashAmount.h"
#include "SystemTexts.h"
#include "Transaction.h"
#include "clsItens.h"
#include "clsSangria.h"

#include <QRegularExpression>

CashCount::CashCount(AppContext& ctx, const clsMovimento& mov) : m_ctx(ctx), m_mov(mov) {}

QList<QPair<qint16, QString>> CashCount::especies(AppContext& ctx) {
    const auto all = clsItens::especies(ctx.db);
    if (!all)
        return {};
    const QStringList codes =
        ctx.option(QStringLiteral("Reserva"), QStringLiteral("itens"))
            .split(QRegularExpression(QStringLiteral("[;,\\s]+")), Qt::SkipEmptyParts);
    if (codes.isEmpty())
        return *all;
    QList<QPair<qint16, QString>> out;
    for (const QString& c : codes)
        for (const auto& k : *all)
            if (c.toInt() == k.first && !out.contains(k))
                out.append(k);
    return out;
}

Money CashCount::suprimento(AppContext& ctx, const clsMovimento& mov) {
    return ctx.settings.soma == 1 ? mov.SUPRIMENTO : Money();
}

std::optional<QList<clsConfCaixa>> CashCount::linhas() {
    return clsConfCaixa::listar(m_ctx.db, m_mov.ID);
}

std::optional<CashConference> CashCount::conferir() {
    const auto rows = linhas();
    if (!rows)
        return std::nullopt;
    CashConference c;
    c.arrecadacao = m_mov.VALOR_ARRECADADO;
    c.lancamentos = m_mov.ENTRADA - m_mov.SAIDA;
    c.suprimento = suprimento(m_ctx, m_mov);
    for (const clsConfCaixa& l : *rows)
        c.contado += l.VALOR;
    c.linhas = int(rows->size());
    return c;
}

std::optional<Money> CashCount::validar(AppContext& ctx, int especie, const QString& valor) {
    if (especie <= 0 || valor.trimmed().isEmpty()) {
        tell(ctx.dialogs, SystemTexts::notice(SystemText::CamposObrigatorios));
        return std::nullopt;
    }
    const auto amount = CashAmount::parse(valor);
    if (!amount) {
        tell(ctx.dialogs, SystemTexts::notice(SystemText::ValorInvalido));
        return std::nullopt;
    }
    for (const auto& k : especies(ctx))
        if (k.first == especie)
            return amount;
    tell(ctx.dialogs, SystemTexts::notice(SystemText::EspecieInvalida));
    return std::nullopt;
}

Outcome CashCount::adicionar(int especie, const QString& numero, Money valor) {
    bool offered = false;
    for (const auto& k : especies(m_ctx))
        offered = offered || k.first == especie;
    if (!offered)
        return Outcome::refused(SystemTexts::notice(SystemText::EspecieInvalida));
    if (valor.isNegative() || valor.isZero())
        return Outcome::refused(SystemTexts::notice(SystemText::ValorInvalido));
    clsConfCaixa line(m_ctx.db);
    line.IDMOVIMENTO = m_mov.ID;
    line.ESPECIE = static_cast<qint16>(especie);
    line.NUMERO = numero.trimmed();
    line.VALOR = valor;
    // A database failure: its own report has already said why.
    Transaction tx(m_ctx.db);
    return tx.ok() && line.SQLInsert(0) &&
                   ActLog::gravar(m_ctx, Act::ContarCaixa, ActLog::Acao::Inclusao,
                                  QStringLiteral("ConfCaixa"), line.ID) &&
                   tx.commit()
               ? Outcome::ok()
               : Outcome::refused({});
}

Outcome CashCount::excluir(qint32 idLinha) {
    clsConfCaixa line(m_ctx.db);
    if (idLinha <= 0 || !line.SQLSelect(idLinha) || line.IDMOVIMENTO != m_mov.ID)
        return Outcome::refused(SystemTexts::notice(SystemText::CliqueNoItem));
    Transaction tx(m_ctx.db);
    if (!tx.ok() || !line.SQLDelete(idLinha) ||
        !ActLog::gravar(m_ctx, Act::ContarCaixa, ActLog::Acao::Exclusao,
                        QStringLiteral("ConfCaixa"), idLinha) ||
        !tx.commit())
        return Outcome::refused(SystemTexts::notice(SystemText::ErroExcluir));
    return Outcome::ok();
}

std::optional<CashConference> CashCount::provisoria(AppContext& ctx, const clsMovimento& mov,
                                                    const QList<Money>& contados) {
    const auto received = clsMovimento::somarDia(ctx.db, mov.ID, mov.MDATA);
    const auto cash = clsSangria::somarMovimento(ctx.db, mov.ID);
    if (!received || !cash)
        return std::nullopt;
    CashConference c;
    c.arrecadacao = received->arrecadado;
    c.lancamentos = cash->entrada - cash->saida;
    c.suprimento = suprimento(ctx, mov);
    for (const Money& m : contados)
        c.contado += m;
    c.linhas = int(contados.size());
    return c;
}
