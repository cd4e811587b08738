#include "AppContext.h"

#include "DialogPort.h"
#include "IniFile.h"

#include <QDir>

AppContext::AppContext(QString f, DialogPort& d, const Clock& c)
    : folder(std::move(f)), dialogs(d), clock(c), errors(d, c, folder), db(errors) {
    db.onLockWait = [this](const QString& text) {
        dialogs.message(QStringLiteral("Aviso"), text, DialogIcon::Information, DialogButtons::Ok);
    };
}

AppContext::~AppContext() = default;

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
    return Carrega_config(iniPath(), settings);
}
