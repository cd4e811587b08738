#pragma once

#include <QString>

// Salted PBKDF2-SHA256 of the case-folded password, stored as
// "pbkdf2-sha256$<iterations>$<salt base64>$<hash base64>". Folding keeps the login
// case-insensitive.
class PasswordHash {
public:
    // Login compares against every operator (exactly one must match), so the cost is paid once
    // per operator: 2500 rounds keep 50 operators well under half a second.
    static constexpr int kIterations = 2500;

    static QString hash(const QString& password, int iterations = kIterations);
    static bool verify(const QString& password, const QString& stored);
    static bool looksHashed(const QString& stored);
};
