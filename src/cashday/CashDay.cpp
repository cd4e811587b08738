#include "CashDay.h"

#include "AppContext.h"
#include "AuditChain.h"
#include "Clock.h"
#include "CounterPrinter.h"
#include "DailyControlFile.h"
#include "DatabaseBackup.h"
#include "DialogPort.h"
#include "MovementNumbering.h"
#include "NetworkOutbox.h"
#include "ReceiptCorrections.h"
#include "Transaction.h"

namespace {
const QString kAviso = QStringLiteral("Aviso");
}

const QString CashDay::kTotaisAcimaDoLimite =
    QStringLiteral("Os totais do dia passam de %1: o movimento não pode ser encerrado assim. "
                   "Corrija os lançamentos ou os recebimentos e encerre de novo.")
        .arg(Money::maximum().formatCurrency());
const QString CashDay::kPerguntaEncerrar =
    QStringLiteral("Deseja encerrar a contabilização agora?");
const QString CashDay::kPerguntaCupomEncerramento =
    QStringLiteral("Deseja finalizar o cupom agora?");
const QString CashDay::kEncerrado = QStringLiteral("Movimento encerrado.");
const QString CashDay::kCancelado = QStringLiteral("Operação cancelada.");
const QString CashDay::kPerguntaReabrir = QStringLiteral("Confirma a reabertura do movimento?");
const QString CashDay::kPerguntaCupomReabertura =
    QStringLiteral("Deseja imprimir a reabertura de movimento no cupom?");

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
    clsMovimento mov(m_ctx.db);
    bool opened = false;
    if (!MovementNumbering::openOrResume(m_ctx.db, m_ctx.dialogs, m_ctx.workingDate, mov, opened)) {
        m_ctx.dialogs.critical(kAviso, QStringLiteral("Erro na abertura de Movimento!!"));
        return false;
    }
    m_mov = mov;
    if (opened)
        m_ctx.dialogs.info(QStringLiteral("Gravar Registro"), QStringLiteral("Caixa Aberto!!!"));
    // Opened or resumed, the control file is brought back in line with the receipts.
    if (!DailyControlFile::rebuild(m_ctx, m_mov))
        m_ctx.dialogs.critical(kAviso, QStringLiteral("Erro de Gravação!!!"));
    // So is the yearly log of reversals with the Estornos table.
    ReceiptCorrections(m_ctx, nullptr).completarRegistro();
    if (opened && m_printer && !m_printer->aberturaMovimento(m_mov))
        m_ctx.dialogs.critical(kAviso, QStringLiteral("Erro na geração da linha de impressão!!!"));
    return true;
}

bool CashDay::setStatus(const QString& status, bool withSums, QString* recusa) {
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
                *recusa = kTotaisAcimaDoLimite;
            return false;
        }
        mov.VALOR_ARRECADADO = sums->arrecadado;
        mov.ENTRADA = sums->entrada;
        mov.SAIDA = sums->saida;
        mov.HASH_CADEIA = *hash;
    }
    mov.STATUS = status;
    // A closing's seal leaves for the central with it, or not at all.
    if (!mov.SQLUpdateTotais() ||
        (withSums && !NetworkOutbox::selar(m_ctx, mov, m_ctx.clock.now())) || !tx.commit())
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
        m_ctx.dialogs.warn(kAviso, error);
}

bool CashDay::podeEncerrar() {
    if (aberto())
        return true;
    m_ctx.dialogs.info(kAviso, QStringLiteral("O movimento já está encerrado."));
    return false;
}

bool CashDay::encerrar() {
    QString recusa;
    if (!setStatus(QStringLiteral("FECHADO"), true, &recusa)) {
        m_ctx.dialogs.critical(kAviso,
                               recusa.isEmpty() ? QStringLiteral("Erro ao encerrar.") : recusa);
        return false;
    }
    NetworkOutbox::enviar(m_ctx);
    if (!DailyControlFile::rebuild(m_ctx, m_mov))
        m_ctx.dialogs.critical(kAviso, QStringLiteral("Erro de Gravação!!!"));
    copiaDeSeguranca();
    return true;
}

bool CashDay::imprimirEncerramento() {
    if (!m_printer || m_printer->encerramento(m_mov))
        return true;
    m_ctx.dialogs.critical(kAviso, QStringLiteral("Erro na geração da linha de impressão!!!"));
    return false;
}

bool CashDay::podeReabrir() {
    if (!aberto())
        return true;
    m_ctx.dialogs.info(kAviso, QStringLiteral("O movimento já está aberto."));
    return false;
}

bool CashDay::reabrir() {
    if (!setStatus(QStringLiteral("ABERTO"), false)) {
        m_ctx.dialogs.critical(kAviso, QStringLiteral("Erro ao reabrir o movimento."));
        return false;
    }
    return true;
}

bool CashDay::imprimirReabertura() {
    if (!m_printer || m_printer->reabertura(m_mov))
        return true;
    m_ctx.dialogs.critical(kAviso, QStringLiteral("Erro na geração da linha de impressão!!!"));
    return false;
}
