#pragma once

class AppContext;
class CentralNetwork;

// The central of this run: the one the screens' start-up set, else one made on first use when
// Config.ini names a central; nullptr without one.
class CentralAccess {
public:
    static CentralNetwork* of(AppContext& ctx);
    // Whether codes go to a central (Config.ini has [Rede] host).
    static bool configurada(AppContext& ctx);
    // Makes this the answer to the reading's duplicate question (CentralDuplicates); called once
    // at start by whatever runs the counter.
    static void registrar();
};
