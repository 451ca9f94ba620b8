#pragma once

#include "file_stamp.h"
#include "result.h"
#include "table_change.h"
#include "unsaved_changes.h"
#include "workspace.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qor {

// Unsaved changes of the table kept in a file beside the settings file, so
// that they survive a program that ends without saving (closed, or killed).
// The file names the tool list file the changes belong to, as it was when it
// was read or saved, and holds only what differs from it: the positions
// touched since (their items as the tool list file has them; an emptied
// position has none), the file-level arbor and the initial magazine number
// when they changed. It is written whole or not at all.

// The recovery file beside the settings file `iniPath`: its name with the
// extension ".recovery".
std::string RecoveryFilePath(const std::string &iniPath);

// What a recovery file holds.
struct Recovery
{
    LastRead Source;                // the tool list file, as read or saved last
    std::vector<int> Slots;         // the positions touched (slot indices), ascending
    std::vector<ToolSlot> Contents; // their contents, by Slots (empty: emptied)
    std::optional<FileArbor> Arbor;
    std::optional<std::int16_t> InitialMagazine;

    // True when it holds no change.
    bool Empty() const { return Slots.empty() && !Arbor && !InitialMagazine; }
};

// The bytes of the recovery of `changes` in `table`, belonging to `source`.
std::string FormatRecovery(const ToolTable &table, const UnsavedChanges &changes,
                           const LastRead &source);

// Writes the recovery of the table's unsaved changes to `path` atomically;
// with nothing unsaved it removes the file instead. The error names the file
// and the reason (the window reports the first failure only).
Status WriteRecoveryFile(const std::string &path, const ToolTable &table,
                         const UnsavedChanges &changes, const LastRead &source);

// The changes a recovery file's bytes hold. Fails, whatever the bytes, with
// a sentence saying what is wrong when they are not a complete recovery.
Result<Recovery> ParseRecovery(std::string_view bytes);

// Reads the recovery file at `path`: nothing when there is none. Fails with
// "MSG34-5" (the file named) when it cannot be read or is not a complete
// recovery.
Result<std::optional<Recovery>> ReadRecoveryFile(const std::string &path);

// Removes the recovery file; success when there is none.
Status RemoveRecoveryFile(const std::string &path);

// The report that the recovery file could not be written: "MSG34-4" with the
// file and the reason.
std::string RecoveryWriteFailureText(const Workspace &workspace, const std::string &path,
                                     const Error &error);

// How the tool list file a recovery belongs to is now.
enum class RecoverySourceState
{
    Unchanged, // as it was read or saved last
    Changed,   // changed since
    Missing,   // no longer there (or it never was: nothing had been read)
};
RecoverySourceState SourceState(const Recovery &recovery);

// The recovered changes made in the table: a Restore change (positions
// beyond the table left out), focused on the first position it changes.
// Nothing when the table already holds them all.
std::optional<TableChange> MakeRestoreChange(const ToolTable &table, const Recovery &recovery);

// The start-up question: "MSG34-1" with the tool list file and the number of
// positions changed, followed by "MSG34-2" when the file changed since, or
// "MSG34-3" when it is missing.
std::string RecoveryQuestionText(const Workspace &workspace, const Recovery &recovery);

} // namespace qor
