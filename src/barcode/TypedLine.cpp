#include "TypedLine.h"

#include "CheckDigits.h"
#include "SystemTexts.h"

#include <QVarLengthArray>
#include <array>
#include <bit>
#include <cstring>

namespace {

using Reason = TypedLine::Reason;

enum ByteClass : quint8 { Separator = 0, Digit = 1, Other = 2 };

constexpr std::array<quint8, 256> kClass = [] {
    std::array<quint8, 256> t{};
    t.fill(Other);
    for (int c = '0'; c <= '9'; ++c)
        t[c] = Digit;
    for (int c : {'.', '-', ' ', '\t', '\n', '\v', '\f', '\r'})
        t[c] = Separator;
    return t;
}();

quint8 classOf(char c) {
    return kClass[static_cast<unsigned char>(c)];
}

int digit(char c) {
    return c - '0';
}

// Eight bytes at a time: a byte below '0' borrows and one above '9' carries into its top bit.
bool allDigits(const char* p, size_t n) {
    const auto word = [p](size_t at) {
        quint64 w;
        std::memcpy(&w, p + at, sizeof w);
        return ((w - 0x3030303030303030ULL) | (w + 0x4646464646464646ULL)) & 0x8080808080808080ULL;
    };
    quint64 bad = word(n - 8);
    for (size_t at = 0; at + 8 <= n; at += 8)
        bad |= word(at);
    return bad == 0;
}

constexpr size_t kShortLine = 64; // a printed line with its separators fits

// The digits of up to kShortLine bytes, without their separators, into `digits` (16 bytes of
// room after them); -1 when a byte is neither. The bytes that are not digits are found eight at a
// time on a little-endian machine, and the digits between them are moved in runs.
int compact(const char* p, size_t n, char* digits) {
    if constexpr (std::endian::native != std::endian::little) {
        int count = 0;
        for (size_t i = 0; i < n; ++i) {
            const quint8 k = classOf(p[i]);
            if (k == Other)
                return -1;
            digits[count] = p[i];
            count += k;
        }
        return count;
    }
    constexpr quint64 ones = 0x0101010101010101ULL;
    constexpr quint64 high = 0x8080808080808080ULL;
    char line[kShortLine + 16];
    std::memset(line, ' ', sizeof line);
    std::memcpy(line, p, n);
    quint64 others = 0; // bit i: byte i is not a digit
    for (size_t at = 0; at < n; at += 8) {
        quint64 w;
        std::memcpy(&w, line + at, 8);
        if (w & high)
            return -1;
        // With every top bit clear the additions cannot carry from one byte into the next.
        const quint64 digitBytes = (w + (0x80 - '0') * ones) & ~(w + (0x7F - '9') * ones);
        const quint64 notDigit = (~digitBytes & high) >> 7;
        others |= ((notDigit * 0x0102040810204080ULL) >> 56) << at; // a bit per byte
    }
    if (n < 64)
        others &= (quint64(1) << n) - 1;
    int count = 0;
    size_t start = 0;
    for (;;) {
        const size_t end = others != 0 ? size_t(std::countr_zero(others)) : n;
        std::memcpy(digits + count, line + start, 16);
        for (size_t i = start + 16; i < end; i += 16)
            std::memcpy(digits + count + (i - start), line + i, 16);
        count += int(end - start);
        if (others == 0)
            return count;
        if (classOf(line[end]) != Separator)
            return -1;
        others &= others - 1;
        start = end + 1;
    }
}

Reason field(int i) {
    return static_cast<Reason>(static_cast<int>(Reason::Field1) + i);
}

// 47 digits: three fields with a modulo 10 digit each, the general digit, factor and value.
Reason bankSlip(const char* l, char* b) {
    using CheckDigits::modulo10;
    if (modulo10<9>(l) != digit(l[9]))
        return Reason::Field1;
    if (modulo10<10>(l + 10) != digit(l[20]))
        return Reason::Field2;
    if (modulo10<10>(l + 21) != digit(l[31]))
        return Reason::Field3;
    std::memcpy(b, l, 4);
    b[4] = l[32];
    std::memcpy(b + 5, l + 33, 14);
    std::memcpy(b + 19, l + 4, 5);
    std::memcpy(b + 24, l + 10, 10);
    std::memcpy(b + 34, l + 21, 10);
    char body[43];
    std::memcpy(body, b, 4);
    std::memcpy(body + 4, b + 5, 39);
    return CheckDigits::modulo11Slip<43>(body) == digit(b[4]) ? Reason::Ok : Reason::GeneralDigit;
}

// 48 digits: four blocks of eleven digits, each with its check digit, all by the modulo that the
// value identifier chooses.
template <int (*Digit11)(const char*), int (*Digit43)(const char*)>
Reason collectionBlocks(const char* l, char* b) {
    for (int i = 0; i < 4; ++i) {
        const char* block = l + i * 12;
        if (Digit11(block) != digit(block[11]))
            return field(i);
        std::memcpy(b + i * 11, block, 11);
    }
    char body[43];
    std::memcpy(body, b, 3);
    std::memcpy(body + 3, b + 4, 40);
    return Digit43(body) == digit(b[3]) ? Reason::Ok : Reason::GeneralDigit;
}

Reason collection(const char* l, char* b) {
    using namespace CheckDigits;
    if (l[0] != '8')
        return Reason::NotCollection;
    if (l[1] == '0')
        return Reason::Segment0;
    if (l[1] == '8')
        return Reason::Segment8;
    return l[2] < '8' ? collectionBlocks<modulo10<11>, modulo10<43>>(l, b)
                      : collectionBlocks<modulo11Collection<11>, modulo11Collection<43>>(l, b);
}

Reason layout(const char* digits, size_t n, char* barcode44) {
    if (n == 47)
        return bankSlip(digits, barcode44);
    if (n == 48)
        return collection(digits, barcode44);
    return Reason::NotALine;
}

} // namespace

TypedLine::Reason TypedLine::decode(std::string_view line, char* barcode44) {
    const char* p = line.data();
    size_t n = line.size();
    if ((n == 47 || n == 48) && allDigits(p, n))
        return layout(p, n, barcode44); // the line as most files hold it
    while (n > 0 && classOf(p[n - 1]) == Separator)
        --n;
    while (n > 0 && classOf(*p) == Separator)
        ++p, --n;
    if ((n == 47 || n == 48) && allDigits(p, n))
        return layout(p, n, barcode44);
    char digits[kShortLine + 16];
    if (n <= kShortLine) {
        const int count = compact(p, n, digits);
        return count < 0 ? Reason::NotALine : layout(digits, size_t(count), barcode44);
    }
    size_t count = 0;
    for (size_t i = 0; i < n; ++i) {
        const quint8 k = classOf(p[i]);
        if (k == Other || (k == Digit && count == 48))
            return Reason::NotALine;
        if (k == Digit)
            digits[count++] = p[i];
    }
    return layout(digits, count, barcode44);
}

TypedLine::Reason TypedLine::decode(const QString& line, char* barcode44) {
    QVarLengthArray<char, 128> bytes;
    for (QChar c : line) {
        if (c.isSpace()) // any Unicode blank separates; other characters past ASCII are refused
            continue;
        bytes.append(c.unicode() < 0x80 ? static_cast<char>(c.unicode()) : '\x80');
    }
    return decode(std::string_view(bytes.constData(), size_t(bytes.size())), barcode44);
}

TypedLine::Result TypedLine::toBarcode(const QString& line) {
    char barcode[44];
    const Reason r = decode(line, barcode);
    if (r != Reason::Ok)
        return {QString(), campo(r), message(r), r};
    return {QString::fromLatin1(barcode, 44), 0, QString(), r};
}

int TypedLine::campo(Reason reason) {
    if (reason >= Reason::Field1)
        return static_cast<int>(reason) - static_cast<int>(Reason::Field1) + 1;
    return reason == Reason::GeneralDigit || reason == Reason::Ok ? 0 : -1;
}

QString TypedLine::message(Reason reason) {
    switch (reason) {
    case Reason::Ok:
        return {};
    case Reason::NotALine:
        return SystemTexts::text(SystemText::LinhaDigitavelTamanho);
    case Reason::NotCollection:
        return SystemTexts::text(SystemText::LinhaArrecadacaoComOito);
    case Reason::Segment0:
    case Reason::Segment8:
        return SystemTexts::text(SystemText::SegmentoInexistente)
            .arg(reason == Reason::Segment0 ? 0 : 8);
    case Reason::GeneralDigit:
        return SystemTexts::text(SystemText::DigitoGeralLinha);
    default:
        return SystemTexts::text(SystemText::DigitoCampoLinha).arg(campo(reason));
    }
}

QString TypedLine::fromBarcode(const QString& barcode) {
    if (barcode.size() != 44 || !isAllDigits(barcode))
        return {};
    const QByteArray b = barcode.toLatin1();
    const char* c = b.constData();
    char line[48];
    if (c[0] == '8') {
        for (int i = 0; i < 4; ++i) {
            std::memcpy(line + i * 12, c + i * 11, 11);
            line[i * 12 + 11] = char('0' + CheckDigits::collection(c[2], {c + i * 11, 11}));
        }
        return QString::fromLatin1(line, 48);
    }
    std::memcpy(line, c, 4);
    std::memcpy(line + 4, c + 19, 5);
    std::memcpy(line + 10, c + 24, 10);
    std::memcpy(line + 21, c + 34, 10);
    line[32] = c[4];
    std::memcpy(line + 33, c + 5, 14);
    line[9] = char('0' + CheckDigits::modulo10<9>(line));
    line[20] = char('0' + CheckDigits::modulo10<10>(line + 10));
    line[31] = char('0' + CheckDigits::modulo10<10>(line + 21));
    return QString::fromLatin1(line, 47);
}

bool TypedLine::pareceComecoDeLinha(const QString& digits44) {
    if (digits44.size() != 44 || !isAllDigits(digits44))
        return false;
    const QByteArray b = digits44.toLatin1();
    const char* l = b.constData();
    if (l[0] == '8') {
        for (int i = 0; i < 3; ++i)
            if (CheckDigits::collection(l[2], {l + i * 12, 11}) != digit(l[i * 12 + 11]))
                return false;
        return true;
    }
    return CheckDigits::modulo10<9>(l) == digit(l[9]) &&
           CheckDigits::modulo10<10>(l + 10) == digit(l[20]) &&
           CheckDigits::modulo10<10>(l + 21) == digit(l[31]);
}
