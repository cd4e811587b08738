#include "AuthCounterPrinter.h"

#include "AppContext.h"
#include "Clock.h"
#include "DateUtil.h"
#include "PaymentRecorder.h"
#include "PrinterService.h"
#include "PrinterWorker.h"
#include "ReceiptStamps.h"
#include "TextFile.h"
#include "clsAutenticadora.h"
#include "clsMovimento.h"

#include <QDir>
#include <QEventLoop>
#include <QTimer>
#include <memory>
#include <mutex>

namespace {
QString seq(int n, int width) {
    return QStringLiteral("%1").arg(n, width, 10, QLatin1Char('0')).right(width);
}
} // namespace

AuthCounterPrinter::AuthCounterPrinter(AppContext& ctx, PrinterService& printer)
    : m_ctx(ctx), m_printer(&printer) {}

AuthCounterPrinter::AuthCounterPrinter(AppContext& ctx, PrinterWorker& worker)
    : m_ctx(ctx), m_worker(&worker) {}

QString AuthCounterPrinter::guiche() const {
    return clsAutenticadora::pad(m_ctx.settings.guiche.trimmed(), 1);
}

QString AuthCounterPrinter::mensagem() const {
    return clsAutenticadora::pad(m_ctx.settings.cabecalho.trimmed(), 3);
}

QList<AuthCounterPrinter::Step> AuthCounterPrinter::tape(const QString& lines) {
    QList<Step> steps;
    for (const QString& l : lines.split(QLatin1Char('\n')))
        steps.append({PrinterOperation::Imprimir, l, 0, 0});
    return steps;
}

// Whether the printer could start a block, handed from its thread to the caller waiting for it.
// A caller that stopped waiting leaves the message to be told by the printer's thread.
struct AuthCounterPrinter::BlockStart {
    std::mutex mutex;
    bool known = false;
    bool abandoned = false;
    std::optional<PrinterMessage> message;

    void settle(PrinterService& p, const std::optional<PrinterMessage>& m) {
        const std::lock_guard<std::mutex> lock(mutex);
        known = true;
        if (!abandoned)
            message = m;
        else if (m)
            p.avisarAgora(*m);
    }
};

std::optional<PrinterMessage>
AuthCounterPrinter::awaitStart(const std::shared_ptr<BlockStart>& start) const {
    const auto known = [&start] {
        const std::lock_guard<std::mutex> lock(start->mutex);
        return start->known;
    };
    if (!known()) {
        // The screen keeps painting while the printer's thread connects.
        QEventLoop loop;
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
            if (known())
                loop.quit();
        });
        poll.start(10);
        QTimer::singleShot(esperaInicioMs, &loop, &QEventLoop::quit);
        loop.exec();
    }
    const std::lock_guard<std::mutex> lock(start->mutex);
    start->abandoned = !start->known;
    return start->message;
}

void AuthCounterPrinter::run(QList<Step> steps, bool newBlock,
                             std::optional<PrinterMessage>* problem) {
    const bool stamps = std::any_of(steps.begin(), steps.end(), [](const Step& s) {
        return s.op == PrinterOperation::Autenticar;
    });
    const bool report = stamps;
    auto start = problem ? std::make_shared<BlockStart>() : nullptr;
    auto job = [steps = std::move(steps), newBlock, stamps, start](PrinterService& p) {
        if (newBlock && start) {
            std::optional<PrinterMessage> m;
            p.novoCliente(&m, stamps);
            start->settle(p, m);
        } else if (newBlock) {
            p.novoCliente(nullptr, stamps);
        } else if (start) {
            start->settle(p, std::nullopt);
        }
        Stamps o;
        // With the printer switched off in the settings nothing is stamped, and nothing is
        // reported as missed either.
        const bool stamps = p.habilitada();
        for (const Step& s : steps) {
            const bool done = p.ImprimeAutenticadora(s.op, p.modelo(), s.text);
            if (s.op == PrinterOperation::Autenticar && stamps)
                (done ? o.stamped : o.missed).append({s.documento, s.idrecebe});
        }
        return o;
    };
    if (!m_worker) {
        const Stamps o = job(*m_printer);
        if (problem)
            *problem = start->message;
        if (report)
            reportStamps(o);
        return;
    }
    auto outcome = std::make_shared<Stamps>();
    m_worker->post([job, outcome](PrinterService& p) { *outcome = job(p); });
    if (report)
        m_worker->postBack([this, outcome] { reportStamps(*outcome); });
    if (problem)
        *problem = awaitStart(start);
}

void AuthCounterPrinter::reportStamps(const Stamps& o) {
    // Kept first, on the thread that owns the database: a confirmed stamp is evidence.
    QList<qint32> ids;
    for (const auto& s : o.stamped)
        if (s.second > 0)
            ids << s.second;
    ReceiptStamps::confirmados(m_ctx, ids);
    if (!autenticados) // the screen that asked may be gone
        return;
    QList<int> stamped, missed;
    for (const auto& s : o.stamped)
        stamped << s.first;
    for (const auto& s : o.missed)
        missed << s.first;
    autenticados(stamped, missed);
}

CounterPrinter::Fita AuthCounterPrinter::linhaFita(const QString& linha) {
    const auto print = [linha](PrinterService& p) {
        const PrinterModel modelo = p.modelo();
        if (!p.habilitada() ||
            (modelo != PrinterModel::Bematech && modelo != PrinterModel::Quattro))
            return Fita::SemImpressora;
        return p.ImprimeAutenticadora(PrinterOperation::Imprimir, modelo, linha) ? Fita::Impressa
                                                                                 : Fita::Falhou;
    };
    if (!m_worker)
        return print(*m_printer);
    // One line whose outcome the caller reports: wait for the printer's thread, painting.
    auto result = std::make_shared<Fita>(Fita::Falhou);
    QEventLoop loop;
    m_worker->post([print, result](PrinterService& p) { *result = print(p); });
    m_worker->postBack([&loop] { loop.quit(); });
    loop.exec();
    return *result;
}

bool AuthCounterPrinter::aberturaMovimento(const clsMovimento& mov) {
    clsAutenticadora a;
    a.SEQ_MOV = seq(mov.MOV, 3);
    a.GUICHE = guiche();
    if (!a.AbreCaixaCompleto() || !a.PrintCabecalho(m_ctx.clock.now()))
        return false;
    run(tape(a.AbreFita) + tape(a.Cabecalho), true);
    return true;
}

bool AuthCounterPrinter::encerramento(const clsMovimento& mov) {
    // The four single closing lines: 29-character labels, values 11 wide.
    clsAutenticadora a;
    a.VALOR_RECEBIDO = clsAutenticadora::right(mov.VALOR_ARRECADADO.format(), 11);
    a.VALOR_ENTRADA = clsAutenticadora::right(mov.ENTRADA.format(), 11);
    a.VALOR_SAIDA = clsAutenticadora::right(mov.SAIDA.format(), 11);
    a.VALOR_TOTAL =
        clsAutenticadora::right((mov.VALOR_ARRECADADO + mov.ENTRADA - mov.SAIDA).format(), 11);
    QStringList lines;
    for (const char* kind : {"ARRECADADO", "ENTRADA", "SAIDA", "TOTAL"}) {
        if (!a.EncerraCaixa(QLatin1String(kind)))
            return false;
        lines << a.EncerraFita;
    }
    if (!a.PrintCabecalho(m_ctx.clock.now()))
        return false;
    QString block = lines.join(QLatin1Char('\n'));
    // The audit chain's last hash, to compare with `tolvane auditar` later.
    if (!mov.HASH_CADEIA.isEmpty())
        block += QStringLiteral("\nCADEIA: ") + mov.HASH_CADEIA.left(32) + QLatin1Char('\n') +
                 QString(8, QLatin1Char(' ')) + mov.HASH_CADEIA.mid(32);
    // Who closed the day (an operator's act: no administrator to name).
    if (!m_ctx.userName.isEmpty())
        block += QStringLiteral("\nOPER: ") + m_ctx.userName.left(14);
    // With no tape ("txt") the closing goes where the coupons go, so the seal is still on paper.
    if (PrinterService::modelFrom(m_ctx.settings.impressora) == PrinterModel::Txt) {
        const QStringList lines =
            (block + QLatin1Char('\n') + a.Cabecalho).split(QLatin1Char('\n'));
        return textCoupon ? textCoupon(lines) : couponFile(lines);
    }
    run(tape(block) + tape(a.Cabecalho), true);
    return true;
}

bool AuthCounterPrinter::reabertura(const clsMovimento& mov) {
    clsAutenticadora a;
    a.SEQ_MOV = seq(mov.MOV, 3);
    if (!a.ReabreCaixa())
        return false;
    run(tape(a.Reabertura), true);
    return true;
}

bool AuthCounterPrinter::documentos(const QList<RecordedReceipt>& rows,
                                    std::optional<PrinterMessage>* problem) {
    bool ok = true;
    QList<Step> steps;
    for (const RecordedReceipt& r : rows) {
        clsAutenticadora a;
        a.MENSAGEM = mensagem();
        a.GUICHE = guiche();
        a.SEQ_REG = seq(r.autentica, 4);
        a.DATA_PAGTO = DateUtil::br(m_ctx.workingDate);
        a.VALOR_DOC = clsAutenticadora::right(r.item.valor.format(), 12);
        a.NOME_GUIA = clsAutenticadora::pad(r.item.descricao, 10);
        a.VALOR_TOTAL = a.VALOR_DOC;
        if (a.AutenticaBoleto())
            steps.append({PrinterOperation::Autenticar, a.BOLETO, int(r.autentica), r.idrecebe});
        else
            ok = false;
        if (a.AutenticaFita())
            steps.append({PrinterOperation::Imprimir, a.FITA, 0, 0});
        else
            ok = false;
    }
    run(steps, true, problem);
    return ok;
}

bool AuthCounterPrinter::cupom(const QList<RecordedReceipt>& rows, const QString& totalPago,
                               const QString& troco) {
    QStringList lines;
    lines << clsAutenticadora::pad(m_ctx.settings.pref.trimmed(), 40)
          << QString(40, QLatin1Char('-'));
    Money total;
    for (const RecordedReceipt& r : rows) {
        lines << clsAutenticadora::pad(seq(r.autentica, 4) + QLatin1Char(' ') + r.item.descricao,
                                       28) +
                     clsAutenticadora::right(r.item.valor.format(), 12);
        total += r.item.valor;
    }
    lines << QString(40, QLatin1Char('-'))
          << clsAutenticadora::pad(QStringLiteral("TOTAL: "), 28) +
                 clsAutenticadora::right(total.format(), 12)
          << clsAutenticadora::pad(QStringLiteral("TOTAL PAGO: "), 28) +
                 clsAutenticadora::right(totalPago, 12)
          << clsAutenticadora::pad(QStringLiteral("TROCO: "), 28) +
                 clsAutenticadora::right(troco, 12)
          << QStringLiteral(" OPR: ") + m_ctx.userName.left(34)
          << QStringLiteral("DATA/HORA: ") +
                 m_ctx.clock.now().toString(QStringLiteral("dd-MM-yy hh:mm"))
          << clsAutenticadora::pad(m_ctx.settings.mensagem.trimmed(), 40);
    if (PrinterService::modelFrom(m_ctx.settings.impressora) == PrinterModel::Txt)
        return textCoupon ? textCoupon(lines) : couponFile(lines);
    run(tape(lines.join(QLatin1Char('\n'))), false); // the same block as the documents
    return true;
}

bool AuthCounterPrinter::couponFile(const QStringList& lines) {
    const QString dir = m_ctx.filePath(QStringLiteral("Cupons"));
    return QDir().mkpath(dir) &&
           TextFile::writeAll(QDir(dir).filePath(QStringLiteral("cupom_%1.txt")
                                                     .arg(m_ctx.clock.now().toString(
                                                         QStringLiteral("yyyyMMdd_hhmmss_zzz")))),
                              lines);
}
