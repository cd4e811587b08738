#pragma once

#include <memory>

class CommandRegistry;
class CounterSession;
class frmFrente;

// The application's main window: the counter screen with the menus and the ribbon built from
// the commands each subsystem registers. Menus and ribbon come from one list, so they agree.
class AppShell {
public:
    static std::unique_ptr<frmFrente> counter(CounterSession& session, bool consulta);
    // Every subsystem's commands for `front`, in the menus' order.
    static void registerAll(frmFrente& front, CommandRegistry& registry);
    // The menus and the ribbon of `front` from `registry`.
    static void build(frmFrente& front, const CommandRegistry& registry);
};
