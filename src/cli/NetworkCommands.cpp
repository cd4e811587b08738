// The central database of several counters: rede status, publicar, importar and conflitos.
#include "AppContext.h"
#include "CentralAccess.h"
#include "CentralImport.h"
#include "CentralLink.h"
#include "CliArgs.h"
#include "CliCommand.h"
#include "CliSupport.h"
#include "Clock.h"
#include "DirectCentral.h"
#include "NetworkStatus.h"
#include "clsConflitoRede.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTextStream>
#include <cstdio>

#ifdef Q_OS_WIN
#include <io.h>
#define TOLVANE_ISATTY(fd) _isatty(fd)
#else
#include <unistd.h>
#define TOLVANE_ISATTY(fd) isatty(fd)
#endif

namespace {

const QString kSemCentral =
    QStringLiteral("A central da rede não está configurada: informe host (e porta, nome, usuario) "
                   "na seção [Rede] do Config.ini, pela tela de opções ou com tolvane opcoes "
                   "gravar.");
const QString kMomento = QStringLiteral("dd/MM/yyyy hh:mm:ss");

QJsonValue moment(const QDateTime& t) {
    return t.isValid() ? QJsonValue(t.toString(kMomento)) : QJsonValue();
}

DirectCentral* central(CliEnv& e) {
    auto* c = dynamic_cast<DirectCentral*>(CentralAccess::of(e.ctx));
    if (!c || !c->configurada()) {
        e.err << kSemCentral << "\n";
        return nullptr;
    }
    c->semPausa(); // asked for by name: the central is tried now
    return c;
}

int status(CliEnv& e) {
    DirectCentral* c = central(e);
    if (!c)
        return ExitRefused;
    const NetworkStatus::Situacao s = NetworkStatus::consultar(e.ctx);
    const auto conflitos = clsConflitoRede::listar(e.ctx.db);
    const QDateTime agora = e.ctx.clock.now();
    QJsonObject o{{QStringLiteral("central"), c->link().config().describe()},
                  {QStringLiteral("ativa"), s.ativa},
                  {QStringLiteral("pendentes"), s.pendentes},
                  {QStringLiteral("mais_antigo"), moment(s.maisAntigo)},
                  {QStringLiteral("ultimo_envio"), moment(s.ultimoEnvio)},
                  {QStringLiteral("atrasada"), NetworkStatus::atrasada(s, agora)},
                  {QStringLiteral("conflitos"), conflitos ? int(conflitos->size()) : -1}};
    if (!c->link().problema().isEmpty())
        o.insert(QStringLiteral("problema"), c->link().problema());
    // The last closing seal the central holds for this counter.
    const auto selo =
        s.ativa ? c->link().ultimoSelo(e.ctx.settings.guiche.trimmed()) : std::nullopt;
    if (selo && *selo)
        o.insert(QStringLiteral("ultimo_selo"),
                 QJsonObject{
                     {QStringLiteral("dia"), (*selo)->DIA.toString(QStringLiteral("dd/MM/yyyy"))},
                     {QStringLiteral("hash"), (*selo)->HASH},
                     {QStringLiteral("recebido"), moment((*selo)->RECEBIDO.toLocalTime())}});
    else if (selo)
        o.insert(QStringLiteral("ultimo_selo"), QJsonValue());
    if (e.json) {
        CliSupport::printJson(e, o);
    } else {
        e.out << QStringLiteral("Central: %1\n").arg(o.value(QStringLiteral("central")).toString())
              << QStringLiteral("Ativa: %1\n")
                     .arg(s.ativa ? QStringLiteral("sim") : QStringLiteral("não"))
              << QStringLiteral("Pendentes: %1\n").arg(s.pendentes);
        if (s.maisAntigo.isValid())
            e.out << QStringLiteral("Mais antigo pendente: %1\n")
                         .arg(s.maisAntigo.toString(kMomento));
        e.out
            << QStringLiteral("Último envio: %1\n")
                   .arg(s.ultimoEnvio.isValid() ? s.ultimoEnvio.toString(kMomento)
                                                : QStringLiteral("nenhum"))
            << QStringLiteral("Conflitos: %1\n").arg(o.value(QStringLiteral("conflitos")).toInt());
        if (selo && *selo)
            e.out << QStringLiteral("Último selo na central: %1 %2 (recebido em %3)\n")
                         .arg((*selo)->DIA.toString(QStringLiteral("dd/MM/yyyy")), (*selo)->HASH,
                              (*selo)->RECEBIDO.toLocalTime().toString(kMomento));
        else if (selo)
            e.out << "Último selo na central: nenhum\n";
    }
    return s.lida ? ExitOk : ExitRefused;
}

int publicar(CliEnv& e) {
    DirectCentral* c = central(e);
    if (!c)
        return ExitRefused;
    const DirectCentral::Totais t = c->enviarTudo();
    const NetworkStatus::Situacao s = NetworkStatus::consultar(e.ctx);
    if (e.json) {
        CliSupport::printJson(e, QJsonObject{{QStringLiteral("ativa"), s.ativa},
                                             {QStringLiteral("enviados"), t.enviados},
                                             {QStringLiteral("conflitos"), t.conflitos},
                                             {QStringLiteral("pendentes"), s.pendentes}});
    } else {
        e.out << QStringLiteral("%1 código(s) enviado(s) à central; %2 conflito(s); %3 "
                                "pendente(s).\n")
                     .arg(t.enviados)
                     .arg(t.conflitos)
                     .arg(s.pendentes);
    }
    if (t.completo)
        return ExitOk;
    e.err << "A central não recebeu tudo; os códigos continuam guardados e serão enviados "
             "de novo.\n";
    return ExitRefused;
}

// A bar on the terminal, redrawn in place; nothing when standard error is not a terminal.
class ProgressBar {
public:
    explicit ProgressBar(CliEnv& e) : m_err(e.err), m_on(!e.json && TOLVANE_ISATTY(2)) {}
    ~ProgressBar() {
        if (m_drawn)
            m_err << "\n" << Qt::flush;
    }
    void operator()(qint64 feito, qint64 total) {
        if (!m_on || total <= 0)
            return;
        constexpr int kWidth = 40;
        const int filled = int(feito * kWidth / total);
        m_err << "\r[" << QString(filled, QLatin1Char('#'))
              << QString(kWidth - filled, QLatin1Char('-')) << "] "
              << QStringLiteral("%1%").arg(feito * 100 / total, 3) << Qt::flush;
        m_drawn = true;
    }

private:
    QTextStream& m_err;
    bool m_on;
    bool m_drawn = false;
};

int importar(CliEnv& e) {
    if (e.args.positional.size() != 1) {
        e.err << "Uso: tolvane rede importar CAMINHO [--lote N] [--json]\n";
        return ExitUsage;
    }
    bool ok = true;
    const int lote = e.args.has(QStringLiteral("lote"))
                         ? e.args.value(QStringLiteral("lote")).toInt(&ok)
                         : CentralImport::kLote;
    if (!ok || lote < 1) {
        e.err << "--lote precisa de um número maior que zero.\n";
        return ExitUsage;
    }
    const CentralConfig config = CentralConfig::fromIni(e.ctx.iniPath());
    if (!config.configurada()) {
        e.err << kSemCentral << "\n";
        return ExitRefused;
    }
    CentralLink link(e.ctx.errors, e.ctx.clock);
    if (!link.conectar(config, 0)) {
        e.err << link.problema() << "\n";
        return ExitRefused;
    }
    CentralImport::Resultado r;
    {
        ProgressBar bar(e);
        r = CentralImport::importar(
            link, e.ctx.errors, e.args.positional.first(),
            [&bar](qint64 feito, qint64 total) { bar(feito, total); }, lote);
    }
    const QJsonObject o{
        {QStringLiteral("lidos"), r.lidos},
        {QStringLiteral("importados"), r.importados},
        {QStringLiteral("ja_existentes"), r.jaExistentes},
        {QStringLiteral("invalidos"), r.invalidos},
        {QStringLiteral("ignorados"), r.ignorados},
        {QStringLiteral("retomada"), r.retomada},
        {QStringLiteral("concluida"), r.ok},
        {QStringLiteral("exemplos_invalidos"), QJsonArray::fromStringList(r.exemplosInvalidos)}};
    if (e.json) {
        CliSupport::printJson(e, o);
    } else {
        if (r.retomada)
            e.out << "Importação interrompida retomada de onde parou.\n";
        e.out << QStringLiteral("Lidos: %1\nImportados: %2\nJá existentes: %3\nInválidos (não "
                                "têm 44 dígitos): %4\nIgnorados (começam com 000): %5\n")
                     .arg(r.lidos)
                     .arg(r.importados)
                     .arg(r.jaExistentes)
                     .arg(r.invalidos)
                     .arg(r.ignorados);
        for (const QString& x : r.exemplosInvalidos)
            e.out << QStringLiteral("  inválido: %1\n").arg(x);
    }
    if (r.ok)
        return ExitOk;
    e.err << r.erro << "\nRode o mesmo comando de novo: a importação continua de onde parou.\n";
    return ExitRefused;
}

int conflitos(CliEnv& e) {
    const auto list = clsConflitoRede::listar(e.ctx.db);
    if (!list) {
        e.err << "Não foi possível ler os conflitos: " << e.ctx.db.lastError() << "\n";
        return ExitRefused;
    }
    QJsonArray rows;
    for (const clsConflitoRede& c : *list)
        rows.append(
            QJsonObject{{QStringLiteral("codbarra"), c.CODBARRA},
                        {QStringLiteral("idrecebe"), c.IDRECEBE},
                        {QStringLiteral("idmovimento"), c.IDMOVIMENTO},
                        {QStringLiteral("autentica"), c.AUTENTICA},
                        {QStringLiteral("valor"), c.VALOR.format()},
                        {QStringLiteral("recebido"), moment(c.MOMENTO)},
                        {QStringLiteral("guiche_central"), c.GUICHE_CENTRAL},
                        {QStringLiteral("momento_central"),
                         moment(QDateTime::fromString(c.MOMENTO_CENTRAL, Qt::ISODateWithMs))},
                        {QStringLiteral("detectado"), moment(c.DETECTADO)},
                        {QStringLiteral("situacao"),
                         c.estornado ? QStringLiteral("estornado") : QStringLiteral("recebido")}});
    if (e.json) {
        CliSupport::printJson(e, QJsonObject{{QStringLiteral("conflitos"), rows},
                                             {QStringLiteral("total"), rows.size()}});
        return ExitOk;
    }
    if (list->isEmpty())
        e.out << "Nenhum conflito.\n";
    for (const clsConflitoRede& c : *list)
        e.out << QStringLiteral("%1\t%2\t%3\t%4\tguichê central: %5\t%6\n")
                     .arg(c.MOMENTO.toString(kMomento), c.CODBARRA)
                     .arg(c.AUTENTICA, 4, 10, QLatin1Char('0'))
                     .arg(c.VALOR.format(),
                          c.GUICHE_CENTRAL.isEmpty() ? QStringLiteral("(importado)")
                                                     : c.GUICHE_CENTRAL,
                          c.estornado ? QStringLiteral("estornado") : QStringLiteral("recebido"));
    return ExitOk;
}

} // namespace

void registerNetworkCommands(QList<CliCommand>& c) {
    using D = CliCommand::Db;
    c.append({{QStringLiteral("rede"), QStringLiteral("status")},
              QStringLiteral("rede status [--json]"),
              QStringLiteral("mostra se a central da rede responde, os códigos à espera de envio "
                             "(pendentes) e o último envio"),
              {},
              D::Existing,
              status});
    c.last().act = Act::Consultar;
    c.append({{QStringLiteral("rede"), QStringLiteral("publicar")},
              QStringLiteral("rede publicar [--json]"),
              QStringLiteral("envia à central os códigos pendentes e diz quantos"),
              {},
              D::Existing,
              publicar});
    c.last().act = Act::PublicarRede;
    c.append({{QStringLiteral("rede"), QStringLiteral("importar")},
              QStringLiteral("rede importar CAMINHO [--lote N] [--json]"),
              QStringLiteral("carrega na central os códigos de um caixa.db anterior ou de um "
                             "arquivo com um código por linha (retoma se interrompida)"),
              {},
              D::None,
              importar});
    c.last().act = Act::ImportarRede;
    c.append({{QStringLiteral("rede"), QStringLiteral("conflitos")},
              QStringLiteral("rede conflitos [--json]"),
              QStringLiteral("lista os códigos recebidos aqui que a central recusou por já "
                             "estarem recebidos em outro guichê"),
              {},
              D::Existing,
              conflitos});
    c.last().act = Act::Consultar;
}
