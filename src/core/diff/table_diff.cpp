#include "table_diff.h"

#include "code_page.h"
#include "numeric_text.h"
#include "tool_list_writer.h"
#include "tool_table_csv.h"

#include <algorithm>

namespace qor {

namespace {

const ToolSlot EmptySlot;

const ToolSlot &SlotOf(const ToolTable &table, std::size_t slot)
{
    const std::size_t count =
        std::min(table.Slots.size(), static_cast<std::size_t>(std::max<int>(table.MagazineMax, 0)));
    return slot < count ? table.Slots[slot] : EmptySlot;
}

bool Written(const ToolSlot &tool)
{
    return tool.ToolKind >= 0 && tool.ToolKind < KindCount;
}

// The tool line behind "MAGAZINEnn = ".
std::string ToolLine(const ToolTable &table, std::size_t slot, int codePage)
{
    std::string lines;
    AppendToolListItems(table, {static_cast<int>(slot)}, false, lines);
    std::string_view line = lines;
    line = line.substr(0, line.find("\r\n"));
    if (const auto equals = line.find(" = "); equals != std::string_view::npos) {
        line.remove_prefix(equals + 3);
    }
    return DecodeCodePage(line, codePage);
}

std::vector<FieldChange> Changes(const std::vector<std::string> &before,
                                 const std::vector<std::string> &after)
{
    std::vector<FieldChange> changes;
    const auto &names = ToolTableCsvColumns();
    for (std::size_t column = csvcol::Magazine + 1; column < names.size(); ++column) {
        if (before[column] != after[column]) {
            changes.push_back({names[column], before[column], after[column]});
        }
    }
    return changes;
}

} // namespace

std::vector<PositionDiff> DiffToolTables(const ToolTable &before, const ToolTable &after,
                                         int codePage)
{
    std::vector<PositionDiff> diffs;
    std::vector<std::string> old;
    std::vector<std::string> now;
    FileCsvCells(before, old);
    FileCsvCells(after, now);
    if (auto fields = Changes(old, now); !fields.empty()) {
        diffs.push_back({0, PositionChange::Changed, {}, std::move(fields)});
    }

    const std::size_t count = std::max(before.Slots.size(), after.Slots.size());
    for (std::size_t slot = 0; slot < count; ++slot) {
        const ToolSlot &a = SlotOf(before, slot);
        const ToolSlot &b = SlotOf(after, slot);
        const int magazine = static_cast<int>(slot) + 1;
        if (!Written(a) && !Written(b)) {
            continue;
        }
        if (!Written(a)) {
            diffs.push_back({magazine, PositionChange::Added, ToolLine(after, slot, codePage), {}});
            continue;
        }
        if (!Written(b)) {
            diffs.push_back(
                {magazine, PositionChange::Removed, ToolLine(before, slot, codePage), {}});
            continue;
        }
        ToolCsvCells(a, magazine, codePage, old);
        ToolCsvCells(b, magazine, codePage, now);
        if (auto fields = Changes(old, now); !fields.empty()) {
            diffs.push_back({magazine, PositionChange::Changed, {}, std::move(fields)});
        }
    }
    return diffs;
}

DiffWords DiffWordsOf(const MessageCatalogue &catalogue)
{
    DiffWords words;
    auto take = [&catalogue](std::string &word, const char *key) {
        std::string text = catalogue.GetText("MSG", key);
        if (!text.empty()) {
            word = std::move(text);
        }
    };
    take(words.added, "MSG36-1");
    take(words.removed, "MSG36-2");
    take(words.same, "MSG36-3");
    take(words.empty, "MSG36-4");
    return words;
}

std::string FormatTableDiff(const std::vector<PositionDiff> &diffs, const DiffWords &words)
{
    if (diffs.empty()) {
        return words.same + "\n";
    }
    std::string out;
    for (const PositionDiff &diff : diffs) {
        if (diff.Magazine == 0) {
            out += CsvFileRowMark;
        } else {
            out += "MAGAZINE";
            out += FormatPicture(diff.Magazine, "#00");
        }
        out += ':';
        switch (diff.Change) {
        case PositionChange::Added:
            out += ' ' + words.added + ' ' + diff.Tool + '\n';
            break;
        case PositionChange::Removed:
            out += ' ' + words.removed + ' ' + diff.Tool + '\n';
            break;
        case PositionChange::Changed:
            out += '\n';
            for (const FieldChange &field : diff.Fields) {
                out += "  " + field.Field + ": " + (field.Old.empty() ? words.empty : field.Old) +
                       " -> " + (field.New.empty() ? words.empty : field.New) + '\n';
            }
            break;
        }
    }
    return out;
}

} // namespace qor
