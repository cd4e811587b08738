#pragma once

#include <QString>

class AppContext;

// A small realistic set for trying the program: kinds of guide and of money, this year's
// national holidays and an administrator. Only what is missing is added.
class DemoData {
public:
    // Answers the administrator's password when one was created (shown once), else empty.
    static bool seed(AppContext& ctx, QString* adminPassword, QString* error);
};
