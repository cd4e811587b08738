#pragma once

#include <QList>
#include <QString>
#include <functional>

class AppContext;

// Every act the program offers, on the screens and on the command line.
enum class Act {
    // Open: consultations that change nothing.
    Consultar,
    Entrar,
    PrepararPasta,
    // Operator: the counter's day.
    ConsultarDia,
    AbrirDia,
    EncerrarDia,
    ReabrirDia,
    Receber,
    Reautenticar,
    ContarCaixa,
    Pagamento,
    Cofre,
    Relatorios,
    ArquivoIntegracao,
    ControleDiario,
    ImprimirFita,
    PublicarRede,
    Aparencia,
    // Administrator.
    Usuarios,
    TiposGuia,
    Feriados,
    Opcoes,
    PastaAtualizacao,
    AutenticarAvulso,
    Correcoes,
    EntradaSangria,
    ArquivosBanco,
    Auditar,
    AssumirGuiche,
    CopiaBanco,
    ImportarRede,
    // Open while the database has no administrator, else the administrator's.
    CriarAdministrador,
    DadosDemonstracao,
    // Not in the table: taken as the strictest.
    NaoClassificado,
};

// Who may do an act.
enum class Authority {
    Aberto,                // no password
    Operador,              // an active operator's password
    Administrador,         // the operator's, then an administrator's
    PrimeiroAdministrador, // none while the database has no administrator, else Administrador
};

// The one table of who may do what; screens and commands both ask it.
class Permissions {
public:
    struct Rule {
        Act act;
        Authority who;
        QString nome; // how the act is named in messages and logs
    };
    static const QList<Rule>& table();
    static Authority who(Act act);
    static QString nome(Act act);

    // Whether some operator of type "ADM" exists.
    static bool hasAdministrator(AppContext& ctx);
    // The authority the act needs in this database (PrimeiroAdministrador resolved).
    static Authority needed(AppContext& ctx, Act act);

    enum class Outcome { Aceito, SenhaOperador, SenhaAdministrador };
    // The people of an act: the operator's password (which logs in: ctx.userName) and, when the
    // act needs one, an administrator's (ctx.autorizadoPor). Each password is read only when
    // needed, in that order.
    static Outcome autorizar(AppContext& ctx, Act act, const std::function<QString()>& senha);
};
