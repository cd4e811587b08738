#include "ScriptedDialogPort.h"

QString dialogIconName(DialogIcon icon) {
    switch (icon) {
    case DialogIcon::Information:
        return QStringLiteral("information");
    case DialogIcon::Exclamation:
        return QStringLiteral("exclamation");
    case DialogIcon::Critical:
        return QStringLiteral("critical");
    case DialogIcon::Question:
        return QStringLiteral("question");
    case DialogIcon::None:
        break;
    }
    return QStringLiteral("none");
}

DialogAnswer ScriptedDialogPort::answerFor(DialogButtons buttons) {
    if (buttons == DialogButtons::Ok)
        return DialogAnswer::Ok;
    if (!m_answers.isEmpty())
        return m_answers.dequeue();
    return defaultAnswer;
}

DialogAnswer ScriptedDialogPort::message(const QString& title, const QString& text, DialogIcon icon,
                                         DialogButtons buttons) {
    if (refusedUnderLock(QStringLiteral("message"), title, text))
        return safeAnswer(buttons);
    m_shown.append({QStringLiteral("message"), title, text, icon, {}, m_keyGuardMs > 0});
    return answerFor(buttons);
}

std::optional<QString> ScriptedDialogPort::input(const QString& title, const QString& prompt, bool,
                                                 const QString&) {
    if (refusedUnderLock(QStringLiteral("input"), title, prompt))
        return std::nullopt;
    m_shown.append(
        {QStringLiteral("input"), title, prompt, DialogIcon::None, {}, m_keyGuardMs > 0});
    if (m_inputs.isEmpty())
        return std::nullopt;
    return m_inputs.dequeue();
}

DialogAnswer ScriptedDialogPort::notice(const QString& form, const QString& caption,
                                        const QStringList& lines, DialogButtons buttons) {
    if (refusedUnderLock(QStringLiteral("notice"), caption, lines.join(QLatin1Char('\n'))))
        return safeAnswer(buttons);
    m_shown.append({QStringLiteral("notice"), caption, lines.join(QLatin1Char('\n')),
                    DialogIcon::None, form, m_keyGuardMs > 0});
    return answerFor(buttons);
}

QStringList ScriptedDialogPort::texts() const {
    QStringList out;
    for (const auto& s : m_shown)
        out << s.text;
    return out;
}
