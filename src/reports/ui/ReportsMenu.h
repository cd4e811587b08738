#pragma once

#include <QDate>
#include <functional>

class AppContext;
class CommandRegistry;
class QDialog;
class QWidget;

// The counter's Relatórios menu: the day's bulletin and the period report, each shown in a
// preview first. `dia` answers the counter's working date.
class ReportsMenu {
public:
    static void add(CommandRegistry& registry, AppContext& ctx, std::function<QDate()> dia,
                    QWidget* parent);
    // The previews, also used by the screen gallery; nullptr (operator told why) when the
    // report cannot be made.
    static QDialog* boletim(AppContext& ctx, const QDate& dia, QWidget* parent);
    static QDialog* periodo(AppContext& ctx, const QDate& de, const QDate& ate, QWidget* parent);
};
