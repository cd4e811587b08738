#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>
#include <optional>

// The words of one command: positionals, "--name value" options and boolean "--flag"s.
class CliArgs {
public:
    // `flags` names the options that take no value ("--json", "--demo" ...); `repeatable` the
    // options that may come more than once. Another option given twice is a usage error: its
    // last value silently winning would act on what the operator did not mean.
    static std::optional<CliArgs> parse(const QStringList& words, const QSet<QString>& flags,
                                        QString* error, const QSet<QString>& repeatable = {});

    QStringList positional;
    bool has(const QString& flag) const {
        return m_flags.contains(flag) || m_values.contains(flag);
    }
    QString value(const QString& name, const QString& fallback = {}) const {
        return m_values.value(name, fallback);
    }
    QStringList values(const QString& name) const { return m_multi.value(name); }

private:
    QSet<QString> m_flags;
    QHash<QString, QString> m_values;
    QHash<QString, QStringList> m_multi;
};
