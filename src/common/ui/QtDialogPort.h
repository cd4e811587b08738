#pragma once

#include "DialogPort.h"

#include <QHash>
#include <functional>

class QDialog;
class QWidget;

// The property the screen port sets on its message boxes and notices (not on input boxes): a
// screen that keeps the scanner's keys from such a box knows it by this.
inline constexpr char kDialogPortBox[] = "dialogPortBox";
// The property the screen port sets on its input boxes: a screen that keeps the scanner's keys
// lets a person type into them and takes back only a scanner's burst.
inline constexpr char kDialogPortInput[] = "dialogPortInput";
// Set on a screen that keeps the scanner's keys itself (the counter): its boxes do not block it,
// so keys the window system still sends it while a box takes the focus are not thrown away; the
// screen ignores everything else meanwhile.
inline constexpr char kKeepsScans[] = "keepsScans";
#include <memory>

// The dialog port on screen: real message boxes, input boxes and the program's notice forms.
// A box asked while a transaction is active is not opened then (Log.ini is told): one that only
// informs is shown from the event loop, once the handler that holds the scope has returned; a
// question or an input box gets the safe answer.
class QtDialogPort : public DialogPort {
public:
    explicit QtDialogPort(QWidget* parent = nullptr) : m_parent(parent) {}
    void setParent(QWidget* parent) { m_parent = parent; }

    DialogAnswer message(const QString& title, const QString& text, DialogIcon icon,
                         DialogButtons buttons) override;
    std::optional<QString> input(const QString& title, const QString& prompt, bool masked,
                                 const QString& initial) override;
    DialogAnswer notice(const QString& form, const QString& caption, const QStringList& lines,
                        DialogButtons buttons) override;

    // A notice that has a screen of its own (the charges of an overdue guide): its form is built
    // by the subsystem that owns it, registered at start, and answers Ok when closed.
    using Form = std::function<QDialog*(DialogPort& dialogs, const QString& caption,
                                        const QStringList& lines, QWidget* parent)>;
    void registerForm(const QString& form, Form make) { m_forms.insert(form, std::move(make)); }

    // The notice form itself, for the pictures of the screens.
    static QDialog* createNotice(const QString& form, const QString& caption,
                                 const QStringList& lines, DialogButtons buttons,
                                 DialogAnswer* answer, QWidget* parent);

private:
    // Shows `show` from the event loop, unless this port is gone by then.
    void defer(std::function<void()> show);

    QWidget* m_parent;
    QHash<QString, Form> m_forms;
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
};
