#include "AppContext.h"
#include "SystemTexts.h"

#include "DbConfig.h"
#include "DialogPort.h"
#include "IniFile.h"

#include <QDir>

AppContext::AppContext(QString f, DialogPort& d, const Clock& c)
    : folder(std::move(f)), dialogs(d), clock(c), errors(d, c, folder), db(errors) {
    db.onLockWait = [this](const QString& text) {
        tell(dialogs, SystemTexts::notice(SystemText::AguardandoBanco).with(text));
    };
    dialogs.setTransactionProbe(this, [this] { return db.inTransaction(); });
    dialogs.onLockedBox = [this](const QString& kind, const QString& title, const QString& text) {
        errors.append(QStringLiteral("DialogPort"),
                      {0,
                       QStringLiteral("Caixa (%1) recusada com uma transação aberta: %2 / %3")
                           .arg(kind, title, text),
                       QStringLiteral("Tolvane")});
    };
}

AppContext::~AppContext() {
    dialogs.clearTransactionProbe(this);
}

QString AppContext::iniPath() const {
    return filePath(QStringLiteral("Config.ini"));
}

QString AppContext::filePath(const QString& name) const {
    return QDir(folder).filePath(name);
}

QString AppContext::option(const QString& section, const QString& key) const {
    return IniFile::read(section, key, iniPath());
}

bool AppContext::reloadSettings() {
    repairSettings();
    return Carrega_config(iniPath(), settings);
}

void AppContext::repairSettings() {
    // An earlier options save wrote Path3's folder into [Reserva] itens, after which the cash
    // count refused every kind of money: emptied, it offers them all again.
    const QString itens = option(QStringLiteral("Reserva"), QStringLiteral("itens"));
    if (isMoneyKindList(itens) ||
        !IniFile::write(QStringLiteral("Reserva"), QStringLiteral("itens"), QString(), iniPath()))
        return;
    errors.append(QStringLiteral("Config.ini"),
                  {0,
                   QStringLiteral("[Reserva] itens tinha \"%1\", que não é uma lista de "
                                  "códigos de espécies de dinheiro: ficou vazio (todas as "
                                  "espécies).")
                       .arg(itens),
                   QStringLiteral("Carrega_config")});
}

QString AppContext::copiesFolder() const {
    return filePath(QStringLiteral("copias"));
}

OutputPath::Guarded AppContext::ownFiles() const {
    OutputPath::Guarded g;
    QString database = db.isOpen() ? db.config().sqlitePath : DbConfig::fromIni(folder).sqlitePath;
    if (!database.isEmpty())
        for (const char* suffix : {"", "-wal", "-shm", "-journal"})
            g.files << database + QLatin1String(suffix);
    g.files << iniPath() << filePath(QStringLiteral("Log.ini"));
    g.names << QStringLiteral("Config.ini") << QStringLiteral("Log.ini")
            << QStringLiteral("Estorno_*") << QStringLiteral("Receb_*");
    g.folders << copiesFolder();
    return g;
}

QString AppContext::outputProblem(const QString& path) const {
    return OutputPath::problem(path, ownFiles());
}
