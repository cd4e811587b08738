#include "SystemTexts.h"

#include <array>

namespace {
struct Entry {
    SystemText id;
    const char* title;
    const char* text;
    DialogIcon icon;
};

using I = DialogIcon;
using T = SystemText;

constexpr const char* kAviso = "Aviso";
constexpr const char* kGravar = "Gravar Registro";

// clang-format off
constexpr std::array kEntries = {
    Entry{T::MovimentoFechadoAlteracao, kAviso, "Você não pode efetuar nenhuma inclusão ou alteração de registro com o movimento fechado", I::Critical},
    Entry{T::CamposObrigatorios, kAviso, "Todos os campos obrigatórios devem ser preenchidos!!", I::Exclamation},
    Entry{T::InformeItem, kAviso, "Informe um item !!!", I::Critical},
    Entry{T::PerguntaExcluirItem, kAviso, "Confirma exclusão do item selecionado?", I::Question},
    Entry{T::PerguntaExcluirLancamento, kAviso, "Confirma exclusão deste item?", I::Question},
    Entry{T::NaoPodeExcluirFechado, kAviso, "Você não pode excluir!! O movimento desta data já foi fechado", I::Critical},
    Entry{T::ErroExcluir, kAviso, "Erro ao excluir", I::Critical},
    Entry{T::TotalLancamentoAcimaDoLimite, kAviso, "O total do lançamento não pode passar de %1. Nada foi gravado.", I::Critical},
    Entry{T::LancamentosDiaAcimaDoLimite, kAviso, "Os lançamentos do dia não podem somar mais de %1. Nada foi gravado.", I::Critical},
    Entry{T::ErroGravarItem, kAviso, "Erro ao gravar o item. Nada foi gravado.", I::Critical},
    Entry{T::EspecieInvalida, kAviso, "A espécie informada não é um tipo de dinheiro!!", I::Critical},
    Entry{T::ValorInvalido, kAviso, "Você precisa informar um valor válido!!", I::Exclamation},
    Entry{T::CofreCaixaEncerrado, kAviso, "Você não pode movimentar o cofre, com o caixa já encerrado!!", I::Critical},
    Entry{T::CofreAcimaDoSaldo, kAviso, "Valor não pode ser maior que o saldo disponível.", I::Critical},
    Entry{T::CofreGravado, kAviso, "Valor gravado. Saldo atualizado para R$ %1", I::Information},
    Entry{T::CofreAcimaDoLimite, kAviso, "O saldo do cofre e o suprimento do dia não podem passar de %1. Nada foi gravado.", I::Critical},
    Entry{T::CofreFalhou, kAviso, "Não foi possível gravar o movimento do cofre. Nada foi alterado.", I::Critical},
    Entry{T::CofreSaldoIlegivel, kAviso, "Não foi possível ler o saldo do cofre: %1", I::Critical},
    Entry{T::ErroGravacaoContador, "Erro", "Erro de gravação do contador!!!", I::Critical},
    Entry{T::ErroAlteracaoContador, "Erro", "Erro de alteração do contador!!!", I::Critical},
    Entry{T::ErroAberturaMovimento, kAviso, "Erro na abertura de Movimento!!", I::Critical},
    Entry{T::CaixaAberto, kGravar, "Caixa Aberto!!!", I::Information},
    Entry{T::ErroGravacao, kAviso, "Erro de Gravação!!!", I::Critical},
    Entry{T::ErroLinhaImpressao, kAviso, "Erro na geração da linha de impressão!!!", I::Critical},
    Entry{T::TotaisDiaAcimaDoLimite, kAviso, "Os totais do dia passam de %1: o movimento não pode ser encerrado assim. Corrija os lançamentos ou os recebimentos e encerre de novo.", I::Critical},
    Entry{T::PerguntaEncerrar, kAviso, "Deseja encerrar a contabilização agora?", I::Question},
    Entry{T::PerguntaCupomEncerramento, kAviso, "Deseja finalizar o cupom agora?", I::Question},
    Entry{T::MovimentoEncerrado, kAviso, "Movimento encerrado.", I::Information},
    Entry{T::OperacaoCancelada, kAviso, "Operação cancelada.", I::Information},
    Entry{T::PerguntaReabrir, kAviso, "Confirma a reabertura do movimento?", I::Question},
    Entry{T::PerguntaCupomReabertura, kAviso, "Deseja imprimir a reabertura de movimento no cupom?", I::Question},
    Entry{T::MovimentoJaEncerrado, kAviso, "O movimento já está encerrado.", I::Information},
    Entry{T::MovimentoJaAberto, kAviso, "O movimento já está aberto.", I::Information},
    Entry{T::ErroEncerrar, kAviso, "Erro ao encerrar.", I::Critical},
    Entry{T::ErroReabrir, kAviso, "Erro ao reabrir o movimento.", I::Critical},
    Entry{T::RegistroGravado, kGravar, "Registro Gravado!!!", I::Information},
    Entry{T::PagamentoDiaEncerrado, kAviso, "O movimento deste dia está encerrado!! Reabra o movimento (F5) para receber.", I::Critical},
    Entry{T::PagamentoFalhou, kAviso, "Erro ao gravar o pagamento!! Nenhum item foi gravado; confira e tente novamente.", I::Critical},
    // Corrections, reversals and the printer
    Entry{T::MotivoObrigatorio, kAviso, "Um motivo deve ser especificado!!", I::Exclamation},
    Entry{T::ExclusaoEfetuada, kAviso, "Exclusão efetuada com sucesso!!", I::Information},
    Entry{T::OperacaoEfetuada, kAviso, "Operação efetuada com sucesso!!", I::Information},
    Entry{T::ErroGravar, kAviso, "Erro ao gravar", I::Critical},
    Entry{T::RevertidoComSucesso, kAviso, "Revertido com sucesso!!", I::Information},
    Entry{T::ErroReverter, kAviso, "Erro ao reverter arquivo! ", I::Critical},
    Entry{T::ValorNaoNumero, kAviso, "O valor informado não é um número!!", I::Critical},
    Entry{T::AutenticaInvalida, kAviso, "O número de autenticação deve ser um número maior que zero!!", I::Critical},
    Entry{T::AutenticaAcimaDoLimite, kAviso, "O número de autenticação vai até %1: os arquivos do movimento não levam um número maior!!", I::Critical},
    Entry{T::CodigoBarrasInvalido, kAviso, "O código de barras deve ter 44 dígitos!!", I::Critical},
    Entry{T::TipoNaoCadastrado, kAviso, "Tipo de guia não cadastrado!!", I::Critical},
    Entry{T::PadraoDiferente, kAviso, "O tipo %1 é de outro padrão: o recebimento só pode passar para um tipo do mesmo padrão (%2).", I::Critical},
    Entry{T::NadaAlterado, kAviso, "Nenhum campo foi alterado!!", I::Exclamation},
    Entry{T::AutenticaEmUso, kAviso, "A autenticação %1 já pertence a outro recebimento deste movimento!!", I::Critical},
    Entry{T::ContaRecebida, kAviso, "Conta já Recebida!!!", I::Critical},
    Entry{T::CorrecaoDiaEncerrado, kAviso, "O movimento deste dia está encerrado!! Reabra o movimento (F5) para corrigir.", I::Critical},
    Entry{T::SemMovimento, kAviso, "Não há movimento nesta data!!", I::Critical},
    Entry{T::RecebimentoNaoEncontrado, kAviso, "Recebimento não encontrado no movimento deste dia!!", I::Critical},
    Entry{T::SemEstorno, kAviso, "Não há estorno deste recebimento para reverter!!", I::Critical},
    Entry{T::RegistroEstornosBloqueado, kAviso, "Não é possível gravar o registro de estornos em %1!! Nada foi alterado.", I::Critical},
    Entry{T::RegistroEstornosFalhou, kAviso, "A correção foi gravada no banco, mas não no registro de estornos: %1", I::Critical},
    Entry{T::FitaCorrecaoFalhou, kAviso, "A correção foi gravada, mas a linha da fita não foi impressa.", I::Exclamation},
    Entry{T::ArquivoBancoEnviado, kAviso, "O item %1 já foi enviado ao banco no arquivo %2: a correção não muda esse arquivo; avise o banco.", I::Exclamation},
    Entry{T::PerguntaReversao, kAviso, "Confirma a reversão do estorno deste item?", I::Question},
    Entry{T::PortaAbrirFalhou, kAviso, "Problemas ao Abrir a Porta de Comunicação.", I::Critical},
    Entry{T::PortaFecharFalhouCaixa, kAviso, "Problemas ao Fechar a Porta de Comunicação.", I::Critical},
    Entry{T::PortaFecharFalhouAutenticacao, kAviso, "Problemas ao fechar a porta de comunicação!!", I::Critical},
    Entry{T::AutenticacaoFalhou, kAviso, "Problemas na autenticação do documento.\nPossíveis causas: Documento não inserido, impressora desligada, off-line ou sem papel", I::Critical},
    Entry{T::TempoExcedido, "Autenticação de Documentos", "Tempo maior que o permitido.", I::Critical},
    Entry{T::ImpressaoFalhou, kAviso, "Problemas na impressão do texto.\nPossíveis causas: Impressora desligada, off-line ou sem papel", I::Exclamation},
    Entry{T::SoPortaParalela, kAviso, "Essa função só funciona com as portas paralelas LPT1, LPT2 OU LPT3", I::Information},
    Entry{T::ValorDocumentoInvalido, kAviso, "Informe o valor do documento!!", I::Exclamation},
    Entry{T::AutenticadoraDesligada, kAviso, "A autenticadora não está habilitada (Opções, Impressão: \"Habilitar a autenticadora?\").", I::Exclamation},
    Entry{T::AutenticacaoNaoRegistrada, kAviso, "A autenticação não pôde ser registrada no banco: nada foi impresso.", I::Critical},
    Entry{T::AutenticacaoNaoConfirmada, kAviso, "A autenticadora não confirmou a autenticação: ela fica registrada como não impressa.", I::Exclamation},
    Entry{T::GuiaVencidaRecusada, kAviso, "Guia com a data de vencimento vencida. Use --aceitar-vencidas para recebê-la.", I::Exclamation},
    Entry{T::DataJaLancada, kAviso, "Data já lançada!!!", I::Exclamation},
    Entry{T::ErroExcluirFeriado, "ERRO!!", "ERRO ao excluir!!", I::Critical},
    Entry{T::PerguntaExcluirTodosFeriados, kAviso, "Confirma exclusão de todos os feriados?", I::Question},
    Entry{T::PerguntaRejeitaExportacao, kAviso, "Confirma a exportação dos itens relacionados na lista?", I::Question},
    Entry{T::PerguntaDesfazRejeicao, kAviso, "Confirma a reversão da rejeição dos itens desabilitados da lista?", I::Question},
    Entry{T::ProcessoDemorado, kAviso, "Processo demorado dependendo da quantidade de itens cadastrados. Aguarde!!", I::Information},
    Entry{T::GravacaoConcluida, kAviso, "Gravação Concluida!!", I::Information},
    Entry{T::NaoExecutaFuncao, kAviso, "Este sistema ainda não executa esta função!!", I::Critical},
    Entry{T::GeracaoSucesso, kAviso, "Geração de arquivo efetuada com sucesso!!", I::Information},
    Entry{T::ErroGravarArquivo, kAviso, "Erro ao gravar arquivo!!", I::Critical},
    Entry{T::CodigoBancoNaoInformado, kAviso, "Código do banco não informado!!", I::Critical},
    Entry{T::CliqueNoItem, kAviso, "Você deve clicar no item antes!!", I::Critical},
    Entry{T::PerguntaExcluirItemContagem, kAviso, "Confirma exclusão do Item: ", I::Question},
    Entry{T::AvisoContagemTemporaria, kAviso, "Os lançamentos gerados nesta tela não servem para contabilização de encerramento de caixa.", I::Information},
    Entry{T::PerguntaArquivoRemessa, kAviso, "Confirma a criação do arquivo remessa?", I::Question},
    Entry{T::ErroGerar, kAviso, "Erro ao gerar: ", I::Critical},
    Entry{T::SemRecebimentos, kAviso, "Não há recebimentos neste movimento: nenhum arquivo foi gerado.", I::Information},
    Entry{T::SaiaPeloOk, kAviso, "Você deve sair ultilizando o botão OK.", I::Information},
    Entry{T::PerguntaAtualizacao, kAviso, "Uma nova versão do sistema está disponível. Deseja instalar agora?", I::Question},
    Entry{T::UltimoAdministrador, kAviso, "Este é o único administrador: sem ele nenhuma entrada de administrador poderá ser aberta. Deseja excluir assim mesmo?", I::Exclamation},
    // Sign-in, kinds, start and the counter
    Entry{T::SenhaInvalida, kAviso, "Senha Inválida!!", I::Critical},
    Entry{T::SenhaAdministradorRecusada, kAviso, "Senha de administrador não aceita.", I::Critical},
    // A prompt: its title is the act's own, given where it is asked.
    Entry{T::SenhaAdministradorPedido, "", "Entre com a senha do administrador!!", I::None},
    Entry{T::NomeEmUso, kAviso, "Já existe um operador com este nome.", I::Exclamation},
    Entry{T::LeiauteEmUso, kAviso, "O tipo %1 já é usado pelo código %2: cada leiaute de código de barras pertence a um só tipo.", I::Exclamation},
    Entry{T::TipoComRecebimentos, kAviso, "O código %1 tem recebimentos gravados e não pode ser excluído: o dinheiro recebido nele sairia das listas e dos arquivos.", I::Exclamation},
    Entry{T::ErroAberturaSistema, kAviso, "Erro na abertura do sistema!!", I::Critical},
    // Ends every message about a damaged database.
    Entry{T::DanificadoConselho, kAviso, "Não grave nada nele: guarde o arquivo para análise, restaure a cópia mais recente da pasta copias (renomeando-a para caixa.db) e confira com tolvane verificar.", I::Critical},
    Entry{T::ErroSomaAvulso, kAviso, "%1 - Erro na Soma Avulso!!", I::Critical},
    Entry{T::PerguntaReautenticar, "Reautenticar", "%1\nAutenticar novamente?", I::Question},
    Entry{T::CentralSozinho, "Rede", "A central da rede não respondeu: este guichê está recebendo sozinho. Os códigos ficam guardados e vão para a central quando ela voltar.", I::Exclamation},
    Entry{T::AguardandoBanco, kAviso, "Aguardando o banco de dados...", I::Information},
    // The working date and the stamps of the day
    Entry{T::DataMaiorQueHoje, kAviso, "A data atual não pode ser menor que esta selecionada!!", I::Critical},
    Entry{T::NenhumMovimentoNaData, kAviso, "Não foi encontrado nenhum movimento com essa data!!", I::Exclamation},
    Entry{T::DataDiferenteAbertura, kAviso, "Data do Computador diferente da data de abertura do caixa!! Verifique.", I::Exclamation},
    Entry{T::CaixaAbertoNaData, kAviso, "O caixa será aberto com a data selecionada.", I::Exclamation},
    Entry{T::SemAutenticadoraNaTela, kAviso, "Não há autenticadora nesta tela: nada foi autenticado.", I::Exclamation},
    Entry{T::AutenticacoesIlegiveis, kAviso, "As autenticações não puderam ser lidas: nada foi autenticado.", I::Critical},
    Entry{T::PendentesIlegiveis, kAviso, "Os documentos sem autenticação não puderam ser lidos.", I::Critical},
};
// clang-format on
} // namespace

Notice SystemTexts::notice(SystemText id) {
    for (const Entry& e : kEntries)
        if (e.id == id)
            return {QString::fromUtf8(e.title), QString::fromUtf8(e.text), e.icon};
    return {};
}
