#pragma once

#include <functional>

class AppContext;
class CommandRegistry;
class QWidget;

// The administration's commands of the main window: the guide kinds, users and options (each
// after the administrator's password), the skin, the update, and the stamping of a loose
// document (a tool). `after` redraws the counter once a screen closes.
class AdminMenu {
public:
    static void add(CommandRegistry& registry, AppContext& ctx, std::function<void()> after,
                    QWidget* parent);
};
