#include "tool_sheet.h"

#include "code_page.h"
#include "message_text.h"
#include "native_file.h"
#include "numeric_text.h"
#include "param_string.h"
#include "tool_kinds.h"
#include "tool_list_rows.h"

#include <chrono>
#include <cmath>
#include <ctime>
#include <filesystem>

namespace qor {

namespace {

constexpr std::string_view ListNumber = "##0.0##";

// The list's corner radius column: half the diameter of a ball end mill, the radius of the kinds
// that have one.
bool ShowsCornerRad(int kind)
{
    return kind == KindCut || kind == KindTap || kind == KindBul || kind == KindOva ||
           kind == KindRad;
}

SheetRow RowOf(const Workspace &workspace, int slot, const std::string &name)
{
    const ToolTable &table = workspace.Table;
    const ToolSlot &tool = table.Slots[static_cast<std::size_t>(slot)];
    SheetRow row;
    auto cell = [&row](SheetColumn column) -> std::string & {
        return row.cells[static_cast<std::size_t>(column)];
    };
    cell(SheetColumn::MagNo) = std::to_string(slot + 1);
    cell(SheetColumn::Kind) = table.KindNames[static_cast<std::size_t>(tool.ToolKind + 1)];
    if (tool.ToolKind != KindTap) {
        cell(SheetColumn::Diameter) = FormatSingle(tool.ToolDia, ListNumber);
    }
    if (tool.ToolKind == KindBal) {
        cell(SheetColumn::CornerRad) = FormatSingle(tool.ToolDia / 2, ListNumber);
    } else if (ShowsCornerRad(tool.ToolKind)) {
        cell(SheetColumn::CornerRad) = FormatSingle(tool.CornerRad, ListNumber);
    }
    if (tool.ToolKind != KindRad) { // a corner rounding cutter carries no length
        cell(SheetColumn::FluteLength) = FormatSingle(tool.ToolLength, ListNumber);
    }
    if (tool.LengthMode > 0) {
        cell(SheetColumn::OverallLength) = FormatSingle(tool.Len[0], ListNumber);
    }
    if (tool.ArborMode > 0 && tool.ArborMode < 4) {
        cell(SheetColumn::Arbor) = table.ArborTypeNames[static_cast<std::size_t>(tool.ArborMode)];
    }
    if (tool.ShiftOn != 0) {
        cell(SheetColumn::Shift) = FormatSingle(tool.ShiftValue, ListNumber);
    }
    if (tool.PenNo != 0) {
        cell(SheetColumn::Pen) = std::to_string(tool.PenNo);
    }
    cell(SheetColumn::Name) = name;
    return row;
}

// One line per option feed letter: its breakpoints and the feed between each two, as far as the
// file writes them (up to the first breakpoint below the one before it).
std::vector<std::string> FeedLines(const Workspace &workspace, const ToolSlot &tool)
{
    std::vector<std::string> lines;
    const std::string label = workspace.Text("Sheet", "Text9");
    const std::string step = workspace.Text("Sheet", "Text11");
    for (int letter = 0; letter < OptFeedLetterCount; ++letter) {
        if (tool.OptFeedOn[static_cast<std::size_t>(letter)] == 0) {
            continue;
        }
        const auto &pos = tool.OptFeedPos[static_cast<std::size_t>(letter)];
        const auto &val = tool.OptFeedVal[static_cast<std::size_t>(letter)];
        std::string line =
            FillIn(label, {std::string(1, OptFeedLetters[static_cast<std::size_t>(letter)])});
        for (std::size_t k = 1; k < pos.size() && pos[k - 1] <= pos[k]; ++k) {
            line += k == 1 ? "  " : ";  ";
            line += FillIn(
                step, {SingleToText(pos[k - 1]), SingleToText(pos[k]), SingleToText(val[k - 1])});
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

// The limit in the words of the limit window: its kind and its output. Its values are in the
// summary already.
std::vector<std::string> LimitLines(const Workspace &workspace, const ToolSlot &tool)
{
    const int mode = tool.LimitFlags & LimitModeMask;
    if (mode == 0) {
        return {};
    }
    std::string line = workspace.Text("frmLimit", "Text1") + ": ";
    line += workspace.Text("frmLimit", mode == 2 ? "Text4" : "Text3") + ", ";
    line += workspace.Text("frmLimit", (tool.LimitFlags & LimitPVariant) ? "Text6" : "Text5");
    return {std::move(line)};
}

std::vector<std::string> SplitLines(const std::string &text)
{
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start <= text.size() && !text.empty()) {
        std::size_t end = text.find("\r\n", start);
        if (end == std::string::npos) {
            lines.push_back(text.substr(start));
            break;
        }
        lines.push_back(text.substr(start, end - start));
        start = end + 2;
    }
    return lines;
}

} // namespace

ToolSheet MakeToolSheet(Workspace &workspace, std::string_view fileName, std::string_view fileDate)
{
    ToolSheet sheet;
    auto text = [&workspace](std::string_view key) { return workspace.Text("Sheet", key); };
    sheet.title = text("Text1");
    sheet.fileName = std::string(fileName);
    sheet.fileDate = std::string(fileDate);
    sheet.dateLabel = text("Text2");
    sheet.pageFormat = text("Text3");
    sheet.overviewTitle = text("Text4");
    sheet.toolsTitle = text("Text5");
    sheet.scaleLabel = text("Text8");
    sheet.feedsLabel = text("Text9");
    sheet.emptyText = text("Text10");

    auto heading = [&sheet](SheetColumn column) -> std::string & {
        return sheet.headings[static_cast<std::size_t>(column)];
    };
    heading(SheetColumn::MagNo) = workspace.Text("frmList", "Text21");
    heading(SheetColumn::Kind) = workspace.Text("frmList", "Text22");
    heading(SheetColumn::Diameter) = workspace.Text("frmList", "Text23");
    heading(SheetColumn::CornerRad) = workspace.Text("frmList", "Text24");
    heading(SheetColumn::FluteLength) = text("Text6");
    heading(SheetColumn::OverallLength) = text("Text7");
    heading(SheetColumn::Arbor) = workspace.Text("frmList", "Text26");
    heading(SheetColumn::Shift) = workspace.Text("frmList", "Text27");
    heading(SheetColumn::Pen) = workspace.Text("frmList", "Text28");
    heading(SheetColumn::Name) = workspace.Text("frmList", "Text25");

    ToolTable &table = workspace.Table;
    const std::int16_t savedSlot = table.CurrentSlot;
    const std::string blockHeading = text("Text12");
    for (std::size_t slot = 0; slot < table.Slots.size(); ++slot) {
        const ToolSlot &tool = table.Slots[slot];
        if (!tool.HasTool()) {
            continue;
        }
        const std::string name = DecodeCodePage(tool.ToolComment, workspace.Globals.CodePage);
        SheetRow row = RowOf(workspace, static_cast<int>(slot), name);

        SheetToolBlock block;
        block.slot = static_cast<int>(slot);
        block.heading = FillIn(blockHeading, {row.cells[0], row.cells[1], name});
        table.CurrentSlot = static_cast<std::int16_t>(slot);
        block.summary = SplitLines(MakeParamString(workspace));
        block.feeds = FeedLines(workspace, tool);
        block.limits = LimitLines(workspace, tool);

        sheet.rows.push_back(std::move(row));
        sheet.tools.push_back(std::move(block));
    }
    table.CurrentSlot = savedSlot;
    return sheet;
}

std::string PageNumberText(const ToolSheet &sheet, int page, int pageCount)
{
    return FillIn(sheet.pageFormat, {std::to_string(page), std::to_string(pageCount)});
}

std::string ScaleRatioText(double paperPerTool)
{
    if (!(paperPerTool > 0) || !std::isfinite(paperPerTool)) {
        return "1:1";
    }
    if (paperPerTool >= 1) {
        return std::to_string(static_cast<long long>(std::lround(paperPerTool))) + ":1";
    }
    return "1:" + std::to_string(static_cast<long long>(std::lround(1 / paperPerTool)));
}

double ChooseSheetScale(double width, double height, double boxWidth, double boxHeight)
{
    const auto fits = [&](double s) {
        return width * s <= boxWidth + 1e-9 && height * s <= boxHeight + 1e-9;
    };
    for (double s : {5.0, 2.0, 1.0}) {
        if (fits(s)) {
            return s;
        }
    }
    // 1:2, 1:5, 1:10, 1:20, 1:50 ... until it fits, or to the smallest a sheet makes sense of.
    double reduction = 1;
    for (int step = 0; step < 30; ++step) {
        reduction *= (step % 3 == 1) ? 2.5 : 2;
        if (fits(1 / reduction)) {
            break;
        }
    }
    return 1 / reduction;
}

std::string FileDateText(const std::string &utf8Path)
{
    std::error_code error;
    const auto written = std::filesystem::last_write_time(NativePath(utf8Path), error);
    if (error) {
        return {};
    }
    // The file clock's epoch differs between libraries; its distance from now does not.
    const auto system = std::chrono::system_clock::now() +
                        std::chrono::duration_cast<std::chrono::system_clock::duration>(
                            written - std::filesystem::file_time_type::clock::now());
    const std::time_t time = std::chrono::system_clock::to_time_t(system);
    std::tm local{};
#ifdef _WIN32
    if (localtime_s(&local, &time) != 0) {
        return {};
    }
#else
    if (localtime_r(&time, &local) == nullptr) {
        return {};
    }
#endif
    char text[32];
    return std::strftime(text, sizeof text, "%Y-%m-%d %H:%M", &local) > 0 ? text : "";
}

} // namespace qor
