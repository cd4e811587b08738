#include "BarcodeReader.h"

#include "AppContext.h"
#include "CheckDigits.h"
#include "DateUtil.h"
#include "DialogPort.h"
#include "DueFactor.h"

#include <QNetworkInterface>

const QString BarcodeReader::kLabel = QStringLiteral("Função de Leitura Código de Barras");

namespace {
const QString kAviso = QStringLiteral("Aviso");

bool anyInterfaceUp() {
    for (const QNetworkInterface& i : QNetworkInterface::allInterfaces()) {
        const auto f = i.flags();
        if (f.testFlag(QNetworkInterface::IsUp) && f.testFlag(QNetworkInterface::IsRunning) &&
            !f.testFlag(QNetworkInterface::IsLoopBack))
            return true;
    }
    return false;
}
} // namespace

QString ReadingDecision::word(Outcome o) {
    switch (o) {
    case Outcome::Aceito:
        return QStringLiteral("aceito");
    case Outcome::Lancada:
        return QStringLiteral("lancada");
    case Outcome::Recebida:
        return QStringLiteral("recebida");
    case Outcome::Bloqueada:
        return QStringLiteral("bloqueada");
    case Outcome::Desconhecida:
        return QStringLiteral("desconhecida");
    case Outcome::Digito:
        return QStringLiteral("digito");
    case Outcome::NaoReconhecida:
        return QStringLiteral("nao_reconhecida");
    case Outcome::Ignorada:
        return QStringLiteral("ignorada");
    case Outcome::Erro:
        return QStringLiteral("erro");
    }
    return {};
}

BarcodeReader::BarcodeReader(AppContext& ctx) : networkAlive(anyInterfaceUp), m_ctx(ctx) {}

void BarcodeReader::notice(ReadingDecision& d, const QString& form, const QString& caption,
                           const QStringList& lines) {
    d.mensagens << lines.join(QLatin1Char(' '));
    m_ctx.dialogs.notice(form, caption, lines, DialogButtons::Ok);
}

void BarcodeReader::runtimeError(ReadingDecision& d, const QString& what) {
    // The field keeps its text, as after any run-time error of the routine.
    d.outcome = ReadingDecision::Outcome::Erro;
    d.clearField = false;
    d.mensagens << what;
    m_ctx.errors.report(kLabel, {13, what, QStringLiteral("Tolvane")});
}

QString BarcodeReader::Busca_padrao(const QString& idtipo) {
    const auto rs = m_ctx.db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT PADRAO, JUROS, BLOQUEIO FROM CodBarra WHERE IDTIPO = ?"), {idtipo});
    if (!rs) {
        m_ctx.dialogs.critical(kAviso, QStringLiteral("Erro na leitura do código de barras!!"));
        return {};
    }
    if (rs->recordCount() != 1)
        return {};
    auto one = [&](const char* col) {
        return rs->text(QLatin1String(col)).left(1).leftJustified(1, QLatin1Char(' '));
    };
    return one("PADRAO") + one("BLOQUEIO") + one("JUROS");
}

bool BarcodeReader::Conta_recebida(const QString& code) {
    // Exactly one local row: a code recorded twice passes, as it always did.
    const auto rs = m_ctx.db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT IDRECEBE FROM Recebimentos WHERE CODBARRA = ?"), {code});
    return rs && rs->recordCount() == 1;
}

bool BarcodeReader::Conta_recebida_rede(const QString& code) {
    const auto rs = m_ctx.db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT ID FROM RECEBIMENTOS1 WHERE CODBARRA = ?"), {code});
    return rs && rs->recordCount() > 0;
}

bool BarcodeReader::duplicate(const QString& code, const QStringList& customerBarcodes,
                              ReadingDecision& d) {
    const auto refuse = [&](ReadingDecision::Outcome o, const QString& text) {
        d.outcome = o;
        d.clearField = true;
        notice(d, QStringLiteral("frmContaLancada"), QStringLiteral("Aviso"), {text});
        return true;
    };
    for (const QString& b : customerBarcodes)
        if (b.startsWith(code))
            return refuse(ReadingDecision::Outcome::Lancada, QStringLiteral("Conta já Lançada!!!"));
    if (Conta_recebida(code))
        return refuse(ReadingDecision::Outcome::Recebida, QStringLiteral("Conta já Recebida!!!"));
    if (m_ctx.settings.rede == 1) {
        d.networkChecked = true;
        if (!Rede_ativa()) {
            d.showNetworkLabel = true;
            return false;
        }
        if (Conta_recebida_rede(code))
            return refuse(ReadingDecision::Outcome::Recebida,
                          QStringLiteral("Conta já Recebida!!!"));
    }
    return false;
}

bool BarcodeReader::fillKinds(const QString& code, ReadingDecision& d) {
    // "PADRAO <> 'S'" binds to the last equality only, as it always did.
    const auto rs = m_ctx.db.SQLSelect_ReadOnly(
        QStringLiteral(
            "SELECT IDCOD, DESCRICAO FROM CodBarra WHERE IDTIPO = ? OR IDTIPO = ? OR IDTIPO = ? "
            "OR IDTIPO = ? AND PADRAO <> 'S' ORDER BY IDCOD"),
        {code.mid(24, 3), code.mid(19, 5), code.mid(29, 5), code.mid(15, 4)});
    if (!rs)
        return false;
    for (Recordset r = *rs; !r.EOF_(); r.moveNext())
        d.kinds.append(
            {int(r.integer(QStringLiteral("IDCOD"))), r.text(QStringLiteral("DESCRICAO"))});
    if (d.kinds.isEmpty())
        return false;
    d.idcod = d.kinds.first().first;
    d.descricao = d.kinds.first().second;
    return true;
}

ReadingDecision BarcodeReader::Leitura_codigo_barras(const QString& code, const QDate& working,
                                                     const QStringList& customerBarcodes) {
    ReadingDecision d;
    if (code.size() != 44)
        return d;
    if (!code.startsWith(QLatin1String("000")) && duplicate(code, customerBarcodes, d))
        return d;
    if (!fillKinds(code, d)) {
        d.outcome = ReadingDecision::Outcome::Desconhecida;
        d.clearField = true;
        return d;
    }
    if (Busca_padrao(code.mid(15, 4)).startsWith(QLatin1Char('F'))) {
        febraban(code, working, d);
        return d;
    }
    const QStringList slipKinds = {code.mid(19, 5), code.mid(29, 5)};
    if (Busca_padrao(slipKinds[0]).startsWith(QLatin1Char('C')) ||
        Busca_padrao(slipKinds[1]).startsWith(QLatin1Char('C'))) {
        d.padrao = QStringLiteral("C");
        bankSlip(code, working, slipKinds, d);
        return d;
    }
    if (code.mid(19, 4) != QLatin1String("0000")) {
        d.outcome = ReadingDecision::Outcome::NaoReconhecida; // left in the field, nothing said
        return d;
    }
    d.padrao = QStringLiteral("0000");
    bankSlip(code, working, {code.mid(24, 3)}, d);
    return d;
}

bool BarcodeReader::yearBlocked(const QDate& due, const QDate& working, const QStringList& kinds,
                                ReadingDecision& d) {
    if (!due.isValid() || due.year() >= working.year())
        return false;
    bool block = false;
    for (const QString& k : kinds)
        block = block || Busca_padrao(k).mid(1, 1) == QLatin1String("S");
    if (block) {
        notice(d, QStringLiteral("frmBloqueia"), QStringLiteral("Bloqueia Conta"),
               {QStringLiteral("Não pode ser recebida!!!"),
                QStringLiteral("Conta de um ano anterior.")});
        d.outcome = ReadingDecision::Outcome::Bloqueada;
        d.clearField = true;
        d.clearKind = true;
        return true;
    }
    notice(d, QStringLiteral("frmContavencida"), QStringLiteral("Conta vencida."),
           {QStringLiteral("Conta de um ano anterior."),
            QStringLiteral("Verifique os dados antes de"), QStringLiteral("receber este boleto.")});
    return false;
}

void BarcodeReader::febraban(const QString& code, const QDate& working, ReadingDecision& d) {
    d.padrao = QStringLiteral("F");
    const QString input = code.left(3) + code.mid(4);
    const QString digit =
        code.mid(2, 1).toInt() < 8 ? Modulo10_arrecadacao(input) : Modulo11_arrecadacao(input);
    if (digit.trimmed() != code.mid(3, 1).trimmed()) {
        d.outcome = ReadingDecision::Outcome::Digito; // deliberately silent
        d.clearField = true;
        return;
    }
    d.valorTexto = code.mid(5, 8) + QLatin1Char(',') + code.mid(13, 2);
    d.vencimentoTexto =
        code.mid(25, 2) + QLatin1Char('/') + code.mid(23, 2) + QLatin1Char('/') + code.mid(19, 4);
    const auto due = DateUtil::parseBr(d.vencimentoTexto);
    const auto valor = Money::parse(d.valorTexto);
    if (!due || !valor) {
        runtimeError(d,
                     QStringLiteral("Data de vencimento ou valor inválido no código de barras: %1")
                         .arg(code));
        return;
    }
    d.vencimento = *due;
    d.valor = *valor;
    const QString kind = code.mid(15, 4);
    if (yearBlocked(d.vencimento, working, {kind}, d))
        return;
    const bool juros = Busca_padrao(kind).endsWith(QLatin1Char('S')) ||
                       (kind == QLatin1String("0425") && code.mid(43, 1) == QLatin1String("3"));
    d.juros = juros ? QStringLiteral("SIM") : QStringLiteral("NÃO");
    d.route = ReadingDecision::Route::Febraban;
    d.outcome = ReadingDecision::Outcome::Aceito;
}

void BarcodeReader::bankSlip(const QString& code, const QDate& working, const QStringList& kinds,
                             ReadingDecision& d) {
    const bool cnab = d.padrao == QLatin1String("C");
    if (cnab && Modulo11_boleto(code.left(4) + code.mid(5)) != code.mid(4, 1).toInt()) {
        d.mensagens << QStringLiteral("ERRO NA LEITURA DO CÓDIGO DE BARRAS!!!");
        m_ctx.dialogs.critical(kAviso, QStringLiteral("ERRO NA LEITURA DO CÓDIGO DE BARRAS!!!"));
        d.outcome = ReadingDecision::Outcome::Digito;
        d.clearField = true;
        return;
    }
    const auto rule = DueFactor::ruleFromSetting(
        m_ctx.option(QStringLiteral("Opcoes"), QStringLiteral("fator_vencimento")));
    const DueFactor::Result due = DueFactor::dueDate(code.mid(5, 4), working, rule);
    d.valorTexto = code.mid(10, 7) + QLatin1Char(',') + code.mid(17, 2);
    const auto valor = Money::parse(d.valorTexto);
    if (due.status == DueFactor::Status::Invalid || due.status == DueFactor::Status::OutOfWindow ||
        !valor) {
        runtimeError(d,
                     QStringLiteral("Fator de vencimento ou valor inválido no código de barras: %1")
                         .arg(code));
        return;
    }
    d.vencimento = due.date;
    d.valor = *valor;
    if (yearBlocked(d.vencimento, working, kinds, d))
        return;
    if (cnab) {
        bool juros = false;
        for (const QString& k : kinds)
            juros = juros || Busca_padrao(k).endsWith(QLatin1Char('S'));
        d.juros = juros ? QStringLiteral("SIM") : QStringLiteral("NÃO");
        d.route = ReadingDecision::Route::Cnab;
    } else {
        d.route = ReadingDecision::Route::Diversos;
    }
    d.outcome = ReadingDecision::Outcome::Aceito;
}
