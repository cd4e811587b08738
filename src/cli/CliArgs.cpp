#include "CliArgs.h"

std::optional<CliArgs> CliArgs::parse(const QStringList& words, const QSet<QString>& flags,
                                      QString* error, const QSet<QString>& repeatable) {
    CliArgs a;
    for (int i = 0; i < words.size(); ++i) {
        const QString& w = words[i];
        if (!w.startsWith(QLatin1String("--")) || w == QLatin1String("--")) {
            a.positional << w;
            continue;
        }
        QString name = w.mid(2);
        QString inlineValue;
        const int eq = name.indexOf(QLatin1Char('='));
        if (eq > 0) {
            inlineValue = name.mid(eq + 1);
            name = name.left(eq);
        }
        if (flags.contains(name)) {
            a.m_flags.insert(name);
            continue;
        }
        if (eq < 0) {
            if (i + 1 >= words.size()) {
                if (error)
                    *error = QStringLiteral("A opção --%1 precisa de um valor.").arg(name);
                return std::nullopt;
            }
            inlineValue = words[++i];
        }
        if (a.m_values.contains(name) && !repeatable.contains(name)) {
            if (error)
                *error = QStringLiteral("A opção --%1 foi dada mais de uma vez.").arg(name);
            return std::nullopt;
        }
        a.m_values.insert(name, inlineValue);
        a.m_multi[name].append(inlineValue);
    }
    return a;
}
