#include "CashDay.h"

#include "AppContext.h"
#include "CounterPrinter.h"
#include "DailyControlFile.h"
#include "DialogPort.h"
#include "MovementNumbering.h"

namespace {
const QString kAviso = QStringLiteral("Aviso");
}

CashDay::CashDay(AppContext& ctx, CounterPrinter* printer)
    : m_ctx(ctx), m_printer(printer), m_mov(ctx.db) {}

QString CashDay::statusLabel() const {
    return aberto() ? QStringLiteral("CAIXA PRONTO") : QStringLiteral("CAIXA ENCERRADO");
}

bool CashDay::reload() {
    return m_mov.ID != 0 && m_mov.SQLSelect(m_mov.ID);
}

bool CashDay::consultar() {
    return m_mov.SQLSelectByDate(m_ctx.workingDate);
}

bool CashDay::abrir() {
    if (m_mov.SQLSelectByDate(m_ctx.workingDate))
        return true; // the day already has its movement: resume it
    clsMovimento mov(m_ctx.db);
    if (!MovementNumbering::openNew(m_ctx.db, m_ctx.dialogs, m_ctx.workingDate, mov)) {
        m_ctx.dialogs.critical(kAviso, QStringLiteral("Erro na abertura de Movimento!!"));
        return false;
    }
    m_mov = mov;
    m_ctx.dialogs.info(QStringLiteral("Gravar Registro"), QStringLiteral("Caixa Aberto!!!"));
    if (!DailyControlFile::writeHeader(m_ctx, m_mov))
        m_ctx.dialogs.critical(kAviso, QStringLiteral("Erro de Gravação!!!"));
    if (m_printer && !m_printer->aberturaMovimento(m_mov))
        m_ctx.dialogs.critical(kAviso, QStringLiteral("Erro na geração da linha de impressão!!!"));
    return true;
}

bool CashDay::sumDay(Money& arrecadado, Money& entrada, Money& saida) {
    const auto cash = m_ctx.db.SQLSelect_ReadOnly(
        QStringLiteral(
            "SELECT SUM(ENTRADA) AS ENTRADA, SUM(SAIDA) AS SAIDA FROM Sangria WHERE SDATA = ?"),
        {m_mov.MDATA});
    const auto received = m_ctx.db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT SUM(VALOR) AS SOMA FROM Recebimentos WHERE IDMOVIMENTO = ?"),
        {m_mov.ID});
    if (!cash || !received)
        return false;
    entrada = cash->money(QStringLiteral("ENTRADA"));
    saida = cash->money(QStringLiteral("SAIDA"));
    arrecadado = received->money(QStringLiteral("SOMA"));
    return true;
}

CashDay::Result CashDay::encerrar() {
    if (!m_ctx.dialogs.ask(kAviso, QStringLiteral("Deseja encerrar a contabilização agora?"))) {
        m_ctx.dialogs.info(kAviso, QStringLiteral("Operação cancelada."));
        return Result::Cancelled;
    }
    clsMovimento mov = m_mov;
    if (!mov.SQLSelect(m_mov.ID) || !sumDay(mov.VALOR_ARRECADADO, mov.ENTRADA, mov.SAIDA)) {
        m_ctx.dialogs.critical(kAviso, QStringLiteral("Erro ao encerrar."));
        return Result::Failed;
    }
    mov.STATUS = QStringLiteral("FECHADO");
    if (!mov.SQLUpdateTotais()) {
        m_ctx.dialogs.critical(kAviso, QStringLiteral("Erro ao encerrar."));
        return Result::Failed;
    }
    m_mov = mov;
    if (m_ctx.dialogs.ask(kAviso, QStringLiteral("Deseja finalizar o cupom agora?")) && m_printer &&
        !m_printer->encerramento(m_mov))
        m_ctx.dialogs.critical(kAviso, QStringLiteral("Erro na geração da linha de impressão!!!"));
    m_ctx.dialogs.info(kAviso, QStringLiteral("Movimento encerrado."));
    return Result::Done;
}

CashDay::Result CashDay::reabrir() {
    if (!m_ctx.dialogs.ask(kAviso, QStringLiteral("Confirma a reabertura do movimento?")))
        return Result::Cancelled;
    clsMovimento mov = m_mov;
    if (!mov.SQLSelect(m_mov.ID))
        return Result::Failed;
    mov.STATUS = QStringLiteral("ABERTO");
    if (!mov.SQLUpdateTotais()) {
        m_ctx.dialogs.critical(kAviso, QStringLiteral("Erro ao reabrir o movimento."));
        return Result::Failed;
    }
    m_mov = mov;
    if (m_ctx.dialogs.ask(kAviso,
                          QStringLiteral("Deseja imprimir a reabertura de movimento no cupom?")) &&
        m_printer && !m_printer->reabertura(m_mov))
        m_ctx.dialogs.critical(kAviso, QStringLiteral("Erro na geração da linha de impressão!!!"));
    return Result::Done;
}
