// Commands of the cash day: lancamento (entries, payments out, withdrawals), cofre,
// conferencia and integracao, on the same services as the screens.
#include "AppContext.h"
#include "CashAmount.h"
#include "CashCount.h"
#include "CashEntry.h"
#include "CashSafe.h"
#include "CliArgs.h"
#include "CliCommand.h"
#include "CliSupport.h"
#include "DateUtil.h"
#include "DayMovement.h"
#include "IntegrationFile.h"
#include "Transaction.h"
#include "clsMovimento.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTextStream>

namespace {

// The operator's login and the movement of --data.
int movimento(CliEnv& e, clsMovimento& mov) {
    if (int rc = CliSupport::chooseDay(e, DateScreenLogic::Action::Consultar); rc >= 0)
        return rc;
    if (const auto found = DayMovement::ofWorkingDate(e.ctx)) {
        mov = *found;
        return -1;
    }
    e.err << QStringLiteral("Não há movimento em %1.\n").arg(DateUtil::br(e.ctx.workingDate));
    return ExitRefused;
}

// Payments out are the operator's act; entries and withdrawals, and listing or deleting any
// entry, the administrator's.
Act actOf(const CliArgs& a) {
    const auto kind = EntryKinds::fromTipo(a.value(QStringLiteral("tipo")));
    return a.has(QStringLiteral("tipo")) && kind ? EntryKinds::act(*kind) : Act::EntradaSangria;
}

struct ItemArg {
    int especie = 0;
    QString valor;
    QString numero;
    Money amount; // valor as read at the edge
};

// ESPECIE:VALOR[:NUMERO]
std::optional<QList<ItemArg>> itemArgs(CliEnv& e) {
    QList<ItemArg> out;
    for (const QString& a : e.args.values(QStringLiteral("item"))) {
        const QStringList parts = a.split(QLatin1Char(':'));
        bool ok = false;
        const int especie = parts.first().trimmed().toInt(&ok);
        if (parts.size() < 2 || !ok) {
            e.err << QStringLiteral("Item inválido: %1 (use ESPECIE:VALOR[:NUMERO]).\n").arg(a);
            return std::nullopt;
        }
        out.append({especie, parts[1], parts.mid(2).join(QLatin1Char(':')), Money()});
    }
    return out;
}

QJsonObject itemJson(const clsItens& i) {
    return {{QStringLiteral("id"), i.ID},
            {QStringLiteral("especie"), i.ESPECIE},
            {QStringLiteral("descricao"), i.especieDescricao},
            {QStringLiteral("numero"), i.NUMERO},
            {QStringLiteral("valor"), i.VALOR.format()}};
}

QJsonObject entryJson(const clsSangria& s, const QList<clsItens>& itens) {
    QJsonArray items;
    for (const clsItens& i : itens)
        items.append(itemJson(i));
    return {{QStringLiteral("id"), s.ID},
            {QStringLiteral("tipo"), s.TIPO},
            {QStringLiteral("data"), DateUtil::br(s.SDATA)},
            {QStringLiteral("descricao"), s.DESCRICAO},
            {QStringLiteral("entrada"), s.ENTRADA.format()},
            {QStringLiteral("saida"), s.SAIDA.format()},
            {QStringLiteral("itens"), items}};
}

void printEntry(CliEnv& e, const clsSangria& s, const QList<clsItens>& itens) {
    if (e.json) {
        CliSupport::printJson(e, entryJson(s, itens));
        return;
    }
    e.out << QStringLiteral("%1\t%2\t%3\t%4\n")
                 .arg(s.ID, 4, 10, QLatin1Char('0'))
                 .arg(s.TIPO, (s.ENTRADA.isZero() ? s.SAIDA : s.ENTRADA).format(), s.DESCRICAO);
    for (const clsItens& i : itens)
        e.out << QStringLiteral("  %1\t%2\t%3\t%4\n")
                     .arg(i.ID, 4, 10, QLatin1Char('0'))
                     .arg(i.especieDescricao, i.NUMERO, i.VALOR.format());
}

// Every item's amount read before anything is written; false (told) on the first bad one.
bool readAmounts(CliEnv& e, QList<ItemArg>& items) {
    for (ItemArg& i : items) {
        Notice why;
        const auto v = CashAmount::read(i.valor, why);
        if (!v) {
            tell(e.ctx.dialogs, why);
            return false;
        }
        i.amount = *v;
    }
    return true;
}

// The whole entry or nothing: a refused item leaves no part of it behind. Told by the caller.
Outcome gravarTudo(CliEnv& e, CashEntry& entry, const QList<ItemArg>& items) {
    Transaction tx(e.ctx.db);
    if (!tx.ok())
        return Outcome::refused({});
    Outcome done = entry.incluirItens(e.args.value(QStringLiteral("descricao")));
    for (const ItemArg& i : items) {
        if (!done)
            break;
        done = entry.gravarItem(i.especie, i.numero, i.amount);
    }
    if (done && !tx.commit())
        return Outcome::refused({});
    return done;
}

int gravar(CliEnv& e) {
    const auto kind = EntryKinds::fromTipo(e.args.value(QStringLiteral("tipo")));
    auto items = itemArgs(e);
    if (!kind || !items || items->isEmpty()) {
        e.err << "Use --tipo entrada|saida|sangria e ao menos um --item ESPECIE:VALOR[:NUMERO].\n";
        return ExitUsage;
    }
    if (!EntryKinds::descriptionEditable(*kind) && e.args.has(QStringLiteral("descricao"))) {
        e.err << QStringLiteral("A descrição deste lançamento é sempre \"%1\".\n")
                     .arg(EntryKinds::defaultDescription(*kind));
        return ExitUsage;
    }
    clsMovimento mov(e.ctx.db);
    if (int rc = movimento(e, mov); rc >= 0)
        return rc;
    if (!readAmounts(e, *items))
        return ExitRefused;
    CashEntry entry(e.ctx, mov.ID, *kind);
    const Outcome done = gravarTudo(e, entry, *items);
    tell(e.ctx.dialogs, done.notice); // the transaction has ended
    if (!done)
        return ExitRefused;
    printEntry(e, entry.header(), entry.itens());
    return ExitOk;
}

int listar(CliEnv& e) {
    QList<EntryKind> kinds = {EntryKind::CashIn, EntryKind::PaymentOut, EntryKind::Withdrawal};
    if (e.args.has(QStringLiteral("tipo"))) {
        const auto kind = EntryKinds::fromTipo(e.args.value(QStringLiteral("tipo")));
        if (!kind) {
            e.err << "Use --tipo entrada|saida|sangria.\n";
            return ExitUsage;
        }
        kinds = {*kind};
    }
    clsMovimento mov(e.ctx.db);
    if (int rc = movimento(e, mov); rc >= 0)
        return rc;
    QJsonArray list;
    Money total;
    for (EntryKind k : kinds) {
        const auto rows = CashEntry::listar(e.ctx, mov.ID, k);
        if (!rows)
            return ExitRefused;
        for (const clsSangria& s : *rows) {
            CashEntry entry(e.ctx, mov.ID, k);
            entry.carregar(s.ID);
            total += s.ENTRADA.isZero() ? s.SAIDA : s.ENTRADA;
            if (e.json)
                list.append(entryJson(s, entry.itens()));
            else
                printEntry(e, s, entry.itens());
        }
    }
    // A total only means something within one kind, as the entry screen shows it.
    const bool oneKind = kinds.size() == 1;
    if (e.json) {
        QJsonObject o{{QStringLiteral("lancamentos"), list}};
        if (oneKind)
            o.insert(QStringLiteral("total"), total.format());
        CliSupport::printJson(e, o);
    } else if (oneKind) {
        e.out << QStringLiteral("TOTAL: R$ ") << total.format() << "\n";
    }
    return ExitOk;
}

// The entry of the movement that --id names (with `item`, the entry of that item), after the
// operator's login and, for entries and withdrawals, the administrator's. Answers -1 to go on,
// else the exit code.
int entradaPorId(CliEnv& e, bool item, clsMovimento& mov, int& id, clsSangria& out) {
    bool ok = false;
    id = e.args.value(QStringLiteral("id")).toInt(&ok);
    if (!ok || id <= 0) {
        e.err << "Use --id N.\n";
        return ExitUsage;
    }
    if (int rc = movimento(e, mov); rc >= 0)
        return rc;
    qint32 entrada = id;
    if (item) {
        const auto owner = CashEntry::lancamentoDoItem(e.ctx, id);
        if (!owner) {
            e.err << QStringLiteral("Item %1 não encontrado.\n").arg(id);
            return ExitRefused;
        }
        entrada = *owner;
    }
    const auto s = CashEntry::lancamento(e.ctx, mov.ID, entrada);
    const auto kind = s ? EntryKinds::fromTipo(s->TIPO) : std::nullopt;
    if (!kind) {
        e.err << QStringLiteral("Lançamento %1 não encontrado no movimento de %2.\n")
                     .arg(entrada)
                     .arg(DateUtil::br(mov.MDATA));
        return ExitRefused;
    }
    out = *s;
    return -1;
}

int excluir(CliEnv& e) {
    int id = 0;
    clsMovimento mov(e.ctx.db);
    clsSangria s(e.ctx.db);
    if (int rc = entradaPorId(e, false, mov, id, s); rc >= 0)
        return rc;
    const Outcome done = CashEntry::excluirLancamento(e.ctx, mov.ID, id);
    tell(e.ctx.dialogs, done.notice);
    if (!done)
        return ExitRefused;
    if (e.json)
        CliSupport::printJson(e, QJsonObject{{QStringLiteral("id"), id}});
    return ExitOk;
}

int excluirItem(CliEnv& e) {
    int id = 0;
    clsMovimento mov(e.ctx.db);
    clsSangria s(e.ctx.db);
    if (int rc = entradaPorId(e, true, mov, id, s); rc >= 0)
        return rc;
    CashEntry entry(e.ctx, mov.ID, *EntryKinds::fromTipo(s.TIPO));
    if (!entry.carregar(s.ID))
        return ExitRefused;
    const Outcome done = entry.excluirItem(id);
    tell(e.ctx.dialogs, done.notice);
    if (!done)
        return ExitRefused;
    const clsSangria after = entry.header();
    const QList<clsItens> itens = entry.itens();
    if (!entry.sair()) // its last item gone, the entry goes too
        return ExitRefused;
    if (e.json) {
        QJsonObject o = entryJson(after, itens);
        o.insert(QStringLiteral("excluido"), itens.isEmpty());
        CliSupport::printJson(e, o);
    } else {
        printEntry(e, after, itens);
    }
    return ExitOk;
}

int cofre(CliEnv& e) {
    const bool in = e.args.has(QStringLiteral("entrada"));
    const bool out = e.args.has(QStringLiteral("saida"));
    if (in && out) {
        e.err << "Use --entrada VALOR ou --saida VALOR, não os dois.\n";
        return ExitUsage;
    }
    clsMovimento mov(e.ctx.db);
    if (int rc = movimento(e, mov); rc >= 0)
        return rc;
    std::optional<Money> saldo;
    if (in || out) {
        const auto r = CashSafe::movimentar(
            e.ctx, mov.ID, in ? CashSafe::Direction::In : CashSafe::Direction::Out,
            e.args.value(in ? QStringLiteral("entrada") : QStringLiteral("saida")));
        if (r.outcome != CashSafe::Outcome::Done)
            return ExitRefused;
        saldo = r.saldo;
    } else {
        saldo = CashSafe::saldo(e.ctx);
        if (!saldo)
            return ExitRefused;
    }
    if (e.json)
        CliSupport::printJson(e, QJsonObject{{QStringLiteral("saldo"), saldo->format()}});
    else
        e.out << saldo->format() << "\n";
    return ExitOk;
}

void printConference(CliEnv& e, const CashConference& c, const QJsonArray& itens) {
    const QJsonObject o = {{QStringLiteral("arrecadacao"), c.arrecadacao.format()},
                           {QStringLiteral("lancamentos"), c.lancamentos.format()},
                           {QStringLiteral("suprimento"), c.suprimento.format()},
                           {QStringLiteral("contado"), c.contado.format()},
                           {QStringLiteral("diferenca"), c.diferenca().format()},
                           {QStringLiteral("itens"), itens}};
    if (e.json) {
        CliSupport::printJson(e, o);
        return;
    }
    for (const char* k : {"arrecadacao", "lancamentos", "suprimento", "contado", "diferenca"})
        e.out << k << ": " << o.value(QLatin1String(k)).toString() << "\n";
    e.out << QStringLiteral("Total de itens contabilizados: ") << itens.size() << "\n";
}

int provisoria(CliEnv& e, const clsMovimento& mov, const QList<ItemArg>& items) {
    QList<Money> values;
    QJsonArray lines;
    for (const ItemArg& i : items) {
        const auto v = CashCount::validar(e.ctx, i.especie, i.valor);
        if (!v)
            return ExitRefused;
        values << *v;
        lines.append(QJsonObject{{QStringLiteral("especie"), i.especie},
                                 {QStringLiteral("numero"), i.numero.trimmed()},
                                 {QStringLiteral("valor"), v->format()}});
    }
    const auto c = CashCount::provisoria(e.ctx, mov, values);
    if (!c)
        return ExitRefused;
    printConference(e, *c, lines);
    return ExitOk;
}

// The deletions and the new lines in one transaction; told by the caller.
Outcome gravarConferencia(CliEnv& e, CashCount& count, const QList<ItemArg>& items) {
    Transaction tx(e.ctx.db);
    if (!tx.ok())
        return Outcome::refused({});
    Outcome done = Outcome::ok();
    for (const QString& id : e.args.values(QStringLiteral("excluir")))
        if (done)
            done = count.excluir(id.toInt());
    for (const ItemArg& i : items)
        if (done)
            done = count.adicionar(i.especie, i.numero, i.amount);
    if (done && !tx.commit())
        return Outcome::refused({});
    return done;
}

int conferencia(CliEnv& e) {
    auto items = itemArgs(e);
    const bool temporary = e.args.has(QStringLiteral("provisoria"));
    if (!items || (temporary && e.args.has(QStringLiteral("excluir")))) {
        e.err << "Uso: tolvane conferencia [--item ESPECIE:VALOR[:NUMERO]...] [--excluir ID] "
                 "[--provisoria]\n";
        return ExitUsage;
    }
    clsMovimento mov(e.ctx.db);
    if (int rc = movimento(e, mov); rc >= 0)
        return rc;
    if (temporary)
        return provisoria(e, mov, *items);
    // Every typed line read before anything is written.
    for (ItemArg& i : *items) {
        const auto v = CashCount::validar(e.ctx, i.especie, i.valor);
        if (!v)
            return ExitRefused;
        i.amount = *v;
    }
    CashCount count(e.ctx, mov);
    const Outcome done = gravarConferencia(e, count, *items);
    tell(e.ctx.dialogs, done.notice); // the transaction has ended
    if (!done)
        return ExitRefused;
    const auto c = count.conferir();
    const auto rows = count.linhas();
    if (!c || !rows)
        return ExitRefused;
    QJsonArray lines;
    for (const clsConfCaixa& l : *rows)
        lines.append(QJsonObject{{QStringLiteral("id"), l.ID},
                                 {QStringLiteral("especie"), l.ESPECIE},
                                 {QStringLiteral("descricao"), l.especieDescricao},
                                 {QStringLiteral("numero"), l.NUMERO},
                                 {QStringLiteral("valor"), l.VALOR.format()}});
    printConference(e, *c, lines);
    return ExitOk;
}

int integracao(CliEnv& e) {
    clsMovimento mov(e.ctx.db);
    if (int rc = movimento(e, mov); rc >= 0)
        return rc;
    const auto c = CashCount(e.ctx, mov).conferir();
    if (!c)
        return ExitRefused;
    IntegrationFile file(e.ctx); // no pause: the command writes at full speed
    const auto r = file.gerar(mov, c->confCaixa(), e.args.value(QStringLiteral("saida")));
    r.mostrar(e.ctx.dialogs);
    if (!r.written)
        return ExitRefused;
    if (e.json)
        CliSupport::printJson(
            e, QJsonObject{{QStringLiteral("arquivo"), r.arquivo},
                           {QStringLiteral("registros"), r.registros},
                           {QStringLiteral("erros"), QJsonArray::fromStringList(r.erros)}});
    else
        e.out << r.arquivo << "\n";
    return r.erros.isEmpty() ? ExitOk : ExitRefused;
}

QString dateOption() {
    return QStringLiteral(" [--data DD/MM/AAAA]");
}

void registerEntryCommands(QList<CliCommand>& c) {
    const QString d = dateOption();
    const QString adm = QStringLiteral(
        "; entrada e sangria pedem também a senha de um administrador (segunda linha)");
    c.append({{QStringLiteral("lancamento"), QStringLiteral("gravar")},
              QStringLiteral("lancamento gravar --tipo entrada|saida|sangria [--descricao D] "
                             "--item ESPECIE:VALOR[:NUMERO]...") +
                  d + QStringLiteral(" [--json]"),
              QStringLiteral("grava um lançamento de caixa com seus itens, tudo ou nada") + adm,
              {},
              CliCommand::Db::Existing,
              gravar,
              {QStringLiteral("item")}});
    c.last().actFor = actOf;
    c.append({{QStringLiteral("lancamento"), QStringLiteral("listar")},
              QStringLiteral("lancamento listar [--tipo entrada|saida|sangria]") + d +
                  QStringLiteral(" [--json]"),
              QStringLiteral("lista os lançamentos do movimento com seus itens e o total") + adm,
              {},
              CliCommand::Db::Existing,
              listar});
    c.last().actFor = actOf;
    c.append({{QStringLiteral("lancamento"), QStringLiteral("excluir")},
              QStringLiteral("lancamento excluir --id N") + d + QStringLiteral(" [--json]"),
              QStringLiteral("exclui um lançamento de um movimento aberto") + adm,
              {},
              CliCommand::Db::Existing,
              excluir});
    c.last().act = Act::EntradaSangria;
    c.append({{QStringLiteral("lancamento"), QStringLiteral("item-excluir")},
              QStringLiteral("lancamento item-excluir --id N") + d + QStringLiteral(" [--json]"),
              QStringLiteral("exclui um item; o valor do lançamento passa a ser a soma dos que "
                             "restam, e um lançamento sem itens é excluído") +
                  adm,
              {},
              CliCommand::Db::Existing,
              excluirItem});
    c.last().act = Act::EntradaSangria;
}

void registerCountCommands(QList<CliCommand>& c) {
    const QString d = dateOption();
    c.append({{QStringLiteral("cofre")},
              QStringLiteral("cofre [--entrada VALOR | --saida VALOR]") + d +
                  QStringLiteral(" [--json]"),
              QStringLiteral("mostra ou movimenta o saldo do cofre"),
              {},
              CliCommand::Db::Existing,
              cofre});
    c.last().act = Act::Cofre;
    c.append({{QStringLiteral("conferencia")},
              QStringLiteral("conferencia [--item ESPECIE:VALOR[:NUMERO]...] [--excluir ID] "
                             "[--provisoria]") +
                  d + QStringLiteral(" [--json]"),
              QStringLiteral("contagem do caixa por espécie e a diferença; --provisoria compara "
                             "o dia aberto sem gravar nada"),
              {QStringLiteral("provisoria")},
              CliCommand::Db::Existing,
              conferencia,
              {QStringLiteral("item"), QStringLiteral("excluir")}});
    c.last().act = Act::ContarCaixa;
    c.append({{QStringLiteral("integracao")},
              QStringLiteral("integracao [--saida ARQUIVO]") + d + QStringLiteral(" [--json]"),
              QStringLiteral("gera o arquivo de integração do movimento (Path1, sem pausa)"),
              {},
              CliCommand::Db::Existing,
              integracao});
    c.last().act = Act::ArquivoIntegracao;
}

} // namespace

void registerCashDayCommands(QList<CliCommand>& c) {
    registerEntryCommands(c);
    registerCountCommands(c);
}
