#include "PasswordHash.h"

#include <QRandomGenerator>
#include <algorithm>
#include <atomic>
#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <system_error>
#include <thread>
#include <vector>

namespace {

constexpr int kHashBytes = 32;
constexpr int kMaxIterations = 10'000'000;

struct Stored {
    int iterations = 0; // 0: not a hash
    QByteArray salt;
    QByteArray expected;
};

Stored parse(const QString& stored) {
    if (!PasswordHash::looksHashed(stored))
        return {};
    const QStringList parts = stored.split(QLatin1Char('$'));
    bool ok = false;
    const int iterations = parts[1].toInt(&ok);
    if (!ok || iterations <= 0 || iterations > kMaxIterations)
        return {};
    return {iterations, QByteArray::fromBase64(parts[2].toLatin1()),
            QByteArray::fromBase64(parts[3].toLatin1())};
}

QByteArray derive(const QByteArray& folded, const QByteArray& salt, int iterations) {
    QByteArray key(kHashBytes, Qt::Uninitialized);
    const bool ok = PKCS5_PBKDF2_HMAC(folded.constData(), int(folded.size()),
                                      reinterpret_cast<const unsigned char*>(salt.constData()),
                                      int(salt.size()), iterations, EVP_sha256(), kHashBytes,
                                      reinterpret_cast<unsigned char*>(key.data())) == 1;
    return ok ? key : QByteArray();
}

bool matches(const QByteArray& folded, const Stored& s) {
    if (s.iterations == 0 || s.expected.size() != kHashBytes)
        return false;
    const QByteArray actual = derive(folded, s.salt, s.iterations);
    return actual.size() == kHashBytes &&
           CRYPTO_memcmp(actual.constData(), s.expected.constData(), kHashBytes) == 0;
}

QByteArray folded(const QString& password) {
    return password.toCaseFolded().toUtf8();
}

} // namespace

QString PasswordHash::hash(const QString& password, int iterations) {
    QByteArray salt(16, Qt::Uninitialized);
    QRandomGenerator::system()->generate(salt.begin(), salt.end());
    return QStringLiteral("pbkdf2-sha256$%1$%2$%3")
        .arg(iterations)
        .arg(QString::fromLatin1(salt.toBase64()),
             QString::fromLatin1(derive(folded(password), salt, iterations).toBase64()));
}

bool PasswordHash::looksHashed(const QString& stored) {
    return stored.startsWith(QLatin1String("pbkdf2-sha256$")) &&
           stored.count(QLatin1Char('$')) == 3;
}

int PasswordHash::iterations(const QString& stored) {
    return parse(stored).iterations;
}

bool PasswordHash::verify(const QString& password, const QString& stored) {
    return matches(folded(password), parse(stored));
}

QList<bool> PasswordHash::verifyAll(const QString& password, const QStringList& stored) {
    const QByteArray key = folded(password);
    std::vector<Stored> hashes;
    hashes.reserve(size_t(stored.size()));
    for (const QString& s : stored)
        hashes.push_back(parse(s));
    std::vector<char> found(hashes.size(), 0);
    std::atomic<size_t> next{0};
    const auto work = [&] {
        for (size_t i = next++; i < hashes.size(); i = next++)
            found[i] = matches(key, hashes[i]) ? 1 : 0;
    };
    const size_t cores = std::max(1u, std::thread::hardware_concurrency());
    std::vector<std::thread> helpers;
    for (size_t t = 1; t < std::min(cores, hashes.size()); ++t) {
        try {
            helpers.emplace_back(work);
        } catch (const std::system_error&) {
            break; // fewer helpers: the ones running take the rest
        }
    }
    work();
    for (std::thread& t : helpers)
        t.join();
    QList<bool> answers;
    answers.reserve(stored.size());
    for (char f : found)
        answers.append(f != 0);
    return answers;
}
