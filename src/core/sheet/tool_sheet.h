#pragma once

#include "workspace.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace qor {

enum class PaperSize
{
    A4,
    Letter,
};

// The columns of the sheet's overview table, in order.
enum class SheetColumn
{
    MagNo,
    Kind,
    Diameter,
    CornerRad,
    FluteLength,
    OverallLength,
    Arbor,
    Shift,
    Pen,
    Name,
};
inline constexpr int SheetColumnCount = 10;

// One position that holds a tool, as the overview shows it: a text per column ("" for a blank
// cell), numbers formatted as the tool list formats them.
struct SheetRow
{
    std::array<std::string, SheetColumnCount> cells;
};

// The block of one tool: its heading, the parameter summary of the tool list (lines of a
// fixed-pitch font, the limit's values among them), and a line per option feed letter and one
// naming the limit's kind and output when the tool has them.
struct SheetToolBlock
{
    int slot = 0; // 0-based
    std::string heading;
    std::vector<std::string> summary;
    std::vector<std::string> feeds;
    std::vector<std::string> limits;
};

// Everything the sheet says, in UTF-8, tool names decoded from the file's code page. The words
// come from the workspace's catalogue.
struct ToolSheet
{
    std::string title;
    std::string fileName;
    std::string fileDate; // "" when the file's date is unknown
    std::string dateLabel;
    std::string overviewTitle;
    std::string toolsTitle;
    std::string scaleLabel;
    std::string feedsLabel;
    std::string emptyText; // shown when no position holds a tool
    std::array<std::string, SheetColumnCount> headings;
    std::vector<SheetRow> rows;
    std::vector<SheetToolBlock> tools;
    std::string pageFormat; // "Page %1 of %2"
};

// The sheet of every position of the workspace's table that holds a tool, in magazine order.
// `fileName` and `fileDate` are shown in the page header as given. The workspace is left as it
// was (its CurrentSlot is moved while the summaries are made, and put back).
ToolSheet MakeToolSheet(Workspace &workspace, std::string_view fileName, std::string_view fileDate);

// "Page 2 of 7": the sheet's page format with the numbers put in.
std::string PageNumberText(const ToolSheet &sheet, int page, int pageCount);

// The scale of a drawing n:1 or 1:n: "1:2" for `paperPerTool` 0.5, "2:1" for 2, "1:1" for 1.
std::string ScaleRatioText(double paperPerTool);

// The standard scale at which a drawing of `width` x `height` tool units fits into a box of
// `boxWidth` x `boxHeight` paper units: the largest of 5:1, 2:1, 1:1, 1:2, 1:5, 1:10, 1:20 ...
// that fits, as paper units per tool unit. Sizes of 0 count as fitting at any scale.
double ChooseSheetScale(double width, double height, double boxWidth, double boxHeight);

// The modification time of a file as "2026-11-25 14:03" (local time); "" when it cannot be
// read.
std::string FileDateText(const std::string &utf8Path);

} // namespace qor
