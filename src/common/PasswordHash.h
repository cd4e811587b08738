#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// Salted PBKDF2-SHA256 of the case-folded password, stored as
// "pbkdf2-sha256$<iterations>$<salt base64>$<hash base64>". Folding keeps the login
// case-insensitive.
class PasswordHash {
public:
    // Login checks the password against every operator (exactly one must match), so the cost is
    // paid once per operator: 200 operators, checked on both cores of the counter's machine,
    // stay within half a second (docs/PERFORMANCE.md).
    static constexpr int kIterations = 15000;

    static QString hash(const QString& password, int iterations = kIterations);
    // A stored hash is checked with the rounds it was made with.
    static bool verify(const QString& password, const QString& stored);
    // The password against each stored hash, on every core; one answer per hash, in order.
    static QList<bool> verifyAll(const QString& password, const QStringList& stored);
    static bool looksHashed(const QString& stored);
    // The rounds a stored hash was made with; 0 when the text is not a hash.
    static int iterations(const QString& stored);
    // Made with fewer rounds than a new hash gets.
    static bool needsRehash(const QString& stored) { return iterations(stored) < kIterations; }
};
