// Commands of the bank files: exportar listar, rejeitar, confirmar, febraban, cnab.
#include "AppContext.h"
#include "CashDay.h"
#include "CliArgs.h"
#include "CliCommand.h"
#include "CliSupport.h"
#include "CnabExport.h"
#include "DateScreenLogic.h"
#include "ExportMarks.h"
#include "FebrabanExport.h"
#include "clsArquivoBanco.h"
#include "clsCodBarra.h"
#include "clsRecebimentos.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QTextStream>

namespace {

// The operator, then the movement of --data (or today).
int movement(CliEnv& e, CashDay& day) {
    if (int rc = CliSupport::chooseDay(e, DateScreenLogic::Action::Consultar); rc >= 0)
        return rc;
    return day.consultar() ? -1 : int(ExitRefused);
}

// --tipo IDCOD, then the operator and the movement.
int kindAndMovement(CliEnv& e, CashDay& day, int& idcod) {
    bool ok = false;
    idcod = e.args.value(QStringLiteral("tipo")).toInt(&ok);
    if (!ok) {
        e.err << "Informe o tipo: --tipo IDCOD\n";
        return ExitUsage;
    }
    return movement(e, day);
}

// --id N (repeatable) and any further numbers after it.
std::optional<QList<qint32>> ids(CliEnv& e) {
    QList<qint32> out;
    for (const QString& v : e.args.values(QStringLiteral("id")) + e.args.positional) {
        bool ok = false;
        const qint32 id = v.toInt(&ok);
        if (!ok || id <= 0) {
            e.err << QStringLiteral("Recebimento inválido: %1\n").arg(v);
            return std::nullopt;
        }
        out.append(id);
    }
    if (out.isEmpty()) {
        e.err << "Informe ao menos um recebimento: --id N...\n";
        return std::nullopt;
    }
    return out;
}

int listar(CliEnv& e) {
    int idcod = 0;
    CashDay day(e.ctx, nullptr);
    if (int rc = kindAndMovement(e, day, idcod); rc >= 0)
        return rc;
    const int flag = e.args.has(QStringLiteral("rejeitados")) ? 1 : 0;
    const auto rows = clsRecebimentos::listarExportacao(e.ctx.db, day.movimento().ID, idcod, flag);
    if (!rows)
        return ExitRefused;
    // The files that already carried each receipt, by name and sequence number.
    const auto files = clsArquivoBanco::doMovimento(e.ctx.db, day.movimento().ID);
    if (!files)
        return ExitRefused;
    QJsonArray list;
    for (const clsRecebimentos& r : *rows) {
        QJsonArray carried;
        QStringList names;
        for (const clsArquivoBanco::Arquivo& a : files->value(r.IDRECEBE)) {
            carried.append(QJsonObject{{QStringLiteral("arquivo"), a.arquivo},
                                       {QStringLiteral("nsa"), a.nsa}});
            names << a.descricao();
        }
        if (e.json)
            list.append(QJsonObject{{QStringLiteral("idrecebe"), r.IDRECEBE},
                                    {QStringLiteral("autentica"), r.AUTENTICA},
                                    {QStringLiteral("valor"), r.VALOR.format()},
                                    {QStringLiteral("codbarra"), r.CODBARRA},
                                    {QStringLiteral("export"), r.EXPORT},
                                    {QStringLiteral("arquivos"), carried}});
        else
            e.out << QStringLiteral("%1\t%2\t%3\t%4\t%5\t%6\n")
                         .arg(r.IDRECEBE)
                         .arg(r.AUTENTICA, 4, 10, QLatin1Char('0'))
                         .arg(r.VALOR.format(), r.CODBARRA)
                         .arg(r.EXPORT)
                         .arg(names.join(QStringLiteral(", ")));
    }
    if (e.json)
        CliSupport::printJson(e, list);
    return ExitOk;
}

int marcar(CliEnv& e, int flag) {
    const auto list = ids(e);
    if (!list)
        return ExitUsage;
    CashDay day(e.ctx, nullptr);
    if (int rc = movement(e, day); rc >= 0)
        return rc;
    const Outcome stored = ExportMarks::gravarIds(e.ctx, day.movimento().ID, *list, flag);
    tell(e.ctx.dialogs, stored.notice);
    if (!stored)
        return ExitRefused;
    if (e.json)
        CliSupport::printJson(e, QJsonObject{{QStringLiteral("export"), flag},
                                             {QStringLiteral("recebimentos"), int(list->size())}});
    else
        e.out << QStringLiteral("%1 recebimento(s) %2.\n")
                     .arg(list->size())
                     .arg(flag ? QStringLiteral("rejeitado(s)") : QStringLiteral("confirmado(s)"));
    return ExitOk;
}

int gerar(CliEnv& e, BankExport::Arquivo arquivo) {
    int idcod = 0;
    CashDay day(e.ctx, nullptr);
    if (int rc = kindAndMovement(e, day, idcod); rc >= 0)
        return rc;
    BankExport::Request rq;
    rq.idMovimento = day.movimento().ID;
    rq.movimento = day.movimento().MDATA;
    rq.idcod = idcod;
    if (arquivo == BankExport::Arquivo::Febraban) {
        clsCodBarra kind(e.ctx.db);
        rq.codBanco = e.args.has(QStringLiteral("banco"))
                          ? e.args.value(QStringLiteral("banco"))
                          : (kind.SQLSelect(idcod) ? kind.CODBANCO : QString());
    }
    const BankExport::Result r = arquivo == BankExport::Arquivo::Cnab
                                     ? CnabExport::gerar(e.ctx, rq)
                                     : FebrabanExport::gerar(e.ctx, rq);
    r.mostrar(e.ctx.dialogs);
    QJsonObject o{{QStringLiteral("arquivo"), QDir::toNativeSeparators(r.arquivo)},
                  {QStringLiteral("registros"), r.registros},
                  {QStringLiteral("total"), r.total.format()},
                  {QStringLiteral("erros"), QJsonArray::fromStringList(r.erros)}};
    if (arquivo == BankExport::Arquivo::Cnab && r.ok)
        o.insert(QStringLiteral("nsa"), r.nsa);
    if (e.json) {
        CliSupport::printJson(e, o);
    } else if (r.ok) {
        e.out << QStringLiteral("arquivo: %1\nregistros: %2\ntotal: %3\n")
                     .arg(o.value(QStringLiteral("arquivo")).toString())
                     .arg(r.registros)
                     .arg(r.total.format());
    }
    return r.ok ? ExitOk : ExitRefused;
}

} // namespace

void registerExportCommands(QList<CliCommand>& c) {
    const QString d = QStringLiteral(" [--data DD/MM/AAAA] [--json]");
    const QStringList w = {QStringLiteral("exportar")};
    c.append({w + QStringList{QStringLiteral("listar")},
              QStringLiteral("exportar listar --tipo IDCOD [--rejeitados]") + d,
              QStringLiteral("recebimentos do movimento e tipo que vão para o arquivo do banco "
                             "(EXPORT 0), ou os rejeitados"),
              {QStringLiteral("rejeitados")},
              CliCommand::Db::Existing,
              listar});
    c.last().act = Act::ConsultarDia;
    c.append({w + QStringList{QStringLiteral("rejeitar")},
              QStringLiteral("exportar rejeitar --id N...") + d,
              QStringLiteral("tira recebimentos do movimento dos arquivos do banco (EXPORT 1)"),
              {},
              CliCommand::Db::Existing,
              [](CliEnv& e) { return marcar(e, 1); },
              {QStringLiteral("id")}});
    c.last().act = Act::ArquivosBanco;
    c.append({w + QStringList{QStringLiteral("confirmar")},
              QStringLiteral("exportar confirmar --id N...") + d,
              QStringLiteral("devolve recebimentos do movimento aos arquivos do banco (EXPORT 0)"),
              {},
              CliCommand::Db::Existing,
              [](CliEnv& e) { return marcar(e, 0); },
              {QStringLiteral("id")}});
    c.last().act = Act::ArquivosBanco;
    c.append({w + QStringList{QStringLiteral("febraban")},
              QStringLiteral("exportar febraban --tipo IDCOD [--banco NNN]") + d,
              QStringLiteral("grava o arquivo Febraban (150) das guias confirmadas do tipo; "
                             "banco padrão: CODBANCO do tipo"),
              {},
              CliCommand::Db::Existing,
              [](CliEnv& e) { return gerar(e, BankExport::Arquivo::Febraban); }});
    c.last().act = Act::ArquivosBanco;
    c.append({w + QStringList{QStringLiteral("cnab")},
              QStringLiteral("exportar cnab --tipo IDCOD") + d,
              QStringLiteral("grava o arquivo de retorno CNAB 240 dos boletos confirmados do tipo"),
              {},
              CliCommand::Db::Existing,
              [](CliEnv& e) { return gerar(e, BankExport::Arquivo::Cnab); }});
    c.last().act = Act::ArquivosBanco;
}
