#pragma once

#include "TypedLine.h"

#include <QByteArray>
#include <array>
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

// Answers typed lines one per input line, in order: the 44-digit barcode, or the refusal's
// message (UTF-8). Lines end with a line feed; a carriage return before it is a blank like any
// other, and a last line without its end is answered too. Answers are gathered in one buffer and
// handed to the writer in large pieces.
class TypedLineBatch {
public:
    using Writer = std::function<void(std::string_view)>;

    explicit TypedLineBatch(Writer write);
    TypedLineBatch(const TypedLineBatch&) = delete;
    TypedLineBatch& operator=(const TypedLineBatch&) = delete;

    void feed(std::string_view bytes); // any piece of the input, cut anywhere
    void finish();                     // the last line without its end; hands everything over

    qint64 lines() const { return m_lines; }
    qint64 refused() const { return m_refused; }

    // Reads `in` to its end in large blocks and answers on `out`; answers the refused count.
    static qint64 run(std::FILE* in, std::FILE* out);

private:
    void answer(std::string_view line);
    void flush();

    Writer m_write;
    std::string m_pending; // the start of a line cut by the end of a piece
    std::vector<char> m_out;
    size_t m_used = 0;
    std::array<QByteArray, TypedLine::kReasons> m_messages; // each with its line end
    qint64 m_lines = 0;
    qint64 m_refused = 0;
};
