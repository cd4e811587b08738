#include "TypedLineBatch.h"

#include <algorithm>
#include <cstring>
#include <future>
#include <string>

namespace {

// Reads of a megabyte; answers handed over a quarter of that at a time.
constexpr size_t kBlock = size_t(1) << 20;
constexpr size_t kFlushAt = size_t(1) << 18;

bool hasNonAscii(std::string_view line) {
    return std::any_of(line.begin(), line.end(), [](char c) { return (c & 0x80) != 0; });
}

} // namespace

TypedLineBatch::TypedLineBatch(Writer write) : m_write(std::move(write)) {
    size_t longest = 45;
    for (int i = 0; i < TypedLine::kReasons; ++i) {
        const auto reason = static_cast<TypedLine::Reason>(i);
        if (reason == TypedLine::Reason::Ok)
            continue;
        m_messages[i] = TypedLine::message(reason).toUtf8() + '\n';
        longest = std::max(longest, size_t(m_messages[i].size()));
    }
    m_out.resize(kFlushAt + longest);
}

void TypedLineBatch::feed(std::string_view bytes) {
    const char* p = bytes.data();
    const char* const end = p + bytes.size();
    if (!m_pending.empty()) {
        const auto* nl = static_cast<const char*>(std::memchr(p, '\n', size_t(end - p)));
        if (!nl) {
            m_pending.append(p, end);
            return;
        }
        m_pending.append(p, nl);
        answer(m_pending);
        m_pending.clear();
        p = nl + 1;
    }
    while (p < end) {
        const auto* nl = static_cast<const char*>(std::memchr(p, '\n', size_t(end - p)));
        if (!nl) {
            m_pending.assign(p, end);
            return;
        }
        answer({p, size_t(nl - p)});
        p = nl + 1;
    }
}

void TypedLineBatch::finish() {
    if (!m_pending.empty()) {
        answer(m_pending);
        m_pending.clear();
    }
    flush();
}

void TypedLineBatch::answer(std::string_view line) {
    ++m_lines;
    char* out = m_out.data() + m_used;
    TypedLine::Reason r = TypedLine::decode(line, out);
    // Text beyond ASCII may hold Unicode blanks, which separate like any other.
    if (r == TypedLine::Reason::NotALine && hasNonAscii(line))
        r = TypedLine::decode(QString::fromUtf8(line.data(), qsizetype(line.size())), out);
    if (r == TypedLine::Reason::Ok) {
        out[44] = '\n';
        m_used += 45;
    } else {
        ++m_refused;
        const QByteArray& m = m_messages[size_t(r)];
        std::memcpy(out, m.constData(), size_t(m.size()));
        m_used += size_t(m.size());
    }
    if (m_used >= kFlushAt)
        flush();
}

void TypedLineBatch::flush() {
    if (m_used > 0)
        m_write({m_out.data(), m_used});
    m_used = 0;
}

namespace {

// Lines from `from` up to the line end at or after `at` (or the end).
size_t afterLineEnd(const char* data, size_t at, size_t size) {
    if (at >= size)
        return size;
    const auto* nl = static_cast<const char*>(std::memchr(data + at, '\n', size - at));
    return nl ? size_t(nl - data) + 1 : size;
}

// The answers to whole lines, gathered in memory.
qint64 answerInto(std::string_view lines, std::string& answers) {
    answers.reserve(lines.size());
    TypedLineBatch batch([&answers](std::string_view b) { answers.append(b); });
    batch.feed(lines);
    batch.finish();
    return batch.refused();
}

// The rest of a line that did not fit in a piece: the batch answers it as it comes; what
// follows its end is left at the start of `buffer`, and its size returned.
size_t answerLongLine(std::FILE* in, std::FILE* out, std::vector<char>& buffer, size_t kept,
                      qint64& refused) {
    TypedLineBatch batch([out](std::string_view b) { std::fwrite(b.data(), 1, b.size(), out); });
    batch.feed({buffer.data(), kept});
    size_t got = 0;
    while ((got = std::fread(buffer.data(), 1, kBlock, in)) > 0) {
        const auto* nl = static_cast<const char*>(std::memchr(buffer.data(), '\n', got));
        if (!nl) {
            batch.feed({buffer.data(), got});
            continue;
        }
        const size_t line = size_t(nl - buffer.data()) + 1;
        batch.feed({buffer.data(), line});
        batch.finish();
        refused += batch.refused();
        std::memmove(buffer.data(), buffer.data() + line, got - line);
        return got - line;
    }
    batch.finish();
    refused += batch.refused();
    return 0;
}

// The input in pieces of a few megabytes; each piece is answered in two halves, one on another
// thread, and the answers are written in order: the decoding takes half the time when a second
// core is free.
qint64 runInPieces(std::FILE* in, std::FILE* out) {
    constexpr size_t kPiece = size_t(8) << 20;
    std::vector<char> buffer(kPiece + kBlock);
    size_t kept = 0; // the start of a line cut by the end of the last piece
    qint64 refused = 0;
    std::string first, second;
    for (;;) {
        const size_t got = std::fread(buffer.data() + kept, 1, kPiece, in);
        const size_t size = kept + got;
        if (size == 0)
            break;
        const char* data = buffer.data();
        // Whole lines only, unless the input has ended.
        size_t end = size;
        if (got > 0) {
            const char* last = data + size;
            while (last > data && last[-1] != '\n')
                --last;
            end = size_t(last - data);
        }
        const size_t mid = std::min(end, afterLineEnd(data, end / 2, end));
        first.clear();
        second.clear();
        auto other = std::async(std::launch::async, [&] {
            return answerInto({data + mid, end - mid}, second);
        });
        refused += answerInto({data, mid}, first);
        refused += other.get();
        std::fwrite(first.data(), 1, first.size(), out);
        std::fwrite(second.data(), 1, second.size(), out);
        if (got == 0)
            break;
        kept = size - end;
        std::memmove(buffer.data(), data + end, kept);
        if (kept > kBlock) // a "line" longer than a megabyte goes on, a block at a time
            kept = answerLongLine(in, out, buffer, kept, refused);
    }
    return refused;
}

} // namespace

qint64 TypedLineBatch::run(std::FILE* in, std::FILE* out) {
    const qint64 refused = runInPieces(in, out);
    std::fflush(out);
    return refused;
}
