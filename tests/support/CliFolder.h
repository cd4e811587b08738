#pragma once

#include "CliRun.h"

#include <QTemporaryDir>

// An application folder made by `iniciar --demo` in a temporary folder, with the administrator's
// password it printed; the program runs on it as a user would.
class CliFolder {
public:
    explicit CliFolder(int timeoutMs = CliRun::kTimeoutMs);
    // A demo folder at an absolute place (a small disk of its own).
    struct At {
        QString path;
    };
    explicit CliFolder(At at);

    // `iniciar --demo` ended well and printed a password.
    bool ok() const { return m_ok; }
    QByteArray password() const { return m_password; }
    QString path(const QString& name = QString()) const;
    // Writes one key of the folder's Config.ini.
    void set(const QString& section, const QString& key, const QString& value) const;

    CliRun run(const QStringList& args, const QByteArray& input = {}) const;
    // The standard input a command reads its people from: the operator's password, then the
    // administrator's (an administrator's act), then `more` (a new user's password...).
    static QByteArray passwords(const QByteArray& operador, const QByteArray& administrador = {},
                                const QByteArray& more = {});
    // The administrator at the counter, allowing the act as well: the password twice, then
    // `more`. Commands of the operator read the first line only.
    CliRun asAdmin(const QStringList& args, const QByteArray& more = {}) const;
    // A command of the day `day` (--data): the operator's password, then the administrator's
    // (the demo's one password for both, unless `admin` is given), on standard input.
    CliRun onDay(const QString& day, QStringList args, const QByteArray& admin = {}) const;
    // The folder's Config.ini as it is on disk.
    QByteArray config() const;
    // `opcoes gravar` with `Section/key=value` assignments, as the administrator.
    CliRun options(const QStringList& assignments) const;

protected:
    // A folder prepared before makeDemo() runs `iniciar --demo` on it: `at` relative to the
    // temporary folder, or absolute.
    CliFolder(const QString& at, int timeoutMs = CliRun::kTimeoutMs);
    void makeDemo();

private:
    QTemporaryDir m_dir;
    QString m_path;
    int m_timeoutMs;
    QByteArray m_password;
    bool m_ok = false;
};
