#pragma once

#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace qor {

// Reads a text file line by line in fixed-size chunks, so that memory stays
// bounded whatever the file holds. A line ends at CR LF, LF or a lone CR; the
// terminator is not part of the line. A line longer than the limit is reported
// as TooLong, with its first `maxLineLength` bytes, and the rest of it is
// skipped.
class LineReader
{
public:
    enum class Status
    {
        Line,
        TooLong,
        End,
        ReadError
    };

    LineReader(std::FILE *file, std::size_t maxLineLength);

    // Reads the lines of text in memory, which must outlive the reader.
    LineReader(std::string_view text, std::size_t maxLineLength);

    Status Next(std::string &line);

    // 1-based number of the line last returned.
    int lineNumber() const { return m_lineNumber; }

private:
    bool Fill();
    void CountLine();

    std::FILE *m_file = nullptr;
    std::string_view m_text; // read without a file
    std::size_t m_maxLineLength;
    std::vector<char> m_buffer;
    const char *m_data = nullptr; // the chunk: in m_buffer, or m_text
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
    bool m_eof = false;
    bool m_error = false;
    bool m_skipLineFeed = false;
    int m_lineNumber = 0;
};

} // namespace qor
