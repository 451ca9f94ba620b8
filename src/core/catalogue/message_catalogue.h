#pragma once

#include "result.h"

#include <array>
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
    enum Section { FrmList = 1, FrmFSet = 2, FrmEditor = 3, FrmInfo = 4, Msg = 5, String = 6,
                   FrmLimit = 8 };

    static constexpr int MaxLines = 10001;

    // Loads the catalogue file, replacing what was loaded before. Fails when
    // the file cannot be read, has no lines, puts a numbered entry outside a
    // known section, or numbers an entry at or beyond the file's line count;
    // the error names the file and the line. UTF-8 (with or without BOM) and
    // Windows-1252 files are decoded to UTF-8.
    Status Load(const std::string &path);

    // Loads from bytes already in memory; `name` is used in error messages.
    Status LoadFromBytes(std::string_view bytes, const std::string &name);

    // The text of `key` in `section`, or "" when there is none.
    std::string GetText(std::string_view section, std::string_view key) const;

    bool empty() const;

private:
    struct Entry
    {
        std::string Text;
        std::string SubIndex; // "s:i," items: sub-key s is pool text i
    };

    // Index = section number - 1 (the pool, number 7, is kept apart).
    std::array<std::vector<Entry>, 8> m_sections;
    std::vector<std::string> m_pool;
};

// Maps a section name (any case, blanks around it ignored) to its number;
// 0 when unknown.
int SectionNumber(std::string_view name);

} // namespace qor
