#pragma once

#include "code_page.h"
#include "message_catalogue.h"
#include "tool_table.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qor {

// The tool table as CSV, for spreadsheets: comma-separated, RFC 4180 quoting,
// CRLF line ends, UTF-8 with a byte order mark, "." as the decimal point.
//
// Row 1 is the header, one plain English field name a column (the names of
// ToolTableCsvColumns). Row 2 is the file row: "FILE" in the Magazine column,
// the file-level arbor in the arbor columns and the initial magazine number
// in the last column, "Initial magazine"; every other cell of it is empty.
// Then one row per position that holds a tool, in magazine order. A cell
// holds what the tool list file carries: a value the file does not write
// (a shape value the kind has no use for, the length values the length mode
// leaves out, the sections behind the last arbor section, the breakpoints
// behind the last one) is an empty cell, so that TTL -> CSV -> TTL gives the
// same bytes.
//
// On/off values (Shift, Feed A ..., Limit P) are 0 or 1, the modes numbers
// (Length mode and Arbor mode 0 to 3, Limit mode 0 none, 1 LIMIT, 2 LIMITS).

inline constexpr std::string_view CsvFileRowMark = "FILE";

// Column indices of the fixed layout; the header names are in
// ToolTableCsvColumns(), in this order.
namespace csvcol {
inline constexpr int Magazine = 0;
inline constexpr int Kind = 1;
inline constexpr int Name = 2;
inline constexpr int Diameter = 3;     // ToolDia
inline constexpr int CornerRadius = 4; // CornerRad
inline constexpr int Param3 = 5;
inline constexpr int Param4 = 6;
inline constexpr int Param5 = 7;
inline constexpr int Param6 = 8;
inline constexpr int Param7 = 9;
inline constexpr int FluteLength = 10; // ToolLength
inline constexpr int LengthMode = 11;
inline constexpr int Len1 = 12; // .. Len6 = 17
inline constexpr int ArborMode = 18;
// Section s (0-based): diameter ArborFirst + 3s, length + 1, flag + 2;
// the eleventh diameter, which has no length, at ArborFirst + 30.
inline constexpr int ArborFirst = 19;
inline constexpr int ShiftOn = 50;
inline constexpr int ShiftValue = 51;
inline constexpr int Pen = 52;
// Letter l (A, V, U, D): its switch at FeedFirst + 40l, breakpoint k
// (0-based) at + 1 + 2k, the value behind it at + 2 + 2k.
inline constexpr int FeedFirst = 53;
inline constexpr int FeedColumns = 40;
inline constexpr int LimitMode = 213;
inline constexpr int LimitP = 214;
inline constexpr int LimitFirst = 215; // .. Limit 4 = 218
inline constexpr int InitialMagazine = 219;
inline constexpr int Count = 220;

constexpr int ArborDiameter(int section)
{
    return ArborFirst + 3 * section;
}
constexpr int FeedPoint(int letter, int k)
{
    return FeedFirst + FeedColumns * letter + 1 + 2 * k;
}
constexpr int FeedValue(int letter, int k)
{
    return FeedFirst + FeedColumns * letter + 2 + 2 * k;
}
} // namespace csvcol

// The header names, csvcol::Count of them.
const std::vector<std::string> &ToolTableCsvColumns();

// The cells of one position's row (UTF-8; the name decoded from `codePage`)
// or of the file row, as FormatToolTableCsv writes them, unquoted. `cells`
// gets csvcol::Count entries. The diff compares these.
void ToolCsvCells(const ToolSlot &tool, int magazine, int codePage,
                  std::vector<std::string> &cells);
void FileCsvCells(const ToolTable &table, std::vector<std::string> &cells);

// The whole table as CSV text (byte order mark, header, file row, tools).
std::string FormatToolTableCsv(const ToolTable &table, int codePage);

struct CsvImportOptions
{
    std::int16_t magazineMax = 100;  // the positions of the new table
    int codePage = DefaultCodePage;  // tool names are stored in it
    std::int16_t supportPenMax = 16; // pens 1 .. supportPenMax - 1, as the editor
    // The table the CSV came from, when known (the open table, the file that
    // is replaced): a name that position already holds passes whatever its
    // length, as the editor keeps a name nobody edited. Any other name holds
    // at most CommentCharacters (20) characters.
    const ToolTable *unchanged = nullptr;
};

// Why an import was refused: where (a 1-based row as a spreadsheet numbers
// it, the header being row 1; the column's header name, empty when the fault
// is not about one cell) and why (a catalogue key of section "MSG" with the
// arguments of its text, and the English sentence for where no catalogue is
// at hand).
struct CsvRefusal
{
    int Row = 0;
    std::string Column;
    std::string Key;
    std::vector<std::string> Args;
    std::string English;
};

struct CsvImport
{
    // The new table, sized to `magazineMax`, ForeignFile false; only
    // meaningful when Refusal is empty.
    ToolTable Table;
    std::optional<CsvRefusal> Refusal;

    bool ok() const { return !Refusal.has_value(); }
};

// Reads CSV text into a new table; the caller applies it only when it is ok,
// so a refused file changes nothing. Besides what FormatToolTableCsv writes it
// accepts what spreadsheets save back: no byte order mark, LF line ends,
// empty rows (skipped), quoted numbers, columns in any order or missing
// (empty; Magazine and Kind must be there), and semicolon-separated files
// (German Excel): a header with more ";" than "," makes ";" the separator,
// and then a "," in a number is its decimal point. A file that is not UTF-8
// is taken as text in `codePage` (what Excel writes as "CSV"). Without a file
// row the initial magazine is 1 and there is no file-level arbor. Every value
// is held to the limits of the reader and the editor; the first fault
// refuses the whole file.
CsvImport ParseToolTableCsv(std::string_view text, const CsvImportOptions &options);

// The refusal as one sentence in the catalogue's language: "Row 3, column
// "Pen": ..." (MSG35-1) or "Row 3: ..." (MSG35-2).
std::string CsvRefusalText(const MessageCatalogue &catalogue, const CsvRefusal &refusal);

// The same in English, without a catalogue.
std::string CsvRefusalEnglish(const CsvRefusal &refusal);

} // namespace qor
