#include "BarcodeReader.h"

#include "AppContext.h"
#include "CentralDuplicates.h"
#include "CheckDigits.h"
#include "DialogPort.h"
#include "DocumentValue.h"
#include "DueFactor.h"
#include "SystemTexts.h"
#include "clsCodBarra.h"
#include "clsRecebimentos.h"
#include "clsRecebimentos1.h"

#include <QNetworkInterface>
#include <algorithm>

const QString BarcodeReader::kLabel = QStringLiteral("Função de Leitura Código de Barras");

namespace {

bool isPadrao(const std::optional<GuideKind>& k, GuideKind::Padrao p) {
    return k && k->padrao == p;
}

// The item's kind is the one whose code the layout read, not whichever the list holds first:
// another candidate's code can coincide with digits of the due date or the free field. That
// kind goes to the head of the list, so the screen selects it too.
void chooseKind(ReadingDecision& d, const QStringList& layoutCodes) {
    for (const QString& code : layoutCodes) {
        const auto it = std::find_if(d.kinds.begin(), d.kinds.end(), [&](const GuideKind& k) {
            return k.idtipo.compare(code, Qt::CaseInsensitive) == 0;
        });
        if (it == d.kinds.end())
            continue;
        const GuideKind chosen = *it;
        d.kinds.erase(it);
        d.kinds.prepend(chosen);
        break;
    }
    d.idcod = d.kinds.first().idcod;
    d.descricao = d.kinds.first().descricao;
}

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

std::optional<GuideKind> BarcodeReader::Busca_padrao(const QString& idtipo) {
    const auto kinds = clsCodBarra::porIdtipo(m_ctx.db, idtipo);
    if (!kinds) {
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::ErroLeituraCodigo));
        return std::nullopt;
    }
    if (kinds->size() != 1)
        return std::nullopt;
    return kinds->first();
}

std::optional<GuideKind> BarcodeReader::kindOf(const QString& idtipo) {
    // One look-up per IDTIPO and read: the layouts, the year block and the interest ask again.
    auto it = m_kindsRead.find(idtipo);
    if (it == m_kindsRead.end())
        it = m_kindsRead.insert(idtipo, Busca_padrao(idtipo));
    return *it;
}

bool BarcodeReader::Conta_recebida(const QString& code) {
    // Exactly one local row: the reading's rule. The recorder itself never writes a code twice.
    const auto n = clsRecebimentos::contarCodigo(m_ctx.db, code);
    return n && *n == 1;
}

bool BarcodeReader::Rede_ativa() const {
    if (CentralDuplicates* c = CentralDuplicates::answerer(); c && c->configurada(m_ctx))
        return c->ativa(m_ctx);
    return networkAlive ? networkAlive() : false;
}

std::optional<bool> BarcodeReader::recebidaRede(const QString& code) {
    if (CentralDuplicates* c = CentralDuplicates::answerer(); c && c->configurada(m_ctx))
        return c->recebida(m_ctx, code);
    const auto n = clsRecebimentos1::contarCodigo(m_ctx.db, code);
    return n && *n > 0;
}

bool BarcodeReader::Conta_recebida_rede(const QString& code) {
    return recebidaRede(code).value_or(false);
}

std::optional<ReadingDecision::Outcome>
BarcodeReader::duplicado(const QString& code, const QStringList& customerBarcodes,
                         bool* networkChecked, bool* networkDown) {
    if (code.startsWith(QLatin1String("000")))
        return std::nullopt;
    for (const QString& b : customerBarcodes)
        if (b.startsWith(code))
            return ReadingDecision::Outcome::Lancada;
    if (Conta_recebida(code))
        return ReadingDecision::Outcome::Recebida;
    if (m_ctx.settings.emRede()) {
        if (networkChecked)
            *networkChecked = true;
        if (!Rede_ativa()) {
            if (networkDown)
                *networkDown = true;
            return std::nullopt;
        }
        const auto recebida = recebidaRede(code);
        if (!recebida && networkDown)
            *networkDown = true; // no answer in time: as if the network were down
        if (recebida.value_or(false))
            return ReadingDecision::Outcome::Recebida;
    }
    return std::nullopt;
}

QString BarcodeReader::textoDuplicado(ReadingDecision::Outcome o) {
    return o == ReadingDecision::Outcome::Lancada ? SystemTexts::text(SystemText::ContaLancada)
                                                  : SystemTexts::text(SystemText::ContaRecebida);
}

bool BarcodeReader::duplicate(const QString& code, const QStringList& customerBarcodes,
                              ReadingDecision& d) {
    const auto o = duplicado(code, customerBarcodes, &d.networkChecked, &d.showNetworkLabel);
    if (!o)
        return false;
    d.outcome = *o;
    d.clearField = true;
    notice(d, QStringLiteral("frmContaLancada"), SystemTexts::aviso(), {textoDuplicado(*o)});
    return true;
}

bool BarcodeReader::fillKinds(const QString& code, ReadingDecision& d) {
    const auto kinds = clsCodBarra::candidatosLeitura(m_ctx.db, code.mid(24, 3), code.mid(19, 5),
                                                      code.mid(29, 5), code.mid(15, 4));
    if (!kinds || kinds->isEmpty()) {
        if (kindsFilled)
            kindsFilled({}, false);
        return false;
    }
    d.kinds = *kinds;
    if (kindsFilled)
        kindsFilled(d.kinds, false);
    d.idcod = d.kinds.first().idcod;
    d.descricao = d.kinds.first().descricao;
    return true;
}

ReadingDecision BarcodeReader::Leitura_codigo_barras(const QString& code, const QDate& working,
                                                     const QStringList& customerBarcodes) {
    ReadingDecision d;
    m_kindsRead.clear();
    if (code.size() != 44)
        return d;
    if (duplicate(code, customerBarcodes, d))
        return d;
    if (!fillKinds(code, d)) {
        d.outcome = ReadingDecision::Outcome::Desconhecida;
        d.clearField = true;
        return d;
    }
    if (isPadrao(kindOf(code.mid(15, 4)), GuideKind::Padrao::Febraban)) {
        chooseKind(d, {code.mid(15, 4)});
        febraban(code, working, d);
        return d;
    }
    const QStringList slipKinds = {code.mid(19, 5), code.mid(29, 5)};
    if (isPadrao(kindOf(slipKinds[0]), GuideKind::Padrao::Cnab) ||
        isPadrao(kindOf(slipKinds[1]), GuideKind::Padrao::Cnab)) {
        d.route = ReadingDecision::Route::Cnab;
        QStringList cnabCodes;
        for (const QString& k : slipKinds)
            if (isPadrao(kindOf(k), GuideKind::Padrao::Cnab))
                cnabCodes << k;
        chooseKind(d, cnabCodes);
        bankSlip(code, working, slipKinds, d);
        return d;
    }
    if (code.mid(19, 4) != QLatin1String("0000")) {
        d.outcome = ReadingDecision::Outcome::NaoReconhecida; // left in the field, nothing said
        return d;
    }
    d.route = ReadingDecision::Route::Diversos;
    chooseKind(d, {code.mid(24, 3)});
    bankSlip(code, working, {code.mid(24, 3)}, d);
    return d;
}

bool BarcodeReader::yearBlocked(const QDate& due, const QDate& working, const QStringList& kinds,
                                ReadingDecision& d) {
    if (!due.isValid() || due.year() >= working.year())
        return false;
    bool block = false;
    for (const QString& k : kinds)
        if (const auto kind = kindOf(k))
            block = block || kind->bloqueio;
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
    const QString input = code.left(3) + code.mid(4);
    const QString digit =
        code.mid(2, 1).toInt() < 8 ? Modulo10_arrecadacao(input) : Modulo11_arrecadacao(input);
    if (digit.trimmed() != code.mid(3, 1).trimmed()) {
        d.outcome = ReadingDecision::Outcome::Digito; // deliberately silent
        d.clearField = true;
        return;
    }
    if (kindsFilled)
        kindsFilled(d.kinds, true);
    // The value field's first digit (position 5) is not part of the value.
    const auto valor = DocumentValue::arrecadacao(code);
    const QDate due(code.mid(19, 4).toInt(), code.mid(23, 2).toInt(), code.mid(25, 2).toInt());
    if (!due.isValid() || !valor) {
        runtimeError(d,
                     QStringLiteral("Data de vencimento ou valor inválido no código de barras: %1")
                         .arg(code));
        return;
    }
    d.vencimento = due;
    d.valor = *valor;
    const QString kind = code.mid(15, 4);
    if (yearBlocked(d.vencimento, working, {kind}, d))
        return;
    // Kind 0425 charges interest on the guides whose last digit is 3, whatever its JUROS.
    const auto k = kindOf(kind);
    d.juros =
        (k && k->juros) || (kind == QLatin1String("0425") && code.mid(43, 1) == QLatin1String("3"));
    d.route = ReadingDecision::Route::Febraban;
    d.outcome = ReadingDecision::Outcome::Aceito;
}

void BarcodeReader::bankSlip(const QString& code, const QDate& working, const QStringList& kinds,
                             ReadingDecision& d) {
    // "0000" slips carry no verified check digit.
    if (d.route == ReadingDecision::Route::Cnab &&
        Modulo11_boleto(code.left(4) + code.mid(5)) != code.mid(4, 1).toInt()) {
        const Notice digito = SystemTexts::notice(SystemText::ErroDigitoCodigo);
        d.mensagens << digito.text;
        tell(m_ctx.dialogs, digito);
        d.outcome = ReadingDecision::Outcome::Digito;
        d.clearField = true;
        return;
    }
    if (kindsFilled)
        kindsFilled(d.kinds, true);
    const auto rule = DueFactor::ruleFromSetting(
        m_ctx.option(QStringLiteral("Opcoes"), QStringLiteral("fator_vencimento")));
    const DueFactor::Result due = DueFactor::dueDate(code.mid(5, 4), working, rule);
    const auto valor = DocumentValue::boleto(code);
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
    if (d.route == ReadingDecision::Route::Cnab)
        for (const QString& k : kinds)
            if (const auto kind = kindOf(k))
                d.juros = d.juros || kind->juros;
    d.outcome = ReadingDecision::Outcome::Aceito;
}
