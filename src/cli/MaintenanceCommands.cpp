// Commands that look after the database and the files of the day: verificar, copia, auditar,
// controle.
#include "AppContext.h"
#include "AuditChain.h"
#include "CentralAccess.h"
#include "CentralSeals.h"
#include "CheckRecord.h"
#include "CliArgs.h"
#include "CliCommand.h"
#include "CliSupport.h"
#include "Clock.h"
#include "ClosedDayTotals.h"
#include "DailyControlFile.h"
#include "DatabaseBackup.h"
#include "DatabaseCheck.h"
#include "DateUtil.h"
#include "DayMovement.h"
#include "DirectCentral.h"
#include "Schema.h"
#include "Startup.h"
#include "SystemTexts.h"
#include "clsMovimento.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QTextStream>

namespace {

int verificar(CliEnv& e) {
    const DatabaseCheck::Result check = DatabaseCheck::run(e.ctx.db, DatabaseCheck::Depth::Full);
    if (CheckRecord* record = e.ctx.db.record()) {
        if (check.ok)
            record->wholeFileSound(e.ctx.clock.now());
        else
            record->damaged(DatabaseCheck::damagedText(e.ctx.db.config().describe(), check));
    }
    const QStringList repeated = Schema::markedDuplicates(e.ctx.db);
    if (e.json) {
        CliSupport::printJson(
            e, QJsonObject{
                   {QStringLiteral("integro"), check.ok},
                   {QStringLiteral("tabelas"), QJsonArray::fromStringList(check.tables)},
                   {QStringLiteral("mensagens"), QJsonArray::fromStringList(check.messages)},
                   {QStringLiteral("repetidos"), QJsonArray::fromStringList(repeated)},
               });
    } else if (check.ok) {
        e.out << QStringLiteral("Banco %1 íntegro.\n").arg(e.ctx.db.config().describe());
    } else {
        e.out << QStringLiteral("Banco %1 DANIFICADO. Tabelas atingidas: %2\n")
                     .arg(e.ctx.db.config().describe(), check.tables.join(QStringLiteral(", ")));
        for (const QString& m : check.messages)
            e.out << "  " << m << "\n";
    }
    if (!e.json && !repeated.isEmpty()) {
        e.out << QStringLiteral("Recebimentos repetidos, marcados ao atualizar o banco:\n");
        for (const QString& r : repeated)
            e.out << "  " << r << "\n";
    }
    return check.ok ? ExitOk : ExitRefused;
}

int copia(CliEnv& e) {
    if (e.args.positional.size() != 1) {
        e.err << "Informe o destino: um arquivo novo ou uma pasta.\n";
        return ExitUsage;
    }
    QString error;
    const auto written = DatabaseBackup::copy(e.ctx.db, e.args.positional.first(),
                                              e.ctx.clock.now(), &error, e.ctx.ownFiles());
    if (!written) {
        e.err << error << "\n";
        return ExitRefused;
    }
    e.out << QStringLiteral("Cópia gravada: %1\n").arg(QDir::toNativeSeparators(*written));
    return ExitOk;
}

// The closing seals against the central's, when there is a central: nullopt without one.
std::optional<CentralSeals::Conferencia> conferirSelos(CliEnv& e, std::optional<QDate> dia) {
    auto* central = dynamic_cast<DirectCentral*>(CentralAccess::of(e.ctx));
    if (!central || !central->configurada())
        return std::nullopt;
    central->semPausa();
    return CentralSeals::conferir(e.ctx, *central, dia);
}

void printSelos(CliEnv& e, const CentralSeals::Conferencia& c) {
    if (!c.consultada) {
        e.out << "Central da rede: não respondeu; os selos não foram conferidos.\n";
        return;
    }
    e.out << QStringLiteral("Selos na central: %1 dia(s) conferem").arg(c.conferidos);
    if (!c.semSelo.isEmpty())
        e.out << QStringLiteral("; sem selo na central ainda: %1")
                     .arg(c.semSelo.join(QStringLiteral(", ")));
    e.out << ".\n";
    for (const QString& d : c.diferencas)
        e.out << QStringLiteral("Selo diferente da central: %1\n").arg(d);
}

QString totalText(const ClosedDayTotals::Difference& d) {
    return QStringLiteral("Movimento %1 de %2: %3 guardado %4, mas os registros do dia somam %5.")
        .arg(d.mov)
        .arg(DateUtil::br(d.dia), ClosedDayTotals::coluna(d.total), d.guardado.format(),
             d.somado.format());
}

// The chain with the closing hash of one day (--data), or with the seal of every closed day.
AuditChain::Report auditChain(CliEnv& e, const std::optional<clsMovimento>& mov) {
    if (mov)
        return AuditChain::audit(e.ctx.db, mov->ID, mov->HASH_CADEIA);
    QMap<QString, QString> seals;
    if (const auto days = clsMovimento::encerrados(e.ctx.db))
        for (const clsMovimento& m : *days)
            if (!m.HASH_CADEIA.isEmpty())
                seals.insert(m.HASH_CADEIA, DateUtil::br(m.MDATA));
    return AuditChain::audit(e.ctx.db, seals);
}

void printAuditJson(CliEnv& e, bool ok, const AuditChain::Report& r, const QStringList& totals,
                    const std::optional<clsMovimento>& mov,
                    const std::optional<CentralSeals::Conferencia>& selos) {
    QJsonObject o{{QStringLiteral("confere"), ok},
                  {QStringLiteral("entradas"), r.entries},
                  {QStringLiteral("linhas"), r.rows},
                  {QStringLiteral("ultimo_hash"), r.lastHash},
                  {QStringLiteral("problemas"), QJsonArray::fromStringList(r.problems + totals)}};
    if (mov)
        o.insert(QStringLiteral("hash_encerramento"), mov->HASH_CADEIA);
    if (selos)
        o.insert(
            QStringLiteral("selos_central"),
            QJsonObject{
                {QStringLiteral("consultada"), selos->consultada},
                {QStringLiteral("conferem"), selos->conferidos},
                {QStringLiteral("sem_selo"), QJsonArray::fromStringList(selos->semSelo)},
                {QStringLiteral("diferencas"), QJsonArray::fromStringList(selos->diferencas)}});
    CliSupport::printJson(e, o);
}

void printAuditText(CliEnv& e, bool ok, const AuditChain::Report& r, const QStringList& totals,
                    const std::optional<clsMovimento>& mov,
                    const std::optional<CentralSeals::Conferencia>& selos) {
    e.out << QStringLiteral("Cadeia: %1 entradas; %2 linhas comparadas.\nÚltimo hash: %3\n")
                 .arg(r.entries)
                 .arg(r.rows)
                 .arg(r.lastHash);
    if (mov)
        e.out << (mov->HASH_CADEIA.isEmpty()
                      ? QStringLiteral("Movimento %1 de %2: ainda não encerrado.\n")
                            .arg(mov->MOV)
                            .arg(DateUtil::br(mov->MDATA))
                      : QStringLiteral("Movimento %1 de %2, hash do encerramento: %3\n")
                            .arg(mov->MOV)
                            .arg(DateUtil::br(mov->MDATA), mov->HASH_CADEIA));
    if (selos)
        printSelos(e, *selos);
    if (ok) {
        e.out << "Tudo confere.\n";
        return;
    }
    const QStringList problems = r.problems + totals;
    if (!problems.isEmpty()) {
        e.out << QStringLiteral("Primeira diferença: %1\n").arg(problems.first());
        for (int i = 1; i < problems.size(); ++i)
            e.out << "  " << problems.at(i) << "\n";
    }
}

// The chain, each closed day's seal in it, each closed day's totals summed again, and the seals
// the central holds.
int auditar(CliEnv& e) {
    std::optional<clsMovimento> mov;
    std::optional<QDate> dia;
    if (e.args.has(QStringLiteral("data"))) {
        dia = CliSupport::workingDate(e);
        if (!dia)
            return ExitUsage;
        mov = DayMovement::of(e.ctx.db, *dia);
        if (!mov) {
            e.err << SystemTexts::text(SystemText::NenhumMovimentoNaData) << "\n";
            return ExitRefused;
        }
    }
    const AuditChain::Report r = auditChain(e, mov);
    QStringList totals;
    if (const auto diffs = ClosedDayTotals::conferir(e.ctx.db, mov ? std::optional<qint32>(mov->ID)
                                                                   : std::nullopt)) {
        for (const ClosedDayTotals::Difference& d : *diffs)
            totals << totalText(d);
    } else {
        totals << QStringLiteral("Os totais dos dias encerrados não puderam ser lidos: ") +
                      e.ctx.db.lastError();
    }
    const auto selos = conferirSelos(e, dia);
    const bool ok = r.ok && totals.isEmpty() && (!selos || selos->diferencas.isEmpty());
    if (e.json)
        printAuditJson(e, ok, r, totals, mov, selos);
    else
        printAuditText(e, ok, r, totals, mov, selos);
    return ok ? ExitOk : ExitRefused;
}

int controle(CliEnv& e) {
    if (int rc = CliSupport::chooseDay(e, DateScreenLogic::Action::Consultar); rc >= 0)
        return rc;
    const auto mov = DayMovement::ofWorkingDate(e.ctx);
    if (!mov)
        return ExitRefused;
    if (!DailyControlFile::rebuild(e.ctx, *mov))
        return ExitRefused;
    e.out << QStringLiteral("Controle diário refeito: %1\n")
                 .arg(QDir::toNativeSeparators(DailyControlFile::path(e.ctx, mov->MDATA)));
    return ExitOk;
}

int guicheAssumir(CliEnv& e) {
    if (e.args.positional.size() > 1) {
        e.err << "Uso: tolvane guiche assumir [LETRA]\n";
        return ExitUsage;
    }
    QString detail;
    if (!Startup::assumirGuiche(e.ctx, &detail, e.args.positional.value(0))) {
        e.err << detail << "\n";
        return ExitRefused;
    }
    e.out << QStringLiteral("O banco agora pertence ao guichê %1.\n")
                 .arg(e.ctx.option(QStringLiteral("Export"), QStringLiteral("guiche")).trimmed());
    return ExitOk;
}

} // namespace

void registerMaintenanceCommands(QList<CliCommand>& c) {
    c.append({{QStringLiteral("verificar")},
              QStringLiteral("verificar [--json]"),
              QStringLiteral("confere o banco por inteiro e diz quais tabelas estão danificadas; "
                             "lista recebimentos repetidos marcados"),
              {},
              CliCommand::Db::ReadOnly,
              verificar});
    c.last().act = Act::Consultar;
    c.append({{QStringLiteral("copia")},
              QStringLiteral("copia DESTINO"),
              QStringLiteral("cópia consistente do banco em uso (arquivo novo ou pasta)"),
              {},
              CliCommand::Db::ReadOnly,
              copia});
    c.last().act = Act::CopiaBanco;
    c.append({{QStringLiteral("auditar")},
              QStringLiteral("auditar [--data DD/MM/AAAA] [--json]"),
              QStringLiteral("refaz a cadeia de hashes e aponta a primeira linha que não confere; "
                             "confere o selo de cada dia encerrado (com --data, só o daquele dia) "
                             "e soma de novo os totais guardados no movimento; com a central da "
                             "rede, compara os selos dos dias encerrados com os dela"),
              {},
              CliCommand::Db::ReadOnly,
              auditar});
    c.last().act = Act::Auditar;
    c.append({{QStringLiteral("controle")},
              QStringLiteral("controle [--data DD/MM/AAAA]"),
              QStringLiteral("refaz o arquivo de controle diário a partir do banco"),
              {},
              CliCommand::Db::ReadOnly,
              controle});
    c.last().act = Act::ControleDiario;
    c.append({{QStringLiteral("guiche"), QStringLiteral("assumir")},
              QStringLiteral("guiche assumir [LETRA]"),
              QStringLiteral("muda o guichê (grava LETRA em [Export] guiche) ou passa o banco "
                             "para o guichê deste Config.ini; só sem movimento aberto"),
              {},
              CliCommand::Db::Unclaimed,
              guicheAssumir});
    c.last().act = Act::AssumirGuiche;
}
