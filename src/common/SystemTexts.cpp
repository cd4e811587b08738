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
constexpr const char* kTolvane = "Tolvane";

// clang-format off
constexpr std::array kEntries = {
    Entry{T::MovimentoFechadoAlteracao, kAviso, "Você não pode efetuar nenhuma inclusão ou alteração de registro com o movimento fechado", I::Critical},
    Entry{T::CamposObrigatorios, kAviso, "Todos os campos obrigatórios devem ser preenchidos!!", I::Exclamation},
    Entry{T::InformeItem, kAviso, "Informe um item !!!", I::Critical},
    Entry{T::PerguntaExcluirItem, kAviso, "Confirma exclusão do item selecionado?", I::Question},
    Entry{T::PerguntaExcluirLancamento, kAviso, "Confirma exclusão deste item? - %1", I::Question},
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
    // Operators
    Entry{T::SenhaCurta, kAviso, "A senha deve ter pelo menos %1 caracteres!!", I::Exclamation},
    Entry{T::SenhaEmUso, kAviso, "Senha já usada por outro operador", I::Exclamation},
    Entry{T::UsuarioNaoEncontrado, kAviso, "Usuário não encontrado!!", I::Critical},
    Entry{T::ConfirmeSenha, kAviso, "Confirme a senha!!", I::None},
    Entry{T::SenhaNaoConfere, kAviso, "Senha não confere!!", I::Exclamation},
    // Kinds of guide and the reading of a code
    Entry{T::NumeracaoTipo, kAviso, "Use númeração de 1 a 99 para itens de entrada e 100 a 999 para itens de saída", I::Critical},
    Entry{T::PadraoUmaLetra, kAviso, "Padrão de uma letra; juros e bloqueio \"S\" ou \"N\".", I::Critical},
    Entry{T::CodigoJaCadastrado, kAviso, "O código %1 já está cadastrado!!", I::Critical},
    Entry{T::CodigoNaoMaisCadastrado, kAviso, "O código %1 não está mais cadastrado!!", I::Critical},
    Entry{T::ErroLeituraCodigo, kAviso, "Erro na leitura do código de barras!!", I::Critical},
    Entry{T::ErroDigitoCodigo, kAviso, "ERRO NA LEITURA DO CÓDIGO DE BARRAS!!!", I::Critical},
    // Registry screens and the day's texts
    Entry{T::PerguntaExcluirRegistro, kAviso, "%1 - Confirma exclusão deste item?", I::Question},
    Entry{T::TextoNaoEncontrado, kAviso, "Texto não encontrado!!", I::Information},
    // Start-up, the folder and the network
    Entry{T::ErroConectarBanco, kTolvane, "Erro ao conectar banco de dados!!!", I::None},
    Entry{T::ErroCarregarVariaveis, kTolvane, "Erro ao carregar váriaveis banco de dados!!!", I::None},
    Entry{T::RecebimentosRepetidos, kAviso, "O banco tinha %1 recebimento(s) repetido(s). Eles foram mantidos e marcados; a lista está no Log.ini e em tolvane verificar.", I::Exclamation},
    Entry{T::PastaSomenteLeitura, kAviso, "A pasta só permite leitura e o banco tem gravações ainda no arquivo caixa.db-wal: as últimas podem não aparecer.", I::Exclamation},
    Entry{T::PerguntaCriarPasta, kTolvane, "O Tolvane ainda não tem uma pasta neste computador.\nCriar a pasta %1?", I::Question},
    // The texts of these three are worded where the fact is found.
    Entry{T::PastaCriada, kTolvane, "%1", I::Information},
    Entry{T::AvisoRede, "Rede", "%1", I::Exclamation},
    Entry{T::AvisoAutenticadora, "Autenticadora", "%1", I::Exclamation},
    // The customer's sum
    Entry{T::ErroLeituraDados, kAviso, "Erro na Leitura de dados!!!", I::Exclamation},
    Entry{T::ValorPagoNaoCobre, kAviso, "O valor pago não cobre o total da conta!! %1", I::Exclamation},
    Entry{T::ValorPagoNaoNumero, kAviso, "O valor informado não é um número!!", I::Exclamation},
    Entry{T::RegistroGravadoComAviso, kGravar, "Registro Gravado!!!\n\n%1", I::Exclamation},
    Entry{T::ArquivoSalvo, kAviso, "Arquivo salvo com sucesso!!", I::Information},
    Entry{T::NaoHaDados, kAviso, "Não há dados!!", I::Information},
    Entry{T::ItensNaoCarregados, kAviso, "Itens da soma não carregados:\n%1", I::Exclamation},
    Entry{T::ArquivoCarregado, kAviso, "Arquivo carregado com sucesso!!", I::Information},
    Entry{T::ValorNaoInformado, kAviso, "Um valor deve ser informado!!", I::Exclamation},
    Entry{T::SelecioneTipoGuia, kAviso, "Selecione o tipo de guia!!", I::Exclamation},
    Entry{T::PedidoItemExcluir, "Excluir Item", "Informe o número do item a excluir?", I::None},
    Entry{T::PerguntaLimparSoma, kAviso, "Deseja realmente limpar a soma?", I::Question},
    Entry{T::PerguntaSairComSoma, kAviso, "Há itens na soma que não foram gravados. Deseja sair assim mesmo?", I::Question},
    Entry{T::PerguntaSair, "Sair", "Deseja sair do Tolvane?\n\nSim: fecha o programa.\nNão: volta à tela de data (outro operador ou outro dia).\nCancelar: continua no caixa.", I::Question},
    Entry{T::PedidoReautenticacao, "Reautenticar", "Número da autenticação:", I::None},
    // The printer's faults and settings
    Entry{T::PortaRecusada, kAviso, "Problemas ao Abrir a Porta de Comunicação.\nA porta \"%1\" recusou a conexão ou não existe: confira a porta em Opções e o cabo.", I::Critical},
    Entry{T::ProblemaAutenticacaoDocumento, kAviso, "Problemas na autenticação do documento.", I::Critical},
    Entry{T::ProblemaImpressaoTexto, kAviso, "Problemas na impressão do texto.", I::Critical},
    Entry{T::AutenticadoraSemResposta, kAviso, "%1\nA autenticadora não responde: verifique se está ligada e se o cabo está conectado.", I::Critical},
    Entry{T::AutenticadoraForaDeLinha, kAviso, "%1\nA autenticadora está fora de linha (off-line).", I::Exclamation},
    Entry{T::AutenticadoraSemPapel, kAviso, "%1\nA autenticadora está sem papel.", I::Exclamation},
    Entry{T::ModoAutenticadoraInvalido, "Autenticadora", "A autenticadora está desligada: [Print] modo=\"%1\" não é 0 nem 1. No Config.ini um comentário (;) só pode começar uma linha.", I::Exclamation},
    Entry{T::ModeloAutenticadoraDesconhecido, "Autenticadora", "Modelo de autenticadora desconhecido: [Print] impressora=\"%1\". Use bematech, quattro ou txt. Nada será autenticado. No Config.ini um comentário (;) só pode começar uma linha.", I::Exclamation},
    Entry{T::PortaAutenticadoraDesconhecida, "Autenticadora", "Porta da autenticadora desconhecida: [Print] porta=\"%1\". Use LPT1, LPT2, LPT3, COM1, COM2, USB, um dispositivo (/dev/...), tcp:ENDEREÇO[:PORTA] ou file:ARQUIVO. No Config.ini um comentário (;) só pode começar uma linha.", I::Exclamation},
    // The typed line, the interest screen and the customer's list
    Entry{T::LinhaDigitavelTamanho, kAviso, "A linha digitável deve ter 47 (boleto) ou 48 (arrecadação) números.", I::Critical},
    Entry{T::LinhaArrecadacaoComOito, kAviso, "A linha digitável de 48 números é de arrecadação e começa com 8.", I::Critical},
    Entry{T::SegmentoInexistente, kAviso, "O segmento %1 (segundo número da linha digitável) não existe na arrecadação.", I::Critical},
    Entry{T::DigitoGeralLinha, kAviso, "O dígito verificador geral da linha digitável não confere.", I::Critical},
    Entry{T::DigitoCampoLinha, kAviso, "O dígito verificador do campo %1 da linha digitável não confere.", I::Critical},
    Entry{T::OpcaoNaoSelecionada, kAviso, "Uma opção deve ser selecionada!!!", I::Critical},
    Entry{T::VencimentoPosterior, kAviso, "A data de vencimento não pode ser inferior a data atual!!!", I::Critical},
    Entry{T::PrestacaoNaoInformada, kAviso, "Valor da prestação deve ser informada!!!", I::Critical},
    Entry{T::JurosNaoInformado, kAviso, "Valor do juros deve ser informado!!!", I::Critical},
    Entry{T::AtrasoGrandeDemais, kAviso, "Atraso grande demais para calcular.", I::Critical},
    Entry{T::NenhumValorInformado, kAviso, "Nenhum valor informado!!!", I::Critical},
    Entry{T::ValorNaoCorresponde, kAviso, "O Valor informado não corresponde!!!", I::Critical},
    // Settings, the first folder and the printed reports
    Entry{T::ConfiguracaoDesconhecida, kAviso, "Configuração desconhecida: %1.", I::Exclamation},
    Entry{T::ConfiguracaoFixa, kAviso, "%1 não é alterada pelas opções.", I::Exclamation},
    Entry{T::ConfiguracaoLonga, kAviso, "O valor de %1 passa de %2 caracteres.", I::Exclamation},
    Entry{T::ConfiguracaoNaoLatin1, kAviso, "O valor de %1 tem caracteres que o Config.ini não guarda.", I::Exclamation},
    Entry{T::ConfiguracaoQuebraLinha, kAviso, "O valor de %1 não pode ter quebra de linha, tabulação nem outro caractere de controle.", I::Exclamation},
    Entry{T::GuicheUmaLetra, kAviso, "O guichê de trabalho deve ter uma letra (ou um algarismo).", I::Exclamation},
    Entry{T::GuicheFixo, kAviso, "O guichê de trabalho não muda pelas opções: com o movimento fechado, o administrador usa tolvane guiche assumir LETRA.", I::Exclamation},
    Entry{T::ListaEspecies, kAviso, "%1 deve ser uma lista de códigos de espécies de dinheiro separados por ponto e vírgula (ou vazio, para todas).", I::Exclamation},
    Entry{T::CabecalhoTresPosicoes, kAviso, "O cabeçalho da autenticação deve ter 3 posições.", I::Exclamation},
    Entry{T::PastaNaoExiste, kAviso, "A pasta %1 não existe.", I::Exclamation},
    Entry{T::PastaSemGravacao, kAviso, "A pasta %1 não permite gravação.", I::Exclamation},
    Entry{T::PastaArquivoNaoExiste, kAviso, "A pasta do arquivo %1 não existe.", I::Exclamation},
    Entry{T::ArquivoProprio, kAviso, "%1 não pode ser %2: é um arquivo do próprio caixa ou não é um arquivo comum.", I::Exclamation},
    Entry{T::OpcaoJuros, kAviso, "A opção de juros deve ser 1 ou 2.", I::Exclamation},
    Entry{T::ModeloAutenticadora, kAviso, "O modelo da autenticadora deve ser bematech, quattro ou txt.", I::Exclamation},
    Entry{T::ConfiguracaoZeroUm, kAviso, "%1 deve ser 0 ou 1.", I::Exclamation},
    Entry{T::ConfiguracaoAlgarismos, kAviso, "%1 deve ter só algarismos.", I::Exclamation},
    Entry{T::ConfiguracaoInteiro, kAviso, "%1 deve ser um número inteiro.", I::Exclamation},
    Entry{T::AparenciaInvalida, kAviso, "O arquivo %1 não é uma aparência válida: %2", I::Exclamation},
    Entry{T::ArquivoNaoGravado, kAviso, "Não foi possível gravar o arquivo %1.", I::Critical},
    Entry{T::PastaNaoCriada, kAviso, "Não foi possível criar a pasta %1.", I::Exclamation},
    Entry{T::ConfigNaoGravado, kAviso, "Não foi possível gravar %1.", I::Exclamation},
    Entry{T::ErroGravarAdministrador, kAviso, "Erro ao gravar o administrador.", I::Exclamation},
    Entry{T::RelatorioEmPdf, kAviso, "Nenhuma impressora instalada. O relatório foi gravado em %1", I::Information},
    Entry{T::RelatorioEnviado, kAviso, "Relatório enviado para a impressora %1.", I::Information},
    Entry{T::ConflitoRede, "Rede", "Conflito na rede: o código %1 (autenticação %2, %3), recebido neste guichê em %4, também foi recebido %5, e a central ficou com aquele. O valor foi cobrado aqui: confira a guia com o supervisor (tolvane rede conflitos).", I::Exclamation},
    // The central's link
    Entry{T::CentralNaoResponde, "Rede", "A central da rede (%1) não responde: %2. O caixa continua recebendo; os códigos ficam guardados e vão para a central quando ela voltar.", I::Exclamation},
    Entry{T::CentralRecusou, "Rede", "A central da rede (%1) recusou a conexão: %2. Confira host, porta, nome, usuario e senha na seção [Rede] do Config.ini (ou o ~/.pgpass). O caixa continua recebendo; os códigos ficam guardados.", I::Exclamation},
    Entry{T::CentralProblema, "Rede", "Central da rede (%1): %2", I::Exclamation},
    Entry{T::CentralDeixouDeResponder, "Rede", "A central da rede (%1) deixou de responder: %2. O caixa continua recebendo; os códigos ficam guardados.", I::Exclamation},
    Entry{T::CentralNaoGravou, "Rede", "A central da rede (%1) não gravou os códigos: %2. Eles ficam guardados e serão enviados de novo.", I::Exclamation},
    // Reports, amounts and the updater
    Entry{T::LancamentosIlegiveis, kAviso, "Os lançamentos do dia não puderam ser lidos.", I::Exclamation},
    Entry{T::ConferenciaIlegivel, kAviso, "A conferência do dia não pôde ser lida.", I::Exclamation},
    Entry{T::CorrecoesIlegiveis, kAviso, "As correções do dia não puderam ser lidas.", I::Exclamation},
    Entry{T::AutenticacoesDiaIlegiveis, kAviso, "As autenticações do dia não puderam ser lidas.", I::Exclamation},
    Entry{T::SemMovimentoEm, kAviso, "Não há movimento em %1.", I::Exclamation},
    Entry{T::RecebimentosDiaIlegiveis, kAviso, "Os recebimentos do dia não puderam ser lidos.", I::Exclamation},
    Entry{T::DataFinalAnterior, kAviso, "A data final deve ser igual ou posterior à inicial.", I::Exclamation},
    Entry{T::PeriodoLongo, kAviso, "O período pode ter no máximo %1 dias.", I::Exclamation},
    Entry{T::RecebimentosDeIlegiveis, kAviso, "Os recebimentos de %1 não puderam ser lidos.", I::Exclamation},
    Entry{T::ValorComCentavoPartido, kAviso, "O valor %1 tem mais de duas casas decimais: informe reais e centavos (ex.: 10,01).", I::Exclamation},
    Entry{T::ValorInvalidoDigitado, kAviso, "Valor inválido: %1", I::Exclamation},
    Entry{T::AtualizadorNaoIniciou, kAviso, "Não foi possível iniciar o atualizador %1", I::Critical},
};
// clang-format on

// Every text has its entry, in the order of the enum: a text without one would show no box.
constexpr bool inEnumOrder() {
    for (std::size_t i = 0; i < kEntries.size(); ++i)
        if (kEntries[i].id != SystemText(i))
            return false;
    return kEntries.size() == std::size_t(SystemText::Count);
}
static_assert(inEnumOrder(), "one entry per SystemText, in the order of the enum");
} // namespace

Notice SystemTexts::notice(SystemText id) {
    const Entry& e = kEntries.at(std::size_t(id));
    return {QString::fromUtf8(e.title), QString::fromUtf8(e.text), e.icon};
}
