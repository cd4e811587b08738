#include "CorrectionTape.h"

#include "AppContext.h"
#include "CorrectionRecord.h"
#include "SystemTexts.h"
#include "clsAutenticadora.h"

namespace {
QString numero(int n) {
    return QStringLiteral("%1").arg(n, 3, 10, QLatin1Char('0'));
}

// The amount right-aligned in 12; a long number takes the room of the leading blanks.
QString amountField(const Money& v, int room) {
    QString s = v.format().rightJustified(12, QLatin1Char(' '));
    while (s.size() > room && s.startsWith(QLatin1Char(' ')))
        s.remove(0, 1);
    return s;
}
} // namespace

CorrectionTape::CorrectionTape(const AppContext& ctx, CounterPrinter* printer)
    : m_ctx(ctx), m_printer(printer) {}

QString CorrectionTape::linhaPessoas() const {
    return clsAutenticadora::pad(
        QStringLiteral("OPER: %1 AUT: %2")
            .arg(m_ctx.userName.left(14), CorrectionRecord::autorizou(m_ctx).left(14)),
        clsAutenticadora::kWidth);
}

void CorrectionTape::item(const clsRecebimentos& r, bool (clsAutenticadora::*linha)(),
                          CorrectionResult& res) {
    clsAutenticadora a;
    a.SEQ_REG = numero(r.AUTENTICA);
    a.VALOR_DOC = amountField(r.VALOR, clsAutenticadora::kWidth - 25 - a.SEQ_REG.size());
    const bool composta = (a.*linha)();
    imprimir({a.Correcao}, composta, res);
}

void CorrectionTape::alteracao(const clsRecebimentos& antes, const clsRecebimentos& depois,
                               const QString& tipo, CorrectionResult& res) {
    QStringList linhas;
    clsAutenticadora a;
    a.SEQ_REG = numero(depois.AUTENTICA);
    bool composta = true;
    if (depois.VALOR != antes.VALOR) {
        a.VALOR_DOC = depois.VALOR.format();
        composta = a.AlteraValor();
        linhas << a.Correcao;
    }
    if (depois.TIPO != antes.TIPO) {
        a.NOME_GUIA = tipo.left(clsAutenticadora::kWidth - 27 - a.SEQ_REG.size());
        composta = a.AlteraTipo() && composta;
        linhas << a.Correcao;
    }
    imprimir(linhas, composta, res);
}

void CorrectionTape::imprimir(QStringList linhas, bool composta, CorrectionResult& res) {
    if (!composta) {
        res.avisos << SystemTexts::notice(SystemText::ErroLinhaImpressao);
        return;
    }
    if (!linhas.isEmpty() && !m_ctx.autorizadoPor.isEmpty())
        linhas << linhaPessoas();
    res.linhasFita = linhas;
    if (!m_printer)
        return;
    for (const QString& l : linhas) {
        const auto f = m_printer->linhaFita(l);
        if (f == CounterPrinter::Fita::Falhou || res.fita != CounterPrinter::Fita::Falhou)
            res.fita = f;
    }
    if (res.fita == CounterPrinter::Fita::Falhou)
        res.avisos << SystemTexts::notice(SystemText::FitaCorrecaoFalhou);
}
