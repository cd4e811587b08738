#pragma once

#include "CliFolder.h"
#include "DbConfig.h"

// A counter of the network: a demo folder pointed at a central, with a time limit long enough
// for commands that wait on it.
class CentralCliFolder : public CliFolder {
public:
    static constexpr int kTimeoutMs = 2 * CliRun::kTimeoutMs;

    CentralCliFolder(const QString& guiche, const DbConfig& central);

    // A local port where nothing listens: a central that does not answer.
    static int closedPort();
};
