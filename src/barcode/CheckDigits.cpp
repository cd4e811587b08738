#include "CheckDigits.h"

#include <QByteArray>
#include <array>

namespace {

// A digit's modulo 10 term by its byte ('7' -> 14 -> 5 with weight 2).
constexpr std::array<std::array<quint8, 256>, 3> kTerm10 = [] {
    std::array<std::array<quint8, 256>, 3> t{};
    for (int w = 1; w <= 2; ++w)
        for (int d = 0; d <= 9; ++d)
            t[size_t(w)]['0' + d] = static_cast<quint8>(w * d > 9 ? w * d - 9 : w * d);
    return t;
}();

std::string_view view(const QByteArray& b) {
    return {b.constData(), static_cast<size_t>(b.size())};
}
} // namespace

namespace CheckDigits {

qint16 sum10(std::string_view d) {
    int sum = 0;
    for (size_t k = 0; k < d.size(); ++k)
        sum += kTerm10[size_t(weight10(k))][static_cast<unsigned char>(d[d.size() - 1 - k])];
    return static_cast<qint16>(sum);
}

qint16 sum11(std::string_view d) {
    int sum = 0;
    for (size_t k = 0; k < d.size(); ++k)
        sum += (d[d.size() - 1 - k] - '0') * weight11(k);
    return static_cast<qint16>(sum);
}

bool allDigits(std::string_view text) {
    if (text.empty())
        return false;
    for (char c : text)
        if (c < '0' || c > '9')
            return false;
    return true;
}

} // namespace CheckDigits

bool isAllDigits(const QString& text) {
    if (text.isEmpty())
        return false;
    for (QChar c : text)
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return false;
    return true;
}

QString Modulo10_arrecadacao(const QString& digits) {
    if (!isAllDigits(digits))
        return {};
    const QByteArray b = digits.toLatin1();
    return QString::number(CheckDigits::modulo10(view(b)));
}

QString Modulo11_arrecadacao(const QString& digits) {
    if (!isAllDigits(digits))
        return {};
    const QByteArray b = digits.toLatin1();
    return QString::number(CheckDigits::modulo11Collection(view(b)));
}

int Modulo11_boleto(const QString& digits43) {
    if (!isAllDigits(digits43))
        return -1;
    const QByteArray b = digits43.toLatin1();
    return CheckDigits::modulo11Slip(view(b));
}

int Modulo10_campo(const QString& digits) {
    if (!isAllDigits(digits))
        return -1;
    const QByteArray b = digits.toLatin1();
    return CheckDigits::modulo10(view(b));
}
