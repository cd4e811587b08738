// Reading one code (duplicate checks, kind lookup, decoding) with 1 000 and 1 000 000 receipts
// in the database.
#include "AppContext.h"
#include "BarcodeReader.h"
#include "Clock.h"
#include "DemoData.h"
#include "ScriptedDialogPort.h"
#include "Startup.h"

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <map>
#include <memory>

namespace {

struct Seeded {
    QTemporaryDir dir;
    ScriptedDialogPort dialogs;
    FixedClock clock{QDateTime(QDate(2026, 11, 23), QTime(9, 0))};
    std::unique_ptr<AppContext> ctx;

    explicit Seeded(int receipts) {
        ctx = std::make_unique<AppContext>(dir.path(), dialogs, clock);
        Startup::Abre_conexao(*ctx, true);
        DemoData::seed(*ctx, nullptr, nullptr);
        ctx->reloadSettings();
        QSqlDatabase db = ctx->db.database();
        db.transaction();
        QSqlQuery q(db);
        q.prepare(QStringLiteral("INSERT INTO Recebimentos (AUTENTICA, CODBARRA, IDMOVIMENTO, "
                                 "TIPO, VALOR) VALUES (?, ?, ?, 2, 10000)"));
        for (int i = 0; i < receipts; ++i) {
            q.addBindValue(1 + i % 30000); // a number is given once per movement
            q.addBindValue(QStringLiteral("8166%1").arg(i, 40, 10, QLatin1Char('0')));
            q.addBindValue(1 + i / 30000);
            q.exec();
        }
        QSqlQuery shared(db);
        shared.prepare(QStringLiteral("INSERT INTO RECEBIMENTOS1 (CODBARRA) VALUES (?)"));
        for (int i = 0; i < receipts; ++i) {
            shared.addBindValue(QStringLiteral("8167%1").arg(i, 40, 10, QLatin1Char('0')));
            shared.exec();
        }
        db.commit();
        ctx->settings.rede = 1; // both duplicate checks: local and the other counters'
    }
};

using Folders = std::map<int, std::unique_ptr<Seeded>>;

// One seeded folder per size, kept across the runs of that size and removed by main before the
// application object goes (its database connection needs Qt's registry).
void readCode(benchmark::State& state, Folders& folders) {
    auto& f = folders[int(state.range(0))];
    if (!f)
        f = std::make_unique<Seeded>(int(state.range(0)));
    BarcodeReader reader(*f->ctx);
    reader.networkAlive = [] { return true; };
    const QString code = QStringLiteral("81660000003124004262026113058888888888888888");
    for (auto _ : state) {
        const auto d = reader.Leitura_codigo_barras(code, QDate(2026, 11, 23), {});
        benchmark::DoNotOptimize(d.outcome);
    }
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    Folders folders;
    benchmark::RegisterBenchmark("BM_ReadCode",
                                 [&folders](benchmark::State& s) { readCode(s, folders); })
        ->Arg(1000)
        ->Arg(1000000)
        ->Unit(benchmark::kMicrosecond);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    folders.clear();
    return 0;
}
