#include "CashDay.h"

#include "ActLog.h"
#include "AppContext.h"
#include "AuditChain.h"
#include "Clock.h"
#include "CounterPrinter.h"
#include "DailyControlFile.h"
#include "DatabaseBackup.h"
#include "DayMovement.h"
#include "DialogPort.h"
#include "MovementNumbering.h"
#include "NetworkOutbox.h"
#include "ReceiptCorrections.h"
#include "SystemTexts.h"
#include "Transaction.h"

namespace {
void say(AppContext& ctx, SystemText id) {
    tell(ctx.dialogs, SystemTexts::notice(id));
}
} // namespace

CashDay::CashDay(AppContext& ctx, CounterPrinter* printer)
    : m_ctx(ctx), m_printer(printer), m_mov(ctx.db) {}

QString CashDay::statusLabel() const {
    return aberto() ? QStringLiteral("CAIXA PRONTO") : QStringLiteral("CAIXA ENCERRADO");
}

bool CashDay::reload() {
    return m_mov.ID != 0 && m_mov.SQLSelect(m_mov.ID);
}

bool CashDay::consultar() {
    const auto mov = DayMovement::ofWorkingDate(m_ctx);
    if (mov)
        m_mov = *mov;
    return mov.has_value();
}

bool CashDay::abrir() {
    clsMovimento mov(m_ctx.db);
    auto outcome = MovementNumbering::Outcome::Failed;
    {
        // A new day and its act are written together.
        Transaction tx(m_ctx.db);
        if (tx.ok())
            outcome = MovementNumbering::openOrResume(m_ctx.db, m_ctx.workingDate, mov);
        if (MovementNumbering::succeeded(outcome) &&
            ((outcome == MovementNumbering::Outcome::Opened &&
              !ActLog::gravar(m_ctx, Act::AbrirDia, QStringLiteral("Movimento"), mov.ID)) ||
             !tx.commit()))
            outcome = MovementNumbering::Outcome::Failed;
    }
    if (!MovementNumbering::succeeded(outcome)) {
        // Told now that the opening's transaction has ended.
        if (outcome == MovementNumbering::Outcome::CounterNotWritten)
            say(m_ctx, SystemText::ErroGravacaoContador);
        if (outcome == MovementNumbering::Outcome::CounterNotUpdated)
            say(m_ctx, SystemText::ErroAlteracaoContador);
        say(m_ctx, SystemText::ErroAberturaMovimento);
        return false;
    }
    const bool opened = outcome == MovementNumbering::Outcome::Opened;
    m_mov = mov;
    if (opened)
        say(m_ctx, SystemText::CaixaAberto);
    // Opened or resumed, the control file is brought back in line with the receipts.
    if (!DailyControlFile::rebuild(m_ctx, m_mov))
        say(m_ctx, SystemText::ErroGravacao);
    // So is the yearly log of reversals with the Estornos table.
    ReceiptCorrections(m_ctx, nullptr).completarRegistro();
    if (opened && m_printer && !m_printer->aberturaMovimento(m_mov))
        say(m_ctx, SystemText::ErroLinhaImpressao);
    return true;
}

bool CashDay::setStatus(DayStatus status, bool withSums, QString* recusa) {
    // Sums, chain hash and status in one transaction, so the hash kept is the one of exactly the
    // receipts summed.
    Transaction tx(m_ctx.db);
    clsMovimento mov = m_mov;
    if (!tx.ok() || !mov.SQLSelect(m_mov.ID))
        return false;
    if (withSums) {
        const auto sums = clsMovimento::somarDia(m_ctx.db, mov.ID, mov.MDATA);
        const auto hash = AuditChain::lastHash(m_ctx.db);
        if (!sums || !hash)
            return false;
        if (!sums->arrecadado.withinLimit() || !sums->entrada.withinLimit() ||
            !sums->saida.withinLimit()) {
            if (recusa)
                *recusa = SystemTexts::text(SystemText::TotaisDiaAcimaDoLimite)
                              .arg(Money::maximum().formatCurrency());
            return false;
        }
        mov.VALOR_ARRECADADO = sums->arrecadado;
        mov.ENTRADA = sums->entrada;
        mov.SAIDA = sums->saida;
        mov.HASH_CADEIA = *hash;
    }
    mov.setStatus(status);
    // A closing's seal leaves for the central with it, or not at all.
    if (!mov.SQLUpdateTotais() ||
        (withSums && !NetworkOutbox::selar(m_ctx, mov, m_ctx.clock.now())) ||
        !ActLog::gravar(m_ctx, status == DayStatus::Closed ? Act::EncerrarDia : Act::ReabrirDia,
                        QStringLiteral("Movimento"), mov.ID) ||
        !tx.commit())
        return false;
    m_mov = mov;
    return true;
}

void CashDay::copiaDeSeguranca() {
    if (m_ctx.db.backend() != DbBackend::SQLite)
        return; // a server's database is copied on the server (pg_dump)
    QString error;
    if (!DatabaseBackup::intoFolder(m_ctx.db, m_ctx.filePath(QStringLiteral("copias")),
                                    m_ctx.clock.now(), DatabaseBackup::kKeep, &error))
        m_ctx.dialogs.warn(SystemTexts::title(SystemText::ErroGravacao), error);
}

bool CashDay::podeEncerrar() {
    if (aberto())
        return true;
    say(m_ctx, SystemText::MovimentoJaEncerrado);
    return false;
}

bool CashDay::encerrar() {
    QString recusa;
    if (!setStatus(DayStatus::Closed, true, &recusa)) {
        const Notice fail = SystemTexts::notice(SystemText::ErroEncerrar);
        tell(m_ctx.dialogs, recusa.isEmpty() ? fail : fail.with(recusa));
        return false;
    }
    NetworkOutbox::enviar(m_ctx);
    if (!DailyControlFile::rebuild(m_ctx, m_mov))
        say(m_ctx, SystemText::ErroGravacao);
    copiaDeSeguranca();
    return true;
}

bool CashDay::imprimirEncerramento() {
    if (!m_printer || m_printer->encerramento(m_mov))
        return true;
    say(m_ctx, SystemText::ErroLinhaImpressao);
    return false;
}

bool CashDay::podeReabrir() {
    if (!aberto())
        return true;
    say(m_ctx, SystemText::MovimentoJaAberto);
    return false;
}

bool CashDay::reabrir() {
    if (!setStatus(DayStatus::Open, false)) {
        say(m_ctx, SystemText::ErroReabrir);
        return false;
    }
    return true;
}

bool CashDay::imprimirReabertura() {
    if (!m_printer || m_printer->reabertura(m_mov))
        return true;
    say(m_ctx, SystemText::ErroLinhaImpressao);
    return false;
}
