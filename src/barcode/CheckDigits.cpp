#include "CheckDigits.h"

bool isAllDigits(const QString& text) {
    if (text.isEmpty())
        return false;
    for (QChar c : text)
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return false;
    return true;
}

namespace {
// Products summed into a 16-bit signed total, as the program always summed them; 43 digits
// cannot reach its limit, so it never wraps in practice.
qint16 weightedSum10(const QString& digits) {
    qint16 sum = 0;
    int weight = 2;
    for (int i = digits.size() - 1; i >= 0; --i) {
        int p = digits[i].digitValue() * weight;
        if (p > 9)
            p = p / 10 + p % 10;
        sum = static_cast<qint16>(sum + p);
        weight = weight == 2 ? 1 : 2;
    }
    return sum;
}

qint16 weightedSum11(const QString& digits) {
    qint16 sum = 0;
    int weight = 2;
    for (int i = digits.size() - 1; i >= 0; --i) {
        sum = static_cast<qint16>(sum + digits[i].digitValue() * weight);
        weight = weight == 9 ? 2 : weight + 1;
    }
    return sum;
}
} // namespace

QString Modulo10_arrecadacao(const QString& digits) {
    if (!isAllDigits(digits))
        return {};
    const int r = weightedSum10(digits) % 10;
    return QString::number(r == 0 ? 0 : 10 - r);
}

QString Modulo11_arrecadacao(const QString& digits) {
    if (!isAllDigits(digits))
        return {};
    const int r = weightedSum11(digits) % 11;
    if (r == 0 || r == 1)
        return QStringLiteral("0");
    if (r == 10)
        return QStringLiteral("1");
    return QString::number(11 - r);
}

int Modulo11_boleto(const QString& digits43) {
    if (!isAllDigits(digits43))
        return -1;
    const int d = 11 - weightedSum11(digits43) % 11;
    return (d == 10 || d == 11) ? 1 : d;
}

int Modulo10_campo(const QString& digits) {
    if (!isAllDigits(digits))
        return -1;
    const int r = weightedSum10(digits) % 10;
    return r == 0 ? 0 : 10 - r;
}
