#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

enum class DialogIcon { None, Information, Exclamation, Critical, Question };
enum class DialogButtons { Ok, YesNo, OkCancel, YesNoCancel };
enum class DialogAnswer { Ok, Yes, No, Cancel };

// Every message box, question, input box and modal notice goes through this port, so that the
// screens, the command line and the tests show (or record) exactly the same texts.
class DialogPort {
public:
    virtual ~DialogPort() = default;

    virtual DialogAnswer message(const QString& title, const QString& text, DialogIcon icon,
                                 DialogButtons buttons) = 0;

    // Input box; nullopt when cancelled. `masked` shows '*' for each typed character.
    virtual std::optional<QString> input(const QString& title, const QString& prompt, bool masked,
                                         const QString& initial) = 0;

    // A modal notice form of the program (frmContaLancada, frmBloqueia, frmGuiavencida ...):
    // `form` is its name, `caption` its window title, `lines` its labels in order. Consent
    // forms answer Yes/No; the others Ok.
    virtual DialogAnswer notice(const QString& form, const QString& caption,
                                const QStringList& lines, DialogButtons buttons) = 0;

    // Shorthands.
    void info(const QString& title, const QString& text) {
        message(title, text, DialogIcon::Information, DialogButtons::Ok);
    }
    void warn(const QString& title, const QString& text) {
        message(title, text, DialogIcon::Exclamation, DialogButtons::Ok);
    }
    void critical(const QString& title, const QString& text) {
        message(title, text, DialogIcon::Critical, DialogButtons::Ok);
    }
    bool ask(const QString& title, const QString& text) {
        return message(title, text, DialogIcon::Question, DialogButtons::YesNo) ==
               DialogAnswer::Yes;
    }

    // While set, a dialog drops every key that reaches it within `ms` of its showing: the Enter a
    // scanner sends after a code must never answer what that code opened. 0 lifts it.
    virtual void setKeyGuard(int ms) { m_keyGuardMs = ms; }
    int keyGuard() const { return m_keyGuardMs; }

    // Whether a transaction is active on the connection the program writes through, asked before
    // every box: a box opened then would keep the database's write lock until someone answers.
    // `owner` is whoever set it; only that owner clears it.
    void setTransactionProbe(const void* owner, std::function<bool()> probe);
    void clearTransactionProbe(const void* owner);
    bool transactionActive() const { return m_transactionActive && m_transactionActive(); }
    // Told of every box refused that way ("message", "input" or "notice"; title; text).
    std::function<void(const QString& kind, const QString& title, const QString& text)> onLockedBox;

    // The answer of a box that was not shown: the safe one (No, Cancel).
    static DialogAnswer safeAnswer(DialogButtons buttons);

protected:
    // True when a transaction is active: the box is not shown and onLockedBox is told.
    bool refusedUnderLock(const QString& kind, const QString& title, const QString& text);

    int m_keyGuardMs = 0;

private:
    std::function<bool()> m_transactionActive;
    const void* m_probeOwner = nullptr;
};

// Sets the key guard for one scope and puts the previous one back.
class DialogKeyGuard {
public:
    DialogKeyGuard(DialogPort& port, int ms) : m_port(port), m_previous(port.keyGuard()) {
        m_port.setKeyGuard(ms);
    }
    ~DialogKeyGuard() { m_port.setKeyGuard(m_previous); }
    DialogKeyGuard(const DialogKeyGuard&) = delete;
    DialogKeyGuard& operator=(const DialogKeyGuard&) = delete;

private:
    DialogPort& m_port;
    int m_previous;
};

QString dialogIconName(DialogIcon icon);
