#pragma once

#include "DialogPort.h"

#include <QString>

// What the operator is told: one of the system's texts with its title and icon. An empty
// notice tells nothing.
struct Notice {
    QString title;
    QString text;
    DialogIcon icon = DialogIcon::None;

    bool empty() const { return text.isEmpty(); }
    Notice arg(const QString& a) const { return {title, text.arg(a), icon}; }
    Notice arg(qint64 a) const { return {title, text.arg(a), icon}; }
    // The same title and icon with another text (a refusal worded by the rule that found it).
    Notice with(const QString& other) const { return {title, other, icon}; }
};

// The typed outcome of a core operation that writes: whether it was done and what to tell. The
// operation decides inside its transaction; the screen or the command tells the notice once
// the scope has ended.
struct Outcome {
    bool done = false;
    Notice notice;

    static Outcome ok(Notice n = {}) { return {true, std::move(n)}; }
    static Outcome refused(Notice n) { return {false, std::move(n)}; }
    explicit operator bool() const { return done; }
};

// Shows a notice (an Ok box); nothing when it is empty.
inline void tell(DialogPort& dialogs, const Notice& n) {
    if (!n.empty())
        dialogs.message(n.title, n.text, n.icon, DialogButtons::Ok);
}
// Asks a catalog question (Yes/No, the safe No by default).
inline bool askNotice(DialogPort& dialogs, const Notice& n) {
    return dialogs.message(n.title, n.text, n.icon, DialogButtons::YesNo) == DialogAnswer::Yes;
}
