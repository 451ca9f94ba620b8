#include "table_change.h"

#include <algorithm>

namespace qor {

namespace {

bool InTable(const ToolTable &table, int slot)
{
    return slot >= 0 && static_cast<std::size_t>(slot) < table.Slots.size();
}

const ToolSlot &At(const ToolTable &table, int slot)
{
    return table.Slots[static_cast<std::size_t>(slot)];
}

TableChange Focused(ChangeKind kind, int before, int after)
{
    TableChange change;
    change.Kind = kind;
    change.Focus = {before, after};
    return change;
}

void AddSlot(TableChange &change, const ToolTable &table, int slot, ToolSlot after)
{
    change.Slots.push_back({slot, At(table, slot), std::move(after)});
}

std::optional<TableChange> UnlessEmpty(TableChange change)
{
    if (change.Empty()) {
        return std::nullopt;
    }
    return change;
}

// Move and copy differ only in what they leave at the source.
std::optional<TableChange> Transfer(const ToolTable &table, int from, int to,
                                    OccupiedTarget occupied, ChangeKind kind)
{
    if (!InTable(table, from) || !InTable(table, to) || from == to || !At(table, from).HasTool()) {
        return std::nullopt;
    }
    if (occupied == OccupiedTarget::Swap && At(table, to).HasTool()) {
        return MakeSwap(table, from, to);
    }
    TableChange change = Focused(kind, from, to);
    if (kind == ChangeKind::Move) {
        AddSlot(change, table, from, ToolSlot{});
    }
    AddSlot(change, table, to, At(table, from));
    return UnlessEmpty(std::move(change));
}

} // namespace

FileArbor FileArborOf(const ToolTable &table)
{
    return {table.DefaultArborType, table.DefaultArbor};
}

bool TableChange::Empty() const
{
    const bool slotsSame = std::all_of(Slots.begin(), Slots.end(),
                                       [](const SlotContents &s) { return s.Before == s.After; });
    return slotsSame && (!Arbor || Arbor->Before == Arbor->After) &&
           (!Initial || Initial->Before == Initial->After);
}

void ApplyChange(ToolTable &table, const TableChange &change, ChangeDirection direction)
{
    const bool redo = direction == ChangeDirection::Redo;
    for (const SlotContents &slot : change.Slots) {
        if (InTable(table, slot.Slot)) {
            table.Slots[static_cast<std::size_t>(slot.Slot)] = redo ? slot.After : slot.Before;
        }
    }
    if (change.Arbor) {
        const FileArbor &arbor = redo ? change.Arbor->After : change.Arbor->Before;
        table.DefaultArborType = arbor.Type;
        table.DefaultArbor = arbor.Sections;
    }
    if (change.Initial) {
        table.InitialMagazine = redo ? change.Initial->After : change.Initial->Before;
    }
    const int focus = FocusAfter(change, direction);
    if (InTable(table, focus)) {
        table.CurrentSlot = static_cast<std::int16_t>(focus);
    }
}

std::vector<int> ChangedSlots(const TableChange &change)
{
    std::vector<int> slots;
    slots.reserve(change.Slots.size());
    for (const SlotContents &slot : change.Slots) {
        slots.push_back(slot.Slot);
    }
    std::sort(slots.begin(), slots.end());
    slots.erase(std::unique(slots.begin(), slots.end()), slots.end());
    return slots;
}

int FocusAfter(const TableChange &change, ChangeDirection direction)
{
    return direction == ChangeDirection::Redo ? change.Focus.After : change.Focus.Before;
}

std::optional<TableChange> MakeSlotChange(int slot, ToolSlot before, ToolSlot after,
                                          ChangeKind kind)
{
    if (slot < 0) {
        return std::nullopt;
    }
    TableChange change = Focused(kind, slot, slot);
    change.Slots.push_back({slot, std::move(before), std::move(after)});
    return UnlessEmpty(std::move(change));
}

std::optional<TableChange> MakeNewTool(const ToolTable &table, int slot)
{
    if (!InTable(table, slot)) {
        return std::nullopt;
    }
    TableChange change = Focused(ChangeKind::NewTool, slot, slot);
    AddSlot(change, table, slot, DefaultNewTool());
    return UnlessEmpty(std::move(change));
}

std::optional<TableChange> MakeDelete(const ToolTable &table, int slot)
{
    if (!InTable(table, slot)) {
        return std::nullopt;
    }
    TableChange change = Focused(ChangeKind::Delete, slot, slot);
    AddSlot(change, table, slot, ToolSlot{});
    return UnlessEmpty(std::move(change));
}

bool TargetNeedsQuestion(const ToolTable &table, int from, int to)
{
    return InTable(table, from) && InTable(table, to) && from != to && At(table, from).HasTool() &&
           At(table, to).HasTool();
}

std::optional<TableChange> MakeMove(const ToolTable &table, int from, int to,
                                    OccupiedTarget occupied)
{
    return Transfer(table, from, to, occupied, ChangeKind::Move);
}

std::optional<TableChange> MakeCopy(const ToolTable &table, int from, int to,
                                    OccupiedTarget occupied)
{
    return Transfer(table, from, to, occupied, ChangeKind::Copy);
}

std::optional<TableChange> MakeSwap(const ToolTable &table, int from, int to)
{
    if (!InTable(table, from) || !InTable(table, to) || from == to) {
        return std::nullopt;
    }
    TableChange change = Focused(ChangeKind::Swap, from, to);
    AddSlot(change, table, from, At(table, to));
    AddSlot(change, table, to, At(table, from));
    return UnlessEmpty(std::move(change));
}

std::optional<TableChange> MakeFileArborChange(const ToolTable &table, const FileArbor &after)
{
    TableChange change = Focused(ChangeKind::FileArbor, -1, -1);
    change.Arbor = BeforeAfter<FileArbor>{FileArborOf(table), after};
    return UnlessEmpty(std::move(change));
}

std::optional<TableChange> MakeInitialMagazineChange(const ToolTable &table, std::int16_t after)
{
    TableChange change = Focused(ChangeKind::InitialMagazine, -1, -1);
    change.Initial = BeforeAfter<std::int16_t>{table.InitialMagazine, after};
    return UnlessEmpty(std::move(change));
}

std::optional<TableChange> MakeTableReplacement(const ToolTable &table,
                                                const ToolTable &replacement)
{
    TableChange change;
    change.Kind = ChangeKind::Import;
    const std::size_t count = std::min(table.Slots.size(), replacement.Slots.size());
    for (std::size_t slot = 0; slot < count; ++slot) {
        if (table.Slots[slot] != replacement.Slots[slot]) {
            AddSlot(change, table, static_cast<int>(slot), replacement.Slots[slot]);
        }
    }
    if (FileArborOf(table) != FileArborOf(replacement)) {
        change.Arbor = BeforeAfter<FileArbor>{FileArborOf(table), FileArborOf(replacement)};
    }
    if (table.InitialMagazine != replacement.InitialMagazine) {
        change.Initial =
            BeforeAfter<std::int16_t>{table.InitialMagazine, replacement.InitialMagazine};
    }
    if (!change.Slots.empty()) {
        change.Focus = {change.Slots.front().Slot, change.Slots.front().Slot};
    }
    return UnlessEmpty(std::move(change));
}

} // namespace qor
