#include "CliSupport.h"

#include "AppContext.h"
#include "CliArgs.h"
#include "Clock.h"
#include "DateUtil.h"
#include "Login.h"
#include "Permissions.h"
#include "SystemTexts.h"

#include <QJsonDocument>
#include <QTextStream>

std::optional<QDate> CliSupport::workingDate(CliEnv& e) {
    if (!e.args.has(QStringLiteral("data")))
        return e.ctx.clock.today();
    const auto d = DateUtil::parseBr(e.args.value(QStringLiteral("data")));
    if (!d)
        e.err << QStringLiteral("Data inválida: %1 (use DD/MM/AAAA).\n")
                     .arg(e.args.value(QStringLiteral("data")));
    return d;
}

int CliSupport::chooseDay(CliEnv& e, DateScreenLogic::Action action) {
    const auto day = workingDate(e);
    if (!day)
        return ExitUsage;
    return DateScreenLogic::checkDate(e.ctx, *day, action) ? -1 : int(ExitRefused);
}

int CliSupport::authorize(AppContext& ctx, Act act, QTextStream& err,
                          const std::function<QString()>& line) {
    switch (Permissions::autorizar(ctx, act, line)) {
    case Permissions::Outcome::Aceito:
        return -1;
    case Permissions::Outcome::SenhaOperador:
        err << SystemTexts::text(SystemText::SenhaInvalida) << "\n";
        break;
    case Permissions::Outcome::SenhaAdministrador:
        err << SystemTexts::text(SystemText::SenhaAdministradorRecusada) << "\n";
        break;
    }
    return ExitRefused;
}

void CliSupport::addEncargos(QJsonObject& o, const Encargos& e) {
    o.insert(QStringLiteral("vencida"), e.vencida);
    o.insert(QStringLiteral("dias"), e.dias);
    o.insert(QStringLiteral("meses"), e.meses);
    o.insert(QStringLiteral("acrescimo_juros"), e.juros.format());
    o.insert(QStringLiteral("acrescimo_multa"), e.multa.format());
    o.insert(QStringLiteral("total"), e.total.format());
}

void CliSupport::printJson(CliEnv& e, const QJsonObject& o) {
    e.out << QJsonDocument(o).toJson(QJsonDocument::Compact) << "\n";
}

void CliSupport::printJson(CliEnv& e, const QJsonArray& a) {
    e.out << QJsonDocument(a).toJson(QJsonDocument::Compact) << "\n";
}

QString CliSupport::resultado(ReadingDecision::Outcome o) {
    using O = ReadingDecision::Outcome;
    switch (o) {
    case O::Aceito:
        return QStringLiteral("aceito");
    case O::Lancada:
        return QStringLiteral("lancada");
    case O::Recebida:
        return QStringLiteral("recebida");
    case O::Bloqueada:
        return QStringLiteral("bloqueada");
    case O::Desconhecida:
        return QStringLiteral("desconhecida");
    case O::Digito:
        return QStringLiteral("digito");
    case O::NaoReconhecida:
        return QStringLiteral("nao_reconhecida");
    case O::Ignorada:
        return QStringLiteral("ignorada");
    case O::Erro:
        return QStringLiteral("erro");
    case O::Recusada:
        return QStringLiteral("recusada");
    case O::Encerrado:
        return QStringLiteral("encerrado");
    case O::Linha:
        return QStringLiteral("linha");
    }
    return {};
}

QString CliSupport::padrao(ReadingDecision::Route r) {
    switch (r) {
    case ReadingDecision::Route::Febraban:
        return QStringLiteral("F");
    case ReadingDecision::Route::Cnab:
        return QStringLiteral("C");
    case ReadingDecision::Route::Diversos:
        return QStringLiteral("0000");
    case ReadingDecision::Route::None:
        break;
    }
    return {};
}
