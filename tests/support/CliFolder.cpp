#include "CliFolder.h"

#include "IniFile.h"

#include <QDir>
#include <QFile>

CliFolder::CliFolder(int timeoutMs) : CliFolder(QString(), timeoutMs) {
    makeDemo();
}

CliFolder::CliFolder(At at) : CliFolder(at.path) {
    makeDemo();
}

CliFolder::CliFolder(const QString& at, int timeoutMs)
    : m_path(QDir(m_dir.path()).filePath(at)), m_timeoutMs(timeoutMs) {}

void CliFolder::makeDemo() {
    const CliRun r = run({QStringLiteral("iniciar"), QStringLiteral("--demo")});
    m_password = r.demoPassword().toUtf8();
    m_ok = r.code == 0 && !m_password.isEmpty();
}

QString CliFolder::path(const QString& name) const {
    return name.isEmpty() ? m_path : QDir(m_path).filePath(name);
}

void CliFolder::set(const QString& section, const QString& key, const QString& value) const {
    IniFile::write(section, key, value, path(QStringLiteral("Config.ini")));
}

CliRun CliFolder::onDay(const QString& day, QStringList args, const QByteArray& admin) const {
    args << QStringLiteral("--data") << day;
    return run(args, m_password + "\n" + (admin.isNull() ? m_password : admin) + "\n");
}

QByteArray CliFolder::config() const {
    QFile f(path(QStringLiteral("Config.ini")));
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

CliRun CliFolder::run(const QStringList& args, const QByteArray& input) const {
    return runTolvane(m_path, args, input, m_timeoutMs);
}

QByteArray CliFolder::passwords(const QByteArray& operador, const QByteArray& administrador,
                                const QByteArray& more) {
    QByteArray in = operador + "\n";
    if (!administrador.isNull())
        in += administrador + "\n";
    return in + more;
}

CliRun CliFolder::asAdmin(const QStringList& args, const QByteArray& more) const {
    return run(args, passwords(m_password, m_password, more));
}

CliRun CliFolder::options(const QStringList& assignments) const {
    return asAdmin(QStringList{QStringLiteral("opcoes"), QStringLiteral("gravar")} + assignments);
}
