#pragma once

#include <QString>

// The system's texts as the description writes them, for the tests to compare what was shown
// with. Never the program's own constants: a mistyped message must fail here.
namespace Desc {
inline const QString kAviso = QStringLiteral("Aviso");
inline const QString kMovimentoFechado =
    QStringLiteral("Você não pode efetuar nenhuma inclusão ou alteração de registro com o "
                   "movimento fechado");
inline const QString kCamposObrigatorios =
    QStringLiteral("Todos os campos obrigatórios devem ser preenchidos!!");
inline const QString kInformeItem = QStringLiteral("Informe um item !!!");
inline const QString kNaoPodeExcluir =
    QStringLiteral("Você não pode excluir!! O movimento desta data já foi fechado");
inline const QString kErroExcluir = QStringLiteral("Erro ao excluir");
inline const QString kEspecieInvalida =
    QStringLiteral("A espécie informada não é um tipo de dinheiro!!");
inline const QString kValorInvalido = QStringLiteral("Você precisa informar um valor válido!!");
inline const QString kCofreCaixaEncerrado =
    QStringLiteral("Você não pode movimentar o cofre, com o caixa já encerrado!!");
inline const QString kCofreGravado = QStringLiteral("Valor gravado. Saldo atualizado para R$ ");
inline const QString kErroAlteracaoContador = QStringLiteral("Erro de alteração do contador!!!");
inline const QString kErroAberturaMovimento = QStringLiteral("Erro na abertura de Movimento!!");
inline const QString kRegistroGravado = QStringLiteral("Registro Gravado!!!");
inline const QString kErroInterno = QStringLiteral("Houve um erro interno:");
inline const QString kPerguntaEncerrar = QStringLiteral("Deseja encerrar a contabilização agora?");
inline const QString kCancelado = QStringLiteral("Operação cancelada.");
inline const QString kPerguntaCupomEncerramento = QStringLiteral("Deseja finalizar o cupom agora?");
inline const QString kEncerrado = QStringLiteral("Movimento encerrado.");
inline const QString kPerguntaReabrir = QStringLiteral("Confirma a reabertura do movimento?");
inline const QString kPerguntaCupomReabertura =
    QStringLiteral("Deseja imprimir a reabertura de movimento no cupom?");
inline const QString kPagamentoEncerrado =
    QStringLiteral("O movimento deste dia está encerrado!! Reabra o movimento (F5) para receber.");
inline const QString kPagamentoFalhou = QStringLiteral(
    "Erro ao gravar o pagamento!! Nenhum item foi gravado; confira e tente novamente.");
} // namespace Desc
