#include "DemoData.h"

#include "AppContext.h"
#include "Clock.h"
#include "NationalHolidays.h"
#include "PasswordHash.h"
#include "SystemTexts.h"
#include "Transaction.h"
#include "clsCodBarra.h"
#include "clsFeriado.h"
#include "clsUsuarios.h"

#include <QRandomGenerator>

namespace {

struct Kind {
    int idcod;
    const char* idtipo;
    const char* descricao;
    const char* padrao;
    const char* juros;
    const char* bloqueio;
    const char* codbanco;
};

// Febraban guides read their kind at positions 16-19, CNAB slips at 20-24 (SIGCB) or 30-34
// (SICOB), "0000" slips at 25-27; kinds of money and exit items are PADRAO "S".
const Kind kKinds[] = {
    {1, "0425", "IPTU", "F", "N", "N", "0425"},
    {2, "0426", "TAXAS DIVERSAS", "F", "S", "S", "0426"},
    {3, "0427", "ISSQN", "F", "S", "N", "0427"},
    {4, "12345", "AGUA E ESGOTO", "C", "S", "N", "12345"},
    {5, "54321", "CONTRIBUICAO DE MELHORIA", "C", "N", "S", "54321"},
    {6, "101", "BOLETO DIVERSOS", "D", "N", "N", ""},
    {7, "AV1", "TAXA DE EXPEDIENTE", "A", "S", "N", ""},
    {8, "AV2", "CERTIDAO NEGATIVA", "A", "N", "N", ""},
    {100, "DIN", "DINHEIRO", "S", "N", "N", ""},
    {101, "CHQ", "CHEQUE", "S", "N", "N", ""},
    {102, "EMP", "PAGAMENTO DE EMPENHO", "S", "N", "N", ""},
};

QString newPassword() {
    static const char letters[] = "abcdefghjkmnpqrstuvwxyz23456789";
    QString p;
    for (int i = 0; i < 10; ++i)
        p += QLatin1Char(letters[QRandomGenerator::system()->bounded(int(sizeof letters) - 1)]);
    return p;
}

} // namespace

bool DemoData::seed(AppContext& ctx, QString* adminPassword, QString* error) {
    clsDataAccess& db = ctx.db;
    auto fail = [&](const QString& what) {
        if (error)
            *error = what;
        return false;
    };
    Transaction tx(db);
    if (!tx.ok())
        return fail(
            QStringLiteral("Não foi possível iniciar a gravação dos dados de demonstração."));
    for (const Kind& k : kKinds) {
        clsCodBarra kind(db);
        if (kind.SQLSelect(k.idcod))
            continue;
        kind.IDCOD = static_cast<qint16>(k.idcod);
        kind.IDTIPO = QString::fromUtf8(k.idtipo);
        kind.DESCRICAO = QString::fromUtf8(k.descricao);
        kind.PADRAO = QString::fromUtf8(k.padrao);
        kind.Juros = QString::fromUtf8(k.juros);
        kind.BLOQUEIO = QString::fromUtf8(k.bloqueio);
        kind.CODBANCO = QString::fromUtf8(k.codbanco);
        if (!kind.inserir())
            return fail(QStringLiteral("Erro ao gravar os tipos de guia."));
    }
    for (const QDate& d : NationalHolidays::ofYear(ctx.clock.today().year())) {
        const auto n = clsFeriado::contar(db, d);
        if (!n)
            return fail(QStringLiteral("Erro ao ler os feriados."));
        clsFeriado f(db);
        f.FERIADO = d;
        if (*n == 0 && !f.Incluir())
            return fail(QStringLiteral("Erro ao gravar os feriados."));
    }
    const auto users = clsUsuarios::listar(db);
    if (!users)
        return fail(QStringLiteral("Erro ao ler os usuários."));
    const bool hasAdmin = std::any_of(users->begin(), users->end(), [](const clsUsuarios& u) {
        return u.tipo() == UserType::Admin;
    });
    if (!hasAdmin) {
        const QString password = newPassword();
        clsUsuarios u(db);
        u.NOME = QStringLiteral("ADMINISTRADOR");
        u.SENHA = PasswordHash::hash(password);
        u.setTipo(UserType::Admin);
        u.ATIVO = 1;
        if (!u.inserirNovo())
            return fail(SystemTexts::text(SystemText::ErroGravarAdministrador));
        if (adminPassword)
            *adminPassword = password;
    }
    if (!tx.commit())
        return fail(QStringLiteral("Erro ao gravar os dados de demonstração."));
    return true;
}
