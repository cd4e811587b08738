#include "Startup.h"

#include "AppContext.h"
#include "DialogPort.h"
#include "Schema.h"

#include <QFileInfo>

bool Startup::Abre_conexao(AppContext& ctx, bool create, QString* detail) {
    const DbConfig config = DbConfig::fromIni(ctx.folder);
    if (config.backend == DbBackend::SQLite && !create && !QFileInfo::exists(config.sqlitePath)) {
        if (detail)
            *detail = QStringLiteral("O arquivo %1 não existe.").arg(config.describe());
        return false;
    }
    if (!ctx.db.open(config)) {
        if (detail)
            *detail = QStringLiteral("Não foi possível abrir %1: %2")
                          .arg(config.describe(), ctx.db.lastError());
        return false;
    }
    QString message;
    if (Schema::migrate(ctx.db, &message) != Schema::Result::Ok) {
        ctx.db.close();
        if (detail)
            *detail = message;
        return false;
    }
    return true;
}

bool Startup::Carrega_config(AppContext& ctx) {
    return ctx.reloadSettings();
}

void Startup::run(AppContext& ctx) {
    QString detail;
    if (!Abre_conexao(ctx, false, &detail)) {
        ctx.dialogs.message(QStringLiteral("Tolvane"),
                            QStringLiteral("Erro ao conectar banco de dados!!!"), DialogIcon::None,
                            DialogButtons::Ok);
        if (!detail.isEmpty())
            ctx.dialogs.message(QStringLiteral("Aviso"), detail, DialogIcon::Critical,
                                DialogButtons::Ok);
    }
    if (!Carrega_config(ctx))
        ctx.dialogs.message(QStringLiteral("Tolvane"),
                            QStringLiteral("Erro ao carregar váriaveis banco de dados!!!"),
                            DialogIcon::None, DialogButtons::Ok);
}
