// Commands of the administration: the settings and the published version.
#include "AppContext.h"
#include "CliArgs.h"
#include "CliCommand.h"
#include "CliSupport.h"
#include "Options.h"
#include "UpdateCheck.h"

#include <QDir>
#include <QJsonObject>
#include <QTextStream>

namespace {

// What is printed of a value: a password only says that it is set.
QString shown(const IniFile::Entry& e) {
    const OptionCatalog::Key* k = OptionCatalog::find(e.section, e.key);
    return k && k->kind == OptionCatalog::Kind::Secret && !e.value.isEmpty()
               ? QStringLiteral("********")
               : e.value;
}

QJsonObject bySection(const Options::Values& values) {
    QJsonObject out;
    for (const IniFile::Entry& e : values) {
        QJsonObject section = out.value(e.section).toObject();
        section.insert(e.key, shown(e));
        out.insert(e.section, section);
    }
    return out;
}

int opcoes(CliEnv& e) {
    if (!e.args.positional.isEmpty()) {
        e.err << "Uso: tolvane opcoes [--json]  ou  tolvane opcoes gravar SECAO/CHAVE=VALOR...\n";
        return ExitUsage;
    }
    const Options::Values values = Options::load(e.ctx.iniPath());
    if (e.json) {
        CliSupport::printJson(e, bySection(values));
        return ExitOk;
    }
    for (const IniFile::Entry& v : values)
        e.out << v.section << "/" << v.key << "=" << shown(v) << "\n";
    return ExitOk;
}

// "SECAO/CHAVE=VALOR" into an entry of the catalogue; the message says what is wrong.
std::optional<IniFile::Entry> assignment(const QString& word, QString& message) {
    const int eq = word.indexOf(QLatin1Char('='));
    const int slash = word.indexOf(QLatin1Char('/'));
    if (eq < 0 || slash <= 0 || slash > eq) {
        message = QStringLiteral("Use SECAO/CHAVE=VALOR: %1").arg(word);
        return std::nullopt;
    }
    const QString section = word.left(slash).trimmed();
    const QString key = word.mid(slash + 1, eq - slash - 1).trimmed();
    const OptionCatalog::Key* k = OptionCatalog::find(section, key);
    if (!k || k->kind == OptionCatalog::Kind::Fixed) {
        message = Options::message({k ? Options::Error::Fixed : Options::Error::UnknownKey,
                                    k ? k->section : section,
                                    k ? k->key : key,
                                    {},
                                    {}});
        return std::nullopt;
    }
    return IniFile::Entry{k->section, k->key, word.mid(eq + 1)};
}

int opcoesGravar(CliEnv& e) {
    if (e.args.positional.isEmpty()) {
        e.err << "Uso: tolvane opcoes gravar SECAO/CHAVE=VALOR...\n";
        return ExitUsage;
    }
    Options::Values values;
    for (const QString& word : e.args.positional) {
        QString message;
        const auto a = assignment(word, message);
        if (!a) {
            e.err << message << "\n";
            return ExitUsage;
        }
        values.append(*a);
    }
    const Options::Result r = Options::gravar(e.ctx, values);
    if (r.problem) {
        e.err << Options::message(*r.problem) << "\n";
        return ExitRefused;
    }
    if (!r.written) {
        e.err << QStringLiteral("Não foi possível gravar %1.\n")
                     .arg(QDir::toNativeSeparators(e.ctx.iniPath()));
        return ExitRefused;
    }
    // What was stored, as the file now reads.
    Options::Values stored;
    for (const IniFile::Entry& v : values)
        stored.append({v.section, v.key, e.ctx.option(v.section, v.key)});
    if (e.json) {
        CliSupport::printJson(e, QJsonObject{{QStringLiteral("gravadas"), bySection(stored)}});
        return ExitOk;
    }
    for (const IniFile::Entry& v : stored)
        e.out << v.section << "/" << v.key << "=" << shown(v) << "\n";
    e.out << "Opções gravadas.\n";
    return ExitOk;
}

QString stateName(UpdateCheck::State s) {
    switch (s) {
    case UpdateCheck::State::NoFolder:
        return QStringLiteral("sem_pasta");
    case UpdateCheck::State::NoFile:
        return QStringLiteral("sem_arquivo");
    case UpdateCheck::State::Empty:
        return QStringLiteral("vazio");
    case UpdateCheck::State::Unreadable:
        return QStringLiteral("invalido");
    case UpdateCheck::State::NotNewer:
        return QStringLiteral("atualizada");
    case UpdateCheck::State::Newer:
        return QStringLiteral("nova");
    case UpdateCheck::State::TimedOut:
        return QStringLiteral("sem_resposta");
    }
    return {};
}

QString stateText(const UpdateCheck::Result& r, const QString& folder) {
    const QString running = UpdateCheck::runningVersion();
    switch (r.state) {
    case UpdateCheck::State::NoFolder:
        return QStringLiteral("Pasta de atualização não configurada ([Opcoes] Atualiza).");
    case UpdateCheck::State::NoFile:
        return QStringLiteral("Nenhuma versão publicada: %1 não tem %2.")
            .arg(QDir::toNativeSeparators(folder), UpdateCheck::kFileName);
    case UpdateCheck::State::Empty:
        return QStringLiteral("%1 está vazio: nenhuma versão publicada.")
            .arg(UpdateCheck::kFileName);
    case UpdateCheck::State::Unreadable:
        return QStringLiteral("%1 não é um arquivo de versão.").arg(UpdateCheck::kFileName);
    case UpdateCheck::State::TimedOut:
        return QStringLiteral("A pasta de atualização %1 não respondeu.")
            .arg(QDir::toNativeSeparators(folder));
    case UpdateCheck::State::NotNewer:
        return QStringLiteral("Versão em uso %1, publicada %2: nenhuma versão nova.")
            .arg(running, r.published);
    case UpdateCheck::State::Newer:
        return QStringLiteral("Versão em uso %1, publicada %2: há uma versão nova.")
            .arg(running, r.published);
    }
    return {};
}

int atualizacao(CliEnv& e) {
    const QString folder = UpdateCheck::folder(e.ctx);
    const auto r = UpdateCheck::checkWithin(folder, UpdateCheck::runningVersion(), 3000);
    if (e.json)
        CliSupport::printJson(e,
                              QJsonObject{{QStringLiteral("atual"), UpdateCheck::runningVersion()},
                                          {QStringLiteral("publicada"), r.published},
                                          {QStringLiteral("nova"), r.newer()},
                                          {QStringLiteral("situacao"), stateName(r.state)}});
    else
        e.out << stateText(r, folder) << "\n";
    const bool answered =
        r.state != UpdateCheck::State::Unreadable && r.state != UpdateCheck::State::TimedOut;
    if (!answered && e.json)
        e.err << stateText(r, folder) << "\n";
    return answered ? ExitOk : ExitRefused;
}

} // namespace

void registerAdminCommands(QList<CliCommand>& c) {
    using D = CliCommand::Db;
    c.append({{QStringLiteral("opcoes")},
              QStringLiteral("opcoes [--json]"),
              QStringLiteral("mostra todas as configurações do Config.ini (SECAO/CHAVE=VALOR)"),
              {},
              D::None,
              opcoes});
    c.last().act = Act::Consultar;
    c.append({{QStringLiteral("opcoes"), QStringLiteral("gravar")},
              QStringLiteral("opcoes gravar SECAO/CHAVE=VALOR... [--json]"),
              QStringLiteral("grava configurações com as conferências da tela de opções"),
              {},
              D::Existing,
              opcoesGravar});
    c.last().act = Act::Opcoes;
    c.append({{QStringLiteral("atualizacao")},
              QStringLiteral("atualizacao [--json]"),
              QStringLiteral("diz se há uma versão nova publicada na pasta de atualização"),
              {},
              D::None,
              atualizacao});
    c.last().act = Act::Consultar;
}
