#include "Interleaved2of5.h"

#include <algorithm>
#include <numeric>

namespace {

// Which of a digit's five elements are wide (1), from the standard's table.
constexpr const char* kPatterns[10] = {"00110", "10001", "01001", "11000", "00101",
                                       "10100", "01100", "00011", "10010", "01010"};

bool evenDigits(const QString& digits) {
    if (digits.isEmpty() || digits.size() % 2 != 0)
        return false;
    return std::all_of(digits.begin(), digits.end(),
                       [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); });
}

} // namespace

QList<int> Interleaved2of5::elements(const QString& digits, int wide) {
    if (!evenDigits(digits))
        return {};
    QList<int> out{1, 1, 1, 1};
    for (qsizetype i = 0; i < digits.size(); i += 2) {
        const char* bars = kPatterns[digits[i].unicode() - '0'];
        const char* spaces = kPatterns[digits[i + 1].unicode() - '0'];
        for (int k = 0; k < 5; ++k) {
            out << (bars[k] == '1' ? wide : 1);
            out << (spaces[k] == '1' ? wide : 1);
        }
    }
    out << wide << 1 << 1;
    return out;
}

int Interleaved2of5::modules(const QList<int>& elements) {
    return std::accumulate(elements.begin(), elements.end(), 0);
}
