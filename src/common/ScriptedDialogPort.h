#pragma once

#include "DialogPort.h"

#include <QList>
#include <QQueue>

// Records every dialog and answers from a script. Used by the tests and by the command line,
// which has no one to click buttons. A box asked while a transaction is active is neither
// recorded nor answered from the script: it gets the safe answer and onLockedBox is told (the
// tests fail on it, the command line writes a Log.ini line).
class ScriptedDialogPort : public DialogPort {
public:
    struct Shown {
        QString kind; // "message", "input" or "notice"
        QString title;
        QString text; // message text, input prompt, or the notice's lines joined by '\n'
        DialogIcon icon = DialogIcon::None;
        QString form;         // notices only
        bool guarded = false; // shown while the key guard was set
    };

    DialogAnswer message(const QString& title, const QString& text, DialogIcon icon,
                         DialogButtons buttons) override;
    std::optional<QString> input(const QString& title, const QString& prompt, bool masked,
                                 const QString& initial) override;
    DialogAnswer notice(const QString& form, const QString& caption, const QStringList& lines,
                        DialogButtons buttons) override;

    // Answers for the next Yes/No (or Ok/Cancel) dialogs, in order. When none is queued a
    // question is answered with `defaultAnswer`.
    void pushAnswer(DialogAnswer a) { m_answers.enqueue(a); }
    void pushInput(std::optional<QString> text) { m_inputs.enqueue(std::move(text)); }
    DialogAnswer defaultAnswer = DialogAnswer::Yes;

    const QList<Shown>& shown() const { return m_shown; }
    QStringList texts() const; // the text of every dialog, in order
    Shown last() const { return m_shown.isEmpty() ? Shown{} : m_shown.last(); }
    void clear() { m_shown.clear(); }

private:
    DialogAnswer answerFor(DialogButtons buttons);

    QList<Shown> m_shown;
    QQueue<DialogAnswer> m_answers;
    QQueue<std::optional<QString>> m_inputs;
};
