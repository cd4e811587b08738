#pragma once

#include <QString>
#include <array>
#include <bit>
#include <cstring>
#include <string_view>
#include <utility>

// The check digits of collection codes (modulo 10 and 11) and of bank slips (modulo 11), and the
// modulo 10 of a typed line's fields. The byte routines take ASCII digits that the caller has
// already checked and allocate nothing; the text routines at the end check and call them.
namespace CheckDigits {

// Weights counted from the rightmost digit: modulo 10 takes 2, 1, 2, 1 ... and adds the digits
// of a product over 9; modulo 11 takes 2, 3 ... 9, then 2 again.
constexpr int weight10(size_t fromRight) {
    return fromRight % 2 == 0 ? 2 : 1;
}
constexpr int weight11(size_t fromRight) {
    return 2 + int(fromRight % 8);
}

// Totals are kept in 16 signed bits, which a line's 43 digits come nowhere near.
qint16 sum10(std::string_view digits);
qint16 sum11(std::string_view digits);

// The same sums for a length known when compiling (the typed lines' fixed fields), eight digits
// at a time where the machine is little-endian. Words are taken back from the last digit, so byte
// m of every word lies 7 - m places (plus a multiple of 8) from it and has that distance's weight.
namespace packed {
constexpr quint64 kOnes = 0x0101010101010101ULL;
constexpr quint64 kEvenBytes = 0x00FF00FF00FF00FFULL;
constexpr bool kUsable = std::endian::native == std::endian::little;

// The digit values of the N digits at d, word K counted from the end; the first word holds the
// remaining N % 8 digits in its top bytes and zeros below them.
template <size_t N, size_t K> quint64 word(const char* d) {
    static_assert(N >= 8);
    quint64 w;
    if constexpr (8 * (K + 1) <= N) {
        std::memcpy(&w, d + N - 8 * (K + 1), 8);
        return w - '0' * kOnes;
    } else {
        constexpr unsigned shift = 8 * (8 - N % 8);
        std::memcpy(&w, d, 8);
        return (w << shift) - (('0' * kOnes) << shift);
    }
}

// Top bit of each doubled digit (odd bytes: weight 2) that is 5 or more, moved to the byte's low
// bit: its product passes 9 and loses 9 when its two digits are added.
inline quint64 over9(quint64 v) {
    constexpr quint64 doubled = 0xFF00FF00FF00FF00ULL;
    return (((v & doubled) + 0x7B * kOnes) >> 7) & kOnes & doubled;
}

// Adds the bytes of a word whose bytes hold up to 255, in 16 bits.
inline int addBytes(quint64 lanes) {
    const quint64 pairs = (lanes & kEvenBytes) + ((lanes >> 8) & kEvenBytes);
    return int((pairs * 0x0001000100010001ULL) >> 48);
}

// Byte m holds the weight 9 - m: multiplying by the weights in reverse order leaves the dot
// product in the top 16 bits.
inline int weigh11(quint64 lanes) {
    constexpr quint64 evenWeights = 9ULL << 48 | 7ULL << 32 | 5ULL << 16 | 3ULL;
    constexpr quint64 oddWeights = 8ULL << 48 | 6ULL << 32 | 4ULL << 16 | 2ULL;
    const quint64 even = lanes & kEvenBytes;
    const quint64 odd = (lanes >> 8) & kEvenBytes;
    return int(((even * evenWeights) >> 48) + ((odd * oddWeights) >> 48));
}
} // namespace packed

template <size_t N> unsigned sum10(const char* d) {
    if constexpr (!packed::kUsable) {
        return unsigned(sum10(std::string_view(d, N)));
    } else {
        return [d]<size_t... K>(std::index_sequence<K...>) {
            constexpr quint64 doubled = 0xFF00FF00FF00FF00ULL;
            const quint64 digits = (packed::word<N, K>(d) + ...);
            const quint64 over = (packed::over9(packed::word<N, K>(d)) + ...);
            // Each digit once, the doubled ones twice, less 9 for each that passed 9.
            const quint64 terms = digits + (digits & doubled);
            const unsigned total = N <= 16 ? unsigned((terms * packed::kOnes) >> 56)
                                           : unsigned(packed::addBytes(terms));
            return total - 9 * unsigned((over * packed::kOnes) >> 56);
        }
        (std::make_index_sequence<(N + 7) / 8>{});
    }
}

template <size_t N> unsigned sum11(const char* d) {
    if constexpr (!packed::kUsable) {
        return unsigned(sum11(std::string_view(d, N)));
    } else {
        return [d]<size_t... K>(std::index_sequence<K...>) {
            return unsigned(packed::weigh11((packed::word<N, K>(d) + ...)));
        }
        (std::make_index_sequence<(N + 7) / 8>{});
    }
}

// The digits from the sums: the 16-bit totals of any length, or the unsigned ones of the fixed
// fields, which are never negative.
template <class Sum> constexpr int digitOfSum10(Sum sum) {
    const int r = int(sum % 10);
    return r == 0 ? 0 : 10 - r;
}
template <class Sum> constexpr int digitOfSum11Collection(Sum sum) {
    const int r = int(sum % 11);
    if (r == 0 || r == 1)
        return 0;
    return r == 10 ? 1 : 11 - r;
}
template <class Sum> constexpr int digitOfSum11Slip(Sum sum) {
    const int d = 11 - int(sum % 11);
    return (d == 10 || d == 11) ? 1 : d;
}

bool allDigits(std::string_view text);
inline int modulo10(std::string_view digits) { // 0 to 9
    return digitOfSum10(sum10(digits));
}
inline int modulo11Collection(std::string_view digits) { // 0 to 9
    return digitOfSum11Collection(sum11(digits));
}
inline int modulo11Slip(std::string_view digits43) { // 1 to 9; 0 never produced
    return digitOfSum11Slip(sum11(digits43));
}
// A collection code's digit: modulo 10 when the value identifier (its third digit) is below 8.
inline int collection(char valueId, std::string_view digits) {
    return valueId < '8' ? modulo10(digits) : modulo11Collection(digits);
}

template <size_t N> int modulo10(const char* d) {
    return digitOfSum10(sum10<N>(d));
}
template <size_t N> int modulo11Collection(const char* d) {
    return digitOfSum11Collection(sum11<N>(d));
}
template <size_t N> int modulo11Slip(const char* d) {
    return digitOfSum11Slip(sum11<N>(d));
}

} // namespace CheckDigits

QString Modulo10_arrecadacao(const QString& digits); // empty when not all digits
QString Modulo11_arrecadacao(const QString& digits); // empty when not all digits
int Modulo11_boleto(const QString& digits43);        // 1 to 9; 0 never produced
int Modulo10_campo(const QString& digits); // bank-slip line field, 0 to 9; -1 when not digits

bool isAllDigits(const QString& text);
