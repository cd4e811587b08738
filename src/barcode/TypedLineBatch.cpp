#include "TypedLineBatch.h"

#include <algorithm>
#include <cstring>

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

qint64 TypedLineBatch::run(std::FILE* in, std::FILE* out) {
    TypedLineBatch batch([out](std::string_view b) { std::fwrite(b.data(), 1, b.size(), out); });
    std::vector<char> block(kBlock);
    size_t got = 0;
    while ((got = std::fread(block.data(), 1, block.size(), in)) > 0)
        batch.feed({block.data(), got});
    batch.finish();
    std::fflush(out);
    return batch.refused();
}
