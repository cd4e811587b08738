#include "Permissions.h"

#include "AppContext.h"
#include "Login.h"
#include "clsUsuarios.h"

const QList<Permissions::Rule>& Permissions::table() {
    using A = Authority;
    static const QList<Rule> rules = {
        {Act::Consultar, A::Aberto, QStringLiteral("Consulta")},
        {Act::Entrar, A::Aberto, QStringLiteral("Conferência de senha")},
        {Act::PrepararPasta, A::Aberto, QStringLiteral("Preparar a pasta")},
        {Act::ConsultarDia, A::Operador, QStringLiteral("Consulta do movimento")},
        {Act::AbrirDia, A::Operador, QStringLiteral("Abrir movimento")},
        {Act::EncerrarDia, A::Operador, QStringLiteral("Encerrar movimento")},
        {Act::ReabrirDia, A::Operador, QStringLiteral("Reabrir movimento")},
        {Act::Receber, A::Operador, QStringLiteral("Receber")},
        {Act::Reautenticar, A::Operador, QStringLiteral("Reautenticar")},
        {Act::ContarCaixa, A::Operador, QStringLiteral("Conferência de caixa")},
        {Act::Pagamento, A::Operador, QStringLiteral("Pagamentos")},
        {Act::Cofre, A::Operador, QStringLiteral("Suprimentos (cofre)")},
        {Act::Relatorios, A::Operador, QStringLiteral("Relatórios")},
        {Act::ArquivoIntegracao, A::Operador, QStringLiteral("Arquivo de integração")},
        {Act::ControleDiario, A::Operador, QStringLiteral("Controle diário")},
        {Act::ImprimirFita, A::Operador, QStringLiteral("Impressão na fita")},
        {Act::PublicarRede, A::Operador, QStringLiteral("Publicar na central")},
        {Act::Aparencia, A::Operador, QStringLiteral("Aparência")},
        {Act::Usuarios, A::Administrador, QStringLiteral("Usuários")},
        {Act::TiposGuia, A::Administrador, QStringLiteral("Tipos de guia")},
        {Act::Feriados, A::Administrador, QStringLiteral("Feriados")},
        {Act::Opcoes, A::Administrador, QStringLiteral("Opções")},
        {Act::PastaAtualizacao, A::Administrador, QStringLiteral("Atualização")},
        {Act::AutenticarAvulso, A::Administrador, QStringLiteral("Autenticar documento")},
        {Act::Correcoes, A::Administrador, QStringLiteral("Correções e estornos")},
        {Act::EntradaSangria, A::Administrador, QStringLiteral("Entradas e sangrias")},
        {Act::ArquivosBanco, A::Administrador, QStringLiteral("Arquivos bancários")},
        {Act::Auditar, A::Administrador, QStringLiteral("Auditoria")},
        {Act::AssumirGuiche, A::Administrador, QStringLiteral("Assumir o guichê")},
        {Act::CopiaBanco, A::Administrador, QStringLiteral("Cópia do banco")},
        {Act::ImportarRede, A::Administrador, QStringLiteral("Importar na central")},
        {Act::CriarAdministrador, A::PrimeiroAdministrador, QStringLiteral("Criar administrador")},
        {Act::DadosDemonstracao, A::PrimeiroAdministrador, QStringLiteral("Dados de demonstração")},
    };
    return rules;
}

Authority Permissions::who(Act act) {
    for (const Rule& r : table())
        if (r.act == act)
            return r.who;
    return Authority::Administrador; // an act left out of the table is the strictest
}

QString Permissions::nome(Act act) {
    for (const Rule& r : table())
        if (r.act == act)
            return r.nome;
    return {};
}

bool Permissions::hasAdministrator(AppContext& ctx) {
    const auto users = clsUsuarios::listar(ctx.db);
    if (!users)
        return true; // unreadable: never taken as a database without an administrator
    for (const clsUsuarios& u : *users)
        if (u.TIPO == QLatin1String("ADM")) // the guard's own comparison
            return true;
    return false;
}

Authority Permissions::needed(AppContext& ctx, Act act) {
    const Authority a = who(act);
    if (a != Authority::PrimeiroAdministrador)
        return a;
    return hasAdministrator(ctx) ? Authority::Administrador : Authority::Aberto;
}

Permissions::Outcome Permissions::autorizar(AppContext& ctx, Act act,
                                            const std::function<QString()>& senha) {
    ctx.autorizadoPor.clear();
    const Authority a = needed(ctx, act);
    if (a == Authority::Aberto)
        return Outcome::Aceito;
    if (!Login::Valida_senha(ctx, senha()))
        return Outcome::SenhaOperador;
    if (a == Authority::Operador)
        return Outcome::Aceito;
    const auto admin = Login::administrador(ctx, senha());
    if (!admin)
        return Outcome::SenhaAdministrador;
    ctx.autorizadoPor = *admin;
    return Outcome::Aceito;
}
