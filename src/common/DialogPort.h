#pragma once

#include <QString>
#include <QStringList>
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

protected:
    int m_keyGuardMs = 0;
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
