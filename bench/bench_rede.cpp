// The network duplicate check with 10 000 and 10 000 000 codes in the central: through the link
// a command uses, through the counter screen's link (its own thread), and as a whole scan with
// the check on; a scan with the central unreachable and with the check off; a payment of 10
// guides with its claim at the central against one without the network, and the claim alone;
// and the import of 1 000 000 codes from a text file. The central is a throwaway PostgreSQL server
// on this machine; its rows are made on the server itself (generate_series).
#include "AppContext.h"
#include "BackgroundCentral.h"
#include "BarcodeReader.h"
#include "CentralAccess.h"
#include "CentralImport.h"
#include "CentralLink.h"
#include "Clock.h"
#include "CounterSession.h"
#include "DemoData.h"
#include "DirectCentral.h"
#include "IniFile.h"
#include "PaymentRecorder.h"
#include "PgServer.h"
#include "RatioReporter.h"
#include "ScriptedDialogPort.h"
#include "Startup.h"
#include "clsPublicacaoRede.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QThread>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <map>
#include <memory>

namespace {

// Not in the central: the usual scan, a guide seen for the first time (demo kind 0426).
const QString kCode = QStringLiteral("81660000003124004262026113058888888888888888");

bool exec(QSqlDatabase& db, const QString& sql) {
    QSqlQuery q(db);
    if (q.exec(sql))
        return true;
    std::fprintf(stderr, "%s\n", qPrintable(q.lastError().text()));
    return false;
}

// The link's settings for a throwaway server's database.
CentralConfig centralConfig(const DbConfig& c) {
    CentralConfig cc;
    cc.host = c.host;
    cc.porta = c.port;
    cc.nome = c.name;
    cc.usuario = c.user;
    return cc;
}

// A central with `rows` codes: the program makes its tables, the server fills them.
DbConfig seededCentral(qint64 rows) {
    const DbConfig c = PgServer::instance().freshDatabase();
    {
        ScriptedDialogPort dialogs;
        SystemClock clock;
        ErrorLog log(dialogs, clock, QDir::tempPath());
        CentralLink link(log, clock);
        if (!link.conectar(centralConfig(c), 0))
            std::fprintf(stderr, "%s\n", qPrintable(link.problema()));
    }
    QElapsedTimer t;
    t.start();
    {
        QSqlDatabase db =
            QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), QStringLiteral("seed"));
        db.setHostName(c.host);
        db.setPort(c.port);
        db.setDatabaseName(c.name);
        db.setUserName(c.user);
        db.open();
        exec(db, QStringLiteral("DROP INDEX recebimentos1_codbarra_unico"));
        exec(db, QStringLiteral("INSERT INTO RECEBIMENTOS1 (CODBARRA, GUICHE, ORIGEM, AUTENTICA) "
                                "SELECT '8' || lpad(g::text, 43, '0'), 'A', 'bench', g % 30000 "
                                "FROM generate_series(1, %1) AS g")
                     .arg(rows));
        exec(db, QStringLiteral("CREATE UNIQUE INDEX recebimentos1_codbarra_unico ON "
                                "RECEBIMENTOS1 (CODBARRA)"));
        exec(db, QStringLiteral("VACUUM ANALYZE RECEBIMENTOS1"));
        // The rows on disk now, not while a lookup is being timed.
        exec(db, QStringLiteral("CHECKPOINT"));
    }
    QSqlDatabase::removeDatabase(QStringLiteral("seed"));
    std::fprintf(stderr, "central with %lld codes made in %.1f s\n", static_cast<long long>(rows),
                 t.elapsed() / 1000.0);
    return c;
}

// One counter's folder whose [Rede] names the central (or a port nothing listens on).
struct Counter {
    QTemporaryDir dir;
    ScriptedDialogPort dialogs;
    FixedClock clock{QDateTime(QDate(2026, 11, 23), QTime(9, 0))};
    std::unique_ptr<AppContext> ctx;

    Counter(const DbConfig& central, int port = 0) {
        CentralAccess::registrar();
        ctx = std::make_unique<AppContext>(dir.path(), dialogs, clock);
        Startup::Abre_conexao(*ctx, true);
        DemoData::seed(*ctx, nullptr, nullptr);
        const QString ini = ctx->iniPath();
        IniFile::write({{QStringLiteral("Rede"), QStringLiteral("host"), central.host},
                        {QStringLiteral("Rede"), QStringLiteral("porta"),
                         QString::number(port ? port : central.port)},
                        {QStringLiteral("Rede"), QStringLiteral("nome"), central.name},
                        {QStringLiteral("Rede"), QStringLiteral("usuario"), central.user}},
                       ini);
        ctx->reloadSettings();
        ctx->settings.rede = 1;
    }
};

std::map<qint64, DbConfig>& centrals() {
    static std::map<qint64, DbConfig> m;
    return m;
}

const DbConfig& central(qint64 rows) {
    auto it = centrals().find(rows);
    if (it == centrals().end())
        it = centrals().emplace(rows, seededCentral(rows)).first;
    return it->second;
}

// The lookup as a command makes it: in the caller's thread, over its own connection.
void BM_ConsultaRedeComando(benchmark::State& state) {
    Counter c(central(state.range(0)));
    DirectCentral rede(*c.ctx);
    if (!rede.ativa())
        state.SkipWithError("central not reached");
    for (auto _ : state)
        if (rede.recebida(kCode).value_or(true))
            state.SkipWithError("lookup failed");
}

// The lookup as the counter screen makes it: handed to the link's thread and waited for.
void BM_ConsultaRedeTela(benchmark::State& state) {
    Counter c(central(state.range(0)));
    BackgroundCentral rede(*c.ctx);
    if (!rede.aguardarPrimeiraVerificacao(10000) || !rede.ativa())
        state.SkipWithError("central not reached");
    for (auto _ : state)
        if (rede.recebida(kCode).value_or(true))
            state.SkipWithError("lookup failed");
}

// A whole scan on the counter screen with the network check on: local refusals, the central,
// the kind lookup and the decoding. Range 0 turns the check off; range -1 points the central at
// a port nothing listens on.
void BM_LeituraComRede(benchmark::State& state) {
    const qint64 rows = state.range(0);
    int closed = 0;
    if (rows < 0) {
        QTcpServer probe;
        probe.listen(QHostAddress::LocalHost, 0);
        closed = probe.serverPort();
    }
    Counter c(central(rows > 0 ? rows : 10000), closed);
    if (rows == 0)
        c.ctx->settings.rede = 0;
    auto rede = std::make_shared<BackgroundCentral>(*c.ctx);
    rede->aguardarPrimeiraVerificacao(10000);
    c.ctx->rede = rede;
    BarcodeReader reader(*c.ctx);
    for (auto _ : state) {
        const ReadingDecision d = reader.Leitura_codigo_barras(kCode, QDate(2026, 11, 23), {});
        if (d.outcome != ReadingDecision::Outcome::Aceito || d.showNetworkLabel != (rows < 0))
            state.SkipWithError("unexpected reading");
    }
    state.SetLabel(rows == 0 ? "rede desligada" : rows < 0 ? "central inacessivel" : "");
    c.ctx->rede.reset();
}

// One customer's payment of 10 guides, recorded: without a central (range 0), with the claim at
// the central and the send inline as a command does (1), and as the counter screen does, the
// claim waited for and the send left to the link's thread (2). Every iteration pays new guides.
void BM_PagamentoDezGuias(benchmark::State& state) {
    const qint64 mode = state.range(0);
    Counter c(central(10000));
    if (mode == 0)
        IniFile::write({{QStringLiteral("Rede"), QStringLiteral("host"), QString()}},
                       c.ctx->iniPath());
    c.ctx->workingDate = QDate(2026, 11, 23);
    c.ctx->userName = QStringLiteral("ANA");
    CounterSession session(*c.ctx, nullptr);
    session.day().abrir();
    std::shared_ptr<BackgroundCentral> screen;
    if (mode == 2) {
        screen = std::make_shared<BackgroundCentral>(*c.ctx);
        screen->aguardarPrimeiraVerificacao(10000);
        c.ctx->rede = screen;
    } else if (mode == 1 && !(CentralAccess::of(*c.ctx) && CentralAccess::of(*c.ctx)->ativa())) {
        state.SkipWithError("central not reached");
    }
    static qint64 serial = 0;
    for (auto _ : state) {
        CustomerList list;
        for (int i = 0; i < 10; ++i) {
            CustomerItem item;
            item.tipo = 1;
            item.codbarra = QStringLiteral("9%1").arg(++serial, 43, 10, QLatin1Char('0'));
            item.valor = Money::fromCents(1005);
            list.append(item);
        }
        if (!PaymentRecorder::record(*c.ctx, session.day().movimento(), list))
            state.SkipWithError("payment not recorded");
        if (screen) {
            // The next customer comes after the link's thread has sent this one, as at a real
            // counter: its own write to this database is not timed as the next payment's wait.
            state.PauseTiming();
            QElapsedTimer sent;
            sent.start();
            while (clsPublicacaoRede::resumo(c.ctx->db)
                           .value_or(clsPublicacaoRede::Resumo{})
                           .pendentes > 0 &&
                   !sent.hasExpired(5000))
                QThread::msleep(1);
            state.ResumeTiming();
        }
        c.dialogs.clear();
    }
    state.SetLabel(mode == 0 ? "sem rede" : mode == 1 ? "reserva, comando" : "reserva, tela");
    c.ctx->rede.reset();
}

// The claim alone, as a command makes it: 10 new guides claimed at the central in one
// transaction, which the payment above waits for before it records.
void BM_ReservaDezGuias(benchmark::State& state) {
    Counter c(central(10000));
    DirectCentral rede(*c.ctx);
    if (!rede.ativa())
        state.SkipWithError("central not reached");
    static qint64 serial = 0;
    for (auto _ : state) {
        QStringList codes;
        for (int i = 0; i < 10; ++i)
            codes << QStringLiteral("7%1").arg(++serial, 43, 10, QLatin1Char('0'));
        if (rede.reservar(codes, QStringLiteral("bench"), QStringLiteral("A")).estado !=
            ReservaRede::Estado::Reservada)
            state.SkipWithError("claim refused");
    }
}

// 1 000 000 codes from a text file into an empty central, in batches of 10 000.
void BM_ImportarMilhao(benchmark::State& state) {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("codigos.txt"));
    {
        QFile f(path);
        f.open(QIODevice::WriteOnly);
        for (qint64 i = 0; i < state.range(0); ++i)
            f.write(QStringLiteral("7%1\r\n").arg(i, 43, 10, QLatin1Char('0')).toLatin1());
    }
    const DbConfig c = PgServer::instance().freshDatabase();
    ScriptedDialogPort dialogs;
    SystemClock clock;
    ErrorLog log(dialogs, clock, dir.path());
    CentralLink link(log, clock);
    if (!link.conectar(centralConfig(c), 0))
        state.SkipWithError("central not reached");
    for (auto _ : state) {
        const auto r = CentralImport::importar(link, log, path, {});
        if (!r.ok || r.importados != state.range(0))
            state.SkipWithError("import failed");
    }
}

} // namespace

BENCHMARK(BM_ConsultaRedeComando)->Arg(10000)->Arg(10000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ConsultaRedeTela)->Arg(10000)->Arg(10000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_LeituraComRede)
    ->Arg(10000)
    ->Arg(10000000)
    ->Arg(0)
    ->Arg(-1)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_PagamentoDezGuias)
    ->Arg(0)
    ->Arg(1)
    ->Arg(2)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReservaDezGuias)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ImportarMilhao)->Arg(1000000)->Iterations(1)->UseRealTime()->Unit(benchmark::kSecond);

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    if (!PgServer::instance().ok()) {
        std::fprintf(stderr, "PostgreSQL: %s\n", qPrintable(PgServer::instance().error()));
        return 1;
    }
    benchmark::Initialize(&argc, argv);
    // Both centrals are made before anything is timed, so that no figure pays for the other's
    // writes still on their way to disk.
    central(10000);
    central(10000000);
    RatioReporter reporter("10000", "10000000", 2);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
