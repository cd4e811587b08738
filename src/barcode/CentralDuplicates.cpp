#include "CentralDuplicates.h"

namespace {
// Set once at start, before any reading; it keeps no state of its own.
CentralDuplicates* g_answerer = nullptr;
} // namespace

void CentralDuplicates::registrar(CentralDuplicates* answerer) {
    g_answerer = answerer;
}

CentralDuplicates* CentralDuplicates::answerer() {
    return g_answerer;
}
