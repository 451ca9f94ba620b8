#pragma once

#include "tool_table.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace qor {

// What a change to the table did, for naming it in an undo menu.
enum class ChangeKind
{
    Store,           // the editor stored a tool (keepB, OKB)
    FileArbor,       // the editor stored the file-level arbor (magazine number 0)
    NewTool,         // the default new tool put into a position
    Delete,          // a position emptied
    Move,            // a tool moved to another position, the source emptied
    Copy,            // a tool copied to another position
    Swap,            // two positions exchanged
    InitialMagazine, // the initial magazine number
    Restore,         // unsaved changes of an earlier run restored
    Import,          // the whole table replaced by one imported from another program
};

template <typename T> struct BeforeAfter
{
    T Before{};
    T After{};

    bool operator==(const BeforeAfter &) const = default;
};

// The file-level arbor: its type and sections.
struct FileArbor
{
    std::int16_t Type = 0;
    ArborSections Sections;

    bool operator==(const FileArbor &) const = default;
};

FileArbor FileArborOf(const ToolTable &table);

// One position's contents before and after a change.
struct SlotContents
{
    int Slot = -1;
    ToolSlot Before;
    ToolSlot After;
};

// A change to the table that can be made (Redo) and taken back (Undo). It
// holds only what it touches: the positions with their contents before and
// after, and the file-level arbor and the initial magazine number where they
// change, so that applying it costs the same whatever the magazine size.
struct TableChange
{
    ChangeKind Kind = ChangeKind::Store;
    std::vector<SlotContents> Slots; // each position once
    std::optional<BeforeAfter<FileArbor>> Arbor;
    std::optional<BeforeAfter<std::int16_t>> Initial;
    // The position the change is about: the table's CurrentSlot after an undo
    // (Before) and after a redo (After). -1 leaves CurrentSlot as it is.
    BeforeAfter<int> Focus{-1, -1};

    // True when applying it in either direction would change no value.
    bool Empty() const;
};

enum class ChangeDirection
{
    Undo,
    Redo
};

// Puts what the change touches into its state before (Undo) or after (Redo)
// it, and sets CurrentSlot to the focus of that direction. Applying the same
// direction again changes nothing, so a change already made in the table may
// be handed to an undo stack that redoes what it is given. Positions beyond
// the table are left alone.
void ApplyChange(ToolTable &table, const TableChange &change, ChangeDirection direction);

// The positions (slot indices) the change touches, ascending: the rows a list
// shows anew after applying it.
std::vector<int> ChangedSlots(const TableChange &change);

// The slot that `direction` leaves current: the change's focus, or -1 when
// it leaves CurrentSlot alone.
int FocusAfter(const TableChange &change, ChangeDirection direction);

// The functions below make a change without touching the table. Each gives
// nothing for a position outside the table, and for an operation that would
// leave the table as it is.

// A position's contents replaced, as the editor's store does (which makes
// it in the table itself and hands its `before` here).
std::optional<TableChange> MakeSlotChange(int slot, ToolSlot before, ToolSlot after,
                                          ChangeKind kind = ChangeKind::Store);

// The default new tool (NewDataSet) into `slot`.
std::optional<TableChange> MakeNewTool(const ToolTable &table, int slot);

// The position emptied (ClearSlot).
std::optional<TableChange> MakeDelete(const ToolTable &table, int slot);

// What a move or copy does when the target already holds a tool. The window
// asks the user first (TargetNeedsQuestion); cancelling makes no change.
enum class OccupiedTarget
{
    Replace, // the target's tool is overwritten
    Swap,    // the two positions are exchanged instead
};

// True when a move or copy from `from` to `to` would overwrite a tool.
bool TargetNeedsQuestion(const ToolTable &table, int from, int to);

// The tool at `from` moved to `to` (row = magazine number, so `from` is left
// empty). Nothing when `from` holds no tool or equals `to`.
std::optional<TableChange> MakeMove(const ToolTable &table, int from, int to,
                                    OccupiedTarget occupied = OccupiedTarget::Replace);

// The tool at `from` copied to `to`. Nothing when `from` holds no tool or
// equals `to`.
std::optional<TableChange> MakeCopy(const ToolTable &table, int from, int to,
                                    OccupiedTarget occupied = OccupiedTarget::Replace);

// The contents of `from` and `to` exchanged; the focus follows the tool that
// was at `from`.
std::optional<TableChange> MakeSwap(const ToolTable &table, int from, int to);

// The file-level arbor set to `after`.
std::optional<TableChange> MakeFileArborChange(const ToolTable &table, const FileArbor &after);

// The initial magazine number set to `after`.
std::optional<TableChange> MakeInitialMagazineChange(const ToolTable &table, std::int16_t after);

// Every position, the file-level arbor and the initial magazine number set to
// those of `replacement` (a table of the same size), as an import does. Only
// what differs is held. The focus is the first position that changes.
std::optional<TableChange> MakeTableReplacement(const ToolTable &table,
                                                const ToolTable &replacement);

} // namespace qor
