#pragma once

#include <QDate>
#include <QString>

class AppContext;

// The rules of the date screen: log the operator in, check the chosen date, and fix it as the
// working date. Messages go through the dialog port; false means the screen stays.
class DateScreenLogic {
public:
    enum class Action { Consultar, AbrirCaixa };

    static bool proceed(AppContext& ctx, const QString& senha, const QDate& chosen, Action action);
    // The date's part alone, for an operator already logged in (the command line).
    static bool checkDate(AppContext& ctx, const QDate& chosen, Action action);
};
