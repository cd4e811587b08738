#pragma once

#include <functional>

class AppContext;
class CommandRegistry;
class QWidget;

// The reading's tools in the main window's menus: the interest calculator and the holidays
// (after the administrator's password). Two entries, so the shell places each in its order
// among the tools; `after` gives the keyboard back to the counter once the screen closes.
class BarcodeMenu {
public:
    static void addJuros(CommandRegistry& registry, AppContext& ctx, std::function<void()> after,
                         QWidget* parent);
    static void addFeriados(CommandRegistry& registry, AppContext& ctx, std::function<void()> after,
                            QWidget* parent);
};
