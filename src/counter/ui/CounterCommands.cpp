#include "CounterCommands.h"

#include "CommandRegistry.h"
#include "CounterStamps.h"
#include "frmFrente.h"

void CounterCommands::add(CommandRegistry& r, frmFrente& f) {
    const QString caixa = QStringLiteral("&Caixa"), soma = QStringLiteral("&Soma");
    const auto on = [&f](void (frmFrente::*slot)()) { return [&f, slot] { (f.*slot)(); }; };
    r.add(QStringLiteral("mnuEncerrar"), caixa, QStringLiteral("Encerrar Mov. (F4)"),
          on(&frmFrente::encerrar), true);
    r.add(QStringLiteral("mnuReabrir"), caixa, QStringLiteral("Reabrir Cupom (F5)"),
          on(&frmFrente::reabrir), true);
    r.add(QStringLiteral("mnuRecebidas"), caixa, QStringLiteral("Contas Recebidas (F7)"),
          on(&frmFrente::recebidas));
    r.separator();
    r.add(
        QStringLiteral("mnuReautenticar"), caixa, QStringLiteral("Reautenticar Último Pagamento"),
        [&f] { f.m_stamps->reautenticarUltimo(); }, true);
    r.add(
        QStringLiteral("mnuReautNumero"), caixa, QStringLiteral("Reautenticar por Número..."),
        [&f] { f.m_stamps->reautenticarNumero(); }, true);
    r.add(
        QStringLiteral("mnuPendentes"), caixa, QStringLiteral("Documentos sem Autenticação..."),
        [&f] { f.m_stamps->showList(true); }, true);
    r.separator();
    r.add(QStringLiteral("mnulogoff"), caixa, QStringLiteral("Trocar Operador"),
          [&f] { emit f.logoff(); });
    r.add(QStringLiteral("mnuSair"), caixa, QStringLiteral("Sair (ESC)"), [&f] { f.close(); });
    r.add(QStringLiteral("mnuExcluiUltimo"), soma, QStringLiteral("Exclui último Item (F2)"),
          on(&frmFrente::removeLast), true);
    r.add(QStringLiteral("mnuLimpar"), soma, QStringLiteral("Limpa Soma (F3)"),
          on(&frmFrente::limparSoma), true);
    r.add(QStringLiteral("mnuLimpaIdent"), soma, QStringLiteral("Limpar Identificação (F8)"),
          on(&frmFrente::limparIdentificacao), true);
    r.add(QStringLiteral("mnuRemove"), soma, QStringLiteral("Excluir Item..."),
          on(&frmFrente::removeByNumber), true);
    r.separator();
    r.add(
        QStringLiteral("mnuGravar"), soma, QStringLiteral("Salvar Soma (F11)"),
        [&f] { f.m_session.salvarSoma(); }, true);
    r.add(QStringLiteral("mnuCarregar"), soma, QStringLiteral("Carregar Soma (F12)"),
          on(&frmFrente::carregarSoma), true);
    r.separator();
    r.add(QStringLiteral("mnuLdg"), soma, QStringLiteral("Linha Digitável..."),
          on(&frmFrente::typedLine), true);
    r.add(QStringLiteral("mnuAvulso"), soma, QStringLiteral("Item Avulso..."),
          on(&frmFrente::avulso), true);
}

void CounterCommands::addTools(CommandRegistry& r, frmFrente& f) {
    const auto on = [&f](void (frmFrente::*slot)()) { return [&f, slot] { (f.*slot)(); }; };
    r.add(QStringLiteral("mnuCalculadora"), QStringLiteral("&Ferramentas"),
          QStringLiteral("Calculadora (F9)"), on(&frmFrente::calculadora));
}
