#include "Options.h"

#include "ActLog.h"
#include "AppContext.h"
#include "OutputPath.h"
#include "Settings.h"
#include "Skin.h"
#include "SystemTexts.h"
#include "Transaction.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>
#include <optional>

namespace {

using K = OptionCatalog::Kind;
using E = Options::Error;

bool isFlag(const QString& v) {
    return v == QLatin1String("0") || v == QLatin1String("1");
}

bool allDigits(const QString& v) {
    return std::all_of(v.begin(), v.end(),
                       [](QChar c) { return c.isDigit() && c.unicode() < 128; });
}

// Whether the program can create files in the folder (permissions alone do not tell on every
// file system, so a file is really created).
bool writable(const QString& folder) {
    QTemporaryFile probe(QDir(folder).filePath(QStringLiteral(".tolvane-XXXXXX")));
    return probe.open();
}

E folderError(const QString& path) {
    const QFileInfo fi(path);
    if (!fi.exists() || !fi.isDir())
        return E::FolderMissing;
    return writable(path) ? E::None : E::FolderNotWritable;
}

E textError(const QString& v) {
    if (v.size() > IniFile::kMaxValue)
        return E::TooLong;
    if (std::any_of(v.begin(), v.end(),
                    [](QChar c) { return c < QChar(0x20) || c == QChar(0x7F); }))
        return E::LineBreak;
    if (std::any_of(v.begin(), v.end(), [](QChar c) { return c.unicode() > 0xFF; }))
        return E::NotLatin1;
    return E::None;
}

E kindError(const AppContext& ctx, K kind, const QString& v, QString* detail,
            Options::Setup setup) {
    switch (kind) {
    case K::Text:
    case K::UpdateFolder:
    case K::Secret:
        return E::None;
    case K::Flag:
        return isFlag(v) ? E::None : E::Flag;
    case K::Folder:
        return v.isEmpty() ? E::None : folderError(Options::resolve(ctx, v));
    case K::File: {
        if (v.isEmpty())
            return E::None;
        // The sum files are rewritten whole: never over one of the counter's own files.
        const QString path = Options::resolve(ctx, v);
        if (OutputPath::isGuarded(path, ctx.ownFiles()) || !OutputPath::notRegular(path).isEmpty())
            return E::OwnFile;
        const E e = folderError(QFileInfo(path).absolutePath());
        return e == E::FolderMissing ? E::FileFolderMissing : e;
    }
    case K::Guiche:
        if (v.size() != 1 || !v[0].isLetterOrNumber())
            return E::Guiche;
        if (setup == Options::Setup::NewFolder)
            return E::None;
        // The letter is in every stamp and names the database's owner: it changes with the
        // database, by `guiche assumir`, and only between days.
        return v.compare(ctx.option(QStringLiteral("Export"), QStringLiteral("guiche")).trimmed(),
                         Qt::CaseInsensitive) == 0
                   ? E::None
                   : E::GuicheFixo;
    case K::MoneyKinds:
        return isMoneyKindList(v) ? E::None : E::MoneyKinds;
    case K::Cabecalho:
        return v.size() == 3 ? E::None : E::Cabecalho;
    case K::Juros:
        return v == QLatin1String("1") || v == QLatin1String("2") ? E::None : E::Juros;
    case K::Modelo:
        return v == QLatin1String("bematech") || v == QLatin1String("quattro") ||
                       v == QLatin1String("txt")
                   ? E::None
                   : E::Modelo;
    case K::Digits:
        return allDigits(v) ? E::None : E::Digits;
    case K::Number: {
        bool ok = v.isEmpty();
        if (!ok)
            v.toInt(&ok);
        return ok ? E::None : E::Number;
    }
    case K::Skin:
        if (v.isEmpty())
            return E::None;
        return Skin::read(Options::resolve(ctx, v), detail) ? E::None : E::Skin;
    case K::Fixed:
        return E::Fixed;
    }
    return E::None;
}

} // namespace

Options::Values Options::load(const QString& iniPath) {
    Values out;
    for (const OptionCatalog::Key& k : OptionCatalog::all())
        out.append({k.section, k.key, IniFile::read(k.section, k.key, iniPath)});
    return out;
}

QString Options::value(const Values& values, const QString& section, const QString& key) {
    for (const IniFile::Entry& e : values)
        if (e.section.compare(section, Qt::CaseInsensitive) == 0 &&
            e.key.compare(key, Qt::CaseInsensitive) == 0)
            return e.value;
    return {};
}

QString Options::withSeparator(const QString& folder) {
    if (folder.isEmpty() || folder.endsWith(QLatin1Char('/')) || folder.endsWith(QLatin1Char('\\')))
        return folder;
    return folder + QDir::separator();
}

QString Options::stored(OptionCatalog::Kind kind, const QString& value) {
    const QString v = value.trimmed();
    switch (kind) {
    case K::Folder:
    case K::UpdateFolder:
        return withSeparator(v);
    case K::Guiche:
        return v.toUpper();
    case K::Modelo:
        return v.toLower();
    case K::Secret:
        return value; // blanks may belong to a password
    default:
        return v;
    }
}

QString Options::resolve(const AppContext& ctx, const QString& path) {
    const QString p = QDir::fromNativeSeparators(path.trimmed());
    if (p.startsWith(QLatin1Char(':')) || !QDir::isRelativePath(p))
        return p;
    return QDir(ctx.folder).filePath(p);
}

QString Options::headerSwitch(bool on, const QString& current) {
    if (!on)
        return QStringLiteral("0");
    return headerSwitchOn(current) && current.trimmed() != QLatin1String("1") ? current.trimmed()
                                                                              : QStringLiteral("1");
}

bool Options::headerSwitchOn(const QString& current) {
    const QString v = current.trimmed();
    return !v.isEmpty() && v != QLatin1String("0");
}

std::optional<Options::Problem> Options::check(const AppContext& ctx, const Values& values,
                                               Setup setup) {
    for (const IniFile::Entry& e : values) {
        const OptionCatalog::Key* k = OptionCatalog::find(e.section, e.key);
        Problem p{E::None, e.section, e.key, e.value, {}};
        if (!k)
            p.error = E::UnknownKey;
        else if ((p.error = textError(e.value)) == E::None)
            p.error = kindError(ctx, k->kind, stored(k->kind, e.value), &p.detail, setup);
        if (p.error != E::None) {
            if (k) {
                p.section = k->section;
                p.key = k->key;
            }
            return p;
        }
    }
    return std::nullopt;
}

Options::Result Options::gravar(AppContext& ctx, const Values& values, Setup setup) {
    Result r;
    r.problem = check(ctx, values, setup);
    if (r.problem)
        return r;
    Values out;
    for (const IniFile::Entry& e : values) {
        const OptionCatalog::Key* k = OptionCatalog::find(e.section, e.key);
        out.append({k->section, k->key, stored(k->kind, e.value)});
    }
    // The save is an act of the operator and the administrator: its row is written with the
    // file, and rolled back when the file could not be written. A new folder's first settings
    // come before its database.
    std::optional<Transaction> tx;
    if (setup == Setup::Ordinary && ctx.db.isOpen()) {
        tx.emplace(ctx.db);
        if (!tx->ok() || !ActLog::gravar(ctx, Act::Opcoes, QStringLiteral("Config.ini"), 0))
            return r;
    }
    r.written = IniFile::write(out, ctx.iniPath()) && (!tx || tx->commit());
    if (r.written)
        ctx.reloadSettings();
    return r;
}

QString Options::notWritten(const AppContext& ctx) {
    return SystemTexts::text(SystemText::ArquivoNaoGravado)
        .arg(QDir::toNativeSeparators(ctx.iniPath()));
}

QString Options::message(const Problem& p) {
    const QString where = p.section + QLatin1Char('/') + p.key;
    switch (p.error) {
    case E::None:
        return {};
    case E::UnknownKey:
        return SystemTexts::text(SystemText::ConfiguracaoDesconhecida).arg(where);
    case E::Fixed:
        return SystemTexts::text(SystemText::ConfiguracaoFixa).arg(where);
    case E::TooLong:
        return SystemTexts::text(SystemText::ConfiguracaoLonga)
            .arg(where, QString::number(IniFile::kMaxValue));
    case E::NotLatin1:
        return SystemTexts::text(SystemText::ConfiguracaoNaoLatin1).arg(where);
    case E::LineBreak:
        return SystemTexts::text(SystemText::ConfiguracaoQuebraLinha).arg(where);
    case E::Guiche:
        return SystemTexts::text(SystemText::GuicheUmaLetra);
    case E::GuicheFixo:
        return SystemTexts::text(SystemText::GuicheFixo);
    case E::MoneyKinds:
        return SystemTexts::text(SystemText::ListaEspecies).arg(where);
    case E::Cabecalho:
        return SystemTexts::text(SystemText::CabecalhoTresPosicoes);
    case E::FolderMissing:
        return SystemTexts::text(SystemText::PastaNaoExiste)
            .arg(QDir::toNativeSeparators(p.value.trimmed()));
    case E::FolderNotWritable:
        return SystemTexts::text(SystemText::PastaSemGravacao)
            .arg(QDir::toNativeSeparators(p.value.trimmed()));
    case E::FileFolderMissing:
        return SystemTexts::text(SystemText::PastaArquivoNaoExiste)
            .arg(QDir::toNativeSeparators(p.value.trimmed()));
    case E::OwnFile:
        return SystemTexts::text(SystemText::ArquivoProprio)
            .arg(where, QDir::toNativeSeparators(p.value.trimmed()));
    case E::Juros:
        return SystemTexts::text(SystemText::OpcaoJuros);
    case E::Modelo:
        return SystemTexts::text(SystemText::ModeloAutenticadora);
    case E::Flag:
        return SystemTexts::text(SystemText::ConfiguracaoZeroUm).arg(where);
    case E::Digits:
        return SystemTexts::text(SystemText::ConfiguracaoAlgarismos).arg(where);
    case E::Number:
        return SystemTexts::text(SystemText::ConfiguracaoInteiro).arg(where);
    case E::Skin:
        return SystemTexts::text(SystemText::AparenciaInvalida)
            .arg(QDir::toNativeSeparators(p.value.trimmed()), p.detail);
    }
    return {};
}
