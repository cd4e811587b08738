#include "FolderSetup.h"

#include "AppContext.h"
#include "PrivateFiles.h"
#include "Startup.h"
#include "SystemTexts.h"
#include "UserAccounts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

static void initResources() {
    Q_INIT_RESOURCE(tolvane_core);
}

namespace {

bool writeTemplate(AppContext& ctx) {
    initResources();
    QFile tpl(QStringLiteral(":/Config.ini"));
    QFile dst(ctx.iniPath());
    if (!tpl.open(QIODevice::ReadOnly) || !dst.open(QIODevice::NewOnly) ||
        dst.write(tpl.readAll()) < 0 || !dst.flush())
        return false;
    dst.close();
    PrivateFiles::secureFile(ctx.iniPath());
    return true;
}

Options::Values identityValues(const FolderSetup::Identity& id) {
    return {{QStringLiteral("Mensagem"), QStringLiteral("pref"), id.prefeitura},
            {QStringLiteral("Mensagem"), QStringLiteral("cabecalho"), id.cabecalho},
            {QStringLiteral("Export"), QStringLiteral("guiche"), id.guiche}};
}

} // namespace

FolderSetup::Prepared FolderSetup::prepare(AppContext& ctx, const Options::Values& settings) {
    Prepared p;
    const QString folder = ctx.folder;
    const bool existed = QFileInfo::exists(folder);
    if (!QDir().mkpath(folder)) {
        p.step = Step::FolderNotCreated;
        return p;
    }
    if (!existed)
        PrivateFiles::secureFolder(folder); // the counter's files are its account's alone
    {
        QTemporaryFile probe(QDir(folder).filePath(QStringLiteral(".tolvane-XXXXXX")));
        if (!probe.open()) {
            p.step = Step::FolderNotWritable;
            return p;
        }
    }
    if (!QFile::exists(ctx.iniPath())) {
        if (!writeTemplate(ctx)) {
            p.step = Step::ConfigNotWritten;
            return p;
        }
        p.configCreated = true;
        ctx.reloadSettings(); // the file just written; one already there was read at start
        if (!settings.isEmpty() &&
            !Options::gravar(ctx, settings, Options::Setup::NewFolder).ok()) {
            p.step = Step::ConfigNotWritten;
            return p;
        }
        // The folders the template names, so the options screen finds them in place.
        for (const char* key : {"Path1", "Path3", "caminho_febraban"}) {
            const QString f = ctx.option(QStringLiteral("Export"), QLatin1String(key)).trimmed();
            if (!f.isEmpty())
                QDir().mkpath(Options::resolve(ctx, f));
        }
    }
    if (!Startup::Abre_conexao(ctx, true, &p.detail))
        p.step = Step::Database;
    return p;
}

QString FolderSetup::message(const AppContext& ctx, const Prepared& p) {
    const QString folder = QDir::toNativeSeparators(ctx.folder);
    switch (p.step) {
    case Step::Ready:
        return {};
    case Step::FolderNotCreated:
        return SystemTexts::text(SystemText::PastaNaoCriada).arg(folder);
    case Step::FolderNotWritable:
        return SystemTexts::text(SystemText::PastaSemGravacao).arg(folder);
    case Step::ConfigNotWritten:
        return SystemTexts::text(SystemText::NaoFoiPossivelGravar)
            .arg(QDir::toNativeSeparators(ctx.iniPath()));
    case Step::Database:
        return QStringLiteral("Erro ao conectar banco de dados!!!\n") + p.detail;
    }
    return {};
}

bool FolderSetup::isNew(const QString& folder) {
    const QDir dir(folder);
    return !QFileInfo::exists(dir.filePath(QStringLiteral("Config.ini"))) &&
           !QFileInfo::exists(dir.filePath(QStringLiteral("caixa.db")));
}

FolderSetup::FirstRun FolderSetup::firstRun(AppContext& ctx, const Identity& id,
                                            const QString& senha, const QString& confirmacao) {
    FirstRun r;
    if (id.prefeitura.trimmed().isEmpty() || id.cabecalho.trimmed().isEmpty() ||
        id.guiche.trimmed().isEmpty() || senha.isEmpty()) {
        r.outcome = Outcome::MissingField;
        return r;
    }
    const Options::Values settings = identityValues(id);
    if ((r.problem = Options::check(ctx, settings, Options::Setup::NewFolder))) {
        r.outcome = Outcome::BadSetting;
        return r;
    }
    if (senha.size() < UserAccounts::kMinPassword) {
        r.outcome = Outcome::ShortPassword;
        return r;
    }
    if (senha != confirmacao) {
        r.outcome = Outcome::PasswordsDiffer;
        return r;
    }
    r.prepared = prepare(ctx, settings);
    if (!r.prepared.ok()) {
        r.outcome = Outcome::NotPrepared;
        return r;
    }
    UserAccounts::Input admin;
    admin.nome = QString::fromLatin1(kAdministrador);
    admin.senha = senha;
    admin.tipo = QStringLiteral("ADM");
    if (!UserAccounts::gravar(ctx, admin).ok())
        r.outcome = Outcome::AdminNotSaved;
    return r;
}

QString FolderSetup::message(const AppContext& ctx, const FirstRun& r) {
    switch (r.outcome) {
    case Outcome::Done:
        return {};
    case Outcome::MissingField:
        return SystemTexts::text(SystemText::CamposObrigatorios);
    case Outcome::BadSetting:
        return Options::message(*r.problem);
    case Outcome::PasswordsDiffer:
        return SystemTexts::text(SystemText::SenhaNaoConfere);
    case Outcome::ShortPassword:
        return SystemTexts::text(SystemText::SenhaCurta).arg(UserAccounts::kMinPassword);
    case Outcome::NotPrepared:
        return message(ctx, r.prepared);
    case Outcome::AdminNotSaved:
        return SystemTexts::text(SystemText::ErroGravarAdministrador);
    }
    return {};
}
