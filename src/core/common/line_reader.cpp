#include "line_reader.h"

#include <cstring>
#include <limits>

namespace qor {

LineReader::LineReader(std::FILE *file, std::size_t maxLineLength)
    : m_file(file), m_maxLineLength(maxLineLength), m_buffer(1 << 16)
{}

LineReader::LineReader(std::string_view text, std::size_t maxLineLength)
    : m_text(text), m_maxLineLength(maxLineLength)
{}

void LineReader::CountLine()
{
    // A file of billions of empty lines must not overflow the count.
    if (m_lineNumber < std::numeric_limits<int>::max()) {
        ++m_lineNumber;
    }
}

bool LineReader::Fill()
{
    if (m_eof || m_error) {
        return false;
    }
    m_begin = 0;
    if (m_file == nullptr) {
        // The text is one chunk.
        m_data = m_text.data();
        m_end = m_text.size();
        m_text = {};
        m_eof = m_end == 0;
        return !m_eof;
    }
    m_data = m_buffer.data();
    m_end = std::fread(m_buffer.data(), 1, m_buffer.size(), m_file);
    if (m_end == 0) {
        if (std::ferror(m_file)) {
            m_error = true;
        }
        m_eof = true;
        return false;
    }
    return true;
}

LineReader::Status LineReader::Next(std::string &line)
{
    line.clear();
    bool tooLong = false;
    bool sawAnything = false;
    for (;;) {
        if (m_begin == m_end && !Fill()) {
            if (m_error) {
                return Status::ReadError;
            }
            if (!sawAnything) {
                return Status::End;
            }
            CountLine();
            return tooLong ? Status::TooLong : Status::Line;
        }
        if (m_skipLineFeed) {
            m_skipLineFeed = false;
            if (m_data[m_begin] == '\n') {
                ++m_begin;
                continue;
            }
        }
        const char *start = m_data + m_begin;
        std::size_t available = m_end - m_begin;
        const char *stop = start;
        const char *limit = start + available;
        // memchr for LF is fast; a CR is looked for in the same stretch.
        const char *lf = static_cast<const char *>(std::memchr(start, '\n', available));
        const char *crSearchEnd = lf ? lf : limit;
        const char *cr = static_cast<const char *>(
            std::memchr(start, '\r', static_cast<std::size_t>(crSearchEnd - start)));
        stop = cr ? cr : crSearchEnd;
        std::size_t length = static_cast<std::size_t>(stop - start);
        sawAnything = true;
        if (!tooLong) {
            std::size_t room = m_maxLineLength - line.size();
            if (length > room) {
                line.append(start, room);
                tooLong = true;
            } else {
                line.append(start, length);
            }
        }
        m_begin += length;
        if (stop == limit) {
            continue; // the line goes on in the next chunk
        }
        ++m_begin; // the terminator
        if (*stop == '\r') {
            m_skipLineFeed = true;
        }
        CountLine();
        return tooLong ? Status::TooLong : Status::Line;
    }
}

} // namespace qor
