#include "CommandRegistry.h"

#include <QRegularExpression>
#include <utility>

QString Command::groupOf(const QString& menu) {
    return QString(menu).remove(QLatin1Char('&'));
}

void CommandRegistry::add(Command command) {
    command.separatorBefore = command.separatorBefore || std::exchange(m_separator, false);
    m_commands.append(std::move(command));
}

void CommandRegistry::add(const QString& id, const QString& menu, const QString& text,
                          std::function<void()> handler, bool writesDay) {
    static const QRegularExpression key(QStringLiteral("\\((F[0-9]+|ESC)\\)\\s*$"));
    const auto m = key.match(text);
    add(Command{id, menu, text, m.hasMatch() ? m.captured(1) : QString(), writesDay, false,
                std::move(handler)});
}

QStringList CommandRegistry::menus() const {
    QStringList out;
    for (const Command& c : m_commands)
        if (!out.contains(c.menu))
            out << c.menu;
    return out;
}
