// The two bank files of a large movement, as the commands write them (no pause): listing the
// receipts, building every record, writing, syncing and renaming the file. The Febraban file
// takes the day's 50 000 guides; the CNAB file its most, 49 999 slips (99 998 detail records).
#include "AppContext.h"
#include "CheckDigits.h"
#include "Clock.h"
#include "CnabExport.h"
#include "DemoData.h"
#include "FebrabanExport.h"
#include "IniFile.h"
#include "ScriptedDialogPort.h"
#include "Startup.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

constexpr int kReceipts = 99999;

struct Seeded {
    QTemporaryDir dir;
    ScriptedDialogPort dialogs;
    FixedClock clock{QDateTime(QDate(2026, 11, 23), QTime(9, 0))};
    std::unique_ptr<AppContext> ctx;

    Seeded() {
        ctx = std::make_unique<AppContext>(dir.path(), dialogs, clock);
        const QList<QPair<const char*, const char*>> options = {{"Path3", "saida"},
                                                                {"caminho_febraban", "saida"},
                                                                {"cod_banco_cnab", "104"},
                                                                {"nome_banco", "BANCO"},
                                                                {"cedente_agua", "123456"},
                                                                {"agencia", "1234"},
                                                                {"dv", "7"},
                                                                {"cnpj", "12345678000199"},
                                                                {"guiche", "1"}};
        for (const auto& [k, v] : options)
            IniFile::write(QStringLiteral("Export"), QLatin1String(k), QLatin1String(v),
                           ctx->iniPath());
        QDir(dir.path()).mkpath(QStringLiteral("saida"));
        Startup::Abre_conexao(*ctx, true);
        DemoData::seed(*ctx, nullptr, nullptr);
        ctx->reloadSettings();
        QSqlDatabase db = ctx->db.database();
        db.transaction();
        QSqlQuery q(db);
        q.prepare(QStringLiteral("INSERT INTO Recebimentos (AUTENTICA, CODBARRA, IDMOVIMENTO, "
                                 "TIPO, VALOR, EXPORT) VALUES (?, ?, 1, ?, ?, 0)"));
        // One day numbers its receipts 1..99999: the slips first, then the guides.
        for (int i = 0; i < kReceipts; ++i) {
            const QString body =
                QStringLiteral("00191651%1").arg(1000 + i % 5000, 10, 10, QLatin1Char('0')) +
                QStringLiteral("12345%1").arg(i, 20, 10, QLatin1Char('0'));
            const QString slip =
                body.left(4) + QString::number(Modulo11_boleto(body)) + body.mid(4);
            const QString guide =
                QStringLiteral("8166000000%1").arg(i % 90000 + 100, 5, 10, QLatin1Char('0')) +
                QStringLiteral("04262026113000000000%1").arg(i, 9, 10, QLatin1Char('0'));
            const bool isSlip = i < CnabExport::kMaximoRecebimentos;
            q.addBindValue(i + 1);
            q.addBindValue(isSlip ? slip : guide);
            q.addBindValue(isSlip ? 4 : 2);
            q.addBindValue(qint64(1000 + i % 5000) * 100 + (isSlip ? 50000 : 0));
            if (!q.exec())
                qFatal("receipt %d not inserted", i);
        }
        db.commit();
    }

    // Each run its own minute, so every file is a new one; the file is removed untimed.
    template <class Run> void measure(benchmark::State& state, Run run) {
        BankExport::Request rq;
        rq.idMovimento = 1;
        rq.movimento = QDate(2026, 11, 23);
        rq.codBanco = QStringLiteral("001");
        int minute = 0;
        for (auto _ : state) {
            clock.set(QDateTime(rq.movimento, QTime(9, 0)).addSecs(60 * ++minute));
            const BankExport::Result r = run(rq);
            state.PauseTiming();
            QFile::remove(r.arquivo);
            if (!r.ok) {
                state.SkipWithError(qPrintable(r.erros.join(QLatin1Char(' '))));
                break;
            }
            state.ResumeTiming();
        }
    }
};

Seeded& seeded() {
    static Seeded s;
    return s;
}

void BM_Cnab49999(benchmark::State& state) {
    seeded().measure(state, [](BankExport::Request rq) {
        rq.idcod = 4;
        return CnabExport::gerar(*seeded().ctx, rq);
    });
}
BENCHMARK(BM_Cnab49999)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_Febraban50k(benchmark::State& state) {
    seeded().measure(state, [](BankExport::Request rq) {
        rq.idcod = 2;
        return FebrabanExport::gerar(*seeded().ctx, rq);
    });
}
BENCHMARK(BM_Febraban50k)->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
