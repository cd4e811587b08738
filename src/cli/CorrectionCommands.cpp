// Corrections of the day's receipts (recebimento alterar, estornar, reverter) under an
// administrator's password, and the reversal log read back (estornos).
#include "AppContext.h"
#include "CliArgs.h"
#include "CliCommand.h"
#include "CliPrinterScope.h"
#include "CliSupport.h"
#include "CorrectionLog.h"
#include "DateUtil.h"
#include "Login.h"
#include "ReceiptCorrections.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTextStream>

namespace {

// --data (the operator and the administrator who allows it were named by the dispatcher).
// Answers -1 to go on, else the exit code.
int admit(CliEnv& e) {
    const auto day = CliSupport::workingDate(e);
    if (!day)
        return ExitUsage;
    e.ctx.workingDate = *day;
    return -1;
}

std::optional<qint32> idArg(CliEnv& e, const QString& usage) {
    bool ok = false;
    const qint32 id = e.args.value(QStringLiteral("id")).toInt(&ok);
    if (!ok || id <= 0) {
        e.err << QStringLiteral("Informe --id IDRECEBE.\nUso: tolvane %1\n").arg(usage);
        return std::nullopt;
    }
    return id;
}

QJsonObject receipt(const clsRecebimentos& r) {
    return {{QStringLiteral("idrecebe"), r.IDRECEBE},
            {QStringLiteral("autentica"), r.AUTENTICA},
            {QStringLiteral("idcod"), r.TIPO},
            {QStringLiteral("codbarra"), r.CODBARRA},
            {QStringLiteral("valor"), r.VALOR.format()}};
}

QString fita(CounterPrinter::Fita f) {
    switch (f) {
    case CounterPrinter::Fita::Impressa:
        return QStringLiteral("impressa");
    case CounterPrinter::Fita::SemImpressora:
        return QStringLiteral("sem_autenticadora");
    case CounterPrinter::Fita::Falhou:
        break;
    }
    return QStringLiteral("nao_impressa");
}

QString kindWord(CorrectionLog::Kind k) {
    switch (k) {
    case CorrectionLog::Kind::Estorno:
        return QStringLiteral("estorno");
    case CorrectionLog::Kind::Alteracao:
        return QStringLiteral("alteracao");
    case CorrectionLog::Kind::Reversao:
        break;
    }
    return QStringLiteral("reversao");
}

int report(CliEnv& e, CorrectionLog::Kind kind, const ReceiptCorrections::Resultado& r) {
    r.mostrar(e.ctx.dialogs);
    if (!r.feito)
        return ExitRefused;
    QJsonObject o{{QStringLiteral("operacao"), kindWord(kind)},
                  {QStringLiteral("registro"), r.arquivo},
                  {QStringLiteral("registrado"), r.registrado},
                  {QStringLiteral("fita"), fita(r.fita)},
                  {QStringLiteral("linhas_fita"), QJsonArray::fromStringList(r.linhasFita)}};
    if (!r.arquivoBanco.isEmpty())
        o.insert(QStringLiteral("arquivo_banco"), r.arquivoBanco);
    if (r.antes)
        o.insert(QStringLiteral("antes"), receipt(*r.antes));
    if (r.depois)
        o.insert(QStringLiteral("depois"), receipt(*r.depois));
    if (e.json) {
        CliSupport::printJson(e, o);
        return ExitOk;
    }
    for (const QString& l : r.linhasFita)
        e.out << l << "\n";
    const QString tape = r.fita == CounterPrinter::Fita::Impressa ? QStringLiteral("impressa")
                         : r.fita == CounterPrinter::Fita::SemImpressora
                             ? QStringLiteral("sem autenticadora")
                             : QStringLiteral("não impressa");
    if (!r.arquivoBanco.isEmpty())
        e.out << QStringLiteral("Arquivo do banco: %1\n").arg(r.arquivoBanco);
    e.out << QStringLiteral("Registro: %1%2\nFita: %3\n")
                 .arg(r.arquivo, r.registrado ? QString() : QStringLiteral(" (não gravado)"), tape);
    return ExitOk;
}

const QString kAlterar = QStringLiteral(
    "recebimento alterar --id IDRECEBE [--tipo IDCOD] [--autentica N] [--codbarra C] "
    "[--valor V] --motivo TEXTO [--data DD/MM/AAAA] [--json]");
const QString kEstornar = QStringLiteral(
    "recebimento estornar --id IDRECEBE --motivo TEXTO [--data DD/MM/AAAA] [--json]");
const QString kReverter =
    QStringLiteral("recebimento reverter --id IDRECEBE [--data DD/MM/AAAA] [--json]");

std::optional<QString> option(CliEnv& e, const char* name) {
    if (!e.args.has(QLatin1String(name)))
        return std::nullopt;
    return e.args.value(QLatin1String(name));
}

ReceiptCorrections::Resultado alterar(CliEnv& e, ReceiptCorrections& c, qint32 id) {
    CorrectionRequest::AsTyped typed;
    typed.idrecebe = id;
    typed.tipo = option(e, "tipo");
    typed.autentica = option(e, "autentica");
    typed.codbarra = option(e, "codbarra");
    typed.valor = option(e, "valor");
    typed.motivo = e.args.value(QStringLiteral("motivo"));
    const CorrectionRequest::Read read = CorrectionRequest::read(typed);
    if (!read.request)
        return ReceiptCorrections::Resultado::refused(read.refusal);
    return c.alterar(*read.request);
}

ReceiptCorrections::Resultado estornar(CliEnv& e, ReceiptCorrections& c, qint32 id) {
    return c.estornar(id, e.args.value(QStringLiteral("motivo")));
}

ReceiptCorrections::Resultado reverter(CliEnv&, ReceiptCorrections& c, qint32 id) {
    return c.reverter(id);
}

using Correction = ReceiptCorrections::Resultado (*)(CliEnv&, ReceiptCorrections&, qint32);

// --id, the administrator, then the correction with the run's printer.
int correct(CliEnv& e, const QString& usage, CorrectionLog::Kind kind, Correction op) {
    const auto id = idArg(e, usage);
    if (!id)
        return ExitUsage;
    if (int rc = admit(e); rc >= 0)
        return rc;
    CliPrinterScope printing(e.ctx);
    ReceiptCorrections c(e.ctx, &printing.printer);
    return report(e, kind, op(e, c, *id));
}

QJsonObject entry(const CorrectionLog::ParsedEntry& p) {
    QJsonObject o{{QStringLiteral("operacao"), kindWord(p.kind)}};
    const QList<std::pair<const char*, const char*>> fields = {{"movimento", "Movimento"},
                                                               {"data", "Data"},
                                                               {"usuario", "User"},
                                                               {"operador", "Operador"},
                                                               {"item", "Item"},
                                                               {"tipo", "Tipo"},
                                                               {"valor", "Valor"},
                                                               {"valor_anterior", "Valor anterior"},
                                                               {"tipo_anterior", "Tipo anterior"}};
    for (const auto& [key, label] : fields)
        if (const QString v = p.value(QLatin1String(label)); !v.isEmpty())
            o.insert(QLatin1String(key), v);
    const QString last = p.fields.isEmpty() ? QString() : p.fields.last();
    o.insert(QStringLiteral("motivo"), last.section(QStringLiteral(": "), 1));
    return o;
}

int estornos(CliEnv& e) {
    std::optional<int> ano;
    if (e.args.has(QStringLiteral("ano"))) {
        bool ok = false;
        ano = e.args.value(QStringLiteral("ano")).toInt(&ok);
        if (!ok || *ano < 1900 || *ano > 9999) {
            e.err << "Ano inválido (use AAAA).\nUso: tolvane estornos [--ano AAAA] [--json]\n";
            return ExitUsage;
        }
    }
    // What the database holds and the log lacks is written first.
    ReceiptCorrections(e.ctx, nullptr).completarRegistro();
    const CorrectionLog log(e.ctx);
    const auto files = log.read(ano);
    if (files.isEmpty())
        e.err << QStringLiteral("Nenhum registro de estornos em %1.\n").arg(log.folder());
    if (!e.json) {
        for (const auto& f : files)
            for (const QString& l : f.lines)
                e.out << l << "\n";
        return ExitOk;
    }
    QJsonArray anos;
    for (const auto& f : files) {
        QJsonArray entradas;
        for (const auto& p : CorrectionLog::parse(f.lines))
            entradas.append(entry(p));
        anos.append(QJsonObject{{QStringLiteral("ano"), f.year},
                                {QStringLiteral("arquivo"), f.path},
                                {QStringLiteral("entradas"), entradas}});
    }
    CliSupport::printJson(
        e, QJsonObject{{QStringLiteral("pasta"), log.folder()}, {QStringLiteral("anos"), anos}});
    return ExitOk;
}

} // namespace

void registerCorrectionCommands(QList<CliCommand>& c) {
    const auto add = [&](const char* word, const QString& usage, const QString& summary,
                         CorrectionLog::Kind kind, Correction op) {
        c.append({{QStringLiteral("recebimento"), QLatin1String(word)},
                  usage,
                  summary,
                  {},
                  CliCommand::Db::Existing,
                  [=](CliEnv& e) { return correct(e, usage, kind, op); }});
        c.last().act = Act::Correcoes;
    };
    add("alterar", kAlterar,
        QStringLiteral("altera tipo, autenticação, código ou valor de um recebimento do dia"),
        CorrectionLog::Kind::Alteracao, alterar);
    add("estornar", kEstornar,
        QStringLiteral("estorna (exclui) um recebimento do dia, guardando-o na tabela de "
                       "estornos"),
        CorrectionLog::Kind::Estorno, estornar);
    add("reverter", kReverter,
        QStringLiteral("desfaz o estorno de um recebimento do dia aberto, com a mesma "
                       "autenticação"),
        CorrectionLog::Kind::Reversao, reverter);
    c.append({{QStringLiteral("estornos")},
              QStringLiteral("estornos [--ano AAAA] [--json]"),
              QStringLiteral("mostra o registro de estornos e alterações, do ano mais novo ao "
                             "mais antigo"),
              {},
              CliCommand::Db::ReadOnly,
              estornos});
    c.last().act = Act::Consultar;
}
