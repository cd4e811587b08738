// Counter figures: login among 50 and 200 operators, recording a 10-item payment on SQLite,
// start-up to a usable counter screen, and the counter screen's work per payment on a day of
// 1 000 and of 100 000 receipts (the ratio between the two is printed at the end).
#include "AppContext.h"
#include "Clock.h"
#include "CounterSession.h"
#include "DemoData.h"
#include "IniFile.h"
#include "LancadosModel.h"
#include "Login.h"
#include "PasswordHash.h"
#include "RatioReporter.h"
#include "ScriptedDialogPort.h"
#include "Startup.h"
#include "Transaction.h"
#include "clsRecebimentos.h"
#include "clsUsuarios.h"
#include "frmFrente.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTreeView>
#include <benchmark/benchmark.h>
#include <map>

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
        u.inserirNovo();
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

// A day that already has `n` receipts.
struct Day : Folder {
    std::unique_ptr<CounterSession> session;
    explicit Day(int n) {
        session = std::make_unique<CounterSession>(*ctx, nullptr);
        session->day().abrir();
        Transaction tx(ctx->db);
        for (int i = 1; i <= n; ++i) {
            clsRecebimentos r(ctx->db);
            r.AUTENTICA = static_cast<qint16>(i);
            r.IDMOVIMENTO = static_cast<qint16>(session->day().movimento().ID);
            r.TIPO = 1;
            r.VALOR = Money::fromCents(1000 + i % 977);
            r.CODBARRA = QStringLiteral("9%1").arg(i, 43, 10, QLatin1Char('0'));
            r.SQLInsert();
        }
        tx.commit();
    }
    void addItem(int n) {
        CustomerItem it;
        it.tipo = 1;
        it.descricao = QStringLiteral("IPTU");
        it.valor = Money::fromCents(2500);
        it.codbarra = QStringLiteral("8%1").arg(n, 43, 10, QLatin1Char('0'));
        session->list().append(it);
    }
};

// Enter on the counter screen with one item: the payment recorded, the day's list and totals
// brought up to date, the screen painted.
void BM_PaymentOnTheCounterScreen(benchmark::State& state) {
    Day day(int(state.range(0)));
    frmFrente form(*day.session, false);
    form.setScannerEnterWindow(0);
    form.show();
    QApplication::processEvents();
    auto* entry = form.findChild<QLineEdit*>(QStringLiteral("txtValorCodBarra"));
    int n = 0;
    for (auto _ : state) {
        state.PauseTiming();
        day.addItem(++n);
        state.ResumeTiming();
        QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
        QApplication::sendEvent(entry, &enter);
        QApplication::processEvents();
    }
}
BENCHMARK(BM_PaymentOnTheCounterScreen)
    ->Arg(1000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(200);

// The screen's own share: the day's list gains one row at the top and is painted.
void BM_DayListAfterPayment(benchmark::State& state) {
    Day day(int(state.range(0)));
    LancadosModel model(
        [&](qint32 before, int limit) { return day.session->lancados(before, limit); });
    model.reload();
    QTreeView view;
    view.setUniformRowHeights(true);
    view.setModel(&model);
    model.attach(&view);
    view.show();
    QApplication::processEvents();
    qint32 id = 10000000;
    for (auto _ : state) {
        model.addRecorded({{++id, 1, QStringLiteral("IPTU"), Money::fromCents(2500)}});
        view.scrollToTop();
        QApplication::processEvents();
    }
}
BENCHMARK(BM_DayListAfterPayment)->Arg(1000)->Arg(100000)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter("1000", "100000", 1.5);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
