#pragma once

#include "workspace.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qor {

// The columns of the tool list, in display order.
enum class ListColumn
{
    MagNo,
    ToolKind,
    ToolDia,
    CornerRad,
    ToolName,
    Arbor,
    Shift,
    Pen,
    Option,
};
inline constexpr int ListColumnCount = 9;

// Catalogue keys ("frmList") of the column headings, by column.
inline constexpr std::array<std::string_view, ListColumnCount> ListColumnHeadingKeys = {
    "Text21", "Text22", "Text23", "Text24", "Text25", "Text26", "Text27", "Text28", "Text29"};

// True for the columns that hold numbers (shown right-aligned).
bool IsNumberColumn(ListColumn column);

struct ToolListContents;

// The rows of the tool list as they were when the list was last filled. The
// list keeps its own copy of what it shows, so that a read that stops at a
// format error leaves the list showing the table as it was before. The copy
// holds the few values each row shows; their texts are made when asked for,
// so that filling the list costs little more than copying them, whatever the
// magazine size.
class ToolListRows
{
public:
    int RowCount() const { return static_cast<int>(m_rows.size()); }

    // The text of a cell; "" for a row or column outside the list.
    std::string Cell(int row, ListColumn column) const;

    // The row's text: the magazine number right-aligned to 6 characters.
    std::string RowText(int row) const { return Cell(row, ListColumn::MagNo); }

    // The number a number column shows, unrounded (the corner radius of a
    // ball end mill is half its diameter); nothing for a blank cell, a row
    // outside the list and the other columns.
    std::optional<double> Number(int row, ListColumn column) const;

    // The text of the kind, tool name, arbor or option column, without a
    // copy; "" for a blank cell, a row outside the list and the number
    // columns.
    std::string_view Text(int row, ListColumn column) const;

    // True when the row showed a tool at the last fill.
    bool HasTool(int row) const;

private:
    friend bool FillToolList(const Workspace &workspace, ToolListContents &contents);

    struct Row
    {
        std::int16_t kind = KindNone;
        std::int16_t arborMode = 0;
        std::int16_t pen = 0;
        bool shiftOn = false;
        bool option = false;
        float dia = 0;
        float corner = 0;
        float shift = 0;
        std::uint32_t nameBegin = 0; // the shown tool name, in m_names
        std::uint32_t nameSize = 0;
    };

    std::vector<Row> m_rows;
    std::string m_names; // every row's shown tool name (UTF-8), one after the other
    std::array<std::string, KindCount + 1> m_kindNames;
    std::array<std::string, 4> m_arborNames;
    std::string m_optionMark;
};

// Everything the list shows besides the columns.
struct ToolListContents
{
    std::string MagIni;       // the initial magazine number
    std::string DefaultArbor; // the file-level arbor type, for the aArbType box
    ToolListRows Rows;
};

// Rebuilds the list from the workspace's table: one row per magazine
// position. Returns false and leaves `contents` as it was when the table's
// InitialMagazine is less than 1 (no file with an initial magazine has been
// read yet).
bool FillToolList(const Workspace &workspace, ToolListContents &contents);

// A single formatted with a picture of "#", "0" and one "." ("##0.0##",
// "##0.0", "##0.00"), rounded half away from zero on the number's shortest
// decimal text, so that 1.0005 shows as 1.001 the way it was written, and
// not as the nearest single (1.00049996...) would round.
std::string FormatSingle(float value, std::string_view picture);

// The first `count` characters of UTF-8 text.
std::string_view FirstCharacters(std::string_view utf8, std::size_t count);

} // namespace qor
