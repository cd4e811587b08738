#pragma once

class AppContext;

// The update check of the program's start: when a newer version is published, the question;
// on Yes the updater is started and the answer is true (the program then closes so it can be
// replaced).
class UpdateOffer {
public:
    static constexpr int kWaitMs = 900; // an unreachable share never holds the start longer

    static bool run(AppContext& ctx, int waitMs = kWaitMs);
};
