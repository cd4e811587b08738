#include "LooseStamp.h"

#include "ActLog.h"
#include "AppContext.h"
#include "Clock.h"
#include "DocumentStamp.h"
#include "PrinterService.h"
#include "SystemTexts.h"
#include "Transaction.h"
#include "clsAutenticacaoAvulsa.h"

Notice LooseStamp::Resultado::notice() const {
    switch (outcome) {
    case Outcome::Registrada:
        return {};
    case Outcome::ValorInvalido:
        return SystemTexts::notice(SystemText::ValorDocumentoInvalido);
    case Outcome::AutenticadoraDesligada:
        return SystemTexts::notice(SystemText::AutenticadoraDesligada);
    case Outcome::FalhaGravacao:
        break;
    }
    return SystemTexts::notice(SystemText::AutenticacaoNaoRegistrada);
}

LooseStamp::Resultado LooseStamp::registrar(AppContext& ctx, const std::optional<Money>& valor,
                                            const QString& administrador) {
    Resultado r;
    switch (DocumentStamp::preparar(ctx, valor, &r.texto)) {
    case DocumentStamp::Outcome::InvalidValue:
        r.outcome = Outcome::ValorInvalido;
        return r;
    case DocumentStamp::Outcome::PrinterOff:
        r.outcome = Outcome::AutenticadoraDesligada;
        return r;
    case DocumentStamp::Outcome::Sent:
        break;
    }
    clsAutenticacaoAvulsa a(ctx.db);
    a.MOMENTO = ctx.clock.now();
    a.DIA = ctx.workingDate.isValid() ? ctx.workingDate : ctx.clock.today();
    a.VALOR = *valor;
    a.TEXTO = r.texto;
    a.GUICHE = ctx.settings.guiche.trimmed();
    a.OPERADOR = ctx.userName.isEmpty() ? administrador : ctx.userName;
    a.ADMINISTRADOR = administrador;
    Transaction tx(ctx.db);
    if (!tx.ok() || !a.SQLInsert() ||
        !ActLog::gravar(ctx, Act::AutenticarAvulso, QStringLiteral("AutenticacoesAvulsas"), a.ID) ||
        !tx.commit()) {
        r.outcome = Outcome::FalhaGravacao;
        return r;
    }
    r.outcome = Outcome::Registrada;
    r.id = a.ID;
    return r;
}

bool LooseStamp::confirmar(AppContext& ctx, qint64 id) {
    clsAutenticacaoAvulsa a(ctx.db);
    a.ID = id;
    return a.SQLConfirmar();
}

LooseStamp::Resultado LooseStamp::autenticar(AppContext& ctx, PrinterService& printer,
                                             const std::optional<Money>& valor,
                                             const QString& administrador) {
    Resultado r = registrar(ctx, valor, administrador);
    if (r.outcome != Outcome::Registrada)
        return r;
    printer.abrirPorta();
    const bool stamped =
        printer.ImprimeAutenticadora(PrinterOperation::Autenticar, printer.modelo(), r.texto);
    printer.fecharPorta(true);
    r.confirmada = stamped && confirmar(ctx, r.id);
    return r;
}
