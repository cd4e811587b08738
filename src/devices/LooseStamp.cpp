#include "LooseStamp.h"

#include "ActLog.h"
#include "AppContext.h"
#include "Clock.h"
#include "DocumentStamp.h"
#include "PrinterService.h"
#include "Transaction.h"
#include "clsAutenticacaoAvulsa.h"

const QString LooseStamp::kTitulo = QStringLiteral("Aviso");
const QString LooseStamp::kValorInvalido = QStringLiteral("Informe o valor do documento!!");
const QString LooseStamp::kDesligada =
    QStringLiteral("A autenticadora não está habilitada (Opções, Impressão: \"Habilitar a "
                   "autenticadora?\").");
const QString LooseStamp::kFalhaGravacao =
    QStringLiteral("A autenticação não pôde ser registrada no banco: nada foi impresso.");
const QString LooseStamp::kNaoConfirmada =
    QStringLiteral("A autenticadora não confirmou a autenticação: ela fica registrada como não "
                   "impressa.");

QString LooseStamp::Resultado::mensagem() const {
    switch (outcome) {
    case Outcome::Registrada:
        return {};
    case Outcome::ValorInvalido:
        return kValorInvalido;
    case Outcome::AutenticadoraDesligada:
        return kDesligada;
    case Outcome::FalhaGravacao:
        break;
    }
    return kFalhaGravacao;
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
