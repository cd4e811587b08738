#include "QtDialogPort.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>
#include <memory>

namespace {
QMessageBox::Icon toQt(DialogIcon icon) {
    switch (icon) {
    case DialogIcon::Information:
        return QMessageBox::Information;
    case DialogIcon::Exclamation:
        return QMessageBox::Warning;
    case DialogIcon::Critical:
        return QMessageBox::Critical;
    case DialogIcon::Question:
        return QMessageBox::Question;
    case DialogIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

// Drops the keys that reach `dialog` (or any widget in it) before `ms` have passed since it was
// shown. Keys the scanner sent before the dialog opened are delivered once it shows, so they
// fall inside the window too. Digits, and the Enter right after them, are let through: they are
// a scan, never an answer, and the screen behind keeps them for its code field.
class KeyGuardFilter : public QObject {
public:
    KeyGuardFilter(QWidget* dialog, int ms) : m_dialog(dialog), m_ms(ms) {
        m_since.start();
        if (m_ms > 0)
            qApp->installEventFilter(this);
    }
    ~KeyGuardFilter() override { qApp->removeEventFilter(this); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == m_dialog && event->type() == QEvent::Show) {
            m_since.restart();
            return false;
        }
        switch (event->type()) {
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::ShortcutOverride:
        case QEvent::Shortcut:
            break;
        default:
            return false;
        }
        if (m_since.elapsed() >= m_ms)
            return false;
        auto* w = qobject_cast<QWidget*>(watched);
        if (!w || (w != m_dialog && !m_dialog->isAncestorOf(w)))
            return false;
        return !passesThrough(static_cast<QKeyEvent*>(event));
    }

private:
    bool passesThrough(const QKeyEvent* e) {
        const bool digit = e->text().size() == 1 && e->text().at(0).isDigit();
        const bool enter = e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter;
        if (e->type() != QEvent::KeyPress)
            return digit || enter;
        const bool pass = digit || (enter && m_afterDigit);
        m_afterDigit = digit;
        return pass;
    }

    QWidget* m_dialog;
    int m_ms;
    QElapsedTimer m_since;
    bool m_afterDigit = false;
};
} // namespace

namespace {
// The box's parent; a screen that keeps its own scans gets a box that does not block it.
QWidget* boxParent(QWidget* parent, bool* freeStanding) {
    *freeStanding = parent && parent->window()->property(kKeepsScans).toBool();
    return *freeStanding ? nullptr : parent;
}

void markBox(QWidget* box, bool freeStanding) {
    box->setProperty(kDialogPortBox, true);
    if (freeStanding)
        box->setWindowModality(Qt::WindowModal); // modal to nothing: its own loop, no blocking
}
} // namespace

void QtDialogPort::defer(std::function<void()> show) {
    std::weak_ptr<bool> alive = m_alive;
    QMetaObject::invokeMethod(
        qApp,
        [alive, show = std::move(show)] {
            if (alive.lock())
                show();
        },
        Qt::QueuedConnection);
}

DialogAnswer QtDialogPort::message(const QString& title, const QString& text, DialogIcon icon,
                                   DialogButtons buttons) {
    if (refusedUnderLock(QStringLiteral("message"), title, text)) {
        if (buttons == DialogButtons::Ok)
            defer([this, title, text, icon] { message(title, text, icon, DialogButtons::Ok); });
        return safeAnswer(buttons);
    }
    bool freeStanding = false;
    QWidget* parent = boxParent(m_parent ? m_parent : QApplication::activeWindow(), &freeStanding);
    QMessageBox box(toQt(icon), title,
                    QString(text).replace(QLatin1String("\r\n"), QLatin1String("\n")),
                    QMessageBox::NoButton, parent);
    if (buttons == DialogButtons::YesNo || buttons == DialogButtons::YesNoCancel) {
        // The safe answer is the default: a stray Enter never says yes.
        box.addButton(QStringLiteral("&Sim"), QMessageBox::YesRole);
        QPushButton* no = box.addButton(QStringLiteral("&Não"), QMessageBox::NoRole);
        box.setDefaultButton(no);
        if (buttons == DialogButtons::YesNoCancel) {
            QPushButton* cancel =
                box.addButton(QStringLiteral("&Cancelar"), QMessageBox::RejectRole);
            box.setDefaultButton(cancel);
            box.setEscapeButton(cancel);
        }
    } else if (buttons == DialogButtons::OkCancel) {
        box.addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
        box.addButton(QStringLiteral("Cancelar"), QMessageBox::RejectRole);
    } else {
        box.addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
    }
    markBox(&box, freeStanding);
    KeyGuardFilter guard(&box, m_keyGuardMs);
    box.exec();
    const auto role = box.buttonRole(box.clickedButton());
    switch (buttons) {
    case DialogButtons::YesNo:
        return role == QMessageBox::YesRole ? DialogAnswer::Yes : DialogAnswer::No;
    case DialogButtons::YesNoCancel:
        return role == QMessageBox::YesRole  ? DialogAnswer::Yes
               : role == QMessageBox::NoRole ? DialogAnswer::No
                                             : DialogAnswer::Cancel;
    case DialogButtons::OkCancel:
        return role == QMessageBox::AcceptRole ? DialogAnswer::Ok : DialogAnswer::Cancel;
    case DialogButtons::Ok:
        break;
    }
    return DialogAnswer::Ok;
}

std::optional<QString> QtDialogPort::input(const QString& title, const QString& prompt, bool masked,
                                           const QString& initial) {
    if (refusedUnderLock(QStringLiteral("input"), title, prompt))
        return std::nullopt;
    QInputDialog dlg(m_parent ? m_parent : QApplication::activeWindow());
    dlg.setWindowTitle(title);
    dlg.setLabelText(prompt);
    dlg.setTextValue(initial);
    dlg.setTextEchoMode(masked ? QLineEdit::Password : QLineEdit::Normal);
    dlg.setOkButtonText(QStringLiteral("OK"));
    dlg.setCancelButtonText(QStringLiteral("Cancelar"));
    dlg.setProperty(kDialogPortInput, true);
    KeyGuardFilter guard(&dlg, m_keyGuardMs);
    if (dlg.exec() != QDialog::Accepted)
        return std::nullopt;
    return dlg.textValue();
}

DialogAnswer QtDialogPort::notice(const QString& form, const QString& caption,
                                  const QStringList& lines, DialogButtons buttons) {
    if (refusedUnderLock(QStringLiteral("notice"), caption, lines.join(QLatin1Char('\n')))) {
        if (buttons == DialogButtons::Ok)
            defer(
                [this, form, caption, lines] { notice(form, caption, lines, DialogButtons::Ok); });
        return safeAnswer(buttons);
    }
    bool freeStanding = false;
    QWidget* parent = boxParent(m_parent ? m_parent : QApplication::activeWindow(), &freeStanding);
    if (const auto own = m_forms.constFind(form); own != m_forms.constEnd()) {
        std::unique_ptr<QDialog> dlg((*own)(*this, caption, lines, parent));
        markBox(dlg.get(), freeStanding);
        KeyGuardFilter guard(dlg.get(), m_keyGuardMs);
        dlg->exec();
        return DialogAnswer::Ok;
    }
    DialogAnswer answer = buttons == DialogButtons::YesNo ? DialogAnswer::No : DialogAnswer::Ok;
    std::unique_ptr<QDialog> dlg(createNotice(form, caption, lines, buttons, &answer, parent));
    markBox(dlg.get(), freeStanding);
    KeyGuardFilter guard(dlg.get(), m_keyGuardMs);
    dlg->exec();
    return answer;
}

QDialog* QtDialogPort::createNotice(const QString& form, const QString& caption,
                                    const QStringList& lines, DialogButtons buttons,
                                    DialogAnswer* answer, QWidget* parent) {
    auto* dlg = new QDialog(parent);
    dlg->setObjectName(form);
    dlg->setWindowTitle(caption);
    auto* layout = new QVBoxLayout(dlg);
    for (const QString& l : lines) {
        auto* label = new QLabel(l, dlg);
        QFont f = label->font();
        f.setPointSize(f.pointSize() + 3);
        f.setBold(true);
        label->setFont(f);
        label->setAlignment(Qt::AlignCenter);
        layout->addWidget(label);
    }
    auto* row = new QHBoxLayout;
    if (buttons == DialogButtons::YesNo) {
        auto* yes = new QPushButton(QStringLiteral("&Sim"), dlg);
        yes->setObjectName(QStringLiteral("Command1"));
        auto* no = new QPushButton(QStringLiteral("&Não"), dlg);
        no->setObjectName(QStringLiteral("Command2"));
        QObject::connect(yes, &QPushButton::clicked, dlg, [dlg, answer] {
            *answer = DialogAnswer::Yes;
            dlg->accept();
        });
        QObject::connect(no, &QPushButton::clicked, dlg, [dlg, answer] {
            *answer = DialogAnswer::No;
            dlg->reject();
        });
        row->addWidget(yes);
        row->addWidget(no);
        // A consent is about money: the default and the focus are on No.
        no->setDefault(true);
        no->setFocus();
        // S and N on their own answer, as in the system's other questions.
        for (auto [key, button] : {std::pair{Qt::Key_S, yes}, std::pair{Qt::Key_N, no}})
            QObject::connect(new QShortcut(QKeySequence(key), dlg), &QShortcut::activated, button,
                             &QPushButton::animateClick);
    } else {
        auto* ok = new QPushButton(QStringLiteral("OK"), dlg);
        ok->setObjectName(QStringLiteral("cmdOk"));
        QObject::connect(ok, &QPushButton::clicked, dlg, &QDialog::accept);
        row->addWidget(ok);
        ok->setDefault(true);
    }
    layout->addLayout(row);
    return dlg;
}
