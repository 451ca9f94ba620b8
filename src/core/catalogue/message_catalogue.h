#pragma once

#include "code_page.h"
#include "result.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qor {

// Every user-visible text of the program, loaded once from the catalogue file
// ("QORTool.msg"). Sections are known by name ("frmList", "MSG", "String" ...,
// any case); keys are "TextN", "MSGN" or "StrN", optionally with a sub-key
// ("Text51-2"). A missing text is an empty string, never an error.
class MessageCatalogue
{
public:
    // Numbers of the sections inside the catalogue. 7 is the pool of sub-key
    // texts and has no name.
    enum Section
    {
        FrmList = 1,
        FrmFSet = 2,
        FrmEditor = 3,
        FrmInfo = 4,
        Msg = 5,
        String = 6,
        FrmLimit = 8,
        Sheet = 9 // the printed tool sheet
    };

    static constexpr int MaxLines = 10001;
    // Larger files are refused unread: no catalogue comes near this.
    static constexpr std::uintmax_t MaxCatalogueBytes = std::uintmax_t(16) << 20;

    // Loads the catalogue file, replacing what was loaded before. Fails when
    // the file cannot be read, has no lines, puts a numbered entry outside a
    // known section, numbers an entry at or beyond the file's line count, or
    // gives a number outside the 16-bit range; the error names the file and
    // the line.
    // On failure the catalogue keeps what it held before. A file that is
    // valid UTF-8 (with or without BOM) is taken as UTF-8, any other as text
    // in `codePage` (the "Code Page" setting). Lines past the first MaxLines
    // are ignored.
    Status Load(const std::string &path, int codePage = DefaultCodePage);

    // Loads from bytes already in memory; `name` is used in error messages.
    Status LoadFromBytes(std::string_view bytes, const std::string &name,
                         int codePage = DefaultCodePage);

    // The text of `key` in `section`, or "" when there is none.
    std::string GetText(std::string_view section, std::string_view key) const;

    // True when no entry holds a text (nothing loaded, or a file without
    // numbered entries).
    bool empty() const;

private:
    // A piece of m_text: texts are never copied out of the decoded file.
    struct Span
    {
        std::size_t begin = 0;
        std::size_t size = 0;
    };

    struct Entry
    {
        Span Text;
        std::string SubIndex; // "s:i," items: sub-key s is pool text i
    };

    std::string View(Span span) const { return m_text.substr(span.begin, span.size); }

    // Index = section number - 1 (the pool, number 7, is kept apart). Each
    // table ends at the highest entry defined in it.
    std::array<std::vector<Entry>, 9> m_sections;
    std::vector<Span> m_pool;
    std::string m_text; // the decoded file
};

// Maps a section name (any case, blanks around it ignored) to its number;
// 0 when unknown.
int SectionNumber(std::string_view name);

} // namespace qor
