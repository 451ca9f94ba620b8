#include "tool_table.h"

namespace qor {

void SizeToolTable(ToolTable &table, std::int16_t magazineMax)
{
    table.MagazineMax = magazineMax;
    table.Slots.assign(magazineMax > 0 ? static_cast<std::size_t>(magazineMax) : 0, ToolSlot{});
}

void ClearSlot(ToolTable &table, int slot)
{
    if (slot >= 0 && static_cast<std::size_t>(slot) < table.Slots.size()) {
        table.Slots[static_cast<std::size_t>(slot)] = ToolSlot{};
    }
}

void ClearToolTable(ToolTable &table)
{
    for (auto &slot : table.Slots) {
        slot = ToolSlot{};
    }
    table.DefaultArborType = 0;
    table.DefaultArbor = ArborSections{};
}

ToolSlot DefaultNewTool()
{
    ToolSlot tool;
    tool.ToolKind = KindBal;
    tool.ToolDia = 10;
    tool.CornerRad = 5;
    tool.ToolLength = 20;
    tool.Len[0] = 50;
    tool.Len[1] = 10;
    tool.Len[2] = 50;
    return tool;
}

void NewDataSet(ToolTable &table, int slot)
{
    if (slot >= 0 && static_cast<std::size_t>(slot) < table.Slots.size()) {
        table.Slots[static_cast<std::size_t>(slot)] = DefaultNewTool();
    }
}

int FirstFreeSlot(const ToolTable &table)
{
    for (std::size_t i = 0; i < table.Slots.size(); ++i) {
        if (!table.Slots[i].HasTool()) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

} // namespace qor
