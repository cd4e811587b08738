#pragma once

#include "clsMovimento.h"

#include <functional>

class AppContext;
class CommandRegistry;
class CounterPrinter;
class QWidget;

// The counter's menu of the cash day: entries, payments out, withdrawals, the safe, the cash
// count and the provisional count. `movimento` answers the counter's current movement;
// `refresh` redraws the counter after a screen closes.
class CashDayMenu {
public:
    static void add(CommandRegistry& registry, AppContext& ctx,
                    std::function<clsMovimento()> movimento, std::function<void()> refresh,
                    QWidget* parent);
    // The corrections of recorded receipts, each after an administrator's password.
    static void addCorrections(CommandRegistry& registry, AppContext& ctx, CounterPrinter* printer,
                               std::function<void()> refresh, QWidget* parent);
};
