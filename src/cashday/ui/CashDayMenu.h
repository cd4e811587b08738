#pragma once

#include "clsMovimento.h"

#include <functional>

class AppContext;
class QMenuBar;
class QWidget;

// The counter's menu of the cash day: entries, payments out, withdrawals, the safe, the cash
// count and the provisional count. `movimento` answers the counter's current movement;
// `refresh` redraws the counter after a screen closes.
class CashDayMenu {
public:
    static void build(QMenuBar* bar, AppContext& ctx, std::function<clsMovimento()> movimento,
                      std::function<void()> refresh, QWidget* parent);
};
