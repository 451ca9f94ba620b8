#pragma once

#include "tool_table.h"

namespace qor {

// The slot at the table's current position; null when the position lies
// outside the table.
inline const ToolSlot *CurrentSlotOf(const ToolTable &table)
{
    const int slot = table.CurrentSlot;
    if (slot < 0 || static_cast<std::size_t>(slot) >= table.Slots.size()) {
        return nullptr;
    }
    return &table.Slots[static_cast<std::size_t>(slot)];
}

} // namespace qor
