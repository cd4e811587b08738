#pragma once

class AppContext;

// Puts the chosen skin on every window of the program (the default one when it cannot be used).
class SkinLook {
public:
    static void apply(AppContext& ctx);
};
