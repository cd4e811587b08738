#pragma once

class CommandRegistry;
class frmFrente;

// The counter's own entries of the main window's menus: Caixa and Soma (the day, the re-stamps,
// the customer's sum), and the calculator among the tools, whose result is the value of a
// typed item. The shell places them among the other subsystems' commands.
class CounterCommands {
public:
    static void add(CommandRegistry& registry, frmFrente& counter);
    static void addTools(CommandRegistry& registry, frmFrente& counter);
};
