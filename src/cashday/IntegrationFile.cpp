#include "IntegrationFile.h"
#include "SystemTexts.h"

#include "AppContext.h"
#include "Clock.h"
#include "ErrorLog.h"
#include "TextFile.h"
#include "clsGeraIntegra.h"
#include "clsItens.h"
#include "clsRecebimentos.h"
#include "clsSangria.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QThread>

namespace {

using G = clsGeraIntegra;
using R = clsGeraIntegra::Registro;

const QString kRotina = QStringLiteral("Função Gera_Arquivo_Integracao");

void keepEventsFlowing(int ms) {
    QElapsedTimer t;
    t.start();
    while (t.elapsed() < ms) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QThread::msleep(ulong(qBound(qint64(1), qint64(ms) - t.elapsed(), qint64(10))));
    }
}

// The records of one run, field by field, with the kinds of those left out.
class Builder {
public:
    Builder(const QString& guiche, const QDate& dia) : m_guiche(guiche) {
        m_g.DATA_RECEBIMENTO = dia.toString(QStringLiteral("ddMMyyyy"));
        // What every receipt record shares. Its counter field holds one character: the
        // counter number's last digit ("0" when no number is configured).
        m_g.REG = QStringLiteral("R");
        m_g.DATA_CREDITO = m_g.DATA_RECEBIMENTO;
        m_g.GUICHE =
            G::campo(R::Content, &G::GUICHE, guiche).right(G::largura(R::Content, &G::GUICHE));
        m_g.SAIDA = Money().centsText(G::largura(R::Content, &G::SAIDA));
        m_g.DIFERENCA = Money().centsText(G::largura(R::Content, &G::DIFERENCA));
        m_g.ESPECIE = G::campo(R::Content, &G::ESPECIE, QString());
        m_g.IDENTIFICA = G::campo(R::Content, &G::IDENTIFICA, QStringLiteral("0"));
        m_g.MSG = G::campo(R::Content, &G::MSG, QString());
    }

    QStringList lines;
    QStringList erros;

    void header(qint32 idMovimento) {
        m_g.BANCO = G::campo(R::Header, &G::BANCO, QStringLiteral("5001"));
        m_g.SETOR = m_guiche; // as configured: a two-character counter does not fit
        m_g.NSA = G::campo(R::Header, &G::NSA, QString::number(idMovimento));
        add(m_g.Cria_header(), m_g.HEADER(), R::Header);
    }

    void receipt(const clsRecebimentos& r) {
        m_g.AUTENTICA = G::campo(R::Content, &G::AUTENTICA, QString::number(r.AUTENTICA));
        m_g.TIPO = G::campo(R::Content, &G::TIPO, QString::number(r.TIPO));
        m_g.ENTRADA = r.VALOR.centsText(G::largura(R::Content, &G::ENTRADA));
        m_g.BARRA = r.CODBARRA;
        m_g.EXPORT = QString::number(r.EXPORT);
        if (add(m_g.Cria_content(), m_g.CONTENT(), R::Content)) {
            ++m_count; // the footer counts and sums what the file carries
            m_total += r.VALOR;
        }
    }

    void debit(const clsSangria& s) {
        m_g.D_REG = s.TIPO.compare(QLatin1String("SANGRIA"), Qt::CaseInsensitive) == 0
                        ? QStringLiteral("J")
                        : QStringLiteral("S");
        m_g.D_VALORTOTAL = s.SAIDA.centsText(G::largura(R::DebitoHeader, &G::D_VALORTOTAL));
        m_g.D_ID = G::campo(R::DebitoHeader, &G::D_ID, QString::number(s.ID));
        // A description too long for its field is not taken: the field keeps the previous
        // entry's, so the record is reported by its kind instead of being cut.
        if (s.DESCRICAO.size() < G::largura(R::DebitoHeader, &G::D_DESCRICAO))
            m_g.D_DESCRICAO = G::campo(R::DebitoHeader, &G::D_DESCRICAO, s.DESCRICAO);
        add(m_g.Cria_header_debito(), m_g.DEBITO_HEADER(), R::DebitoHeader);
    }

    void item(const clsItens& i) {
        const int numeroWidth = G::largura(R::DebitoContent, &G::D_NUMERO);
        m_g.D_ESPECIE = G::campo(R::DebitoContent, &G::D_ESPECIE, QString::number(i.ESPECIE));
        m_g.D_NUMERO = i.NUMERO.size() >= numeroWidth
                           ? QString(numeroWidth, QLatin1Char(' '))
                           : G::campo(R::DebitoContent, &G::D_NUMERO, i.NUMERO);
        m_g.D_VALOR = i.VALOR.centsText(G::largura(R::DebitoContent, &G::D_VALOR));
        add(m_g.Cria_content_debito(), m_g.DEBITO_CONTENT(), R::DebitoContent);
    }

    void footer(Money confCaixa) {
        m_g.cont = G::campo(R::Footer, &G::cont, QString::number(m_count));
        m_g.TOTAL = m_total.centsText(G::largura(R::Footer, &G::TOTAL));
        // A negative amount has no place in the field: the footer is reported instead.
        m_g.CONFCAIXA = (confCaixa.isNegative() ? QStringLiteral("-") : QString()) +
                        confCaixa.centsText(G::largura(R::Footer, &G::CONFCAIXA));
        add(m_g.Cria_footer(), m_g.FOOTER(), R::Footer);
    }

private:
    bool add(bool ok, const QString& record, R kind) {
        if (ok) {
            lines << record;
            return true;
        }
        erros.removeAll(G::nome(kind));
        erros << G::nome(kind); // the last failing kind ends the list
        return false;
    }

    G m_g;
    QString m_guiche;
    int m_count = 0;
    Money m_total;
};

} // namespace

IntegrationFile::IntegrationFile(AppContext& ctx) : wait(keepEventsFlowing), m_ctx(ctx) {}

int IntegrationFile::pausaConfigurada(AppContext& ctx) {
    bool ok = false;
    const int ms = ctx.option(QStringLiteral("Export"), QStringLiteral("pausa_integracao"))
                       .trimmed()
                       .toInt(&ok);
    return ok && ms >= 0 ? ms : kPausaPadrao;
}

QString IntegrationFile::caminhoPadrao() const {
    QString folder = QDir::fromNativeSeparators(
        m_ctx.option(QStringLiteral("Export"), QStringLiteral("Path1")).trimmed());
    if (folder.isEmpty())
        folder = m_ctx.folder;
    else if (QDir::isRelativePath(folder))
        folder = QDir(m_ctx.folder).filePath(folder);
    return QDir(folder).filePath(
        m_ctx.option(QStringLiteral("Export"), QStringLiteral("guiche")) + QLatin1Char('_') +
        m_ctx.clock.now().toString(QStringLiteral("yyyyMMddhhmm")) + QStringLiteral(".INT"));
}

void IntegrationFile::pause() {
    if (pausaMs > 0 && wait)
        wait(pausaMs);
}

void IntegrationFile::fail(Result& res, const QString& detail) {
    const ErrorInfo info{0, detail, QStringLiteral("IntegrationFile")};
    m_ctx.errors.append(kRotina, info);
    res.avisos << ErrorLog::notice(kRotina, info)
               << SystemTexts::notice(SystemText::ErroGravarArquivo);
}

IntegrationFile::Result IntegrationFile::gerar(const clsMovimento& mov, Money confCaixa,
                                               const QString& destino) {
    Result res;
    res.arquivo = destino.isEmpty() ? caminhoPadrao() : destino;
    const auto receipts = clsRecebimentos::paraIntegracao(m_ctx.db, mov.ID);
    const auto debits = clsSangria::debitos(m_ctx.db, mov.ID);
    if (!receipts || !debits) {
        fail(res, m_ctx.db.lastError());
        return res;
    }
    if (receipts->isEmpty()) {
        res.avisos << SystemTexts::notice(SystemText::SemRecebimentos);
        return res;
    }
    // Only a new file, and none of the counter's own.
    if (const QString why = m_ctx.outputProblem(res.arquivo); !why.isEmpty()) {
        fail(res, why);
        return res;
    }

    Builder out(m_ctx.option(QStringLiteral("Export"), QStringLiteral("guiche")), mov.MDATA);
    out.header(mov.ID);
    int done = 0;
    for (const clsRecebimentos& r : *receipts) {
        out.receipt(r);
        if (progress)
            progress(++done, int(receipts->size()));
        pause();
    }
    for (const clsSangria& s : *debits) {
        const auto items = clsItens::listar(m_ctx.db, s.ID);
        if (!items) {
            fail(res, m_ctx.db.lastError());
            return res;
        }
        out.debit(s);
        pause();
        for (const clsItens& i : *items) {
            out.item(i);
            pause();
        }
    }
    out.footer(confCaixa);

    QString error;
    if (!TextFile::create(res.arquivo, out.lines, &error)) {
        fail(res, error);
        return res;
    }
    res.written = true;
    res.registros = int(out.lines.size());
    res.erros = out.erros;
    res.avisos << (res.erros.isEmpty()
                       ? SystemTexts::notice(SystemText::GeracaoSucesso)
                       : SystemTexts::notice(SystemText::ErroGerar).arg(res.erros.last()));
    return res;
}
