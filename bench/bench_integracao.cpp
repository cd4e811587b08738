// The integration file of a day with 99 999 receipts (the most one day numbers) and a few
// withdrawals and payments, at full speed (no pause between records), from the database to the file
// on disk.
#include "AppContext.h"
#include "CashEntry.h"
#include "Clock.h"
#include "DemoData.h"
#include "IniFile.h"
#include "IntegrationFile.h"
#include "ScriptedDialogPort.h"
#include "Startup.h"
#include "clsMovimento.h"

#include <QCoreApplication>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

struct Day {
    QTemporaryDir dir;
    ScriptedDialogPort dialogs;
    FixedClock clock{QDateTime(QDate(2026, 11, 23), QTime(18, 0))};
    std::unique_ptr<AppContext> ctx;
    clsMovimento mov{*(ctx = std::make_unique<AppContext>(dir.path(), dialogs, clock), &ctx->db)};

    explicit Day(int receipts) {
        Startup::Abre_conexao(*ctx, true);
        DemoData::seed(*ctx, nullptr, nullptr);
        IniFile::write(QStringLiteral("Export"), QStringLiteral("guiche"), QStringLiteral("1"),
                       ctx->iniPath());
        ctx->reloadSettings();
        mov.MDATA = clock.today();
        mov.MOV = 1;
        mov.STATUS = QStringLiteral("ABERTO");
        mov.inserirNovo();
        QSqlDatabase db = ctx->db.database();
        db.transaction();
        QSqlQuery q(db);
        q.prepare(QStringLiteral("INSERT INTO Recebimentos (AUTENTICA, CODBARRA, IDMOVIMENTO, "
                                 "TIPO, VALOR) VALUES (?, ?, ?, 2, ?)"));
        for (int i = 0; i < receipts; ++i) {
            q.addBindValue(i + 1); // a day numbers its receipts 1..99999
            q.addBindValue(QStringLiteral("8166%1").arg(i, 40, 10, QLatin1Char('0')));
            q.addBindValue(mov.ID);
            q.addBindValue(qint64(1000 + i % 5000) * 100);
            if (!q.exec())
                qFatal("receipt %d not inserted", i);
        }
        db.commit();
        for (int i = 0; i < 20; ++i) {
            CashEntry e(*ctx, mov.ID, i % 2 ? EntryKind::Withdrawal : EntryKind::PaymentOut);
            e.incluirItens(QStringLiteral("EMPENHO %1").arg(i));
            e.gravarItem(100, QString(), Money::fromReais(100));
            e.gravarItem(101, QStringLiteral("%1").arg(i), Money::fromReais(50));
        }
    }
};

void BM_IntegrationFile(benchmark::State& state) {
    Day day(int(state.range(0)));
    IntegrationFile file(*day.ctx);
    file.pausaMs = 0;
    const QString path = day.dir.filePath("dia.INT");
    qint64 size = 0;
    for (auto _ : state) {
        const auto r = file.gerar(day.mov, Money::fromReais(1000), path);
        if (!r.written || !r.erros.isEmpty())
            state.SkipWithError("the file was not written whole");
        // The program never writes over a file, so each round starts from none.
        state.PauseTiming();
        size = QFile(path).size();
        QFile::remove(path);
        day.dialogs.clear();
        state.ResumeTiming();
    }
    state.counters["registros"] = double(size / 202);
}
BENCHMARK(BM_IntegrationFile)->Arg(99999)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
