// Counter figures: login among 50 and 200 operators, recording a 10-item payment on SQLite, and
// start-up to a usable counter screen.
#include "AppContext.h"
#include "Clock.h"
#include "CounterSession.h"
#include "DemoData.h"
#include "IniFile.h"
#include "Login.h"
#include "PasswordHash.h"
#include "ScriptedDialogPort.h"
#include "Startup.h"
#include "clsUsuarios.h"
#include "frmFrente.h"

#include <QApplication>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

struct Folder {
    QTemporaryDir dir;
    ScriptedDialogPort dialogs;
    FixedClock clock{QDateTime(QDate(2026, 11, 23), QTime(9, 0))};
    std::unique_ptr<AppContext> ctx;
    Folder() {
        ctx = std::make_unique<AppContext>(dir.path(), dialogs, clock);
        Startup::Abre_conexao(*ctx, true);
        DemoData::seed(*ctx, nullptr, nullptr);
        ctx->reloadSettings();
        ctx->workingDate = clock.today();
    }
};

// Login among N operators, each with a hash of the current rounds: every one is checked, on
// every core. Real time is what the operator waits; the process time adds up all cores.
void BM_Login(benchmark::State& state) {
    Folder f;
    const int operators = int(state.range(0));
    for (int i = 0; i < operators; ++i) {
        clsUsuarios u(f.ctx->db);
        u.NOME = QStringLiteral("OPERADOR %1").arg(i);
        u.SENHA = PasswordHash::hash(QStringLiteral("senha%1").arg(i));
        u.TIPO = QStringLiteral("USER");
        u.SQLInsert(1);
    }
    const QString senha = QStringLiteral("senha%1").arg(operators / 2);
    for (auto _ : state)
        if (!Login::Valida_senha(*f.ctx, senha))
            state.SkipWithError("login refused");
}
BENCHMARK(BM_Login)
    ->Arg(50)
    ->Arg(200)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3)
    ->UseRealTime()
    ->MeasureProcessCPUTime();

void BM_RecordTenItems(benchmark::State& state) {
    Folder f;
    CounterSession s(*f.ctx, nullptr);
    s.day().abrir();
    int n = 0;
    for (auto _ : state) {
        state.PauseTiming();
        for (int i = 0; i < 10; ++i) {
            CustomerItem it;
            it.tipo = 1;
            it.descricao = QStringLiteral("IPTU");
            it.valor = Money::fromCents(1000 + i);
            it.codbarra = QStringLiteral("8%1").arg(++n, 43, 10, QLatin1Char('0'));
            s.list().append(it);
        }
        state.ResumeTiming();
        benchmark::DoNotOptimize(s.gravar());
    }
}
BENCHMARK(BM_RecordTenItems)->Unit(benchmark::kMillisecond);

void BM_StartupToCounterScreen(benchmark::State& state) {
    Folder seeded; // a folder with its database, as on a working day
    const QString folder = seeded.dir.path();
    seeded.ctx.reset();
    for (auto _ : state) {
        ScriptedDialogPort dialogs;
        SystemClock clock;
        AppContext ctx(folder, dialogs, clock);
        Startup::run(ctx);
        ctx.workingDate = QDate(2026, 11, 23);
        CounterSession session(ctx, nullptr);
        session.day().abrir();
        frmFrente form(session, false);
        form.show();
        QApplication::processEvents();
        benchmark::DoNotOptimize(form.isVisible());
    }
}
BENCHMARK(BM_StartupToCounterScreen)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
