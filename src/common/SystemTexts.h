#pragma once

#include "Notice.h"

// The system's texts, each with its title and icon, written once. Core operations name an entry
// in their outcome; screens and commands render it. A text with %1 takes its argument through
// Notice::arg.
enum class SystemText {
    // Cash entries
    MovimentoFechadoAlteracao,
    CamposObrigatorios,
    InformeItem,
    PerguntaExcluirItem,
    PerguntaExcluirLancamento,
    NaoPodeExcluirFechado,
    ErroExcluir,
    TotalLancamentoAcimaDoLimite,
    LancamentosDiaAcimaDoLimite,
    ErroGravarItem,
    EspecieInvalida,
    ValorInvalido,
    // The safe
    CofreCaixaEncerrado,
    CofreAcimaDoSaldo,
    CofreGravado,
    CofreAcimaDoLimite,
    CofreFalhou,
    CofreSaldoIlegivel,
    // The cash day
    ErroGravacaoContador,
    ErroAlteracaoContador,
    ErroAberturaMovimento,
    CaixaAberto,
    ErroGravacao,
    ErroLinhaImpressao,
    TotaisDiaAcimaDoLimite,
    PerguntaEncerrar,
    PerguntaCupomEncerramento,
    MovimentoEncerrado,
    OperacaoCancelada,
    PerguntaReabrir,
    PerguntaCupomReabertura,
    MovimentoJaEncerrado,
    MovimentoJaAberto,
    ErroEncerrar,
    ErroReabrir,
    // The customer's payment
    RegistroGravado,
    PagamentoDiaEncerrado,
    PagamentoFalhou,
    // Corrections, reversals and the printer
    MotivoObrigatorio,
    ExclusaoEfetuada,
    OperacaoEfetuada,
    ErroGravar,
    RevertidoComSucesso,
    ErroReverter,
    ValorNaoNumero,
    AutenticaInvalida,
    AutenticaAcimaDoLimite,
    CodigoBarrasInvalido,
    TipoNaoCadastrado,
    PadraoDiferente,
    NadaAlterado,
    AutenticaEmUso,
    ContaRecebida,
    CorrecaoDiaEncerrado,
    SemMovimento,
    RecebimentoNaoEncontrado,
    SemEstorno,
    RegistroEstornosBloqueado,
    RegistroEstornosFalhou,
    FitaCorrecaoFalhou,
    ArquivoBancoEnviado,
    PerguntaReversao,
    PortaAbrirFalhou,
    PortaFecharFalhouCaixa,
    PortaFecharFalhouAutenticacao,
    AutenticacaoFalhou,
    TempoExcedido,
    ImpressaoFalhou,
    SoPortaParalela,
    ValorDocumentoInvalido,
    AutenticadoraDesligada,
    AutenticacaoNaoRegistrada,
    AutenticacaoNaoConfirmada,
    // Guides past due
    GuiaVencidaRecusada,
    // Holidays
    DataJaLancada,
    ErroExcluirFeriado,
    PerguntaExcluirTodosFeriados,
    // Bank files, the integration file and the count
    PerguntaRejeitaExportacao,
    PerguntaDesfazRejeicao,
    ProcessoDemorado,
    GravacaoConcluida,
    NaoExecutaFuncao,
    GeracaoSucesso,
    ErroGravarArquivo,
    CodigoBancoNaoInformado,
    CliqueNoItem,
    PerguntaExcluirItemContagem,
    AvisoContagemTemporaria,
    PerguntaArquivoRemessa,
    ErroGerar,
    SemRecebimentos,
    SaiaPeloOk,
    PerguntaAtualizacao,
    UltimoAdministrador,
    // Sign-in, kinds, start and the counter
    SenhaInvalida,
    SenhaAdministradorRecusada,
    SenhaAdministradorPedido,
    NomeEmUso,
    LeiauteEmUso,
    TipoComRecebimentos,
    ErroAberturaSistema,
    DanificadoConselho,
    ErroSomaAvulso,
    PerguntaReautenticar,
    CentralSozinho,
    AguardandoBanco,
    // The working date and the stamps of the day
    DataMaiorQueHoje,
    NenhumMovimentoNaData,
    DataDiferenteAbertura,
    CaixaAbertoNaData,
    SemAutenticadoraNaTela,
    AutenticacoesIlegiveis,
    PendentesIlegiveis,
};

class SystemTexts {
public:
    // The title of most of the system's messages.
    static QString aviso() { return QStringLiteral("Aviso"); }
    static Notice notice(SystemText id);
    static QString text(SystemText id) { return notice(id).text; }
    static QString title(SystemText id) { return notice(id).title; }
};
