#include "DialogPort.h"

void DialogPort::setTransactionProbe(const void* owner, std::function<bool()> probe) {
    m_probeOwner = owner;
    m_transactionActive = std::move(probe);
}

void DialogPort::clearTransactionProbe(const void* owner) {
    if (m_probeOwner != owner)
        return;
    m_probeOwner = nullptr;
    m_transactionActive = nullptr;
}

DialogAnswer DialogPort::safeAnswer(DialogButtons buttons) {
    switch (buttons) {
    case DialogButtons::YesNo:
        return DialogAnswer::No;
    case DialogButtons::OkCancel:
    case DialogButtons::YesNoCancel:
        return DialogAnswer::Cancel;
    case DialogButtons::Ok:
        break;
    }
    return DialogAnswer::Ok;
}

bool DialogPort::refusedUnderLock(const QString& kind, const QString& title, const QString& text) {
    if (!transactionActive())
        return false;
    if (onLockedBox)
        onLockedBox(kind, title, text);
    return true;
}
