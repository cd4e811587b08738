#pragma once

#include "DialogPort.h"

class QDialog;
class QWidget;

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

    // The notice form itself, for the pictures of the screens.
    static QDialog* createNotice(const QString& form, const QString& caption,
                                 const QStringList& lines, DialogButtons buttons,
                                 DialogAnswer* answer, QWidget* parent);

private:
    // Shows `show` from the event loop, unless this port is gone by then.
    void defer(std::function<void()> show);

    QWidget* m_parent;
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
};
