#pragma once

#include "DialogPort.h"

// The dialog port of work done away from the operator (the central link's own thread): nothing
// is shown, so an ErrorLog built on it only appends to Log.ini. What the operator must know is
// handed to the screen, which tells it.
class SilentDialogPort final : public DialogPort {
public:
    DialogAnswer message(const QString&, const QString&, DialogIcon, DialogButtons) override {
        return DialogAnswer::Ok;
    }
    std::optional<QString> input(const QString&, const QString&, bool, const QString&) override {
        return std::nullopt;
    }
    DialogAnswer notice(const QString&, const QString&, const QStringList&,
                        DialogButtons) override {
        return DialogAnswer::Ok;
    }
};
