#pragma once

#include <QTabWidget>

class QAction;
class QToolButton;

// A tabbed strip of large command buttons, each showing its key. A button runs a QAction of the
// owning window found by its objectName, so it follows that action's enabled state and a menu
// entry joins the ribbon with one line; a name whose action does not exist adds nothing.
class CommandRibbon : public QTabWidget {
    Q_OBJECT
public:
    explicit CommandRibbon(QWidget* actionsOwner, QWidget* parent = nullptr);

    // A new tab of commands; answers its index.
    int addGroup(const QString& title);
    // The button of `actionName` on `group`; the caption and the key come from the action's text
    // ("Encerrar Movimento (F4)") unless given. Null when the window has no such action.
    QToolButton* addCommand(int group, const QString& actionName, const QString& caption = {},
                            const QString& key = {});
    // A button of the same look for an action that stays in sight whatever the tab (leaving
    // the program); the caller places it. Null when the window has no such action.
    QToolButton* standaloneCommand(const QString& actionName, QWidget* parent,
                                   const QString& caption = {}, const QString& key = {});

    // "Encerrar Movimento (F4)" -> caption "Encerrar Movimento", key "F4".
    static QString wrapped(const QString& caption);
    static void splitText(const QString& text, QString* caption, QString* key);

private:
    QToolButton* makeButton(QAction* action, const QString& caption, const QString& key,
                            QWidget* parent);

    QWidget* m_owner;
};
