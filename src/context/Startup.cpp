#include "Startup.h"

#include "ActLog.h"
#include "AppContext.h"
#include "CheckRecord.h"
#include "Clock.h"
#include "DatabaseBackup.h"
#include "DatabaseCheck.h"
#include "DialogPort.h"
#include "IniFile.h"
#include "PrivateFiles.h"
#include "Schema.h"
#include "SystemTexts.h"
#include "Transaction.h"
#include "clsGuiche.h"
#include "clsMovimento.h"

#include <QDir>
#include <QFileInfo>
#include <memory>

namespace {

using OpenMode = clsDataAccess::OpenMode;

// The smallest SQLite database is one page of 512 bytes; anything shorter is no database.
constexpr qint64 kSmallestDatabase = 512;

bool fail(AppContext& ctx, QString* detail, const QString& text) {
    ctx.db.close();
    if (detail)
        *detail = text;
    return false;
}

// The file itself, before SQLite sees it: SQLite would take an empty file for a new database.
bool fileUsable(const DbConfig& config, OpenMode mode, QString* why) {
    const QFileInfo file(config.sqlitePath);
    const QString path = QDir::toNativeSeparators(config.sqlitePath);
    if (!file.exists()) {
        if (mode == OpenMode::Create)
            return true;
        *why = SystemTexts::text(SystemText::BancoNaoExiste).arg(path);
        return false;
    }
    if (!file.isFile()) {
        *why = SystemTexts::text(SystemText::BancoNaoArquivoComum).arg(path);
        return false;
    }
    if (file.size() < kSmallestDatabase) {
        *why = SystemTexts::text(SystemText::BancoCortado)
                   .arg(path, QString::number(file.size()),
                        SystemTexts::text(SystemText::DanificadoConselho));
        return false;
    }
    return true;
}

// The database belongs to the counter that used it first; another counter is refused once a cash
// day has been opened in it. Before that (a folder just prepared) the counter may still be
// renumbered in Config.ini, and the database follows.
bool claimCounter(AppContext& ctx, QString* detail) {
    const QString mine = ctx.option(QStringLiteral("Export"), QStringLiteral("guiche")).trimmed();
    {
        // The usual case reads only: no write lock, so no wait for a whole-file check running.
        clsGuiche owner(ctx.db);
        if (owner.SQLSelect() ? owner.GUICHE.trimmed().compare(mine, Qt::CaseInsensitive) == 0
                              : mine.isEmpty())
            return true;
    }
    Transaction tx(ctx.db);
    clsGuiche owner(ctx.db);
    if (!tx.ok())
        return fail(ctx, detail, ctx.db.lastError());
    if (owner.SQLSelect()) {
        if (owner.GUICHE.trimmed().compare(mine, Qt::CaseInsensitive) == 0)
            return true;
        if (!mine.isEmpty() && clsMovimento::contar(ctx.db) == 0) {
            owner.GUICHE = mine;
            owner.DESDE = ctx.clock.today().toString(Qt::ISODate);
            if (!owner.gravar() || !tx.commit())
                return fail(ctx, detail, ctx.db.lastError());
            return true;
        }
        return fail(ctx, detail,
                    SystemTexts::text(SystemText::BancoDeOutroGuiche)
                        .arg(owner.GUICHE, mine.isEmpty() ? QStringLiteral("guichê sem número")
                                                          : QStringLiteral("guichê ") + mine));
    }
    if (mine.isEmpty())
        return true; // claimed by the first counter that has a number
    owner.GUICHE = mine;
    owner.DESDE = ctx.clock.today().toString(Qt::ISODate);
    if (!owner.SQLInsert() || !tx.commit())
        return fail(ctx, detail, ctx.db.lastError());
    return true;
}

// A folder of the settings ([Export] Path2, Path3), relative to the program's folder.
QString settingsFolder(const AppContext& ctx, const char* key) {
    const QString set = QDir::fromNativeSeparators(
        ctx.option(QStringLiteral("Export"), QLatin1String(key)).trimmed());
    if (set.isEmpty())
        return ctx.folder;
    return QDir::isRelativePath(set) ? QDir(ctx.folder).filePath(set) : set;
}

// Files of `folder` matching `patterns` closed to the account (a folder of the program's own
// is closed too; a shared one set in Config.ini keeps its mode).
void secureFolderFiles(const AppContext& ctx, const QString& folder, const QStringList& patterns) {
    const QDir dir(folder);
    if (!dir.exists())
        return;
    const QString root = QFileInfo(ctx.folder).canonicalFilePath() + QLatin1Char('/');
    if (QFileInfo(folder).canonicalFilePath().startsWith(root))
        PrivateFiles::secureFolder(folder);
    for (const QString& name : dir.entryList(patterns, QDir::Files | QDir::NoSymLinks))
        PrivateFiles::secureFile(dir.filePath(name));
}

// What is known of the file before SQLite opens it.
struct CheckState {
    bool existed = false;
    bool asLeft = false;
    bool uncleanStop = false;
};

void secureFiles(AppContext& ctx) {
    for (const QString& name : {QStringLiteral("Config.ini"), QStringLiteral("Log.ini")})
        PrivateFiles::secureFile(ctx.filePath(name));
    secureFolderFiles(ctx, settingsFolder(ctx, "Path3"), {QStringLiteral("Receb_*.txt")});
    secureFolderFiles(ctx, settingsFolder(ctx, "Path2"), {QStringLiteral("Estorno_*.txt")});
    if (ctx.db.backend() != DbBackend::SQLite)
        return;
    for (const QString& suffix : {QString(), QStringLiteral("-wal"), QStringLiteral("-shm")})
        PrivateFiles::secureFile(ctx.db.config().sqlitePath + suffix);
    // The copies hold every receipt; what a copy cut short left behind goes.
    DatabaseBackup::removeLeftovers(ctx.copiesFolder(), ctx.clock.now());
    secureFolderFiles(ctx, ctx.copiesFolder(), {QStringLiteral("*")});
}

// The cheap checks always; the whole file where the rule asks for it (see CheckRecord).
bool checkFile(AppContext& ctx, std::unique_ptr<CheckRecord> record, const CheckState& state,
               Startup::Check check, QString* detail) {
    const QString where = ctx.db.config().describe();
    if (!record) { // a server keeps its own pages: it only has to answer
        const DatabaseCheck::Result r = DatabaseCheck::run(ctx.db, DatabaseCheck::Depth::Quick);
        return r.ok || fail(ctx, detail, DatabaseCheck::damagedText(where, r));
    }
    if (!state.existed) {
        record->wholeFileSound(ctx.clock.now()); // made just now, by this program
    } else {
        DatabaseCheck::Result r = DatabaseCheck::catalog(ctx.db);
        if (!r.ok) {
            record->damaged(QString());
            return fail(ctx, detail, DatabaseCheck::damagedText(where, r));
        }
        const bool older = Schema::versionOf(ctx.db) < Schema::currentVersion(); // a migration
        const bool whole =
            check != Startup::Check::Cheap || !state.asLeft || state.uncleanStop || older;
        if (!whole) {
            record->trusted();
        } else if (check == Startup::Check::Background && !ctx.db.readOnly() && !older) {
            record->pending(DatabaseCheck::wholeFileInBackground(ctx.db.config().sqlitePath),
                            ctx.clock.now(), [where](const DatabaseCheck::Result& found) {
                                return DatabaseCheck::damagedText(where, found);
                            });
        } else {
            r = DatabaseCheck::wholeFile(ctx.db.database(), ctx.db.config().sqlitePath);
            if (!r.ok) {
                record->damaged(QString());
                return fail(ctx, detail, DatabaseCheck::damagedText(where, r));
            }
            record->wholeFileSound(ctx.clock.now());
        }
    }
    if (!ctx.db.readOnly())
        record->beginSession();
    ctx.db.attachRecord(std::move(record));
    return true;
}

bool openDatabase(AppContext& ctx, OpenMode mode, QString* detail, bool claim = true,
                  Startup::Check check = Startup::Check::Cheap) {
    const DbConfig config = DbConfig::fromIni(ctx.folder);
    QString why;
    if (config.backend == DbBackend::SQLite && !fileUsable(config, mode, &why))
        return fail(ctx, detail, why);
    std::unique_ptr<CheckRecord> record;
    CheckState state;
    if (config.backend == DbBackend::SQLite) {
        // Read before SQLite touches the file.
        record = std::make_unique<CheckRecord>(config.sqlitePath);
        state.existed = QFileInfo::exists(config.sqlitePath);
        if (state.existed) {
            const DatabaseCheck::Result header = DatabaseCheck::header(config.sqlitePath);
            if (!header.ok)
                return fail(ctx, detail, DatabaseCheck::damagedText(config.describe(), header));
            state.asLeft = record->fileAsLeft();
            state.uncleanStop = record->uncleanStopFound();
        }
    }
    if (!ctx.db.open(config, mode))
        return fail(ctx, detail,
                    QStringLiteral("Não foi possível abrir %1: %2")
                        .arg(config.describe(), ctx.db.lastError()));
    if (!checkFile(ctx, std::move(record), state, check, detail))
        return false;
    if (mode != OpenMode::Create && Schema::versionOf(ctx.db) == 0)
        return fail(ctx, detail,
                    QStringLiteral("O banco de dados %1 não tem as tabelas do Tolvane. Confira a "
                                   "pasta e a seção [Banco] do Config.ini; para começar um banco "
                                   "novo use tolvane iniciar.")
                        .arg(config.describe()));
    QString message;
    QStringList notes;
    Schema::Legacy legacy;
    // The settings' safe balance is read only by the update that moves it into the database.
    if (Schema::versionOf(ctx.db) < Schema::currentVersion())
        legacy.cofre = ctx.option(QStringLiteral("Reserva"), QStringLiteral("cofre"));
    if (Schema::migrate(ctx.db, &message, &notes, -1, legacy) != Schema::Result::Ok)
        return fail(ctx, detail, message);
    if (!notes.isEmpty()) {
        for (const QString& n : notes)
            ctx.errors.append(QStringLiteral("Atualização do banco de dados"),
                              {0, n, QStringLiteral("Schema")});
        tell(ctx.dialogs,
             SystemTexts::notice(SystemText::RecebimentosRepetidos).arg(qint64(notes.size())));
    }
    if (mode != OpenMode::ReadOnly && claim && !claimCounter(ctx, detail))
        return false;
    if (ctx.db.walIgnored())
        tell(ctx.dialogs, SystemTexts::notice(SystemText::PastaSomenteLeitura));
    if (mode != OpenMode::ReadOnly)
        secureFiles(ctx);
    return true;
}

} // namespace

bool Startup::Abre_conexao(AppContext& ctx, bool create, QString* detail, Check check) {
    return openDatabase(ctx, create ? OpenMode::Create : OpenMode::ReadWrite, detail, true, check);
}

bool Startup::abrirConsulta(AppContext& ctx, QString* detail, Check check) {
    return openDatabase(ctx, OpenMode::ReadOnly, detail, true, check);
}

bool Startup::abrirSemGuiche(AppContext& ctx, QString* detail) {
    return openDatabase(ctx, OpenMode::ReadWrite, detail, false);
}

bool Startup::assumirGuiche(AppContext& ctx, QString* detail, const QString& letra) {
    const QString nova = letra.trimmed().toUpper();
    if (!letra.isEmpty() && (nova.size() != 1 || !nova[0].isLetterOrNumber()))
        return fail(ctx, detail, SystemTexts::text(SystemText::GuicheUmaLetra));
    const QString mine =
        letra.isEmpty() ? ctx.option(QStringLiteral("Export"), QStringLiteral("guiche")).trimmed()
                        : nova;
    if (mine.isEmpty())
        return fail(ctx, detail, SystemTexts::text(SystemText::DefinaGuiche));
    Transaction tx(ctx.db);
    const auto abertos = clsMovimento::abertos(ctx.db);
    if (!tx.ok() || !abertos)
        return fail(ctx, detail, ctx.db.lastError());
    // The letter is in every stamp of the day: it changes between days only.
    if (*abertos > 0)
        return fail(ctx, detail, SystemTexts::text(SystemText::MovimentoAbertoGuiche));
    clsGuiche owner(ctx.db);
    owner.GUICHE = mine;
    owner.DESDE = ctx.clock.today().toString(Qt::ISODate);
    if (!owner.gravar() || !ActLog::gravar(ctx, Act::AssumirGuiche, QStringLiteral("Guiche"), 1))
        return fail(ctx, detail, ctx.db.lastError());
    if (!letra.isEmpty() &&
        !IniFile::write(QStringLiteral("Export"), QStringLiteral("guiche"), mine, ctx.iniPath()))
        return fail(ctx, detail,
                    SystemTexts::text(SystemText::ArquivoNaoGravado)
                        .arg(QDir::toNativeSeparators(ctx.iniPath())));
    if (!tx.commit())
        return fail(ctx, detail, ctx.db.lastError());
    ctx.reloadSettings();
    return true;
}

bool Startup::Carrega_config(AppContext& ctx) {
    return ctx.reloadSettings();
}

// The database file, or the folder it should be in, is not there: the start cannot go on.
static bool databaseMissing(const AppContext& ctx) {
    const DbConfig config = DbConfig::fromIni(ctx.folder);
    if (!QFileInfo(ctx.folder).isDir())
        return true;
    return config.backend == DbBackend::SQLite && !QFileInfo::exists(config.sqlitePath);
}

bool Startup::run(AppContext& ctx) {
    if (databaseMissing(ctx)) {
        QString detail;
        Abre_conexao(ctx, false, &detail); // only for the reason, which it words
        const Notice erro = SystemTexts::notice(SystemText::ErroAberturaSistema);
        tell(ctx.dialogs, erro);
        tell(ctx.dialogs, erro.with(detail)); // nothing when there is no reason
        return false;
    }
    QString detail;
    // The whole file is read in the background: the counter is usable meanwhile, and its first
    // write waits for the answer.
    bool opened = Abre_conexao(ctx, false, &detail, Check::Background);
    // A folder on read-only media still lets the operator consult its days.
    if (!opened && !QFileInfo(ctx.folder).isWritable() && abrirConsulta(ctx))
        opened = true;
    if (!opened) {
        tell(ctx.dialogs, SystemTexts::notice(SystemText::ErroConectarBanco));
        if (!detail.isEmpty())
            ctx.dialogs.message(SystemTexts::aviso(), detail, DialogIcon::Critical,
                                DialogButtons::Ok);
    }
    if (const QString logProblem = ctx.errors.logProblem(); !logProblem.isEmpty())
        ctx.dialogs.message(SystemTexts::aviso(), logProblem, DialogIcon::Critical,
                            DialogButtons::Ok);
    if (!Carrega_config(ctx)) {
        tell(ctx.dialogs, SystemTexts::notice(SystemText::ErroCarregarVariaveis));
        ctx.dialogs.message(SystemTexts::aviso(), IniFile::readProblem(ctx.iniPath()),
                            DialogIcon::Critical, DialogButtons::Ok);
    }
    return true;
}
