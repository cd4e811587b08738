#pragma once

#include <QList>
#include <QString>
#include <functional>

// The commands of the main window, as each subsystem registers them: the application shell
// builds the menus and the ribbon from this one list, so both always offer the same entries.
struct Command {
    QString id;           // the action's objectName ("mnuEncerrar"), found by keys and tests
    QString menu;         // the menu it sits in ("&Caixa"); menus appear in registration order
    QString text;         // the entry as shown, with its key: "Encerrar Movimento (F4)"
    QString shortcut;     // the key the counter gives it ("F4"), empty when none
    bool writesDay;       // changes the day: disabled while a past day is only consulted
    bool separatorBefore; // a line before it in the menu
    std::function<void()> handler;
    // The ribbon's tab: the menu's own title, so menu and ribbon agree.
    QString ribbonGroup() const { return groupOf(menu); }
    static QString groupOf(const QString& menu);
};

class CommandRegistry {
public:
    void add(Command command);
    // A command with the usual flags: changes nothing of the day, no separator.
    void add(const QString& id, const QString& menu, const QString& text,
             std::function<void()> handler, bool writesDay = false);
    const QList<Command>& commands() const { return m_commands; }
    // The menus in the order they first appear.
    QStringList menus() const;
    // A line in the menu before the next command added.
    void separator() { m_separator = true; }

private:
    QList<Command> m_commands;
    bool m_separator = false;
};
