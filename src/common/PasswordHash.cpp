#include "PasswordHash.h"

#include <QCryptographicHash>
#include <QPasswordDigestor>
#include <QRandomGenerator>
#include <QStringList>

namespace {
QByteArray derive(const QString& password, const QByteArray& salt, int iterations) {
    return QPasswordDigestor::deriveKeyPbkdf2(
        QCryptographicHash::Sha256, password.toCaseFolded().toUtf8(), salt, iterations, 32);
}
} // namespace

QString PasswordHash::hash(const QString& password, int iterations) {
    QByteArray salt(16, Qt::Uninitialized);
    QRandomGenerator::system()->generate(salt.begin(), salt.end());
    return QStringLiteral("pbkdf2-sha256$%1$%2$%3")
        .arg(iterations)
        .arg(QString::fromLatin1(salt.toBase64()),
             QString::fromLatin1(derive(password, salt, iterations).toBase64()));
}

bool PasswordHash::looksHashed(const QString& stored) {
    return stored.startsWith(QLatin1String("pbkdf2-sha256$")) &&
           stored.count(QLatin1Char('$')) == 3;
}

bool PasswordHash::verify(const QString& password, const QString& stored) {
    if (!looksHashed(stored))
        return false;
    const QStringList parts = stored.split(QLatin1Char('$'));
    bool ok = false;
    const int iterations = parts[1].toInt(&ok);
    if (!ok || iterations <= 0 || iterations > 10'000'000)
        return false;
    const QByteArray salt = QByteArray::fromBase64(parts[2].toLatin1());
    const QByteArray expected = QByteArray::fromBase64(parts[3].toLatin1());
    const QByteArray actual = derive(password, salt, iterations);
    if (actual.size() != expected.size())
        return false;
    unsigned char diff = 0; // constant time
    for (int i = 0; i < actual.size(); ++i)
        diff |= static_cast<unsigned char>(actual[i] ^ expected[i]);
    return diff == 0;
}
