#include "AuthCounterPrinter.h"

#include "AppContext.h"
#include "Clock.h"
#include "DateUtil.h"
#include "PaymentRecorder.h"
#include "PrinterService.h"
#include "clsAutenticadora.h"
#include "clsMovimento.h"

#include <QDir>
#include <QFile>

namespace {
QString seq(int n, int width) {
    return QStringLiteral("%1").arg(n, width, 10, QLatin1Char('0')).right(width);
}
} // namespace

QString AuthCounterPrinter::guiche() const {
    return clsAutenticadora::pad(m_ctx.settings.guiche.trimmed(), 1);
}

QString AuthCounterPrinter::mensagem() const {
    return clsAutenticadora::pad(m_ctx.settings.cabecalho.trimmed(), 3);
}

void AuthCounterPrinter::tape(const QString& lines) {
    for (const QString& l : lines.split(QLatin1Char('\n')))
        m_printer.ImprimeAutenticadora(PrinterOperation::Imprimir, m_printer.modelo(), l);
}

CounterPrinter::Fita AuthCounterPrinter::linhaFita(const QString& linha) {
    const PrinterModel modelo = m_printer.modelo();
    if (!m_printer.habilitada() ||
        (modelo != PrinterModel::Bematech && modelo != PrinterModel::Quattro))
        return Fita::SemImpressora;
    return m_printer.ImprimeAutenticadora(PrinterOperation::Imprimir, modelo, linha)
               ? Fita::Impressa
               : Fita::Falhou;
}

bool AuthCounterPrinter::aberturaMovimento(const clsMovimento& mov) {
    clsAutenticadora a;
    a.SEQ_MOV = seq(mov.MOV, 3);
    a.GUICHE = guiche();
    if (!a.AbreCaixaCompleto() || !a.PrintCabecalho(m_ctx.clock.now()))
        return false;
    tape(a.AbreFita);
    tape(a.Cabecalho);
    return true;
}

bool AuthCounterPrinter::encerramento(const clsMovimento& mov) {
    clsAutenticadora a;
    a.VALOR_RECEBIDO = clsAutenticadora::right(mov.VALOR_ARRECADADO.format(), 12);
    a.VALOR_ENTRADA = clsAutenticadora::right(mov.ENTRADA.format(), 12);
    a.VALOR_SAIDA = clsAutenticadora::right(mov.SAIDA.format(), 12);
    a.VALOR_TOTAL =
        clsAutenticadora::right((mov.VALOR_ARRECADADO + mov.ENTRADA - mov.SAIDA).format(), 12);
    if (!a.EncerraCaixaCompleto() || !a.PrintCabecalho(m_ctx.clock.now()))
        return false;
    tape(a.EncerraFita);
    // The audit chain's last hash, to compare with `tolvane auditar` later.
    if (!mov.HASH_CADEIA.isEmpty())
        tape(QStringLiteral("CADEIA: ") + mov.HASH_CADEIA.left(32) + QLatin1Char('\n') +
             QString(8, QLatin1Char(' ')) + mov.HASH_CADEIA.mid(32));
    tape(a.Cabecalho);
    return true;
}

bool AuthCounterPrinter::reabertura(const clsMovimento& mov) {
    clsAutenticadora a;
    a.SEQ_MOV = seq(mov.MOV, 3);
    if (!a.ReabreCaixa())
        return false;
    tape(a.Reabertura);
    return true;
}

bool AuthCounterPrinter::documentos(const QList<RecordedReceipt>& rows) {
    bool ok = true;
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
            m_printer.ImprimeAutenticadora(PrinterOperation::Autenticar, m_printer.modelo(),
                                           a.BOLETO);
        else
            ok = false;
        if (a.AutenticaFita())
            m_printer.ImprimeAutenticadora(PrinterOperation::Imprimir, m_printer.modelo(), a.FITA);
        else
            ok = false;
    }
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
    if (m_printer.modelo() == PrinterModel::Txt)
        return textCoupon ? textCoupon(lines) : couponFile(lines);
    tape(lines.join(QLatin1Char('\n')));
    return true;
}

bool AuthCounterPrinter::couponFile(const QStringList& lines) {
    const QString dir = m_ctx.filePath(QStringLiteral("Cupons"));
    if (!QDir().mkpath(dir))
        return false;
    QFile f(QDir(dir).filePath(
        QStringLiteral("cupom_%1.txt")
            .arg(m_ctx.clock.now().toString(QStringLiteral("yyyyMMdd_hhmmss_zzz")))));
    if (!f.open(QIODevice::WriteOnly))
        return false;
    QByteArray bytes;
    for (const QString& l : lines)
        bytes += l.toLatin1() + "\r\n";
    return f.write(bytes) == bytes.size();
}
