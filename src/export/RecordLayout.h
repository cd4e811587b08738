#pragma once

#include <QString>
#include <cstddef>
#include <string>

// One field of a fixed-width record as a bank's layout gives it: 1-based inclusive positions
// and what fills them (a property of the builder, a literal, or a run of one character).
// Each record kind is a table of these, so a bank's change of layout is a change of one row.
template <class Builder> struct LayoutField {
    int from = 0;
    int to = 0;
    QString Builder::*property = nullptr;
    const char* literal = nullptr;
    char fill = ' ';

    constexpr int width() const { return to - from + 1; }

    static constexpr LayoutField prop(int from, int to, QString Builder::*p) {
        return {from, to, p, nullptr, ' '};
    }
    static constexpr LayoutField text(int from, int to, const char* s) {
        return {from, to, nullptr, s, ' '};
    }
    static constexpr LayoutField blanks(int from, int to) {
        return {from, to, nullptr, nullptr, ' '};
    }
    static constexpr LayoutField zeros(int from, int to) {
        return {from, to, nullptr, nullptr, '0'};
    }
};

namespace RecordLayout {

// The rows follow each other from position 1 to `length` and every literal has its row's width.
// Checked at compile time next to each table.
template <class B, std::size_t N>
constexpr bool isComplete(const LayoutField<B> (&fields)[N], int length) {
    int next = 1;
    for (const LayoutField<B>& f : fields) {
        if (f.from != next || f.to < f.from)
            return false;
        if (f.literal && int(std::char_traits<char>::length(f.literal)) != f.width())
            return false;
        next = f.to + 1;
    }
    return next == length + 1;
}

// Composes the record from the builder's current properties. The builder pads nothing: the
// answer is true only when every property has exactly its field's width and the record has
// exactly `length` characters, so a value too long in one field and too short in another
// cannot shift the fields and still pass.
template <class B, std::size_t N>
bool compose(const B& builder, const LayoutField<B> (&fields)[N], int length, QString& out) {
    out.clear();
    out.reserve(length);
    bool exact = true;
    for (const LayoutField<B>& f : fields) {
        if (f.property) {
            const QString& value = builder.*(f.property);
            exact = exact && value.size() == f.width();
            out += value;
        } else if (f.literal) {
            out += QLatin1String(f.literal, f.width());
        } else {
            out.resize(out.size() + f.width(), QLatin1Char(f.fill));
        }
    }
    return exact && out.size() == length;
}

} // namespace RecordLayout
