#include "DemoData.h"

#include "AppContext.h"
#include "Clock.h"
#include "NationalHolidays.h"
#include "PasswordHash.h"
#include "Transaction.h"
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
        const auto rs = db.SQLSelect_ReadOnly(
            QStringLiteral("SELECT IDCOD FROM CodBarra WHERE IDCOD = ?"), {k.idcod});
        if (!rs)
            return fail(QStringLiteral("Erro ao ler os tipos de guia."));
        if (rs->recordCount() > 0)
            continue;
        if (!db.SQLExecute(
                QStringLiteral(
                    "INSERT INTO CodBarra (IDCOD, IDTIPO, DESCRICAO, PADRAO, JUROS, BLOQUEIO, "
                    "CODBANCO) VALUES (?, ?, ?, ?, ?, ?, ?)"),
                {k.idcod, QString::fromUtf8(k.idtipo), QString::fromUtf8(k.descricao),
                 QString::fromUtf8(k.padrao), QString::fromUtf8(k.juros),
                 QString::fromUtf8(k.bloqueio), QString::fromUtf8(k.codbanco)}))
            return fail(QStringLiteral("Erro ao gravar os tipos de guia."));
    }
    for (const QDate& d : NationalHolidays::ofYear(ctx.clock.today().year())) {
        const auto rs =
            db.SQLSelect_ReadOnly(QStringLiteral("SELECT ID FROM Feriados WHERE FERIADO = ?"), {d});
        if (!rs)
            return fail(QStringLiteral("Erro ao ler os feriados."));
        if (rs->recordCount() == 0 &&
            !db.SQLExecute(QStringLiteral("INSERT INTO Feriados (FERIADO) VALUES (?)"), {d}))
            return fail(QStringLiteral("Erro ao gravar os feriados."));
    }
    const auto admins =
        db.SQLSelect_ReadOnly(QStringLiteral("SELECT ID FROM Usuarios WHERE TIPO = 'ADM'"));
    if (!admins)
        return fail(QStringLiteral("Erro ao ler os usuários."));
    if (admins->recordCount() == 0) {
        const QString password = newPassword();
        clsUsuarios u(db);
        u.NOME = QStringLiteral("ADMINISTRADOR");
        u.SENHA = PasswordHash::hash(password);
        u.TIPO = QStringLiteral("ADM");
        u.ATIVO = 1;
        if (!u.SQLInsert(1))
            return fail(QStringLiteral("Erro ao gravar o administrador."));
        if (adminPassword)
            *adminPassword = password;
    }
    if (!tx.commit())
        return fail(QStringLiteral("Erro ao gravar os dados de demonstração."));
    return true;
}
