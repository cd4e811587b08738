#pragma once

#include <QString>

// Salted PBKDF2-SHA256 of the case-folded password, stored as
// "pbkdf2-sha256$<iterations>$<salt base64>$<hash base64>". Folding keeps the login
// case-insensitive as it always was.
class PasswordHash {
public:
    static constexpr int kIterations = 4000;

    static QString hash(const QString& password, int iterations = kIterations);
    static bool verify(const QString& password, const QString& stored);
    static bool looksHashed(const QString& stored);
};
